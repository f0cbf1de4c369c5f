#include "store/Sqlite.h"

#include "store/IsoDate.h"
#include "store/Numbers.h"

namespace koben {
namespace {

using Kind = DatabaseError::Kind;

/// The lowest number is Null in a table in memory; it comes only from sums that leave the range.
qint64 readable(qint64 n) { return std::max(n, -std::numeric_limits<qint64>::max()); }

struct ColumnSource {
    sqlite3_stmt* statement;
    int column;
    int type() const { return sqlite3_column_type(statement, column); }
    qint64 whole() const { return readable(sqlite3_column_int64(statement, column)); }
    double real() const { return sqlite3_column_double(statement, column); }
    const char* text() const { return reinterpret_cast<const char*>(sqlite3_column_text(statement, column)); }
    int bytes() const { return sqlite3_column_bytes(statement, column); }
};

struct ArgumentSource {
    sqlite3_value* value;
    int type() const { return sqlite3_value_type(value); }
    qint64 whole() const { return readable(sqlite3_value_int64(value)); }
    double real() const { return sqlite3_value_double(value); }
    const char* text() const { return reinterpret_cast<const char*>(sqlite3_value_text(value)); }
    int bytes() const { return sqlite3_value_bytes(value); }
};

Value wholeValue(qint64 v) { return v == static_cast<qint32>(v) ? Value(static_cast<qint32>(v)) : Value(v); }

template <typename Source>
QString textOf(const Source& source) {
    const char* text = source.text();
    return QString::fromUtf8(text, source.bytes());
}

template <typename Source>
Value natural(const Source& source) {
    switch (source.type()) {
        case SQLITE_INTEGER:
            return wholeValue(source.whole());
        case SQLITE_FLOAT:
            return source.real();
        case SQLITE_NULL:
            return {};
        default:
            return textOf(source);
    }
}

template <typename Source>
Value dateValue(const Source& source) {
    const char* text = source.text();
    const auto date = parseIso(text, source.bytes());
    return date ? Value(*date) : Value();
}

template <typename Source>
Value read(const Source& source, Type type) {
    if (source.type() == SQLITE_NULL) return {};
    switch (type) {
        case Type::Null:
            return natural(source);
        case Type::Bool:
            return source.whole() != 0;
        case Type::Short:
        case Type::Long:
            return wholeValue(source.type() == SQLITE_FLOAT ? readable(Value(source.real()).toInt()) : source.whole());
        case Type::Single:
            return static_cast<float>(source.real());
        case Type::Double:
            return source.real();
        case Type::Currency:
            return Money{source.whole()};
        case Type::Date:
            return dateValue(source);
        case Type::Text:
            return textOf(source);
    }
    return {};
}

QString reason(int code) {
    if (code == SQLITE_IOERR_FSYNC)  // it may be in the log all the same, and come back with the next start
        return QStringLiteral(
            "Der Datenträger hat nicht bestätigt, dass die Eingabe gespeichert ist. Bitte den Datenträger prüfen, "
            "KOBEN neu starten und nachsehen, ob die Eingabe da ist, bevor sie wiederholt wird");
    switch (code & 0xFF) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return QStringLiteral(
                "Die Datenbank wird gerade von einem anderen Programm oder einer offenen Abfrage benutzt. Bitte später "
                "noch einmal versuchen");
        case SQLITE_FULL:
            return QStringLiteral(
                "Auf dem Datenträger ist kein Platz mehr. Bitte Platz schaffen und die Eingabe wiederholen");
        case SQLITE_READONLY:
            return QStringLiteral(
                "Die Datenbank ist schreibgeschützt. Bitte die Rechte der Datei und des Ordners prüfen");
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return QStringLiteral("Die Datenbank ist beschädigt. Bitte eine Datensicherung zurückholen");
        case SQLITE_CANTOPEN:
            return QStringLiteral(
                "Die Datenbank kann nicht geöffnet werden. Bitte Pfad, Rechte und Datenträger prüfen");
        case SQLITE_IOERR:
            return QStringLiteral(
                "Die Datenbank kann nicht gelesen oder geschrieben werden, weil der Datenträger voll, schreibgeschützt "
                "oder gestört ist. Bitte Platz schaffen oder den Datenträger prüfen und die Eingabe wiederholen");
        case SQLITE_CONSTRAINT:
            return QStringLiteral("Ein Wert ist schon vorhanden oder fehlt, obwohl das Feld ihn verlangt");
        case SQLITE_TOOBIG:
            return QStringLiteral("Der Wert ist zu groß");
        default:
            return QStringLiteral("Die Anweisung kann nicht ausgeführt werden");
    }
}

/// The reasons that name a remedy are whole but for their end.
QString forUser(int code, const QString& problem) {
    switch (code & 0xFF) {
        case SQLITE_CONSTRAINT:
        case SQLITE_TOOBIG:
            return problem + QStringLiteral(". Bitte berichtigen Sie die Eingabe.");
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
        case SQLITE_FULL:
        case SQLITE_READONLY:
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
        case SQLITE_CANTOPEN:
        case SQLITE_IOERR:
            return problem + u'.';
        default:
            return programFault();
    }
}

Kind kindOf(int code) {
    switch (code & 0xFF) {
        case SQLITE_CONSTRAINT:
            return Kind::Constraint;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return Kind::NotADatabase;
        case SQLITE_TOOBIG:
            return Kind::TooLong;
        case SQLITE_ERROR:
            return Kind::Syntax;
        default:
            return Kind::Io;
    }
}

}  // namespace

void bindValue(sqlite3_stmt* s, int place, const Value& value) {
    struct {
        sqlite3_stmt* s;
        int n;
        void operator()(std::monostate) const { sqlite3_bind_null(s, n); }
        void operator()(bool v) const { sqlite3_bind_int(s, n, v ? 1 : 0); }
        void operator()(qint32 v) const { sqlite3_bind_int(s, n, v); }
        void operator()(qint64 v) const { sqlite3_bind_int64(s, n, v); }
        void operator()(float v) const { sqlite3_bind_double(s, n, static_cast<double>(v)); }
        void operator()(double v) const { sqlite3_bind_double(s, n, v); }
        void operator()(Money v) const { sqlite3_bind_int64(s, n, v.tenThousandths); }
        void operator()(DateTime v) const {
            char iso[32];
            sqlite3_bind_text(s, n, iso, formatIso(v, iso), SQLITE_TRANSIENT);
        }
        void operator()(const QString& v) const {
            const QByteArray utf8 = v.toUtf8();
            sqlite3_bind_text(s, n, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
        }
    } const bind{s, place};
    std::visit(bind, value.variant());
}

void resultValue(sqlite3_context* context, const Value& value) {
    struct {
        sqlite3_context* c;
        void operator()(std::monostate) const { sqlite3_result_null(c); }
        void operator()(bool v) const { sqlite3_result_int(c, v ? 1 : 0); }
        void operator()(qint32 v) const { sqlite3_result_int(c, v); }
        void operator()(qint64 v) const { sqlite3_result_int64(c, v); }
        void operator()(float v) const { sqlite3_result_double(c, static_cast<double>(v)); }
        void operator()(double v) const { sqlite3_result_double(c, v); }
        void operator()(Money v) const { sqlite3_result_int64(c, v.tenThousandths); }
        void operator()(DateTime v) const {
            char iso[32];
            sqlite3_result_text(c, iso, formatIso(v, iso), SQLITE_TRANSIENT);
        }
        void operator()(const QString& v) const {
            const QByteArray utf8 = v.toUtf8();
            sqlite3_result_text(c, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
        }
    } const result{context};
    std::visit(result, value.variant());
}

Value columnValue(sqlite3_stmt* statement, int column, Type type) {
    return read(ColumnSource{statement, column}, type);
}

Value argumentValue(sqlite3_value* value, Type type) { return read(ArgumentSource{value}, type); }

void throwSqlite(sqlite3* file, const QString& statement, int code) {
    const int error = code != SQLITE_OK ? code : sqlite3_extended_errcode(file);
    const QString problem = reason(error);
    QString detail =
        problem + QStringLiteral(" (SQLite %1: %2).").arg(error).arg(QString::fromUtf8(sqlite3_errmsg(file)));
    if (!statement.isEmpty()) detail += QStringLiteral("\r\nAnweisung: ") + statement;
    throw DatabaseError(kindOf(error), forUser(error, problem), detail);
}

void execute(sqlite3* file, const std::string& sql) {
    if (sqlite3_exec(file, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throwSqlite(file, QString::fromStdString(sql));
}

StatementHandle prepare(sqlite3* file, const std::string& sql, bool keep) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v3(file, sql.c_str(), static_cast<int>(sql.size()) + 1, keep ? SQLITE_PREPARE_PERSISTENT : 0,
                           &raw, nullptr) != SQLITE_OK)
        throwSqlite(file, QString::fromStdString(sql));
    return StatementHandle(raw);
}

qint64 number(sqlite3* file, const std::string& sql) {
    const StatementHandle s = prepare(file, sql);
    const int code = sqlite3_step(s.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) throwSqlite(file, QString::fromStdString(sql));
    return code == SQLITE_ROW ? sqlite3_column_int64(s.get(), 0) : 0;
}

}  // namespace koben

// The SQL dialect: statements parted by blank lines, run on a small database in one transaction that is rolled back.
//
// Demanded: what is refused is refused with a German sentence and a place within the text, and changes nothing; no
// emitted text is refused by SQLite itself but for its limits; values have the types that their fields tell; the three
// readers agree; constants that go through a shared plan do not change the result; the file stays sound.
#include <sqlite3.h>

#include <QDateTime>
#include <QTemporaryDir>
#include <optional>

#include "store/Database.h"
#include "tests/fuzz/Require.h"

namespace koben::fuzz {
namespace {

constexpr int Patience = 400;       // steps of the progress handler until a statement is cut off
constexpr int Schrittweite = 1000;  // SQLite's instructions a step
constexpr int Zeilen = 200;         // so many rows of a result are looked at
constexpr qsizetype Length = 4096;

/// SQLite's own view of the connection, caught as it is opened; cuts off statements that run too long.
struct Leitung {
    sqlite3* file = nullptr;
    int steps = 0;
    bool cut = false;
};
Leitung leitung;

int opened(sqlite3* file, const char**, const void*) {
    leitung.file = file;
    sqlite3_progress_handler(
        file, Schrittweite, [](void*) { return ++leitung.steps > Patience ? leitung.cut = true, 1 : 0; }, nullptr);
    return SQLITE_OK;
}

const char* const Grundlage[] = {
    "create table Sauen(Art TEXT (6), Nummer TEXT (15), Geburtsdatum DATETIME, Preis CURRENCY, Gewicht SINGLE, Mittel "
    "DOUBLE, Anz LONG, Nr SHORT, Aktiv BIT, Infos MEMO, ID COUNTER)",
    "create index nummer on Sauen(Nummer)",
    "create index art on Sauen(Art, Nr desc)",
    "create table Trächtigkeit(Datum DATETIME, Trächtig TEXT (1), Kosten CURRENCY, Kennung LONG, ID COUNTER)",
    "create index datum on Trächtigkeit(Datum)",
    "create table Worte(Wort TEXT (5), Zahl LONG)",
    "create unique index wort on Worte(Wort)",
    "insert into Sauen values ('Sau', 'A1', #3/2/2020#, 250.5, 12.5, 0.1, 3, 1, true, 'lang', null)",
    "insert into Sauen values ('Sau', 'a10', #12/31/2021 10:30:00#, 100, 0.1, 1e300, 10, -1, false, '', null)",
    "insert into Sauen values ('Eber', 'Ä3', null, null, null, null, null, null, null, null, null)",
    "insert into Sauen values ('Mast', 'ß', #1/1/0100#, 922337203685477.5807, 3e38, -1e-300, 2147483647, 32767, true, "
    "'O''Hara', null)",
    "insert into Sauen values ('', 'b-2 ', #12/31/9999 23:59:59#, -922337203685477.5807, -0.5, 2.5, -2147483647, "
    "-32768, false, 'x\ny', null)",
    "insert into Trächtigkeit values (#1/1/2024#, 'J', 10.5, 1, null)",
    "insert into Trächtigkeit values (#2/1/2024#, 'N', 0.0001, 1, null)",
    "insert into Trächtigkeit values (null, 'j', null, 2, null)",
    "insert into Worte values ('a', 1)",
    "insert into Worte values ('ä', null)"};

struct Bestand {
    QTemporaryDir folder{place()};
    Workspace workspace{[] { return QDateTime(QDate(2026, 7, 15), QTime(10, 30)); }};
    Database db;
    QString whole;

    Bestand() {
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(opened));
        db = workspace.create(folder.filePath(QStringLiteral("t.mdb")));
        for (const char* statement : Grundlage) db.execute(QString::fromUtf8(statement));
        whole = contentOf();
    }
    /// Everything that the dialect sees.
    QString contentOf() const {
        leitung.steps = 0;
        QString text;
        for (const QString& name : db.tables()) {
            const Table table = db.table(QStringLiteral("select * from [%1]").arg(name));
            text += u'[' + name + u']';
            for (int c = 0; c < table.columnCount(); ++c) text += table.field(c).name + u'|';
            for (int row = 0; row < table.rowCount(); ++row)
                for (int c = 0; c < table.columnCount(); ++c)
                    text += (table.isNull(row, c) ? QStringLiteral("-") : table.text(row, c)) + u'|';
        }
        return text;
    }
    QString integrityReport() const {
        leitung.steps = 0;
        QString answer;
        sqlite3_exec(
            leitung.file, "PRAGMA integrity_check",
            [](void* out, int, char** values, char**) {
                *static_cast<QString*>(out) += QString::fromUtf8(values[0]);
                return 0;
            },
            &answer, nullptr);
        return answer;
    }
};

/// Limits of SQLite, and numbers beyond 64 bits: the only errors that may come from its side.
bool isBoundary(const QString& message) {
    for (const char* words : {"too many", "too large", "too big", "too long", "at most 64 tables", "parser stack",
                              "integer overflow", "interrupted", "UNIQUE constraint", "NOT NULL constraint"})
        if (message.contains(QString::fromUtf8(words))) return true;
    return false;
}

void checkInput(const DatabaseError& error, const QString& statement) {
    const QString message = error.detail();
    require(error.position >= -1 && error.position <= statement.size(), "place outside the text", message);
    const QString sentence = message.section(QStringLiteral("\r\nAnweisung: "), 0, 0);
    require(sentence.size() > 10 && (sentence.front().isUpper() || sentence.front() == u'"') &&
                sentence.endsWith(u'.') && sentence.contains(u' '),
            "no sentence", message);
    if (leitung.cut || !sentence.contains(QStringLiteral("(SQLite "))) return;
    require(isBoundary(sentence), "refused by SQLite", message);
}

bool fitsType(const Value& value, const Field& field) {
    const auto is = [&]<class... T>() { return (std::holds_alternative<T>(value.variant()) || ...); };
    switch (field.type) {
        case Type::Bool:
            return is.operator()<bool>();
        case Type::Short:
        case Type::Long:
            return is.operator()<qint32, qint64>();
        case Type::Single:
            return is.operator()<float>();
        case Type::Double:
            return is.operator()<double>();
        case Type::Currency:
            return is.operator()<Money>();
        case Type::Date: {
            const auto* date = std::get_if<DateTime>(&value.variant());
            return date != nullptr && date->second >= 0 && date->second < 86400 && date->date().year() >= 100 &&
                   date->date().year() <= 9999;
        }
        case Type::Text:
            return value.isText() && (field.size == 0 || value.toText().size() <= field.size);
        default:
            return true;
    }
}

bool equalRows(const Value& a, const Value& b) { return a.isNull() == b.isNull() && a.toText() == b.toText(); }

/// The cells of a result as text, after each was looked at.
QString readBack(const Table& table, const QString& statement) {
    QString text;
    for (int c = 0; c < table.columnCount(); ++c) {
        const Field& field = table.field(c);
        require(field.type == Type::Text || field.size == 0, "size without a text", statement);
        text += field.name + u'|';
        for (int row = 0; row < std::min(table.rowCount(), Zeilen); ++row) {
            const Value value = table.value(row, c);
            require(value.isNull() == table.isNull(row, c), "Null or not", statement);
            require(value.isNull() || fitsType(value, field), "another type than told", statement + u'\n' + field.name);
            require(value.toText() == table.text(row, c), "two texts of a value", statement);
            require(table.compare(row, row, c) == 0, "a value unequal to itself", statement);
            text += (value.isNull() ? QStringLiteral("-") : value.toText()) + u'|';
        }
    }
    return text;
}

void compareReaders(const Database& db, const Table& table, const QString& statement) {
    Recordset rows = db.open(statement);
    require(rows.fieldCount() == table.columnCount(), "fields of the cursor", statement);
    std::optional<Statement> stream;
    if (!statement.trimmed().startsWith(QLatin1String("transform"), Qt::CaseInsensitive))
        stream = db.prepare(statement);
    if (stream) stream->bind({});
    for (int row = 0; row < std::min(table.rowCount(), Zeilen); ++row, rows.moveNext()) {
        require(!rows.eof() && (!stream || stream->next()), "a reader ends early", statement);
        for (int c = 0; c < table.columnCount(); ++c) {
            const Value value = table.value(row, c);
            require(equalRows(rows.value(c), value) && (!stream || equalRows(stream->value(c), value)), "values",
                    statement);
        }
    }
}

/// Reads again through a plan that the same statement with other constants has made.
void comparePlan(Database& db, const QString& first, const QString& statement) {
    QString other = statement;
    for (QChar& c : other)
        if (c >= u'1' && c <= u'8') c = QChar(c.unicode() + 1);
    try {
        db.execute(QStringLiteral("create table Zwischen(a LONG)"));  // a change of tables forgets all plans
        db.execute(QStringLiteral("drop table Zwischen"));
        db.table(other);
    } catch (const DatabaseError&) {
    }
    if (leitung.cut) return;
    const QString again = readBack(db.table(statement), statement);
    require(again == first || leitung.cut, "another result through a shared plan", statement + u'\n' + first + again);
}

/// Whether the statement wrote.
bool runStatement(Bestand& farm, const QString& statement) {
    leitung.steps = 0;
    const QString word = statement.trimmed().section(u' ', 0, 0).toLower();
    const bool reads = word.startsWith(u"select") || word.startsWith(u"transform");
    const QString before = reads ? QString() : farm.contentOf();
    try {
        if (!reads) {
            leitung.steps = 0;
            if (!statement.contains(u'?')) return farm.db.execute(statement), true;
            std::vector<Value> values = {Value(1), Value(QStringLiteral("a")), Value(2.5), Value()};
            values.resize(std::min<size_t>(static_cast<size_t>(statement.count(u'?')), 4));
            return farm.db.prepare(statement).run(values), true;
        }
        const Table table = farm.db.table(statement);
        const QString text = readBack(table, statement);
        compareReaders(farm.db, table, statement);
        comparePlan(farm.db, text, statement);
    } catch (const DatabaseError& error) {
        checkInput(error, statement);
        if (!reads && !leitung.cut)
            require(farm.contentOf() == before, "a refused statement changed something", error.message());
    }
    return false;
}

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben::fuzz;
    static Bestand farm;
    leitung.cut = false;
    const QString text = QString::fromUtf8(raw(data, size)).left(Length);
    bool wrote = false;
    {
        const koben::Transaction action(farm.db);
        for (const QString& statement : text.split(QStringLiteral("\n\n"))) {
            wrote = runStatement(farm, statement) || wrote;
            if (leitung.cut) break;
        }
        if (wrote && !leitung.cut)
            require(farm.integrityReport() == u"ok", "unsound", farm.integrityReport() + u'\n' + text);
    }
    if (wrote) require(farm.contentOf() == farm.whole, "left behind by a rollback", text);
    return 0;
}

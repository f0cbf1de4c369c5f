#include "store/OldRowWriter.h"

#include <QUtf8StringView>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "store/CollationUtf8.h"
#include "store/Connection.h"
#include "store/Convert.h"
#include "store/IsoDate.h"
#include "store/OldFileFormat.h"

namespace koben {

namespace {

using Cell = oldfile::Type;

template <class Number>
Number numberIn(QByteArrayView bytes) {
    Number value{};
    std::memcpy(&value, bytes.data(), sizeof(value));
    return value;
}

bool bindInteger(sqlite3_stmt* s, int place, qint64 value) { return sqlite3_bind_int64(s, place, value) == SQLITE_OK; }

/// 0 counts by itself in a counter, and the lowest number of two bytes has no place.
bool bindWhole(sqlite3_stmt* s, int place, qint64 value, const sql::ColumnInfo& column) {
    if (column.type == Type::Short && value == std::numeric_limits<qint16>::min()) return false;
    return !(column.counter && value == 0) && bindInteger(s, place, value);
}

bool bindReal(sqlite3_stmt* s, int place, double value) {
    return std::isfinite(value) && sqlite3_bind_double(s, place, value) == SQLITE_OK;
}

bool bindNumber(sqlite3_stmt* s, int place, Cell cell, QByteArrayView bytes, const sql::ColumnInfo& column) {
    switch (column.type) {
        case Type::Bool:
            return cell == Cell::Bool && bindInteger(s, place, bytes[0] != 0);
        case Type::Short:
        case Type::Long:
            if (cell == Cell::Byte) return bindWhole(s, place, static_cast<quint8>(bytes[0]), column);
            if (cell == Cell::Short) return bindWhole(s, place, numberIn<qint16>(bytes), column);
            return cell == Cell::Long && column.type == Type::Long &&
                   bindWhole(s, place, numberIn<qint32>(bytes), column);
        case Type::Currency:
            return cell == Cell::Money && bindInteger(s, place, numberIn<qint64>(bytes));
        case Type::Single:
            return cell == Cell::Single && bindReal(s, place, static_cast<double>(numberIn<float>(bytes)));
        case Type::Double:
            return cell == Cell::Double && bindReal(s, place, numberIn<double>(bytes));
        default:
            return false;
    }
}

/// A whole day; `text` holds it until the row is written.
bool bindDay(sqlite3_stmt* s, int place, QByteArrayView bytes, char* text) {
    constexpr double first = -657434, last = 2958465;
    static const qint64 zero = QDate(1899, 12, 30).toJulianDay();
    const auto serial = numberIn<double>(bytes);
    if (!(serial >= first && serial <= last) || serial != std::trunc(serial)) return false;
    const DateTime day{static_cast<qint32>(zero + static_cast<qint64>(serial)), 0};
    return sqlite3_bind_text(s, place, text, formatIso(day, text), SQLITE_STATIC) == SQLITE_OK;
}

/// In UTF-8 a text has at least as many bytes as characters.
bool isText(QByteArrayView bytes, int most) {
    return (most == 0 || bytes.size() <= most) && QUtf8StringView(bytes).isValidUtf8();
}

}  // namespace

/// What one parameter of the statement is bound to.
struct OldRowWriter::Target {
    size_t index;  ///< among the fields
    const sql::ColumnInfo* column;
    bool key;
    std::array<char, 32> day{};
};

struct OldRowWriter::Prepared {
    Command command;
    StatementHandle statement;
    std::vector<Target> targets;
    bool plain = true;  ///< every parameter is the value or the sort key of a field
};

OldRowWriter::OldRowWriter(Connection& connection, const QString& table, const QStringList& fields, const OldTable& old,
                           const std::vector<int>& places)
    : m_connection(connection), m_old(old), m_places(places) {
    const QStringList marks(fields.size(), QStringLiteral("?"));
    m_text = QStringLiteral("insert into %1 (%2) values (%3)")
                 .arg(table, fields.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")));
}

OldRowWriter::~OldRowWriter() = default;

void OldRowWriter::prepare() {
    m_prepared = std::make_unique<Prepared>();
    m_prepared->command = m_connection.command(m_text);
    const sql::Plan& plan = *m_prepared->command.plan;
    m_prepared->statement = koben::prepare(m_connection.file(), plan.sql, true);
    for (const sql::Slot& slot : plan.slots) {
        m_prepared->plain = m_prepared->plain && slot.from == sql::Slot::From::Parameter && slot.column != nullptr;
        m_prepared->targets.push_back({static_cast<size_t>(slot.index), slot.column, slot.key, {}});
    }
    const int parameters = sqlite3_bind_parameter_count(m_prepared->statement.get());
    if (parameters != static_cast<int>(plan.slots.size())) m_prepared->plain = false;
}

bool OldRowWriter::insert(const OldRow& row, const std::vector<Value>& further) {
    if (m_prepared == nullptr) prepare();
    if (!m_prepared->plain) return false;
    int place = 0;
    for (Target& target : m_prepared->targets)
        if (!bind(target, ++place, row, further)) return false;
    m_connection.aboutToWrite(m_text);
    while (m_connection.step(m_prepared->statement.get(), m_text)) {
    }
    sqlite3_reset(m_prepared->statement.get());
    return true;
}

/// The row's bytes outlive the statement's run and are not copied.
bool OldRowWriter::bind(Target& target, int place, const OldRow& row, const std::vector<Value>& further) {
    sqlite3_stmt* s = m_prepared->statement.get();
    const sql::ColumnInfo& column = *target.column;
    const auto bindKey = [&](std::string_view text) {
        const QByteArray key = sortKey(text);
        return sqlite3_bind_blob(s, place, key.constData(), static_cast<int>(key.size()), SQLITE_TRANSIENT) ==
               SQLITE_OK;
    };
    if (target.index >= m_places.size()) {
        try {
            const Value value = assign(further[target.index - m_places.size()], column.type, column.size, column.name);
            if (target.key && !value.isNull()) return bindKey(value.toText().toStdString());
            bindValue(s, place, value);
            return true;
        } catch (const ConversionError&) {
            return false;
        }
    }
    QByteArrayView bytes;
    const int from = m_places[target.index];
    if (!row.cell(from, bytes)) return false;
    if (bytes.isNull()) return sqlite3_bind_null(s, place) == SQLITE_OK;
    const auto cell = static_cast<Cell>(m_old.cells[static_cast<size_t>(from)]);
    if (column.type == Type::Date) return cell == Cell::Date && bindDay(s, place, bytes, target.day.data());
    if (column.type != Type::Text) return bindNumber(s, place, cell, bytes, column);
    if ((cell != Cell::Text && cell != Cell::Memo) || !isText(bytes, column.size)) return false;
    if (target.key) return bindKey({bytes.data(), static_cast<size_t>(bytes.size())});
    return sqlite3_bind_text(s, place, bytes.data(), static_cast<int>(bytes.size()), SQLITE_STATIC) == SQLITE_OK;
}

}  // namespace koben

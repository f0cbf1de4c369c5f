#include "store/JournalCoding.h"

#include <QByteArray>
#include <algorithm>
#include <cstring>

#include "store/DatabaseError.h"

namespace koben::journal {
namespace {

enum Tag : unsigned char { Null, Zero, Whole, WholeReal, Real, Text, ShortText = 16 };
/// Tables with the field of which no two rows are to have the same text.
struct Name {
    const char* table;
    const char* field;
};
constexpr Name Names[] = {{"Sauen", "Nummer"},
                          {"Medikamente", "Medikament"},
                          {"Bestandsoptionen", "Tiergruppe"},
                          {"Arbeitsplanoptionen", "Arbeitsart"}};

constexpr size_t LongestShort = 255 - ShortText;
constexpr size_t WorthPacking = 512;
constexpr int QuickPacking = 1;

void put(Bytes& out, Tag tag) { out.push_back(static_cast<char>(tag)); }

void putReal(Bytes& out, double value) {
    constexpr double exact = 1e15;
    if (const auto whole = std::abs(value) < exact ? static_cast<qint64>(value) : 0;
        static_cast<double>(whole) == value && (whole != 0 || !std::signbit(value))) {
        put(out, WholeReal);
        return putSigned(out, whole);
    }
    put(out, Real);
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    out.append(bytes, sizeof value);
}

std::string_view textOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {text == nullptr ? "" : text, static_cast<size_t>(sqlite3_value_bytes(value))};
}

}  // namespace

QString nameField(const QString& table) {
    for (const Name& name : Names)
        if (table == QLatin1String(name.table)) return QString::fromUtf8(name.field);
    return {};
}

void putNumber(Bytes& out, quint64 value) {
    for (; value >= 0x80; value >>= 7) out.push_back(static_cast<char>(value | 0x80));
    out.push_back(static_cast<char>(value));
}

void putSigned(Bytes& out, qint64 value) {
    putNumber(out, (static_cast<quint64>(value) << 1) ^ static_cast<quint64>(value >> 63));
}

void putText(Bytes& out, std::string_view utf8) {
    putNumber(out, utf8.size());
    out.append(utf8);
}

void putValue(Bytes& out, sqlite3_value* value, bool real) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            return put(out, Null);
        case SQLITE_FLOAT:
            return putReal(out, sqlite3_value_double(value));
        case SQLITE_INTEGER: {
            const qint64 whole = sqlite3_value_int64(value);
            if (real) return putReal(out, static_cast<double>(whole));
            if (whole == 0) return put(out, Zero);
            put(out, Whole);
            return putSigned(out, whole);
        }
        default: {
            const std::string_view text = textOf(value);
            if (text.size() <= LongestShort) {
                out.push_back(static_cast<char>(ShortText + text.size()));
                out.append(text);
                return;
            }
            put(out, Text);
            putText(out, text);
        }
    }
}

bool sameValues(sqlite3_value* a, sqlite3_value* b) {
    const int type = sqlite3_value_type(a);
    if (type != sqlite3_value_type(b))
        return type != SQLITE_NULL && sqlite3_value_numeric_type(a) != SQLITE_TEXT && type != SQLITE_TEXT &&
               sqlite3_value_type(b) != SQLITE_TEXT && sqlite3_value_type(b) != SQLITE_NULL &&
               sqlite3_value_double(a) == sqlite3_value_double(b);
    if (type == SQLITE_NULL) return true;
    if (type == SQLITE_INTEGER) return sqlite3_value_int64(a) == sqlite3_value_int64(b);
    if (type == SQLITE_FLOAT) return sqlite3_value_double(a) == sqlite3_value_double(b);
    return textOf(a) == textOf(b);
}

std::string_view Reader::take(size_t count) {
    if (count > m_left.size() || count == 0)
        throw DatabaseError(DatabaseError::Kind::State,
                            QStringLiteral("Ein Eintrag im Verlauf ist beschädigt und kann nicht gelesen werden."));
    const std::string_view result = m_left.substr(0, count);
    m_left.remove_prefix(count);
    return result;
}

quint64 Reader::number() {
    quint64 result = 0;
    for (int shift = 0; shift < 64; shift += 7) {
        const auto part = static_cast<unsigned char>(byte());
        result |= static_cast<quint64>(part & 0x7F) << shift;
        if (part < 0x80) break;
    }
    return result;
}

qint64 Reader::signedNumber() {
    const quint64 value = number();
    return static_cast<qint64>((value >> 1) ^ (~(value & 1) + 1));
}

std::string_view Reader::text() {
    const size_t size = number();
    return size == 0 ? std::string_view() : take(size);
}

Value Reader::value() {
    const auto whole = [](qint64 v) { return v == static_cast<qint32>(v) ? Value(static_cast<qint32>(v)) : Value(v); };
    const auto words = [](std::string_view s) { return Value(QString::fromUtf8(s.data(), qsizetype(s.size()))); };
    const auto tag = static_cast<unsigned char>(byte());
    switch (tag) {
        case Null:
            return {};
        case Zero:
            return 0;
        case Whole:
            return whole(signedNumber());
        case WholeReal:
            return static_cast<double>(signedNumber());
        case Real: {
            double real = 0;
            std::memcpy(&real, take(sizeof real).data(), sizeof real);
            return real;
        }
        case Text:
            return words(text());
        default:
            return words(tag > ShortText ? take(tag - ShortText) : std::string_view());
    }
}

std::string_view Reader::rawValue() {
    const std::string_view before = m_left;
    const auto tag = static_cast<unsigned char>(byte());
    if (tag == Whole || tag == WholeReal) number();
    if (tag == Real) take(sizeof(double));
    if (tag == Text) text();
    if (tag > ShortText) take(tag - ShortText);
    return before.substr(0, before.size() - m_left.size());
}

Runs Runs::of(std::vector<qint64> rows) {
    std::sort(rows.begin(), rows.end());
    Runs result;
    for (const qint64 row : rows) {
        auto& runs = result.m_runs;
        if (!runs.empty() && row <= runs.back().second + 1)
            runs.back().second = row;
        else
            runs.emplace_back(row, row);
    }
    return result;
}

bool Runs::contains(qint64 row) const {
    const auto after = std::upper_bound(m_runs.begin(), m_runs.end(), row,
                                        [](qint64 wanted, const auto& run) { return wanted < run.first; });
    return after != m_runs.begin() && row <= std::prev(after)->second;
}

bool Runs::meets(const Runs& other) const {
    auto a = m_runs.begin(), b = other.m_runs.begin();
    while (a != m_runs.end() && b != other.m_runs.end()) {
        if (a->second < b->first)
            ++a;
        else if (b->second < a->first)
            ++b;
        else
            return true;
    }
    return false;
}

void Runs::put(Bytes& out) const {
    putNumber(out, m_runs.size());
    qint64 last = 0;
    for (const auto& [first, end] : m_runs) {
        putSigned(out, first - last);
        putNumber(out, static_cast<quint64>(end - first));
        last = end;
    }
}

Runs Runs::read(Reader& in) {
    Runs result;
    qint64 last = 0;
    for (quint64 left = in.number(); left > 0; --left) {
        const qint64 first = last + in.signedNumber();
        last = first + static_cast<qint64>(in.number());
        result.m_runs.emplace_back(first, last);
    }
    return result;
}

Bytes packed(Bytes plain) {
    if (plain.size() >= WorthPacking) {
        const QByteArray small =
            qCompress(reinterpret_cast<const uchar*>(plain.data()), qsizetype(plain.size()), QuickPacking);
        if (static_cast<size_t>(small.size()) < plain.size()) return '\1' + small.toStdString();
    }
    plain.insert(plain.begin(), '\0');
    return plain;
}

Bytes unpacked(std::string_view bytes) {
    if (bytes.empty()) return {};
    const std::string_view rest = bytes.substr(1);
    if (bytes.front() == '\0') return Bytes(rest);
    const QByteArray plain = qUncompress(reinterpret_cast<const uchar*>(rest.data()), qsizetype(rest.size()));
    return plain.toStdString();
}

}  // namespace koben::journal

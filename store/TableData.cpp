#include "store/TableData.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "store/CollationUtf8.h"

namespace koben {
namespace {

constexpr qint32 kNarrowNull = std::numeric_limits<qint32>::min();
constexpr qint64 kWideNull = std::numeric_limits<qint64>::min();
constexpr quint32 kTextNull = std::numeric_limits<quint32>::max();
constexpr qint64 kSecondsPerDay = 86400;

template <typename T>
int order(T a, T b) {
    return a < b ? -1 : a > b ? 1 : 0;
}

}  // namespace

ColumnStore::Layout ColumnStore::layoutOf(Type type) {
    switch (type) {
        case Type::Single:
            return Layout::Float;
        case Type::Double:
            return Layout::Double;
        case Type::Text:
        case Type::Null:
            return Layout::Text;
        default:
            return Layout::Narrow;
    }
}

void ColumnStore::appendNull() {
    switch (m_layout) {
        case Layout::Narrow:
            m_narrow.push_back(kNarrowNull);
            break;
        case Layout::Wide:
            m_wide.push_back(kWideNull);
            break;
        case Layout::Float:
            m_floats.push_back(std::numeric_limits<float>::quiet_NaN());
            break;
        case Layout::Double:
            m_doubles.push_back(std::numeric_limits<double>::quiet_NaN());
            break;
        case Layout::Text:
            m_numbers.push_back(kTextNull);
            break;
    }
}

void ColumnStore::widen() {
    const qint64 factor = m_timed ? kSecondsPerDay : 1;
    m_wide.reserve(m_narrow.capacity());
    for (const qint32 v : m_narrow) m_wide.push_back(v == kNarrowNull ? kWideNull : v * factor);
    m_narrow = {};
    m_layout = Layout::Wide;
}

void ColumnStore::appendRaw(qint64 value) {
    value = std::max(value, kWideNull + 1);
    if (m_layout == Layout::Narrow) {
        if (value > kNarrowNull && value <= std::numeric_limits<qint32>::max()) {
            m_narrow.push_back(static_cast<qint32>(value));
            return;
        }
        widen();
    }
    m_wide.push_back(value);
}

void ColumnStore::appendWhole(qint64 value) {
    switch (m_layout) {
        case Layout::Float:
            m_floats.push_back(static_cast<float>(value));
            break;
        case Layout::Double:
            m_doubles.push_back(static_cast<double>(value));
            break;
        case Layout::Text:
            appendText(std::to_string(value));
            break;
        default:
            m_type == Type::Date ? appendNull() : appendRaw(value);
    }
}

void ColumnStore::appendReal(double value) {
    switch (m_layout) {
        case Layout::Float:
            m_floats.push_back(static_cast<float>(value));
            break;
        case Layout::Double:
            m_doubles.push_back(value);
            break;
        case Layout::Text:
            append(Value(Value(value).toText()));
            break;
        default:
            appendWhole(Value(value).toInt());
    }
}

void ColumnStore::appendDate(DateTime value) {
    if (m_type != Type::Date) return append(Value(Value(value).toText()));
    if (value.second != 0 && !m_timed) {
        m_timed = true;
        widen();
    }
    appendRaw(m_timed ? value.julianDay * kSecondsPerDay + value.second : value.julianDay);
}

void ColumnStore::appendText(std::string_view utf8) {
    if (m_layout == Layout::Text)
        m_numbers.push_back(numberOf(utf8));
    else
        appendNull();
}

void ColumnStore::append(const Value& value) {
    if (value.isNull()) return appendNull();
    if (value.isDate()) return appendDate(std::get<DateTime>(value.variant()));
    if (m_layout == Layout::Text) {
        const QByteArray utf8 = value.toText().toUtf8();
        return appendText({utf8.constData(), static_cast<size_t>(utf8.size())});
    }
    if (m_layout == Layout::Float || m_layout == Layout::Double) return appendReal(value.toDouble());
    if (m_type == Type::Bool) return appendWhole(value.toInt() != 0 ? 1 : 0);
    appendWhole(m_type == Type::Currency ? value.toMoney().tenThousandths : value.toInt());
}

bool ColumnStore::isNull(size_t row) const {
    switch (m_layout) {
        case Layout::Narrow:
            return m_narrow[row] == kNarrowNull;
        case Layout::Wide:
            return m_wide[row] == kWideNull;
        case Layout::Float:
            return std::isnan(m_floats[row]);
        case Layout::Double:
            return std::isnan(m_doubles[row]);
        case Layout::Text:
            break;
    }
    return m_numbers[row] == kTextNull;
}

qint64 ColumnStore::raw(size_t row) const { return m_layout == Layout::Narrow ? m_narrow[row] : m_wide[row]; }

DateTime ColumnStore::date(size_t row) const {
    const qint64 value = raw(row);
    if (!m_timed) return {static_cast<qint32>(value), 0};
    return {static_cast<qint32>(value / kSecondsPerDay), static_cast<qint32>(value % kSecondsPerDay)};
}

Value ColumnStore::value(size_t row) const {
    if (isNull(row)) return {};
    if (m_layout == Layout::Float) return m_floats[row];
    if (m_layout == Layout::Double) return m_doubles[row];
    if (m_layout == Layout::Text) {
        const std::string_view text = entry(m_numbers[row]);
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    if (m_type == Type::Date) return date(row);
    const qint64 whole = raw(row);
    if (m_type == Type::Currency) return Money{whole};
    if (m_type == Type::Bool) return whole != 0;
    return whole == static_cast<qint32>(whole) ? Value(static_cast<qint32>(whole)) : Value(whole);
}

qint64 ColumnStore::integer(size_t row) const {
    if (m_layout == Layout::Text || isNull(row)) return 0;
    if (m_layout == Layout::Float || m_layout == Layout::Double) return value(row).toInt();
    if (m_type == Type::Bool) return -raw(row);
    return m_type == Type::Date ? date(row).julianDay : raw(row);
}

int ColumnStore::compare(size_t a, size_t b) const {
    const bool nullA = isNull(a), nullB = isNull(b);
    if (nullA || nullB) return order(nullB, nullA);
    switch (m_layout) {
        case Layout::Float:
            return order(m_floats[a], m_floats[b]);
        case Layout::Double:
            return order(m_doubles[a], m_doubles[b]);
        case Layout::Text:
            return m_numbers[a] == m_numbers[b] ? 0 : compareTexts(entry(m_numbers[a]), entry(m_numbers[b]));
        default:
            return m_type == Type::Bool ? order(raw(b), raw(a)) : order(raw(a), raw(b));
    }
}

std::string_view ColumnStore::utf8(size_t row) const {
    return m_layout == Layout::Text && !isNull(row) ? entry(m_numbers[row]) : std::string_view();
}

/// Each different text is put in order once, by its sort key, of which the first eight bytes decide nearly always.
std::vector<quint32> ColumnStore::ranks() const {
    struct Key {
        quint64 head;
        quint32 number;
        size_t from, size;
    };
    std::string bytes;
    std::vector<Key> keys;
    keys.reserve(m_ends.size());
    for (quint32 number = 0; number < m_ends.size(); ++number) {
        const QByteArray key = sortKey(entry(number));
        quint64 head = 0;
        for (qsizetype i = 0; i < 8; ++i) head = head << 8 | (i < key.size() ? static_cast<quint8>(key[i]) : 0U);
        keys.push_back({head, number, bytes.size(), static_cast<size_t>(key.size())});
        bytes.append(key.constData(), static_cast<size_t>(key.size()));
    }
    const auto whole = [&](const Key& k) { return std::string_view(bytes).substr(k.from, k.size); };
    std::sort(keys.begin(), keys.end(),
              [&](const Key& a, const Key& b) { return a.head != b.head ? a.head < b.head : whole(a) < whole(b); });
    std::vector<quint32> byNumber(m_ends.size());
    quint32 rank = 0;
    for (size_t i = 0; i < keys.size(); ++i) {
        if (i == 0 || whole(keys[i]) != whole(keys[i - 1])) ++rank;
        byNumber[keys[i].number] = rank;
    }
    std::vector<quint32> result;
    result.reserve(m_numbers.size());
    for (const quint32 number : m_numbers) result.push_back(number == kTextNull ? 0 : byNumber[number]);
    return result;
}

std::string_view ColumnStore::entry(quint32 number) const {
    const size_t from = number == 0 ? 0 : m_ends[number - 1];
    return std::string_view(m_arena).substr(from, m_ends[number] - from);
}

quint32 ColumnStore::numberOf(std::string_view utf8) {
    const quint32 last = m_numbers.empty() ? kTextNull : m_numbers.back();
    if (last != kTextNull && entry(last) == utf8) return last;  // neighbours are often alike
    if (m_slots.size() < 2 * (m_ends.size() + 1)) rehash();
    const size_t mask = m_slots.size() - 1;
    size_t slot = std::hash<std::string_view>{}(utf8)&mask;
    for (; m_slots[slot] != 0; slot = (slot + 1) & mask)
        if (entry(m_slots[slot] - 1) == utf8) return m_slots[slot] - 1;
    m_arena.append(utf8);
    m_ends.push_back(m_arena.size());
    m_slots[slot] = static_cast<quint32>(m_ends.size());
    return m_slots[slot] - 1;
}

void ColumnStore::rehash() {
    m_slots.assign(std::max<size_t>(16, m_slots.size() * 2), 0);
    const size_t mask = m_slots.size() - 1;
    for (quint32 number = 0; number < m_ends.size(); ++number) {
        size_t slot = std::hash<std::string_view>{}(entry(number)) & mask;
        while (m_slots[slot] != 0) slot = (slot + 1) & mask;
        m_slots[slot] = number + 1;
    }
}

TableData::TableData(std::vector<Field> names) : fields(std::move(names)) {
    columns->reserve(fields.size());
    for (const Field& f : fields) columns->emplace_back(f.type);
}

}  // namespace koben

#include "forms/Grid.h"

#include <QSet>
#include <algorithm>
#include <numeric>

#include "core/PZ_Koben_Subs.h"
#include "store/Collation.h"

namespace koben {

namespace {

bool isNumber(Type type) {
    return type != Type::Text && type != Type::Date && type != Type::Null && type != Type::Bool;
}

bool isNumber(const Value& value) {
    return std::visit(
        [](const auto& v) {
            using T = std::decay_t<decltype(v)>;
            return !std::is_same_v<T, std::monostate> && !std::is_same_v<T, bool> && !std::is_same_v<T, DateTime> &&
                   !std::is_same_v<T, QString>;
        },
        value.variant());
}

qint64 changedKey(int source, int column) { return static_cast<qint64>(source) << 12 | column; }

/// A cell's number with a decimal comma and thousands points, or such an amount; texts that are none sort before all
/// numbers.
double cellNumber(QString text) {
    if (text.endsWith(u'€')) text.chop(1);
    text.remove(u'.').replace(u',', u'.');
    bool ok = false;
    const double number = text.trimmed().toDouble(&ok);
    return ok ? number : -1e300;
}

template <class Number>
int compareNumbers(Number a, Number b) {
    return a < b ? -1 : a > b;
}

int compareDates(const QString& a, const QString& b) {
    return QString::compare(Datum_als_Text(QString(a)), Datum_als_Text(QString(b)));
}

}  // namespace

std::vector<std::pair<QString, QString>> Explanation::figures() const {
    std::vector<std::pair<QString, QString>> found;
    if (numerator) found.emplace_back(QStringLiteral("Zähler"), *numerator);
    if (denominator) found.emplace_back(QStringLiteral("Nenner"), *denominator);
    if (value) found.emplace_back(QStringLiteral("Wert"), *value);
    return found;
}

void Grid::clear() {
    m_columns.clear();
    m_sortColumn = m_sortDirection = 0;
    clearRows();
    notify(Aspect::Columns);
}

void Grid::addColumn(const Column& column) {
    m_columns.push_back(column);
    notify(Aspect::Columns);
}

int Grid::columnOf(QStringView key) const {
    for (size_t i = 0; i < m_columns.size(); ++i)
        if (key.compare(m_columns[i].key, Qt::CaseInsensitive) == 0) return static_cast<int>(i + 1);
    return 0;
}

void Grid::clearRows() {
    m_table = Table();
    m_bound = false;
    m_cells.clear();
    explain = nullptr;
    lead = nullptr;
    resetRows(0);
}

void Grid::resetRows(int count) {
    m_changed.clear();
    m_order.resize(static_cast<size_t>(count));
    std::iota(m_order.begin(), m_order.end(), 0);
    m_marks.assign(static_cast<size_t>(count), false);
    m_row = 0;
    notify(Aspect::Rows);
}

void Grid::unbind() {
    if (!m_bound) return;
    m_cells.reserve(m_marks.size());
    for (int source = 0; source < m_table.rowCount(); ++source) {
        Row cells;
        for (int column = 1; column <= columnCount(); ++column)
            if (m_changed.contains(changedKey(source, column)))
                cells.append(sourceText(source, column));
            else
                cells.append(m_table.value(source, m_fieldOf[static_cast<size_t>(column - 1)]));
        m_cells.push_back({cells});
    }
    m_changed.clear();
    m_table = Table();
    m_bound = false;
}

void Grid::insertRow(int row, const QStringList& cells) {
    Row values;
    values.reserve(cells.size());
    for (const QString& cell : cells) values.append(cell);
    insert(row, {std::move(values)});
}

void Grid::insert(int row, Source source) {
    unbind();
    m_cells.push_back(std::move(source));
    m_marks.push_back(false);
    m_order.insert(m_order.begin() + (row - 1), static_cast<int>(m_cells.size()) - 1);
    if (m_row >= row) ++m_row;
    notify(Aspect::Rows);
}

void Grid::bind(const Table& table) {
    const bool keepColumns = [&] {
        if (m_columns.empty()) return false;
        return std::all_of(m_columns.begin(), m_columns.end(),
                           [&](const Column& c) { return table.columnOf(c.key) >= 0; });
    }();
    if (!keepColumns) {
        m_columns.clear();
        for (int f = 0; f < table.columnCount(); ++f) {
            const Field& field = table.field(f);
            m_columns.push_back({.key = field.name, .title = field.name});
        }
        m_sortColumn = m_sortDirection = 0;
    }
    m_fieldOf.clear();
    for (Column& column : m_columns) {
        const int own = static_cast<int>(m_fieldOf.size());  // a crosstab may name two fields alike
        const int f = keepColumns ? table.columnOf(column.key) : own;
        m_fieldOf.push_back(f);
        const Type type = table.field(f).type;
        if (type == Type::Date) column.sort = Sort::Date;
        if (isNumber(type)) column.sort = Sort::Number, column.align = Align::Right;
    }
    m_cells.clear();
    m_table = table;
    m_bound = true;
    notify(Aspect::Columns);
    resetRows(table.rowCount());
}

bool Grid::refresh(const Table& rows, const std::vector<qint64>& ids, QStringView key,
                   const std::vector<Order>& order) {
    const int keyColumn = columnOf(key);
    const int all = m_table.rowCount() + rows.rowCount();
    const bool mostlyGone = all > 2 * rowCount() + 1000;  // rows that went still take their place in the table
    if (!m_bound || !m_changed.isEmpty() || keyColumn == 0 || rows.columnCount() != m_table.columnCount() || mostlyGone)
        return false;
    const int keyField = m_fieldOf[static_cast<size_t>(keyColumn - 1)];
    const auto before = [&](int a, int b) {
        for (const auto& [column, down] : order)
            if (const int by = m_table.compare(a, b, m_fieldOf[static_cast<size_t>(column - 1)]))
                return down ? by > 0 : by < 0;
        return m_table.compare(a, b, keyField) < 0;
    };
    if (!std::is_sorted(m_order.begin(), m_order.end(), before)) return false;
    const QSet<qint64> gone(ids.begin(), ids.end());
    std::erase_if(m_order, [&](int source) { return gone.contains(m_table.integer(source, keyField)); });
    const int first = m_table.rowCount();
    m_table.append(rows);
    for (int source = first; source < m_table.rowCount(); ++source)
        m_order.insert(std::upper_bound(m_order.begin(), m_order.end(), source, before), source);
    m_marks.assign(static_cast<size_t>(m_table.rowCount()), false);
    m_row = 0;
    notify(Aspect::Rows);
    return true;
}

void Grid::share(const Grid& source, const QStringList& keys) {
    m_columns.clear();
    m_fieldOf.clear();
    for (const QString& key : keys) {
        const int column = source.columnOf(key);
        if (column == 0) continue;
        m_columns.push_back(source.column(column));
        m_columns.back().width = 0;
        m_fieldOf.push_back(source.m_fieldOf[static_cast<size_t>(column - 1)]);
    }
    m_cells.clear();
    m_changed.clear();
    m_table = source.m_table;
    m_bound = true;
    m_order = source.m_order;
    m_marks = source.m_marks;
    m_row = source.m_row;
    m_sortColumn = m_sortDirection = 0;
    notify(Aspect::Columns);
    notify(Aspect::Rows);
    notify(Aspect::Row);
    notify(Aspect::Marks);
}

void Grid::copy(const Grid& source) {
    clear();
    m_columns = source.m_columns;
    for (const int from : source.m_order)
        if (!source.m_bound) m_cells.push_back(source.m_cells[static_cast<size_t>(from)]);
    for (int row = 1; source.m_bound && row <= source.rowCount(); ++row) {
        Row cells;
        for (int column = 1; column <= columnCount(); ++column) cells.append(source.value(row, column));
        m_cells.push_back({cells});
    }
    const auto original = [rows = source.m_order](int row) { return rows.at(static_cast<size_t>(row - 1)) + 1; };
    if (source.lead) lead = [go = source.lead, original](int row, int column) { go(original(row), column); };
    if (source.explain)
        explain = [tell = source.explain, original](int row, int column) { return tell(original(row), column); };
    notify(Aspect::Columns);
    resetRows(static_cast<int>(m_cells.size()));
}

std::optional<Explanation> Grid::explanation(int row, int column) const {
    if (!explain || row < 1 || row > rowCount() || column < 1 || column > columnCount()) return {};
    return explain(m_order[static_cast<size_t>(row - 1)] + 1, column);
}

/// Of an unbound grid.
const Value& Grid::sourceValue(int source, int column) const {
    static const Value missing;
    const Row& cells = m_cells[static_cast<size_t>(source)].cells;
    return column <= cells.size() ? cells.at(column - 1) : missing;
}

qint64 Grid::animal(int row) const {
    const bool own = !m_bound && row >= 1 && row <= rowCount();
    return own ? m_cells[static_cast<size_t>(m_order[static_cast<size_t>(row - 1)])].animal : 0;
}

bool Grid::isSeparator(int row) const {
    return !m_bound && row >= 1 && row <= rowCount() &&
           m_cells[static_cast<size_t>(m_order[static_cast<size_t>(row - 1)])].separator;
}

QString Grid::sourceText(int source, int column) const {
    if (!m_bound) {
        const Value& value = sourceValue(source, column);
        const int decimals = m_columns[static_cast<size_t>(column - 1)].decimals;
        return decimals >= 0 && isNumber(value) ? Zahl_formatieren(value.toText(), decimals) : value.toText();
    }
    if (!m_changed.isEmpty()) {
        const auto changed = m_changed.constFind(changedKey(source, column));
        if (changed != m_changed.constEnd()) return *changed;
    }
    return m_table.text(source, m_fieldOf[static_cast<size_t>(column - 1)]);
}

QString Grid::cell(int row, int column) const {
    if (row < 1 || row > rowCount() || column < 1 || column > columnCount()) return {};
    return sourceText(m_order[static_cast<size_t>(row - 1)], column);
}

QString Grid::cell(int row, QStringView key) const { return cell(row, columnOf(key)); }

Value Grid::value(int row, int column) const {
    if (row < 1 || row > rowCount() || column < 1 || column > columnCount()) return {};
    if (!m_bound) return sourceValue(m_order[static_cast<size_t>(row - 1)], column);
    return m_table.value(m_order[static_cast<size_t>(row - 1)], m_fieldOf[static_cast<size_t>(column - 1)]);
}

Value Grid::value(int row, QStringView key) const { return value(row, columnOf(key)); }

qint64 Grid::integer(int row, int column) const {
    if (row < 1 || row > rowCount() || column < 1 || column > columnCount()) return 0;
    if (!m_bound) return cell(row, column).toLongLong();
    return m_table.integer(m_order[static_cast<size_t>(row - 1)], m_fieldOf[static_cast<size_t>(column - 1)]);
}

void Grid::setCell(int row, int column, const QString& text) {
    const int source = m_order.at(static_cast<size_t>(row - 1));
    if (m_bound) {
        m_changed.insert(changedKey(source, column), text);
    } else {
        Row& cells = m_cells[static_cast<size_t>(source)].cells;
        while (cells.size() < column) cells.append(QString());
        cells[column - 1] = text;
    }
    notify(Aspect::Rows);
}

void Grid::removeRow(int row) {
    if (row < 1 || row > rowCount()) return;
    const bool wasCurrent = row == m_row;
    m_order.erase(m_order.begin() + (row - 1));
    if (m_row > row) --m_row;  // the current record stays current
    notify(Aspect::Rows);
    if (wasCurrent) setRow(std::min(row, rowCount()));
}

void Grid::setRow(int row) {
    if (multi) {
        m_marks.assign(m_marks.size(), false);
        if (row >= 1 && row <= rowCount()) m_marks[static_cast<size_t>(m_order[static_cast<size_t>(row - 1)])] = true;
    }
    setRowKeepingMarks(row);
    if (multi) notify(Aspect::Marks);
}

void Grid::setRowKeepingMarks(int row) {
    m_row = row < 1 || row > rowCount() ? 0 : row;
    notify(Aspect::Row);
}

bool Grid::marked(int row) const {
    return row >= 1 && row <= rowCount() && m_marks[static_cast<size_t>(m_order[static_cast<size_t>(row - 1)])];
}

void Grid::setMarked(int row, bool on) {
    if (!multi || row < 1 || row > rowCount()) return;
    m_marks[static_cast<size_t>(m_order[static_cast<size_t>(row - 1)])] = on;
    notify(Aspect::Marks);
}

void Grid::clearMarks() {
    m_marks.assign(m_marks.size(), false);
    notify(Aspect::Marks);
}

int Grid::markedCount() const {
    return static_cast<int>(std::count_if(m_order.begin(), m_order.end(),
                                          [&](int source) { return m_marks[static_cast<size_t>(source)]; }));
}

std::vector<int> Grid::markedRows() const {
    std::vector<int> rows;
    for (int row = 1; row <= rowCount(); ++row)
        if (marked(row)) rows.push_back(row);
    return rows;
}

int Grid::compare(int a, int b, int column) const {
    if (m_bound && m_changed.isEmpty()) return m_table.compare(a, b, m_fieldOf[static_cast<size_t>(column - 1)]);
    const Sort sort = m_columns[static_cast<size_t>(column - 1)].sort;
    if (!m_bound && sort != Sort::Text) {
        const Value &left = sourceValue(a, column), &right = sourceValue(b, column);
        const auto days = [](const Value& v) { return v.isDate() ? v.toDate().toJulianDay() : 0; };
        if (sort == Sort::Date && !left.isText() && !right.isText()) return compareNumbers(days(left), days(right));
        if (sort == Sort::Number && isNumber(left) && isNumber(right))
            return compareNumbers(left.toDouble(), right.toDouble());
    }
    const QString left = sourceText(a, column), right = sourceText(b, column);
    switch (sort) {
        case Sort::Date:
            return compareDates(left, right);
        case Sort::Number:
            return compareNumbers(cellNumber(left), cellNumber(right));
        case Sort::Text:
            break;
    }
    return compareTexts(left, right);
}

void Grid::sort(int column, int direction) {
    if (column < 1 || column > columnCount() || (direction != 1 && direction != 2)) return;
    const int current = m_row > 0 ? m_order[static_cast<size_t>(m_row - 1)] : -1;
    if (m_bound && m_changed.isEmpty())
        m_table.sort(m_order, m_fieldOf[static_cast<size_t>(column - 1)], direction == 2);
    else
        std::stable_sort(m_order.begin(), m_order.end(), [&](int a, int b) {
            const int order = compare(a, b, column);
            return direction == 1 ? order < 0 : order > 0;
        });
    m_sortColumn = column;
    m_sortDirection = direction;
    if (current >= 0)
        m_row = static_cast<int>(std::find(m_order.begin(), m_order.end(), current) - m_order.begin()) + 1;
    notify(Aspect::Columns);
    notify(Aspect::Rows);
}

void Grid::reorder(const std::vector<int>& rows, int column, int direction) {
    if (rows.size() != m_order.size()) return;
    std::vector<int> order;
    order.reserve(rows.size());
    int current = 0;
    for (const int row : rows) {
        order.push_back(m_order.at(static_cast<size_t>(row - 1)));
        if (row == m_row) current = static_cast<int>(order.size());
    }
    m_order = std::move(order);
    m_row = current;
    m_sortColumn = column;
    m_sortDirection = direction;
    notify(Aspect::Columns);
    notify(Aspect::Rows);
}

int Grid::findLike(QStringView key, const QString& pattern) const {
    const int column = columnOf(key);
    if (column == 0) return 0;
    for (int row = 1; row <= rowCount(); ++row)
        if (likeText(cell(row, column), pattern)) return row;
    return 0;
}

int Grid::findText(QStringView key, const QString& text) const {
    const int column = columnOf(key);
    if (column == 0) return 0;
    for (int row = 1; row <= rowCount(); ++row)
        if (equalTexts(cell(row, column), text)) return row;
    return 0;
}

void Grid::choose(int row) {
    setRow(row);
    act(onRowChange);
}

void Grid::mark(const std::vector<int>& rows) {
    if (!multi) return;
    m_marks.assign(m_marks.size(), false);
    for (int row : rows)
        if (row >= 1 && row <= rowCount()) m_marks[static_cast<size_t>(m_order[static_cast<size_t>(row - 1)])] = true;
    notify(Aspect::Marks);
}

void Grid::click() { act(onClick); }

void Grid::doubleClick(int column) {
    if (!lead) return act(onDoubleClick);
    if (m_row > 0) act([&] { lead(m_order[static_cast<size_t>(m_row - 1)] + 1, column); });
}

void Grid::rightClick() { act(onRightClick); }

void Grid::sortByUser(int column, int direction) {
    sort(column, direction);
    act([&] {
        if (onSorted) onSorted(column);
    });
}

void Grid::resizeByUser(int column, int width) {
    if (column < 1 || column > columnCount()) return;
    this->column(column).width = width;
    act([&] {
        if (onResized) onResized(column);
    });
}

bool Grid::editByUser(int row, int column, const QString& text) {
    if (!canEdit || !canEdit(row, column)) return false;
    setCell(row, column, text);
    act([&] {
        if (onEdited) onEdited(row, column, text);
    });
    return true;
}

bool Grid::key(Key key) {
    if (key == Key::Delete && onDelete) {
        act(onDelete);
        return true;
    }
    if (key == Key::Enter && (onDoubleClick || lead) && !onKey) {
        doubleClick();
        return true;
    }
    return Control::key(key);
}

}  // namespace koben

#include "store/Table.h"

#include <algorithm>

#include "store/TableData.h"

namespace koben {

Table::Table() : m_data(std::make_shared<TableData>()) {}

int Table::rowCount() const { return static_cast<int>(m_data->rowCount()); }

int Table::columnCount() const { return static_cast<int>(m_data->fields.size()); }

const Field& Table::field(int column) const { return m_data->fields.at(static_cast<size_t>(column)); }

int Table::columnOf(QStringView name) const {
    const auto& fields = m_data->fields;
    for (size_t i = 0; i < fields.size(); ++i)
        if (name.compare(fields[i].name, Qt::CaseInsensitive) == 0) return static_cast<int>(i);
    return -1;
}

bool Table::isNull(int row, int column) const {
    return (*m_data->columns)[static_cast<size_t>(column)].isNull(m_data->rowAt(row));
}

Value Table::value(int row, int column) const {
    return (*m_data->columns)[static_cast<size_t>(column)].value(m_data->rowAt(row));
}

QString Table::text(int row, int column) const {
    const ColumnStore& store = (*m_data->columns)[static_cast<size_t>(column)];
    if (!store.isText()) return store.value(m_data->rowAt(row)).toText();
    const std::string_view utf8 = store.utf8(m_data->rowAt(row));
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

qint64 Table::integer(int row, int column) const {
    return (*m_data->columns)[static_cast<size_t>(column)].integer(m_data->rowAt(row));
}

int Table::compare(int rowA, int rowB, int column) const {
    return (*m_data->columns)[static_cast<size_t>(column)].compare(m_data->rowAt(rowA), m_data->rowAt(rowB));
}

void Table::sort(std::vector<int>& rows, int column, bool down) const {
    const ColumnStore& store = (*m_data->columns)[static_cast<size_t>(column)];
    const auto by = [&](auto order) {
        std::stable_sort(rows.begin(), rows.end(), [&](int a, int b) { return down ? order(b, a) : order(a, b); });
    };
    if (!store.isText()) return by([&](int a, int b) { return store.compare(m_data->rowAt(a), m_data->rowAt(b)) < 0; });
    const std::vector<quint32> ranks = store.ranks();
    by([&](int a, int b) { return ranks[m_data->rowAt(a)] < ranks[m_data->rowAt(b)]; });
}

void Table::append(const Table& rows) {
    if (m_data.use_count() > 1) m_data = std::make_shared<TableData>(*m_data);
    auto& columns = m_data->columns;
    if (columns.use_count() > 1) columns = std::make_shared<std::vector<ColumnStore>>(*columns);
    for (int row = 0; row < rows.rowCount(); ++row) {
        for (int c = 0; c < columnCount(); ++c) (*columns)[static_cast<size_t>(c)].append(rows.value(row, c));
        if (m_data->reordered) m_data->order.push_back(static_cast<quint32>(m_data->rows));
        ++m_data->rows;
    }
}

void Table::removeRow(int row) {
    if (m_data.use_count() > 1) m_data = std::make_shared<TableData>(*m_data);
    if (!m_data->reordered) {
        m_data->order.resize(m_data->rows);
        for (quint32 i = 0; i < m_data->order.size(); ++i) m_data->order[i] = i;
        m_data->reordered = true;
    }
    m_data->order.erase(m_data->order.begin() + row);
}

}  // namespace koben

#pragma once
// A whole result in memory, column by column: small enough for every animal of a large farm, and typed.
#include <QString>
#include <memory>
#include <vector>

#include "store/Value.h"

namespace koben {

struct TableData;

/// Rows are numbered from 0. Copies share the data; removeRow() detaches.
class Table {
public:
    Table();
    int rowCount() const;
    int columnCount() const;
    const Field& field(int column) const;
    /// Column by name, case-insensitive; -1 where there is none.
    int columnOf(QStringView name) const;

    bool isNull(int row, int column) const;
    Value value(int row, int column) const;
    /// As Value::toText(), made on demand.
    QString text(int row, int column) const;
    /// Whole number, date (Julian day) or money (ten-thousandths) without conversion; 0 for Null or text.
    qint64 integer(int row, int column) const;
    /// Below 0, 0, above 0: the order of the type, texts as Collation.h orders them, Null first.
    int compare(int rowA, int rowB, int column) const;
    /// Sorts row numbers by a column as compare() has it; rows equal in it keep their order.
    void sort(std::vector<int>& rows, int column, bool down) const;
    void removeRow(int row);
    /// Adds the rows of a table with the same fields at the end. Copies made before stay as they are.
    void append(const Table& rows);

    explicit Table(std::shared_ptr<TableData> data) : m_data(std::move(data)) {}

private:
    std::shared_ptr<TableData> m_data;
};

}  // namespace koben

#pragma once
// Rows of one table written many times with the same fields: prepared once, then run for each row.
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

#include "store/Database.h"

namespace koben {

using FieldValues = std::vector<std::pair<QString, Value>>;

/// Inserts and updates within the caller's transaction. A value that does not fit its field throws DatabaseError (Type
/// or TooLong, the first in the order of the fields) and leaves the row unwritten.
class RowWriter {
public:
    /// `fields` get their values with each row; `fixed` are the same in all of them.
    RowWriter(const Database& db, const QString& table, const QStringList& fields, const FieldValues& fixed = {});
    void insert(std::vector<Value> values);
    /// Sets the row's fields; false where there is no such row.
    bool update(qint64 id, std::vector<Value> values);

private:
    Database m_db;
    QString m_table;
    QStringList m_fields;
    std::vector<Value> m_fixed;
    std::optional<Statement> m_insert, m_update;  // prepared as they are needed
};

}  // namespace koben

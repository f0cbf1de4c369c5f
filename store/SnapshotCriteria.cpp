#include "store/SnapshotCriteria.h"

namespace koben {

int firstMatch(Connection& connection, const std::shared_ptr<const sql::Catalog>& catalog, const TableData& table,
               const QString& criteria) {
    QString prefix;
    for (const Field& f : table.fields)
        prefix += f.name + u'\u0002' + QString::number(static_cast<int>(f.type)) + u'\u0002';
    const Command command = connection.cached(prefix, criteria, [&](const sql::Text& text, const sql::Lexed& lexed) {
        return sql::compileSnapshotCriteria(text, lexed, catalog, table.fields);
    });
    Loan loan(connection, command.plan->sql);
    connection.bind(loan.get(), command, {});
    const auto first = static_cast<int>(command.plan->slots.size());
    const auto rows = static_cast<int>(table.rowCount());
    for (int row = 0; row < rows; ++row) {
        sqlite3_reset(loan.get());
        for (size_t c = 0; c < table.fields.size(); ++c)
            bindValue(loan.get(), first + static_cast<int>(c) + 1, (*table.columns)[c].value(table.rowAt(row)));
        if (connection.step(loan.get(), criteria)) return row;
    }
    return rows;
}

}  // namespace koben

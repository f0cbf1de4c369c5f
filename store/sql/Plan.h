#pragma once
// What a statement becomes: SQLite texts, the values to bind, the types of the result.
#include <memory>
#include <string>
#include <vector>

#include "store/sql/Ast.h"
#include "store/sql/Catalog.h"
#include "store/sql/Lexer.h"

namespace koben::sql {

/// A numbered place (?1 ...) of the emitted text and where its value comes from.
struct Slot {
    enum class From : quint8 { Literal, Parameter, Now, Today } from = From::Literal;
    int index = 0;                       ///< of the literal or parameter
    Type target = Type::Null;            ///< how it is bound; Null: as it is
    const ColumnInfo* column = nullptr;  ///< the field it is assigned to: full conversion with length and range
    bool key = false;                    ///< bound as the sort key of a text
    int position = -1;                   ///< in the statement, for messages
};

/// Equality of these result columns is a tie at the end of `top n`.
struct TopKey {
    int column = 0;
    Type type = Type::Null;
};

/// Rows and cells of a crosstab. Both results start with the row keys; the cells go on with pivot value and cell.
struct PivotPlan {
    std::string cellSql;
    std::vector<Field> keys;  ///< row keys, first columns of both results
    Field pivot, cell;
    bool fixed = false;  ///< the columns are listed
    std::vector<Value> columns;
};

struct Plan {
    enum class Kind : quint8 { Select, Pivot, Write, Ddl } kind = Kind::Select;
    std::string sql;
    std::vector<Slot> slots;
    std::vector<Field> fields;  ///< of the result; for a crosstab the row columns
    qint64 top = -1;
    std::vector<TopKey> topKeys;  ///< columns behind `fields` in the result
    int parameters = 0;

    // A select over one plain table can be a live cursor.
    const TableInfo* table = nullptr;
    std::string idSql;  ///< row numbers in order; topKeys stand behind in `idKeys`
    std::vector<TopKey> idKeys;
    std::string rowSql;        ///< the fields of the row `?` (number slots + 1)
    std::vector<int> columns;  ///< of the table, for each field; -1 for an expression

    const TableInfo* updated = nullptr;  ///< of an update, and the columns that it sets
    std::vector<int> sets;

    std::unique_ptr<PivotPlan> pivot;
    std::unique_ptr<Ddl> ddl;
    std::shared_ptr<const Catalog> catalog;
};

/// Parses, resolves and emits. Throws DatabaseError with the place.
std::shared_ptr<const Plan> compile(const Text& text, const Lexed& lexed,
                                    const std::shared_ptr<const Catalog>& catalog);
/// A where text over one table: its row numbers. `names` are further names of columns (aliases).
std::shared_ptr<const Plan> compileCriteria(const Text& text, const Lexed& lexed,
                                            const std::shared_ptr<const Catalog>& catalog, const TableInfo& table,
                                            const std::vector<std::pair<QString, int>>& names);
/// A where text over the fields of a finished result, bound as parameters 1 to n behind the slots.
std::shared_ptr<const Plan> compileSnapshotCriteria(const Text& text, const Lexed& lexed,
                                                    const std::shared_ptr<const Catalog>& catalog,
                                                    const std::vector<Field>& fields);

}  // namespace koben::sql

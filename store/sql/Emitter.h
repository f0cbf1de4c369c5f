#pragma once
// Writes SQLite's SQL from a resolved tree. Values by type: whole numbers and truth values as integers (true is 1),
// money as integer ten-thousandths, dates as ISO texts, texts as texts; every text comparison names its collation.
#include "store/sql/Plan.h"
#include "store/sql/Resolver.h"

namespace koben::sql {

/// The functions and the collation that the emitted texts call; registered by Functions.
inline constexpr const char* kCollate = " COLLATE KOBEN";

class Emitter {
public:
    Emitter(const Text& text, Plan& plan) : m_text(text), m_plan(plan) {}

    void query(const Query& query);
    void insert(const Insert& insert, const TableInfo& table, const std::vector<int>& columns);
    void update(const Update& update, const std::vector<int>& columns);
    void remove(const Delete& remove);
    /// "select rowid from table where condition".
    void rowsWhere(const Source& source, const Expr& condition);
    /// "select 1 from (fields as parameters) where condition".
    void snapshotWhere(const Source& source, const Expr& condition);

private:
    using Sql = std::string;

    // expressions
    Sql raw(const Expr& e);
    Sql as(const Expr& e, Type target);
    Sql cast(const Sql& sql, Type from, Type to) const;
    Sql truth(const Expr& e);
    Sql constant(const Value& value) const;
    Sql literalAs(const Expr& e, Type target);
    Sql slot(const Slot& slot);
    Sql name(const Expr& e) const;
    bool hasKey(const Expr& e) const;
    Sql key(const Expr& e);
    Sql compare(const Expr& a, const char* op, const Expr& b);
    Sql inList(const Expr& e);
    Sql inSelect(const Expr& e);
    Sql arithmetic(const Expr& e, const char* op);
    Sql addition(const Expr& e, const char* op);
    Sql product(const Expr& e);
    Sql call(const Expr& e);
    Sql callOf(const Function& function, const std::vector<const Expr*>& args);
    Sql aggregate(const Expr& e);
    Sql special(const Expr& e);
    Sql real(const Expr& e);

    // selects
    void select(const Select& select);
    void liveCursor(const Select& select);
    void pivot(const Query& query);
    Sql output(const Output& output);
    Sql orderTerm(const Select& select, const OrderKey& key);
    Sql sortExpression(const Expr& e);
    Sql from(const Select& select);
    Sql join(const Join& join);
    Sql source(const Source& source);
    Sql tail(const Select& select);
    Sql groupBy(const Select& select, const Expr* further);
    std::vector<Sql> orderTerms(const Select& select);
    Sql subSelect(const Select& select, bool named, Type single = Type::Null);
    Sql rankedSubSelect(const Select& select, Type single);
    static int leapField(const Select& select);
    Sql leaps(const Source& source, int column);
    Sql core(const Select& select, bool named, Type single, const Sql& further = {});
    bool compound(const Select& select) const { return select.unionWith != nullptr; }

    // writing
    Sql assigned(const Expr& value, const ColumnInfo& column);
    Sql assignedKey(const Expr& value, const ColumnInfo& column, const Sql& sql);
    Sql checked(const Sql& sql, Type from, const ColumnInfo& column) const;

    const Text& m_text;
    Plan& m_plan;
    const Source* m_leapSource = nullptr;  ///< emitted as its different values
    int m_leapColumn = -1;
};

/// Joins the parts with a separator.
std::string joined(const std::vector<std::string>& parts, const char* separator);

}  // namespace koben::sql

#pragma once
// Finds the tables and fields that the names of a tree stand for, and gives every expression its type.
#include "store/sql/Catalog.h"
#include "store/sql/Functions.h"
#include "store/sql/Lexer.h"

namespace koben::sql {

/// Names that an expression may use: the sources of its select, its aliases, then those of the selects around it.
struct Scope {
    const Scope* outer = nullptr;
    const std::vector<Source*>* sources = nullptr;
    Select* select = nullptr;  ///< for aliases
    size_t aliases = 0;        ///< so many outputs may be named
    bool aliasesFirst = false;
    bool aggregates = false;  ///< aggregates may stand here
};

class Resolver {
public:
    Resolver(const Text& text, const Catalog& catalog) : m_text(text), m_catalog(catalog) {}

    void select(Select& select, const Scope* outer = nullptr);
    void query(Query& query);
    void expression(Expr& expr, const Scope& scope);
    /// As a condition: a text is refused.
    void condition(Expr& expr, const Scope& scope);
    void source(Source& source, const Scope* outer);
    const TableInfo& table(const QString& name, int position) const;
    int column(const TableInfo& table, const QString& name, int position) const;

private:
    using Kind = DatabaseError::Kind;
    [[noreturn]] void fail(Kind kind, int position, const QString& what) const { m_text.fail(kind, position, what); }

    void join(Join& join, Select& select, const Scope* outer);
    void joinConditions(Join& join, const Scope& scope);
    void items(Select& select, Scope& scope);
    void star(Select& select, const SelectItem& item);
    void nameOutputs(Select& select);
    void groupKeys(Select& select, Scope scope);
    void orderKeys(Select& select, Scope scope);
    void orderKey(Select& select, OrderKey& key, const Scope& scope);
    void checkGrouped(const Select& select, const Expr& expr) const;
    void unite(Select& select, const Scope* outer);

    void name(Expr& expr, const Scope& scope);
    bool findColumn(Expr& expr, const Scope& scope) const;
    bool findAlias(Expr& expr, const Scope& scope) const;
    void arithmetic(Expr& expr) const;
    void comparison(Expr& a, Expr& b, int position) const;
    void subSelect(Expr& expr, const Scope& scope);
    void call(Expr& expr, const Scope& scope);
    void aggregate(Expr& expr) const;
    void special(Expr& expr) const;
    void requireNumber(const Expr& expr, const Expr& operation) const;

    const Text& m_text;
    const Catalog& m_catalog;
    int m_sources = 0;
};

bool isNumber(Type type);
bool isWhole(Type type);
/// The type both sides are compared in; Null where they do not compare (a text with anything else).
Type comparisonType(const Expr& a, const Expr& b);
/// The type that holds values of both.
Type commonType(Type a, Type b);
/// The same expression, whatever names it is written with.
bool sameExpression(const Expr& a, const Expr& b);
/// What an alias stands for; other expressions stand for themselves.
const Expr& behind(const Expr& expr);

}  // namespace koben::sql

#pragma once
// The tree of a statement. The parser builds it; the resolver fills in what stands under "resolved".
#include <memory>
#include <vector>

#include "store/Value.h"

namespace koben::sql {

struct Select;
struct TableInfo;
struct ColumnInfo;
struct Function;

enum class ExprKind : quint8 {
    Literal,    ///< `literal`
    Parameter,  ///< `?`, number in `index`
    Name,       ///< [qualifier.]name
    Negate,
    Not,
    Add,
    Subtract,
    Multiply,
    Divide,
    IntDivide,
    Modulo,
    Power,
    Concat,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    And,
    Or,
    Xor,
    Like,
    IsNull,
    Between,
    InList,
    InSelect,
    Exists,
    Scalar,  ///< `negated` for the not forms
    Call,    ///< function or aggregate
    CountStar,
    Alias,  ///< resolved from a Name: `target`
    Now,    ///< the statement's moment
    Today,
};

/// A constant as it was written. `digits` keeps a decimal number exactly.
struct Literal {
    Value value;
    QByteArray digits;
};

struct Source;

struct Expr {
    ExprKind kind;
    int position = 0;
    bool negated = false;
    QString qualifier, name;
    koben::sql::Literal literal;
    int index = -1;  ///< of the parameter, or of a literal that is bound at execution (-1: stands in the SQL)
    std::vector<std::unique_ptr<Expr>> args;
    std::unique_ptr<Select> select;

    // resolved
    Type type = Type::Null;
    int size = 0;
    const Source* source = nullptr;  ///< of a Name
    int column = -1;                 ///< within the source
    const Function* function = nullptr;
    const Expr* target = nullptr;  ///< of an Alias
    bool aggregate = false;        ///< is an aggregate call
    bool hasAggregate = false;     ///< holds one

    explicit Expr(ExprKind k, int at) : kind(k), position(at) {}
};
using ExprPtr = std::unique_ptr<Expr>;

/// A table or sub-query of a from clause.
struct Source {
    QString name, alias;
    int position = 0;
    std::unique_ptr<Select> select;

    // resolved
    const TableInfo* table = nullptr;
    int number = 0;  ///< the emitted alias is t<number>
    std::vector<Field> fields;
    QString label() const { return alias.isEmpty() ? name : alias; }
};

/// A tree of joins; a leaf has a source.
struct Join {
    enum class Kind : quint8 { Leaf, Inner, Left, Right } kind = Kind::Leaf;
    std::unique_ptr<Source> source;
    std::unique_ptr<Join> left, right;
    ExprPtr on;
};

struct SelectItem {
    ExprPtr expr;  ///< empty for a star
    QString alias;
    QString starOf;
    int position = 0;
};

struct OrderKey {
    ExprPtr expr;
    bool descending = false;
    int output = -1;  ///< resolved: the output column that it is, -1 where it is none
};

/// What a select gives, after the stars are spread.
struct Output {
    Expr* expr = nullptr;
    Field field;
    bool plain = false;        ///< an unaliased or aliased plain column
    Type emitAs = Type::Null;  ///< Null: as it is
};

struct Select {
    int position = 0;
    bool distinct = false, unionAll = false;
    qint64 top = -1;
    std::vector<SelectItem> items;
    std::vector<std::unique_ptr<Join>> from;
    ExprPtr where, having;
    std::vector<ExprPtr> groupBy;
    std::vector<OrderKey> orderBy;
    std::unique_ptr<Select> unionWith;

    // resolved
    std::vector<Source*> sources;
    std::vector<Output> outputs;
    std::vector<ExprPtr> spread;  ///< expressions that the stars stand for
    bool grouped = false;         ///< group by, having or an aggregate
};

/// `transform` with its select, or without.
struct Query {
    std::unique_ptr<Select> select;
    ExprPtr transform, pivot;
    std::vector<ExprPtr> pivotIn;
};

struct Insert {
    QString table;
    int position = 0;
    std::vector<std::pair<QString, int>> columns;  ///< with their places
    std::vector<ExprPtr> values;
    int valuesPosition = 0;
    std::unique_ptr<Select> select;
};

struct Update {
    std::unique_ptr<Source> source;
    struct Set {
        QString qualifier, column;
        int position;
        ExprPtr value;
    };
    std::vector<Set> sets;
    ExprPtr where;
};

struct Delete {
    std::unique_ptr<Source> source;
    ExprPtr where;
};

struct ColumnDef {
    QString name;
    int position = 0;
    Type type = Type::Text;
    int size = 0;
    bool counter = false, notNull = false, unique = false;
};

struct Ddl {
    enum class Kind : quint8 { CreateTable, CreateIndex, DropTable, DropIndex, AddColumn, DropColumn } kind;
    QString table;
    int tablePosition = 0;
    std::vector<ColumnDef> columns;  ///< also the columns of an index
    QString index;
    int indexPosition = 0;
    bool unique = false;
};

/// Exactly one of them is set.
struct Statement {
    std::unique_ptr<Query> query;
    std::unique_ptr<Insert> insert;
    std::unique_ptr<Update> update;
    std::unique_ptr<Delete> remove;
    std::unique_ptr<Ddl> ddl;
};

}  // namespace koben::sql

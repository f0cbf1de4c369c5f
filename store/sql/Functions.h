#pragma once
// The functions of the dialect: what they take and give, and their work on values.
#include <span>

#include "store/sql/Ast.h"

namespace koben::sql {

struct Function {
    enum class Rule : quint8 {
        Fixed,      ///< the type is `result`
        AsFirst,    ///< that of the first argument
        Aggregate,  ///< sum, avg ...: worked out by the resolver, emitted for SQLite
        Special,    ///< iif, nz, isnull: likewise
    };
    const char16_t* name;
    int minArgs, maxArgs;
    /// A letter an argument, the last for all further ones: t text, n number, i whole number, d date, ? as it is.
    const char* arguments;
    Type result;
    Rule rule;
    /// Arguments of the types told by `arguments`; a Null among them gives Null without a call.
    Value (*run)(std::span<const Value> arguments);
};

/// Case-insensitive; nullptr where there is none.
const Function* findFunction(QStringView name);
/// All functions with `run`, for registration.
std::span<const Function> functions();
/// Operators that are emitted as calls: \ mod ^ & and money times money.
extern const Function kIntDivide, kModulo, kPower, kMoneyProduct;

/// Letters of types in emitted calls: s l f n c d t b, and - for Null.
char typeLetter(Type type);
Type typeOfLetter(char letter);

}  // namespace koben::sql

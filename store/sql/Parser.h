#pragma once
// From lexemes to the tree of a statement. Names are not looked up here.
#include "store/sql/Ast.h"
#include "store/sql/Lexer.h"

namespace koben::sql {

/// Throws a Syntax error at the lexeme that does not fit.
Statement parse(const Text& text, const Lexed& lexed);
/// A where text alone.
ExprPtr parseCriteria(const Text& text, const Lexed& lexed);

}  // namespace koben::sql

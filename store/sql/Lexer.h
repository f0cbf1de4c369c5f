#pragma once
// Cuts a statement into words, numbers, texts, dates and signs.
#include <QString>
#include <vector>

#include "store/DatabaseError.h"
#include "store/sql/Ast.h"

namespace koben::sql {

/// The text of a statement, to tell an error with its place.
class Text {
public:
    explicit Text(QString text) : m_text(std::move(text)) {}
    const QString& text() const { return m_text; }
    /// Throws; `what` is a sentence without its end. The message quotes place and statement.
    [[noreturn]] void fail(DatabaseError::Kind kind, int position, const QString& what) const;

private:
    QString m_text;
};

enum class Token : quint8 { End, Word, Quoted, Number, String, Date, Sign, Parameter };

struct Lexeme {
    Token token = Token::End;
    int position = 0;
    QStringView text;    ///< as written, without the brackets of a quoted name
    int literal = -1;    ///< number of the literal
    bool bound = false;  ///< the literal is bound at execution: statements that differ in it share one plan
};

/// The lexemes of a statement with its literals, and a key: the statement with bound literals taken out.
struct Lexed {
    std::vector<Lexeme> lexemes;
    std::vector<Literal> literals;
    QString key;
    int parameters = 0;
};

/// Throws on an unclosed text or bracket, a wrong number or date and an unknown character.
Lexed lex(const Text& text);

}  // namespace koben::sql

#pragma once
// The parts of the parser that all statements share: lexemes, names, expressions and selects.
#include "store/sql/Ast.h"
#include "store/sql/Lexer.h"

namespace koben::sql {

inline bool is(QStringView word, const char16_t* other) {
    const QStringView o(other);
    return word.size() == o.size() && word.compare(o, Qt::CaseInsensitive) == 0;
}

class ExpressionParser {
public:
    ExpressionParser(const Text& text, const Lexed& lexed) : m_text(text), m_lexed(lexed) {}

    /// `beforeIn`: an `in` behind the expression belongs to what follows.
    ExprPtr expression(bool beforeIn = false);
    std::unique_ptr<Select> select();
    /// Only ";" and the end may follow.
    void finish();

protected:
    const Text& text() const { return m_text; }
    const Lexeme& peek(size_t ahead = 0) const;
    int here() const { return peek().position; }
    bool at(const char16_t* word, size_t ahead = 0) const;
    bool accept(const char16_t* word);
    void expect(const char16_t* word);
    bool atSign(char16_t sign, size_t ahead = 0) const;
    bool acceptSign(char16_t sign);
    void expectSign(char16_t sign);
    [[noreturn]] void unexpected(const QString& expected) const;
    QString name();
    std::pair<QString, QString> qualifiedName();
    qint64 number();
    std::unique_ptr<Source> source();

private:
    ExprPtr either();
    ExprPtr both();
    ExprPtr inverse();
    ExprPtr comparison();
    ExprPtr comparisonTail(ExprPtr left);
    ExprPtr isNullTail(ExprPtr left, int position);
    ExprPtr inTail(ExprPtr left, int position, bool negated);
    ExprPtr concatenation();
    ExprPtr sum();
    ExprPtr modulo();
    ExprPtr intDivision();
    ExprPtr product();
    ExprPtr sign();
    ExprPtr power();
    ExprPtr primary();
    ExprPtr literal();
    ExprPtr call(const QString& function, int position);
    ExprPtr nameOrCall();

    SelectItem item();
    void selectTail(Select& select);
    std::unique_ptr<Join> joined();
    std::unique_ptr<Join> joinLeaf();
    bool reserved(QStringView word) const;

    const Text& m_text;
    const Lexed& m_lexed;
    size_t m_at = 0;
    int m_parameters = 0;
    int m_depth = 0;
    bool m_beforeIn = false;
};

}  // namespace koben::sql

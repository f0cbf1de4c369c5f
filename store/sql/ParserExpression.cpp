#include "store/sql/ParserBase.h"

namespace koben::sql {
namespace {

constexpr int kMaxDepth = 200;  // nested brackets; a deeper text is refused instead of exhausting the stack

ExprPtr make(ExprKind kind, int position) { return std::make_unique<Expr>(kind, position); }

ExprPtr make(ExprKind kind, int position, ExprPtr left, ExprPtr right) {
    ExprPtr result = make(kind, position);
    result->args.push_back(std::move(left));
    result->args.push_back(std::move(right));
    return result;
}

}  // namespace

const Lexeme& ExpressionParser::peek(size_t ahead) const {
    const size_t last = m_lexed.lexemes.size() - 1;
    return m_lexed.lexemes[std::min(m_at + ahead, last)];
}

bool ExpressionParser::at(const char16_t* word, size_t ahead) const {
    return peek(ahead).token == Token::Word && is(peek(ahead).text, word);
}

bool ExpressionParser::accept(const char16_t* word) {
    if (!at(word)) return false;
    ++m_at;
    return true;
}

void ExpressionParser::expect(const char16_t* word) {
    if (!accept(word)) unexpected(u'"' + QStringView(word).toString() + u'"');
}

bool ExpressionParser::atSign(char16_t sign, size_t ahead) const {
    return peek(ahead).token == Token::Sign && peek(ahead).text.size() == 1 && peek(ahead).text[0] == sign;
}

bool ExpressionParser::acceptSign(char16_t sign) {
    if (!atSign(sign)) return false;
    ++m_at;
    return true;
}

void ExpressionParser::expectSign(char16_t sign) {
    if (!acceptSign(sign)) unexpected(u'"' + QString(QChar(sign)) + u'"');
}

void ExpressionParser::unexpected(const QString& expected) const {
    const Lexeme& found = peek();
    const QString what =
        found.token == Token::End ? QStringLiteral("das Ende der Anweisung") : u'"' + found.text.toString() + u'"';
    m_text.fail(DatabaseError::Kind::Syntax, found.position,
                QStringLiteral("Syntaxfehler: erwartet wird %1, hier steht %2").arg(expected, what));
}

void ExpressionParser::finish() {
    while (acceptSign(u';')) {
    }
    if (peek().token != Token::End) unexpected(QStringLiteral("das Ende der Anweisung"));
}

bool ExpressionParser::reserved(QStringView word) const {
    static constexpr const char16_t* kWords[] = {
        u"select", u"from", u"where",    u"group", u"order",   u"having", u"by",        u"and",
        u"or",     u"not",  u"in",       u"like",  u"between", u"is",     u"as",        u"on",
        u"inner",  u"left", u"right",    u"join",  u"union",   u"pivot",  u"transform", u"set",
        u"values", u"into", u"distinct", u"xor",   u"mod",     u"insert", u"update",    u"delete"};
    for (const char16_t* other : kWords)
        if (is(word, other)) return true;
    return false;
}

QString ExpressionParser::name() {
    const Lexeme& lexeme = peek();
    if (lexeme.token != Token::Quoted && (lexeme.token != Token::Word || reserved(lexeme.text)))
        unexpected(QStringLiteral("ein Name"));
    ++m_at;
    return lexeme.text.toString();
}

std::pair<QString, QString> ExpressionParser::qualifiedName() {
    QString first = name();
    if (!acceptSign(u'.')) return {QString(), first};
    return {first, name()};
}

qint64 ExpressionParser::number() {
    const Lexeme& lexeme = peek();
    bool ok = false;
    const qint64 value = lexeme.token == Token::Number ? lexeme.text.toLongLong(&ok) : 0;
    if (!ok) unexpected(QStringLiteral("eine ganze Zahl"));
    ++m_at;
    return value;
}

ExprPtr ExpressionParser::expression(bool beforeIn) {
    if (++m_depth > kMaxDepth)
        m_text.fail(DatabaseError::Kind::Syntax, here(), QStringLiteral("Der Ausdruck ist zu tief geschachtelt"));
    const bool saved = std::exchange(m_beforeIn, beforeIn);
    ExprPtr left = either();
    while (at(u"xor")) {
        const int position = here();
        ++m_at;
        left = make(ExprKind::Xor, position, std::move(left), either());
    }
    m_beforeIn = saved;
    --m_depth;
    return left;
}

ExprPtr ExpressionParser::either() {
    ExprPtr left = both();
    while (at(u"or")) {
        const int position = here();
        ++m_at;
        left = make(ExprKind::Or, position, std::move(left), both());
    }
    return left;
}

ExprPtr ExpressionParser::both() {
    ExprPtr left = inverse();
    while (at(u"and")) {
        const int position = here();
        ++m_at;
        left = make(ExprKind::And, position, std::move(left), inverse());
    }
    return left;
}

ExprPtr ExpressionParser::inverse() {
    int count = 0;
    const int position = here();
    while (accept(u"not")) ++count;
    ExprPtr result = comparison();
    for (; count > 0; --count) {
        ExprPtr outer = make(ExprKind::Not, position);
        outer->args.push_back(std::move(result));
        result = std::move(outer);
    }
    return result;
}

ExprPtr ExpressionParser::comparison() {
    ExprPtr left = concatenation();
    for (;;) {
        const Lexeme& sign = peek();
        const bool negatedWord = at(u"not") && (at(u"like", 1) || at(u"in", 1) || at(u"between", 1));
        const bool word = at(u"is") || at(u"like") || at(u"between") || (at(u"in") && !m_beforeIn) || negatedWord;
        const bool compares = sign.token == Token::Sign && (sign.text[0] == u'=' || sign.text[0] == u'<' ||
                                                            sign.text[0] == u'>' || sign.text == u"!=");
        if (!word && !compares) return left;
        left = comparisonTail(std::move(left));
    }
}

ExprPtr ExpressionParser::comparisonTail(ExprPtr left) {
    const int position = here();
    const Lexeme& sign = peek();
    if (accept(u"is")) return isNullTail(std::move(left), position);
    const bool negated = accept(u"not");
    if (accept(u"like")) {
        ExprPtr result = make(ExprKind::Like, position, std::move(left), concatenation());
        result->negated = negated;
        return result;
    }
    if (accept(u"between")) {
        ExprPtr low = concatenation();
        expect(u"and");
        ExprPtr result = make(ExprKind::Between, position, std::move(left), std::move(low));
        result->args.push_back(concatenation());
        result->negated = negated;
        return result;
    }
    if (accept(u"in")) return inTail(std::move(left), position, negated);
    ++m_at;
    const ExprKind kind = sign.text == u"="    ? ExprKind::Equal
                          : sign.text == u"<"  ? ExprKind::Less
                          : sign.text == u"<=" ? ExprKind::LessEqual
                          : sign.text == u">"  ? ExprKind::Greater
                          : sign.text == u">=" ? ExprKind::GreaterEqual
                                               : ExprKind::NotEqual;
    return make(kind, position, std::move(left), concatenation());
}

ExprPtr ExpressionParser::isNullTail(ExprPtr left, int position) {
    ExprPtr result = make(ExprKind::IsNull, position);
    result->negated = accept(u"not");
    expect(u"null");
    result->args.push_back(std::move(left));
    return result;
}

ExprPtr ExpressionParser::inTail(ExprPtr left, int position, bool negated) {
    expectSign(u'(');
    ExprPtr result = make(at(u"select") ? ExprKind::InSelect : ExprKind::InList, position);
    result->negated = negated;
    result->args.push_back(std::move(left));
    if (result->kind == ExprKind::InSelect) {
        result->select = select();
    } else {
        do result->args.push_back(expression());
        while (acceptSign(u','));
    }
    expectSign(u')');
    return result;
}

ExprPtr ExpressionParser::concatenation() {
    ExprPtr left = sum();
    while (atSign(u'&')) {
        const int position = here();
        ++m_at;
        left = make(ExprKind::Concat, position, std::move(left), sum());
    }
    return left;
}

ExprPtr ExpressionParser::sum() {
    ExprPtr left = modulo();
    while (atSign(u'+') || atSign(u'-')) {
        const ExprKind kind = atSign(u'+') ? ExprKind::Add : ExprKind::Subtract;
        const int position = here();
        ++m_at;
        left = make(kind, position, std::move(left), modulo());
    }
    return left;
}

ExprPtr ExpressionParser::modulo() {
    ExprPtr left = intDivision();
    while (at(u"mod")) {
        const int position = here();
        ++m_at;
        left = make(ExprKind::Modulo, position, std::move(left), intDivision());
    }
    return left;
}

ExprPtr ExpressionParser::intDivision() {
    ExprPtr left = product();
    while (atSign(u'\\')) {
        const int position = here();
        ++m_at;
        left = make(ExprKind::IntDivide, position, std::move(left), product());
    }
    return left;
}

ExprPtr ExpressionParser::product() {
    ExprPtr left = sign();
    while (atSign(u'*') || atSign(u'/')) {
        const ExprKind kind = atSign(u'*') ? ExprKind::Multiply : ExprKind::Divide;
        const int position = here();
        ++m_at;
        left = make(kind, position, std::move(left), sign());
    }
    return left;
}

ExprPtr ExpressionParser::sign() {
    const int position = here();
    if (acceptSign(u'+')) return sign();
    if (!acceptSign(u'-')) return power();
    if (++m_depth > kMaxDepth) unexpected(QStringLiteral("ein Ausdruck"));
    ExprPtr result = make(ExprKind::Negate, position);
    result->args.push_back(sign());
    --m_depth;
    return result;
}

ExprPtr ExpressionParser::power() {
    ExprPtr left = primary();
    while (atSign(u'^')) {
        const int position = here();
        ++m_at;
        const bool negative = acceptSign(u'-');
        ExprPtr right = primary();
        if (negative) {
            ExprPtr outer = make(ExprKind::Negate, position);
            outer->args.push_back(std::move(right));
            right = std::move(outer);
        }
        left = make(ExprKind::Power, position, std::move(left), std::move(right));
    }
    return left;
}

ExprPtr ExpressionParser::primary() {
    const int position = here();
    switch (peek().token) {
        case Token::Number:
        case Token::String:
        case Token::Date:
            return literal();
        case Token::Parameter: {
            ++m_at;
            ExprPtr result = make(ExprKind::Parameter, position);
            result->index = m_parameters++;
            return result;
        }
        case Token::Word:
        case Token::Quoted:
            return nameOrCall();
        default:
            break;
    }
    if (!acceptSign(u'(')) unexpected(QStringLiteral("ein Ausdruck"));
    ExprPtr result;
    if (at(u"select")) {
        result = make(ExprKind::Scalar, position);
        result->select = select();
    } else {
        result = expression();
    }
    expectSign(u')');
    return result;
}

ExprPtr ExpressionParser::literal() {
    const Lexeme& lexeme = peek();
    ++m_at;
    ExprPtr result = make(ExprKind::Literal, lexeme.position);
    result->literal = m_lexed.literals[static_cast<size_t>(lexeme.literal)];
    if (lexeme.bound) result->index = lexeme.literal;
    return result;
}

ExprPtr ExpressionParser::nameOrCall() {
    const Lexeme& lexeme = peek();
    const int position = lexeme.position;
    const bool word = lexeme.token == Token::Word;
    if (word && atSign(u'(', 1) && (!reserved(lexeme.text) || at(u"left") || at(u"right"))) {
        ++m_at;
        return call(lexeme.text.toString(), position);
    }
    if (word && at(u"exists")) {
        ++m_at;
        unexpected(QStringLiteral("\"(\""));
    }
    if (word && (at(u"null") || at(u"true") || at(u"false")) && !atSign(u'.', 1)) {
        ExprPtr result = make(ExprKind::Literal, position);
        if (!at(u"null")) result->literal.value = Value(at(u"true"));
        ++m_at;
        return result;
    }
    if (word && at(u"now") && !atSign(u'.', 1)) {
        ++m_at;
        return make(ExprKind::Now, position);
    }
    if (word && reserved(lexeme.text)) unexpected(QStringLiteral("ein Ausdruck"));
    ExprPtr result = make(ExprKind::Name, position);
    std::tie(result->qualifier, result->name) = qualifiedName();
    return result;
}

ExprPtr ExpressionParser::call(const QString& function, int position) {
    expectSign(u'(');
    if (is(function, u"exists") && at(u"select")) {
        ExprPtr result = make(ExprKind::Exists, position);
        result->select = select();
        expectSign(u')');
        return result;
    }
    if (is(function, u"count") && atSign(u'*') && atSign(u')', 1)) {
        m_at += 2;
        ExprPtr result = make(ExprKind::CountStar, position);
        return result;
    }
    const bool empty = acceptSign(u')');
    if (empty && is(function, u"now")) return make(ExprKind::Now, position);
    if (empty && is(function, u"date")) return make(ExprKind::Today, position);
    ExprPtr result = make(ExprKind::Call, position);
    result->name = function;
    if (empty) return result;
    do result->args.push_back(expression());
    while (acceptSign(u','));
    expectSign(u')');
    return result;
}

}  // namespace koben::sql

#include "store/sql/Lexer.h"

#include <array>

#include "store/IsoDate.h"

namespace koben::sql {

void Text::fail(DatabaseError::Kind kind, int position, const QString& what) const {
    throw DatabaseError::ofStatement(kind, what, m_text, position);
}

namespace {

using Kind = DatabaseError::Kind;

bool is(QStringView word, const char16_t* other) { return word.compare(QStringView(other), Qt::CaseInsensitive) == 0; }

bool startsName(QChar c) { return c.isLetter() || c == u'_'; }

bool continuesName(QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'$'; }

class Lexer {
public:
    explicit Lexer(const Text& text) : m_source(text), m_text(text.text()) {
        m_out.lexemes.reserve(static_cast<size_t>(m_text.size()) / 4 + 4);
        m_out.key.reserve(m_text.size());
    }

    Lexed run() {
        if (const qsizetype at = m_text.indexOf(QChar(0)); at >= 0)
            m_source.fail(Kind::Syntax, static_cast<int>(at),
                          QStringLiteral("Ein Zeichen mit dem Kode 0 ist nicht erlaubt"));
        while (skipBlanks()) one();
        add(Token::End, m_at, m_at);
        return std::move(m_out);
    }

private:
    bool skipBlanks() {
        while (m_at < m_text.size() && m_text[m_at].isSpace()) ++m_at;
        return m_at < m_text.size();
    }

    void one() {
        const QChar c = m_text[m_at];
        if (startsName(c)) return word();
        if (c.isDigit() || (c == u'.' && m_at + 1 < m_text.size() && m_text[m_at + 1].isDigit())) return number();
        if (c == u'\'' || c == u'"') return string(c);
        if (c == u'[') return quoted(u']');
        if (c == u'`') return quoted(u'`');
        if (c == u'#') return date();
        if (c == u'?') {
            ++m_out.parameters;
            return add(Token::Parameter, m_at, m_at + 1);
        }
        sign();
    }

    Lexeme& push(Token token, qsizetype from, qsizetype to) {
        Lexeme& lexeme = m_out.lexemes.emplace_back();
        lexeme.token = token;
        lexeme.position = static_cast<int>(from);
        lexeme.text = QStringView(m_text).mid(from, to - from);
        m_at = to;
        return lexeme;
    }

    void add(Token token, qsizetype from, qsizetype to) {
        const Lexeme& lexeme = push(token, from, to);
        m_out.key.append(lexeme.text).append(u' ');
    }

    void word() {
        const qsizetype from = m_at;
        while (m_at < m_text.size() && continuesName(m_text[m_at])) ++m_at;
        const QStringView text = QStringView(m_text).mid(from, m_at - from);
        // From "values" on all literals of a list are values to bind; "select" and "by" end that.
        m_pivot = m_pivot || is(text, u"pivot");
        if ((is(text, u"values") || is(text, u"in")) && !m_pivot) m_list = true;
        if (is(text, u"select") || is(text, u"by") || is(text, u"set")) m_list = false;
        add(Token::Word, from, m_at);
    }

    void quoted(char16_t close) {
        const qsizetype end = m_text.indexOf(QChar(close), m_at + 1);
        if (end < 0)
            m_source.fail(Kind::Syntax, static_cast<int>(m_at), QStringLiteral("Eine Klammer [ ist nicht geschlossen"));
        const qsizetype from = m_at;
        Lexeme& lexeme = push(Token::Quoted, from, end + 1);
        lexeme.text = QStringView(m_text).mid(from + 1, end - from - 1).trimmed();
        m_out.key.append(u'[').append(lexeme.text).append(u']').append(u' ');
    }

    /// Literals behind a comparison or in a list of values may be bound; elsewhere (top 5, order by 1, 'yyyy') they
    /// shape the statement.
    bool mayBind() const {
        if (m_out.lexemes.empty()) return false;
        const Lexeme& before = m_out.lexemes.back();
        if (before.token == Token::Sign) {
            const QChar c = before.text.back();
            if (c == u'=' || c == u'<' || c == u'>') return true;
            return m_list && (c == u'(' || c == u',') && m_depth == m_listDepth;
        }
        return before.token == Token::Word &&
               (is(before.text, u"like") || is(before.text, u"between") || is(before.text, u"and"));
    }

    void literal(Token token, qsizetype to, Value value, QByteArray digits, char16_t tag) {
        // The empty text stays a constant, so that an index over rows with or without a text can serve a comparison.
        const bool empty = value.isText() && std::get<QString>(value.variant()).isEmpty();
        const bool bound = mayBind() && (m_list || !empty);
        Lexeme& lexeme = push(token, m_at, to);
        lexeme.literal = static_cast<int>(m_out.literals.size());
        lexeme.bound = bound;
        m_out.literals.push_back({std::move(value), std::move(digits)});
        if (bound)
            m_out.key.append(u'\u0001').append(tag).append(u' ');
        else
            m_out.key.append(lexeme.text).append(u' ');
    }

    void number() {
        qsizetype end = m_at;
        bool decimal = false;
        while (end < m_text.size() && (m_text[end].isDigit() || (m_text[end] == u'.' && !decimal))) {
            decimal = decimal || m_text[end] == u'.';
            ++end;
        }
        if (end < m_text.size() && m_text[end].toLower() == u'e') {
            qsizetype exponent = end + 1;
            if (exponent < m_text.size() && (m_text[exponent] == u'+' || m_text[exponent] == u'-')) ++exponent;
            if (exponent < m_text.size() && m_text[exponent].isDigit()) {
                decimal = true;
                for (end = exponent; end < m_text.size() && m_text[end].isDigit();) ++end;
            }
        }
        const QStringView text = QStringView(m_text).mid(m_at, end - m_at);
        if (end < m_text.size() && continuesName(m_text[end]))
            m_source.fail(
                Kind::Syntax, static_cast<int>(m_at),
                QStringLiteral("Die Zahl \"%1\" ist nicht lesbar").arg(QStringView(m_text).mid(m_at, end + 1 - m_at)));
        bool fits = false;
        const int whole = decimal ? 0 : text.toInt(&fits);
        if (fits) return literal(Token::Number, end, Value(whole), {}, u'n');
        const QByteArray digits = text.toLatin1();
        const double value = digits.toDouble(&fits);
        if (!fits)
            m_source.fail(Kind::Syntax, static_cast<int>(m_at),
                          QStringLiteral("Die Zahl \"%1\" ist zu groß oder zu klein").arg(text));
        literal(Token::Number, end, Value(value), digits, u'd');
    }

    void string(QChar quote) {
        QString content;
        qsizetype end = m_at + 1;
        for (;; ++end) {
            if (end >= m_text.size())
                m_source.fail(Kind::Syntax, static_cast<int>(m_at),
                              QStringLiteral("Ein Text ist nicht mit %1 geschlossen").arg(quote));
            if (m_text[end] == quote) {
                if (end + 1 >= m_text.size() || m_text[end + 1] != quote) break;
                ++end;
            }
            content.append(m_text[end]);
        }
        literal(Token::String, end + 1, Value(content), {}, u's');
    }

    void date() {
        const qsizetype end = m_text.indexOf(u'#', m_at + 1);
        const QStringView text = QStringView(m_text).mid(m_at + 1, (end < 0 ? m_text.size() : end) - m_at - 1);
        const auto value = end < 0 ? std::nullopt : parseDateLiteral(text);
        if (!value)
            m_source.fail(Kind::Syntax, static_cast<int>(m_at),
                          QStringLiteral("Das Datum \"#%1#\" ist nicht lesbar").arg(text));
        literal(Token::Date, end + 1, Value(*value), {}, u't');
    }

    void sign() {
        static constexpr std::array kTwo = {u"<>", u"<=", u">=", u"!="};
        for (const char16_t* two : kTwo)
            if (QStringView(m_text).mid(m_at).startsWith(QStringView(two))) return add(Token::Sign, m_at, m_at + 2);
        const QChar c = m_text[m_at];
        if (!QStringView(u"()*,.;=<>+-/\\^&").contains(c))
            m_source.fail(Kind::Syntax, static_cast<int>(m_at),
                          QStringLiteral("Das Zeichen \"%1\" ist hier nicht erlaubt").arg(c));
        if (c == u'(' && ++m_depth > 0 && m_list && !m_out.lexemes.empty() &&
            (is(m_out.lexemes.back().text, u"values") || is(m_out.lexemes.back().text, u"in")))
            m_listDepth = m_depth;
        if (c == u')' && m_depth-- == m_listDepth) m_listDepth = -1;
        add(Token::Sign, m_at, m_at + 1);
    }

    const Text& m_source;
    const QString& m_text;
    qsizetype m_at = 0;
    bool m_list = false, m_pivot = false;
    int m_depth = 0, m_listDepth = -1;
    Lexed m_out;
};

}  // namespace

Lexed lex(const Text& text) { return Lexer(text).run(); }

}  // namespace koben::sql

#include "store/Collation.h"

#include <array>

#include "store/CollationUtf8.h"

namespace koben {
namespace {

constexpr int kSignificant = 255;  // characters of a text that count
constexpr quint8 kNoAccent = 1;    // accents of a key start here; 0 parts them from the primaries
constexpr quint8 kForeign = 0xF0;  // primaries from here on: characters outside the code page

/// What one character adds to a key: its place in the order, a second place for expansions, its accent.
struct Weight {
    quint8 primary = 0;
    quint8 second = 0;
    quint8 accent = kNoAccent;
};

// The signs from low to high; a group in one entry is equal.
constexpr const char16_t* kSigns[] = {
    u"\t \u00A0", u"!", u"\"„“”«»", u"#", u"$", u"%", u"&", u"'‚‘’‹›", u"(", u")", u"*", u"+", u",", u"-–—\u00AD", u".",
    u"/", u":", u";", u"<", u"=", u">", u"?", u"@", u"[", u"\\", u"]", u"^", u"_", u"`", u"{", u"|", u"}", u"~",
    // the other signs, in code-page order
    u"€", u"ƒ", u"…", u"†", u"‡", u"ˆ", u"‰", u"•", u"˜", u"™", u"¡", u"¢", u"£", u"¤", u"¥", u"¦", u"§", u"¨", u"©",
    u"ª", u"¬", u"®", u"¯", u"°", u"±", u"´", u"µ", u"¶", u"·", u"¸", u"º", u"¼", u"½", u"¾", u"¿", u"×", u"÷", u"0",
    u"1¹", u"2²", u"3³", u"4", u"5", u"6", u"7", u"8", u"9", u"aA", u"bB", u"cC", u"dD", u"ðÐ", u"eE", u"fF", u"gG",
    u"hH", u"iI", u"jJ", u"kK", u"lL", u"mM", u"nN", u"oO", u"pP", u"qQ", u"rR", u"sS", u"tT", u"uU", u"vV", u"wW",
    u"xX", u"yY", u"zZ", u"þÞ", u"øØ"};

// Letters with an accent, from the lowest accent to the highest.
constexpr const char16_t* kAccents[] = {
    u"àaÀaèeÈeìiÌiòoÒoùuÙu",      // grave
    u"áaÁaéeÉeíiÍióoÓoúuÚuýyÝy",  // acute
    u"âaÂaêeÊeîiÎiôoÔoûuÛu",      // circumflex
    u"äaÄaëeËeïiÏiöoÖoüuÜuÿyŸy",  // diaeresis
    u"ãaÃañnÑnõoÕo",              // tilde
    u"åaÅa",                      // ring
    u"çcÇc",                      // cedilla
    u"šsŠsžzŽz",                  // caron
};

constexpr const char16_t* kExpansions[] = {u"ßss", u"ẞss", u"æae", u"Æae", u"œoe", u"Œoe"};

/// The weights of the characters below U+0200; the few higher ones of the code page stand in a list.
struct Weights {
    std::array<Weight, 0x200> low{};
    std::array<std::pair<char32_t, Weight>, 48> high{};
    size_t highCount = 0;

    Weights() {
        quint8 next = 2;
        for (char32_t c = 0; c < 0xA0; ++c)
            if (c != '\t' && (c < 0x20 || c >= 0x7F)) set(c, {next, 0, kNoAccent}), next += c < 0x20 ? 1 : 0;
        ++next;
        for (const char16_t* group : kSigns) {
            for (; *group != 0; ++group) set(*group, {next, 0, kNoAccent});
            ++next;
        }
        quint8 accent = kNoAccent;
        for (const char16_t* pairs : kAccents)
            for (++accent; *pairs != 0; pairs += 2) set(pairs[0], {low[pairs[1]].primary, 0, accent});
        for (const char16_t* e : kExpansions) set(e[0], {low[e[1]].primary, low[e[2]].primary, kNoAccent});
    }

    void set(char32_t c, Weight weight) {
        if (c < low.size())
            low[c] = weight;
        else
            high[highCount++] = {c, weight};
    }

    const Weight* find(char32_t c) const {
        if (c < low.size()) return low[c].primary != 0 ? &low[c] : nullptr;
        for (size_t i = 0; i < highCount; ++i)
            if (high[i].first == c) return &high[i].second;
        return nullptr;
    }
};

const Weights& weights() {
    static const Weights instance;
    return instance;
}

/// Characters of a UTF-8 text; a broken byte counts as itself.
struct Utf8Reader {
    const char* at;
    const char* end;
    explicit Utf8Reader(std::string_view text) : at(text.data()), end(text.data() + text.size()) {
        while (end > at && end[-1] == ' ') --end;
    }
    bool atEnd() const { return at == end; }
    char32_t next() {
        const auto first = static_cast<unsigned char>(*at++);
        if (first < 0xC0) return first;
        const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
        char32_t c = first & (0x3F >> more);
        for (int i = 0; i < more && at < end; ++i) c = (c << 6) | (static_cast<unsigned char>(*at++) & 0x3F);
        return c;
    }
};

struct Utf16Reader {
    const QChar* at;
    const QChar* end;
    explicit Utf16Reader(QStringView text) : at(text.data()), end(text.data() + text.size()) {
        while (end > at && end[-1] == u' ') --end;
    }
    bool atEnd() const { return at == end; }
    char32_t next() {
        const QChar c = *at++;
        if (c.isHighSurrogate() && at < end && at->isLowSurrogate()) return QChar::surrogateToUcs4(c, *at++);
        return c.unicode();
    }
};

/// One step of a key: a primary (0 at the end) and its accent.
struct Step {
    char32_t primary = 0;
    quint8 accent = kNoAccent;
};

template <typename Reader>
class Walk {
public:
    explicit Walk(Reader reader) : m_reader(reader) {}
    Step next() {
        if (m_pending != 0) return {std::exchange(m_pending, quint8{0}), kNoAccent};
        if (m_reader.atEnd() || m_count == kSignificant) return {};
        ++m_count;
        const char32_t c = m_reader.next();
        const Weight* weight = weights().find(c);
        if (weight == nullptr) return {(char32_t{kForeign} << 24) | QChar::toCaseFolded(c), kNoAccent};
        m_pending = weight->second;
        return {weight->primary, weight->accent};
    }

private:
    Reader m_reader;
    int m_count = 0;
    quint8 m_pending = 0;
};

template <typename Reader>
int compareWalks(Walk<Reader> a, Walk<Reader> b) {
    int accents = 0;
    for (;;) {
        const Step x = a.next();
        const Step y = b.next();
        if (x.primary != y.primary) return x.primary < y.primary ? -1 : 1;
        if (x.primary == 0) return accents;
        if (accents == 0 && x.accent != y.accent) accents = x.accent < y.accent ? -1 : 1;
    }
}

template <typename Reader>
QByteArray keyOf(Walk<Reader> walk) {
    QByteArray key, accents;
    for (Step step = walk.next(); step.primary != 0; step = walk.next()) {
        if (step.primary < 0x100) {
            key.append(static_cast<char>(step.primary));
        } else {
            for (int shift = 24; shift >= 0; shift -= 8) key.append(static_cast<char>((step.primary >> shift) & 0xFF));
        }
        accents.append(static_cast<char>(step.accent));
    }
    while (!accents.isEmpty() && accents.back() == static_cast<char>(kNoAccent)) accents.chop(1);
    if (!accents.isEmpty()) key.append('\0').append(accents);
    return key;
}

/// A single character's place for LIKE: ranges follow the order of texts, accents included.
char32_t placeOf(QChar c) {
    const Weight* weight = weights().find(c.unicode());
    if (weight == nullptr) return 0x10000000 | c.toCaseFolded().unicode();
    return (char32_t{weight->primary} << 16) | (char32_t{weight->second} << 8) | weight->accent;
}

bool sameLetter(QChar a, QChar b) { return a == b || a.toCaseFolded() == b.toCaseFolded(); }

/// Meets the bracket list that starts behind "[" at `at`; `at` ends behind "]". An unclosed list meets nothing.
bool meetsList(QStringView pattern, qsizetype& at, QChar c) {
    const qsizetype close = pattern.indexOf(u']', at);
    if (close < 0) {
        at = pattern.size();
        return false;
    }
    QStringView list = pattern.mid(at, close - at);
    at = close + 1;
    const bool negated = list.startsWith(u'!') && list.size() > 1;
    if (negated) list = list.mid(1);
    bool hit = false;
    for (qsizetype i = 0; i < list.size() && !hit; ++i) {
        if (i + 2 < list.size() && list[i + 1] == u'-') {
            hit = placeOf(list[i]) <= placeOf(c) && placeOf(c) <= placeOf(list[i + 2]);
            i += 2;
        } else {
            hit = sameLetter(list[i], c);
        }
    }
    return hit != negated;
}

/// One pattern element that is not "*" against one character; `at` moves behind it.
bool meetsOne(QStringView pattern, qsizetype& at, QChar c) {
    const QChar p = pattern[at++];
    if (p == u'?') return true;
    if (p == u'#') return c >= u'0' && c <= u'9';
    if (p == u'[') return meetsList(pattern, at, c);
    return sameLetter(p, c);
}

}  // namespace

int compareTexts(QStringView a, QStringView b) { return compareWalks(Walk(Utf16Reader(a)), Walk(Utf16Reader(b))); }

int compareTexts(std::string_view a, std::string_view b) {
    return compareWalks(Walk(Utf8Reader(a)), Walk(Utf8Reader(b)));
}

QByteArray sortKey(QStringView text) { return keyOf(Walk(Utf16Reader(text))); }

QByteArray sortKey(std::string_view text) { return keyOf(Walk(Utf8Reader(text))); }

bool likeText(QStringView text, QStringView pattern) {
    qsizetype t = 0, p = 0, starPattern = -1, starText = 0;
    while (t < text.size() || p < pattern.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            starPattern = ++p;
            starText = t;
            continue;
        }
        if (pattern.mid(p, 2) == u"[]") {  // an empty list stands for no character
            p += 2;
            continue;
        }
        if (p < pattern.size() && t < text.size() && meetsOne(pattern, p, text[t])) {
            ++t;
            continue;
        }
        if (starPattern < 0 || starText >= text.size()) return false;
        p = starPattern;
        t = ++starText;
    }
    return true;
}

}  // namespace koben

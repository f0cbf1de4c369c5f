// Texts compared and met by patterns: "TEXT line feed TEXT" both ways, against a plain matcher and between the forms.
#include <QTemporaryDir>
#include <vector>

#include "store/Collation.h"
#include "store/CollationUtf8.h"
#include "store/Database.h"
#include "tests/fuzz/Require.h"

namespace koben::fuzz {
namespace {

constexpr qsizetype Length = 60;  // the plain matcher is slow

QString shortened(const QString& text) {
    const QString cut = text.left(Length);
    return !cut.isEmpty() && cut.back().isHighSurrogate() ? cut.chopped(1) : cut;
}

int signOf(int n) { return n < 0 ? -1 : n > 0 ? 1 : 0; }

/// A character's place among all by the order of texts; the sign behind, lower than any, keeps a blank from being cut.
bool atMost(QChar a, QChar b) { return compareTexts(QString(a) + u'\u0001', QString(b) + u'\u0001') <= 0; }

bool matchesClass(QStringView list, QChar c) {
    const bool negated = list.size() > 1 && list[0] == u'!';
    if (negated) list = list.mid(1);
    while (!list.isEmpty()) {
        const bool range = list.size() > 2 && list[1] == u'-';
        const bool hit = range ? atMost(list[0], c) && atMost(c, list[2])
                               : QStringView(&c, 1).compare(list.left(1), Qt::CaseInsensitive) == 0;
        if (hit) return !negated;
        list = list.mid(range ? 3 : 1);
    }
    return negated;
}

/// LIKE as docs/sql.md tells it, by trying everything; `known` holds what was tried (-1: not yet).
class Plump {
public:
    Plump(QStringView text, QStringView pattern)
        : m_text(text),
          m_pattern(pattern),
          m_known(static_cast<size_t>((text.size() + 1) * (pattern.size() + 1)), -1) {}

    bool matchesPlain(qsizetype t = 0, qsizetype p = 0) {
        signed char& known = m_known[static_cast<size_t>(t * (m_pattern.size() + 1) + p)];
        if (known < 0) known = tryOne(t, p) ? 1 : 0;
        return known == 1;
    }

private:
    bool tryOne(qsizetype t, qsizetype p) {
        if (p == m_pattern.size()) return t == m_text.size();
        const bool any = t < m_text.size();
        switch (m_pattern[p].unicode()) {
            case u'*':
                return matchesPlain(t, p + 1) || (any && matchesPlain(t + 1, p));
            case u'?':
                return any && matchesPlain(t + 1, p + 1);
            case u'#':
                return any && m_text[t] >= u'0' && m_text[t] <= u'9' && matchesPlain(t + 1, p + 1);
            case u'[': {
                const qsizetype close = m_pattern.indexOf(u']', p);
                if (close == p + 1) return matchesPlain(t, p + 2);
                if (close < 0 || !any) return false;
                return matchesClass(m_pattern.mid(p + 1, close - p - 1), m_text[t]) && matchesPlain(t + 1, close + 1);
            }
            default:
                return any && m_text.mid(t, 1).compare(m_pattern.mid(p, 1), Qt::CaseInsensitive) == 0 &&
                       matchesPlain(t + 1, p + 1);
        }
    }

    QStringView m_text, m_pattern;
    std::vector<signed char> m_known;
};

struct Bestand {
    QTemporaryDir folder{place()};
    Workspace workspace;
    Database db;
    Bestand() {
        db = workspace.create(folder.filePath(QStringLiteral("t.mdb")));
        db.execute(QStringLiteral("create table W(Wort TEXT (60), Infos MEMO)"));
        db.execute(QStringLiteral("create index wort on W(Wort)"));
    }
    bool matchesPlain(const QString& condition) const {
        return db.table(QStringLiteral("select count(*) from W where ") + condition).integer(0, 0) == 1;
    }
};

QString tokensOf(QString text) { return u'\'' + text.replace(u'\'', QStringLiteral("''")) + u'\''; }

void orderOf(const QString& a, const QString& b) {
    const int order = compareTexts(a, b);
    require(signOf(order) == -signOf(compareTexts(b, a)), "an order with two answers", a);
    require(equalTexts(a, a + u' ') && equalTexts(a, a), "trailing blanks count", a);
    const QByteArray x = a.toUtf8(), y = b.toUtf8();
    const std::string_view u(x.constData(), static_cast<size_t>(x.size())),
        v(y.constData(), static_cast<size_t>(y.size()));
    require(signOf(compareTexts(u, v)) == signOf(order), "another order in UTF-8", a + u'\n' + b);
    require(sortKey(u) == sortKey(a), "another key in UTF-8", a);
    require(signOf(sortKey(a).compare(sortKey(b))) == signOf(order), "another order of the keys", a + u'\n' + b);
}

void inDatabase(const QString& text, const QString& pattern, bool meets) {
    static Bestand store;
    const Transaction action(store.db);
    store.db.prepare(QStringLiteral("insert into W values (?, ?)")).run({text, text});
    const QString shown = text + u'\n' + pattern;
    require(store.matchesPlain(QStringLiteral("Wort like ") + tokensOf(pattern)) == meets, "like of a field", shown);
    require(store.matchesPlain(QStringLiteral("not Infos like ") + tokensOf(pattern)) != meets, "not like", shown);
    require(store.matchesPlain(tokensOf(text) + QStringLiteral(" like ") + tokensOf(pattern)) == meets, "constants",
            shown);
    const int order = compareTexts(text, pattern);
    require(store.matchesPlain(QStringLiteral("Wort <= ") + tokensOf(pattern)) == (order <= 0), "<=", shown);
    require(store.matchesPlain(QStringLiteral("Wort = ") + tokensOf(pattern)) == (order == 0), "=", shown);
    require(store.matchesPlain(tokensOf(pattern) + QStringLiteral(" < Infos")) == (order > 0), "<", shown);
}

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben;
    using namespace koben::fuzz;
    const QString whole = QString::fromUtf8(raw(data, size));
    if (whole.contains(QChar(0))) return -1;
    const QString text = shortened(whole.section(u'\n', 0, 0)), pattern = shortened(whole.section(u'\n', 1));
    orderOf(text, pattern);
    const bool meets = Plump(text, pattern).matchesPlain();
    require(likeText(text, pattern) == meets, "like", text + u'\n' + pattern);
    inDatabase(text, pattern, meets);
    return 0;
}

#include "core/Schnellzeile.h"

#include <QRegularExpression>
#include <algorithm>

#include "core/PZ_Koben_Subs.h"
#include "core/Schnelltierwahl.h"

namespace koben {
namespace {

using Word = Schnellwort;

/// Whether a word calls this kind: its letter, a word of it, or (`front`) the first letters of one.
bool calls(const Schnellart& art, const QString& word, bool front) {
    constexpr int least = 3;
    if (!front && sameWord(word, QString::fromUtf8(art.letter))) return true;
    for (const QString& own : listed(art.words))
        if (front ? word.size() >= least && own.startsWith(word, Qt::CaseInsensitive) : sameWord(own, word))
            return true;
    return false;
}

/// What a word says beside the kind, as FELD=WERT; "" where it is no such word of the kind.
QString impliedBy(const Schnellart& art, const QString& word) {
    for (const QString& entry : listed(art.implied))
        if (sameWord(entry.section(u'=', 0, 0), word)) return entry.section(u'=', 1);
    return {};
}

/// All kinds that a word may mean.
std::vector<Buchungsart> kindsOf(const QString& word) {
    std::vector<Buchungsart> kinds;
    for (const bool front : {false, true}) {
        if (front && !kinds.empty()) break;
        for (const Schnellart& art : Schnellarten())
            if (calls(art, word, front) || (!front && !impliedBy(art, word).isEmpty())) kinds.push_back(art.kind);
    }
    return kinds;
}

QString kindNames() {
    QStringList letters;
    for (const Schnellart& art : Schnellarten())
        letters.append(QString::fromUtf8(art.letter) + u' ' + QString::fromUtf8(angaben(art.kind).caption));
    return letters.join(QStringLiteral(", "));
}

/// Reads one line: kind, then animals before it and values behind it.
class Reader {
public:
    Reader(const std::vector<Schnelltier>& herd, const QString& heute, QDate day)
        : m_animals(herd), m_heute(heute), m_day(day) {}

    Schnellzeile read(const QString& line) {
        m_words = Schnellworte(line);
        m_line.empty = m_words.empty();
        m_line.grammar = !m_line.empty && asksForHelp();
        if (m_line.empty || m_line.grammar) return m_line;
        size_t at = findKind();
        if (at == m_words.size() && splitGlued()) at = findKind();
        if (at == 0 && m_words.size() > 1 && m_animals.names(m_words[1].text)) {  // "f 123 14/1"
            std::swap(m_words[0], m_words[1]);
            at = 1;
        }
        const auto kind = m_words.begin() + static_cast<std::ptrdiff_t>(at);
        if (!m_line.kind && m_line.problems.isEmpty()) return withoutKind();
        m_animals.take({m_words.begin(), kind}, m_line.kind && *m_line.kind != Buchungsart::Behandlung);
        adopt();
        if (m_line.animals.empty() && m_line.problems.isEmpty()) problem(QStringLiteral("Es fehlt das Tier."));
        if (m_line.kind) Schnellwerte(m_line, {kind + 1, m_words.end()}, m_heute, m_day);
        return m_line;
    }

private:
    void problem(const QString& sentence) { m_line.problems.append(sentence); }

    void adopt() {
        m_line.animals = m_animals.animals();
        m_line.problems.append(m_animals.problems());
    }

    bool asksForHelp() const {
        const Word &first = m_words.front(), &last = m_words.back();
        return first.text == u"?" || (last.text == u"?" && !last.quoted) ||
               (m_words.size() == 1 && sameWord(first.text, u"hilfe") && !m_animals.isNumber(first.text));
    }

    /// The first word that calls a kind; an animal of that number goes before it at the line's beginning.
    size_t findKind() {
        for (size_t i = 0; i < m_words.size(); ++i) {
            const QString word = m_words[i].text;
            if (m_words[i].quoted || (i == 0 && m_animals.isNumber(word))) continue;
            const auto kinds = kindsOf(word);
            if (kinds.empty()) continue;
            if (kinds.size() > 1) {
                QStringList names;
                for (const Buchungsart kind : kinds) names.append(QString::fromUtf8(angaben(kind).caption));
                problem(QStringLiteral("„%1“ kann %2 heißen.").arg(word, names.join(QStringLiteral(" oder "))));
                return i;
            }
            m_line.kind = kinds.front();
            return i - sayMore(i);
        }
        return m_words.size();
    }

    /// A word that says more than the kind gives that as a value: "leer", "nicht tragend". How many words go before it.
    size_t sayMore(size_t at) {
        QString more = impliedBy(schnellart(*m_line.kind), m_words[at].text);
        const bool denied =
            at > 0 && m_line.kind == Buchungsart::Trächtigkeit && sameWord(m_words[at - 1].text, u"nicht");
        if (denied) more = QStringLiteral("trächtig=N");
        if (!more.isEmpty()) m_words.insert(m_words.begin() + static_cast<std::ptrdiff_t>(at) + 1, Word{more});
        if (denied) m_words.erase(m_words.begin() + static_cast<std::ptrdiff_t>(at) - 1);
        return denied ? 1 : 0;
    }

    /// "123f 14/1", "123 f14/1", "123f14/1": the kind stands right behind the animal or before its values.
    bool splitGlued() {
        static const QRegularExpression glued(QStringLiteral("^(\\d[\\d,-]*)?(\\pL+)(\\d.*)?$"));
        for (size_t i = 0; i < m_words.size(); ++i) {
            const auto match = glued.match(m_words[i].text);
            if (m_words[i].quoted || m_animals.isNumber(m_words[i].text) || !match.hasMatch()) continue;
            if ((i == 0 && match.captured(1).isEmpty()) || kindsOf(match.captured(2)).size() != 1) continue;
            std::vector<Word> parts;
            for (const int part : {1, 2, 3})
                if (!match.captured(part).isEmpty()) parts.push_back({match.captured(part)});
            const auto at = m_words.erase(m_words.begin() + static_cast<std::ptrdiff_t>(i));
            m_words.insert(at, parts.begin(), parts.end());
            return true;
        }
        return false;
    }

    /// The animals that the line begins with; the next word should have been the kind.
    Schnellzeile withoutKind() {
        size_t end = 0;
        const auto forAnimals = [this](const QString& word) {
            return m_animals.names(word) || Schnelltierwahl::saysNothing(word);
        };
        while (end < m_words.size() && forAnimals(m_words[end].text)) ++end;
        const bool wrong = end > 0 && end < m_words.size();
        const auto last = m_words.begin() + static_cast<std::ptrdiff_t>(std::max<size_t>(end, 1));
        m_animals.take({m_words.begin(), last}, true);
        adopt();
        if (wrong)
            problem(QStringLiteral("„%1“ ist keine Art der Buchung: %2.").arg(m_words[end].text, kindNames()));
        else if (m_line.problems.isEmpty())
            problem(QStringLiteral("Es fehlt die Art der Buchung: %1.").arg(kindNames()));
        return m_line;
    }

    Schnelltierwahl m_animals;
    const QString& m_heute;
    const QDate m_day;
    std::vector<Word> m_words;
    Schnellzeile m_line;
};

QString withDay(QDate day) {
    static const char* const days[] = {"Mo", "Di", "Mi", "Do", "Fr", "Sa", "So"};
    return QString::fromUtf8(days[day.dayOfWeek() - 1]) + u' ' + Datum_als_Anzeige(day);
}

}  // namespace

Schnellzeile Schnellzeile_lesen(const QString& line, const std::vector<Schnelltier>& herd, const QString& heute,
                                QDate day) {
    return Reader(herd, heute, day).read(line);
}

QDate Schnelltag_lesen(const QString& line, const QString& heute) {
    const std::vector<Word> words = Schnellworte(line);
    if (words.size() == 1) return words.front().quoted ? QDate() : plainDay(words.front().text, heute);
    const bool said = words.size() == 2 && (sameWord(words[0].text, u"am") || sameWord(words[0].text, u"vom"));
    return said ? dayOf(words[1].text, heute) : QDate();
}

/// "Sau 123", "die 4 Sauen 40, 41, 42 und 43"
QString Schnellzeile::named() const {
    constexpr size_t most = 6;
    if (animals.size() == 1) return animals.front().art + u' ' + animals.front().number;
    QStringList numbers;
    for (size_t i = 0; i < animals.size() && i < most; ++i) numbers.append(animals[i].number);
    QString list = numbers.join(QStringLiteral(", "));
    if (animals.size() > most) list += QStringLiteral(" und %1 weitere").arg(animals.size() - most);
    const bool sows = std::all_of(animals.begin(), animals.end(), [](const auto& t) { return t.art == u"Sau"; });
    return QStringLiteral("%1 %2 (%3)")
        .arg(animals.size())
        .arg(sows ? QStringLiteral("Sauen") : QStringLiteral("Tiere"), list);
}

QString Schnellzeile::understood() const {
    QString text = kind ? QString::fromUtf8(angaben(*kind).noun) : QStringLiteral("Buchung");
    if (!animals.empty()) text += QStringLiteral(" bei ") + named();
    if (day.isValid()) text += QStringLiteral(" am ") + withDay(day);
    QStringList given;
    if (kind)
        for (const Schnellfeld& field : schnellart(*kind).fields) {
            const auto at =
                std::find_if(values.begin(), values.end(), [&](const auto& v) { return v.first == &field; });
            const QString value = at != values.end() ? at->second : QString::fromUtf8(field.preset);
            if (!value.isEmpty()) given.append(QString::fromUtf8(field.name) + u' ' + value);
        }
    return given.isEmpty() ? text : text + QStringLiteral(": ") + given.join(QStringLiteral(", "));
}

QString Schnellzeile::sentence() const {
    if (empty) return {};
    if (grammar) return Schnellgrammatik();
    if (!ready()) {
        const QString begun = animals.empty() && !kind ? QString() : QStringLiteral(" ") + understood() + u'.';
        return QStringLiteral("Noch nicht zu buchen: ") + problems.join(u' ') +
               (begun.isEmpty() ? begun : QStringLiteral(" Bisher:") + begun);
    }
    return QStringLiteral("Gebucht wird: ") + understood() + u'.' + (note.isEmpty() ? note : u' ' + note);
}

}  // namespace koben

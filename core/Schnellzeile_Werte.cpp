// What stands behind animal and kind in a line: values and the day, in any order that leaves no doubt.

#include <QRegularExpression>
#include <algorithm>

#include "core/PZ_Koben_Subs.h"
#include "core/Schnellworte.h"
#include "core/Schnellzeile.h"

namespace koben {
namespace {

using Field = Schnellfeld;
using Word = Schnellwort;

constexpr int MostCount = 32767;
constexpr int MostDigits = 5;

QString nameOf(const Field& field) { return QString::fromUtf8(field.name); }

QString choiceOf(const Field& field, const QString& word) {
    for (const QString& choice : listed(field.choices))
        if (sameWord(choice, word)) return choice;
    if (QString::fromUtf8(field.choices) != u"J N") return {};
    static const QStringList yes{"ja", "+", "positiv", "tragend", "trächtig"}, no{"nein", "negativ", "leer", "nicht"};
    if (yes.contains(word, Qt::CaseInsensitive)) return QStringLiteral("J");
    return no.contains(word, Qt::CaseInsensitive) ? QStringLiteral("N") : QString();
}

bool isCount(QStringView digits) {
    return isDigits(digits) && digits.size() <= MostDigits && digits.toInt() <= MostCount;
}

bool fits(const Field& field, const QString& word) {
    static const QRegularExpression number(QStringLiteral("^\\d{1,12}([,.]\\d{1,4})?$"));
    const bool minus = field.flags & Field::Negative && word.startsWith(u'-');
    switch (field.kind) {
        case Field::Count:
            return isCount(minus ? QStringView(word).mid(1) : QStringView(word));
        case Field::Number:
            return number.match(word).hasMatch();
        case Field::Choice:
            return !choiceOf(field, word).isEmpty();
        default:
            return !word.isEmpty();
    }
}

/// Whether a bare word can go into the field. What looks like a number is no text, but for the number of an animal.
bool takes(const Field& field, const Word& word) {
    if (word.quoted) return field.kind == Field::Text;
    if (isDigits(word.text) && field.flags & Field::Aside) return false;
    if (field.kind == Field::Text && looksNumeric(word.text) &&
        !(field.flags & Field::Digits && !word.text.contains(u',') && !word.text.contains(u'/')))
        return false;
    return fits(field, word.text);
}

/// Puts the values of one line into the fields of its kind.
class Werte {
public:
    Werte(Schnellzeile& line, const QString& heute, QDate day)
        : m_line(line),
          m_heute(heute),
          m_day(day),
          m_fields(schnellart(*line.kind).fields),
          m_texts(m_fields.size()),
          m_passed(m_fields.size()) {}

    void take(std::vector<Word> words) {
        m_words = std::move(words);
        splitUnits();
        if (m_line.kind == Buchungsart::Ferkelung) sumUpLitter();
        for (size_t i = 0; m_line.kind == Buchungsart::Trächtigkeit && i + 1 < m_words.size(); ++i)
            if (sameWord(text(i), u"nicht") && choiceOf(m_fields[0], text(i + 1)) == u"J")
                m_words.erase(m_words.begin() + static_cast<std::ptrdiff_t>(i) + 1);
        m_namesFollow = endsWithName();
        for (size_t i = 0; i < m_words.size();) i += takeAt(i);
        finish();
    }

private:
    void problem(const QString& sentence) { m_line.problems.append(sentence); }
    const QString& text(size_t i) const { return m_words[i].text; }
    bool bare(size_t i) const { return i < m_words.size() && !m_words[i].quoted; }

    // ------------------------------------------------------------------------------------------- before the fields

    /// "2ml", "7,5kg", "2x" where the kind has such a unit.
    void splitUnits() {
        static const QRegularExpression glued(QStringLiteral("^(\\d+(?:[.,]\\d+)?)(\\pL{1,5}|€)$"));
        std::vector<Word> words;
        for (const Word& word : m_words) {
            const auto match = word.quoted ? QRegularExpressionMatch() : glued.match(word.text);
            const QString unit = match.captured(2);
            const bool known = match.hasMatch() && std::any_of(m_fields.begin(), m_fields.end(), [&](const Field& f) {
                                   return listed(f.units).contains(unit, Qt::CaseInsensitive) ||
                                          (f.kind == Field::Choice && unit.size() > 1 && !choiceOf(f, unit).isEmpty());
                               });
            if (known) words.push_back({match.captured(1)});
            words.push_back(known ? Word{unit} : word);
        }
        m_words = std::move(words);
    }

    static bool isLitter(const QString& digits) {
        constexpr int most = 2;
        return isDigits(digits) && digits.size() <= most;
    }
    static bool sums(const QString& all, const QString& alive, const QString& dead) {
        return isLitter(all) && isLitter(alive) && isLitter(dead) && all.toInt() == alive.toInt() + dead.toInt();
    }

    /// "14/1", and "14 13 1" or "14/13/1" where the sum is right: those born alive follow from the others.
    void sumUpLitter() {
        joinSlashes();
        std::vector<Word> parts;
        bool first = true;
        for (const Word& word : m_words) {
            const bool open = word.text.size() > 1 && word.text.endsWith(u'/');
            const QStringList numbers = (open ? word.text.chopped(1) : word.text).split(u'/');
            const bool litter =
                first && !word.quoted && numbers.size() > 1 && std::all_of(numbers.begin(), numbers.end(), isDigits);
            if (!litter) {
                parts.push_back(word);
                continue;
            }
            first = false;
            if (open) problem(QStringLiteral("Hinter „%1“ fehlt eine Zahl.").arg(word.text));
            if (numbers.size() > 3 || (numbers.size() == 3 && !sums(numbers[0], numbers[1], numbers[2])))
                problem(QStringLiteral("„%1“: lebend und tot ergeben nicht gesamt.").arg(word.text));
            for (const QString& number : numbers) parts.push_back({number});
        }
        m_words = parts;
        dropThoseAlive();
    }

    /// The middle one of three numbers where the sum is right; where it may have been meant so, that is said.
    void dropThoseAlive() {
        for (size_t i = 0; i + 2 < m_words.size(); ++i)
            if (sums(text(i), text(i + 1), text(i + 2)) && (i == 0 || !isDigits(text(i - 1)))) {
                m_words.erase(m_words.begin() + static_cast<std::ptrdiff_t>(i) + 1);
                return;
            }
        if (m_words.size() < 3 || !isLitter(text(0)) || !isLitter(text(1)) || !isLitter(text(2))) return;
        if (2 * text(1).toInt() <= text(0).toInt()) return;
        problem(
            QStringLiteral("„%1 %2 %3“: lebend und tot ergeben nicht gesamt. Ist %3 der Tag, schreiben Sie „am %3“.")
                .arg(text(0), text(1), text(2)));
        m_words.erase(m_words.begin() + 2);
    }

    /// "14 / 1", "14/ 1" and "14 /1".
    void joinSlashes() {
        for (size_t i = 0; i + 1 < m_words.size();) {
            const QString &a = text(i), &b = text(i + 1);
            const bool joins = bare(i) && bare(i + 1) && isDigits(a.endsWith(u'/') ? a.chopped(1) : a) &&
                               (a.endsWith(u'/') != b.startsWith(u'/')) &&
                               (b == u"/" ? i + 2 < m_words.size() && isDigits(text(i + 2))
                                          : isDigits(b.startsWith(u'/') ? b.mid(1) : b));
            if (joins) {
                m_words[i].text += b;
                m_words.erase(m_words.begin() + static_cast<std::ptrdiff_t>(i) + 1);
            } else {
                ++i;
            }
        }
    }

    // ------------------------------------------------------------------------------------------- names of fields

    struct Name {
        size_t field = 0, words = 0;  ///< none where it has no words
    };

    /// The longest name of a field that begins at a word.
    Name nameAt(size_t i) const {
        constexpr size_t longest = 3;
        for (size_t count = longest; count > 0; --count) {
            QStringList words;
            for (size_t k = i; k < i + count && bare(k); ++k) words.append(text(k));
            if (static_cast<size_t>(words.size()) < count) continue;
            for (size_t f = 0; f < m_fields.size(); ++f)
                if (sameWord(nameOf(m_fields[f]), words.join(u' ')) ||
                    (count == 1 && listed(m_fields[f].also).contains(words.front(), Qt::CaseInsensitive)))
                    return {f, count};
        }
        return {};
    }

    /// The field whose unit the word is.
    std::optional<size_t> unitAt(size_t i) const {
        for (size_t f = 0; f < m_fields.size(); ++f)
            if (bare(i) && m_texts[f].isEmpty() && listed(m_fields[f].units).contains(text(i), Qt::CaseInsensitive))
                return f;
        return std::nullopt;
    }

    /// Whether the names stand behind their values: "13 lebend 1 tot".
    bool endsWithName() const {
        size_t end = m_words.size();
        while (end > 0 && bare(end - 1) && plainDay(text(end - 1), m_heute).isValid()) --end;
        for (size_t count = 3; count > 0; --count)
            if (end > count && nameAt(end - count).words == count)
                return bare(end - count - 1) && isDigits(text(end - count - 1));
        return false;
    }

    void give(size_t at, const Word& word) {
        const Field& field = m_fields[at];
        if (!m_texts[at].isEmpty()) return problem(QStringLiteral("„%1“ steht zweimal da.").arg(nameOf(field)));
        if (word.text.isEmpty()) return problem(QStringLiteral("Hinter „%1“ fehlt der Wert.").arg(nameOf(field)));
        if (fits(field, word.text)) m_texts[at] = fitted(field, word.text);
        if (m_texts[at].isEmpty())
            problem(QStringLiteral("„%1“ passt nicht in das Feld %2.").arg(word.text, nameOf(field)));
    }

    QString fitted(const Field& field, const QString& word) const {
        if (field.kind == Field::Choice) return choiceOf(field, word);
        if (field.kind == Field::Number) return Zahl_formatieren(QString(word), 2);
        if (field.kind == Field::Day) return Datum_ergaenzen(word, m_heute);
        return field.kind == Field::Text ? word.left(field.width).trimmed() : word;
    }

    // --------------------------------------------------------------------------------------------- word by word

    /// Takes what begins at a word; how many words that were.
    size_t takeAt(size_t i) {
        if (!bare(i)) return takeWord(i), 1;
        const bool more = i + 1 < m_words.size();
        if (more && bare(i + 1) && sayDay(i)) return 2;
        if (sameWord(text(i), u"davon") || (sameWord(text(i), u"am") && more && sameWord(text(i + 1), u"letzten")))
            return 1;
        if (sameWord(text(i), u"letzten") && more && plainDay(text(i + 1), m_heute).isValid()) return 1;
        const bool number = isDigits(text(i)) || looksNumeric(text(i));
        if (const auto unit = number ? unitAt(i + 1) : std::nullopt; unit && fits(m_fields[*unit], text(i)))
            return give(*unit, m_words[i]), 2;
        if (m_namesFollow && number && bare(i + 1))
            if (const Name name = nameAt(i + 1); name.words > 0 && fits(m_fields[name.field], text(i)))
                return give(name.field, m_words[i]), 1 + name.words;
        if (const Name name = nameAt(i); name.words > 0 && i + name.words < m_words.size()) {
            const Field& field = m_fields[name.field];
            if (field.kind == Field::Text || field.kind == Field::Day || fits(field, text(i + name.words)))
                return give(name.field, m_words[i + name.words]), 1 + name.words;
        }
        takeWord(i);
        return 1;
    }

    /// "am 3", "am Mo", "vom 16.7."
    bool sayDay(size_t i) {
        const QString& word = text(i + 1);
        if (!sameWord(text(i), u"am")) {
            const bool before = sameWord(text(i), u"vom") || sameWord(text(i), u"den");
            if (!before || !dayOf(word, m_heute).isValid()) return false;
        } else if (sameWord(word, u"letzten")) {
            return false;
        }
        const QDate day = dayOf(word, m_heute);
        day.isValid() ? setDay(day, word) : problem(QStringLiteral("„%1“ ist kein Tag.").arg(word));
        return true;
    }

    void setDay(QDate day, const QString& word) {
        if (m_line.day.isValid())
            return problem(QStringLiteral("„%1“ wäre ein zweiter Tag: Nennen Sie nur einen.").arg(word));
        m_line.day = day;
    }

    void takeWord(size_t i) {
        const Word& word = m_words[i];
        if (!word.quoted && word.text == u"-") return pass();
        if (!word.quoted && takeNamed(word.text)) return;
        if (!word.quoted && takeDotted(word)) return;
        const QDate day = word.quoted ? QDate() : dayOfDigits(word.text, m_heute);
        const size_t at = nextFor(word, day.isValid() && !m_line.day.isValid());
        if (at < m_fields.size()) {
            m_texts[at] = fitted(m_fields[at], word.text);
            m_next = at + 1;
        } else if (const auto skipped = day.isValid() ? skippedFor(word) : std::nullopt) {
            problem(QStringLiteral("„%1“ kann der Tag sein oder die Angabe %2: Schreiben Sie „am %1“ oder „%2=%1“.")
                        .arg(word.text, nameOf(m_fields[*skipped])));
        } else if (day.isValid()) {
            setDay(day, word.text);
        } else {
            m_left.append(word.text);
        }
    }

    void pass() {
        if (m_next < m_fields.size() && QString::fromUtf8(m_fields[m_next].choices) == u"J N")
            return problem(QStringLiteral("„-“ kann nein heißen: Schreiben Sie j oder n."));
        if (m_next < m_fields.size()) m_passed[m_next] = true;
        ++m_next;
    }

    /// FELD=WERT; also FELD:WERT where there is such a field.
    bool takeNamed(const QString& word) {
        const auto equals = word.indexOf(u'='), colon = word.indexOf(u':');
        const auto at = equals > 0 ? equals : colon;
        if (at <= 0) return false;
        const QString name = word.left(at);
        for (const bool whole : {true, false})
            for (size_t i = 0; i < m_fields.size(); ++i) {
                const QString own = nameOf(m_fields[i]);
                const bool meant =
                    whole ? sameWord(own, name) || listed(m_fields[i].also).contains(name, Qt::CaseInsensitive)
                          : own.startsWith(name, Qt::CaseInsensitive);
                if (meant) return give(i, {word.mid(at + 1)}), true;
            }
        if (equals > 0) problem(QStringLiteral("Ein Feld „%1“ gibt es hier nicht.").arg(name));
        return equals > 0;
    }

    /// A day, or what was meant for one: it never becomes a text.
    bool takeDotted(const Word& word) {
        const QDate day = plainDay(word.text, m_heute);
        const bool dotted = word.text.contains(u'.') && isDigits(QString(word.text).remove(u'.'));
        if (!day.isValid() && !dotted) return false;
        static const QRegularExpression decimal(QStringLiteral("^\\d+\\.\\d+$"));
        const bool number = decimal.match(word.text).hasMatch();
        const QString comma = QString(word.text).replace(u'.', u',');
        if (!day.isValid())
            problem(QStringLiteral("„%1“ ist kein Tag.").arg(word.text) +
                    (number ? QStringLiteral(" Eine Kommazahl schreibt sich %1.").arg(comma) : QString()));
        else if (number && !isRecent(day) && numberIsNext())
            problem(QStringLiteral("„%1“ kann ein Tag sein oder eine Zahl: Schreiben Sie %1. oder %2.")
                        .arg(word.text, comma));
        else
            setDay(day, word.text);
        return true;
    }

    bool isRecent(QDate day) const {
        constexpr qint64 most = 45;
        const qint64 ago = day.daysTo(Datum_aus_Text(m_heute));
        return ago >= 0 && ago <= most;
    }

    bool numberIsNext() const {
        for (size_t i = m_next; i < m_fields.size(); ++i)
            if (m_fields[i].kind == Field::Number && m_texts[i].isEmpty()) return true;
        return false;
    }

    /// The next field that a word fits into. `mayBeDay`: a number of four digits or more is no count then.
    size_t nextFor(const Word& word, bool mayBeDay) const {
        constexpr int shortDay = 2;
        for (size_t i = m_next; i < m_fields.size(); ++i) {
            const Field& field = m_fields[i];
            if (!m_texts[i].isEmpty() || field.flags & Field::Derived || field.kind == Field::Day) continue;
            if (!word.quoted && field.kind == Field::Count && mayBeDay && isDigits(word.text) &&
                word.text.size() > shortDay && !(field.flags & Field::Aside))
                return m_fields.size();
            if (takes(field, word)) return i;
        }
        return m_fields.size();
    }

    /// A field of numbers that other words went past: the number may have been meant for it.
    std::optional<size_t> skippedFor(const Word& word) const {
        for (size_t i = 0; i < std::min(m_next, m_fields.size()); ++i) {
            const Field& field = m_fields[i];
            const bool numbers = field.kind == Field::Count || field.kind == Field::Number;
            if (numbers && m_texts[i].isEmpty() && !m_passed[i] && !(field.flags & Field::Derived) &&
                takes(field, word))
                return i;
        }
        return std::nullopt;
    }

    // --------------------------------------------------------------------------------------------------- the end

    void finish() {
        if (m_line.kind == Buchungsart::Ferkelung) settleLitter();
        tellLeft();
        const QDate today = Datum_aus_Text(m_heute);
        if (!m_line.day.isValid()) m_line.day = m_day.isValid() ? m_day : today;
        if (m_line.day > today) m_line.note = QStringLiteral("Der Tag kommt erst noch.");
        if (m_line.day < today.addYears(-1)) m_line.note = QStringLiteral("Der Tag liegt über ein Jahr zurück.");
        for (size_t i = 0; i < m_fields.size(); ++i) {
            if (!m_texts[i].isEmpty())
                m_line.values.emplace_back(&m_fields[i], m_texts[i]);
            else if (m_fields[i].flags & Field::Needed)
                problem(QStringLiteral("Es fehlt: %1.").arg(nameOf(m_fields[i])));
        }
    }

    /// Two of the three numbers are enough; the screen reckons those born alive.
    void settleLitter() {
        QString &all = m_texts[0], &alive = m_texts[1], &dead = m_texts[2];
        if (all.isEmpty() && !alive.isEmpty()) all = QString::number(alive.toInt() + dead.toInt());
        if (!alive.isEmpty() && dead.isEmpty() && alive.toInt() < all.toInt())
            dead = QString::number(all.toInt() - alive.toInt());
        if (!alive.isEmpty() && alive.toInt() + dead.toInt() != all.toInt())
            problem(QStringLiteral("Lebend und tot ergeben nicht gesamt."));
        else if (dead.toInt() > all.toInt() && !all.isEmpty())
            problem(QStringLiteral("Mehr tote Ferkel als gesamt."));
        alive.clear();
    }

    void tellLeft() {
        if (m_left.isEmpty()) return;
        constexpr int longest = 40;
        const QString all = m_left.join(u' ');
        const bool words = std::any_of(m_left.begin(), m_left.end(), [](const QString& w) { return !looksNumeric(w); });
        problem(QStringLiteral("Für „%1“ ist kein Feld mehr da.")
                    .arg(all.size() > longest ? all.left(longest) + QStringLiteral("...") : all) +
                (words ? QStringLiteral(" Mehrere Wörter für ein Feld stehen in Anführungszeichen.") : QString()) +
                (m_line.kind == Buchungsart::Ferkelung && m_texts[0].isEmpty()
                     ? QStringLiteral(" Gesamt und tot schreiben sich 14/1.")
                     : QString()));
    }

    Schnellzeile& m_line;
    const QString& m_heute;
    const QDate m_day;  // of a line without one
    const std::vector<Field>& m_fields;
    std::vector<Word> m_words;
    std::vector<QString> m_texts;  // by field
    std::vector<bool> m_passed;    // by a "-"
    QStringList m_left;
    size_t m_next = 0;
    bool m_namesFollow = false;
};

}  // namespace

void Schnellwerte(Schnellzeile& line, std::vector<Schnellwort> words, const QString& heute, QDate day) {
    Werte(line, heute, day).take(std::move(words));
}

}  // namespace koben

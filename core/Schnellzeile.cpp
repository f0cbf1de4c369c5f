#include "core/Schnellzeile.h"

#include <QRegularExpression>
#include <algorithm>

#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

using Field = Schnellfeld;

struct Token {
    QString text;
    bool quoted = false;
};

/// Words by blanks, tabs and semicolons; quotes hold blanks together, also behind a "=".
std::vector<Token> split(const QString& line) {
    std::vector<Token> tokens;
    Token token;
    bool inside = false;
    const auto finish = [&] {
        if (!token.text.isEmpty() || token.quoted) tokens.push_back(token);
        token = {};
    };
    for (const QChar c : line) {
        if (c == u'"') {
            inside = !inside;
            token.quoted = token.quoted || token.text.isEmpty();
        } else if (!inside && (c.isSpace() || c == u';')) {
            finish();
        } else {
            token.text += c;
        }
    }
    finish();
    return tokens;
}

bool same(QStringView a, QStringView b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

bool isDigits(QStringView text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// The most that a number of animals can have, so that it is a number still.
constexpr int MostDigits = 15;

/// A number of an animal as a whole number; nothing where it has other characters.
std::optional<qint64> numeric(QStringView number) {
    if (!isDigits(number) || number.size() > MostDigits) return std::nullopt;
    return number.toLongLong();
}

/// Whether a word calls this kind: its letter, a word of it, or (`front`) the first letters of one.
bool calls(const Schnellart& art, const QString& word, bool front) {
    constexpr int least = 3;
    if (!front && same(word, QString::fromUtf8(art.letter))) return true;
    for (const QString& own : QString::fromUtf8(art.words).split(u' '))
        if (front ? word.size() >= least && own.startsWith(word, Qt::CaseInsensitive) : same(own, word)) return true;
    return false;
}

/// All kinds that a word may mean.
std::vector<Buchungsart> kindsOf(const QString& word) {
    std::vector<Buchungsart> kinds;
    for (const bool front : {false, true})
        for (const Schnellart& art : Schnellarten())
            if (kinds.empty() || kinds.back() != art.kind)
                if ((!front || kinds.empty() || calls(art, word, true)) && calls(art, word, front))
                    kinds.push_back(art.kind);
    return kinds;
}

/// The day of a word that can be nothing else; invalid for others.
QDate plainDay(const QString& word, const QString& heute) {
    const QDate today = Datum_aus_Text(heute);
    if (same(word, u"heute")) return today;
    if (same(word, u"gestern")) return today.addDays(-1);
    if (same(word, u"vorgestern")) return today.addDays(-2);
    const bool dotted = word.contains(u'.') && isDigits(QString(word).remove(u'.'));
    return dotted ? Datum_aus_Text(Datum_ergaenzen(word, heute)) : QDate();
}

QDate dayOfDigits(const QString& digits, const QString& heute) {
    return isDigits(digits) ? Datum_aus_Text(Datum_ergaenzen(digits, heute)) : QDate();
}

/// Reads one line; the result grows as the words are taken.
class Reader {
public:
    Reader(const std::vector<Schnelltier>& herd, const QString& heute) : m_herd(herd), m_heute(heute) {}

    Schnellzeile read(const QString& line) {
        m_tokens = split(line);
        m_line.empty = m_tokens.empty();
        m_line.grammar = !m_line.empty && m_tokens.front().text == u"?";
        if (m_line.empty || m_line.grammar) return m_line;
        const size_t at = findKind();
        for (size_t i = 0; i < at; ++i) takeAnimals(m_tokens[i].text);
        if (m_line.animals.empty() && m_line.problems.isEmpty()) problem(QStringLiteral("Es fehlt das Tier."));
        if (m_line.kind) {
            takeValues(at + 1);
        } else if (m_line.problems.isEmpty()) {
            QStringList letters;
            for (const Schnellart& art : Schnellarten())
                letters.append(QString::fromUtf8(art.letter) + u' ' + QString::fromUtf8(angaben(art.kind).caption));
            problem(QStringLiteral("Es fehlt die Art der Buchung: %1.").arg(letters.join(QStringLiteral(", "))));
        }
        return m_line;
    }

private:
    void problem(const QString& sentence) { m_line.problems.append(sentence); }

    // ------------------------------------------------------------------------------------------- kind and animals

    bool isNumber(const QString& word) const {
        return std::any_of(m_herd.begin(), m_herd.end(), [&](const Schnelltier& t) { return same(t.number, word); });
    }

    /// The first word that calls a kind; an animal of that number goes before it at the line's beginning.
    size_t findKind() {
        for (size_t i = 0; i < m_tokens.size(); ++i) {
            const QString& word = m_tokens[i].text;
            if (m_tokens[i].quoted || (i == 0 && isNumber(word))) continue;
            const auto kinds = kindsOf(word);
            if (kinds.empty()) continue;
            m_line.kind = kinds.front();
            if (kinds.size() > 1) {
                QStringList names;
                for (const Buchungsart kind : kinds) names.append(QString::fromUtf8(angaben(kind).caption));
                problem(QStringLiteral("„%1“ kann %2 heißen.").arg(word, names.join(QStringLiteral(" oder "))));
                m_line.kind.reset();
            }
            return i;
        }
        return m_tokens.size();
    }

    /// Of sows alone, where the kind is one of sows and there are any: a range may have boars between.
    std::vector<Schnelltier> meant(std::vector<Schnelltier> found) const {
        const bool sows = !m_line.kind || *m_line.kind != Buchungsart::Behandlung;
        const auto narrow = [&found](const auto& keep) {
            if (std::any_of(found.begin(), found.end(), keep))
                std::erase_if(found, [&](const Schnelltier& t) { return !keep(t); });
        };
        narrow([](const Schnelltier& t) { return !t.gone; });
        if (sows) narrow([](const Schnelltier& t) { return t.art == u"Sau"; });
        return found;
    }

    std::vector<Schnelltier> select(const std::function<bool(const Schnelltier&)>& wanted) const {
        std::vector<Schnelltier> found;
        std::copy_if(m_herd.begin(), m_herd.end(), std::back_inserter(found), wanted);
        return meant(std::move(found));
    }

    void add(const std::vector<Schnelltier>& animals) {
        for (const Schnelltier& animal : animals)
            if (std::none_of(m_line.animals.begin(), m_line.animals.end(),
                             [&](const Schnelltier& t) { return t.id == animal.id; }))
                m_line.animals.push_back(animal);
    }

    void takeAnimals(const QString& word) {
        if (isNumber(word)) return takeNumber(word);
        if (word.size() >= 4 && QStringLiteral("markierte").startsWith(word, Qt::CaseInsensitive)) {
            const auto marked = select([](const Schnelltier& t) { return t.marked; });
            if (marked.empty()) problem(QStringLiteral("In der Liste ist kein Tier markiert."));
            return add(marked);
        }
        for (const QString& part : word.split(u',', Qt::SkipEmptyParts))
            if (!isNumber(part) && part.contains(u'-'))
                takeRange(part);
            else
                takeNumber(part);
    }

    void takeRange(const QString& part) {
        const auto from = numeric(part.section(u'-', 0, 0)), to = numeric(part.section(u'-', 1));
        if (!from || !to || *from > *to) return problem(QStringLiteral("„%1“ ist keine Reihe von Nummern.").arg(part));
        auto found = select([&](const Schnelltier& t) {
            const auto number = numeric(t.number);
            return !t.gone && number && *number >= *from && *number <= *to;
        });
        std::stable_sort(found.begin(), found.end(), [](const Schnelltier& a, const Schnelltier& b) {
            return a.number.toLongLong() < b.number.toLongLong();
        });
        if (found.empty()) problem(QStringLiteral("In der Liste steht kein Tier von %1.").arg(part));
        add(found);
    }

    /// As the number is written; where none is, by its value ("7" for "007").
    void takeNumber(const QString& number) {
        auto found = select([&](const Schnelltier& t) { return same(t.number, number); });
        if (const auto value = numeric(number); found.empty() && value)
            found = select([&](const Schnelltier& t) { return numeric(t.number) == value; });
        if (found.empty()) return problem(unknown(number));
        if (found.size() > 1)
            return problem(QStringLiteral("Die Nummer %1 haben %2 Tiere der Liste. Markieren Sie das gemeinte, und "
                                          "schreiben Sie „markierte“.")
                               .arg(number)
                               .arg(found.size()));
        add(found);
    }

    QString unknown(const QString& number) const {
        QStringList like;
        constexpr int most = 3;
        for (const Schnelltier& t : m_herd)
            if (like.size() < most && t.number.startsWith(number, Qt::CaseInsensitive)) like.append(t.number);
        const QString said = QStringLiteral("Das Tier %1 steht nicht in der Liste.").arg(number);
        return like.isEmpty() ? said : said + QStringLiteral(" So beginnen: %1.").arg(like.join(QStringLiteral(", ")));
    }

    // ------------------------------------------------------------------------------------------------ day and values

    void takeValues(size_t from) {
        m_fields = &schnellart(*m_line.kind).fields;
        m_texts.resize(m_fields->size());
        m_tokens.erase(m_tokens.begin(), m_tokens.begin() + static_cast<std::ptrdiff_t>(from));
        if (m_line.kind == Buchungsart::Ferkelung) sumUpLitter();
        for (size_t i = 0; i < m_tokens.size(); ++i) {
            const bool last = i + 1 == m_tokens.size();
            if (same(m_tokens[i].text, u"am") && !m_tokens[i].quoted && !last)
                takeDay(m_tokens[++i].text);
            else
                takeWord(m_tokens[i]);
        }
        if (!m_line.day.isValid()) m_line.day = Datum_aus_Text(m_heute);
        for (size_t i = 0; i < m_fields->size(); ++i) {
            const Field& field = (*m_fields)[i];
            if (!m_texts[i].isEmpty())
                m_line.values.emplace_back(&field, m_texts[i]);
            else if (field.flags & Field::Needed)
                problem(QStringLiteral("Es fehlt: %1.").arg(QString::fromUtf8(field.name)));
        }
    }

    /// "14/1", and "14 13 1" or "14/13/1" where the sum is right: those born alive follow from the others.
    void sumUpLitter() {
        std::vector<Token> parts;
        for (const Token& token : m_tokens) {
            const QStringList numbers = token.text.split(u'/');
            if (numbers.size() > 1 &&
                std::all_of(numbers.begin(), numbers.end(), [](const QString& n) { return isDigits(n); })) {
                if (numbers.size() > 3 || (numbers.size() == 3 && !sums(numbers[0], numbers[1], numbers[2])))
                    problem(QStringLiteral("„%1“: lebend und tot ergeben nicht gesamt.").arg(token.text));
                for (const QString& number : numbers) parts.push_back({number});
            } else {
                parts.push_back(token);
            }
        }
        m_tokens = parts;
        for (size_t i = 0; i + 2 < m_tokens.size(); ++i)
            if (sums(m_tokens[i].text, m_tokens[i + 1].text, m_tokens[i + 2].text) &&
                (i == 0 || !isDigits(m_tokens[i - 1].text))) {
                m_tokens.erase(m_tokens.begin() + static_cast<std::ptrdiff_t>(i) + 1);
                break;
            }
    }

    static bool sums(const QString& all, const QString& alive, const QString& dead) {
        constexpr int most = 2;  // digits of a litter
        for (const QString& text : {all, alive, dead})
            if (!isDigits(text) || text.size() > most) return false;
        return all.toInt() == alive.toInt() + dead.toInt();
    }

    void setDay(QDate day, const QString& word) {
        if (m_line.day.isValid()) return problem(QStringLiteral("„%1“ wäre ein zweiter Tag.").arg(word));
        m_line.day = day;
    }

    void takeDay(const QString& word) {
        QDate day = plainDay(word, m_heute);
        if (!day.isValid()) day = dayOfDigits(word, m_heute);
        if (!day.isValid()) return problem(QStringLiteral("„%1“ ist kein Tag.").arg(word));
        setDay(day, word);
    }

    void takeWord(const Token& token) {
        const QString& word = token.text;
        if (!token.quoted && word == u"-") {
            ++m_next;
            return;
        }
        if (const auto equals = word.indexOf(u'='); !token.quoted && equals > 0)
            return takeNamed(word.left(equals), word.mid(equals + 1));
        if (const QDate day = token.quoted ? QDate() : plainDay(word, m_heute); day.isValid()) return setDay(day, word);
        const QDate day = token.quoted ? QDate() : dayOfDigits(word, m_heute);
        const size_t at = nextFor(token, day.isValid() && !m_line.day.isValid());
        if (at < m_fields->size()) {
            m_texts[at] = fitted((*m_fields)[at], word);
            m_next = at + 1;
        } else if (day.isValid()) {
            setDay(day, word);
        } else {
            problem(QStringLiteral("Für „%1“ ist kein Feld mehr da.").arg(word));
        }
    }

    /// The next field that a word fits into. `mayBeDay`: a number of four digits or more is no count then.
    size_t nextFor(const Token& token, bool mayBeDay) const {
        constexpr int shortDay = 2;
        for (size_t i = m_next; i < m_fields->size(); ++i) {
            const Field& field = (*m_fields)[i];
            if (!m_texts[i].isEmpty() || field.flags & Field::Derived || field.kind == Field::Day) continue;
            if (isDigits(token.text) && !token.quoted) {
                if (field.flags & Field::Aside) continue;
                if (field.kind == Field::Text && !(field.flags & Field::Digits)) continue;
                if (field.kind == Field::Count && mayBeDay && token.text.size() > shortDay) return m_fields->size();
            }
            if (token.quoted ? field.kind == Field::Text : fits(field, token.text)) return i;
        }
        return m_fields->size();
    }

    static QString choiceOf(const Field& field, const QString& word) {
        for (const QString& choice : QString::fromUtf8(field.choices).split(u' '))
            if (same(choice, word)) return choice;
        const bool yes = same(word, u"ja"), no = same(word, u"nein");
        return QString::fromUtf8(field.choices) == u"J N" && (yes || no) ? QString(yes ? u'J' : u'N') : QString();
    }

    static bool fits(const Field& field, const QString& word) {
        static const QRegularExpression number(QStringLiteral("^\\d{1,12}([,.]\\d{1,4})?$"));
        const bool minus = field.flags & Field::Negative && word.startsWith(u'-');
        switch (field.kind) {
            case Field::Count:
                return isDigits(minus ? QStringView(word).mid(1) : QStringView(word)) && word.size() <= MostDigits;
            case Field::Number:
                return number.match(word).hasMatch();
            case Field::Choice:
                return !choiceOf(field, word).isEmpty();
            default:
                return !word.isEmpty();
        }
    }

    QString fitted(const Field& field, const QString& word) const {
        if (field.kind == Field::Choice) return choiceOf(field, word);
        if (field.kind == Field::Number) return Zahl_formatieren(QString(word), 2);
        if (field.kind == Field::Day) return Datum_ergaenzen(word, m_heute);
        return field.kind == Field::Text ? word.left(field.width).trimmed() : word;
    }

    void takeNamed(const QString& name, const QString& value) {
        for (const bool whole : {true, false})
            for (size_t i = 0; i < m_fields->size(); ++i) {
                const Field& field = (*m_fields)[i];
                const QString own = QString::fromUtf8(field.name);
                if (whole ? !same(own, name) : !own.startsWith(name, Qt::CaseInsensitive)) continue;
                m_texts[i] = fits(field, value) ? fitted(field, value) : QString();
                if (m_texts[i].isEmpty()) problem(QStringLiteral("„%1“ passt nicht in das Feld %2.").arg(value, own));
                return;
            }
        problem(QStringLiteral("Ein Feld „%1“ gibt es hier nicht.").arg(name));
    }

    const std::vector<Schnelltier>& m_herd;
    const QString& m_heute;
    std::vector<Token> m_tokens;
    Schnellzeile m_line;
    const std::vector<Field>* m_fields = nullptr;
    std::vector<QString> m_texts;  // by field
    size_t m_next = 0;
};

QString withDay(QDate day) {
    static const char* const days[] = {"Mo", "Di", "Mi", "Do", "Fr", "Sa", "So"};
    return QString::fromUtf8(days[day.dayOfWeek() - 1]) + u' ' + Datum_als_Anzeige(day);
}

}  // namespace

Schnellzeile Schnellzeile_lesen(const QString& line, const std::vector<Schnelltier>& herd, const QString& heute) {
    return Reader(herd, heute).read(line);
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
    return QStringLiteral("Gebucht wird: ") + understood() + u'.';
}

}  // namespace koben

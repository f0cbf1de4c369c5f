#include "core/Schnelltierwahl.h"

#include <QRegularExpression>
#include <algorithm>

namespace koben {
namespace {

/// The most digits that a number of animals can have, so that it is a number still.
constexpr int MostDigits = 15;

/// A number of an animal as a whole number; nothing where it has other characters.
std::optional<qint64> numeric(QStringView number) {
    if (!isDigits(number) || number.size() > MostDigits) return std::nullopt;
    return number.toLongLong();
}

bool isMarked(const QString& word) {
    return word.size() >= 4 && QStringLiteral("markierte").startsWith(word, Qt::CaseInsensitive);
}

}  // namespace

bool Schnelltierwahl::saysNothing(const QString& word) {
    static const QStringList fillers{"sau", "sauen", "eber", "tier", "tiere", "nr",  "nr.", "nummer", "die",   "und",
                                     "u",   "u.",    "&",    "+",    "bei",   "hat", "ist", "wurde",  "wurden"};
    return fillers.contains(word, Qt::CaseInsensitive);
}

bool Schnelltierwahl::isNumber(const QString& word) const {
    return std::any_of(m_herd.begin(), m_herd.end(), [&](const Schnelltier& t) { return sameWord(t.number, word); });
}

bool Schnelltierwahl::names(const QString& word) const {
    if (isNumber(word) || isMarked(word)) return true;
    static const QRegularExpression list(QStringLiteral("^\\d+(-\\d+)?(,\\d+(-\\d+)?)*$"));
    if (!list.match(word).hasMatch()) return false;
    const QString first = word.section(QRegularExpression(QStringLiteral("[-,]")), 0, 0);
    const auto value = numeric(first);
    return word.contains(u'-') || std::any_of(m_herd.begin(), m_herd.end(), [&](const Schnelltier& t) {
               return value && numeric(t.number) == value;
           });
}

void Schnelltierwahl::take(const std::vector<Schnellwort>& words, bool sowsOnly) {
    m_sowsOnly = sowsOnly;
    for (const QString& word : joined(words)) takeWord(word);
}

/// A range in pieces is one word: "40 - 43", "40- 43", "40 bis 43", "40..43".
QStringList Schnelltierwahl::joined(const std::vector<Schnellwort>& words) const {
    QStringList joined;
    for (const Schnellwort& word : words) {
        QString text = word.text;
        if (sameWord(text, u"bis")) text = QStringLiteral("-");
        if (!isNumber(text)) text.replace(QRegularExpression(QStringLiteral("\\.{2,3}")), QStringLiteral("-"));
        if (saysNothing(text) && !isNumber(text)) continue;
        const bool open = !joined.isEmpty() && joined.last().endsWith(u'-') && !isNumber(joined.last());
        if (open || (!joined.isEmpty() && text.startsWith(u'-') && !isNumber(text)))
            joined.last() += text;
        else
            joined.append(text);
    }
    return joined;
}

/// Of sows alone, where the kind is one of sows and there are any; of those in stock, where there are any.
std::vector<Schnelltier> Schnelltierwahl::select(const Wanted& wanted) const {
    std::vector<Schnelltier> found;
    std::copy_if(m_herd.begin(), m_herd.end(), std::back_inserter(found), wanted);
    const auto narrow = [&found](const auto& keep) {
        if (std::any_of(found.begin(), found.end(), keep))
            std::erase_if(found, [&](const Schnelltier& t) { return !keep(t); });
    };
    narrow([](const Schnelltier& t) { return !t.gone; });
    if (m_sowsOnly) narrow([](const Schnelltier& t) { return t.art == u"Sau"; });
    return found;
}

void Schnelltierwahl::add(const std::vector<Schnelltier>& animals) {
    for (const Schnelltier& animal : animals)
        if (std::none_of(m_animals.begin(), m_animals.end(), [&](const Schnelltier& t) { return t.id == animal.id; }))
            m_animals.push_back(animal);
}

void Schnelltierwahl::takeWord(const QString& word) {
    if (isNumber(word)) return takeNumber(word);
    if (isMarked(word)) {
        const auto marked = select([](const Schnelltier& t) { return t.marked; });
        if (marked.empty()) m_problems.append(QStringLiteral("In der Liste ist kein Tier markiert."));
        return add(marked);
    }
    if (sameWord(word, u"alle")) {
        m_problems.append(
            QStringLiteral("„alle“ geht nicht: Markieren Sie die Tiere in der Liste, und schreiben Sie „markierte“."));
        return;
    }
    for (const QString& part : word.split(u',', Qt::SkipEmptyParts)) {
        static const QRegularExpression between(QStringLiteral("[+/&]"));
        const QStringList ones = part.split(between, Qt::SkipEmptyParts);
        const bool several = !isNumber(part) && std::all_of(ones.begin(), ones.end(), [this](const QString& one) {
            return isNumber(one) || one.contains(u'-');
        });
        for (const QString& one : several ? ones : QStringList(part))
            if (!isNumber(one) && one.contains(u'-'))
                takeRange(one);
            else
                takeNumber(one);
    }
}

void Schnelltierwahl::takeRange(const QString& part) {
    const QString first = part.section(u'-', 0, 0), last = part.section(u'-', 1);
    const auto from = numeric(first), to = numeric(last);
    if (!from || !to) return m_problems.append(QStringLiteral("„%1“ ist keine Reihe von Nummern.").arg(part));
    if (*from > *to)
        return m_problems.append(
            QStringLiteral("„%1“ ist keine Reihe von Nummern: Die kleinere steht vorn, %2-%3.").arg(part, last, first));
    auto found = select([&](const Schnelltier& t) {
        const auto number = numeric(t.number);
        return !t.gone && number && *number >= *from && *number <= *to;
    });
    std::stable_sort(found.begin(), found.end(), [](const Schnelltier& a, const Schnelltier& b) {
        return a.number.toLongLong() < b.number.toLongLong();
    });
    if (found.empty()) m_problems.append(QStringLiteral("In der Liste steht kein Tier von %1.").arg(part));
    add(found);
}

/// As the number is written; where none is, by its value ("7" for "007").
void Schnelltierwahl::takeNumber(const QString& number) {
    auto found = select([&](const Schnelltier& t) { return sameWord(t.number, number); });
    if (const auto value = numeric(number); found.empty() && value)
        found = select([&](const Schnelltier& t) { return numeric(t.number) == value; });
    if (found.empty()) return m_problems.append(unknown(number));
    if (found.size() > 1)
        return m_problems.append(QStringLiteral("Die Nummer %1 haben %2 Tiere der Liste. Markieren Sie das gemeinte, "
                                                "und schreiben Sie „markierte“.")
                                     .arg(number)
                                     .arg(found.size()));
    add(found);
}

QString Schnelltierwahl::unknown(const QString& number) const {
    QStringList like;
    constexpr int most = 3;
    for (const Schnelltier& t : m_herd)
        if (like.size() < most && t.number.startsWith(number, Qt::CaseInsensitive)) like.append(t.number);
    constexpr int longest = 30;
    const QString shown = number.size() > longest ? number.left(longest) + QStringLiteral("...") : number;
    const QString said = QStringLiteral("Das Tier %1 steht nicht in der Liste.").arg(shown);
    return like.isEmpty() ? said : said + QStringLiteral(" So beginnen: %1.").arg(like.join(QStringLiteral(", ")));
}

}  // namespace koben

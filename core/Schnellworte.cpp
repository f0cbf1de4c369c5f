#include "core/Schnellworte.h"

#include <QRegularExpression>
#include <algorithm>

#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

constexpr const char* Weekdays[] = {"Montag", "Dienstag", "Mittwoch", "Donnerstag", "Freitag", "Samstag", "Sonntag"};

/// The characters that a word processor or a telephone puts in place of plain ones.
QString plain(QString line) {
    for (QChar& c : line) {
        if (QStringLiteral("„“”«»").contains(c)) c = u'"';
        if (QStringLiteral("–—−‐‑").contains(c)) c = u'-';
        if (QStringLiteral("’‘´`").contains(c)) c = u'\'';
    }
    return line;
}

std::vector<Schnellwort> split(const QString& line) {
    std::vector<Schnellwort> words;
    Schnellwort word;
    bool inside = false;
    const auto finish = [&] {
        if (!word.text.isEmpty() || word.quoted) words.push_back(word);
        word = {};
    };
    for (const QChar c : line) {
        if (c == u'"') {
            inside = !inside;
            word.quoted = word.quoted || word.text.isEmpty();
        } else if (!inside && (c.isSpace() || c == u';')) {
            finish();
        } else {
            if (!inside && c == u'=') word.quoted = false;  // the quotes held its name together
            word.text += c;
        }
    }
    finish();
    return words;
}

bool matches(const QString& text, const char* pattern) {
    return QRegularExpression(QRegularExpression::anchoredPattern(QString::fromUtf8(pattern))).match(text).hasMatch();
}

/// Whether the second word is the rest of the first, and both are one.
bool belongs(const Schnellwort& first, const Schnellwort& second) {
    const bool named = !first.quoted && first.text.size() > 1 && first.text.endsWith(u'=');
    if (named) return true;
    if (first.quoted || second.quoted) return false;
    if (second.text.startsWith(u'=')) return first.text.front().isLetter() && !first.text.contains(u'=');
    return (matches(first.text, R"(\d{1,2}\.)") && matches(second.text, R"(\d{1,2}\.(\d{2}|\d{4})?)")) ||
           (matches(first.text, R"(\d{1,2}\.\d{1,2}\.)") && matches(second.text, R"(20\d\d)"));
}

}  // namespace

QStringList listed(const char* words) { return QString::fromUtf8(words).split(u' ', Qt::SkipEmptyParts); }

bool sameWord(QStringView a, QStringView b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

bool isDigits(QStringView text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool looksNumeric(const QString& word) { return matches(word, R"([-+]?\d[\d.,/:+-]*[€%]?|/\d+)"); }

std::vector<Schnellwort> Schnellworte(const QString& line) {
    std::vector<Schnellwort> words;
    for (Schnellwort& word : split(plain(line))) {
        if (!word.quoted)
            while (word.text.endsWith(u',') || word.text.endsWith(u':')) word.text.chop(1);
        if (word.text.isEmpty() && !word.quoted) continue;
        if (!words.empty() && belongs(words.back(), word))
            words.back().text += word.text;
        else
            words.push_back(word);
    }
    return words;
}

QDate plainDay(const QString& word, const QString& heute) {
    const QDate today = Datum_aus_Text(heute);
    static constexpr std::pair<const char*, int> near[] = {{"heute", 0},         {"gestern", -1},   {"vorgestern", -2},
                                                           {"morgen", 1},        {"übermorgen", 2}, {"uebermorgen", 2},
                                                           {"vorvorgestern", -3}};
    for (const auto& [name, days] : near)
        if (sameWord(word, QString::fromUtf8(name))) return today.addDays(days);
    for (int i = 0; i < 7; ++i)
        if (sameWord(word, QString::fromLatin1(Weekdays[i])))
            return today.addDays(-((today.dayOfWeek() - 1 - i + 7) % 7));
    if (matches(word, R"(\d{4}-\d\d-\d\d)")) return QDate::fromString(word, Qt::ISODate);
    const bool dotted = word.contains(u'.') && isDigits(QString(word).remove(u'.'));
    return dotted ? Datum_aus_Text(Datum_ergaenzen(word, heute)) : QDate();
}

QDate dayOf(const QString& word, const QString& heute) {
    for (const char* name : Weekdays)
        if (sameWord(word, QString::fromLatin1(name).first(2))) return plainDay(QString::fromLatin1(name), heute);
    const QDate day = plainDay(word, heute);
    return day.isValid() ? day : dayOfDigits(word, heute);
}

QDate dayOfDigits(const QString& digits, const QString& heute) {
    return isDigits(digits) ? Datum_aus_Text(Datum_ergaenzen(digits, heute)) : QDate();
}

}  // namespace koben

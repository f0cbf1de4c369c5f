#include "output/TextWidth.h"

#include <QStringList>

namespace koben {

namespace {

constexpr double millimetresPerPoint = 25.4 / 72;

/// In thousandths of the type's size.
int letterWidth(QChar letter) {
    const char16_t c = letter.unicode();
    if (letter.isDigit()) return 556;
    if (QStringView(u"ijlI.,:;'|! /").contains(letter)) return 278;
    if (QStringView(u"tfr()-[]").contains(letter)) return 333;
    if (QStringView(u"mM%W").contains(letter)) return 889;
    if (QStringView(u"wGOQCDHNRUÜÖ").contains(letter)) return 750;
    if (QStringView(u"csvxyzkJ").contains(letter)) return 500;
    return letter.isUpper() || c > 0xff ? 667 : 556;
}

}  // namespace

double textWidth(QStringView text, double points) {
    int width = 0;
    for (const QChar letter : text) width += letterWidth(letter);
    return width / 1000.0 * points * millimetresPerPoint;
}

double lineHeight(double points) { return 1.25 * points * millimetresPerPoint; }

QString cutText(const QString& text, double points, double room) {
    if (textWidth(text, points) <= room) return text;
    qsizetype fits = text.size();
    while (fits > 1 && textWidth(text.left(fits) + QStringLiteral("..."), points) > room) --fits;
    return text.left(fits).trimmed() + QStringLiteral("...");
}

QStringList wrapText(const QString& text, double points, double room) {
    QStringList lines;
    for (const QString& word : text.split(u' ', Qt::SkipEmptyParts)) {
        const QString longer = lines.isEmpty() ? word : lines.constLast() + u' ' + word;
        if (!lines.isEmpty() && textWidth(longer, points) <= room)
            lines.last() = longer;
        else
            lines.append(word);
    }
    return lines;
}

}  // namespace koben

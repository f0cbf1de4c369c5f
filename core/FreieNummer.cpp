#include "core/FreieNummer.h"

#include <algorithm>

#include "core/PZ_Koben_Subs.h"
#include "store/Collation.h"

namespace koben {
namespace {

constexpr qsizetype MostDigits = 18;  // of a 64-bit number

/// A decimal digit as numbers are compared, where a raised digit equals the plain one; -1 for any other character.
int digitOf(QChar c) {
    if (c >= u'0' && c <= u'9') return c.unicode() - u'0';
    switch (c.unicode()) {
        case u'¹':
            return 1;
        case u'²':
            return 2;
        case u'³':
            return 3;
        default:
            return -1;
    }
}

/// The count that a taken number stands for: `taken` equals base + "-" + count. 0 where it equals none.
qint64 countOf(QStringView taken, const QString& base) {
    while (taken.endsWith(u' ')) taken.chop(1);
    qint64 count = 0, unit = 1;
    qsizetype digits = 0;
    for (qsizetype at = taken.size() - 1; at >= 0 && digits < MostDigits; --at, ++digits, unit *= 10) {
        const int digit = digitOf(taken[at]);
        if (digit < 0) break;
        count += digit * unit;
    }
    return equalTexts(taken, base + u'-' + QString::number(count)) ? count : 0;
}

}  // namespace

FreieNummern::FreieNummern(const Database& db, const QString& base) : m_base(Hochkomma_ersetzen(base)) {
    // Digits stand directly below the letters in the order of texts: these bounds hold every count of the base.
    Statement numbers = db.prepare(QStringLiteral("select Nummer from Sauen where Nummer >= ? and Nummer < ?"));
    numbers.bind({m_base + QStringLiteral("-0"), m_base + QStringLiteral("-a")});
    while (numbers.next())
        if (const qint64 count = countOf(numbers.text(0), m_base); count > 0) m_taken.push_back(count);
    std::sort(m_taken.begin(), m_taken.end());
}

QString FreieNummern::naechste() {
    ++m_last;
    for (; m_at < m_taken.size() && m_taken[m_at] <= m_last; ++m_at)
        if (m_taken[m_at] == m_last) ++m_last;
    return m_base + u'-' + QString::number(m_last);
}

QString Freie_Nummer(const Database& db, const QString& base) { return FreieNummern(db, base).naechste(); }

}  // namespace koben

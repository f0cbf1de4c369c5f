#include "bookings/Handelsrechnung.h"

#include <algorithm>

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

__extension__ typedef __int128 Wide;  // an amount times a count never overflows it

constexpr double MostPiglets = 1e15;  // of a count, far beyond what its field stores

/// A text is a count by its leading whole number.
qint64 countOf(const QString& text) { return static_cast<qint64>(std::clamp(Wert(text), -MostPiglets, MostPiglets)); }

Wide amountOf(const QString& text) { return Betrag_aus_Text(QString(text)).tenThousandths; }

/// part / whole ten-thousandths as a text with two decimals and a comma.
QString gerundet(Wide part, Wide whole) {
    const bool negative = (part < 0) != (whole < 0);
    if (part < 0) part = -part;
    if (whole < 0) whole = -whole;
    whole *= 100;  // from ten-thousandths to hundredths
    Wide cents = part / whole;
    if (part % whole >= whole - part % whole) ++cents;
    const bool zero = cents == 0;
    QString digits;
    for (; cents > 0 || digits.size() < 3; cents /= 10) digits.prepend(QChar(u'0' + static_cast<int>(cents % 10)));
    digits.insert(digits.size() - 2, u',');
    return negative && !zero ? u'-' + digits : digits;
}

QString mal(const QString& amount, qint64 count) { return gerundet(amountOf(amount) * count, 1); }
QString durch(const QString& amount, qint64 count) { return gerundet(amountOf(amount), count); }
void formatieren(QString& text) { text = Zahl_formatieren(QString(text), 2); }

}  // namespace

void Verkauf_nachrechnen(Verkaufszahlen& tz, int i) {
    using F = Verkaufsfelder;
    const qint64 count = countOf(tz[F::Anzahl]);
    if (i != F::Anzahl) formatieren(tz[static_cast<size_t>(i)]);
    if (i == F::Gesamtgewicht && count != 0) tz[F::Stückgewicht] = durch(tz[F::Gesamtgewicht], count);
    if (i == F::Stückgewicht) tz[F::Gesamtgewicht] = mal(tz[F::Stückgewicht], count);
    if (i == F::Einnahmen && count != 0 && amountOf(tz[F::Einnahmen]) != 0)
        tz[F::Preis] = durch(tz[F::Einnahmen], count);
    if (i == F::Anzahl || i == F::Preis) {
        tz[F::Einnahmen] = mal(tz[F::Preis], count);
        tz[F::Gesamtgewicht] = mal(tz[F::Stückgewicht], count);
    }
    // Last: money and weight of an emptied count stay 0 beside the 1 that then stands there.
    if (i == F::Anzahl && count < 1) tz[F::Anzahl] = QStringLiteral("1");
}

void Handel_nachrechnen(Handelszahlen& tz, int i) {
    using F = Handelsfelder;
    if (i >= F::Preis) formatieren(tz[static_cast<size_t>(i)]);
    if (i == F::Einkauf && Wert(tz[F::Einkauf]) != 0) tz[F::Verkauf] = QStringLiteral("0");
    if (i == F::Verkauf && Wert(tz[F::Verkauf]) != 0) tz[F::Einkauf] = QStringLiteral("0");
    const qint64 bought = countOf(tz[F::Einkauf]), sold = countOf(tz[F::Verkauf]);
    const qint64 count = bought != 0 ? bought : sold;
    if (i == F::Gesamtgewicht && count != 0) tz[F::Stückgewicht] = durch(tz[F::Gesamtgewicht], count);
    if (i == F::Stückgewicht) tz[F::Gesamtgewicht] = mal(tz[F::Stückgewicht], count);
    if (i == F::Ausgaben && bought != 0 && amountOf(tz[F::Ausgaben]) != 0)
        tz[F::Preis] = durch(tz[F::Ausgaben], bought);
    if (i == F::Einnahmen && sold != 0 && amountOf(tz[F::Einnahmen]) != 0) tz[F::Preis] = durch(tz[F::Einnahmen], sold);
    if (i > F::Preis) return;
    tz[F::Einnahmen] = mal(tz[F::Preis], sold);
    tz[F::Ausgaben] = mal(tz[F::Preis], bought);
    tz[F::Gesamtgewicht] = mal(tz[F::Stückgewicht], count);
}

}  // namespace koben

#include "figures/Herleitung_Kennzahl.h"

#include "figures/Kennzahlenlauf.h"

namespace koben {
namespace {

/// The columns of every list; a figure that is no quotient has its parts in one column.
std::vector<Column> columns(bool quotient) {
    std::vector<Column> all{{.key = "nummer", .title = "Nummer"},
                            {.key = "datum", .title = "Datum", .sort = Sort::Date},
                            {.key = "buchung", .title = "Buchung"},
                            {.key = "einzelheiten", .title = "Einzelheiten"}};
    const auto number = [&](const char* title) {
        all.push_back({.key = QString::fromUtf8(title).toLower(),
                       .title = QString::fromUtf8(title),
                       .align = Align::Right,
                       .sort = Sort::Number});
    };
    number(quotient ? "Zähler" : "Wert");
    if (quotient) number("Nenner");
    return all;
}

Value numberOf(const std::optional<qint64>& part) { return part ? Value(*part) : Value(); }

Grid::Row cells(const Beitrag& part) {
    return {part.sau->nummer, Value(QDate::fromJulianDay(part.tag)), part.was, part.einzelheit};
}

/// Whose denominators are the cases that a figure counts.
Kz counter(Kz figure) {
    if (figure >= Kz::Umrauscher_4_17 && figure <= Kz::Umrauscher_38_46) return Kz::Umrauscher;
    return (parts(figure) & Teil::Npt) != 0 ? Kz::NptSauJahr : figure;
}

QString head(const Kennzahl& figure, Zeitraum period) {
    return QStringLiteral("%1 (%2), %3")
        .arg(QString::fromUtf8(figure.name), QString::fromUtf8(figure.variante), Zeitraumtext(period));
}

Explanation valueOf(const Sauenbuch& book, const Kennzahl& figure, Zeitraum period) {
    const Kennzahlwert value = compute(book, std::span(&period, 1), parts(figure.nr)).front()[figure.nr];
    Explanation told{
        .sentence = QStringLiteral("%1: %2 Formel: %3.")
                        .arg(head(figure, period), QString::fromUtf8(figure.satz), QString::fromUtf8(figure.formel)),
        .columns = columns(figure.quotient)};
    if (figure.quotient) {
        told.numerator = QString::number(value.numerator);
        told.denominator = QString::number(value.denominator);
    }
    if (!value.empty()) told.value = value.text();
    for (const Beitrag& part : Beitraege(book, figure.nr, period)) {
        Grid::Row row = cells(part);
        row.append(numberOf(part.numerator));
        if (figure.quotient) row.append(numberOf(part.denominator));
        told.lines.push_back({std::move(row), part.sau->id});
    }
    return told;
}

Explanation countedOf(const Sauenbuch& book, const Kennzahl& figure, Zeitraum period) {
    Explanation told{.sentence = QStringLiteral("%1: was gezählt wird, die Fälle im Nenner; bei Kennzahlen nach "
                                                "Produktionstagen die Produktionstage.")
                                     .arg(head(figure, period)),
                     .columns = columns(false)};
    qint64 sum = 0;
    const auto add = [&](const Beitrag& part, qint64 count) {
        Grid::Row row = cells(part);
        row.append(Value(count));
        sum += count;
        told.lines.push_back({std::move(row), part.sau->id});
    };
    const bool stock = figure.nr >= Kz::Wuerfe0;
    for (int row = static_cast<int>(Kz::Wuerfe0); stock && row < KennzahlAnzahl; ++row)
        for (const Beitrag& part : Beitraege(book, static_cast<Kz>(row), period)) add(part, part.numerator.value_or(0));
    if (!stock)
        for (const Beitrag& part : Beitraege(book, counter(figure.nr), period))
            if (part.denominator) add(part, *part.denominator);
    told.value = QString::number(sum);
    return told;
}

Explanation leftOutOf(const Sauenbuch& book, const Kennzahl& figure, Zeitraum period) {
    Explanation told{
        .sentence = QStringLiteral("%1: ausgelassen sind %2.")
                        .arg(head(figure, period), figure.ausgelassen ? QString::fromUtf8(figure.ausgelassen)
                                                                      : QStringLiteral("keine Buchungen")),
        .columns = columns(false)};
    const auto leftOut = Ausgelassene(book, figure.nr, period);
    for (const Beitrag& part : leftOut) {
        Grid::Row row = cells(part);
        row.append(Value(1));
        told.lines.push_back({std::move(row), part.sau->id});
    }
    if (figure.ausgelassen) told.value = QString::number(leftOut.size());
    return told;
}

}  // namespace

Explanation Kennzahl_herleiten(const Sauenbuch& book, Kz figure, Zeitraum period, Spalte column) {
    period.bis = std::min(period.bis, book.heute());
    if (column == Spalte::Gezaehlt) return countedOf(book, kennzahl(figure), period);
    if (column == Spalte::Ausgelassen) return leftOutOf(book, kennzahl(figure), period);
    return valueOf(book, kennzahl(figure), period);
}

}  // namespace koben

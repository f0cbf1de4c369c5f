#include "bookings/PE_Bewegungsdaten_Verschiebung.h"

#include "core/PZ_Koben_Subs.h"
#include "store/Collation.h"

namespace koben {

namespace {

constexpr int Least = -99;  // taken in, by the arrows

}  // namespace

PE_Bewegungsdaten_Verschiebung::PE_Bewegungsdaten_Verschiebung(Koben& context)
    : Buchungseingabe(context, QStringLiteral("PE_Bewegungsdaten_Verschiebung"),
                      QStringLiteral("Verschiebung eingeben"), Buchungsart::Verschiebung,
                      QStringLiteral("Dateneingabe Verschiebung")) {
    count("Anzahl Ferkel:", tz, "Anzahl_Ferkel", QStringLiteral("1"), UpDown, Least, MostByArrows);
    text("Zu Sau-Nummer:", kom[0], "Zu_Saunr", 15,
         // grouped, it is sorted by the keys that stand beside the numbers; distinct compares the texts themselves
         {.sql = QStringLiteral("select Nummer from Sauen where Art = 'Sau' group by Nummer")});
    text("Kommentar:", kom[1], "Kommentar", 20, valuesOf("Kommentar"));
    text("Bemerkung:", kom[2], "Bemerkung", 20, remarks());
}

void PE_Bewegungsdaten_Verschiebung::Activate() {
    Buchungseingabe::Activate();
    takeCount(tz);
}

void PE_Bewegungsdaten_Verschiebung::check(Findings& found) {
    if (Wert(tz.text()) == 0)
        found.add(tz, QStringLiteral("...die Anzahl der zu verschiebenden Ferkel darf nicht 0 sein!"));
    if (!dateEntered()) found.add(tdat, QStringLiteral("...das Datum muß eingegeben werden!"));
    const QString to = partner().trimmed();
    if (to.isEmpty())
        found.add(kom[0], QStringLiteral("...die Sau, zu der die Ferkel verschoben wurden, angegeben werden muß!"));
    else if (equalTexts(to, bezschwein[1].text()))
        found.add(kom[0], QStringLiteral("...eine Verschiebung muß immer zu einer anderen Sau erfolgen!"));
}

/// Always the current sow alone, whatever is marked.
std::optional<std::vector<int>> PE_Bewegungsdaten_Verschiebung::animals() {
    return std::vector<int>{frame().schweinli.row()};
}

/// The row of the other sow, looked for among the animals that the herd list shows.
void PE_Bewegungsdaten_Verschiebung::finish(const Action& action) {
    if (!adding()) return;
    Grid* herd = koben.herdList ? &koben.herdList->herd() : nullptr;
    const int hit = herd ? herd->findText(u"Nummer", Hochkomma_ersetzen(partner())) : 0;
    m_partnerFound = hit > 0;
    if (!m_partnerFound) return;
    herd->setRow(hit);
    Verschiebung_gegenbuchen(action, values(), herd->value(hit, u"ID").toInt(),
                             frame().schweinli.cell(rows().front(), u"Nummer"));
}

QStringList PE_Bewegungsdaten_Verschiebung::hints() const {
    if (!adding())
        return {QStringLiteral("Hinweis:") + Crlf + Crlf +
                QStringLiteral("Die Gegenbuchung bei der Sau, zu/von der die Ferkel verschoben wurden, wird nur bei "
                               "neuen Buchungen vorgenommen. Bitte nehmen Sie die Korrektur also ggf. auch bei der "
                               "beteiligten Sau manuell vor!")};
    if (!m_partnerFound)
        return {
            QStringLiteral("Es wurde keine Gegenbuchung bei der Sau vorgenommen, zu/von der die Ferkel verschoben "
                           "wurde, weil diese nicht gefunden wurde!")};
    return {};
}

}  // namespace koben

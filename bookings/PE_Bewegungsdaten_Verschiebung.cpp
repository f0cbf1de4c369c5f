#include "bookings/PE_Bewegungsdaten_Verschiebung.h"

#include "core/PZ_Koben_Subs.h"
#include "store/Collation.h"

namespace koben {

namespace {

constexpr int Least = -99;  // taken in, by the arrows

}  // namespace

PE_Bewegungsdaten_Verschiebung::PE_Bewegungsdaten_Verschiebung(Koben& context)
    : Buchungseingabe(context, QStringLiteral("PE_Bewegungsdaten_Verschiebung"),
                      QStringLiteral("Verschiebung eingeben"), 4, QStringLiteral("Dateneingabe Verschiebung")) {
    anzahl("Anzahl Ferkel:", tz, "Anzahl_Ferkel", QStringLiteral("1"), UpDown, Least);
    text("Zu Sau-Nummer:", kom[0], "Zu_Saunr", 15,
         {.sql = QStringLiteral("select DISTINCT Nummer from Sauen where Art = 'Sau'")});
    text("Kommentar:", kom[1], "Kommentar", 20, Werte("Kommentar"));
    text("Bemerkung:", kom[2], "Bemerkung", 20, Bemerkungen());
}

void PE_Bewegungsdaten_Verschiebung::Activate() {
    Buchungseingabe::Activate();
    Anzahl_uebernehmen(tz);
}

QStringList PE_Bewegungsdaten_Verschiebung::pruefen() const {
    QStringList lines;
    if (koben::Wert(tz.text()) == 0)
        lines.append(QStringLiteral("...die Anzahl der zu verschiebenden Ferkel darf nicht 0 sein!"));
    if (!dateEntered()) lines.append(QStringLiteral("...das Datum muß eingegeben werden!"));
    const QString to = partner().trimmed();
    if (to.isEmpty())
        lines.append(QStringLiteral("...die Sau, zu der die Ferkel verschoben wurden, angegeben werden muß!"));
    else if (equalTexts(to, bezschwein[1].text()))
        lines.append(QStringLiteral("...eine Verschiebung muß immer zu einer anderen Sau erfolgen!"));
    return lines;
}

QString PE_Bewegungsdaten_Verschiebung::kopf() const {
    return QStringLiteral("Die Buchung kann nicht vorgenommen werden, weil...");
}

/// Always the current sow alone, whatever is marked.
std::optional<std::vector<int>> PE_Bewegungsdaten_Verschiebung::tiere() {
    return std::vector<int>{frame().schweinli.row()};
}

/// The row of the other sow, looked for among the animals that the herd list shows.
void PE_Bewegungsdaten_Verschiebung::gespeichert(Recordset& bookings, int row) {
    if (!adding()) return;
    Grid* herd = koben.herdList ? &koben.herdList->herd() : nullptr;
    const int hit = herd ? herd->findText(u"Nummer", Hochkomma_ersetzen(partner())) : 0;
    m_partnerFound = hit > 0;
    if (!m_partnerFound) return;
    herd->setRow(hit);
    bookings.addNew();
    eintragen(bookings, herd->value(hit, u"ID"));
    bookings.set(u"Anzahl_Ferkel", -koben::Wert(tz.text()));
    bookings.set(u"Zu_Saunr", frame().schweinli.cell(row, u"Nummer"));
    bookings.update();
}

QStringList PE_Bewegungsdaten_Verschiebung::hinweise(const std::vector<int>&) const {
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

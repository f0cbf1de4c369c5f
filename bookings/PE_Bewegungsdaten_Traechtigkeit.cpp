#include "bookings/PE_Bewegungsdaten_Traechtigkeit.h"

namespace koben {

PE_Bewegungsdaten_Trächtigkeit::PE_Bewegungsdaten_Trächtigkeit(Koben& context)
    : Buchungseingabe(context, QStringLiteral("PE_Bewegungsdaten_Trächtigkeit"),
                      QStringLiteral("Trächtigkeitsfeststellung eingeben"), 1,
                      QStringLiteral("Dateneingabe Trächtigkeitfeststellung")) {
    auswahl("Trächtig (Ja/Nein):", kom[0], "Trächtig", {QStringLiteral("J"), QStringLiteral("N")});
    betrag("Kosten:", tz, "Kosten");
    text("Kommentar:", kom[1], "Kommentar", 20, Werte("Kommentar"));
    text("Bemerkung:", kom[2], "Bemerkung", 20, Bemerkungen());
}

/// A result that is not "J", an empty one too, shows as "N".
void PE_Bewegungsdaten_Trächtigkeit::fuellen() {
    Buchungseingabe::fuellen();
    const Grid& li = frame().li;
    kom[0].setCurrent(li.cell(li.row(), u"Trächtig") == u"J" ? 0 : 1);
}

}  // namespace koben

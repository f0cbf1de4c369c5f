#include "bookings/PE_Bewegungsdaten_Traechtigkeit.h"

namespace koben {

PE_Bewegungsdaten_Trächtigkeit::PE_Bewegungsdaten_Trächtigkeit(Koben& context)
    : Buchungseingabe(context, QStringLiteral("PE_Bewegungsdaten_Trächtigkeit"),
                      QStringLiteral("Trächtigkeitsfeststellung eingeben"), Buchungsart::Trächtigkeit,
                      QStringLiteral("Dateneingabe Trächtigkeitfeststellung")) {
    choice("Trächtig (Ja/Nein):", kom[0], "Trächtig", {QStringLiteral("J"), QStringLiteral("N")});
    amount("Kosten:", tz, "Kosten");
    text("Kommentar:", kom[1], "Kommentar", 20, valuesOf("Kommentar"));
    text("Bemerkung:", kom[2], "Bemerkung", 20, remarks());
}

/// A result that is not "J", an empty one too, shows as "N".
void PE_Bewegungsdaten_Trächtigkeit::showBooking() {
    Buchungseingabe::showBooking();
    const Grid& li = frame().li;
    kom[0].setCurrent(li.cell(li.row(), u"Trächtig") == u"J" ? 0 : 1);
}

}  // namespace koben

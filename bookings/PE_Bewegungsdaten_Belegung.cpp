#include "bookings/PE_Bewegungsdaten_Belegung.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

PE_Bewegungsdaten_Belegung::PE_Bewegungsdaten_Belegung(Koben& context)
    : Buchungseingabe(context, QStringLiteral("PE_Bewegungsdaten_Belegung"),
                      QStringLiteral("Belegung (Besamung) eingeben"), Buchungsart::Belegung,
                      QStringLiteral("Dateneingabe Belegung")) {
    text("Ebernr:", kom[0], "Ebernr", 15, valuesOf("Ebernr"));
    count("Deckanzahl:", tz[0], "Deckanzahl", QStringLiteral("1"), UpDown[0], 1, MostByArrows);
    tz[0].onLostFocus = [this] {
        if (Wert(tz[0].text()) < 1) tz[0].setText(QStringLiteral("1"));
    };
    choice("Belegungsart:", kom[1], "Belegungart", {QStringLiteral("K"), QStringLiteral("N")});
    text("Besamungsstation:", kom[2], "Belegungsstation", 20, valuesOf("Belegungsstation"));
    amount("Kosten:", tz[1], "Kosten");
    text("Kommentar:", kom[3], "Kommentar", 20, valuesOf("Kommentar"));
    text("Bemerkung:", kom[4], "Bemerkung", 20, remarks());
}

/// The kind of service is not read back: the list of bookings has no column "Belegungsart" (the table's field has one
/// letter less), so the second entry is shown.
void PE_Bewegungsdaten_Belegung::showBooking() {
    Buchungseingabe::showBooking();
    const Grid& li = frame().li;
    kom[1].setCurrent(li.cell(li.row(), u"Belegungsart") == u"N" ? 0 : 1);
}

}  // namespace koben

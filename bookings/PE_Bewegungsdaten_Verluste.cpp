#include "bookings/PE_Bewegungsdaten_Verluste.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Input { Anzahl, Kosten };
enum List { Grund, Kommentar, Bemerkung };

}  // namespace

PE_Bewegungsdaten_Verluste::PE_Bewegungsdaten_Verluste(Koben& context)
    : Buchungseingabe(context, QStringLiteral("PE_Bewegungsdaten_Verluste"),
                      QStringLiteral("Verluste (Ferkel) eingeben"), Buchungsart::Verluste,
                      QStringLiteral("Dateneingabe Verluste")) {
    count("Anzahl Ferkel (Verluste):", tz[Anzahl], "Anzahl_Ferkel", QStringLiteral("1"), UpDown, 1, MostByArrows);
    tz[Anzahl].onLostFocus = [this] {
        if (Wert(tz[Anzahl].text()) < 1) tz[Anzahl].setText(QStringLiteral("1"));
    };
    Source reasons = lossReasons();
    reasons.grows = true;
    text("Grund des Verlustes:", kom[Grund], "Grund", 20, reasons);
    amount("Kosten (Wert der Ferkel):", tz[Kosten], "Kosten");
    text("Kommentar:", kom[Kommentar], "Kommentar", 20, valuesOf("Kommentar"));
    text("Bemerkung:", kom[Bemerkung], "Bemerkung", 20, remarks());
}

void PE_Bewegungsdaten_Verluste::Load() {
    Buchungseingabe::Load();
    m_ferkel.laden(m_db, "Stallnr, Nummer");
}

void PE_Bewegungsdaten_Verluste::Activate() {
    Buchungseingabe::Activate();
    m_ferkel.auffrischen(m_db);
}

/// The piglets go once, however many animals the booking is for.
void PE_Bewegungsdaten_Verluste::finish(const Action& action) {
    if (!rows().empty() &&
        m_ferkel.ausbuchen(action.database(), {{"Abgangsdatum", Datum_aus_Text(tdat.text())},
                                               {"Abgangsgrund", Hochkomma_ersetzen(kom[Grund].text())}}))
        koben.Liste_neu_laden = 1;
}

}  // namespace koben

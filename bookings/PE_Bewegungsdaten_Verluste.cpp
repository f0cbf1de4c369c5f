#include "bookings/PE_Bewegungsdaten_Verluste.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Input { Anzahl, Kosten };
enum List { Grund, Kommentar, Bemerkung };

}  // namespace

PE_Bewegungsdaten_Verluste::PE_Bewegungsdaten_Verluste(Koben& context)
    : Buchungseingabe(context, QStringLiteral("PE_Bewegungsdaten_Verluste"),
                      QStringLiteral("Verluste (Ferkel) eingeben"), 5, QStringLiteral("Dateneingabe Verluste")) {
    anzahl("Anzahl Ferkel (Verluste):", tz[Anzahl], "Anzahl_Ferkel", QStringLiteral("1"), UpDown);
    tz[Anzahl].onLostFocus = [this] {
        if (koben::Wert(tz[Anzahl].text()) < 1) tz[Anzahl].setText(QStringLiteral("1"));
    };
    Quelle reasons = Verlustgruende();
    reasons.grows = true;
    text("Grund des Verlustes:", kom[Grund], "Grund", 20, reasons);
    betrag("Kosten (Wert der Ferkel):", tz[Kosten], "Kosten");
    text("Kommentar:", kom[Kommentar], "Kommentar", 20, Werte("Kommentar"));
    text("Bemerkung:", kom[Bemerkung], "Bemerkung", 20, Bemerkungen());
}

void PE_Bewegungsdaten_Verluste::Load() {
    Buchungseingabe::Load();
    m_ferkel.laden(m_db, "Stallnr, Nummer");
}

void PE_Bewegungsdaten_Verluste::Activate() {
    Buchungseingabe::Activate();
    m_ferkel.auffrischen(m_db);
}

void PE_Bewegungsdaten_Verluste::vorbereiten(const std::vector<int>& rows) {
    m_erstesTier = rows.empty() ? 0 : rows.front();
}

void PE_Bewegungsdaten_Verluste::ergaenzen(Recordset& booking, int row) const {
    if (adding()) booking.set(u"Muttersau", Hochkomma_ersetzen(frame().schweinli.cell(row, u"Nummer")));
}

/// The piglets go with the first animal; the further ones would find nothing left to do.
void PE_Bewegungsdaten_Verluste::gespeichert(Recordset&, int row) {
    if (row == m_erstesTier && m_ferkel.ausbuchen(m_db, {{"Abgangsdatum", Datum_aus_Text(tdat.text())},
                                                         {"Abgangsgrund", Hochkomma_ersetzen(kom[Grund].text())}}))
        koben.Liste_neu_laden = 1;
}

}  // namespace koben

#include "bookings/PB_Verluste_Ferkel_Eingabe.h"

#include "bookings/Ferkelbilanz.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Input { Anzahl, Kosten };
enum List { Grund, Muttersau, Kommentar, Bemerkung };

}  // namespace

PB_Verluste_Ferkel_Eingabe::PB_Verluste_Ferkel_Eingabe(Koben& context)
    : Ferkeleingabe(context, QStringLiteral("PB_Verluste_Ferkel_Eingabe"),
                    QStringLiteral("Verluste von Ferkel eingeben/ändern")) {
    anzahl("Anzahl Verluste:", tz[Anzahl], "Anzahl_Ferkel", UpDown);
    betrag("Kosten (Wert der Ferkel):", tz[Kosten], "Kosten");
    tz[Kosten].onKeyPress = Nur_Ziffern;  // whole amounts only on this screen
    text("Grund des Verlustes:", kom[Grund], "Grund", 20, "select DISTINCT Grund from Verluste");
    text("Muttersau (Nummer):", kom[Muttersau], "Muttersau", 15,
         "select Nummer from Sauen where Art = 'Sau' order by Nummer");
    text("Kommentar:", kom[Kommentar], "Kommentar", 20, "select DISTINCT Kommentar from Verluste");
    text("Bemerkung:", kom[Bemerkung], "Bemerkung", 20, "select DISTINCT Bemerkung from Verluste");
}

void PB_Verluste_Ferkel_Eingabe::Load() {
    Ferkeleingabe::Load();
    if (!closed()) m_ferkel.laden(m_db, "Stallnr, Nummer");
}

void PB_Verluste_Ferkel_Eingabe::Activate() {
    Ferkeleingabe::Activate();
    m_ferkel.auffrischen(m_db);
}

void PB_Verluste_Ferkel_Eingabe::pruefen(Maengel& found) {
    if (!Ist_Datum(tdat.text())) found.add(tdat, QStringLiteral("...das Buchungsdatum nicht korrekt ist."));
    if (Wert(tz[Anzahl].text()) == 0) found.add(tz[Anzahl], QStringLiteral("...die Anzahl Verluste fehlt."));
}

/// The balance takes the costs off where the count is meant: other questions than so far
/// would let years of books look wrong.
std::optional<qint64> PB_Verluste_Ferkel_Eingabe::einverstanden() {
    const qint64 sow = Muttersau_ID(m_db, kom[Muttersau].text());
    if (sow == 0) return sow;
    const double left = static_cast<double>(Ferkelrest(m_db, sow)) - Wert(tz[Kosten].text()) + bisher(u"Anzahl_Ferkel");
    if (!Ferkelrest_bestaetigt(koben, left, kom[Muttersau].text())) return std::nullopt;
    return sow;
}

/// Without costs the piglets stay in stock, whatever the options say.
void PB_Verluste_Ferkel_Eingabe::gespeichert() {
    if (Betrag_aus_Text(QString(tz[Kosten].text())) == Money()) return;
    if (m_ferkel.ausbuchen(m_db, {{"Abgangsdatum", Datum_aus_Text(tdat.text())},
                                  {"Abgangsgrund", Hochkomma_ersetzen(kom[Grund].text())}}))
        koben.Liste_neu_laden = 1;
}

}  // namespace koben

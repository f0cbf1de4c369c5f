#include "bookings/PB_Verluste_Ferkel_Eingabe.h"

#include "bookings/Ferkelbilanz.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Input { Anzahl, Kosten };
enum List { Grund, Muttersau, Kommentar, Bemerkung };
constexpr int Most = 999;  // of a count by its arrows

}  // namespace

PB_Verluste_Ferkel_Eingabe::PB_Verluste_Ferkel_Eingabe(Koben& context)
    : Ferkeleingabe(context, "PB_Verluste_Ferkel_Eingabe", "Verluste von Ferkel eingeben/ändern",
                    Buchungsart::Verluste) {
    count("Anzahl Verluste:", tz[Anzahl], "Anzahl_Ferkel", "0", UpDown, 0, Most);
    amount("Kosten (Wert der Ferkel):", tz[Kosten], "Kosten");
    tz[Kosten].onKeyPress = Nur_Ziffern;  // whole amounts only on this screen
    text("Grund des Verlustes:", kom[Grund], "Grund", 20,
         {.sql = "select DISTINCT Grund from Verluste", .grows = true});
    text("Muttersau (Nummer):", kom[Muttersau], "Muttersau", 15,
         {.sql = "select Nummer from Sauen where Art = 'Sau' order by Nummer", .grows = true});
    text("Kommentar:", kom[Kommentar], "Kommentar", 20,
         {.sql = "select DISTINCT Kommentar from Verluste", .grows = true});
    text("Bemerkung:", kom[Bemerkung], "Bemerkung", 20,
         {.sql = "select DISTINCT Bemerkung from Verluste", .grows = true});
}

void PB_Verluste_Ferkel_Eingabe::Load() {
    Ferkeleingabe::Load();
    if (!closed()) m_ferkel.laden(m_db, "Stallnr, Nummer");
}

void PB_Verluste_Ferkel_Eingabe::Activate() {
    Ferkeleingabe::Activate();
    m_ferkel.auffrischen(m_db);
}

void PB_Verluste_Ferkel_Eingabe::check(Findings& found) {
    if (!Ist_Datum(tdat.text())) found.add(tdat, QStringLiteral("...das Buchungsdatum nicht korrekt ist."));
    if (Wert(tz[Anzahl].text()) == 0) found.add(tz[Anzahl], QStringLiteral("...die Anzahl Verluste fehlt."));
}

QString PB_Verluste_Ferkel_Eingabe::mother() const { return kom[Muttersau].text(); }

/// The balance takes the costs off where the count is meant: other questions than so far would let years of books look
/// wrong.
std::optional<qint64> PB_Verluste_Ferkel_Eingabe::sow() {
    const qint64 id = Muttersau_ID(m_db, mother());
    if (id == 0) return id;
    const double left = static_cast<double>(Ferkelrest(m_db, id)) - Wert(tz[Kosten].text()) +
                        storedNumber(QStringLiteral("Anzahl_Ferkel"));
    if (!Ferkelrest_bestaetigt(koben, left, mother())) return std::nullopt;
    return id;
}

/// Without costs the piglets stay in stock, whatever the options say.
void PB_Verluste_Ferkel_Eingabe::finish(const Action& action) {
    if (Betrag_aus_Text(QString(tz[Kosten].text())) == Money()) return;
    if (m_ferkel.ausbuchen(action.database(), {{"Abgangsdatum", Datum_aus_Text(tdat.text())},
                                               {"Abgangsgrund", Hochkomma_ersetzen(kom[Grund].text())}}))
        koben.Liste_neu_laden = 1;
}

}  // namespace koben

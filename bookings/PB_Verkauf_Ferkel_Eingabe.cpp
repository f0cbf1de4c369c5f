#include "bookings/PB_Verkauf_Ferkel_Eingabe.h"

#include "bookings/Ferkelbilanz.h"
#include "bookings/Handelsrechnung.h"
#include "core/Aktionsnamen.h"
#include "core/FreieNummer.h"
#include "core/NeuesTier.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

using F = Handelsfelder;
enum List { Kunde, Muttersau, Kommentar, Box };

constexpr int Most = 999;  // of a count by its arrows

bool isZero(const TextBox& amount) { return Betrag_aus_Text(QString(amount.text())) == Money(); }

}  // namespace

PB_Verkauf_Ferkel_Eingabe::PB_Verkauf_Ferkel_Eingabe(Koben& context)
    : Ferkeleingabe(context, "PB_Verkauf_Ferkel_Eingabe", "Ferkeleinkäufe und Ferkelverkäufe eingeben/ändern",
                    Buchungsart::Ferkelverkauf) {
    count("Anzahl Einkauf:", tz[F::Einkauf], "Anzahl_Einkauf", "0", UpDown[0], 0, Most);
    count("Anzahl Verkauf:", tz[F::Verkauf], "Anzahl_Verkauf", "0", UpDown[1], 0, Most);
    amount("Preis je Stück:", tz[F::Preis], "Preis_je_Stück");
    amount("Einnahmen:", tz[F::Einnahmen], "Einnahmen");
    amount("Ausgaben:", tz[F::Ausgaben], "Ausgaben");
    weight("Gewicht je Stück (kg):", tz[F::Stückgewicht], "Stück_Gewicht_kg");
    weight("Gesamtgewicht (kg):", tz[F::Gesamtgewicht], "Gesamtgewicht_kg");
    text("Kunde:", kom[Kunde], "Kunde", 20, {.sql = "select * from Stammdaten_Kunde", .keywords = "Stammdaten_Kunde"});
    text("Muttersau (Nummer):", kom[Muttersau], "Muttersau", 15,
         {.sql = "select Nummer from Sauen where Art = 'Sau' order by Nummer", .grows = true});
    text("Kommentar:", kom[Kommentar], "Kommentar", 20,
         {.sql = "select DISTINCT Kommentar from Ferkelverkauf", .grows = true});
    text("Zugekaufte Ferkel in Box:", kom[Box], {}, 20,
         {.sql = "select * from Stammdaten_Stallnummer order by Inhalt", .keywords = "Stammdaten_Stallnummer"});
    for (int i = 0; i < tz.count(); ++i) tz[i].onLostFocus = [this, i] { tz_LostFocus(i); };
    m_ferkel.der_Anzahl_folgen();
}

void PB_Verkauf_Ferkel_Eingabe::Load() {
    Ferkeleingabe::Load();
    if (!closed()) m_ferkel.laden(m_db, "Geburtsdatum, Stallnr, Nummer");
}

void PB_Verkauf_Ferkel_Eingabe::Activate() {
    Ferkeleingabe::Activate();
    m_ferkel.auffrischen(m_db);
}

void PB_Verkauf_Ferkel_Eingabe::tz_LostFocus(int index) {
    Handelszahlen figures;
    for (int i = 0; i < tz.count(); ++i) figures[static_cast<size_t>(i)] = tz[i].text();
    Handel_nachrechnen(figures, index);
    m_ferkel.Anzahl_setzen(figures[F::Verkauf]);
    for (int i = 0; i < tz.count(); ++i) tz[i].setText(figures[static_cast<size_t>(i)]);
}

void PB_Verkauf_Ferkel_Eingabe::check(Findings& found) {
    const double bought = Wert(tz[F::Einkauf].text());
    if (!Ist_Datum(tdat.text())) found.add(tdat, QStringLiteral("...das Buchungsdatum nicht korrekt ist."));
    if (bought == 0 && Wert(tz[F::Verkauf].text()) == 0)
        found.add(tz[F::Einkauf], QStringLiteral("...Anzahl (Einkauf oder Verkauf) fehlt."));
    if (!isZero(tz[F::Einnahmen]) && !isZero(tz[F::Ausgaben]))
        found.add(tz[F::Einnahmen], QStringLiteral("...nicht Einnahmen und Ausgaben gebucht werden können."));
    if (bought != 0 && !kom[Muttersau].text().isEmpty())
        found.add(kom[Muttersau], QStringLiteral("...ein Einkauf keiner Muttersau zugeordnet werden darf."));
}

QString PB_Verkauf_Ferkel_Eingabe::actionName() const {
    return Handelsname(Ferkeleingabe::actionName(), Wert(tz[F::Einkauf].text()) != 0, Wert(tz[F::Verkauf].text()) != 0);
}

QString PB_Verkauf_Ferkel_Eingabe::mother() const { return kom[Muttersau].text(); }

/// Only a sale belongs to a sow.
std::optional<qint64> PB_Verkauf_Ferkel_Eingabe::sow() {
    if (!m_ferkel.Bestand_bestaetigt(koben)) return std::nullopt;
    const double sold = Wert(tz[F::Verkauf].text());
    const qint64 id = sold == 0 ? 0 : Muttersau_ID(m_db, mother());
    if (id == 0) return id;
    const double left =
        static_cast<double>(Ferkelrest(m_db, id)) - sold + storedNumber(QStringLiteral("Anzahl_Verkauf"));
    if (!Ferkelrest_bestaetigt(koben, left, mother())) return std::nullopt;
    return id;
}

void PB_Verkauf_Ferkel_Eingabe::finish(const Action& action) {
    if (Wert(tz[F::Verkauf].text()) != 0 &&
        m_ferkel.ausbuchen(action.database(),
                           {{"Abgangsdatum", Datum_aus_Text(tdat.text())},
                            {"Abgangsgewicht_kg", Zahl_aus_Text(QString(tz[F::Stückgewicht].text()))},
                            {"Verkaufspreis", Betrag_aus_Text(QString(tz[F::Preis].text()))},
                            {"Abnehmer", Hochkomma_ersetzen(kom[Kunde].text())}}))
        koben.Liste_neu_laden = 1;
    if (Wert(tz[F::Einkauf].text()) != 0 && !kom[Box].text().isEmpty()) Ferkel_einstallen(action);
}

/// In "Ändern" too: a box that still stands there takes the piglets in once more.
void PB_Verkauf_Ferkel_Eingabe::Ferkel_einstallen(const Action& action) {
    koben.Liste_neu_laden = 1;
    const QString box = Hochkomma_ersetzen(kom[Box].text());
    const QDate day = Datum_aus_Text(tdat.text());
    FreieNummern numbers(action.database(), box);
    NeueTiere piglets(action, {"Nummer"},
                      {{"Art", QStringLiteral("Ferkel")},
                       {"Stallnr", box},
                       {"Boxdatum", day},
                       {"Zugangsdatum", day},
                       {"Zugangsgewicht_kg", Zahl_aus_Text(QString(tz[F::Stückgewicht].text()))},
                       {"Zugangsgrund", QStringLiteral("Zukauf")},
                       {"Lieferant", Hochkomma_ersetzen(kom[Kunde].text())}});
    const auto count = static_cast<qint64>(Wert(tz[F::Einkauf].text()));
    for (qint64 i = 0; i < count; ++i) piglets.add({numbers.naechste()});
}

}  // namespace koben

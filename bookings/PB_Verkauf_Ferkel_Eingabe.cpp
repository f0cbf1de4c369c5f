#include "bookings/PB_Verkauf_Ferkel_Eingabe.h"

#include "bookings/Ferkelbilanz.h"
#include "bookings/Handelsrechnung.h"
#include "core/FreieNummer.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

using F = Handelsfelder;
enum List { Kunde, Muttersau, Kommentar, Box };

/// A bought piglet: what differs between purchases and, behind the values, what is the same for all.
const QString NeuesTier = QStringLiteral(
    "insert into Sauen (Nummer, Stallnr, Boxdatum, Zugangsdatum, Zugangsgewicht_kg, Lieferant, Art, Gruppe, Ohrmarke, "
    "Tätowierung, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, Rasse, Belegungsart, Status, "
    "Statusabfrage, Infos, Selektiert, Mechanische_Amme, Einkaufspreis, Zugangsgrund, Abgangsgewicht_kg, "
    "Verkaufspreis, Abgangsgrund, Abnehmer) "
    "values (?, ?, ?, ?, ?, ?, 'Ferkel', '', '', '', 0, 0, 0, 0, '', '', '', '', '', '', 'N', 0, 'Zukauf', 0, 0, '', "
    "'')");

bool isZero(const TextBox& amount) { return Betrag_aus_Text(QString(amount.text())) == Money(); }

}  // namespace

PB_Verkauf_Ferkel_Eingabe::PB_Verkauf_Ferkel_Eingabe(Koben& context)
    : Ferkeleingabe(context, QStringLiteral("PB_Verkauf_Ferkel_Eingabe"),
                    QStringLiteral("Ferkeleinkäufe und Ferkelverkäufe eingeben/ändern")) {
    anzahl("Anzahl Einkauf:", tz[F::Einkauf], "Anzahl_Einkauf", UpDown[0]);
    anzahl("Anzahl Verkauf:", tz[F::Verkauf], "Anzahl_Verkauf", UpDown[1]);
    betrag("Preis je Stück:", tz[F::Preis], "Preis_je_Stück");
    betrag("Einnahmen:", tz[F::Einnahmen], "Einnahmen");
    betrag("Ausgaben:", tz[F::Ausgaben], "Ausgaben");
    gewicht("Gewicht je Stück (kg):", tz[F::Stückgewicht], "Stück_Gewicht_kg");
    gewicht("Gesamtgewicht (kg):", tz[F::Gesamtgewicht], "Gesamtgewicht_kg");
    text("Kunde:", kom[Kunde], "Kunde", 20, "select * from Stammdaten_Kunde", "Stammdaten_Kunde");
    text("Muttersau (Nummer):", kom[Muttersau], "Muttersau", 15,
         "select Nummer from Sauen where Art = 'Sau' order by Nummer");
    text("Kommentar:", kom[Kommentar], "Kommentar", 20, "select DISTINCT Kommentar from Ferkelverkauf");
    text("Zugekaufte Ferkel in Box:", kom[Box], nullptr, 20, "select * from Stammdaten_Stallnummer order by Inhalt",
         "Stammdaten_Stallnummer");
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

void PB_Verkauf_Ferkel_Eingabe::pruefen(Maengel& found) {
    const double bought = Wert(tz[F::Einkauf].text());
    if (!Ist_Datum(tdat.text())) found.add(tdat, QStringLiteral("...das Buchungsdatum nicht korrekt ist."));
    if (bought == 0 && Wert(tz[F::Verkauf].text()) == 0)
        found.add(tz[F::Einkauf], QStringLiteral("...Anzahl (Einkauf oder Verkauf) fehlt."));
    if (!isZero(tz[F::Einnahmen]) && !isZero(tz[F::Ausgaben]))
        found.add(tz[F::Einnahmen], QStringLiteral("...nicht Einnahmen und Ausgaben gebucht werden können."));
    if (bought != 0 && !kom[Muttersau].text().isEmpty())
        found.add(kom[Muttersau], QStringLiteral("...ein Einkauf keiner Muttersau zugeordnet werden darf."));
}

/// Only a sale belongs to a sow.
std::optional<qint64> PB_Verkauf_Ferkel_Eingabe::einverstanden() {
    if (!m_ferkel.Bestand_bestaetigt(koben)) return std::nullopt;
    const double sold = Wert(tz[F::Verkauf].text());
    const qint64 sow = sold == 0 ? 0 : Muttersau_ID(m_db, kom[Muttersau].text());
    if (sow == 0) return sow;
    const double left = static_cast<double>(Ferkelrest(m_db, sow)) - sold + bisher(u"Anzahl_Verkauf");
    if (!Ferkelrest_bestaetigt(koben, left, kom[Muttersau].text())) return std::nullopt;
    return sow;
}

void PB_Verkauf_Ferkel_Eingabe::gespeichert() {
    if (Wert(tz[F::Verkauf].text()) != 0 &&
        m_ferkel.ausbuchen(m_db, {{"Abgangsdatum", Datum_aus_Text(tdat.text())},
                                  {"Abgangsgewicht_kg", Zahl_aus_Text(QString(tz[F::Stückgewicht].text()))},
                                  {"Verkaufspreis", Betrag_aus_Text(QString(tz[F::Preis].text()))},
                                  {"Abnehmer", Hochkomma_ersetzen(kom[Kunde].text())}}))
        koben.Liste_neu_laden = 1;
    if (Wert(tz[F::Einkauf].text()) != 0 && !kom[Box].text().isEmpty()) Ferkel_einstallen();
}

/// In "Ändern" too: a box that still stands there takes the piglets in once more.
void PB_Verkauf_Ferkel_Eingabe::Ferkel_einstallen() {
    koben.Liste_neu_laden = 1;
    const QString box = Hochkomma_ersetzen(kom[Box].text());
    const QString supplier = Hochkomma_ersetzen(kom[Kunde].text());
    const QDate day = Datum_aus_Text(tdat.text());
    const float weight = Zahl_aus_Text(QString(tz[F::Stückgewicht].text()));
    FreieNummern numbers(m_db, box);
    Statement insert = m_db.prepare(NeuesTier);
    const auto count = static_cast<qint64>(Wert(tz[F::Einkauf].text()));
    for (qint64 i = 0; i < count; ++i) insert.run({numbers.naechste(), box, day, day, weight, supplier});
}

}  // namespace koben

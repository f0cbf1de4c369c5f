#include "bookings/PE_Bewegungsdaten_Ferkelverkauf.h"

#include <algorithm>

#include "bookings/Ferkelbilanz.h"
#include "bookings/Handelsrechnung.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

using F = Verkaufsfelder;
enum List { Kunde, Kommentar };
constexpr double Most = 999;  // of the count by its arrows

}  // namespace

PE_Bewegungsdaten_Ferkelverkauf::PE_Bewegungsdaten_Ferkelverkauf(Koben& context)
    : Buchungseingabe(context, QStringLiteral("PE_Bewegungsdaten_Ferkelverkauf"),
                      QStringLiteral("Ferkelverkauf eingeben"), 6, QStringLiteral("Dateneingabe Ferkelverkauf")) {
    anzahl("Anzahl Verkauf:", tz[F::Anzahl], "Anzahl_Verkauf", QStringLiteral("1"), UpDown);
    betrag("Preis je Stück:", tz[F::Preis], "Preis_je_Stück");
    betrag("Einnahmen:", tz[F::Einnahmen], "Einnahmen");
    gewicht("Gewicht je Stück (kg):", tz[F::Stückgewicht], "Stück_Gewicht_kg");
    gewicht("Gesamtgewicht (kg):", tz[F::Gesamtgewicht], "Gesamtgewicht_kg");
    text("Kunde:", kom[Kunde], "Kunde", 20, Stichworte("Stammdaten_Kunde", "select * from Stammdaten_Kunde"));
    text("Kommentar:", kom[Kommentar], "Kommentar", 20, Werte("Kommentar"));
    for (int i = 0; i < tz.count(); ++i) tz[i].onLostFocus = [this, i] { tz_LostFocus(i); };
    UpDown.onUp = [this] { UpDown_Change(1); };
    UpDown.onDown = [this] { UpDown_Change(-1); };
    m_ferkel.der_Anzahl_folgen();
}

void PE_Bewegungsdaten_Ferkelverkauf::Load() {
    Buchungseingabe::Load();
    m_ferkel.laden(m_db, "Geburtsdatum, Stallnr, Nummer");
}

void PE_Bewegungsdaten_Ferkelverkauf::Activate() {
    Buchungseingabe::Activate();
    m_ferkel.auffrischen(m_db);
}

void PE_Bewegungsdaten_Ferkelverkauf::tz_LostFocus(int index) {
    Verkaufszahlen figures;
    for (int i = 0; i < tz.count(); ++i) figures[static_cast<size_t>(i)] = tz[i].text();
    Verkauf_nachrechnen(figures, index);
    m_ferkel.Anzahl_setzen(figures[F::Anzahl]);
    for (int i = 0; i < tz.count(); ++i) tz[i].setText(figures[static_cast<size_t>(i)]);
}

void PE_Bewegungsdaten_Ferkelverkauf::UpDown_Change(int by) {
    const double count = std::clamp(koben::Wert(tz[F::Anzahl].text()) + by, 1.0, Most);
    m_ferkel.Anzahl_setzen(QString::number(static_cast<int>(count)));
    tz_LostFocus(F::Anzahl);
}

/// The balance takes the price off where the count is meant, and the question names the comment where the sow is
/// meant: other questions than so far would let years of books look wrong.
bool PE_Bewegungsdaten_Ferkelverkauf::balanceAccepted() const {
    const Grid& li = frame().li;
    double left = static_cast<double>(Ferkelrest(m_db, frame().currentAnimal())) - koben::Wert(tz[F::Preis].text());
    if (!adding()) left += koben::Wert(li.cell(li.row(), u"Anzahl_Verkauf"));
    return Ferkelrest_bestaetigt(koben, left, kom[Kommentar].text());
}

std::optional<std::vector<int>> PE_Bewegungsdaten_Ferkelverkauf::tiere() {
    if (frame().schweinli.markedCount() == 1 && (!m_ferkel.Bestand_bestaetigt(koben) || !balanceAccepted()))
        return std::nullopt;
    return Buchungseingabe::tiere();
}

QString PE_Bewegungsdaten_Ferkelverkauf::Sammelhinweis() const {
    return Crlf + Crlf +
           QStringLiteral(
               "Bei Sammelbuchungen wird nicht geprüft, ob die ausgewählten Schwein auch so viele Ferkel "
               "säugen, wie zum Verkauf angeboten wurden!");
}

void PE_Bewegungsdaten_Ferkelverkauf::vorbereiten(const std::vector<int>& rows) {
    m_erstesTier = rows.empty() ? 0 : rows.front();
}

void PE_Bewegungsdaten_Ferkelverkauf::ergaenzen(Recordset& booking, int row) const {
    if (!adding()) return;
    booking.set(u"Anzahl_Einkauf", 0);
    booking.set(u"Ausgaben", Money());
    booking.set(u"Muttersau", Hochkomma_ersetzen(frame().schweinli.cell(row, u"Nummer")));
}

/// The piglets go with the first animal; the further ones would find nothing left to do.
void PE_Bewegungsdaten_Ferkelverkauf::gespeichert(Recordset&, int row) {
    if (row == m_erstesTier &&
        m_ferkel.ausbuchen(m_db, {{"Abgangsdatum", Datum_aus_Text(tdat.text())},
                                  {"Abgangsgewicht_kg", Zahl_aus_Text(QString(tz[F::Stückgewicht].text()))},
                                  {"Verkaufspreis", Betrag_aus_Text(QString(tz[F::Preis].text()))},
                                  {"Abnehmer", Hochkomma_ersetzen(kom[Kunde].text())}}))
        koben.Liste_neu_laden = 1;
}

}  // namespace koben

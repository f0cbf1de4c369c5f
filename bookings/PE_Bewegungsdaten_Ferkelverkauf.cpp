#include "bookings/PE_Bewegungsdaten_Ferkelverkauf.h"

#include <algorithm>

#include "bookings/Ferkelbilanz.h"
#include "bookings/Handelsrechnung.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

using F = Verkaufsfelder;
enum List { Kunde, Kommentar };
constexpr int Most = 999;  // of the count by its arrows

}  // namespace

PE_Bewegungsdaten_Ferkelverkauf::PE_Bewegungsdaten_Ferkelverkauf(Koben& context)
    : Buchungseingabe(context, QStringLiteral("PE_Bewegungsdaten_Ferkelverkauf"),
                      QStringLiteral("Ferkelverkauf eingeben"), Buchungsart::Ferkelverkauf,
                      QStringLiteral("Dateneingabe Ferkelverkauf")) {
    count("Anzahl Verkauf:", tz[F::Anzahl], "Anzahl_Verkauf", QStringLiteral("1"), UpDown, 1, Most);
    amount("Preis je Stück:", tz[F::Preis], "Preis_je_Stück");
    amount("Einnahmen:", tz[F::Einnahmen], "Einnahmen");
    weight("Gewicht je Stück (kg):", tz[F::Stückgewicht], "Stück_Gewicht_kg");
    weight("Gesamtgewicht (kg):", tz[F::Gesamtgewicht], "Gesamtgewicht_kg");
    text("Kunde:", kom[Kunde], "Kunde", 20, keywords("Stammdaten_Kunde", "select * from Stammdaten_Kunde"));
    text("Kommentar:", kom[Kommentar], "Kommentar", 20, valuesOf("Kommentar"));
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
    const double count = std::clamp(Wert(tz[F::Anzahl].text()) + by, 1.0, double(Most));
    m_ferkel.Anzahl_setzen(QString::number(static_cast<int>(count)));
    tz_LostFocus(F::Anzahl);
}

/// The balance takes the price off where the count is meant, and the question names the comment where the sow is
/// meant: other questions than so far would let years of books look wrong.
bool PE_Bewegungsdaten_Ferkelverkauf::balanceAccepted() const {
    double left = static_cast<double>(Ferkelrest(m_db, frame().currentAnimal())) - Wert(tz[F::Preis].text());
    left += storedNumber(QStringLiteral("Anzahl_Verkauf"));
    return Ferkelrest_bestaetigt(koben, left, kom[Kommentar].text());
}

std::optional<std::vector<int>> PE_Bewegungsdaten_Ferkelverkauf::animals() {
    if (frame().schweinli.markedCount() == 1 && (!m_ferkel.Bestand_bestaetigt(koben) || !balanceAccepted()))
        return std::nullopt;
    return Buchungseingabe::animals();
}

QString PE_Bewegungsdaten_Ferkelverkauf::hintOnSeveral() const {
    return Crlf + Crlf +
           QStringLiteral(
               "Bei Sammelbuchungen wird nicht geprüft, ob die ausgewählten Schwein auch so viele Ferkel "
               "säugen, wie zum Verkauf angeboten wurden!");
}

/// The piglets go once, however many animals the booking is for.
void PE_Bewegungsdaten_Ferkelverkauf::finish(const Action& action) {
    if (!rows().empty() &&
        m_ferkel.ausbuchen(action.database(),
                           {{"Abgangsdatum", Datum_aus_Text(tdat.text())},
                            {"Abgangsgewicht_kg", Zahl_aus_Text(QString(tz[F::Stückgewicht].text()))},
                            {"Verkaufspreis", Betrag_aus_Text(QString(tz[F::Preis].text()))},
                            {"Abnehmer", Hochkomma_ersetzen(kom[Kunde].text())}}))
        koben.Liste_neu_laden = 1;
}

}  // namespace koben

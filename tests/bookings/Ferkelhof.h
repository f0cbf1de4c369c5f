#pragma once
// A farm with the four screens of losses and trade of piglets, and piglets in stock.
#include "bookings/PB_Verkauf_Ferkel.h"
#include "bookings/PB_Verkauf_Ferkel_Eingabe.h"
#include "bookings/PB_Verluste_Ferkel.h"
#include "bookings/PB_Verluste_Ferkel_Eingabe.h"
#include "bookings/PE_Bewegungsdaten_Ferkelverkauf.h"
#include "bookings/PE_Bewegungsdaten_Verluste.h"
#include "tests/bookings/Buchungshof.h"

namespace koben {

using Sauverlust = PE_Bewegungsdaten_Verluste;
using Sauverkauf = PE_Bewegungsdaten_Ferkelverkauf;
using Hofverlust = PB_Verluste_Ferkel_Eingabe;
using Hofhandel = PB_Verkauf_Ferkel_Eingabe;
inline const QString Verlustliste = "PB_Verluste_Ferkel", Handelsliste = "PB_Verkauf_Ferkel";

/// Sows 11 and 12 (ID 1, 2), and the piglets F1 to F5 (ID 3 to 7), the youngest first.
struct Ferkelhof : testing::Test, Buchungshof {
    Ferkelhof() {
        catalogue.add<Sauverlust>("PE_Bewegungsdaten_Verluste");
        catalogue.add<Sauverkauf>("PE_Bewegungsdaten_Ferkelverkauf");
        catalogue.add<PB_Verluste_Ferkel>(Verlustliste);
        catalogue.add<Hofverlust>("PB_Verluste_Ferkel_Eingabe");
        catalogue.add<PB_Verkauf_Ferkel>(Handelsliste);
        catalogue.add<Hofhandel>("PB_Verkauf_Ferkel_Eingabe");
        tier("11");
        tier("12");
        for (int i = 1; i <= 5; ++i)
            tier(QStringLiteral("F%1").arg(i), "Ferkel",
                 QStringLiteral("Stallnr = 'A', Geburtsdatum = #06/%1/2026#").arg(30 - i));
        tier("X", "Ferkel", "Abgangsdatum = #01/01/2026#");  // gone already
    }

    /// Opens a list of the farm.
    void aufListe(const QString& list, std::function<void(Ferkelliste&)> script) {
        in<Ferkelliste>(list, std::move(script));
    }
    /// The entry screen of a list of the farm, for one of its rows; for a new one by default.
    template <class E>
    void hof(std::function<void(E&)> script, int row = 0) {
        aufListe(std::is_same_v<E, Hofhandel> ? Handelsliste : Verlustliste, [&](Ferkelliste& list) {
            if (row > 0) list.li.choose(row);
            screens.workIn<E>(script);
            (row > 0 ? list.ändern : list.neu).click();
        });
    }
    /// Marks piglets with the hand.
    static void markieren(auto& form, const std::vector<int>& rows) {
        form.gridli.mark(rows);
        form.gridli.click();
    }
    QString imBestand() const {
        return show("select Nummer from Sauen where Art = 'Ferkel' and Abgangsdatum IS NULL order by ID");
    }
    QString handel() const {
        return show(
            "select Datum, Anzahl_Einkauf, Anzahl_Verkauf, Preis_je_Stück, Einnahmen, Ausgaben, Stück_Gewicht_kg, "
            "Gesamtgewicht_kg, Kunde, Muttersau, Kommentar, Kennung from Ferkelverkauf order by ID");
    }
    QString verluste() const {
        return show(
            "select Datum, Anzahl_Ferkel, Grund, Kosten, Muttersau, Kommentar, Bemerkung, Kennung from Verluste order "
            "by ID");
    }
};

inline QString Restfrage(const QString& sow, int rest, const char* answer) {
    return QStringLiteral("? *(Lebendzugang - Verluste - Verkauf) bei der Sau %1 auf %2 (also *=> %3")
        .arg(sow)
        .arg(rest)
        .arg(answer);
}
inline const QString Bestandsfrage = "? HINWEIS!!!*trotz des Verkaufs weiter in Ihrem Bestand*=> ";

}  // namespace koben

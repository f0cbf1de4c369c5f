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
class Ferkelhof : public testing::Test, public Buchungshof {
protected:
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
            sql(QStringLiteral("insert into Sauen (Art, Nummer, Stallnr, Geburtsdatum) "
                               "values ('Ferkel', 'F%1', 'A', #06/%2/2026#)")
                    .arg(i)
                    .arg(30 - i));
        sql("insert into Sauen (Art, Nummer, Abgangsdatum) values ('Ferkel', 'X', #01/01/2026#)");  // gone already
    }

    /// Opens a list of the farm.
    void aufListe(const QString& list, std::function<void(Ferkelliste&)> script) {
        screens.workIn<Ferkelliste>(std::move(script));
        koben.open(list);
    }
    /// Its entry screen for a new row.
    template <class E>
    void hofneu(std::function<void(E&)> script) {
        aufListe(std::is_same_v<E, Hofhandel> ? Handelsliste : Verlustliste, [&](Ferkelliste& list) {
            screens.workIn<E>(script);
            list.neu.click();
        });
    }
    template <class E>
    void hofändern(int row, std::function<void(E&)> script) {
        aufListe(std::is_same_v<E, Hofhandel> ? Handelsliste : Verlustliste, [&](Ferkelliste& list) {
            list.li.choose(row);
            screens.workIn<E>(script);
            list.ändern.click();
        });
    }
    /// Marks piglets with the hand.
    template <class E>
    void markieren(E& form, const std::vector<int>& rows) {
        form.gridli.mark(rows);
        form.gridli.click();
    }
    QString imBestand() const {
        return zeige("select Nummer from Sauen where Art = 'Ferkel' and Abgangsdatum IS NULL order by ID");
    }
    QString handel() const {
        return zeige(
            "select Datum, Anzahl_Einkauf, Anzahl_Verkauf, Preis_je_Stück, Einnahmen, Ausgaben, Stück_Gewicht_kg, "
            "Gesamtgewicht_kg, Kunde, Muttersau, Kommentar, Kennung from Ferkelverkauf order by ID");
    }
    QString verluste() const {
        return zeige(
            "select Datum, Anzahl_Ferkel, Grund, Kosten, Muttersau, Kommentar, Bemerkung, Kennung from Verluste order "
            "by ID");
    }
};

inline QString Restfrage(const QString& sow, int rest) {
    return QStringLiteral(
               "? Lt. den aktuellen Dateneingaben ist die Summe der Ferkel (Lebendzugang - Verluste - Verkauf) bei der "
               "Sau %1 auf %2 (also unter 0).\r\n\r\nSoll die Buchung trotzdem gespeichert werden? => ")
        .arg(sow)
        .arg(rest);
}
inline const QString Bestandsfrage =
    "? HINWEIS!!!\r\n\r\nIn der aktuellen Einstellung werden die ausgewählten Ferkel trotz des Verkaufs weiter in "
    "Ihrem "
    "Bestand geführt. In der Auswahl 'Aufgund des Ferkelverkaufs...' können Sie einstellen, ob bzw. wie die Ferkel aus "
    "dem Bestand ausgebucht werden. Soll die Buchung jetzt trotzdem ausgeführt werden? => ";

}  // namespace koben

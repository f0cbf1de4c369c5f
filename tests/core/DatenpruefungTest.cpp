#include "core/Datenpruefung.h"

#include "tests/core/Hof.h"

namespace koben {
namespace {

/// The findings that are not in order: "KIND was: sentence | line | line".
QStringList findings(const Hof& farm, const Variablen& v) {
    QStringList all;
    const std::vector<Pruefbefund> found = Daten_pruefen(farm.db, v).value();
    for (const Pruefbefund& each : found)
        if (each.art != Pruefbefund::Art::InOrdnung)
            all += (QStringList(each.was + ": " + each.satz) + each.zeilen).join(" | ");
    return all;
}

TEST(Datenpruefung, FindsWhatAnotherToolHasDoneAndRepairsIt) {
    Hof farm;
    const Variablen v;
    for (const char* number : {"1", "2"})
        farm.sql(QString("insert into Sauen (Art, Nummer) values ('Sau', '%1')").arg(number));
    for (const char* values : {"#2026-05-03#, 1", "#2026-06-01#, 1", "#2026-06-01#, 2"})
        farm.sql(QString("insert into Belegung (Datum, Kennung) values (%1)").arg(values));
    farm.sql("insert into Ferkelverkauf (Datum, Kennung) values (#2026-06-01#, 0)");
    Werte_berechnen(farm.db, v);
    statussetzen(farm.db);
    EXPECT_EQ(findings(farm, v), QStringList());
    farm.sql("update Sauen set Anz_Belegungen = 9, L_Belegung = Null where ID = 1");
    farm.sql("update Sauen set Status = 'S' where ID = 2");
    farm.sql("insert into Verluste (Datum, Kennung) values (#2026-06-01#, 77)");
    farm.sql("insert into Sauen (Art, Nummer, Abgangsdatum) values ('Sau', '2', #2026-01-01#)");  // gone: not twice
    EXPECT_EQ(
        findings(farm, v),
        (QStringList{"Buchungen und ihre Tiere: Eine Buchung gehört zu keinem Tier, das es noch gibt. Kein Fenster "
                     "zeigt sie, Statistiken können sie mitzählen. | Verluste: 1",
                     "Zähler und Termine: Bei einem Tier stimmt es nicht mit den Buchungen überein. | Sau 1: "
                     "Belegungen 9 statt 2, letzte Belegung nichts statt 01.06.2026",
                     "Status der Sauen: Bei einem Tier stimmt es nicht mit den Buchungen überein. | Sau 2: "
                     "Säugend statt Belegt"}));
    Action action(farm.db, "Reparatur");
    EXPECT_EQ(Buchungen_ohne_Tier_loeschen(action), 1);
    EXPECT_TRUE(Neu_ableiten(action, v));
    action.commit();
    farm.sql("delete from Sauen where ID = 3");
    EXPECT_EQ(findings(farm, v), QStringList());
}

}  // namespace
}  // namespace koben

#include "core/Datenpruefung.h"

#include "core/Ruecknahme.h"
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

TEST(Datenpruefung, NumbersLittersAnewWhereTheirNumbersDoNotFollowTheDays) {
    Hof farm;
    const Variablen v;
    for (int id = 1; id <= 4; ++id) farm.sql(QString("insert into Sauen (Art, Nummer) values ('Sau', '%1')").arg(id));
    // 1: right, two of one day in either order; 2: a new year; 3: as the barn device books; 4: one without
    for (const char* values :
         {"#2026-01-05#, 1, 2, 2", "#2026-01-05#, 1, 1, 1", "#2025-08-01#, 2, 1, 1", "#2026-01-05#, 2, 2, 2",
          "#2026-01-05#, 3, Null, Null", "#2026-01-05#, 4, 1, 1", "#2026-06-05#, 4, Null, Null"})
        farm.sql(QString("insert into Ferkelung (Datum, Kennung, LNr, LNrJahr) values (%1)").arg(values));
    EXPECT_EQ(misnumbered(farm.db), (std::vector<qint64>{2, 4}));
    Werte_berechnen(farm.db, v);
    statussetzen(farm.db);
    EXPECT_EQ(findings(farm, v), QStringList{"Nummern der Würfe: Bei 2 Tieren sind die Würfe nicht der Reihe nach "
                                             "nummeriert. | Sau 2 | Sau 4"});
    Action action(farm.db, "Reparatur");
    EXPECT_EQ(Wuerfe_neu_nummerieren(action), 2);
    action.commit();
    EXPECT_EQ(farm.show("select LNr, LNrJahr from Ferkelung order by Kennung, Datum, LNr"),
              "1 1 | 2 2 | 1 1 | 2 1 | - - | 1 1 | 2 2");
    EXPECT_EQ(findings(farm, v), QStringList());
}

/// Each way in which another program may have written, against rows that actions made, changed, deleted and took back.
TEST(Datenpruefung, TellsRowsThatStandOtherwiseThanTheJournalLeftThem) {
    Hof farm;
    const auto act = [&](const char* sql) {
        Action action(farm.db, QString::fromUtf8(sql));
        farm.sql(sql);
        action.commit();
    };
    for (const char* sql :
         {"insert into Sauen (Art, Nummer, Stallnr, Einkaufspreis) values ('Sau', '1', 'D1', 280)",
          "insert into Sauen (Art, Nummer, Stallnr) values ('Sau', '2', 'D1')",
          "insert into Belegung (Datum, Ebernr, Kennung) values (#2026-05-03#, 'E1', 1)",
          "insert into Belegung (Datum, Ebernr, Kennung) values (#2026-06-01#, 'E1', 1)",
          "insert into Stammdaten_Gruppe (Inhalt) values ('neu')", "update Sauen set Stallnr = 'D2' where ID = 1",
          "update Sauen set Stallnr = 'D3', Infos = 'x' where ID = 1", "delete from Belegung where ID = 2"})
        act(sql);
    ASSERT_TRUE(Ruecknahme(farm.db, Variablen()).back().done());  // the booking is there again
    // derived, a mark, and what no action ever wrote: none of the journal's
    for (const char* sql : {"update Sauen set Anz_Belegungen = 7, Selektiert = 'X'",
                            "update Stammdaten_Gruppe set Inhalt = 'alt'", "insert into Sauen (Nummer) values ('3')"})
        farm.sql(sql);
    EXPECT_EQ(Verlauf_pruefen(farm.db)->art, Pruefbefund::Art::InOrdnung);

    act("delete from Sauen where ID = 2");
    farm.sql("update Sauen set Stallnr = 'fremd', Einkaufspreis = 0, BoxDatum = #2026-01-05# where ID = 1");
    farm.sql("delete from Belegung where ID = 1");
    farm.sql("update Belegung set Datum = #2026-06-02# where ID = 2");
    farm.sql("insert into Sauen (ID, Art, Nummer) values (2, 'Sau', '2')");
    const Pruefbefund found = Verlauf_pruefen(farm.db).value();
    EXPECT_EQ(found.art, Pruefbefund::Art::Fremd);
    EXPECT_EQ(
        found.zeilen,
        (QStringList{"Belegung Nr. 1: fehlt", "Belegung vom 02.06.2026 (Sau 1): Datum 02.06.2026 statt 01.06.2026",
                     "Sau 1: Stallnr / Box fremd statt D3, Box-Zuordnung 05.01.2026 statt leer, Einkaufspreis leer "
                     "statt 280,00 €",
                     "Sau 2: in KOBEN gelöscht, aber wieder da"}));
    EXPECT_EQ(Verlauf_pruefen(farm.db)->merkmal, found.merkmal);
    act("update Sauen set Stallnr = 'D9', BoxDatum = Null, Einkaufspreis = 1 where ID = 1");  // now it is the user's
    EXPECT_EQ(Verlauf_pruefen(farm.db)->zeilen.size(), 3);
    EXPECT_NE(Verlauf_pruefen(farm.db)->merkmal, found.merkmal);
}

}  // namespace
}  // namespace koben

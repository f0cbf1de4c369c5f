// Bookings and new animals at the service: what each kind writes, what follows from it, and that all of it or nothing
// stays.
#include "core/Buchungen.h"

#include "core/Aktionsnamen.h"
#include "core/NeuesTier.h"
#include "store/ChangeLog.h"
#include "tests/core/Hof.h"

namespace koben {
namespace {

const QDate Day(2026, 7, 15);
const Value Tag = Day;

struct BuchungenTest : testing::Test, Hof {
    /// One action; what it leaves to be derived, "W" for values of the cycle.
    void act(const std::function<void(const Action&)>& work) {
        Action action(db, "x");
        work(action);
        action.commit();
    }
    bool noted() const { return ChangeLog(db, ChangeLog::Purpose::Values).expected(); }
    QString all(Buchungsart art) const {
        return show(QStringLiteral("select * from ") + QString::fromUtf8(angaben(art).table));
    }
    void litter(int animal, const char* day) {
        sql(QStringLiteral("insert into Ferkelung (Kennung, Datum) values (%1, #%2#)")
                .arg(animal)
                .arg(QString::fromUtf8(day)));
    }
};

TEST_F(BuchungenTest, EveryKindHasItsRowAndWhatFollows) {
    const struct {
        Buchungsart art;
        FieldValues given;
        const char* row;
        bool cycle;
    } table[] = {
        {Buchungsart::Belegung, {{"Deckanzahl", 1}, {"Belegungart", u"K"}}, "15.07.2026  1 K  0   7 1", true},
        {Buchungsart::Trächtigkeit, {{"Trächtig", u"J"}}, "15.07.2026 J 0   7 1", true},
        {Buchungsart::Ferkelung,
         {{"Ferkel_Gesamt", 12.0}, {"Ferkel_Lebendig", 11.0}, {"Ferkel_Tot", 1.0}},
         "15.07.2026 1 1 12 11 1 0 0   7 1",
         true},
        {Buchungsart::Absetzung, {{"Anzahl_Ferkel", 9.0}}, "15.07.2026 9 0   7 1", true},
        {Buchungsart::Verschiebung, {{"Anzahl_Ferkel", 2.0}, {"Zu_Saunr", u"12"}}, "15.07.2026 2 12   7 1", false},
        {Buchungsart::Verluste, {{"Anzahl_Ferkel", 1.0}, {"Muttersau", u"4"}}, "15.07.2026 1  0 4   7 1", false},
        {Buchungsart::Ferkelverkauf,
         {{"Anzahl_Verkauf", 10.0}, {"Einnahmen", Money{5000000}}},
         "15.07.2026 0 10 0 500 0 0 0    7 1",
         false},
        {Buchungsart::Behandlung, {{"Behandlungsart", u"Impfung"}}, "15.07.2026 Impfung  0   0 -   0   7 1", false},
    };
    for (const auto& c : table) {
        Hof farm;
        const QString name = QString::fromUtf8(angaben(c.art).table);
        {
            Action action(farm.db, name);
            Buchungen(action, c.art, {"Datum"}, c.given).book(7, {Tag});
            action.commit();
        }
        EXPECT_EQ(farm.show("select * from " + name), QString::fromUtf8(c.row)) << angaben(c.art).table;
        EXPECT_EQ(ChangeLog(farm.db, ChangeLog::Purpose::Values).expected(), c.cycle) << angaben(c.art).table;
    }
}

TEST_F(BuchungenTest, OneWriterServesManyAnimalsAndChangesOnlyWhatIsGiven) {
    litter(7, "01/31/2025");
    act([](const Action& action) {
        Buchungen litters(action, Buchungsart::Ferkelung, {"Datum", "Ferkel_Gesamt"}, {{"Bemerkung", u"x"}});
        for (const int animal : {7, 8}) litters.book(animal, {Tag, 10 + animal});
        litters.change(1, 7, {QDate(2026, 8, 1), 12});
    });
    EXPECT_EQ(show("select Kennung, Datum, LNr, LNrJahr, Ferkel_Gesamt, Kosten, Kommentar, Bemerkung, ID from "
                   "Ferkelung order by ID"),
              "7 01.08.2026 2 2 12 - - x 1 | 7 15.07.2026 1 1 17 0  x 2 | 8 15.07.2026 1 1 18 0  x 3");
    const QString before = all(Buchungsart::Ferkelung);
    const std::pair<std::function<void(Buchungen&)>, DatabaseError::Kind> refused[] = {
        {[](Buchungen& b) {
             b.change(99, 7, {Tag, 1});
         },
         DatabaseError::Kind::State},
        {[](Buchungen& b) {
             b.book(7, {Tag, 32768});
         },
         DatabaseError::Kind::Type},
        {[](Buchungen& b) {
             b.change(1, 7, {Tag, 1e300});
         },
         DatabaseError::Kind::Type},
    };
    for (const auto& [work, kind] : refused) {
        try {
            act([&](const Action& action) {
                Buchungen litters(action, Buchungsart::Ferkelung, {"Datum", "Ferkel_Gesamt"});
                litters.book(8, {Tag, 1});
                work(litters);
            });
            ADD_FAILURE() << "written";
        } catch (const DatabaseError& error) {
            EXPECT_EQ(error.kind, kind) << error.what();
        }
        EXPECT_EQ(all(Buchungsart::Ferkelung), before);
    }
}

TEST_F(BuchungenTest, BookingsThatComeWithOthers) {
    act([](const Action& action) {
        Verschiebung_gegenbuchen(
            action, {{"Datum", Day}, {"Anzahl_Ferkel", 3.0}, {"Zu_Saunr", u"40"}, {"Kommentar", u"k"}}, 9, "12");
        Absetzverluste(action, Day, 2, "Grätscher").book(7, {u"12"});
        Eigenverkauf_buchen(action, Day, 70000);
    });
    EXPECT_EQ(all(Buchungsart::Verschiebung), "15.07.2026 -3 12 k  9 1");
    EXPECT_EQ(all(Buchungsart::Verluste), "15.07.2026 2 Grätscher 0 12   7 1");
    EXPECT_EQ(show("select Anzahl_Verkauf, Kunde, Muttersau, Kommentar, Kennung from Ferkelverkauf"),
              "32767 Eigenbetrieb  In Mast gebucht 0 | 32767 Eigenbetrieb  In Mast gebucht 0 | "
              "4466 Eigenbetrieb  In Mast gebucht 0");
    EXPECT_FALSE(noted());
}

TEST_F(BuchungenTest, DeletingAndCopyingNumberTheLittersOfTheAnimalThatIsNamed) {
    for (const char* day : {"01/10/2025", "07/10/2025"}) litter(7, day);
    sql("insert into Verluste (Kennung, Datum, Kosten) values (7, #01/10/2025#, 1.5)");
    const auto numbers = [&] { return show("select LNr from Ferkelung order by ID"); };
    act([](const Action& a) { Buchung_kopieren(a, Buchungsart::Verluste, 1, Day, 0); });
    EXPECT_EQ(show("select Datum, Anzahl_Ferkel, Kosten, Kommentar, Kennung, ID from Verluste order by ID"),
              "10.01.2025 - 1,5 - 7 1 | 15.07.2026 - 1,5 - 7 2");
    act([](const Action& a) { Buchung_loeschen(a, Buchungsart::Verluste, 2, 0); });
    EXPECT_TRUE(numbers() == "- | -" && !noted()) << "a booking of the farm has no sow";
    act([](const Action& a) { Buchung_loeschen(a, Buchungsart::Verluste, 1, 7); });
    EXPECT_EQ(all(Buchungsart::Verluste), "");
    EXPECT_TRUE(numbers() == "1 | 2" && noted());
    act([](const Action& a) { Buchung_kopieren(a, Buchungsart::Ferkelung, 2, QDate(2025, 2, 1), 7); });
    EXPECT_EQ(numbers(), "1 | 3 | 2");
    EXPECT_THROW(act([](const Action& a) { Buchung_kopieren(a, Buchungsart::Ferkelung, 99, Day, 7); }), DatabaseError);
    EXPECT_EQ(numbers(), "1 | 3 | 2");
}

TEST_F(BuchungenTest, NewAnimalsDifferInWhatStandsOverTheDefaults) {
    const QStringList fields = {"Nummer", "Boxdatum"};
    const std::pair<FieldValues, const char*> table[] = {
        {{}, "- -"},
        {{{"ART", u"Ferkel"}, {"Zugangsgrund", u"Zukauf"}}, "Ferkel Zukauf -"},
        {{{"Statusabfrage", u"N"}, {"Aenderung", u""}}, "N "},
        {{{"Belegungsart", Value::null()}, {"Mechanische_Amme", u"J"}, {"Einkaufspreis", Money{15000}}}, "J 1,5 -"},
    };
    for (const auto& [fixed, own] : table) {
        act([&](const Action& action) { NeueTiere(action, fields, fixed).add({u"A-1", Tag}); });
    }
    EXPECT_EQ(show("select * from Sauen order by ID"),
              " A-1   15.07.2026   - 0 0 0 0     - - - - - - N - 0 0   - 0 0     - 1 | "
              "Ferkel A-1   15.07.2026   - 0 0 0 0     - - - - - - N - 0 0 Zukauf  - 0 0     - 2 | "
              " A-1   15.07.2026   - 0 0 0 0   N  - - - - - - N - 0 0   - 0 0      3 | "
              " A-1   15.07.2026   - 0 0 0 0    - - - - - - - J - 0 1,5   - 0 0     - 4");
}

TEST(AktionsnamenTest, SayWhatWasDoneToWhomAndWhen) {
    const std::pair<QString, const char*> table[] = {
        {Buchungsname(Buchungsart::Belegung, "123", "17.07.2026"), "Belegung 123, 17.07.2026"},
        {Buchungsname(Buchungsart::Verluste, "", "17.07.2026", "gelöscht"), "Verlust vom 17.07.2026 gelöscht"},
        {countedAnimals(1, "Sau") + ' ' + countedAnimals(3, "Sau"), "1 Sau 3 Sauen"},
        {countedAnimals(0) + ' ' + countedAnimals(1) + ' ' + countedAnimals(2, "Mast"), "0 Tiere 1 Tier 2 Masttiere"},
    };
    for (const auto& [name, expected] : table) EXPECT_EQ(name, QString::fromUtf8(expected));
}

}  // namespace
}  // namespace koben

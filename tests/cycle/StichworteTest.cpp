// Keywords typed in place: what reaches the table, what is refused, what is handed over.
#include "cycle/PV_Stichworte.h"

#include "tests/support/Hof.h"

namespace koben {
namespace {

struct Stichworte : testing::Test, Hof {
    Stichworte() { catalogue.add<PV_Stichworte>("PV_Stichworte"); }
    void in(std::function<void(PV_Stichworte&)> script) {
        Hof::in<PV_Stichworte>("PV_Stichworte", std::move(script));
        screens.takeLog();
    }
    QStringList stored(const QString& table) {
        QStringList texts = show("select * from Stammdaten_" + table).split(" | ", Qt::SkipEmptyParts);
        texts.sort();
        return texts;
    }
    static QStringList shown(const Grid& grid) { return gridText(grid).mid(1); }
};

TEST_F(Stichworte, TypedInPlaceTheyReachTheTable) {
    in([&](PV_Stichworte& form) {
        EXPECT_EQ(shown(form.li), (QStringList{"Läufer", "Mastschwein", "Zuchteber", "Zuchtsau"}));
        form.opti[2].click();
        form.neu.click();
        EXPECT_EQ(form.li.row(), 1);
        form.li.editByUser(1, 1, " Box 'a' ");
        EXPECT_EQ(stored("Stallnummer"), QStringList{"Box `a`"});
        form.neu.click();
        form.li.editByUser(2, 1, "Box 2");
        form.li.editByUser(1, 1, "Box 1");
        form.li.editByUser(1, 1, "Box 3");
        EXPECT_EQ(shown(form.li), (QStringList{"Box 3", "Box 2"}));
        EXPECT_EQ(stored("Stallnummer"), (QStringList{"Box 2", "Box 3"}));
        form.opti[2].click();
        EXPECT_EQ(shown(form.li), (QStringList{"Box 2", "Box 3"}));
    });
}

TEST_F(Stichworte, OneOfSeveralEqualOnesIsChangedAndDeleted) {
    for (const char* text : {"Box", "box", "Box", "Box"})
        sql("insert into Stammdaten_Stallnummer (Inhalt) values ('%1')", text);
    in([&](PV_Stichworte& form) {
        form.opti[2].click();
        form.li.sortByUser(1, 2);
        form.li.choose(form.li.findText(u"Inhalt", "Box"));
        const QString chosen = form.li.cell(form.li.row(), 1);
        form.li.editByUser(form.li.row(), 1, chosen + "!");
        form.li.key(Key::Delete);
        QStringList left = stored("Stallnummer"), list = shown(form.li);
        list.sort();
        EXPECT_EQ(left, list);
        EXPECT_EQ(left.size(), 3);
        EXPECT_FALSE(left.contains(chosen + "!"));
    });
}

TEST_F(Stichworte, TooLongAnEntryStaysInTheListUntilItFits) {
    const QString tooLong = "12345678901";
    in([&](PV_Stichworte& form) {
        std::vector<int> editors;
        form.li.startEdit = [&](int row, int) { editors.push_back(row); };
        form.opti[2].click();
        form.neu.click();
        form.li.editByUser(1, 1, "Box");
        form.li.editByUser(1, 1, tooLong);
        EXPECT_TRUE(says({"! *\"12345678901\" ist mit 11 Zeichen zu lang*höchstens 10 Zeichen*"}));
        EXPECT_EQ(editors, (std::vector{1, 1}));
        EXPECT_EQ(shown(form.li), QStringList{tooLong});
        EXPECT_EQ(stored("Stallnummer"), QStringList{"Box"});
        form.li.editByUser(1, 1, "1234567890");
        EXPECT_EQ(stored("Stallnummer"), QStringList{"1234567890"});
        // a new row with too long a text gives way to another new row
        form.neu.click();
        form.li.editByUser(2, 1, tooLong + "x");
        form.neu.click();
        EXPECT_EQ(shown(form.li), (QStringList{"1234567890", ""}));
        // and a second refused text shows again what the table holds for the first
        form.li.editByUser(2, 1, "B");
        form.li.editByUser(1, 1, tooLong);
        form.li.editByUser(2, 1, tooLong + "y");
        EXPECT_EQ(shown(form.li), (QStringList{"1234567890", tooLong + "y"}));
        EXPECT_EQ(stored("Stallnummer"), (QStringList{"1234567890", "B"}));
    });
}

TEST_F(Stichworte, EmptyEntriesAddNothingAndEmptyNothing) {
    in([&](PV_Stichworte& form) {
        play(form, "opti(1); neu; neu");
        EXPECT_EQ(form.li.rowCount(), 3) << "one unfinished row at a time";
        form.li.editByUser(3, 1, "  ");
        EXPECT_EQ(shown(form.li), (QStringList{"DL", "Pietrain"}));
        EXPECT_TRUE(says({}));
        form.li.editByUser(1, 1, "");
        EXPECT_TRUE(says({"! Ein Stichwort kann nicht leer sein.*"}));
        EXPECT_EQ(shown(form.li), (QStringList{"DL", "Pietrain"}));
        form.neu.click();
        form.löschen.click();  // an unfinished row goes without a question
        EXPECT_EQ(form.li.rowCount(), 2);
    });
    EXPECT_EQ(stored("Rasse"), (QStringList{"DL", "Pietrain"}));
}

TEST_F(Stichworte, DeletesOnConfirmationAndTellsWithoutARow) {
    koben.Konfig_Zahl[Zahl::LoeschenBestaetigen] = 1;
    in([&](PV_Stichworte& form) {
        form.löschen.click();
        form.ändern.click();
        EXPECT_TRUE(
            says({"! Bitte wählen Sie erst den zu löschenden*", "! Bitte markieren Sie zuerst den zu ändern*"}));
        form.li.choose(2);
        screens.answers = {false, true};
        form.popzeile[3].click();
        EXPECT_EQ(form.li.rowCount(), 4);
        form.popzeile[3].click();
    });
    EXPECT_EQ(stored("Gruppe"), (QStringList{"Läufer", "Zuchteber", "Zuchtsau"}));
}

TEST_F(Stichworte, FailingWriteLeavesTheTableAsItWasAndWhatWasTyped) {
    in([&](PV_Stichworte& form) {
        Workspace::setFaultHook([](const QString& sql) { throw DatabaseError(DatabaseError::Kind::Io, sql); });
        EXPECT_TRUE(form.li.editByUser(1, 1, "Neu"));
        Workspace::setFaultHook({});
        EXPECT_TRUE(says({"! *Es wurde nichts davon gespeichert.*"}));
        EXPECT_EQ(form.li.cell(1, 1), "Neu");
        EXPECT_EQ(stored("Gruppe"), (QStringList{"Läufer", "Mastschwein", "Zuchteber", "Zuchtsau"}));
        form.li.editByUser(1, 1, "Neu");  // the disk has room again
        EXPECT_EQ(stored("Gruppe"), (QStringList{"Mastschwein", "Neu", "Zuchteber", "Zuchtsau"}));
    });
}

}  // namespace
}  // namespace koben

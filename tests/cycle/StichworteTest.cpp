// Keywords typed in place: what reaches the table, what is refused, what is handed over.
#include "cycle/PV_Stichworte.h"

#include "core/PZ_Koben_Subs_Datenbank.h"
#include "tests/support/Fakes.h"

namespace koben {
namespace {

class FakeZwischenliste : public Form {
public:
    explicit FakeZwischenliste(Koben& koben_) : Form(koben_, "PA_Zwischenliste", "Daten listen") {}
};

struct Stichworte : testing::Test, TestRun {
    Stichworte() {
        catalogue.add<PV_Stichworte>("PV_Stichworte");
        catalogue.add<FakeZwischenliste>("PA_Zwischenliste");
        Datenbank_anlegen(koben.workspace, koben.Datenbankpfad);
        db = koben.connect();
    }
    void in(std::function<void(PV_Stichworte&)> script) {
        screens.workIn<PV_Stichworte>(std::move(script));
        koben.open("PV_Stichworte");
        screens.takeLog();
    }
    QStringList stored(const QString& table) {
        const Table rows = db.table("select * from Stammdaten_" + table);
        QStringList texts;
        for (int row = 0; row < rows.rowCount(); ++row) texts += rows.text(row, 0);
        texts.sort();
        return texts;
    }
    static QStringList shown(const Grid& grid) {
        QStringList texts;
        for (int row = 1; row <= grid.rowCount(); ++row) texts += grid.cell(row, 1);
        return texts;
    }

    Database db;
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
        db.execute(QStringLiteral("insert into Stammdaten_Stallnummer (Inhalt) values ('%1')").arg(text));
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
        screens.takeLog();
        form.li.editByUser(1, 1, tooLong);
        EXPECT_EQ(screens.takeLog(),
                  QStringList{"! Das Stichwort \"12345678901\" ist mit 11 Zeichen zu lang und wurde noch nicht "
                              "gespeichert. Es sind höchstens 10 Zeichen möglich. Bitte kürzen Sie die Eingabe."});
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
        form.opti[1].click();
        form.neu.click();
        form.neu.click();
        EXPECT_EQ(form.li.rowCount(), 3) << "one unfinished row at a time";
        form.li.editByUser(3, 1, "  ");
        EXPECT_EQ(shown(form.li), (QStringList{"DL", "Pietrain"}));
        screens.takeLog();
        form.li.editByUser(1, 1, "");
        EXPECT_EQ(screens.takeLog().size(), 1);
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
        screens.takeLog();
        form.löschen.click();
        form.ändern.click();
        EXPECT_EQ(screens.takeLog(),
                  (QStringList{"! Bitte wählen Sie erst den zu löschenden Datensatz aus. Mit der ENTF-Taste kann der "
                               "ausgewählte Datensatz ebenfalls gelöscht werden!",
                               "! Bitte markieren Sie zuerst den zu ändernden Datensatz!"}));
        form.li.choose(2);
        screens.answers = {false, true};
        form.popzeile[3].click();
        EXPECT_EQ(form.li.rowCount(), 4);
        form.popzeile[3].click();
    });
    EXPECT_EQ(stored("Gruppe"), (QStringList{"Läufer", "Zuchteber", "Zuchtsau"}));
}

TEST_F(Stichworte, HandsOverWhatIsStored) {
    in([&](PV_Stichworte& form) {
        form.opti[1].click();
        form.neu.click();
        form.comlisten.click();
        Grid list(form, "list");
        ASSERT_TRUE(list.load(path("gridli.txt")));
        EXPECT_EQ(shown(list), (QStringList{"DL", "Pietrain"}));
        form.opti[5].click();
        screens.takeLog();
        form.neu.click();
        form.comlisten.click();
        EXPECT_EQ(screens.takeLog(), QStringList{"! Keine zu listenden Daten gefunden"});
    });
}

TEST_F(Stichworte, FailingWriteLeavesTheTableAsItWas) {
    in([&](PV_Stichworte& form) {
        Workspace::setFaultHook([](const QString& sql) { throw DatabaseError(DatabaseError::Kind::Io, sql); });
        EXPECT_THROW(form.li.editByUser(1, 1, "Neu"), DatabaseError);
        Workspace::setFaultHook({});
        EXPECT_EQ(form.li.cell(1, 1), "Läufer");
        EXPECT_EQ(stored("Gruppe"), (QStringList{"Läufer", "Mastschwein", "Zuchteber", "Zuchtsau"}));
    });
}

}  // namespace
}  // namespace koben

// A sow's life round, typed with real keys through the real windows: what the farmer enters on her Thursdays.
#include <QAbstractButton>
#include <QAction>
#include <QTemporaryDir>

#include "app/Katalog.h"
#include "bookings/Buchungseingabe.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "herd/PA_Koben.h"
#include "tests/ui/Support.h"
#include "ui/Bound.h"

namespace koben::ui {
namespace {

/// What is typed into a field; an arrow is the key that counts one down.
struct Input {
    const char* control;
    int index;
    const char* text;
};

/// One visit to the bookings: the menu entry, what is typed, and what the sow's row says after the frame has closed.
struct Visit {
    const char* entry;
    std::vector<Input> inputs;
    const char* status;
    const char* next;  ///< N_Belegung, or N_Ferkelung behind a "/"
    int services;
};

const Visit Life[] = {
    {"XE_belegung", {{"tdat", -1, "1001"}, {"kom", 0, "E1"}, {"tz", 1, "12,5"}}, "B", "/06.05.2026", 1},
    {"XE_trächtigkeit", {{"tdat", -1, "3001"}, {"kom", 0, "N"}}, "B_NTG", "/06.05.2026", 1},
    {"XE_belegung", {{"tdat", -1, "3001"}, {"kom", 0, "e1"}}, "B", "/26.05.2026", 2},
    {"XE_trächtigkeit", {{"tdat", -1, "250226"}}, "B_T", "/26.05.2026", 2},
    {"XE_ferkelung", {{"tdat", -1, "2605"}, {"tz", 0, "14"}, {"tz", 2, "2"}}, "S", "01.07.2026/", 0},
    {"XE_Verschiebung", {{"tdat", -1, "2805"}, {"tz", 0, "2"}, {"kom", 0, "102"}}, "S", "01.07.2026/", 0},
    {"XE_Verschiebung", {{"tdat", -1, "2905"}, {"tz", 0, "↓↓"}, {"kom", 0, "102"}}, "S", "01.07.2026/", 0},
    {"XE_absetzung", {{"tdat", -1, "2506"}, {"tz", 0, "9"}, {"tz", 1, "7,8"}, {"kom", 2, "A1"}}, "G", "01.07.2026/", 0},
    {"XE_belegung", {{"tdat", -1, "0107"}, {"kom", 0, "E1"}}, "B", "/25.10.2026", 1},
};

struct ZyklusTest : testing::Test {
    QTemporaryDir data;
    TestScreens screens;
    TestPlatform platform;
    Koben koben{screens, platform, katalog()};
    const Visit* visit = nullptr;

    ZyklusTest() {
        platform.folder = data.path() + u'/';
        Workspace workspace;
        Datenbank_anlegen(workspace, data.filePath(QStringLiteral("koben2.mdb")));
        Database db = workspace.open(data.filePath(QStringLiteral("koben2.mdb")));
        db.execute(QStringLiteral("insert into Sauen (Art, Nummer, Stallnr) values ('Sau', '101', 'D1')"));
        db.execute(QStringLiteral("insert into Sauen (Art, Nummer, Stallnr) values ('Sau', '102', 'D1')"));
        db.execute(QStringLiteral("insert into Sauen (Art, Nummer) values ('Eber', 'E1')"));
    }

    void pressButton(FormWindow& window, const Control& button) {
        auto* widget = static_cast<QAbstractButton*>(window.widgetOf(button));
        widget->setFocus();
        press(widget, Qt::Key_Return);
    }

    void typeEntry(FormWindow& window, Buchungseingabe& entry) {
        for (const Input& input : visit->inputs) {
            Control* control = entry.find(QString::fromUtf8(input.control), input.index);
            ASSERT_NE(control, nullptr) << visit->entry << ": " << input.control << input.index;
            window.widgetOf(*control)->setFocus(Qt::TabFocusReason);
            for (const QChar c : QString::fromUtf8(input.text))
                c == u'↓' ? press(window.focusWidget(), Qt::Key_Down) : type(window, QString(c));
            press(window.focusWidget(), Qt::Key_Return);
        }
        pressButton(window, entry.ok[0]);
        EXPECT_TRUE(entry.closed()) << visit->entry << ": " << screens.told.join(u'|').toStdString();
    }

    void expectRow() {
        const Table row = koben.Hauptdatenbank.table(
            QStringLiteral("select Status, N_Belegung, N_Ferkelung, Anz_Belegungen from Sauen where Nummer = '101'"));
        EXPECT_EQ(row.text(0, 0), QString::fromUtf8(visit->status)) << visit->entry;
        EXPECT_EQ(row.text(0, 1) + u'/' + row.text(0, 2), QString::fromUtf8(visit->next)) << visit->entry;
        EXPECT_EQ(row.integer(0, 3), visit->services) << visit->entry;
    }
};

TEST_F(ZyklusTest, ALifeTypedFromServiceToService) {
    screens.hand = [&](Form& form) {
        FormWindow& window = *screens.windowOf(form);
        if (auto* herd = dynamic_cast<PA_Koben*>(&form)) {
            for (const Visit& next : Life) {
                visit = &next;
                window.widgetOf(herd->t)->setFocus();
                herd->t.edited(QString());
                type(window, QStringLiteral("101"));
                window.findChild<QAction*>(QString::fromUtf8(visit->entry))->trigger();
                QApplication::processEvents();
                expectRow();
            }
        } else if (auto* frame = dynamic_cast<PE_Bewegungsdaten*>(&form)) {
            pressButton(window, frame->neu);
            pressButton(window, frame->cmdschließen);
        } else if (auto* entry = dynamic_cast<Buchungseingabe*>(&form)) {
            typeEntry(window, *entry);
        }
    };
    const auto main = katalog().make(QStringLiteral("PA_Koben"), koben);
    koben.run(*main);
    EXPECT_EQ(screens.tones, static_cast<int>(std::size(Life)));
    const auto count = [&](const char* sql) {
        return koben.Hauptdatenbank.table(QString::fromUtf8(sql)).integer(0, 0);
    };
    EXPECT_EQ(count("select count(*) from Sauen where Art = 'Ferkel' and Nummer like 'A1-*'"), 9);
    EXPECT_EQ(count("select sum(Anzahl_Ferkel) from Verluste"), 2);
    EXPECT_EQ(count("select count(*) from Verschiebung"), 4) << "each move has its row at the other sow";
}

}  // namespace
}  // namespace koben::ui

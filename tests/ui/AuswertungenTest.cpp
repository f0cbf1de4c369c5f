// The figures by keyboard alone: choosing measures, the list that keeps its names in sight, where a figure comes from,
// and the logic test's way to a booking and back.
#include <QAccessible>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <QTest>

#include "analytics/PB_Statistiken.h"
#include "figures/PA_Grafiken.h"
#include "output/PA_Erklaerung.h"
#include "output/PA_Zwischenliste.h"
#include "tests/ui/ProgramTest.h"
#include "tests/ui/Tasten.h"

namespace koben::ui {
namespace {

struct Auswertungen : ProgramTest {
    Typist typist{screens};
    QTableView& view(const Grid& grid) {
        return *qobject_cast<QTableView*>(screens.windowOf(grid.form())->widgetOf(grid));
    }
};

QStringList ticked(const ListBox& list) {
    QStringList names;
    for (int i = 0; i < list.items().size(); ++i)
        if (list.marked(i)) names.append(list.items()[i]);
    return names;
}

TEST_F(Auswertungen, KennwerteWaehltUndErklaertDieTastatur) {
    const QStringList wanted{QStringLiteral("Gesamt Ferkelzahl"), QStringLiteral("Gesamt Absetzanzahl")};
    QStringList again;
    QString sentence;
    int bookings = 0;
    runProgram([&](Form& form) {
        if (form.name() == u"PA_Koben") {
            for (int i = 0; i < 2; ++i) koben.open("PB_Statistiken");
        } else if (auto* statistics = dynamic_cast<PB_Statistiken*>(&form)) {
            again = ticked(statistics->li1);
            if (!again.isEmpty()) return;
            screens.windowOf(form)->widgetOf(statistics->li1)->setFocus();
            typist.play(QStringLiteral("abs<Space>ferkelz<Space>"));
            EXPECT_EQ(ticked(statistics->li1), wanted) << ticked(statistics->li1).join(u'|').toStdString();
            statistics->ok[0].click();
            typist.play(QStringLiteral("<Esc>"));
        } else if (auto* list = dynamic_cast<PA_Zwischenliste*>(&form)) {
            QTableView& table = view(list->gridli);
            EXPECT_TRUE(table.verticalHeader()->isHidden());
            table.resize(300, 300);
            table.horizontalScrollBar()->setValue(table.horizontalScrollBar()->maximum());
            QApplication::processEvents();
            EXPECT_FALSE(table.verticalHeader()->isHidden()) << "the animal's number stays in sight";
            EXPECT_EQ(table.model()->headerData(0, Qt::Vertical).toString(), list->gridli.cell(1, 1));
            table.setFocus();
            typist.play(QStringLiteral("<Home><Right*%1><F2>").arg(list->gridli.columnCount() - 1));
        } else if (auto* figure = dynamic_cast<PA_Erklärung*>(&form)) {
            sentence = figure->satz.text();
            bookings = figure->gridli.rowCount();
        }
    });
    EXPECT_EQ(again, wanted) << "remembered";
    EXPECT_FALSE(sentence.isEmpty());
    EXPECT_GT(bookings, 0);
}

/// A plot is walked and opened by keyboard, fills the room that its window has, and says what it shows.
TEST_F(Auswertungen, EineGrafikMitTasten) {
    QString spoken, told;
    QSizeF large, small;
    runProgram([&](Form& form) {
        if (form.name() == u"PA_Koben") {
            koben.open("PA_Grafiken");
        } else if (auto* plots = dynamic_cast<PA_Grafiken*>(&form)) {
            QWidget& view = *screens.windowOf(form)->widgetOf(plots->bild);
            plots->li.choose(1);
            view.setFocus();
            typist.play(QStringLiteral("<Right><Right>"));
            view.resize(1000, 500);
            view.grab();
            large = plots->bild.sketch().size;
            spoken = QAccessible::queryAccessibleInterface(&view)->text(QAccessible::Value);
            EXPECT_EQ(spoken, plots->bild.currentText());
            view.resize(700, 400);
            view.grab();
            small = plots->bild.sketch().size;
            EXPECT_EQ(plots->bild.currentText(), spoken);
            typist.play(QStringLiteral("<Return>"));
        } else if (auto* figure = dynamic_cast<PA_Erklärung*>(&form)) {
            told = figure->wert[0].text();
        }
    });
    EXPECT_LT(small.width(), large.width());
    EXPECT_FALSE(told.isEmpty());
    EXPECT_TRUE(spoken.endsWith(u' ' + told)) << spoken.toStdString() << " " << told.toStdString();
}

TEST_F(Auswertungen, VomBefundZurBuchungUndZurueck) {
    int frames = 0, runs = 0;
    runProgram([&](Form& form) {
        Database& db = koben.Hauptdatenbank;
        if (form.name() == u"PA_Koben") {
            db.execute("insert into Sauen (Art, Nummer, Anz_Ferkelungen) values ('Sau', '990', 3)");
            const QString sow = db.table("select ID from Sauen where Nummer = '990'").text(0, 0);
            for (const char* day : {"03/01/2024", "10/01/2025", "03/01/2026"})
                db.execute(
                    QStringLiteral("insert into Ferkelung (Kennung, Datum, Ferkel_Lebendig) values (%1, #%2#, 9)")
                        .arg(sow, QString::fromUtf8(day)));
            for (const char* day : {"06/01/2024", "05/01/2025"})
                db.execute(QStringLiteral("insert into Belegung (Kennung, Datum, Ebernr) values (%1, #%2#, 'E1')")
                               .arg(sow, QString::fromUtf8(day)));
            koben.herdList->datenschweinelesen();
            koben.open("PB_Logiktest");
        } else if (form.name() == u"PB_Logiktest") {
            for (runs = 1; runs <= 2; ++runs) typist.play(QStringLiteral("<Ctrl+Return>"));
        } else if (auto* list = dynamic_cast<PA_Zwischenliste*>(&form)) {
            QTableView& table = view(list->gridli);
            const int row = list->gridli.findText(u"Beleg_Datum", QStringLiteral("01.05.2025"));
            if (runs == 2) {
                EXPECT_EQ(row, 0) << "corrected";
                EXPECT_EQ(list->gridli.cell(list->gridli.row(), u"Ferkeldatum"), QStringLiteral("01.10.2025"));
                EXPECT_TRUE(QTest::qWaitFor(
                    [&] { return table.viewport()->rect().intersects(table.visualRect(table.currentIndex())); }, 3000));
                return;
            }
            ASSERT_GT(row, 0);
            table.setFocus();
            typist.play(QStringLiteral("<Home><Down*%1><Return>").arg(row - 1));
        } else if (auto* frame = dynamic_cast<PE_Bewegungsdaten*>(&form)) {
            ++frames;
            EXPECT_EQ(koben.Buchungsart_Nr, 0);
            EXPECT_EQ(frame->schweinli.cell(frame->schweinli.row(), u"Nummer"), QStringLiteral("990"));
            EXPECT_EQ(frame->li.cell(frame->li.row(), u"Datum"), QStringLiteral("01.05.2025"));
            db.execute("update Belegung set Datum = #06/07/2025# where Datum = #05/01/2025# and Ebernr = 'E1'");
        }
    });
    EXPECT_EQ(frames, 1) << screens.told.join(u'|').toStdString();
}

}  // namespace
}  // namespace koben::ui

// The table view of a grid: marks, sorting, editing, and that large lists are not walked.
#include <QClipboard>
#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>

#include "tests/ui/Support.h"
#include "ui/GridView.h"
#include "ui/ListCopy.h"

namespace koben::ui {
namespace {

class Liste final : public Form {
public:
    explicit Liste(Koben& context) : Form(context, QStringLiteral("Liste"), QStringLiteral("Liste")) {
        li.addColumn({.key = "Nummer", .title = "Nummer", .align = Align::Right, .sort = Sort::Number});
        li.addColumn({.key = "Datum", .title = "Datum", .sort = Sort::Date, .caption = "Geboren"});
        li.addColumn({.key = "ID", .title = "ID", .technical = true});
    }
    void fill(int rows) {
        li.clearRows();
        for (int i = 1; i <= rows; ++i)
            li.addRow({QString::number(rows - i), QStringLiteral("%1.07.2026").arg(i % 28 + 1), QString::number(i)});
    }
    Grid li{*this, "li", true};
};

struct GridViewTest : testing::Test, Bench {
    Liste form{koben};
    void hand(int rows, const std::function<void(GridView&)>& play) {
        form.fill(rows);
        run(form, [&](FormWindow& window) { play(*static_cast<GridView*>(window.widgetOf(form.li))); });
    }
    static QPoint cell(const GridView& view, int row) {
        return QPoint(5, view.rowViewportPosition(row - 1) + view.rowHeight(0) / 2);
    }
};

std::vector<int> rows(std::initializer_list<int> numbers) { return numbers; }

TEST_F(GridViewTest, MouseMarksRows) {
    int changes = 0;
    form.li.onRowChange = [&] { ++changes; };
    hand(10, [&](GridView& view) {
        click(view.viewport(), cell(view, 2));
        EXPECT_EQ(form.li.markedRows(), rows({2}));
        click(view.viewport(), cell(view, 5), Qt::ControlModifier);
        EXPECT_EQ(form.li.markedRows(), rows({2, 5}));
        EXPECT_EQ(form.li.row(), 5);
        click(view.viewport(), cell(view, 7), Qt::ShiftModifier);
        EXPECT_EQ(form.li.markedRows(), rows({5, 6, 7}));
        click(view.viewport(), cell(view, 6), Qt::ControlModifier);
        EXPECT_EQ(form.li.markedRows(), rows({5, 7}));
        EXPECT_EQ(changes, 4);
        click(view.viewport(), cell(view, 6));
        EXPECT_EQ(form.li.markedRows(), rows({6}));
        EXPECT_EQ(changes, 4) << "the row was current already";
    });
}

TEST_F(GridViewTest, KeysWalkAndExtend) {
    hand(10, [&](GridView& view) {
        press(&view, Qt::Key_Down);
        EXPECT_EQ(form.li.row(), 1);
        press(&view, Qt::Key_Down, Qt::ShiftModifier);
        press(&view, Qt::Key_Down, Qt::ShiftModifier);
        EXPECT_EQ(form.li.markedRows(), rows({1, 2, 3}));
        press(&view, Qt::Key_Down, Qt::ControlModifier);
        EXPECT_EQ(form.li.row(), 4);
        EXPECT_EQ(form.li.markedRows(), rows({1, 2, 3})) << "walking with Ctrl leaves the marks";
        press(&view, Qt::Key_End);
        EXPECT_EQ(form.li.markedRows(), rows({10}));
        press(&view, Qt::Key_A, Qt::ControlModifier);
        EXPECT_EQ(form.li.markedCount(), 10);
    });
}

/// Whoever takes the last mark away has the row that he stands on.
TEST_F(GridViewTest, NoHandLeavesNothingMarked) {
    hand(10, [&](GridView& view) {
        click(view.viewport(), cell(view, 4));
        press(&view, Qt::Key_Space, {}, " ");
        EXPECT_EQ(form.li.markedRows(), rows({4}));
        click(view.viewport(), cell(view, 4), Qt::ControlModifier);
        EXPECT_EQ(form.li.markedRows(), rows({4}));
        click(view.viewport(), cell(view, 6), Qt::ControlModifier);
        click(view.viewport(), cell(view, 6), Qt::ControlModifier);
        EXPECT_EQ(form.li.markedRows(), rows({4})) << "others are marked: the current row need not be";
        const QImage picture = view.viewport()->grab().toImage();
        const auto ground = [&](int row) {
            return picture.pixelColor(view.columnViewportPosition(1) - 4, cell(view, row).y());
        };
        EXPECT_EQ(ground(4), view.palette().color(QPalette::Highlight)) << "marked";
        EXPECT_EQ(ground(6), ground(8)) << "the current row is framed, not filled";
        EXPECT_NE(picture.pixelColor(40, cell(view, 6).y() - view.rowHeight(0) / 2 + 1),
                  picture.pixelColor(40, cell(view, 8).y() - view.rowHeight(0) / 2 + 1));
        click(view.viewport(), cell(view, 4), Qt::ControlModifier);
        EXPECT_EQ(form.li.markedRows(), rows({4}));
        view.allowNoMark();
        press(&view, Qt::Key_Space, {}, " ");
        EXPECT_EQ(form.li.markedCount(), 0) << "a choice of its own in some lists";
    });
}

/// Rows hold the numbers 299 down to 0.
TEST_F(GridViewTest, TypedNumbersGatherRows) {
    const auto number = [](GridView& view, const QString& digits) {
        for (const QChar digit : digits) press(&view, 0, {}, QString(digit));
    };
    hand(300, [&](GridView& view) {
        number(view, "29");
        EXPECT_EQ(form.li.cell(form.li.row(), 1), "29") << "the whole number before its beginnings";
        press(&view, Qt::Key_Space, {}, " ");
        number(view, "150");
        EXPECT_EQ(form.li.row(), 150);
        press(&view, Qt::Key_Space, {}, " ");
        EXPECT_EQ(form.li.markedRows(), rows({150, 271}));
        number(view, "777");
        EXPECT_TRUE(view.search().said().contains("„777“")) << qPrintable(view.search().said());
        press(&view, Qt::Key_Escape);
        EXPECT_EQ(view.search().said(), QString());
        EXPECT_FALSE(form.closed()) << "Escape ends the search, not the window";
        EXPECT_EQ(form.li.markedCount(), 2);
    });
}

TEST_F(GridViewTest, SortingKeepsWidths) {
    for (const char* key : {"Name", "Ende"}) form.li.addColumn({.key = key, .title = key});
    hand(0, [&](GridView& view) {
        for (int i = 0; i < 400; ++i)
            form.li.addRow({"1", "1.1.2026", "1", i == 399 ? "Ein langer Name ganz hinten" : "a"});
        view.flush();
        const int width = view.columnWidth(3);
        EXPECT_GE(width, view.fontMetrics().horizontalAdvance(form.li.cell(400, 4))) << "rows out of sight count";
        form.li.sortByUser(4, 2);
        view.flush();
        EXPECT_EQ(view.columnWidth(3), width);
    });
}

/// What the user hid and moved stands again, and a column that he has never seen stands beside its neighbour.
TEST_F(GridViewTest, ColumnsStayArranged) {
    hand(3, [&](GridView& view) {
        view.horizontalHeader()->moveSection(1, 0);
        EXPECT_EQ(platform.settings[QStringLiteral("Listen/Liste.li.Spalten")], "Datum;Nummer;ID");
    });
    platform.settings[QStringLiteral("Listen/Liste.li.Spalten")] = QStringLiteral("Datum;-Nummer;Weg;ID");
    Liste later(koben);
    later.li.clear();
    for (const char* key : {"Nummer", "Datum", "Neu"}) later.li.addColumn({.key = key, .title = key});
    later.li.addRow({"1", "2", "3"});
    run(later, [&](FormWindow& window) {
        const auto& view = *static_cast<GridView*>(window.widgetOf(later.li));
        EXPECT_TRUE(view.isColumnHidden(0));
        EXPECT_FALSE(view.isColumnHidden(2));
        EXPECT_EQ(view.horizontalHeader()->visualIndex(1), 0);
        EXPECT_EQ(view.horizontalHeader()->visualIndex(2), 1);
    });
}

TEST_F(GridViewTest, NumbersInNaturalOrderWhereTheUserWantsIt) {
    platform.settings[QStringLiteral("Listen/Liste.li.Ordnung")] = QStringLiteral("Zahlen");
    Liste animals(koben);
    animals.li.clear();
    animals.li.addColumn({.key = "Nummer", .title = "Nummer"});
    for (const char* number : {"100", "E10", "9", "E9", "10"}) animals.li.addRow({number});
    const auto order = [&] {
        QString text;
        for (int row = 1; row <= animals.li.rowCount(); ++row) text += animals.li.cell(row, 1) + u' ';
        return text;
    };
    run(animals, [&](FormWindow& window) {
        auto& view = *static_cast<GridView*>(window.widgetOf(animals.li));
        EXPECT_EQ(order(), "100 E10 9 E9 10 ") << "the list begins as its form has it";
        animals.li.setRow(1);
        click(view.horizontalHeader()->viewport(), QPoint(view.columnViewportPosition(0) + 5, 5));
        EXPECT_EQ(order(), "9 10 100 E9 E10 ");
        EXPECT_EQ(animals.li.row(), 3) << "the same animal stays current";
        click(view.horizontalHeader()->viewport(), QPoint(view.columnViewportPosition(0) + 5, 5));
        EXPECT_EQ(order(), "E10 E9 100 10 9 ");
    });
}

TEST_F(GridViewTest, CopiedCellsAreNoFormulas) {
    const std::pair<const char*, const char*> cells[] = {
        {"=1+1", "'=1+1"}, {" @SUM(1)", "' @SUM(1)"}, {"+49 170", "'+49 170"},
        {"-", "'-"},       {"-12,50", "-12,50"},      {"-1.234,5", "-1.234,5"},
        {"+3", "+3"},      {"0012", "0012"},          {"a\tb\nc", "a b c"}};
    for (const auto& [cell, copied] : cells) EXPECT_EQ(harmless(QString::fromLatin1(cell)), QLatin1String(copied));
}

TEST_F(GridViewTest, CopyTakesTitlesAndShownColumns) {
    hand(5, [&](GridView& view) {
        form.li.setRow(1);
        form.li.mark({1, 3});
        press(&view, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), "Nummer\tGeboren\n4\t2.07.2026\n2\t4.07.2026\n");
        EXPECT_TRUE(QApplication::clipboard()->mimeData()->html().contains("<td>4</td>"));
        form.li.clearMarks();
        press(&view, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("Nummer\tGeboren\n4\t2.07.2026\n"))
            << "the current row";
    });
}

TEST_F(GridViewTest, HeaderSortsAndShowsItsArrow) {
    int sorted = 0;
    form.li.onSorted = [&](int column) { sorted = column; };
    hand(30, [&](GridView& view) {
        form.li.setRow(1);
        const int x = view.columnViewportPosition(0) + 5;
        click(view.horizontalHeader()->viewport(), QPoint(x, 5));
        EXPECT_EQ(sorted, 1);
        EXPECT_EQ(form.li.cell(1, 1), "0");
        EXPECT_EQ(form.li.row(), 30) << "the same animal stays current";
        EXPECT_TRUE(view.horizontalHeader()->isSortIndicatorShown());
        EXPECT_EQ(view.horizontalHeader()->sortIndicatorSection(), 0);
        click(view.horizontalHeader()->viewport(), QPoint(x, 5));
        EXPECT_EQ(form.li.cell(1, 1), "29");
        EXPECT_EQ(view.horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    });
}

TEST_F(GridViewTest, OnlyTheUserResizes) {
    int resized = 0;
    form.li.onResized = [&](int) { ++resized; };
    hand(3, [&](GridView& view) {
        form.li.column(1).width = 120;
        form.li.columnsChanged();
        QApplication::processEvents();
        EXPECT_EQ(view.columnWidth(0), 120);
        EXPECT_TRUE(view.isColumnHidden(2));
        EXPECT_EQ(resized, 0);
        QWidget* header = view.horizontalHeader()->viewport();
        const auto mouse = [&](QEvent::Type type, int x, Qt::MouseButtons buttons) {
            QMouseEvent event(type, QPointF(x, 5), header->mapToGlobal(QPointF(x, 5)), Qt::LeftButton, buttons, {});
            QApplication::sendEvent(header, &event);
        };
        mouse(QEvent::MouseButtonPress, 119, Qt::LeftButton);
        mouse(QEvent::MouseMove, 149, Qt::LeftButton);
        mouse(QEvent::MouseButtonRelease, 149, Qt::NoButton);
        QApplication::processEvents();
        EXPECT_EQ(resized, 1);
        EXPECT_EQ(form.li.column(1).width, 150);
        form.li.onResized = nullptr;  // nobody keeps it: the window does
        mouse(QEvent::MouseButtonPress, 149, Qt::LeftButton);
        mouse(QEvent::MouseMove, 169, Qt::LeftButton);
        mouse(QEvent::MouseButtonRelease, 169, Qt::NoButton);
    });
    Liste next(koben);
    next.fill(3);
    run(next,
        [&](FormWindow& window) { EXPECT_EQ(static_cast<GridView*>(window.widgetOf(next.li))->columnWidth(0), 170); });
}

TEST_F(GridViewTest, LargeListsAreNotWalked) {
    int asked = 0;
    form.li.rowTitle = [&](int row) { return ++asked, QString::number(row); };
    hand(100'000, [&](GridView& view) {
        EXPECT_LT(asked, 2000);
        asked = 0;
        form.li.setRow(70'000);
        QApplication::processEvents();
        EXPECT_LT(asked, 2000);
        EXPECT_GT(view.verticalScrollBar()->value(), 69'000) << "the current row is in sight";
        std::vector<int> odd;
        for (int row = 1; row < 100'000; row += 2) odd.push_back(row);
        form.li.mark(odd);
        QApplication::processEvents();
        EXPECT_EQ(form.li.markedCount(), 50'000);
        EXPECT_LT(asked, 2000);
    });
}

TEST_F(GridViewTest, RefreshKeepsPlace) {
    hand(500, [&](GridView& view) {
        form.li.setRow(3);
        QApplication::processEvents();
        view.verticalScrollBar()->setValue(200);
        form.li.addRow({QStringLiteral("neu")});
        form.li.setCell(1, 1, QStringLiteral("anders"));
        QApplication::processEvents();
        EXPECT_EQ(view.verticalScrollBar()->value(), 200);
        EXPECT_EQ(form.li.row(), 3);
    });
}

TEST_F(GridViewTest, EditsInPlaceWhereTheFormAllows) {
    QStringList edited;
    form.li.canEdit = [](int, int column) { return column == 1; };
    form.li.onEdited = [&](int row, int, const QString& text) { edited.append(QString::number(row) + u':' + text); };
    hand(3, [&](GridView& view) {
        form.li.startEdit(2, 1);
        QApplication::processEvents();
        auto* editor = view.viewport()->findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->setText("77");
        press(editor, Qt::Key_Return);
        EXPECT_EQ(edited, QStringList{QStringLiteral("2:77")});
        EXPECT_EQ(form.li.cell(2, 1), "77");
        form.li.startEdit(2, 2);
        QApplication::processEvents();
        EXPECT_EQ(edited.size(), 1) << "the form does not edit that column";
    });
}

}  // namespace
}  // namespace koben::ui

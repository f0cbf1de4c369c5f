// The table view of a grid: marks, sorting, editing, and that large lists are not walked.
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>

#include "tests/ui/Support.h"
#include "ui/GridView.h"

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
        press(&view, Qt::Key_End);
        EXPECT_EQ(form.li.markedRows(), rows({10}));
        press(&view, Qt::Key_A, Qt::ControlModifier);
        EXPECT_EQ(form.li.markedCount(), 10);
    });
}

TEST_F(GridViewTest, CopyTakesTitlesAndShownColumns) {
    hand(5, [&](GridView& view) {
        form.li.mark({1, 3});
        press(&view, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("Nummer\tGeboren\n4\t2.07.2026\n2\t4.07.2026\n"));
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
        EXPECT_EQ(form.li.cell(1, 1), QStringLiteral("0"));
        EXPECT_EQ(form.li.row(), 30) << "the same animal stays current";
        EXPECT_TRUE(view.horizontalHeader()->isSortIndicatorShown());
        EXPECT_EQ(view.horizontalHeader()->sortIndicatorSection(), 0);
        click(view.horizontalHeader()->viewport(), QPoint(x, 5));
        EXPECT_EQ(form.li.cell(1, 1), QStringLiteral("29"));
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
    });
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
        editor->setText(QStringLiteral("77"));
        press(editor, Qt::Key_Return);
        EXPECT_EQ(edited, QStringList{QStringLiteral("2:77")});
        EXPECT_EQ(form.li.cell(2, 1), QStringLiteral("77"));
        form.li.startEdit(2, 2);
        QApplication::processEvents();
        EXPECT_EQ(edited.size(), 1) << "the form does not edit that column";
    });
}

TEST_F(GridViewTest, KeysReachTheForm) {
    QString log;
    form.li.onDelete = [&] { log += "Entf "; };
    form.li.onDoubleClick = [&] { log += "Öffnen "; };
    hand(3, [&](GridView& view) {
        press(&view, Qt::Key_Delete);
        press(&view, Qt::Key_Return);
        press(&view, Qt::Key_Escape);
        EXPECT_EQ(log, QStringLiteral("Entf Öffnen "));
        EXPECT_TRUE(form.closed());
    });
}

}  // namespace
}  // namespace koben::ui

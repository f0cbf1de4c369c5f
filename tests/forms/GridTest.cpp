#include "tests/forms/Proben.h"

namespace koben {
namespace {

struct GridTest : testing::Test {
    TestRun run;
    LeereMaske form{run.koben};
    Grid grid{form, QStringLiteral("gridli"), true};

    /// One column with one row a word.
    void fill(Sort sort, const QString& words) {
        grid.clear();
        grid.addColumn({.key = "wert", .title = "Wert", .sort = sort});
        for (const QString& word : words.split(u' ')) grid.addRow({word == u"_" ? QString() : word});
    }
};

TEST_F(GridTest, SortsEachKindOfColumn) {
    const struct {
        Sort sort;
        const char *rows, *ascending, *descending;
    } cases[] = {{Sort::Text, "b Ä a Z", "a Ä b Z", "Z b Ä a"},
                 {Sort::Number, "10 9,5 1.000 _ -3", " -3 9,5 10 1.000", "1.000 10 9,5 -3 "},
                 {Sort::Date, "02.01.2026 31.12.2025 _ 01.02.2026", " 31.12.2025 02.01.2026 01.02.2026",
                  "01.02.2026 02.01.2026 31.12.2025 "}};
    for (const auto& c : cases) {
        fill(c.sort, QString::fromUtf8(c.rows));
        for (const int direction : {1, 2}) {
            grid.sort(1, direction);
            EXPECT_EQ(spalte(grid, 1), direction == 1 ? c.ascending : c.descending);
        }
    }
}

TEST_F(GridTest, CurrentRowAndMarksFollowTheirRecords) {
    fill(Sort::Number, "3 1 2 4");
    grid.mark({2, 4});
    EXPECT_EQ(spalte(grid, 1), "3 *1 2 *4");
    grid.choose(3);
    EXPECT_EQ(spalte(grid, 1), "3 1 >*2 4");
    grid.mark({1, 2});
    grid.sort(1, 1);
    EXPECT_EQ(spalte(grid, 1), "*1 >2 *3 4");
    grid.removeRow(1);  // another row than the current one
    EXPECT_EQ(spalte(grid, 1), ">2 *3 4");
    grid.insertRow(1, {"0"});
    EXPECT_EQ(spalte(grid, 1), "0 >2 *3 4");
    grid.removeRow(2);  // the current one: the next takes its place
    EXPECT_EQ(spalte(grid, 1), "0 >*3 4");
    grid.removeRow(3);
    grid.removeRow(2);
    grid.removeRow(1);
    EXPECT_EQ(grid.row(), 0);
    grid.removeRow(1);
    EXPECT_EQ(grid.rowCount(), 0);
}

TEST_F(GridTest, SingleGridHasNoMarks) {
    Grid single{form, "li"};
    single.addColumn({.key = "a", .title = "A"});
    single.addRow({"x"});
    single.addRow({"y"});
    single.mark({1, 2});
    single.setMarked(1, true);
    single.choose(2);
    EXPECT_EQ(spalte(single, 1), "x >y");
    EXPECT_EQ(single.markedCount(), 0);
}

TEST_F(GridTest, UserVerbsRaiseEventsAndProgramOnesDoNot) {
    fill(Sort::Text, "a b");
    std::string log;
    grid.onRowChange = [&] { log += 'r'; };
    grid.onClick = [&] { log += 'c'; };
    grid.onDoubleClick = [&] { log += 'd'; };
    grid.onDelete = [&] { log += 'x'; };
    grid.onSorted = [&](int column) { log += std::to_string(column); };
    grid.onEdited = [&](int, int, const QString& text) { log += text.toStdString(); };
    grid.setRow(2);
    grid.sort(1, 2);
    grid.setCell(1, 1, "z");
    EXPECT_EQ(log, "");
    grid.choose(1);
    grid.mark({1, 2});
    grid.click();
    grid.sortByUser(1, 1);
    EXPECT_TRUE(grid.key(Key::Enter));
    EXPECT_TRUE(grid.key(Key::Delete));
    EXPECT_FALSE(grid.editByUser(1, 1, "nie"));
    grid.canEdit = [](int row, int) { return row == 2; };
    EXPECT_FALSE(grid.editByUser(1, 1, "nie"));
    EXPECT_TRUE(grid.editByUser(2, 1, "neu"));
    EXPECT_EQ(log, "rc1dxneu");
    EXPECT_EQ(grid.cell(2, u"WERT").toStdString(), "neu");
}

TEST_F(GridTest, FileKeepsColumnsAndEveryCharacter) {
    grid.addColumn({.key = "Nr", .title = "Nr.\tx", .align = Align::Right, .width = 70, .sort = Sort::Number});
    grid.addColumn({.key = "Tätowierung", .title = "Tät", .caption = "Lang", .technical = true});
    const QString strange = QString::fromUtf8("a\\tb\tc\r\nd € ő \u0085 \\u0041");
    grid.addRow({"1"});
    grid.setCell(1, 2, strange);
    grid.addRow({"2", "B\\"});
    ASSERT_TRUE(grid.save(run.path("gridli.txt")));
    Grid copy{form, "kopie"};
    ASSERT_TRUE(copy.load(run.path("gridli.txt")));
    ASSERT_EQ(copy.columnCount(), 2);
    EXPECT_TRUE(copy.column(1).title == grid.column(1).title && copy.column(1).align == Align::Right);
    EXPECT_TRUE(copy.column(1).width == 70 && copy.column(1).sort == Sort::Number);
    EXPECT_TRUE(copy.column(2).caption == "Lang" && copy.column(2).technical);
    EXPECT_EQ(copy.cell(1, u"tätowierung"), strange);
    EXPECT_EQ(copy.cell(2, 2), "B\\");
}

/// A separator is a property of the row; in the file alone it is told by its first cell.
TEST_F(GridTest, ASeparatorIsNoTextAndATextIsNoSeparator) {
    grid.addColumn({.key = "nr", .title = "Nr"});
    grid.addColumn({.key = "box", .title = "Box"});
    grid.addRow({".", "A\tB"});
    grid.addSeparator();
    grid.addRow({"..", ""});
    const auto separators = [](const Grid& g) {
        QString all;
        for (int row = 1; row <= g.rowCount(); ++row) all += g.isSeparator(row) ? u'-' : u'x';
        return all;
    };
    EXPECT_EQ(separators(grid), "x-x");
    EXPECT_EQ(grid.cell(2, 1) + grid.cell(2, 2), ".");
    Grid copy{form, "kopie"}, file{form, "datei"};
    copy.copy(grid);
    EXPECT_EQ(separators(copy), "x-x");
    EXPECT_EQ(copy.cell(1, 2), "A\tB");
    EXPECT_TRUE(grid.save(run.path("gridli.txt")) && file.load(run.path("gridli.txt")));
    EXPECT_EQ(separators(file), "--x");
    EXPECT_EQ(file.cell(1, 2), "A\tB");
    EXPECT_EQ(file.fileText(), copy.fileText());
}

TEST_F(GridTest, TypedCellsShowAsTheirColumnSaysAndSortByWhatTheyAre) {
    grid.addColumn({.key = "kg", .title = "kg", .sort = Sort::Number, .decimals = 1});
    grid.addColumn({.key = "tag", .title = "Tag", .sort = Sort::Date});
    const auto row = [&](Value kg, Value day) { grid.addValues({std::move(kg), std::move(day)}); };
    row(1234.56, QDate(2026, 12, 31));
    row(2, QDate(2026, 1, 2));
    row(Value(), Value());
    row(Money{125000}, QDate(2025, 2, 1));
    EXPECT_EQ(spalte(grid, 1), "1234,6 2,0  12,5");
    grid.sort(1, 1);
    EXPECT_EQ(spalte(grid, 1), " 2,0 12,5 1234,6");
    grid.sort(2, 1);
    EXPECT_EQ(spalte(grid, 2), " 01.02.2025 02.01.2026 31.12.2026");
    EXPECT_EQ(grid.value(2, u"kg"), Value(Money{125000}));
    grid.addRow({"SUMME", "x"});  // texts stand as they are
    EXPECT_EQ(grid.cell(5, 1), "SUMME");
}

TEST_F(GridTest, DamagedFileLeavesAnEmptyGrid) {
    grid.addColumn({.key = "a", .title = "A"});
    grid.addRow({"eins"});
    grid.addRow({"zwei"});
    const QString path = run.path("gridli.txt");
    ASSERT_TRUE(grid.save(path));
    const QByteArray whole = run.bytes("gridli.txt");
    for (qsizetype length = 0; length < whole.size(); ++length) {  // cut off anywhere
        run.write("gridli.txt", QString::fromLatin1(whole.left(length)));
        EXPECT_FALSE(grid.load(path)) << length;
        EXPECT_EQ(grid.columnCount() + grid.rowCount(), 0) << length;
    }
    for (const char* text : {"", "nichts", "KOBEN-Liste 1\t-1\t5\r\n", "KOBEN-Liste 1\t1\t0\r\nzu\tkurz\r\n",
                             "KOBEN-Liste 1\t0\t2000000000\r\n", "KOBEN-Liste 9\t0\t0\r\n"}) {
        run.write("gridli.txt", QString::fromUtf8(text));
        EXPECT_FALSE(grid.load(path)) << text;
    }
    EXPECT_FALSE(grid.load(run.path("fehlt.txt")));
    EXPECT_FALSE(grid.save(run.path("kein/ordner.txt")));
}

struct BoundGridTest : GridTest {
    Database db = run.koben.workspace.create(run.koben.Datenbankpfad);

    void SetUp() override {
        db.execute("create table Probe (ID LONG, Nummer TEXT(20), Datum DATETIME, Preis CURRENCY)");
        db.execute("insert into Probe (ID, Nummer, Datum, Preis) values (1, 'B10', #02/01/2026#, 2.5)");
        db.execute("insert into Probe (ID, Nummer, Datum, Preis) values (2, 'a2', #12/31/2025#, 10)");
        db.execute("insert into Probe (ID, Nummer) values (3, 'C')");
        grid.bind(db.table("select * from Probe order by ID"));
    }
};

TEST_F(BoundGridTest, ShowsTypedCellsAndSortsByType) {
    EXPECT_EQ(grid.columnCount(), 4);
    EXPECT_EQ(grid.column(4).align, Align::Right);
    EXPECT_EQ(spalte(grid, 3), "01.02.2026 31.12.2025 ");
    grid.sort(3, 1);
    EXPECT_EQ(spalte(grid, 1), "3 2 1");
    grid.sort(4, 2);
    EXPECT_EQ(spalte(grid, 4), "10 2,5 ");
    EXPECT_EQ(grid.value(1, u"preis").toMoney().tenThousandths, 100000);
    EXPECT_TRUE(grid.value(3, u"preis").isNull());
    EXPECT_EQ(grid.findText(u"nummer", "A2"), 1);
    EXPECT_EQ(grid.findLike(u"nummer", "b*"), 2);
    EXPECT_EQ(grid.findLike(u"fehlt", "*"), 0);
}

TEST_F(BoundGridTest, ChangedCellsAndAddedRowsJoinTheBoundOnes) {
    grid.setRow(2);
    grid.addRow({"SUMME", "", "", "12,5"});
    EXPECT_EQ(spalte(grid, 1), "1 >*2 3 SUMME");
    EXPECT_EQ(spalte(grid, 4), "2,5 >*10  12,5");
    grid.setCell(3, 3, "15.01.2026");
    grid.sort(3, 2);
    EXPECT_EQ(spalte(grid, 1), "1 3 >*2 SUMME");
}

TEST_F(BoundGridTest, ColumnsThatStandAreKeptWhereTheirKeysFit) {
    grid.column(2).width = 123;
    grid.bind(db.table("select Nummer, ID, Datum, Preis from Probe where ID = 2"));
    EXPECT_EQ(grid.column(2).width, 123);
    EXPECT_EQ(spalte(grid, 2), "a2");
    grid.bind(db.table("select Nummer from Probe"));
    EXPECT_EQ(grid.columnCount(), 1);
}

}  // namespace
}  // namespace koben

// The grid's file: any bytes are read or refused; what was read, saved and read again is the same list, and it can be
// used for all that lists are used for.
#include "output/Bericht_html.h"
#include "output/Textliste.h"
#include "tests/fuzz/Require.h"
#include "tests/support/Fakes.h"

namespace koben::fuzz {
namespace {

constexpr int Zeilen = 100;  // so many rows and columns are looked at
constexpr int Spalten = 40;

class Listenform : public Form {
public:
    explicit Listenform(Koben& koben_) : Form(koben_, "Liste", "Liste") {}
    Grid li{*this, "li", true};
};

void compareAll(const Grid& a, const Grid& b) {
    require(a.columnCount() == b.columnCount() && a.rowCount() == b.rowCount(), "another size");
    for (int i = 1; i <= a.columnCount(); ++i) {
        const Column &x = a.column(i), &y = b.column(i);
        require(x.key == y.key && x.title == y.title && x.caption == y.caption, "texts of a column", x.title);
        require(x.align == y.align && x.width == y.width && x.sort == y.sort && x.technical == y.technical, "a column",
                x.title);
    }
    for (int row = 1; row <= a.rowCount(); ++row)
        for (int i = 1; i <= a.columnCount(); ++i) require(a.cell(row, i) == b.cell(row, i), "a cell", a.cell(row, i));
}

void useForm(Grid& list, const QString& folder) {
    for (int row = 0; row <= std::min(list.rowCount() + 1, Zeilen); ++row)
        for (int i = 0; i <= std::min(list.columnCount() + 1, Spalten); ++i) list.cell(row, i);
    for (int i = 1; i <= std::min(list.columnCount(), Spalten); ++i) {
        const int rows = list.rowCount();
        list.sort(i, 1 + i % 2);
        require(list.rowCount() == rows && list.sortColumn() == i, "rows lost by sorting");
    }
    if (list.rowCount() > 0) list.choose(list.rowCount());
    Textliste(list, {.trenner = " | ", .datum = "15.07.2026", .kopf = "Liste"});
    if (list.rowCount() < Zeilen && list.columnCount() < Spalten)
        require(Bericht_schreiben(list, {}, folder), "no report");
    list.removeRow(1);
}

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben::fuzz;
    static const bool inMemory = qputenv("TMPDIR", QFileInfo(place()).path().toUtf8());
    require(inMemory, "no environment");
    static koben::TestRun run;
    const QString given = run.path(QStringLiteral("gridli.txt")), saved = run.path(QStringLiteral("wieder.txt"));
    writeFile(given, raw(data, size));
    Listenform form(run.koben), again(run.koben);
    if (!form.li.load(given)) {
        require(form.li.rowCount() == 0 && form.li.columnCount() == 0, "something of a refused file");
        return 0;
    }
    require(form.li.save(saved) && again.li.load(saved), "not read again");
    compareAll(form.li, again.li);
    const QByteArray bytes = readFile(saved);
    require(again.li.save(saved) && readFile(saved) == bytes, "saved otherwise");
    useForm(form.li, run.koben.Datenordner);
    return 0;
}

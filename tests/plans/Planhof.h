#pragma once
// A farm with a database and the forms of this folder, and its lists as text.
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "plans/PB_Arbeitsplan.h"
#include "plans/PV_Arbeitsplandaten.h"
#include "plans/PV_Arbeitsplandaten_Eingabe.h"
#include "tests/support/Fakes.h"

namespace koben {

/// Stands where the list screen opens.
class FakeZwischenliste : public Form {
public:
    explicit FakeZwischenliste(Koben& koben_) : Form(koben_, "PA_Zwischenliste", "Daten listen") {}
};

/// Titles and rows of a grid, cells joined by "|".
inline QStringList gridText(const Grid& grid) {
    QStringList lines;
    for (int row = 0; row <= grid.rowCount(); ++row) {
        QStringList cells;
        for (int c = 1; c <= grid.columnCount(); ++c)
            if (!grid.column(c).technical) cells += row == 0 ? grid.column(c).title : grid.cell(row, c);
        lines += cells.join(u'|');
    }
    return lines;
}

class Planhof : public TestRun {
public:
    Planhof() {
        catalogue.add<FakeZwischenliste>("PA_Zwischenliste");
        catalogue.add<PV_Arbeitsplandaten>("PV_Arbeitsplandaten");
        catalogue.add<PV_Arbeitsplandaten_Eingabe>("PV_Arbeitsplandaten_Eingabe");
        catalogue.add<PB_Arbeitsplan>("PB_Arbeitsplan");
        Datenbank_anlegen(koben.workspace, koben.Datenbankpfad);
        db = koben.connect();
    }

    /// Adds a row: texts as they are, dd.mm.yyyy as dates, "" as Null, `Kennung` as a number.
    void add(const QString& table, const std::map<QString, QString>& fields) {
        Recordset rows = db.open(QStringLiteral("select * from %1 where ID = 0").arg(table));
        rows.addNew();
        for (const auto& [name, text] : fields) {
            const QDate date = Datum_aus_Text(text);
            rows.set(name, text.isEmpty()      ? Value()
                           : date.isValid()    ? Value(date)
                           : name == "Kennung" ? Value(text.toInt())
                                               : Value(text));
        }
        rows.update();
    }

    /// What was handed to the list screen.
    QStringList handedOver() {
        FakeZwischenliste form(koben);
        Grid grid(form, "gridli");
        EXPECT_TRUE(grid.load(path("gridli.txt")));
        return gridText(grid);
    }

    /// Opens a form and works it.
    template <class F>
    void in(const QString& name, std::function<void(F&)> script) {
        screens.workIn<F>(std::move(script));
        koben.open(name);
    }

    Database db;
};

}  // namespace koben

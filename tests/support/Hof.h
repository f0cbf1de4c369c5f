#pragma once
// A farm: a run on a data folder with its database, and what a test does to its forms in a line.
#include <QRegularExpression>

#include "core/PZ_Koben_Subs_Datenbank.h"
#include "tests/support/Fakes.h"
#include "tests/support/Hand.h"

namespace koben {

/// Stands where the list screen opens.
struct Zwischenliste : Form {
    explicit Zwischenliste(Koben& koben_) : Form(koben_, "PA_Zwischenliste", "Daten listen") {}
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

/// How the refusal of an entry reads.
inline QString refusal(const QStringList& lines, const char* what = "Eingabe kann nicht übernommen werden") {
    return "! Die " + QString::fromUtf8(what) + ", weil...\r\n\r\n" + lines.join("\r\n");
}

class Hof : public TestRun {
public:
    /// A new database, or the data folder that another run made.
    explicit Hof(const QString& existingFolder = {}) {
        catalogue.add<Zwischenliste>("PA_Zwischenliste");
        if (existingFolder.isEmpty()) {
            Datenbank_anlegen(koben.workspace, koben.Datenbankpfad);
        } else {
            koben.Datenordner = platform.data = existingFolder;
            koben.Datenbankpfad = existingFolder + "koben2.mdb";
        }
        db = koben.connect();
        koben.workspace.onAction([this](const QString& name) { actions += name; });
    }
    ~Hof() { Workspace::setFaultHook({}); }

    /// Other arguments stand for %1, %2 ...
    template <class... A>
    void sql(QString text, const A&... values) {
        ((text = text.arg(values)), ...);
        db.execute(text);
    }
    /// Adds an animal; its ID counts from 1 in the order of adding. `more` as "Gruppe = 'A', Status = 'B'".
    void tier(const QString& number, const QString& art = "Sau", const QString& more = {}) {
        sql("insert into Sauen (Art, Nummer, Selektiert, Status) values ('" + art + "', '" + number + "', '', '')");
        if (!more.isEmpty()) sql("update Sauen set " + more + " where Nummer = '" + number + "'");
    }
    /// Rows of a select: cells joined by blanks, rows by " | ", Null as "-".
    QString show(const QString& select) const {
        const Table table = db.table(select);
        QStringList rows;
        for (int row = 0; row < table.rowCount(); ++row) {
            QStringList cells;
            for (int c = 0; c < table.columnCount(); ++c) cells += table.isNull(row, c) ? "-" : table.text(row, c);
            rows += cells.join(u' ');
        }
        return rows.join(" | ");
    }
    /// All rows of all tables.
    QString everything() const {
        QString all;
        for (const QString& table : db.tables()) all += table + ": " + show("select * from " + table) + u'\n';
        return all;
    }

    /// Opens a form and works it.
    template <class F>
    void in(const QString& name, std::function<void(F&)> script) {
        screens.workIn<F>(std::move(script));
        koben.open(name);
    }
    /// Messages, questions and tones of the log, without the forms that opened and closed.
    QStringList texts() {
        QStringList texts;
        for (const QString& line : screens.takeLog())
            if (!line.startsWith("+ ") && !line.startsWith("- ")) texts += line;
        return texts;
    }
    /// Whether just this was said since the last look, "*" standing for any text.
    testing::AssertionResult says(const QStringList& expected) {
        const QStringList said = texts();
        bool same = said.size() == expected.size();
        for (int i = 0; same && i < said.size(); ++i)
            same = QRegularExpression("^" + QRegularExpression::escape(expected[i]).replace("\\*", ".*") + "$",
                                      QRegularExpression::DotMatchesEverythingOption)
                       .match(said[i])
                       .hasMatch();
        return (same ? testing::AssertionSuccess() : testing::AssertionFailure()) << testing::PrintToString(said);
    }
    /// What was handed to the list screen.
    QStringList handedOver() {
        Zwischenliste form(koben);
        Grid grid(form, "gridli");
        EXPECT_TRUE(grid.load(path("gridli.txt")));
        return gridText(grid);
    }

    Database db;
    QStringList actions;  ///< names of the actions that reached the disk
};

}  // namespace koben

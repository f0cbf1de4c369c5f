#pragma once
// A farm: a run on a data folder with its database, and what a test does to its forms in a line.
#include <QRegularExpression>

#include "core/PZ_Koben_Subs_Datenbank.h"
#include "tests/support/Fakes.h"

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

/// The user goes into a field, types and leaves it; in a fixed list he chooses.
inline void eingeben(TextBox& field, const QString& text) {
    auto* list = dynamic_cast<ComboBox*>(&field);
    field.enter();
    if (list && list->fixed)
        list->choose(static_cast<int>(list->items().indexOf(text)));
    else
        field.type(text);
    field.leave();
}

/// A control of type C by its address: "tdat", "tz(1)".
template <class C>
C* steuer(const Form& form, const QString& address) {
    const QString index = address.section(u'(', 1).chopped(address.contains(u'(') ? 1 : 0);
    return dynamic_cast<C*>(form.find(address.section(u'(', 0, 0), index.isEmpty() ? -1 : index.toInt()));
}

inline TextBox& feld(const Form& form, const QString& address) {
    auto* found = steuer<TextBox>(form, address);
    return found ? *found : throw std::out_of_range(address.toStdString());
}

/// What the user does, "tdat=0907; tz(0)=8; ok(0)": enters into fields, clicks what has no text. Other arguments stand
/// for %1, %2 ...
template <class... A>
void tun(Form& form, QString steps, const A&... values) {
    ((steps = steps.arg(values)), ...);
    for (const QString& step : steps.split("; ")) {
        const QString address = step.section(u'=', 0, 0);
        if (step.contains(u'='))
            eingeben(feld(form, address), step.section(u'=', 1));
        else if (auto* button = steuer<Button>(form, address))
            button->click();
        else if (auto* option = steuer<Option>(form, address))
            option->click();
        else if (auto* box = steuer<CheckBox>(form, address))
            box->click();
        else
            ADD_FAILURE() << address.toStdString() << " cannot be clicked";
    }
}

/// The texts of fields, "tdat tz(0)", joined by "|".
inline QString zeigt(const Form& form, const QString& addresses) {
    QStringList texts;
    for (const QString& address : addresses.split(u' ')) texts += feld(form, address).text();
    return texts.join(u'|');
}

/// How the refusal of an entry reads.
inline QString Ablehnung(const QStringList& lines, const char* what = "Eingabe kann nicht übernommen werden") {
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
    QString zeige(const QString& select) const {
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
    QString stand() const {
        QString all;
        for (const QString& table : db.tables()) all += table + ": " + zeige("select * from " + table) + u'\n';
        return all;
    }

    /// Opens a form and works it.
    template <class F>
    void in(const QString& name, std::function<void(F&)> script) {
        screens.workIn<F>(std::move(script));
        koben.open(name);
    }
    /// Messages, questions and tones of the log, without the forms that opened and closed.
    QStringList texte() {
        QStringList texts;
        for (const QString& line : screens.takeLog())
            if (!line.startsWith("+ ") && !line.startsWith("- ")) texts += line;
        return texts;
    }
    /// Whether just this was said since the last look, "*" standing for any text.
    testing::AssertionResult sagt(const QStringList& expected) {
        const QStringList said = texte();
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

#pragma once
// A farm whose main form runs without a window; each test works it in a few lines.
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "herd/PA_Koben.h"
#include "herd/PB_Neues_Schwein.h"
#include "herd/PB_Selektieren.h"
#include "tests/support/Fakes.h"

namespace koben {

class Herdenhof : public TestRun {
public:
    /// A new database, or the data folder that another run made.
    explicit Herdenhof(const QString& existingFolder = {}) {
        catalogue.add<PA_Koben>("PA_Koben");
        catalogue.add<PB_Neues_Schwein>("PB_Neues_Schwein");
        catalogue.add<PB_Selektieren>("PB_Selektieren");
        if (existingFolder.isEmpty()) {
            Datenbank_anlegen(koben.workspace, koben.Datenbankpfad);
        } else {
            koben.Datenordner = platform.data = existingFolder;
            koben.Datenbankpfad = existingFolder + "koben2.mdb";
        }
        db = koben.connect();
    }
    ~Herdenhof() { Workspace::setFaultHook({}); }

    void sql(const QString& text) { db.execute(text); }
    /// Adds an animal; its ID counts from 1 in the order of adding. `more` as "Gruppe = 'A', Status = 'B'".
    void tier(const QString& number, const QString& art = "Sau", const QString& more = {}) {
        sql(QStringLiteral("insert into Sauen (Art, Nummer, Selektiert, Status) values ('%1', '%2', '', '')")
                .arg(art, number));
        if (!more.isEmpty()) sql(QStringLiteral("update Sauen set %1 where Nummer = '%2'").arg(more, number));
    }

    /// Starts the program, lets the script work the main form, and ends without the steps of closing.
    void start(std::function<void(PA_Koben&)> script) {
        screens.workIn<PA_Koben>(std::move(script));
        koben.open("PA_Koben");
        koben.ended = false;
    }
    /// A menu entry, with what the user does in the form that it opens.
    template <class F>
    void menue(PA_Koben& main, const char* entry, std::function<void(F&)> script) {
        screens.workIn<F>(std::move(script));
        menue(main, entry);
    }
    static void menue(PA_Koben& main, const char* entry) {
        auto* found = dynamic_cast<MenuEntry*>(main.find(QString::fromUtf8(entry)));
        ASSERT_NE(found, nullptr) << entry;
        ASSERT_TRUE(found->reachable()) << entry;
        found->click();
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
    /// Everything that the forms of this folder may write.
    QString stand() const {
        QStringList tables;
        for (const char* table : {"Sauen", "Ferkelverkauf", "Verluste", "Belegung", "Stammdaten_Gruppe",
                                  "Stammdaten_Stallnummer", "Stammdaten_Kunde"})
            tables += zeige("select * from " + QString::fromUtf8(table));
        return tables.join(u'\n');
    }
    /// Messages, questions and tones of the log, without the forms that opened and closed.
    QStringList texte() {
        QStringList texts;
        for (const QString& line : screens.takeLog())
            if (!line.startsWith("+ ") && !line.startsWith("- ")) texts += line;
        return texts;
    }

    Database db;
};

/// The numbers that the list shows, in its order.
inline QString nummern(const Grid& list) {
    QStringList numbers;
    for (int row = 1; row <= list.rowCount(); ++row) numbers += list.cell(row, u"Nummer");
    return numbers.join(u' ');
}
inline QString markiert(const Grid& list) {
    QStringList numbers;
    for (int row : list.markedRows()) numbers += list.cell(row, u"Nummer");
    return numbers.join(u' ');
}

/// The user goes into a field, types and leaves it.
inline void eingeben(TextBox& field, const QString& text) {
    field.enter();
    field.type(text);
    field.leave();
}
inline void wählen(ComboBox& list, const QString& text) {
    list.enter();
    list.choose(static_cast<int>(list.items().indexOf(text)));
    list.leave();
}

}  // namespace koben

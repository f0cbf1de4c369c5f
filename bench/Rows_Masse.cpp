// Work on very many animals at once, and on the whole file.
#include <QFile>
#include <numeric>

#include "bench/Floor.h"
#include "bench/Program.h"

namespace koben {
namespace {

/// The last piglets are marked and led as fattening pigs from now on, until the list stands anew.
Row fatten(const Sample& sample) {
    const qint64 first = sample.lastAnimal - Fattened;
    const QString which = QStringLiteral(" where ID > %1 and ID <= %2").arg(first).arg(sample.lastAnimal);
    const QString piglets = QStringLiteral("update Sauen set Art = 'Ferkel', Abgangsdatum = NULL") + which;
    return {QStringLiteral("piglets to fattening, 50,000"), seldom,
            [=](Program& p, Stopwatch& watch) {
                Database(p.koben().Hauptdatenbank).execute(piglets);
                p.showList();
                Grid& list = p.list();
                const int id = list.columnOf(u"ID");
                std::vector<int> rows;
                for (int row = 1; row <= list.rowCount(); ++row)
                    if (list.integer(row, id) > first) rows.push_back(row);
                list.mark(rows);
                watch.measure([&] {
                    control<MenuEntry>(p.mainForm(), "XB_Markierte_Ferkel_in_Mast").click();
                    look(list);
                });
                return list.rowCount();
            },
            [=](SqliteFile& file, Stopwatch& watch) {
                file.execute(piglets.toStdString());
                qint64 rows = 0;
                watch.measure([&] {
                    file.execute("UPDATE Sauen SET Art = 'Mast'" + which.toStdString());
                    rows = file.read(sqlfloor::stockList());
                });
                return rows;
            }};
}

/// A file of new sows; their ear tags are those of this run.
QString writeImportFile(const QString& folder, int run) {
    QByteArray text = "Art;Saunummer;Gruppe;Stallnummer;Ohrmarke;Geburtsdatum;Rasse;Zugangsdatum\r\n";
    for (int i = 1; i <= Imported; ++i) {
        const QByteArray number = QByteArray::number(run) + '-' + QByteArray::number(i);
        text += "Sau;I" + number + ";Zuchtsau;W" + QByteArray::number(i % 24 + 1) + ";DE " + number +
                ";18.04.2024;DL;01.02.2025\r\n";
    }
    const QString path = folder + QStringLiteral("/import.csv");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        throw std::runtime_error("cannot write the file to import");
    return path;
}

/// The lines of the file as the rows that the floor inserts.
std::vector<std::vector<std::string>> importRows(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read the file to import");
    std::vector<std::vector<std::string>> rows;
    file.readLine();
    while (!file.atEnd()) {
        auto& row = rows.emplace_back();
        for (const QByteArray& field : file.readLine().trimmed().split(';')) row.push_back(field.toStdString());
        for (const size_t date : {size_t{5}, size_t{7}})
            row[date] = row[date].substr(6) + '-' + row[date].substr(3, 2) + '-' + row[date].substr(0, 2);
    }
    return rows;
}

const char* const insertAnimal =
    "INSERT INTO Sauen (Art, Nummer, Gruppe, Stallnr, Ohrmarke, Geburtsdatum, Rasse, Zugangsdatum, Tätowierung, "
    "Lieferant, Abgangsgrund, Abnehmer, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, "
    "Status, Statusabfrage, Belegungsart, Mechanische_Amme, Zugangsgewicht_kg, Einkaufspreis, Zugangsgrund, "
    "Abgangsgewicht_kg, Verkaufspreis, Selektiert, Infos, Aenderung) SELECT ?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, '', "
    "'', '', '', 0, 0, 0, 0, '', 'N', '', 'N', 0, 0, '', 0, 0, '', '', '' WHERE NOT EXISTS (SELECT 1 FROM Sauen "
    "INDEXED BY boden_ohrmarke WHERE Ohrmarke = ?5 AND Ohrmarke <> '')";

/// Added to the herd, so that ear tags that are there already are passed over.
Row importAnimals() {
    return {
        QStringLiteral("import, 100,000 animals"), seldom,
        [run = 0](Program& p, Stopwatch& watch) mutable {
            const QString path = writeImportFile(p.folder(), ++run);
            Database db = p.koben().connect();
            p.open("S_Importtabelle", [&](Form& form) {
                p.file(path);
                control<Button>(form, "comöffnen").click();
                watch.measure([&] { control<Button>(form, "ok").click(); });
            });
            return db.table(QStringLiteral("select count(*) as n from Sauen where Nummer like 'I*-*'")).integer(0, 0);
        },
        [run = 0](SqliteFile& file, Stopwatch& watch) mutable {
            const QString path = writeImportFile(QStringLiteral(KOBEN_BENCH_CACHE), ++run);
            watch.measure([&] {
                file.execute("BEGIN IMMEDIATE");
                file.each(insertAnimal, importRows(path));
                file.execute("COMMIT");
            });
            QFile::remove(path);
            return file.numbers("SELECT count(*) FROM Sauen WHERE Nummer GLOB 'I*-*'").front();
        },
        Start::EachTime};
}

/// All animals ever are marked and selected, until the list stands anew.
Row selectAll() {
    return {QStringLiteral("selection of all animals ever"), seldom,
            [](Program& p, Stopwatch& watch) {
                p.show(2);
                Database(p.koben().Hauptdatenbank).execute(QStringLiteral("update Sauen set Selektiert = ''"));
                Grid& list = p.list();
                std::vector<int> rows(static_cast<size_t>(list.rowCount()));
                std::iota(rows.begin(), rows.end(), 1);
                list.mark(rows);
                watch.measure([&] {
                    control<MenuEntry>(p.mainForm(), "XB_markierteschweineselektieren").click();
                    look(list);
                });
                return list.rowCount();
            },
            [](SqliteFile& file, Stopwatch& watch) {
                file.execute("UPDATE Sauen SET Selektiert = ''");
                qint64 rows = 0;
                watch.measure([&] {
                    file.execute("UPDATE Sauen SET Selektiert = 'X'");
                    rows = file.read(sqlfloor::list(""));
                });
                return rows;
            }};
}

/// All numbers get one character more, until the list of stock stands anew. The floor keeps the index of the numbers
/// too, by their bytes instead of the order of German texts.
Row lengthenNumbers() {
    constexpr int shortest = 9;
    return {QStringLiteral("numbers of fixed length"), seldom,
            [length = shortest](Program& p, Stopwatch& watch) mutable {
                p.show(0);
                p.input(QString::number(length++));
                watch.measure([&] {
                    control<MenuEntry>(p.mainForm(), "XB_Feste_Saunummer_zuordnen").click();
                    look(p.list());
                });
                return p.list().rowCount();
            },
            [length = shortest](SqliteFile& file, Stopwatch& watch) mutable {
                const std::string n = std::to_string(length++);
                qint64 rows = 0;
                watch.measure([&] {
                    const std::string longer = "substr('000000000000000' || Nummer, -" + n + ")";
                    file.execute("UPDATE Sauen SET Nummer = " + longer + ", koben_key_Nummer = CAST(" + longer +
                                 " AS BLOB) WHERE length(Nummer) < " + n);
                    rows = file.read(sqlfloor::stockList());
                });
                return rows;
            }};
}

/// The tidied and checked copy that takes the place of the database.
Row compact() {
    return {QStringLiteral("compaction"), seldom,
            [](Program& p, Stopwatch& watch) {
                watch.measure([&] { control<MenuEntry>(p.mainForm(), "O_Datenbankkomprimieren").click(); });
                return 1;
            },
            [](SqliteFile& file, Stopwatch& watch) {
                const QString path = QStringLiteral(KOBEN_BENCH_CACHE "/komprimiert.mdb");
                QFile::remove(path);
                watch.measure([&] {
                    file.execute("VACUUM INTO '" + path.toStdString() + "'");
                    SqliteFile(path).numbers("PRAGMA integrity_check(1)");
                });
                QFile::remove(path);
                return 1;
            },
            Start::EachTime};
}

}  // namespace

std::vector<Row> Rows_Masse(const Sample& sample) {
    return {fatten(sample), importAnimals(),   withoutJournal(importAnimals()),
            selectAll(),    lengthenNumbers(), compact()};
}

}  // namespace koben

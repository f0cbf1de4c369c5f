// Work on very many animals at once, and on the whole file.
#include <QFile>
#include <numeric>

#include "bench/Boden.h"
#include "bench/Programm.h"

namespace koben {
namespace {

/// The last piglets are marked and led as fattening pigs from now on, until the list stands anew.
Zeile mast(const Probe& probe) {
    const qint64 first = probe.letztesTier - Mastzahl;
    const QString which = QStringLiteral(" where ID > %1 and ID <= %2").arg(first).arg(probe.letztesTier);
    const QString ferkel = QStringLiteral("update Sauen set Art = 'Ferkel', Abgangsdatum = NULL") + which;
    return {QStringLiteral("piglets to fattening, 50,000"), selten,
            [=](Programm& p, Uhr& uhr) {
                Database(p.koben().Hauptdatenbank).execute(ferkel);
                p.Liste_zeigen();
                Grid& list = p.liste();
                const int id = list.columnOf(u"ID");
                std::vector<int> rows;
                for (int row = 1; row <= list.rowCount(); ++row)
                    if (list.integer(row, id) > first) rows.push_back(row);
                list.mark(rows);
                uhr.messen([&] {
                    steuer<MenuEntry>(p.haupt(), "XB_Markierte_Ferkel_in_Mast").click();
                    anschauen(list);
                });
                return list.rowCount();
            },
            [=](Datei& datei, Uhr& uhr) {
                datei.ausfuehren(ferkel.toStdString());
                qint64 rows = 0;
                uhr.messen([&] {
                    datei.ausfuehren("UPDATE Sauen SET Art = 'Mast'" + which.toStdString());
                    rows = datei.lesen(boden::Bestandsliste());
                });
                return rows;
            }};
}

/// A file of new sows; their ear tags are those of this run.
QString Importdatei_schreiben(const QString& folder, int run) {
    QByteArray text = "Art;Saunummer;Gruppe;Stallnummer;Ohrmarke;Geburtsdatum;Rasse;Zugangsdatum\r\n";
    for (int i = 1; i <= Importzahl; ++i) {
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
std::vector<std::vector<std::string>> Importzeilen(const QString& path) {
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

const char* const einfuegen =
    "INSERT INTO Sauen (Art, Nummer, Gruppe, Stallnr, Ohrmarke, Geburtsdatum, Rasse, Zugangsdatum, Tätowierung, "
    "Lieferant, Abgangsgrund, Abnehmer, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, "
    "Status, Statusabfrage, Belegungsart, Mechanische_Amme, Zugangsgewicht_kg, Einkaufspreis, Zugangsgrund, "
    "Abgangsgewicht_kg, Verkaufspreis, Selektiert, Infos, Aenderung) SELECT ?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, '', "
    "'', '', '', 0, 0, 0, 0, '', 'N', '', 'N', 0, 0, '', 0, 0, '', '', '' WHERE NOT EXISTS (SELECT 1 FROM Sauen "
    "INDEXED BY boden_ohrmarke WHERE Ohrmarke = ?5 AND Ohrmarke <> '')";

/// Added to the herd, so that ear tags that are there already are passed over.
Zeile importieren() {
    return {
        QStringLiteral("import, 100,000 animals"), selten,
        [run = 0](Programm& p, Uhr& uhr) mutable {
            const QString path = Importdatei_schreiben(p.ordner(), ++run);
            Database db = p.koben().connect();
            p.oeffnen("S_Importtabelle", [&](Form& form) {
                p.datei(path);
                steuer<Button>(form, "comöffnen").click();
                uhr.messen([&] { steuer<Button>(form, "ok").click(); });
            });
            return db.table(QStringLiteral("select count(*) as n from Sauen where Nummer like 'I*-*'")).integer(0, 0);
        },
        [run = 0](Datei& datei, Uhr& uhr) mutable {
            const QString path = Importdatei_schreiben(QStringLiteral(KOBEN_BENCH_CACHE), ++run);
            uhr.messen([&] {
                datei.ausfuehren("BEGIN IMMEDIATE");
                datei.jede(einfuegen, Importzeilen(path));
                datei.ausfuehren("COMMIT");
            });
            QFile::remove(path);
            return datei.zahlen("SELECT count(*) FROM Sauen WHERE Nummer GLOB 'I*-*'").front();
        },
        Anlauf::JedesMal};
}

/// All animals ever are marked and selected, until the list stands anew.
Zeile auswaehlen() {
    return {QStringLiteral("selection of all animals ever"), selten,
            [](Programm& p, Uhr& uhr) {
                p.zeigen(2);
                Database(p.koben().Hauptdatenbank).execute(QStringLiteral("update Sauen set Selektiert = ''"));
                Grid& list = p.liste();
                std::vector<int> rows(static_cast<size_t>(list.rowCount()));
                std::iota(rows.begin(), rows.end(), 1);
                list.mark(rows);
                uhr.messen([&] {
                    steuer<MenuEntry>(p.haupt(), "XB_markierteschweineselektieren").click();
                    anschauen(list);
                });
                return list.rowCount();
            },
            [](Datei& datei, Uhr& uhr) {
                datei.ausfuehren("UPDATE Sauen SET Selektiert = ''");
                qint64 rows = 0;
                uhr.messen([&] {
                    datei.ausfuehren("UPDATE Sauen SET Selektiert = 'X'");
                    rows = datei.lesen(boden::liste(""));
                });
                return rows;
            }};
}

/// All numbers get one character more, until the list of stock stands anew.
Zeile verlaengern() {
    constexpr int shortest = 9;
    return {QStringLiteral("numbers of fixed length"), selten,
            [length = shortest](Programm& p, Uhr& uhr) mutable {
                p.zeigen(0);
                p.eingabe(QString::number(length++));
                uhr.messen([&] {
                    steuer<MenuEntry>(p.haupt(), "XB_Feste_Saunummer_zuordnen").click();
                    anschauen(p.liste());
                });
                return p.liste().rowCount();
            },
            [length = shortest](Datei& datei, Uhr& uhr) mutable {
                const std::string n = std::to_string(length++);
                qint64 rows = 0;
                uhr.messen([&] {
                    datei.ausfuehren("UPDATE Sauen SET Nummer = substr('000000000000000' || Nummer, -" + n +
                                     ") WHERE length(Nummer) < " + n);
                    rows = datei.lesen(boden::Bestandsliste());
                });
                return rows;
            }};
}

/// The tidied and checked copy that takes the place of the database.
Zeile komprimieren() {
    return {QStringLiteral("compaction"), selten,
            [](Programm& p, Uhr& uhr) {
                uhr.messen([&] { steuer<MenuEntry>(p.haupt(), "O_Datenbankkomprimieren").click(); });
                return 1;
            },
            [](Datei& datei, Uhr& uhr) {
                const QString path = QStringLiteral(KOBEN_BENCH_CACHE "/komprimiert.mdb");
                QFile::remove(path);
                uhr.messen([&] {
                    datei.ausfuehren("VACUUM INTO '" + path.toStdString() + "'");
                    Datei(path).zahlen("PRAGMA integrity_check(1)");
                });
                QFile::remove(path);
                return 1;
            },
            Anlauf::JedesMal};
}

}  // namespace

std::vector<Zeile> Zeilen_Masse(const Probe& probe) {
    return {mast(probe), importieren(), auswaehlen(), verlaengern(), komprimieren()};
}

}  // namespace koben

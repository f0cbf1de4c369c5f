// Work on very many animals at once: piglets led as fattening pigs, and the import.
#include <QFile>

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

}  // namespace

std::vector<Zeile> Zeilen_Masse(const Probe& probe) { return {mast(probe), importieren()}; }

}  // namespace koben

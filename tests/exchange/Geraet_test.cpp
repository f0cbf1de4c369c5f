// The files of the barn device: awkward lines of the one that comes back, and the one that goes out against a plain
// second writer.
#include "core/Einstellungen.h"
#include "exchange/Geraetedatei.h"
#include "exchange/Geraeteexport.h"
#include "tests/exchange/Importlauf.h"
#include "tools/herdengenerator/Output.h"

namespace koben {
namespace {

/// A file with these lines in one section, 0 to 7.
QByteArray file(int section, const QStringList& lines) {
    QString text;
    for (int i = 0; i < 8; ++i)
        text += i == section ? QStringLiteral(" %1 \r\n").arg(lines.size()) + lines.join("\r\n") + "\r\n" : "0\r\n";
    return nachWindows1252(text);
}

/// What is read: "line: fields; values" of each booking, or the problem.
QString read(const QByteArray& bytes) {
    const Geraetedatei file = Geraetedatei::read(bytes);
    QStringList found;
    for (const Geraetebuchung& booking : file.bookings()) {
        QStringList values;
        for (const auto& [column, value] : booking.values) values += value.toText();
        found += QString::number(booking.line) + ": " + booking.fields.join('|') + "; " + values.join('|');
    }
    return file.problem().isEmpty() ? found.join('\n') : file.problem();
}

TEST(Geraetedatei, eigenwilligeZeilen) {
    const QString service = "12\t1.2.26\tE\t1\tK\t\t0\t\t\tN", longText(30, 'x');
    const struct {
        const char* what;
        QByteArray bytes;
        QString read;
    } cases[] = {
        {"nothing", "0\n0\n 0 \n0\n0\n0\n0\n0", ""},
        {"no file", "", "Die Zeile 1 fehlt: hier sollte stehen, wie viele Zeilen der Art Belegung folgen."},
        {"end mark", "0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n\x1a", ""},
        {"as the device writes", file(0, {service + "\t\t", "13\t01.02.2026\tE\t1\tK\t\t0\t\t\t\t"}),
         "2: 12|01.02.2026|E|1|K||0||; 01.02.2026|E|1|K||0||"},
        {"another mark", file(0, {QString(service).chopped(1) + "n", QString(service) + "eu"}), ""},
        {"numbers", file(1, {"1\t1.2.26\t12,9\t 11x\t\t1.234,5\tabc\t\t\tN"}),
         "3: 1|01.02.2026|12,9| 11x||1.234,5|abc||; 01.02.2026|12|11|0|1,234|0||"},
        {"long texts", file(0, {"1\t1.2.26\t" + longText + "\t\tnein\t" + longText + "\t\t\t\tN"}),
         "2: 1|01.02.2026|" + longText + "||nein|" + longText + "|||; 01.02.2026|" + longText.left(15) + "|0|N|" +
             longText.left(20) + "|0||"},
        {"no day, no sow", file(0, {"1\tgestern" + service.mid(9), " " + service.mid(2)}),
         "2: 1|gestern|E|1|K||0||; \n3: |1.2.26|E|1|K||0||; "},
        {"days of waiting",
         file(6, {"1\t1.2.26\t\t\t\t\t\t0\t11.2.26\t\t\t\t\t\tN", "1\t1.2.26\t\t\t\t\t\t\t1.1.26\t\t\t\t\t\tN"}),
         "7: 1|01.02.2026||||||10|11.2.26|||||; 01.02.2026|||0|||10|11.02.2026|||0||\n"
         "8: 1|01.02.2026||||||0|1.1.26|||||; 01.02.2026|||0|||0|01.02.2026|||0||"},
        {"too short", file(0, {service, service.chopped(2)}),
         "Die Zeile 3 hat nur 9 Felder; eine Zeile der Art Belegung hat mindestens 10."},
        {"too few lines", file(0, {service}).replace(" 1 ", " 9 "),
         "Die Zeile 3 hat nur 1 Feld; eine Zeile der Art Belegung hat mindestens 10."},
        {"cut off", file(7, {}).append("0").replace(14, 8, " 2 \r\n"),
         "Die Zeile 7 fehlt: von 2 Zeilen der Art Verschiebung stehen nur 0 in der Datei."},
        {"no count", file(0, {service}).replace(" 1 ", "1,5"),
         "Die Zeile 1 sollte die Anzahl der Zeilen der Art Belegung nennen und ist keine Zahl."},
        {"a line more", file(7, {}) + service.toLatin1(),
         "Die Zeile 9 ist zu viel: die Zeilen davor sind alle, die die Datei zählt."},
        {"control character", file(0, {QString(service).replace('E', QChar(7))}),
         "Die Zeile 2 enthält ein Steuerzeichen."},
        {"number beyond its field", file(4, {"1\t1.2.26\t40000\t\t\t\t\tN"}),
         "Die Zeile 6 (Verluste) kann nicht übernommen werden: Der Wert 40000 ist zu groß für ganze Zahl (Feld "
         "\"Anzahl_Ferkel\")."},
        {"amount beyond its field", file(0, {"1\t1.2.26\tE\t1\tK\t\t99999999999999999999\t\t\tN"}),
         "Die Zeile 2 (Belegung) kann nicht übernommen werden: die Zahl 99999999999999999999 ist zu groß."},
        {"a million years", file(6, {"1\t1.2.26\t\t\t\t\t\t400000000\t\t\t\t\t\t\tN"}),
         "Die Zeile 8 (Behandlung) kann nicht übernommen werden: eine Wartezeit von 400000000 Tagen gibt es nicht."},
        {"pen too long", file(2, {"1\t1.2.26\t3\t\t\t\t12345678901\tN"}),
         "Die Zeile 4 (Absetzung) kann nicht übernommen werden: die Stallnummer 12345678901 ist länger als 10 "
         "Zeichen."},
    };
    for (const auto& c : cases) EXPECT_EQ(read(c.bytes), c.read) << c.what;
}

/// Position by position as the device expects it, a row at a time.
QStringList plainExport(const Database& db, const Exportauswahl& choice) {
    QStringList lines;
    const auto text = [](const Recordset& row, const QString& field) { return Hochkomma_ersetzen(row.value(field)); };
    const auto section = [&](const QString& sql, const QString& fields, const char* end, const QString& none) {
        QStringList found;
        for (Recordset rows = db.open(sql); !rows.eof(); rows.moveNext()) {
            QStringList cells;
            for (const QString& field : fields.split(' ')) cells += text(rows, field);
            found += cells.join('\t') + end;
        }
        lines += found.isEmpty() ? none : " " + QString::number(found.size()) + " ";
        lines += found;
    };
    const QString sows = choice.nurSauen ? " and Art = 'Sau'" : "",
                  since = " and Datum >= " + Sql_Datum(Datum_als_Anzeige(choice.ab));
    section("select * from Sauen where Abgangsdatum IS NULL" + sows + " order by " +
                (choice.sortierung == 2 ? "Stallnr, Nummer" : "Nummer"),
            "Art Nummer Stallnr Gruppe N_Belegung N_Ferkelung Geburtsdatum Anz_Belegungen Anz_Ferkelungen "
            "Anz_Ferkel_Lebend",
            "", "");
    lines += " 0 ";
    const std::pair<const char*, const char*> kinds[] = {
        {"Belegung", "Ebernr Deckanzahl Belegungsart Belegungsstation Kosten Kommentar Bemerkung"},
        {"Ferkelung", "Ferkel_Gesamt Ferkel_Lebendig Ferkel_Tot Stück_Gewicht_kg Kosten Kommentar Bemerkung"},
        {"Absetzung", "Anzahl_Ferkel Stück_Gewicht_kg Kommentar Bemerkung"},
        {"Trächtigkeit", "Trächtig Kosten Kommentar Bemerkung"},
        {"Verluste", "Anzahl_Ferkel Grund Kosten Kommentar Bemerkung"},
        {"Verschiebung", "Anzahl_Ferkel Zu_Saunr Kommentar Bemerkung"},
        {"Behandlung",
         "Behandlungsart Medikament Menge Einheit Verabreichungsart Wartezeit_Tage Wartezeit_Datum Tierarzt Beleg_Nr "
         "Kosten Kommentar Bemerkung"}};
    for (const auto& [table, fields] : kinds)
        section("select * from Sauen, " + QString(table) + " where Abgangsdatum IS NULL and Sauen.ID = " + table +
                    ".Kennung" + sows + (QString(table) == "Verschiebung" ? " and Anzahl_Ferkel > 0" : "") + since +
                    " order by " +
                    QStringList{"Sauen.Nummer, Datum", "Datum, Sauen.Nummer",
                                "Sauen.Stallnr, Sauen.Nummer, Datum"}[choice.sortierung],
                "Nummer Datum " + QString(fields), "\t\t", "0");
    section("select * from Ferkelverkauf where ID > 0" + since + " order by " +
                (choice.sortierung == 1 ? "Datum, Muttersau" : "Muttersau, Datum"),
            "Muttersau Datum Preis_je_Stück Anzahl_Einkauf Ausgaben Anzahl_Verkauf Einnahmen Stück_Gewicht_kg "
            "Gesamtgewicht_kg Kunde Kommentar",
            "\t\t", "0");
    return lines;
}

TEST(Geraeteexport, zufaelligeHerdenWieEinSchlichterZweiter) {
    for (quint64 seed = 1; seed <= 3; ++seed) {
        const TestRun run;
        writeDatabase(makeHerde({.sauen = 8, .jahre = 2, .seed = seed}), run.koben.Datenbankpfad);
        Workspace workspace;
        const Database db = workspace.open(run.koben.Datenbankpfad);
        const Exportauswahl choice{
            .nurSauen = seed == 2, .sortierung = static_cast<int>(seed % 3), .ab = QDate(2025, 9, 1)};
        QByteArray bytes;
        ASSERT_EQ(Geraetedaten_ausgeben(
                      db, choice, {}, [](int) { return true; }, bytes),
                  Exportergebnis::Done);
        const QStringList expected = plainExport(db, choice);
        EXPECT_GT(expected.size(), 100);
        EXPECT_EQ(ausWindows1252(bytes).split("\r\n").first(expected.size()), expected);
    }
}

}  // namespace
}  // namespace koben

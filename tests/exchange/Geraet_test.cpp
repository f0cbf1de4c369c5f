// The files of the barn device: awkward lines of the one that comes back, and the one that goes out against a plain
// second writer.
#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "exchange/Geraeteexport.h"
#include "exchange/Geraeteplan.h"
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
         "8: 1|01.02.2026||||||10|11.2.26|||||; 01.02.2026|||0|||10|11.02.2026|||0||\n"
         "9: 1|01.02.2026||||||0|1.1.26|||||; 01.02.2026|||0|||0|01.02.2026|||0||"},
        {"too short", file(0, {service, service.chopped(2)}),
         "Die Zeile 3 hat nur 9 Felder; eine Zeile der Art Belegung hat mindestens 10."},
        {"too few lines", file(0, {service}).replace(" 1 ", " 9 "),
         "Die Zeile 3 hat nur 1 Feld; eine Zeile der Art Belegung hat mindestens 10."},
        {"cut off", "0\n0\n0\n0\n0\n 2 \n",
         "Die Zeile 7 fehlt: von 2 Zeilen der Art Verschiebung stehen nur 0 in der Datei."},
        {"no count", file(0, {service}).replace(" 1 ", "1,5"),
         "Die Zeile 1 sollte die Anzahl der Zeilen der Art Belegung nennen und ist keine Zahl."},
        {"a line more", "0\n0\n0\n0\n0\n0\n0\n0\n\n" + service.toLatin1(),
         "Die Zeile 10 ist zu viel: die Zeilen davor sind alle, die die Datei zählt."},
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

/// What the plan adds gets numbers that neither the herd nor the plan has yet.
TEST(Geraeteplan, neueNummernSindFrei) {
    TestRun run;
    Datenbank_anlegen(run.koben.workspace, run.koben.Datenbankpfad);
    QByteArray bytes = " 3 \n";
    for (const QByteArray& sow : {QByteArray("9-1"), QByteArray("9-2"), QByteArray(16, 'y')})
        bytes += sow + "\t1.2.26\tE\t1\tK\t\t0\t\t\tN\n";
    bytes += "0\n 1 \n9-1\t1.2.26\t2\t\t\t\t9\tN\n0\n0\n0\n0\n0\n";
    const Geraetedatei file = Geraetedatei::read(bytes);
    EXPECT_EQ(planDeviceBookings(run.koben.connect(), file, true, [](const QString&) { return true; }).numbers,
              QStringList({"9-1", "9-2", QString(15, 'y'), "9-3", "9-4"}));
}

/// The whole file as the device expects it, written plainly: position by position, a row at a time.
class Plain {
public:
    Plain(const Database& db, const Exportauswahl& choice) : m_db(db), m_choice(choice) {}

    QStringList lines() {
        const QString sows = m_choice.nurSauen ? " and Art = 'Sau'" : "",
                      plain = m_choice.sortierung == 2 ? "Stallnr, Nummer" : "Nummer";
        section("select * from Sauen where Abgangsdatum IS NULL" + sows + " order by " + plain,
                "Art Nummer Stallnr Gruppe N_Belegung N_Ferkelung Geburtsdatum Anz_Belegungen Anz_Ferkelungen "
                "Anz_Ferkel_Lebend",
                "");
        m_lines += QStringList{" 2 ", "vom\tbis\t", ""};
        bookings("Belegung", "Ebernr Deckanzahl Belegungsart Belegungsstation Kosten Kommentar Bemerkung", sows);
        bookings("Ferkelung", "Ferkel_Gesamt Ferkel_Lebendig Ferkel_Tot Stück_Gewicht_kg Kosten Kommentar Bemerkung",
                 sows);
        bookings("Absetzung", "Anzahl_Ferkel Stück_Gewicht_kg Kommentar Bemerkung", sows);
        bookings("Trächtigkeit", "Trächtig Kosten Kommentar Bemerkung", sows);
        bookings("Verluste", "Anzahl_Ferkel Grund Kosten Kommentar Bemerkung", sows);
        bookings("Verschiebung", "Anzahl_Ferkel Zu_Saunr Kommentar Bemerkung", sows + " and Anzahl_Ferkel > 0");
        bookings("Behandlung",
                 "Behandlungsart Medikament Menge Einheit Verabreichungsart Wartezeit_Tage Wartezeit_Datum Tierarzt "
                 "Beleg_Nr Kosten Kommentar Bemerkung",
                 sows);
        section("select * from Ferkelverkauf where ID > 0" + since() + " order by " +
                    (m_choice.sortierung == 1 ? "Datum, Muttersau" : "Muttersau, Datum"),
                "Muttersau Datum Preis_je_Stück Anzahl_Einkauf Ausgaben Anzahl_Verkauf Einnahmen Stück_Gewicht_kg "
                "Gesamtgewicht_kg Kunde Kommentar",
                "\t\t");
        for (const char* list : {"Belegung Ebernr",        "Belegung Belegungsstation", "Belegung Kommentar",
                                 "Belegung Bemerkung",     "Ferkelung Kommentar",       "Ferkelung Bemerkung",
                                 "Absetzung Kommentar",    "Absetzung Bemerkung",       "Sauen Stallnr",
                                 "Trächtigkeit Kommentar", "Trächtigkeit Bemerkung",    "Verluste Grund",
                                 "Sauen Nummer",           "Verluste Kommentar",        "Verluste Bemerkung",
                                 "Verschiebung Kommentar", "Verschiebung Bemerkung",    "Behandlung Behandlungsart",
                                 "Behandlung Medikament",  "Behandlung Einheit",        "Behandlung Verabreichungsart",
                                 "Behandlung Tierarzt",    "Behandlung Beleg_Nr",       "Behandlung Kommentar",
                                 "Behandlung Bemerkung",   "Ferkelverkauf Kunde",       "Ferkelverkauf Kommentar"})
            values(QString(list), QString(list) == "Sauen Nummer" ? " where Abgangsdatum IS NULL" + sows : "");
        return m_lines;
    }

private:
    QString since() const {
        return m_choice.ab.isValid() ? " and Datum >= " + Sql_Datum(Datum_als_Anzeige(m_choice.ab)) : "";
    }
    void section(const QString& sql, const QString& fields, const char* end) {
        QStringList found;
        for (Recordset rows = m_db.open(sql); !rows.eof(); rows.moveNext()) {
            QStringList cells;
            for (const QString& field : fields.split(' ')) cells += Hochkomma_ersetzen(rows.value(field));
            found += cells.join('\t') + end;
        }
        m_lines += found.isEmpty() ? "0" : " " + QString::number(found.size()) + " ";
        m_lines += found;
    }
    void bookings(const QString& table, const char* fields, const QString& condition) {
        const QStringList orders{"Sauen.Nummer, Datum", "Datum, Sauen.Nummer", "Sauen.Stallnr, Sauen.Nummer, Datum"};
        section("select * from Sauen, " + table + " where Abgangsdatum IS NULL and Sauen.ID = " + table + ".Kennung" +
                    condition + since() + " order by " + orders[m_choice.sortierung],
                "Nummer Datum " + QString(fields), "\t\t");
    }
    void values(const QString& list, const QString& condition) {
        const QString table = list.section(' ', 0, 0), field = list.section(' ', 1);
        const Table rows = m_db.table("select distinct " + field + " from " + table + condition + " order by " + field);
        m_lines += " " + QString::number(rows.rowCount()) + " ";
        for (int row = 0; row < rows.rowCount(); ++row) m_lines += rows.isNull(row, 0) ? "Null" : rows.text(row, 0);
    }

    const Database& m_db;
    const Exportauswahl& m_choice;
    QStringList m_lines;
};

TEST(Geraeteexport, zufaelligeHerdenWieEinSchlichterZweiter) {
    for (quint64 seed = 1; seed <= 3; ++seed) {
        const TestRun run;
        writeDatabase(makeHerde({.sauen = 8, .jahre = 2, .seed = seed}), run.koben.Datenbankpfad);
        run.write("plan", "vom\tbis\t\r\n\r\n");
        Workspace workspace;
        Database db = workspace.open(run.koben.Datenbankpfad);
        for (const char* edge :
             {"update Sauen set Nummer = ' O''Neill ', Gruppe = Null where ID = 2",
              "update Belegung set Kommentar = ' d''r' where ID < 9",
              "update Behandlung set Tierarzt = Null where ID < 9", "delete from Absetzung",
              "insert into Ferkelverkauf (Datum, Preis_je_Stück, Kunde) values (#2026-01-02#, 12.3456, '')"})
            db.execute(edge);
        const Exportauswahl choice{.nurSauen = seed == 2,
                                   .sortierung = static_cast<int>(seed % 3),
                                   .ab = seed == 3 ? QDate() : QDate(2025, 9, 1)};
        QByteArray bytes;
        ASSERT_EQ(composeDeviceFile(
                      db, choice, run.path("plan"), [](int) { return true; }, bytes),
                  Exportergebnis::Done);
        EXPECT_EQ(ausWindows1252(bytes), Plain(db, choice).lines().join("\r\n") + "\r\n");
    }
}

}  // namespace
}  // namespace koben

// The barn device: the file that goes to it, and the bookings that come back.
#include <QFile>

#include "bench/Floor.h"
#include "bench/Program.h"
#include "store/Files.h"

namespace koben {
namespace {

constexpr int Returned = 500;  // bookings

/// The lists of choice of the device; those of an indexed field are found by leaps.
const std::vector<std::string>& valueLists() {
    static const std::vector<std::string> lists = [] {
        std::vector<std::string> all;
        for (const char* indexed :
             {"Sauen Stallnr", "Belegung Ebernr", "Belegung Belegungsstation", "Verluste Grund",
              "Behandlung Behandlungsart", "Behandlung Verabreichungsart", "Behandlung Tierarzt", "Belegung Kommentar",
              "Trächtigkeit Kommentar", "Ferkelung Kommentar", "Absetzung Kommentar", "Verschiebung Kommentar",
              "Verluste Kommentar", "Ferkelverkauf Kommentar", "Behandlung Kommentar"}) {
            const std::string text = indexed;
            all.push_back(sqlfloor::distinctValues(text.substr(0, text.find(' ')), text.substr(text.find(' ') + 1)));
        }
        for (const char* other :
             {"Bemerkung FROM Belegung", "Bemerkung FROM Ferkelung", "Bemerkung FROM Absetzung",
              "Bemerkung FROM Trächtigkeit", "Bemerkung FROM Verluste", "Bemerkung FROM Verschiebung",
              "Bemerkung FROM Behandlung", "Medikament FROM Behandlung", "Einheit FROM Behandlung",
              "Beleg_Nr FROM Behandlung", "Kunde FROM Ferkelverkauf", "Nummer FROM Sauen WHERE Abgangsdatum IS NULL"})
            all.push_back(std::string("SELECT DISTINCT ") + other + " ORDER BY 1");
        return all;
    }();
    return lists;
}

/// The program's file counts its lines; the floor writes the same fields without them.
Row exportAll(const Sample& sample, bool year) {
    static const std::pair<const char*, const char*> kinds[] = {
        {"Belegung", "Ebernr, Deckanzahl, s.Belegungsart, Belegungsstation, Kosten, Kommentar, Bemerkung"},
        {"Ferkelung", "Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot, Stück_Gewicht_kg, Kosten, Kommentar, Bemerkung"},
        {"Absetzung", "Anzahl_Ferkel, Stück_Gewicht_kg, Kommentar, Bemerkung"},
        {"Trächtigkeit", "Trächtig, Kosten, Kommentar, Bemerkung"},
        {"Verluste", "Anzahl_Ferkel, Grund, Kosten, Kommentar, Bemerkung"},
        {"Verschiebung", "Anzahl_Ferkel, Zu_Saunr, Kommentar, Bemerkung"},
        {"Behandlung",
         "b.Behandlungsart, Medikament, Menge, Einheit, Verabreichungsart, Wartezeit_Tage, Wartezeit_Datum, Tierarzt, "
         "Beleg_Nr, Kosten, Kommentar, Bemerkung"}};
    const std::string since = year ? " AND Datum >= " + sqlfloor::iso(sample.today.addDays(-365)) : std::string();
    return {QStringLiteral("export to the device, %1").arg(year ? "a year" : "everything"), seldom,
            [year](Program& p, Stopwatch& watch) {
                constexpr int counts = 37;  // lines that only count
                QFile::remove(p.koben().Datenordner + QStringLiteral("PB_Arbeitsplan_Pocket.txt"));
                p.open("PO_Pocketexport", [&](Form& form) {
                    if (!year) control<TextBox>(form, "tdat").setText({});
                    watch.measure([&] { control<Button>(form, "ok", 0).click(); });
                });
                QFile file(p.koben().Datenordner + QStringLiteral("KOBEN2_DATEN_ZU_POCKET.KO2"));
                if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("no file for the device");
                return file.readAll().count('\n') - counts;
            },
            [since](SqliteFile& file, Stopwatch& watch) {
                const QString path = QStringLiteral(KOBEN_BENCH_CACHE "/geraet.txt");
                qint64 rows = 0;
                watch.measure([&] {
                    rows = file.write(
                        "SELECT Art, Nummer, Stallnr, Gruppe, N_Belegung, N_Ferkelung, Geburtsdatum, Anz_Belegungen, "
                        "Anz_Ferkelungen, Anz_Ferkel_Lebend FROM Sauen WHERE Abgangsdatum IS NULL ORDER BY Nummer",
                        path);
                    for (const auto& [table, fields] : kinds)
                        rows += file.write(std::string("SELECT Nummer, Datum, ") + fields + " FROM " + table +
                                               " b JOIN Sauen s ON s.ID = b.Kennung WHERE s.Abgangsdatum IS NULL" +
                                               (table == std::string("Verschiebung") ? " AND Anzahl_Ferkel > 0" : "") +
                                               since + " ORDER BY Nummer, Datum",
                                           path);
                    rows += file.write(
                        "SELECT Muttersau, Datum, Preis_je_Stück, Anzahl_Einkauf, Ausgaben, Anzahl_Verkauf, Einnahmen, "
                        "Stück_Gewicht_kg, Gesamtgewicht_kg, Kunde, Kommentar FROM Ferkelverkauf WHERE 1" +
                            since + " ORDER BY Muttersau, Datum",
                        path);
                    for (const std::string& list : valueLists()) rows += file.write(list, path);
                });
                QFile::remove(path);
                return rows;
            }};
}

/// The device's file with a service of each of these sows on one day.
void writeServices(const QString& path, const QStringList& numbers, QDate day) {
    QString lines = QStringLiteral(" %1 \r\n").arg(numbers.size());
    for (const QString& number : numbers)
        lines += number + u'\t' + day.toString(QStringLiteral("dd.MM.yyyy")) +
                 QStringLiteral("\tPi 4711\t2\tK\tStation\t12,50\t\t\tN\r\n");
    lines += QStringLiteral("0\r\n").repeated(7);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(lines.toLatin1()) < 0)
        throw std::runtime_error("cannot write the device's file");
}

/// The floor's way of such a file into the services, and the list of them. The number of services.
qint64 bookServices(SqliteFile& file, const QString& from, const QString& list) {
    QFile in(from), out(list);
    if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly)) throw std::runtime_error("services");
    QByteArray told;
    qint64 rows = 0;
    file.execute("BEGIN IMMEDIATE");
    const auto insert = file.prepare(
        "INSERT INTO Belegung (Datum, Ebernr, Deckanzahl, Belegungart, Belegungsstation, Kosten, Kommentar, Bemerkung, "
        "Kennung) SELECT ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ID FROM Sauen s WHERE Nummer = ?1 AND Abgangsdatum IS NULL "
        "AND NOT EXISTS (SELECT 1 FROM Belegung WHERE Kennung = s.ID AND Datum = ?2)");
    for (in.readLine(); !in.atEnd();) {
        const QList<QByteArray> fields = in.readLine().split('\t');
        if (fields.size() < 9) continue;
        const QByteArray day = fields[1].mid(6) + '-' + fields[1].mid(3, 2) + '-' + fields[1].left(2);
        const auto text = [&](int place, const QByteArray& bytes) {
            sqlite3_bind_text(insert.get(), place, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_STATIC);
        };
        text(2, day);
        for (const int field : {0, 2, 4, 5, 7, 8}) text(field + 1, fields[field]);
        sqlite3_bind_int(insert.get(), 4, fields[3].toInt());
        sqlite3_bind_int64(insert.get(), 7,
                           static_cast<qint64>(QByteArray(fields[6]).replace(',', '.').toDouble() * 1e4));
        file.step(insert.get());
        told += fields.join('\t');
        ++rows;
    }
    file.execute("COMMIT");
    out.write(told);
    out.close();
    if (!flushFile(list).isEmpty()) throw std::runtime_error("flush");
    return rows;
}

const std::string sows = "Nummer FROM Sauen WHERE Art = 'Sau' AND Abgangsdatum IS NULL ORDER BY ID";

/// Services of as many sows on a day of this run, until the list of what was imported opens. The floor reads the file,
/// finds the sow, looks for a service on that day, inserts, and writes the list.
Row importServices(const Sample& sample) {
    return {QStringLiteral("import of %1 services from the device").arg(Returned), daily,
            [today = sample.today, run = 0](Program& p, Stopwatch& watch) mutable {
                const Table animals = p.koben().connect().table(QStringLiteral("select top %1 ").arg(Returned) +
                                                                QString::fromStdString(sows));
                QStringList numbers;
                for (int row = 0; row < animals.rowCount(); ++row) numbers += animals.text(row, 0);
                writeServices(p.koben().Datenordner + QStringLiteral("KOBEN2_DATEN_VON_POCKET.KO2"), numbers,
                              today.addDays(++run));
                p.when("PA_Textausgabe", [&](Form&) { watch.stop(); });
                p.open("PO_Pocketimport", [&](Form& form) {
                    watch.start();
                    control<Button>(form, "ok", 1).click();
                });
                p.when("PA_Textausgabe", [](Form&) {});
                return static_cast<qint64>(numbers.size());
            },
            [today = sample.today, run = 0](SqliteFile& file, Stopwatch& watch) mutable {
                const QString from = QStringLiteral(KOBEN_BENCH_CACHE "/von-geraet.ko2"),
                              list = QStringLiteral(KOBEN_BENCH_CACHE "/von-geraet.txt");
                QStringList numbers;
                for (const std::string& number : file.texts("SELECT " + sows + " LIMIT " + std::to_string(Returned)))
                    numbers += QString::fromStdString(number);
                writeServices(from, numbers, today.addDays(++run));
                qint64 rows = 0;
                watch.measure([&] { rows = bookServices(file, from, list); });
                return rows;
            }};
}

}  // namespace

std::vector<Row> Rows_Geraet(const Sample& sample) {
    return {exportAll(sample, true), exportAll(sample, false), importServices(sample)};
}

}  // namespace koben

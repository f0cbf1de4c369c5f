// The figures of the farm: the book of the sows read and computed from, and the screen that shows them.
#include "bench/Floor.h"
#include "bench/Program.h"
#include "figures/PA_Kennzahlen.h"
#include "figures/Reihe.h"

namespace koben {
namespace {

constexpr int Years = 13;             // rolling twelve months that today's page shows
constexpr double page = daily * 1.5;  // of today's page altogether

qint32 today(Program& p) { return Tag_aus_Text(p.koben().Heute); }

/// The rows that the book holds: sows that have not left before the day, their bookings, the newer losses.
qint64 readRows(SqliteFile& file, const std::string& day, bool losses) {
    const std::string sows = " FROM Sauen WHERE Art = 'Sau' AND (Abgangsdatum IS NULL OR Abgangsdatum >= " + day + ")";
    const std::string theirs = " WHERE Kennung >= (SELECT min(ID)" + sows + ")";
    file.read("SELECT Kennung, Datum FROM Belegung" + theirs);
    file.read("SELECT Kennung, Datum FROM Trächtigkeit" + theirs + " AND Trächtig = 'N'");
    file.read("SELECT Kennung, Datum, Anzahl_Ferkel FROM Absetzung" + theirs);
    file.read("SELECT Kennung, Datum, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot FROM Ferkelung");
    if (losses) file.read("SELECT Kennung, Datum, Anzahl_Ferkel FROM Verluste WHERE Datum >= " + day);
    return file.read("SELECT ID, Nummer, Zugangsdatum, Abgangsdatum" + sows);
}

}  // namespace

std::vector<Row> Rows_Kennzahlen(const Sample& sample) {
    const QDate month(sample.today.year(), sample.today.month(), 1);
    const std::string twoYears = sqlfloor::iso(month.addMonths(-2 * (Years - 1)));
    return {
        {QStringLiteral("figures: 13 rolling years, read anew"), page,
         [](Program& p, Stopwatch& watch) {
             const Database db = p.koben().connect();
             qint64 sows = 0;
             watch.measure([&] {
                 const auto years = rollende_Jahre(today(p), Years);
                 const Sauenbuch book(db, today(p), years.front().von, Lesen::OhneVerluste);
                 sows = Kennzahlen_berechnen(book, years).size() == Years ? std::ssize(book.sauen()) : 0;
             });
             return sows;
         },
         [twoYears](SqliteFile& file, Stopwatch& watch) {
             qint64 sows = 0;
             watch.measure([&] { sows = readRows(file, twoYears, false); });
             return sows;
         }},
        {QStringLiteral("figures: 13 rolling years, nothing booked"), page,
         [](Program& p, Stopwatch& watch) {
             const Database db = p.koben().connect();
             watch.measure([&] {
                 const auto years = rollende_Jahre(today(p), Years);
                 Kennzahlen_berechnen(*Sauenbuch_holen(db, today(p), years.front().von), years);
             });
             return qint64{1};
         },
         [](SqliteFile& file, Stopwatch& watch) {
             watch.measure([&] { file.read("SELECT max(ID) FROM Belegung"); });
             return qint64{1};
         }},
        {QStringLiteral("figures: a rate by week, ten years"), seldom,
         [](Program& p, Stopwatch& watch) {
             const Database db = p.koben().connect();
             const auto book = Sauenbuch_holen(db, today(p), 0);
             watch.measure([&] { Reihe(*book, Kz::Abferkelrate, Takt::Woche, {today(p) - 3650, today(p)}); });
             return qint64{1};
         },
         [](SqliteFile& file, Stopwatch& watch) {
             watch.measure([&] {
                 file.read("SELECT strftime('%W', Datum), count(*) FROM Belegung GROUP BY substr(Datum, 1, 4), 1");
             });
             return qint64{1};
         }},
        {QStringLiteral("figures: screen with early warning"), seldom,
         [](Program& p, Stopwatch& watch) {
             p.koben().connect().execute(QStringLiteral("update Verluste set Grund = Grund where ID = 1"));
             watch.start();
             p.open("PA_Kennzahlen", [&](Form& form) {
                 look(control<Grid>(form, "gridli"));
                 watch.stop();
             });
             return qint64{1};
         },
         [](SqliteFile& file, Stopwatch& watch) {
             watch.measure([&] { readRows(file, "'0100-01-01'", true); });
             return qint64{1};
         }},
    };
}

}  // namespace koben

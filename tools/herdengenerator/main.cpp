// koben-herdengenerator: makes a herd as a CSV file for the import, or as a database with years of bookings.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>
#include <limits>

#include "core/PZ_Koben_Subs.h"
#include "tools/herdengenerator/Output.h"

namespace koben {
namespace {

int fail(const QString& reason) {
    std::fprintf(stderr, "koben-herdengenerator: %s\n", reason.toUtf8().constData());
    return 1;
}

/// A whole number within bounds; false with a message where the option holds none.
bool read(const QCommandLineParser& parser, const char* name, int least, int most, int& value) {
    if (!parser.isSet(QString::fromUtf8(name))) return true;
    bool ok = false;
    value = parser.value(QString::fromUtf8(name)).toInt(&ok);
    if (ok && value >= least && value <= most) return true;
    fail(QStringLiteral("--%1 braucht eine ganze Zahl von %2 bis %3.")
             .arg(QString::fromUtf8(name))
             .arg(least)
             .arg(most));
    return false;
}

void describe(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        QStringLiteral("Erzeugt eine glaubhafte Sauenherde. Gleiche Angaben ergeben die gleiche Herde."));
    parser.addHelpOption();
    parser.addOptions(
        {{QStringLiteral("sauen"), QStringLiteral("Zahl der Sauenplätze (100)."), QStringLiteral("N")},
         {QStringLiteral("jahre"), QStringLiteral("Jahre mit Buchungen (3)."), QStringLiteral("J")},
         {QStringLiteral("seed"), QStringLiteral("Startwert des Zufalls (1)."), QStringLiteral("S")},
         {QStringLiteral("bis"), QStringLiteral("Letzter Tag der Bücher (15.07.2026)."), QStringLiteral("DATUM")},
         {QStringLiteral("csv"), QStringLiteral("Schreibt die Tiere als CSV-Datei."), QStringLiteral("FILE")},
         {QStringLiteral("datenbank"), QStringLiteral("Schreibt eine neue Datenbank."), QStringLiteral("FILE")},
         {QStringLiteral("ferkel-anteil"), QStringLiteral("Prozent der Ferkel mit eigener Zeile (100)."),
          QStringLiteral("P")},
         {QStringLiteral("kein-ferkel"), QStringLiteral("Keine Zeilen für abgesetzte Ferkel.")}});
}

int work(const QCommandLineParser& parser) {
    Vorgaben vorgaben;
    int seed = 1;
    if (!read(parser, "sauen", 1, 100000, vorgaben.sauen) || !read(parser, "jahre", 1, 30, vorgaben.jahre) ||
        !read(parser, "seed", 0, std::numeric_limits<int>::max(), seed) ||
        !read(parser, "ferkel-anteil", 0, 100, vorgaben.ferkelAnteil))
        return 1;
    vorgaben.seed = static_cast<quint64>(seed);
    if (parser.isSet(QStringLiteral("kein-ferkel"))) vorgaben.ferkelAnteil = 0;
    if (parser.isSet(QStringLiteral("bis"))) vorgaben.ende = Datum_aus_Text(parser.value(QStringLiteral("bis")));
    if (!vorgaben.ende.isValid()) return fail(QStringLiteral("--bis braucht ein Datum wie 15.07.2026."));
    const QString csv = parser.value(QStringLiteral("csv"));
    const QString database = parser.value(QStringLiteral("datenbank"));
    if (csv.isEmpty() && database.isEmpty())
        return fail(QStringLiteral("Bitte --csv FILE oder --datenbank FILE angeben."));
    if (QFileInfo::exists(database)) return fail(QStringLiteral("%1 ist schon vorhanden.").arg(database));

    const Herde herde = makeHerde(vorgaben);
    if (!csv.isEmpty() && !writeCsv(herde, csv))
        return fail(QStringLiteral("%1 kann nicht geschrieben werden.").arg(csv));
    if (!database.isEmpty()) writeDatabase(herde, database);
    return 0;
}

}  // namespace
}  // namespace koben

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    koben::describe(parser);
    parser.process(app);
    try {
        return koben::work(parser);
    } catch (const std::exception& error) {
        return koben::fail(QString::fromUtf8(error.what()));
    }
}

// koben-bench: how long a user of a large farm waits, and how near that is to what SQLite itself needs.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

#include "bench/Boden.h"
#include "bench/Programm.h"
#include "tools/herdengenerator/Ausgabe.h"

namespace koben {
namespace {

/// The farm's database, made once and kept.
QString hof(const Vorgaben& vorgaben) {
    QDir().mkpath(QStringLiteral(KOBEN_BENCH_CACHE));
    const QString path = QStringLiteral(KOBEN_BENCH_CACHE "/hof-%1-%2.mdb").arg(vorgaben.sauen).arg(vorgaben.jahre);
    if (QFile::exists(path)) return path;
    const Uhr uhr;
    const QString neu = path + QStringLiteral(".neu");
    QFile::remove(neu);
    Herde_in_Datenbank(Herde_erzeugen(vorgaben), neu);
    QFile::rename(neu, path);
    std::printf("Hof angelegt in %.1f s, %.0f MB\n", uhr.ms() / 1000, static_cast<double>(QFile(path).size()) / 1e6);
    return path;
}

/// A suckling sow, so that her status changes with a service, and a number far down the list.
Vorlage vorlage(const QString& path, int wiederholungen) {
    Workspace workspace;
    Database db = workspace.open(path);
    const Table sau = db.table(QStringLiteral(
        "select top 1 ID from Sauen where Art = 'Sau' and Abgangsdatum IS NULL and Status = 'S' order by ID DESC"));
    const Table letzte = db.table(
        QStringLiteral("select top 1 Nummer from Sauen where Art = 'Sau' and Abgangsdatum IS NULL order by ID DESC"));
    if (sau.rowCount() == 0) throw std::runtime_error("the farm has no suckling sow");
    return {letzte.text(0, 0), sau.integer(0, 0), wiederholungen};
}

void kopieren(const QString& from, const QString& to) {
    if (!QFile::copy(from, to)) throw std::runtime_error("cannot write " + to.toStdString());
}

void berichten(const Messung& programm, const Messung& boden) {
    const std::pair<Arbeit, const char*> zeilen[] = {
        {Arbeit::Start, "start to shown list"},    {Arbeit::Liste, "list reload"},
        {Arbeit::Suche, "search keystroke"},       {Arbeit::Belegung, "booking a service"},
        {Arbeit::Schliessen, "closing the frame"}, {Arbeit::Arbeitsplan, "work plan, four weeks"},
        {Arbeit::Mast, "piglets to fattening"}};
    std::printf("%-24s %12s %12s %8s %10s\n", "", "KOBEN ms", "SQLite ms", "ratio", "rows");
    for (const auto& [arbeit, name] : zeilen) {
        const double ms = programm.median(arbeit), floor = boden.median(arbeit);
        std::printf("%-24s %12.3f %12.3f %8.2f %10lld%s\n", name, ms, floor, floor > 0 ? ms / floor : 0,
                    static_cast<long long>(programm.zeilen(arbeit)),
                    programm.zeilen(arbeit) == boden.zeilen(arbeit) ? "" : "  (other rows than the floor)");
    }
}

int messen(const Vorgaben& vorgaben, int wiederholungen) {
    const QString path = hof(vorgaben);
    const Vorlage muster = vorlage(path, wiederholungen);
    const QTemporaryDir ordner(QStringLiteral(KOBEN_BENCH_CACHE "/lauf-XXXXXX"));
    kopieren(path, ordner.filePath(QStringLiteral("koben2.mdb")));
    const Messung programm = Programm_messen(ordner.path(), vorgaben.ende, muster);
    QFile::remove(ordner.filePath(QStringLiteral("koben2.mdb")));
    kopieren(path, ordner.filePath(QStringLiteral("boden.sqlite")));
    berichten(programm, Boden_messen(ordner.filePath(QStringLiteral("boden.sqlite")), vorgaben.ende, muster));
    return 0;
}

}  // namespace
}  // namespace koben

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions(
        {{QStringLiteral("sauen"), QStringLiteral("sows of the farm"), QStringLiteral("N"), QStringLiteral("5000")},
         {QStringLiteral("jahre"), QStringLiteral("years of bookings"), QStringLiteral("J"), QStringLiteral("10")},
         {QStringLiteral("mal"), QStringLiteral("repetitions"), QStringLiteral("N"), QStringLiteral("7")}});
    parser.process(app);
    koben::Vorgaben vorgaben;
    vorgaben.sauen = std::clamp(parser.value(QStringLiteral("sauen")).toInt(), 20, 100000);
    vorgaben.jahre = std::clamp(parser.value(QStringLiteral("jahre")).toInt(), 1, 30);
    try {
        return koben::messen(vorgaben, std::clamp(parser.value(QStringLiteral("mal")).toInt(), 1, 1000));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "koben-bench: %s\n", error.what());
        return 1;
    }
}

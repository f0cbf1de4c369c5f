// koben-bench: how long a user of a large farm waits, and how near that is to what SQLite itself needs.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <cstdio>

#include "bench/Lauf.h"
#include "tools/herdengenerator/Ausgabe.h"

namespace koben {
namespace {

/// The farm's database, made once and kept.
QString hof(const Vorgaben& vorgaben) {
    QDir().mkpath(QStringLiteral(KOBEN_BENCH_CACHE));
    const QString path = QStringLiteral(KOBEN_BENCH_CACHE "/hof-%1-%2.mdb").arg(vorgaben.sauen).arg(vorgaben.jahre);
    if (QFile::exists(path)) return path;
    Uhr uhr;
    const QString neu = path + QStringLiteral(".neu");
    for (const char* rest : {"", "-wal", "-shm"}) QFile::remove(neu + QString::fromUtf8(rest));  // of a run cut off
    uhr.messen([&] { Herde_in_Datenbank(Herde_erzeugen(vorgaben), neu); });
    QFile::rename(neu, path);
    std::printf("Hof angelegt in %.1f s, %.0f MB\n", uhr.ms() / 1000, static_cast<double>(QFile(path).size()) / 1e6);
    return path;
}

}  // namespace
}  // namespace koben

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");  // documents are painted, and nobody looks
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions(
        {{QStringLiteral("sauen"), QStringLiteral("sows of the farm"), QStringLiteral("N"), QStringLiteral("5000")},
         {QStringLiteral("jahre"), QStringLiteral("years of bookings"), QStringLiteral("J"), QStringLiteral("10")},
         {QStringLiteral("mal"), QStringLiteral("repetitions"), QStringLiteral("N"), QStringLiteral("7")},
         {QStringLiteral("nur"), QStringLiteral("only rows whose name contains this, or one of several parted by |"),
          QStringLiteral("TEXT")},
         {QStringLiteral("ohne-boden"), QStringLiteral("the program alone, for a profiler")}});
    parser.process(app);
    koben::Vorgaben vorgaben;
    vorgaben.sauen = std::clamp(parser.value(QStringLiteral("sauen")).toInt(), 20, 100000);
    vorgaben.jahre = std::clamp(parser.value(QStringLiteral("jahre")).toInt(), 1, 30);
    try {
        koben::messen({.hof = koben::hof(vorgaben),
                       .nur = parser.value(QStringLiteral("nur")),
                       .mal = std::clamp(parser.value(QStringLiteral("mal")).toInt(), 1, 1000),
                       .boden = !parser.isSet(QStringLiteral("ohne-boden"))},
                      vorgaben.ende);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "koben-bench: %s\n", error.what());
        return 1;
    }
}

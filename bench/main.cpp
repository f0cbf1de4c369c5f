// koben-bench: how long a user of a large farm waits, and how near that is to what SQLite itself needs.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <cstdio>

#include "bench/Run.h"
#include "tools/herdengenerator/Output.h"

namespace koben {
namespace {

/// The farm's database, made once and kept.
QString farm(const Vorgaben& farmOptions) {
    QDir().mkpath(QStringLiteral(KOBEN_BENCH_CACHE));
    const QString path =
        QStringLiteral(KOBEN_BENCH_CACHE "/hof-%1-%2.mdb").arg(farmOptions.sauen).arg(farmOptions.jahre);
    if (QFile::exists(path)) return path;
    Stopwatch watch;
    const QString fresh = path + QStringLiteral(".neu");
    for (const char* suffix : {"", "-wal", "-shm"})
        QFile::remove(fresh + QString::fromUtf8(suffix));  // of a run cut off
    watch.measure([&] { writeDatabase(makeHerde(farmOptions), fresh); });
    QFile::rename(fresh, path);
    std::printf("Hof angelegt in %.1f s, %.0f MB\n", watch.ms() / 1000, static_cast<double>(QFile(path).size()) / 1e6);
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
    koben::Vorgaben farmOptions;
    farmOptions.sauen = std::clamp(parser.value(QStringLiteral("sauen")).toInt(), 20, 100000);
    farmOptions.jahre = std::clamp(parser.value(QStringLiteral("jahre")).toInt(), 1, 30);
    try {
        koben::measure({.farm = koben::farm(farmOptions),
                        .only = parser.value(QStringLiteral("nur")),
                        .repeats = std::clamp(parser.value(QStringLiteral("mal")).toInt(), 1, 1000),
                        .floor = !parser.isSet(QStringLiteral("ohne-boden"))},
                       farmOptions.ende);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "koben-bench: %s\n", error.what());
        return 1;
    }
}

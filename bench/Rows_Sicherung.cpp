// The backup with its proof, and the way back.
#include <QDir>
#include <QFile>

#include "bench/Floor.h"
#include "bench/Program.h"
#include "store/Files.h"

namespace koben {
namespace {

constexpr int level = 6;  // of zlib, as the program packs
constexpr qint64 atOnce = 1 << 20;

QString cached(const char* name) { return QStringLiteral(KOBEN_BENCH_CACHE "/") + QString::fromUtf8(name); }

void onDisk(QFile& file) {
    file.close();
    if (!flushFile(file.fileName()).isEmpty()) throw std::runtime_error("flush");
}

/// A file through zlib into another one, piece by piece, each behind its length, and onto the disk.
void pack(const QString& from, const QString& to) {
    QFile in(from), out(to);
    if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly)) throw std::runtime_error("pack");
    while (!in.atEnd()) {
        const QByteArray piece = qCompress(in.read(atOnce), level);
        const qint64 size = piece.size();
        out.write(reinterpret_cast<const char*>(&size), sizeof size);
        out.write(piece);
    }
    onDisk(out);
}

/// Back into a file, or only through the checksums where `to` is "".
void unpack(const QString& from, const QString& to, bool flush = false) {
    QFile in(from), out(to);
    if (!in.open(QIODevice::ReadOnly) || (!to.isEmpty() && !out.open(QIODevice::WriteOnly)))
        throw std::runtime_error("unpack");
    for (qint64 size = 0; in.read(reinterpret_cast<char*>(&size), sizeof size) == sizeof size;) {
        const QByteArray piece = qUncompress(in.read(size));
        if (!to.isEmpty()) out.write(piece);
    }
    if (flush) onDisk(out);
}

/// The file copied as it lies there, and packed.
void copyAndPack(SqliteFile& file) {
    file.execute("PRAGMA wal_checkpoint(TRUNCATE)");
    const QString path = QString::fromStdString(file.texts("SELECT file FROM pragma_database_list").front());
    for (const char* old : {"kopie.mdb", "gepackt", "zurueck.mdb"}) QFile::remove(cached(old));
    if (!QFile::copy(path, cached("kopie.mdb"))) throw std::runtime_error("copy");
    pack(cached("kopie.mdb"), cached("gepackt"));
}

void check() { SqliteFile(cached("zurueck.mdb")).numbers("PRAGMA integrity_check(1)"); }

void click(Form& form, const char* button) { control<Button>(form, button).click(); }

void backUp(Program& p, Stopwatch* watch) {
    p.open("S_Datensicherung_neu", [&](Form& form) {
        click(form, "start_sicherung");
        click(form, "weiter_laufwerkwahl");
        const auto make = [&] { click(form, "weiter_backuperstellen"); };
        watch ? watch->measure(make) : make();
    });
}

/// "Weiter" until the ZIP of the day is written, read back and checked.
Row backup() {
    return {QStringLiteral("backup with proof"), seldom,
            [](Program& p, Stopwatch& watch) {
                backUp(p, &watch);
                return 1;
            },
            [](SqliteFile& file, Stopwatch& watch) {
                watch.measure([&] {
                    copyAndPack(file);
                    unpack(cached("gepackt"), cached("zurueck.mdb"));
                    check();
                });
                return 1;
            }};
}

/// "Weiter" until the files of a backup are in their places: unpacked, checked, the present state kept as a ZIP.
Row restore() {
    return {QStringLiteral("backup read back"), seldom,
            [](Program& p, Stopwatch& watch) {
                backUp(p, nullptr);
                p.open("S_Datensicherung_neu", [&](Form& form) {
                    click(form, "start_rettung");
                    control<ListBox>(form, "backups").setCurrent(0);
                    watch.measure([&] { click(form, "weiter_backuprettung"); });
                });
                return 1;
            },
            [](SqliteFile& file, Stopwatch& watch) {
                copyAndPack(file);
                watch.measure([&] {
                    unpack(cached("gepackt"), cached("zurueck.mdb"), true);
                    check();
                    copyAndPack(file);
                    unpack(cached("gepackt"), {});
                });
                return 1;
            },
            Start::EachTime};
}

}  // namespace

std::vector<Row> Rows_Sicherung(const Sample&) { return {backup(), restore()}; }

}  // namespace koben

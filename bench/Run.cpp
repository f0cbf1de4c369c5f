#include "bench/Run.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <numeric>

#include "bench/Floor.h"
#include "bench/Program.h"

namespace koben {
namespace {

constexpr double enoughMs = 4000;  // so long the counted repetitions of one side may take together

double median(std::vector<double> times) {
    if (times.empty()) return 0;
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

/// One side of a row.
struct Side {
    std::vector<double> durations, cpu;
    qint64 rows = 0;

    double sum() const { return std::accumulate(durations.begin(), durations.end(), 0.0); }
};

/// Repeats until `enough`, the first time without counting; `environment` gives the work what it works on.
template <class Environment, class Work>
Side repeat(Start start, const Environment& environment, const Work& work,
            const std::function<bool(const Side&)>& enough) {
    Side side;
    bool warm = false;
    const auto once = [&](auto& subject) {
        Stopwatch watch;
        side.rows = work(subject, watch);
        if (warm) side.durations.push_back(watch.ms()), side.cpu.push_back(watch.cpu());
        warm = true;
    };
    if (start == Start::Once)
        environment([&](auto& subject) {
            while (!enough(side)) once(subject);
        });
    else
        while (!enough(side)) environment(once);
    return side;
}

/// Memory of the process in MB by the name of its line, 0 where the system does not tell.
double memory(const char* line) {
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& text : file.readAll().split('\n'))
        if (text.startsWith(line))
            return text.mid(text.indexOf(':') + 1).trimmed().split(' ').front().toDouble() / 1024;
    return 0;
}

/// From now on the highest memory is that of what follows.
void forgetPeak() {
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly)) file.write("5");
}

void copyFile(const QString& from, const QString& to) {
    if (!QFile::copy(from, to)) throw std::runtime_error("cannot write " + to.toStdString());
}

Sample takeSample(const QString& path, QDate today) {
    Workspace workspace;
    const Database db = workspace.open(path);
    const auto first = [&](const QString& sql) {
        const Table table = db.table(sql);
        if (table.rowCount() == 0) throw std::runtime_error("the farm has no animal for the trial");
        return table.value(0, 0);
    };
    const auto sow = QStringLiteral(" from Sauen where Art = 'Sau' and Abgangsdatum IS NULL");
    Sample sample;
    sample.today = today;
    sample.sau = first(QStringLiteral("select top 1 ID%1 and Status = 'S' order by ID").arg(sow)).toInt();
    sample.number = first(QStringLiteral("select top 1 Nummer%1 order by ID DESC").arg(sow)).toText();
    sample.partner = first(QStringLiteral("select top 1 Nummer%1 and ID <> %2").arg(sow).arg(sample.sau)).toText();
    sample.lastAnimal = first(QStringLiteral("select max(ID) as m from Sauen")).toInt();
    return sample;
}

void printHead() {
    std::printf("%-38s %9s %9s %6s %6s %9s %9s %6s %8s %7s %7s\n", "", "KOBEN ms", "SQLite ms", "ratio", "limit",
                "KOBEN cpu", "SQL cpu", "ratio", "rows", "peak MB", "now MB");
}

double ratio(double above, double below) { return below > 0 ? above / below : 0; }

void print(const Row& row, const Side& program, const Side& floor, double peak, double now) {
    const double ms = median(program.durations), floorMs = median(floor.durations);
    const double cpu = median(program.cpu), floorCpu = median(floor.cpu);
    std::printf("%-38s %9.2f %9.2f %6.2f %6.0f %9.2f %9.2f %6.2f %8lld %7.0f %7.0f%s%s\n",
                row.name.toUtf8().constData(), ms, floorMs, ratio(ms, floorMs), row.limit, cpu, floorCpu,
                ratio(cpu, floorCpu), static_cast<long long>(program.rows), peak, now, ms > row.limit ? "  MISSES" : "",
                floor.durations.empty() || program.rows == floor.rows ? "" : "  (other rows than the floor)");
    std::fflush(stdout);
}

bool wanted(const Row& row, const QString& only) {
    const QStringList parts = only.split(u'|');
    return std::any_of(parts.begin(), parts.end(),
                       [&](const QString& part) { return row.name.contains(part, Qt::CaseInsensitive); });
}

/// Both sides of a row, and what it says. The floor repeats as often as the program, so that both files stay alike.
bool measureRow(const Row& row, Program& program, const QString& floor, int repeats) {
    forgetPeak();
    double peak = 0, now = 0;
    const Side above = repeat(
        row.start,
        [&](const auto& work) {
            program.run([&] {
                work(program);
                peak = memory("VmHWM");
                now = memory("VmRSS");
            });
        },
        row.program,
        [&](const Side& s) { return static_cast<int>(s.durations.size()) >= repeats || s.sum() > enoughMs; });
    Side below;
    if (!floor.isEmpty())
        below = repeat(
            row.start,
            [&](const auto& work) {
                SqliteFile file(floor);
                work(file);
            },
            row.floor, [&](const Side& s) { return s.durations.size() >= above.durations.size(); });
    print(row, above, below, peak, now);
    return median(above.durations) <= row.limit;
}

}  // namespace

int measure(const RunOptions& options, QDate today) {
    const QTemporaryDir folder(QStringLiteral(KOBEN_BENCH_CACHE "/lauf-XXXXXX"));
    const QString above = folder.filePath(QStringLiteral("koben2.mdb"));
    copyFile(options.farm, above);
    const Sample sample = takeSample(above, today);  // of the copy: to open a file may bring it up to date
    QString floor;
    if (options.floor) {
        QDir(folder.path()).mkdir(QStringLiteral("boden"));  // the program's backup packs what lies beside its database
        floor = folder.filePath(QStringLiteral("boden/boden.sqlite"));
        copyFile(options.farm, floor);
        prepareFloor(floor);
    }
    Program program(folder.path(), today);
    program.run([] {});  // makes the settings
    printHead();
    int misses = 0;
    for (const auto& theme :
         {Rows_Liste, Rows_Zyklus, Rows_Plan, Rows_Tagesblick, Rows_Zahlen, Rows_Kennzahlen, Rows_Grafiken, Rows_Papier,
          Rows_Gruppen, Rows_Buchung, Rows_Ferkel, Rows_Geraet, Rows_Masse, Rows_Sicherung, Rows_Altdaten})
        for (const Row& row : theme(sample))
            if (wanted(row, options.only)) misses += !measureRow(row, program, floor, options.repeats);
    std::printf("%d rows miss their limit\n", misses);
    return misses;
}

}  // namespace koben

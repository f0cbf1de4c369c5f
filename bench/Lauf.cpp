#include "bench/Lauf.h"

#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <numeric>

#include "bench/Boden.h"
#include "bench/Programm.h"

namespace koben {
namespace {

constexpr double genugMs = 4000;  // so long the counted repetitions of one side may take together

double median(std::vector<double> times) {
    if (times.empty()) return 0;
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

/// One side of a row.
struct Seite {
    std::vector<double> zeiten, cpu;
    qint64 zeilen = 0;

    double summe() const { return std::accumulate(zeiten.begin(), zeiten.end(), 0.0); }
};

/// Repeats until `genug`, the first time without counting; `umgebung` gives the work what it works on.
template <class Environment, class Work>
Seite wiederholen(Anlauf anlauf, const Environment& umgebung, const Work& work,
                  const std::function<bool(const Seite&)>& genug) {
    Seite seite;
    bool warm = false;
    const auto einmal = [&](auto& worauf) {
        Uhr uhr;
        seite.zeilen = work(worauf, uhr);
        if (warm) seite.zeiten.push_back(uhr.ms()), seite.cpu.push_back(uhr.cpu());
        warm = true;
    };
    if (anlauf == Anlauf::Einmal)
        umgebung([&](auto& worauf) {
            while (!genug(seite)) einmal(worauf);
        });
    else
        while (!genug(seite)) umgebung(einmal);
    return seite;
}

/// Memory of the process in MB by the name of its line, 0 where the system does not tell.
double speicher(const char* line) {
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& text : file.readAll().split('\n'))
        if (text.startsWith(line))
            return text.mid(text.indexOf(':') + 1).trimmed().split(' ').front().toDouble() / 1024;
    return 0;
}

/// From now on the highest memory is that of what follows.
void Speicherspitze_vergessen() {
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly)) file.write("5");
}

void kopieren(const QString& from, const QString& to) {
    if (!QFile::copy(from, to)) throw std::runtime_error("cannot write " + to.toStdString());
}

Probe Probe_nehmen(const QString& path, QDate heute) {
    Workspace workspace;
    const Database db = workspace.open(path);
    const auto erste = [&](const QString& sql) {
        const Table table = db.table(sql);
        if (table.rowCount() == 0) throw std::runtime_error("the farm has no animal for the trial");
        return table.value(0, 0);
    };
    const auto sow = QStringLiteral(" from Sauen where Art = 'Sau' and Abgangsdatum IS NULL");
    Probe probe;
    probe.heute = heute;
    probe.sau = erste(QStringLiteral("select top 1 ID%1 and Status = 'S' order by ID").arg(sow)).toInt();
    probe.nummer = erste(QStringLiteral("select top 1 Nummer%1 order by ID DESC").arg(sow)).toText();
    probe.partner = erste(QStringLiteral("select top 1 Nummer%1 and ID <> %2").arg(sow).arg(probe.sau)).toText();
    probe.letztesTier = erste(QStringLiteral("select max(ID) as m from Sauen")).toInt();
    return probe;
}

void Kopf_drucken() {
    std::printf("%-38s %9s %9s %6s %6s %9s %9s %6s %8s %7s %7s\n", "", "KOBEN ms", "SQLite ms", "ratio", "limit",
                "KOBEN cpu", "SQL cpu", "ratio", "rows", "peak MB", "now MB");
}

double verhaeltnis(double above, double below) { return below > 0 ? above / below : 0; }

void drucken(const Zeile& zeile, const Seite& programm, const Seite& boden, double peak, double now) {
    const double ms = median(programm.zeiten), floor = median(boden.zeiten);
    const double cpu = median(programm.cpu), floorCpu = median(boden.cpu);
    std::printf("%-38s %9.2f %9.2f %6.2f %6.0f %9.2f %9.2f %6.2f %8lld %7.0f %7.0f%s%s\n",
                zeile.name.toUtf8().constData(), ms, floor, verhaeltnis(ms, floor), zeile.grenze, cpu, floorCpu,
                verhaeltnis(cpu, floorCpu), static_cast<long long>(programm.zeilen), peak, now,
                ms > zeile.grenze ? "  MISSES" : "",
                boden.zeiten.empty() || programm.zeilen == boden.zeilen ? "" : "  (other rows than the floor)");
    std::fflush(stdout);
}

bool gewuenscht(const Zeile& zeile, const QString& nur) {
    const QStringList parts = nur.split(u'|');
    return std::any_of(parts.begin(), parts.end(),
                       [&](const QString& part) { return zeile.name.contains(part, Qt::CaseInsensitive); });
}

/// Both sides of a row, and what it says. The floor repeats as often as the program, so that both files stay alike.
bool Zeile_messen(const Zeile& zeile, Programm& programm, const QString& boden, int mal) {
    Speicherspitze_vergessen();
    double peak = 0, now = 0;
    const Seite oben = wiederholen(
        zeile.anlauf,
        [&](const auto& work) {
            programm.lauf([&] {
                work(programm);
                peak = speicher("VmHWM");
                now = speicher("VmRSS");
            });
        },
        zeile.programm,
        [&](const Seite& s) { return static_cast<int>(s.zeiten.size()) >= mal || s.summe() > genugMs; });
    Seite unten;
    if (!boden.isEmpty())
        unten = wiederholen(
            zeile.anlauf,
            [&](const auto& work) {
                Datei datei(boden);
                work(datei);
            },
            zeile.boden, [&](const Seite& s) { return s.zeiten.size() >= oben.zeiten.size(); });
    drucken(zeile, oben, unten, peak, now);
    return median(oben.zeiten) <= zeile.grenze;
}

}  // namespace

int messen(const Laufvorgabe& vorgabe, QDate heute) {
    const QTemporaryDir ordner(QStringLiteral(KOBEN_BENCH_CACHE "/lauf-XXXXXX"));
    const QString oben = ordner.filePath(QStringLiteral("koben2.mdb"));
    kopieren(vorgabe.hof, oben);
    const Probe probe = Probe_nehmen(oben, heute);  // of the copy: to open a file may bring it up to date
    QString boden;
    if (vorgabe.boden) {
        boden = ordner.filePath(QStringLiteral("boden.sqlite"));
        kopieren(vorgabe.hof, boden);
        Boden_anlegen(boden);
    }
    Programm programm(ordner.path(), heute);
    programm.lauf([] {});  // makes the settings
    Kopf_drucken();
    int misses = 0;
    for (const auto& theme : {Zeilen_Liste, Zeilen_Zyklus, Zeilen_Plan, Zeilen_Zahlen, Zeilen_Papier, Zeilen_Buchung,
                              Zeilen_Ferkel, Zeilen_Masse})
        for (const Zeile& zeile : theme(probe))
            if (gewuenscht(zeile, vorgabe.nur)) misses += !Zeile_messen(zeile, programm, boden, vorgabe.mal);
    std::printf("%d rows miss their limit\n", misses);
    return misses;
}

}  // namespace koben

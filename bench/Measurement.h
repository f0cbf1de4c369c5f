#pragma once
// What a measurement is: one piece of work done by the program and by hand-written SQL, with its limit.
#include <QDate>
#include <QElapsedTimer>
#include <QString>
#include <ctime>
#include <functional>
#include <vector>

namespace koben {

class Program;
class SqliteFile;

/// Limits in milliseconds: what the farmer does all day must not make her wait; the rest may take a moment.
inline constexpr double daily = 100, seldom = 1000;

/// Adds up the times of one repetition; what lies between the timed parts prepares or tidies.
class Stopwatch {
public:
    void start() {
        m_timer.start();
        m_begin = std::clock();
    }
    void stop() {
        m_ms += static_cast<double>(m_timer.nsecsElapsed()) / 1e6;
        m_cpu += static_cast<double>(std::clock() - m_begin) * 1e3 / CLOCKS_PER_SEC;
    }
    /// What another clock has counted so far.
    void add(Stopwatch other) {
        other.stop();
        m_ms += other.m_ms;
        m_cpu += other.m_cpu;
    }
    template <class Work>
    void measure(const Work& work) {
        start();
        work();
        stop();
    }
    double ms() const { return m_ms; }
    double cpu() const { return m_cpu; }  ///< of the process: without waiting for the disk or for other programs

private:
    QElapsedTimer m_timer;
    std::clock_t m_begin = 0;
    double m_ms = 0, m_cpu = 0;
};

/// When the program starts, or the floor opens its file: once for all repetitions, or anew for each.
enum class Start { Once, EachTime };

/// A row of the report. Both sides do the work once, time it, and say how many rows came out.
struct Row {
    QString name;
    double limit;  ///< ms
    std::function<qint64(Program&, Stopwatch&)> program;
    std::function<qint64(SqliteFile&, Stopwatch&)> floor;
    Start start = Start::Once;
};

/// What the rows are tried on. Made from the farm before anything is measured.
struct Sample {
    QDate today;
    QString number;   ///< of an animal far down the list, to be searched for
    qint64 sau = 0;   ///< a suckling sow: a service changes her status
    QString partner;  ///< number of another sow in stock
    qint64 lastAnimal = 0;
};

/// So many sows are booked together, so many piglets sold, led as fattening pigs, and imported.
inline constexpr int Together = 200, Sold = 240, Fattened = 50000, Imported = 100000;

// The rows, by theme, in the order of the report; later ones change the herd more.
std::vector<Row> Rows_Liste(const Sample& sample);
std::vector<Row> Rows_Zyklus(const Sample& sample);
std::vector<Row> Rows_Buchung(const Sample& sample);
std::vector<Row> Rows_Plan(const Sample& sample);
std::vector<Row> Rows_Tagesblick(const Sample& sample);
std::vector<Row> Rows_Zahlen(const Sample& sample);
std::vector<Row> Rows_Kennzahlen(const Sample& sample);
std::vector<Row> Rows_Grafiken(const Sample& sample);
std::vector<Row> Rows_Papier(const Sample& sample);
std::vector<Row> Rows_Gruppen(const Sample& sample);
std::vector<Row> Rows_Ferkel(const Sample& sample);
std::vector<Row> Rows_Geraet(const Sample& sample);
std::vector<Row> Rows_Masse(const Sample& sample);
std::vector<Row> Rows_Sicherung(const Sample& sample);
std::vector<Row> Rows_Altdaten(const Sample& sample);

}  // namespace koben

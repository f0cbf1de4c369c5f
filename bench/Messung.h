#pragma once
// What a measurement is: one piece of work done by the program and by hand-written SQL, with its limit.
#include <QDate>
#include <QElapsedTimer>
#include <QString>
#include <ctime>
#include <functional>
#include <vector>

namespace koben {

class Programm;
class Datei;

/// Limits in milliseconds: what the farmer does all day must not make her wait; the rest may take a moment.
inline constexpr double taeglich = 100, selten = 1000;

/// Adds up the times of one repetition; what lies between the timed parts prepares or tidies.
class Uhr {
public:
    void los() {
        m_timer.start();
        m_begin = std::clock();
    }
    void halt() {
        m_ms += static_cast<double>(m_timer.nsecsElapsed()) / 1e6;
        m_cpu += static_cast<double>(std::clock() - m_begin) * 1e3 / CLOCKS_PER_SEC;
    }
    /// What another clock has counted so far.
    void dazu(Uhr other) {
        other.halt();
        m_ms += other.m_ms;
        m_cpu += other.m_cpu;
    }
    template <class Work>
    void messen(const Work& work) {
        los();
        work();
        halt();
    }
    double ms() const { return m_ms; }
    double cpu() const { return m_cpu; }  ///< of the process: without waiting for the disk or for other programs

private:
    QElapsedTimer m_timer;
    std::clock_t m_begin = 0;
    double m_ms = 0, m_cpu = 0;
};

/// When the program starts, or the floor opens its file: once for all repetitions, or anew for each.
enum class Anlauf { Einmal, JedesMal };

/// A row of the report. Both sides do the work once, time it, and say how many rows came out.
struct Zeile {
    QString name;
    double grenze;  ///< ms
    std::function<qint64(Programm&, Uhr&)> programm;
    std::function<qint64(Datei&, Uhr&)> boden;
    Anlauf anlauf = Anlauf::Einmal;
};

/// What the rows are tried on. Made from the farm before anything is measured.
struct Probe {
    QDate heute;
    QString nummer;   ///< of an animal far down the list, to be searched for
    qint64 sau = 0;   ///< a suckling sow: a service changes her status
    QString partner;  ///< number of another sow in stock
    qint64 letztesTier = 0;
};

/// So many sows are booked together, so many piglets sold, led as fattening pigs, and imported.
inline constexpr int Sammelzahl = 200, Verkaufszahl = 240, Mastzahl = 50000, Importzahl = 100000;

// The rows, by theme, in the order of the report; later ones change the herd more.
std::vector<Zeile> Zeilen_Liste(const Probe& probe);
std::vector<Zeile> Zeilen_Zyklus(const Probe& probe);
std::vector<Zeile> Zeilen_Buchung(const Probe& probe);
std::vector<Zeile> Zeilen_Plan(const Probe& probe);
std::vector<Zeile> Zeilen_Zahlen(const Probe& probe);
std::vector<Zeile> Zeilen_Papier(const Probe& probe);
std::vector<Zeile> Zeilen_Ferkel(const Probe& probe);
std::vector<Zeile> Zeilen_Masse(const Probe& probe);

}  // namespace koben

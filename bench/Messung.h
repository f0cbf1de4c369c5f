#pragma once
// Times of repeated work in milliseconds.
#include <QDate>
#include <QElapsedTimer>
#include <QString>
#include <algorithm>
#include <map>
#include <vector>

namespace koben {

/// What is measured, in the order of the report.
enum class Arbeit { Start, Liste, Suche, Belegung, Schliessen, Arbeitsplan, Mast };

class Uhr {
public:
    Uhr() { m_timer.start(); }
    double ms() const { return static_cast<double>(m_timer.nsecsElapsed()) / 1e6; }

private:
    QElapsedTimer m_timer;
};

/// The times of one side, and how many rows came out, so that both sides can be held against each other.
class Messung {
public:
    void eintragen(Arbeit arbeit, double ms, qint64 zeilen) {
        m_zeiten[arbeit].push_back(ms);
        m_zeilen[arbeit] = zeilen;
    }
    double median(Arbeit arbeit) const {
        const auto found = m_zeiten.find(arbeit);
        if (found == m_zeiten.end()) return 0;
        std::vector<double> zeiten = found->second;
        const auto mitte = zeiten.begin() + static_cast<std::ptrdiff_t>(zeiten.size() / 2);
        std::nth_element(zeiten.begin(), mitte, zeiten.end());
        return *mitte;
    }
    qint64 zeilen(Arbeit arbeit) const {
        const auto found = m_zeilen.find(arbeit);
        return found == m_zeilen.end() ? 0 : found->second;
    }

private:
    std::map<Arbeit, std::vector<double>> m_zeiten;
    std::map<Arbeit, qint64> m_zeilen;
};

/// The animal whose number is typed, and the sow that is served.
struct Vorlage {
    QString nummer;
    qint64 sau = 0;
    int wiederholungen = 7;
};

/// Makes the last animals of the farm piglets in stock, to be led as fattening pigs together.
inline constexpr int MastFerkel = 50000;

}  // namespace koben

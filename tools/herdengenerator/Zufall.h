#pragma once
// Chance that comes out the same everywhere: the generator's bits are fixed by the standard, and the distributions are
// plain integer and sum arithmetic instead of the library's.
#include <cmath>
#include <iterator>
#include <random>

namespace koben {

class Zufall {
public:
    explicit Zufall(unsigned long long seed) : m_bits(seed) {}

    /// Whole number from `von` to `bis`, both included.
    int zahl(int von, int bis) {
        return von + static_cast<int>(m_bits() % static_cast<unsigned long long>(bis - von + 1));
    }
    /// From 0 to below 1.
    double anteil() { return static_cast<double>(m_bits() >> 11) * 0x1p-53; }
    bool trifft(double wahrscheinlichkeit) { return anteil() < wahrscheinlichkeit; }
    /// Bell-shaped around `mittel`: twelve even numbers added up.
    double normal(double mittel, double streuung) {
        double summe = -6;
        for (int i = 0; i < 12; ++i) summe += anteil();
        return mittel + streuung * summe;
    }
    int ganzNormal(double mittel, double streuung) { return static_cast<int>(std::lround(normal(mittel, streuung))); }
    template <class Feld>
    int eines(const Feld& feld) {
        return zahl(0, static_cast<int>(std::size(feld)) - 1);
    }

private:
    std::mt19937_64 m_bits;
};

}  // namespace koben

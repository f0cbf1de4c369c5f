#pragma once
// Chance that comes out the same everywhere: the generator's bits are fixed by the standard, and the distributions are
// plain integer and sum arithmetic instead of the library's.
#include <cmath>
#include <iterator>
#include <random>

namespace koben {

class Random {
public:
    explicit Random(unsigned long long seed) : m_bits(seed) {}

    /// Whole number from `from` to `to`, both included.
    int between(int from, int to) {
        return from + static_cast<int>(m_bits() % static_cast<unsigned long long>(to - from + 1));
    }
    /// From 0 to below 1.
    double share() { return static_cast<double>(m_bits() >> 11) * 0x1p-53; }
    bool hits(double chance) { return share() < chance; }
    /// Bell-shaped around `mean`: twelve even numbers added up.
    double normal(double mean, double spread) {
        double sum = -6;
        for (int i = 0; i < 12; ++i) sum += share();
        return mean + spread * sum;
    }
    int wholeNormal(double mean, double spread) { return static_cast<int>(std::lround(normal(mean, spread))); }
    template <class Choices>
    int oneOf(const Choices& choices) {
        return between(0, static_cast<int>(std::size(choices)) - 1);
    }

private:
    std::mt19937_64 m_bits;
};

}  // namespace koben

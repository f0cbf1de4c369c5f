#include "figures/Kennzahlenlauf.h"

#include <string_view>

namespace koben {
namespace {

/// Which of many periods hold a day. The periods stand in the order in which they begin, and end.
class Perioden {
public:
    explicit Perioden(std::span<const Zeitraum> periods) : m_hull{periods.front().von, periods.back().bis} {
        m_places.resize(static_cast<size_t>(std::max(m_hull.days(), 0)));
        size_t first = 0, behind = 0;
        for (size_t i = 0; i < m_places.size(); ++i) {
            const qint32 day = m_hull.von + static_cast<qint32>(i);
            while (behind < periods.size() && periods[behind].von <= day) ++behind;
            while (first < periods.size() && periods[first].bis < day) ++first;
            m_places[i] = {static_cast<int>(first), static_cast<int>(behind)};
        }
    }
    Zeitraum hull() const { return m_hull; }
    /// The first and the one behind the last.
    std::pair<int, int> of(qint32 day) const { return m_places[static_cast<size_t>(day - m_hull.von)]; }

private:
    const Zeitraum m_hull;
    std::vector<std::pair<int, int>> m_places;
};

/// Adds up the parts in the periods that they belong to.
class Summen {
public:
    Summen(std::vector<Kennzahlenstand>& stands, const Perioden& periods) : m_stands(stands), m_periods(periods) {}

    void count(Kz figure, const Fall& fall) {
        const auto [first, behind] = reach(fall);
        for (int i = first; i < behind; ++i) {
            Kennzahlwert& value = m_stands[static_cast<size_t>(i)][figure];
            value.numerator += fall.numerator;
            value.denominator += fall.denominator;
        }
    }
    void leaveOut(Kz figure, const Fall& fall) {
        const auto [first, behind] = reach(fall);
        for (int i = first; i < behind; ++i) {
            auto& leftOut = m_stands[static_cast<size_t>(i)][figure].leftOut;
            leftOut = leftOut.value_or(0) + 1;
        }
    }
    void days(const Fall& fall) { m_stands[static_cast<size_t>(period)].productionDays += fall.denominator; }
    void idle(Kz figure, const Fall& fall) {
        m_stands[static_cast<size_t>(period)][figure].numerator += fall.numerator;
        m_stands[static_cast<size_t>(period)][Kz::NptSauJahr].numerator += fall.numerator;
    }

    int period = -1;  ///< the one that days are told of; -1 while bookings are

private:
    std::pair<int, int> reach(const Fall& fall) const {
        return period < 0 ? m_periods.of(fall.tag) : std::pair(period, period + 1);
    }

    std::vector<Kennzahlenstand>& m_stands;
    const Perioden& m_periods;
};

/// Denominators and counts that hold for several figures.
void finish(Kennzahlenstand& stand) {
    qint64 herd = 0;
    for (int row = static_cast<int>(Kz::Wuerfe0); row < KennzahlAnzahl; ++row)
        herd += stand[static_cast<Kz>(row)].numerator;
    for (const Kennzahl& figure : Kennzahlen()) {
        Kennzahlwert& value = stand[figure.nr];
        const bool ofReturns = figure.nr >= Kz::Umrauscher_4_17 && figure.nr <= Kz::Umrauscher_38_46;
        const bool ofDays = (parts(figure.nr) & Teil::Tage) != 0;
        if (ofDays && figure.quotient) value.denominator = stand.productionDays;
        value.counted = value.denominator;
        if (figure.nr >= Kz::Wuerfe0) value.counted = herd;
        if (ofDays) value.counted = stand.productionDays;
        if (ofReturns) value.counted = stand[Kz::Umrauscher].counted, value.leftOut = stand[Kz::Umrauscher].leftOut;
        if (!figure.quotient) value.denominator = 1;
    }
}

bool inOrder(const std::vector<Zeitraum>& periods) {
    return std::is_sorted(periods.begin(), periods.end(), [](Zeitraum a, Zeitraum b) { return a.von < b.von; }) &&
           std::is_sorted(periods.begin(), periods.end(), [](Zeitraum a, Zeitraum b) { return a.bis < b.bis; });
}

}  // namespace

unsigned parts(Kz figure) {
    if (figure >= Kz::Wuerfe0) return Teil::Bestand;
    if (figure >= Kz::NptSauJahr && figure <= Kz::NptOffen) return Teil::Tage | Teil::Npt;
    return Teil::Buchungen | (std::string_view(kennzahl(figure).variante) == "nach Produktionstagen" ? Teil::Tage : 0u);
}

std::vector<Kennzahlenstand> compute(const Sauenbuch& book, std::span<const Zeitraum> asked, unsigned parts) {
    std::vector<Zeitraum> periods(asked.begin(), asked.end());
    for (Zeitraum& period : periods) period.bis = std::min(period.bis, book.heute());
    if (!inOrder(periods)) {
        std::vector<Kennzahlenstand> one, all;
        for (const Zeitraum& period : asked) all.push_back(compute(book, std::span(&period, 1), parts).front());
        return all;
    }
    std::vector<Kennzahlenstand> stands(periods.size());
    for (size_t i = 0; i < periods.size(); ++i) stands[i].period = periods[i];
    if (periods.empty()) return stands;
    const Perioden places(periods);
    Summen sums(stands, places);
    for (const Sau& sow : book.sauen()) {
        Sauenlauf walk(sow, book.heute(), sums);
        sums.period = -1;
        if (parts & Teil::Buchungen) walk.bookings(places.hull());
        if ((parts & ~Teil::Buchungen) == 0) continue;
        for (sums.period = 0; sums.period < static_cast<int>(periods.size()); ++sums.period) {
            const Zeitraum period = periods[static_cast<size_t>(sums.period)];
            if (parts & Teil::Tage) walk.days(period, (parts & Teil::Npt) != 0);
            if (parts & Teil::Bestand) walk.stock(period.bis);
        }
    }
    std::for_each(stands.begin(), stands.end(), finish);
    return stands;
}

std::vector<Kennzahlenstand> Kennzahlen_berechnen(const Sauenbuch& book, std::span<const Zeitraum> periods) {
    return compute(book, periods, Teil::Alle);
}

Kennzahlenstand Kennzahlen_berechnen(const Sauenbuch& book, Zeitraum period) {
    return compute(book, std::span(&period, 1), Teil::Alle).front();
}

}  // namespace koben

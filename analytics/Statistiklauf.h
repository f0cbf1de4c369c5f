#pragma once
// The runs of the statistics: what columns and rows their lists have, and where each cell comes from.
#include "analytics/Herleitung.h"
#include "forms/Koben.h"

namespace koben {

class Statistiklauf {
public:
    virtual ~Statistiklauf() = default;
    /// What the bar of the form counts.
    virtual qint64 steps() const = 0;
    /// Columns and rows; stops where the user has cancelled.
    virtual void fill(Grid& grid, Progress& progress) = 0;
    /// A cell by row and column of the list as it was filled. Nothing where it holds no figure of the run.
    virtual std::optional<Explanation> explain(const Grid& grid, int row, int column) const = 0;
};

/// Days of a year as a year text means them: "15" is 2015. Invalid where it is none.
struct Statistikjahr {
    int text = 0;  ///< as the row shows it
    QDate von, bis;
};

/// One row for each animal, or for each year over all of them; one column for each chosen measure.
class Kennwertlauf final : public Statistiklauf {
public:
    struct Auftrag {
        bool eber = false;
        QString condition = {};                      ///< of the animals, on Sauen
        std::vector<const Kennwert*> measures = {};  ///< in the order of their list
        QDate von = {}, bis = {};                    ///< of runs by animal; without dates no period
        std::vector<Statistikjahr> years = {};       ///< a row each; empty for a run by animal
        int zyklustage = 0, geburtsgewicht = 0;
    };
    Kennwertlauf(const Database& db, Auftrag order)
        : m_db(db), m_order(std::move(order)), m_animals(db, m_order.condition) {}

    qint64 steps() const override;
    void fill(Grid& grid, Progress& progress) override;
    std::optional<Explanation> explain(const Grid& grid, int row, int column) const override;
    int animals() const { return m_animals.count(); }

private:
    bool byYear() const { return !m_order.years.empty(); }
    int heads() const { return byYear() ? 1 : 3; }
    void addColumns(Grid& grid) const;
    bool preload(Buchungsauszug& bookings, Progress& progress) const;
    void addAnimals(Grid& grid, Buchungsauszug& bookings, Progress& progress) const;
    void addYears(Grid& grid, Buchungsauszug& bookings, Progress& progress) const;
    void addCells(Grid::Row& cells, Summen& sums, int key, const Tier* tier) const;
    Zellenlage source(Summen& sums, int key, const Tier* tier) const;
    QString scope(int row) const;

    const Database m_db;
    const Auftrag m_order;
    const Tierliste m_animals;
};

/// One row for each litter number, which is the place of the farrowing among those of its sow by date, and the total.
class Wurflauf final : public Statistiklauf {
public:
    static constexpr int Most = 20;  ///< the highest litter number
    /// `from` is at least 0, `to` at most `Most`.
    Wurflauf(const Database& db, int from, int to)
        : m_db(db), m_sows(db, QStringLiteral("Art = 'Sau'")), m_from(from), m_to(to) {}

    qint64 steps() const override { return m_sows.count(); }
    void fill(Grid& grid, Progress& progress) override;
    std::optional<Explanation> explain(const Grid& grid, int row, int column) const override;

private:
    std::vector<int> numbers(Buchungsauszug& bookings) const;

    const Database m_db;
    const Tierliste m_sows;
    const int m_from, m_to;
};

/// The farrowings of the marked sows, with what became of each litter until the next farrowing of the list.
class Ferkelungslauf final : public Statistiklauf {
public:
    Ferkelungslauf(const Database& db, int from, int to)
        : m_db(db), m_sows(db, QStringLiteral("Art = 'Sau' and Selektiert = 'X'")), m_from(from), m_to(to) {}

    static constexpr int FirstNumber = 6;  ///< the first column that means and sums are made of
    qint64 steps() const override { return m_sows.count(); }
    void fill(Grid& grid, Progress& progress) override;
    std::optional<Explanation> explain(const Grid& grid, int row, int column) const override;

private:
    using Bookings = std::vector<const Buchung*>;
    struct Row {
        const Buchung* farrowing;
        qint32 next;  ///< day of the next one; what is booked before it belongs to this litter
    };
    void addColumns(Grid& grid) const;
    void addSow(Grid& grid, int place, Progress& progress);
    std::vector<Row> farrowings(int place, int& listed) const;
    double amount(int figure, const Row& row, int place) const;
    const std::vector<Bookings>& of(int figure) const;

    const Database m_db;
    const Tierliste m_sows;
    const int m_from, m_to;
    std::optional<Buchungsauszug> m_bookings;
    std::vector<Bookings> m_farrowings, m_losses, m_moves;  // of each sow
    std::vector<std::pair<int, std::vector<Row>>> m_rows;   // of the list: the sow, and the litters of the row
};

}  // namespace koben

#pragma once
// A plot's table as what it is made of: bookings of sows, each counted in one cell. A cell is their sum, mean or share,
// so what is shown behind it adds up to it.
#include <memory>
#include <vector>

#include "figures/Grafikinhalt.h"
#include "figures/Sauenbuch.h"

namespace koben {

inline constexpr int isText = -1;  ///< decimals of a column of names

/// What a column holds.
struct Fallspalte {
    enum class Art {
        Given,    ///< set by the plot
        Summe,    ///< of the parts; 0 where there are none
        Mittel,   ///< part for each booking; empty where there are none
        Prozent,  ///< of the bookings those whose part is 1; empty where there are none
    };
    const char* title;
    Art art = Art::Summe;
    int decimals = 0;
    const char* was = "";  ///< what a booking of it is called: "Belegung"
};

class Faelle {
public:
    /// A booking and its part in a cell.
    struct Fall {
        qint32 day;
        const Sau* sow;
        int part;
    };
    /// The first column has the names of the rows under its title.
    Faelle(std::shared_ptr<const Sauenbuch> book, const char* title, const QStringList& names,
           std::vector<Fallspalte> columns);

    /// Counts a booking in a cell, by row and column from 1 (the names are column 1).
    void count(int row, int column, const Sau& sow, qint32 day, int part = 1);
    /// The same for a booking that need not be kept, since the plot itself tells what stands behind the cell.
    void add(int row, int column, int part);
    /// A cell that is given: a target, the end of an interval, a name.
    void set(int row, int column, const Value& value);
    /// A sum that cannot be known yet; nothing is counted there.
    void leaveEmpty(int row, int column) { m_tallies[static_cast<size_t>(place(row, column))].count = -1; }
    qint64 sum(int row, int column) const { return tally(row, column).sum; }
    qint64 bookings(int row, int column) const { return tally(row, column).count; }
    const Sauenbuch& book() const { return *m_book; }

    /// Table and what stands behind; the chart is the plot's. Leaves this empty.
    Grafikinhalt finish();
    /// What stands behind a cell of such a column: these bookings.
    static Explanation explain(std::vector<Fall> bookings, const Fallspalte& column, const Value& shown);

private:
    struct Gezaehlt {
        int cell;
        Fall booking;
    };
    struct Tally {
        qint64 sum = 0, count = 0;
    };
    int place(int row, int column) const;
    const Tally& tally(int row, int column) const { return m_tallies[static_cast<size_t>(place(row, column))]; }
    Value valueOf(const Fallspalte& column, const Tally& tally) const;

    std::shared_ptr<const Sauenbuch> m_book;
    std::vector<Fallspalte> m_columns;  ///< of column 2 and on
    ChartTable m_table;
    std::vector<Gezaehlt> m_cases;
    std::vector<Tally> m_tallies;
};

}  // namespace koben

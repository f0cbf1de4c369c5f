#pragma once
// A plot's table whose cells are figures of the farm.
#include "figures/Grafikinhalt.h"
#include "figures/Kennzahlen.h"

namespace koben {

class Kennzahltabelle {
public:
    struct Spalte {
        const char* title;
        int decimals;
    };
    /// The first column has the names of the rows under its title.
    Kennzahltabelle(std::shared_ptr<const Sauenbuch> book, const char* title, const std::vector<Spalte>& columns);
    void addRow(const QString& name);
    /// A cell of the latest row.
    void set(int column, const Value& value);
    /// One that is a figure of a period.
    void set(int column, const Value& value, Kz figure, Zeitraum period);
    /// Table and what stands behind; the chart is the plot's. Leaves this empty.
    Grafikinhalt finish();

private:
    struct Quelle {
        int row, column;
        Kz figure;
        Zeitraum period;
    };
    std::shared_ptr<const Sauenbuch> m_book;
    ChartTable m_table;
    std::vector<Quelle> m_sources;
};

}  // namespace koben

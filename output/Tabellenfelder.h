#pragma once
// Fields of a table as the columns of a report: titles, alignment, and what a row shows of them.
#include "forms/Grid.h"

namespace koben {

class Tabellenfelder {
public:
    /// Numbers of single precision show two decimals, an empty one as zero; amounts the same or in their short form.
    enum class Betraege { Kurz, ZweiStellen };
    /// The fields that stand in `names`, in that order; each must be one of the table.
    Tabellenfelder(const Table& table, const QStringList& names, Betraege amounts);

    int count() const { return static_cast<int>(m_fields.size()); }
    /// Title and key are the field's name; numbers stand at the right.
    Column column(int index) const;
    void append(Grid::Row& cells, int row) const;

private:
    bool withDecimals(int field) const;
    const Table m_table;
    std::vector<int> m_fields;
    const Betraege m_amounts;
};

}  // namespace koben

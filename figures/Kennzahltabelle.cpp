#include "figures/Kennzahltabelle.h"

#include <algorithm>

#include "figures/Herleitung_Kennzahl.h"

namespace koben {

Kennzahltabelle::Kennzahltabelle(std::shared_ptr<const Sauenbuch> book, const char* title,
                                 const std::vector<Spalte>& columns)
    : m_book(std::move(book)) {
    const QString name = QString::fromUtf8(title);
    m_table.columns.push_back({.key = name.toLower(), .title = name});
    for (const Spalte& column : columns) {
        const QString text = QString::fromUtf8(column.title);
        m_table.columns.push_back({.key = text.toLower().replace(u' ', u'_'),
                                   .title = text,
                                   .align = Align::Right,
                                   .sort = Sort::Number,
                                   .decimals = column.decimals});
    }
}

void Kennzahltabelle::addRow(const QString& name) {
    Grid::Row cells(static_cast<qsizetype>(m_table.columns.size()));
    cells[0] = name;
    m_table.rows.push_back(std::move(cells));
}

void Kennzahltabelle::set(int column, const Value& value) { m_table.rows.back()[column - 1] = value; }

void Kennzahltabelle::set(int column, const Value& value, Kz figure, Zeitraum period) {
    set(column, value);
    m_sources.push_back({static_cast<int>(m_table.rows.size()), column, figure, period});
}

Grafikinhalt Kennzahltabelle::finish() {
    Grafikinhalt content;
    content.table = std::move(m_table);
    content.behind = [book = m_book, sources = std::move(m_sources)](int row, int column) {
        const auto found = std::find_if(sources.begin(), sources.end(), [&](const Quelle& source) {
            return source.row == row && source.column == column;
        });
        if (found == sources.end()) return std::optional<Explanation>();
        return std::optional(Kennzahl_herleiten(*book, found->figure, found->period));
    };
    return content;
}

}  // namespace koben

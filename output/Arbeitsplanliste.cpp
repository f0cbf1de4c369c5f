#include "output/Arbeitsplanliste.h"

#include <QDate>
#include <algorithm>
#include <numeric>

#include "core/PZ_Koben_Subs.h"
#include "core/Variablen.h"
#include "output/Listenzeilen.h"
#include "store/Collation.h"

namespace koben {

namespace {

constexpr std::array<const char*, 4> Fields{"Nummer", "Art", "Stallnr", "Gruppe"};
constexpr std::array<const char*, 7> Weekdays{"So", "Mo", "Di", "Mi", "Do", "Fr", "Sa"};

class Ausgabe {
public:
    Ausgabe(Grid& grid, const Table& animals, const QStringList& works, Planzeitraum period,
            const Arbeitsplanform& form)
        : m_grid(grid), m_animals(animals), m_works(works), m_period(period), m_form(form) {
        for (size_t f = 0; f < Fields.size(); ++f)
            m_columns[f] = form.fields[f] ? animals.columnOf(QString::fromUtf8(Fields[f])) : -1;
    }

    void buildColumns() {
        m_grid.clear();
        if (m_form.chart) {
            addFields();
            for (qint32 d = m_period.first; d <= m_period.last; ++d)
                m_grid.addColumn(
                    {.key = QString::number(d - m_period.first + 1), .title = "WT", .align = Align::Centre});
            m_grid.addColumn({.key = "termin", .title = "Termin", .align = Align::Centre});
            m_grid.addColumn({.key = "vom", .title = "Vom", .align = Align::Centre});
            m_grid.addColumn({.key = "bis", .title = "Bis"});
        } else {
            m_grid.addColumn({.key = "vom", .title = "Vom", .sort = Sort::Date});
            m_grid.addColumn({.key = "bis", .title = "Bis", .sort = Sort::Date});
            m_grid.addColumn({.key = "termin", .title = "Termin"});
            addFields();
        }
    }

    /// The chart by its fields, the list by beginning, end and number; a field that is no column does not sort.
    void sort(std::vector<Faelligkeit>& plan) const {
        const std::vector<int> rank = ranks(plan);
        const auto before = [&](const Faelligkeit& a, const Faelligkeit& b) {
            if (!m_form.chart && a.from != b.from) return a.from < b.from;
            if (!m_form.chart && a.to != b.to) return a.to < b.to;
            return rank[static_cast<size_t>(a.animal)] < rank[static_cast<size_t>(b.animal)];
        };
        std::stable_sort(plan.begin(), plan.end(), before);
    }

    void addHeaderRows() {
        const auto header = [&](auto&& text) {
            Grid::Row cells(std::count(m_form.fields.begin(), m_form.fields.end(), true));
            for (qint32 d = m_period.first; d <= m_period.last; ++d) cells.append(text(QDate::fromJulianDay(d)));
            m_grid.addValues(std::move(cells));
        };
        header([](QDate date) { return QString::fromUtf8(Weekdays[static_cast<size_t>(date.dayOfWeek() % 7)]); });
        header([](QDate date) { return Datum_als_Anzeige(date).mid(0, 2); });
        header([](QDate date) { return Datum_als_Anzeige(date).mid(3, 2); });
        header([](QDate date) { return Datum_als_Anzeige(date).mid(8, 2); });
        m_grid.addValues({});
    }

    void addDue(const Faelligkeit& due) {
        Grid::Row cells;
        cells.reserve(m_grid.columnCount());
        const Value from(QDate::fromJulianDay(due.from)), to(QDate::fromJulianDay(due.to));
        const Value work(due.work == Verkaufssperre ? QStringLiteral("Fleischverkaufssperre") : m_works[due.work]);
        if (m_form.chart) {
            addFields(cells, due.animal);
            const Planzeitraum window{due.from, due.to};
            for (qint32 d = m_period.first; d <= m_period.last; ++d) cells.append(window.contains(d) ? m_due : m_free);
            cells << work << from << to;
        } else {
            cells << from << to << work;
            addFields(cells, due.animal);
        }
        m_grid.addValues(std::move(cells), m_animals.integer(due.animal, m_id));
    }

private:
    void addFields() {
        for (size_t f = 0; f < Fields.size(); ++f)
            if (m_form.fields[f]) {
                const QString title = QString::fromUtf8(Fields[f]);
                m_grid.addColumn({.key = title.toLower(), .title = title});
            }
    }

    QString field(int animal, size_t f) const { return Hochkomma_ersetzen(m_animals.text(animal, m_columns[f])); }

    void addFields(Grid::Row& cells, int animal) const {
        for (size_t f = 0; f < Fields.size(); ++f)
            if (m_columns[f] >= 0) cells.append(field(animal, f));
    }

    QByteArray key(int animal, size_t f) const { return m_columns[f] < 0 ? QByteArray() : sortKey(field(animal, f)); }

    /// The place of each animal of the plan in the order of its fields; equal animals share one.
    std::vector<int> ranks(const std::vector<Faelligkeit>& plan) const {
        const size_t first = m_form.chart && m_form.sort > 0 ? static_cast<size_t>(m_form.sort) : 0;
        using Key = std::pair<QByteArray, QByteArray>;
        std::vector<std::pair<Key, int>> keys;
        for (size_t i = 0; i < plan.size(); ++i) {
            const int animal = plan[i].animal;
            if (i > 0 && plan[i - 1].animal == animal) continue;  // its rows stand together
            keys.push_back({{first > 0 ? key(animal, first) : QByteArray(), key(animal, 0)}, animal});
        }
        std::sort(keys.begin(), keys.end());
        std::vector<int> rank(static_cast<size_t>(m_animals.rowCount()));
        int place = 0;
        for (size_t i = 0; i < keys.size(); ++i) {
            if (i > 0 && keys[i - 1].first != keys[i].first) ++place;
            rank[static_cast<size_t>(keys[i].second)] = place;
        }
        return rank;
    }

    Grid& m_grid;
    const Table& m_animals;
    const QStringList& m_works;
    const Planzeitraum m_period;
    const Arbeitsplanform& m_form;
    std::array<int, 4> m_columns{};  // of the table of animals; -1 for a field that is not listed
    const int m_id = m_animals.columnOf(u"ID");
    const Value m_due = m_form.due, m_free = m_form.free;
};

}  // namespace

void Arbeitsplan_ausgeben(Grid& grid, const Table& animals, std::vector<Faelligkeit> plan, const QStringList& works,
                          Planzeitraum period, const Arbeitsplanform& form) {
    Ausgabe out(grid, animals, works, period, form);
    out.buildColumns();
    if (plan.empty()) return;
    out.sort(plan);
    if (form.chart) out.addHeaderRows();
    for (const Faelligkeit& due : plan) out.addDue(due);
}

QString Arbeitsplan_Pocket(const Grid& grid) {
    std::vector<int> columns;
    for (const QStringView key : {u"vom", u"bis", u"termin", u"nummer", u"stallnr"})
        if (const int column = grid.columnOf(key)) columns.push_back(column);
    QString text;
    for (int row = 1; row <= grid.rowCount(); ++row) {
        for (const int column : columns) text += einzeilig(grid.cell(row, column)) + u'\t';
        text += Crlf;
    }
    return text;
}

}  // namespace koben

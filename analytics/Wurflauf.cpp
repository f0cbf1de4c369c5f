// The run by litter.
#include <algorithm>
#include <numeric>

#include "analytics/Statistiklauf.h"

namespace koben {

namespace {

struct Figure {
    const char* title;
    const char* sentence;
    Formel formel;
};

const std::vector<Figure>& figures() {
    static const std::vector<Figure> all{
        {"Ferkel_Ges", "Summe aller geborenen Ferkel.", {.kind = Formel::Summe, .of = {Groesse::Ferkel}}},
        {"Ferkel_Leb", "Summe der lebend geborenen Ferkel.", {.kind = Formel::Summe, .of = {Groesse::Lebend}}},
        {"Ferkel_Leb%",
         "Lebend geborene Ferkel mal 100, geteilt durch alle geborenen.",
         {.kind = Formel::Anteil, .of = {Groesse::Lebend, Groesse::Ferkel}, .factor = 100}},
        {"Ferkel_Tot", "Summe der tot geborenen Ferkel.", {.kind = Formel::Summe, .of = {Groesse::Tot}}},
        {"Ferkel_Tot%",
         "Tot geborene Ferkel mal 100, geteilt durch alle geborenen.",
         {.kind = Formel::Anteil, .of = {Groesse::Tot, Groesse::Ferkel}, .factor = 100}}};
    return all;
}

}  // namespace

/// The litter number of each farrowing, in the order of the rows; 0 for one outside of the range.
std::vector<int> Wurflauf::numbers(Buchungsauszug& bookings) const {
    const std::vector<Buchung>& rows = bookings.rows(Tabelle::Ferkelung);
    std::vector<int> order(rows.size()), result(rows.size());
    std::iota(order.begin(), order.end(), 0);
    const auto row = [&](int i) -> const Buchung& { return rows[static_cast<size_t>(i)]; };
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        return row(a).place != row(b).place ? row(a).place < row(b).place : row(a).day < row(b).day;
    });
    int place = -1, number = 0;
    for (const int i : order) {
        number = row(i).place == place ? number + 1 : 1;
        place = row(i).place;
        if (number >= m_from && number <= m_to) result[static_cast<size_t>(i)] = number;
    }
    return result;
}

void Wurflauf::fill(Grid& grid, Progress& progress) {
    grid.addColumn({.key = "Wurf", .title = "Wurf"});
    for (const Figure& figure : figures())
        grid.addColumn({.key = QString::fromUtf8(figure.title),
                        .title = QString::fromUtf8(figure.title),
                        .align = Align::Right,
                        .sort = Sort::Number});
    Buchungsauszug bookings(m_db, m_sows, {}, [&] { return progress.step(0); });
    const std::vector<int> number = numbers(bookings);
    if (!progress.step(steps())) return;
    const Buchung* first = bookings.rows(Tabelle::Ferkelung).data();
    Summen byNumber(bookings, Most + 1, [&](const Buchung& booking) {
        const int found = number[static_cast<size_t>(&booking - first)];
        return found == 0 ? -1 : found;
    });
    Summen total(bookings, 1,
                 [&](const Buchung& booking) { return number[static_cast<size_t>(&booking - first)] == 0 ? -1 : 0; });
    const auto add = [&](const Value& head, Summen& sums, int key) {
        Grid::Row cells{head};
        const Zellenlage from{[&](Groesse quantity) -> const Summe& { return sums.of(quantity, key); }};
        for (const Figure& figure : figures()) {
            const Value shown = berechnen(figure.formel, from).shown;
            cells.append(shown.isNull() ? Value(eine_Stelle(0)) : shown);
        }
        grid.addValues(std::move(cells));
    };
    for (int i = m_from; i <= m_to; ++i) add(i, i == 0 ? total : byNumber, i);  // line 0 is where the total lies
    add(QStringLiteral("GESAMT"), total, 0);
}

std::optional<Explanation> Wurflauf::explain(const Grid& grid, int row, int column) const {
    if (column < 2) return {};
    const Figure& figure = figures()[static_cast<size_t>(column - 2)];
    Buchungsauszug bookings(m_db, m_sows, {});
    const std::vector<int> number = numbers(bookings);
    const Buchung* first = bookings.rows(Tabelle::Ferkelung).data();
    const int wanted = row == grid.rowCount() ? 0 : m_from + row - 1;
    const auto mine = [&](const Buchung& booking) {
        const int found = number[static_cast<size_t>(&booking - first)];
        return found != 0 && (wanted == 0 || found == wanted);
    };
    Summen sums(bookings, 1, [&](const Buchung& booking) { return mine(booking) ? 0 : -1; });
    const Zellenlage from{[&](Groesse quantity) -> const Summe& { return sums.of(quantity, 0); }};
    Herleitung lines(m_db);
    lines.add(figure.formel, bookings, mine, from);
    const QString which = wanted == 0
                              ? QStringLiteral(" Gezählt sind die Würfe %1 bis %2 aller Sauen.").arg(m_from).arg(m_to)
                              : QStringLiteral(" Gezählt ist der %1. Wurf jeder Sau, nach Datum.").arg(wanted);
    return lines.told(QString::fromUtf8(figure.sentence) + which, berechnen(figure.formel, from),
                      grid.cell(row, column));
}

}  // namespace koben

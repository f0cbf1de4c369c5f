// The runs by sow, by boar and by year.
#include <set>

#include "analytics/Statistiklauf.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

/// Reading takes most of a run: so many hundredths of its steps.
constexpr int ReadingShare = 80;

/// The tables that a formula needs beside those of its quantities.
std::vector<Groesse> quantities(const Formel& formel) {
    std::vector<Groesse> all = formel.of;
    if (formel.kind == Formel::JeJahr) all = {Groesse::Belegungen, Groesse::Ferkelungen};
    if (formel.kind == Formel::Zunahme) all = {Groesse::Gewicht, Groesse::Saeugezeit};
    return all;
}

Column numberColumn(const Kennwert& measure) {
    const QString title = QString::fromUtf8(measure.column);
    if (measure.text) return {.key = title, .title = title, .sort = Sort::Date};
    return {.key = title, .title = title, .align = Align::Right, .sort = Sort::Number};
}

}  // namespace

qint64 Kennwertlauf::steps() const {
    if (!byYear()) return m_animals.count();
    return static_cast<qint64>(m_order.years.size()) - (m_order.eber ? 1 : 0);
}

void Kennwertlauf::addColumns(Grid& grid) const {
    if (byYear())
        grid.addColumn({.key = "Jahr", .title = "Jahr"});
    else
        for (const char* title : {m_order.eber ? "Ebernr" : "Saunr", "Stallnr", "Gruppe"})
            grid.addColumn({.key = QString::fromUtf8(title), .title = QString::fromUtf8(title)});
    for (const Kennwert* measure : m_order.measures) grid.addColumn(numberColumn(*measure));
}

bool Kennwertlauf::preload(Buchungsauszug& bookings, Progress& progress) const {
    std::set<Tabelle> tables;
    for (const Kennwert* measure : m_order.measures)
        for (const Groesse quantity : quantities(measure->formel(byYear()))) tables.insert(art(quantity).table);
    qint64 read = 0;
    for (const Tabelle table : tables) {
        bookings.rows(table);
        if (!progress.step(++read * steps() * ReadingShare / 100 / static_cast<qint64>(tables.size()))) return false;
    }
    return true;
}

void Kennwertlauf::fill(Grid& grid, Progress& progress) {
    addColumns(grid);
    Ausschnitt cut{0, m_order.von, m_order.bis};
    if (byYear()) {
        cut.von = m_order.years.front().von, cut.bis = m_order.years.front().bis;
        for (const Statistikjahr& year : m_order.years)
            cut.von = std::min(cut.von, year.von), cut.bis = std::max(cut.bis, year.bis);
    }
    Buchungsauszug bookings(
        m_db, m_animals, cut, [&] { return progress.step(0); }, !byYear());
    if (!preload(bookings, progress)) return;
    if (byYear())
        addYears(grid, bookings, progress);
    else
        addAnimals(grid, bookings, progress);
}

Zellenlage Kennwertlauf::source(Summen& sums, int key, const Tier* tier) const {
    return {[&sums, key](Groesse quantity) -> const Summe& { return sums.of(quantity, key); }, tier, m_order.zyklustage,
            m_order.geburtsgewicht};
}

void Kennwertlauf::addCells(Grid::Row& cells, Summen& sums, int key, const Tier* tier) const {
    const Zellenlage from = source(sums, key, tier);
    for (const Kennwert* measure : m_order.measures) {
        const Formel& formel = measure->formel(byYear());
        if (formel.kind != Formel::Fehlt) cells.append(berechnen(formel, from).shown);
    }
}

void Kennwertlauf::addAnimals(Grid& grid, Buchungsauszug& bookings, Progress& progress) const {
    Summen sums(bookings, m_animals.count(), [](const Buchung& booking) { return booking.place; });
    const qint64 read = steps() * ReadingShare / 100;
    for (int i = 0; i < m_animals.count(); ++i) {
        if (!progress.step(read + i * (steps() - read) / m_animals.count())) return;
        const Tier& animal = m_animals[i];
        Grid::Row cells{animal.nummer, animal.stallnr, animal.gruppe};
        addCells(cells, sums, i, &animal);
        grid.addValues(std::move(cells), animal.id);
    }
}

void Kennwertlauf::addYears(Grid& grid, Buchungsauszug& bookings, Progress& progress) const {
    int first = m_order.years.front().von.year(), last = first;
    for (const Statistikjahr& year : m_order.years)
        first = std::min(first, year.von.year()), last = std::max(last, year.von.year());
    Summen sums(bookings, last - first + 1, [&](const Buchung& booking) {
        return booking.day == 0 ? -1 : QDate::fromJulianDay(booking.day).year() - first;
    });
    for (const Statistikjahr& year : m_order.years) {
        if (!progress.step(steps())) return;
        Grid::Row cells{year.text};
        addCells(cells, sums, year.von.year() - first, nullptr);
        grid.addValues(std::move(cells));
    }
}

/// What the row is about, in words.
QString Kennwertlauf::scope(int row) const {
    if (byYear())
        return QStringLiteral(" Gezählt wird über alle %1 im Jahr %2.")
            .arg(m_order.eber ? "Eber" : "Sauen",
                 QString::number(m_order.years[static_cast<size_t>(row - 1)].von.year()));
    const QString animal = (m_order.eber ? " Eber " : " Sau ") + m_animals[row - 1].nummer;
    if (!m_order.von.isValid()) return animal + QStringLiteral(", ohne Zeitraum.");
    return animal + ", " + Datum_als_Anzeige(m_order.von) + " bis " + Datum_als_Anzeige(m_order.bis) + ".";
}

std::optional<Explanation> Kennwertlauf::explain(const Grid& grid, int row, int column) const {
    const int rows = byYear() ? static_cast<int>(m_order.years.size()) : m_animals.count();
    std::vector<const Kennwert*> shown;
    for (const Kennwert* measure : m_order.measures)
        if (measure->formel(byYear()).kind != Formel::Fehlt) shown.push_back(measure);
    const int place = column - heads() - 1;
    if (row > rows || place < 0) return {};
    if (place >= static_cast<int>(shown.size()))
        return Explanation{.sentence = QStringLiteral("Hier steht keine Zahl: Eine Kennzahl weiter links hat in dieser "
                                                      "Auswertung keine Zelle, und alles dahinter rückt nach links.")};
    const Kennwert& measure = *shown[static_cast<size_t>(place)];
    const Formel& formel = measure.formel(byYear());

    const Ausschnitt all{0, m_order.von, m_order.bis};
    const Tier* tier = byYear() ? nullptr : &m_animals[row - 1];
    const Statistikjahr year = byYear() ? m_order.years[static_cast<size_t>(row - 1)] : Statistikjahr{};
    const Tierliste one(m_db, tier ? QStringLiteral("ID = %1").arg(tier->id) : m_order.condition);
    const Ausschnitt cut = byYear()       ? Ausschnitt{0, year.von, year.bis}
                           : m_order.eber ? all
                                          : Ausschnitt{tier->id, m_order.von, m_order.bis};
    Buchungsauszug bookings(m_db, one, cut, {}, !byYear());
    Summen sums(bookings, 1, [](const Buchung&) { return 0; });
    const Zellenlage from = source(sums, 0, tier);
    Herleitung lines(m_db);
    lines.add(
        formel, bookings, [](const Buchung&) { return true; }, from);

    QString sentence = QString::fromUtf8(measure.caption) + ": " +
                       QString::fromUtf8(formel.sentence ? formel.sentence : measure.sentence) + scope(row);
    if (grid.column(column).title != QString::fromUtf8(measure.column))
        sentence.prepend(
            QStringLiteral("Die Zelle zeigt nicht, was über ihr steht: „Anzahl Ferkel je Jahr“ hat im "
                           "Jahreslauf keine Zelle, und alles dahinter rückt eine Spalte nach links. "));
    return lines.told(sentence, berechnen(formel, from), grid.cell(row, column));
}

}  // namespace koben

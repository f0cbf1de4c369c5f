// The overview of farrowings of the marked sows.
#include <algorithm>

#include "analytics/Statistiklauf.h"

namespace koben {

namespace {

struct Figure {
    const char* title;
    Tabelle table;
    size_t amount;
    const char* sentence;
};
/// Piglets of negative moves have come to the sow, of positive ones they have left her.
constexpr Figure Figures[] = {
    {"Ferkel", Tabelle::Ferkelung, 0, "Alle geborenen Ferkel."},
    {"Ferkel_Leb", Tabelle::Ferkelung, 1, "Lebend geborene Ferkel."},
    {"Ferkel_Tot", Tabelle::Ferkelung, 2, "Tot geborene Ferkel."},
    {"Verluste", Tabelle::Verluste, 0, "Als Verlust gebuchte Ferkel"},
    {"Zugesetzt", Tabelle::Verschiebung, 1, "Von anderen Sauen zugesetzte Ferkel"},
    {"Versetzt", Tabelle::Verschiebung, 0, "Zu anderen Sauen versetzte Ferkel"},
};

qint32 lastDay() { return static_cast<qint32>(QDate(2099, 12, 31).toJulianDay()); }

std::vector<std::vector<const Zaehlbuchung*>> byAnimal(const std::vector<Zaehlbuchung>& rows, int animals) {
    std::vector<std::vector<const Zaehlbuchung*>> result(static_cast<size_t>(animals));
    for (const Zaehlbuchung& booking : rows) result[static_cast<size_t>(booking.place)].push_back(&booking);
    return result;
}

}  // namespace

void Ferkelungslauf::addColumns(Grid& grid) const {
    const auto add = [&](const char* title, Align align, Sort sort) {
        grid.addColumn(
            {.key = QString::fromUtf8(title), .title = QString::fromUtf8(title), .align = align, .sort = sort});
    };
    for (const char* title : {"Saunr", "Stallnr", "Gruppe"}) add(title, Align::Left, Sort::Text);
    add("Wurf", Align::Right, Sort::Number);
    add("Datum", Align::Left, Sort::Date);
    for (const Figure& figure : Figures) add(figure.title, Align::Right, Sort::Number);
}

void Ferkelungslauf::fill(Grid& grid, Progress& progress) {
    addColumns(grid);
    m_bookings.emplace(m_db, m_sows, Ausschnitt{.fewAnimals = true}, [&] { return progress.step(0); });
    m_farrowings = byAnimal(m_bookings->rows(Tabelle::Ferkelung), m_sows.count());
    m_losses = byAnimal(m_bookings->rows(Tabelle::Verluste), m_sows.count());
    m_moves = byAnimal(m_bookings->rows(Tabelle::Verschiebung), m_sows.count());
    for (int i = 0; i < m_sows.count() && progress.step(i); ++i) addSow(grid, i, progress);
}

const std::vector<Ferkelungslauf::Bookings>& Ferkelungslauf::of(int figure) const {
    return Figures[figure].table == Tabelle::Verluste ? m_losses : m_moves;
}

/// The farrowings whose stored litter number lies in the range, by date. Each goes up to the next one of them; of
/// several on one day, and of one of another number on that day, the one entered first stands for each. `listed` is
/// their number with those that have no date and so no row.
std::vector<Ferkelungslauf::Row> Ferkelungslauf::farrowings(int place, int& listed) const {
    std::vector<qint32> days;
    const Bookings& all = m_farrowings[static_cast<size_t>(place)];
    for (const Zaehlbuchung* farrowing : all)
        if (const double number = farrowing->amounts[StoredNumber]; number >= m_from && number <= m_to)
            if (number != NoNumberStored) days.push_back(farrowing->day);
    std::sort(days.begin(), days.end());
    listed = static_cast<int>(days.size());
    std::vector<Row> rows;
    for (size_t i = 0; i < days.size(); ++i) {
        if (days[i] == 0) continue;
        const auto first =
            std::find_if(all.begin(), all.end(), [&](const Zaehlbuchung* b) { return b->day == days[i]; });
        rows.push_back({*first, i + 1 < days.size() ? days[i + 1] : lastDay()});
    }
    return rows;
}

double Ferkelungslauf::amount(int figure, const Row& row, int place) const {
    const Figure& kind = Figures[figure];
    if (kind.table == Tabelle::Ferkelung) return row.farrowing->amounts[kind.amount];
    double sum = 0;
    for (const Zaehlbuchung* booking : of(figure)[static_cast<size_t>(place)])
        if (booking->day >= row.farrowing->day && booking->day < row.next) sum += booking->amounts[kind.amount];
    return sum;
}

void Ferkelungslauf::addSow(Grid& grid, int place, Progress&) {
    const Zaehltier& sow = m_sows[place];
    int listed = 0;
    const std::vector<Row> rows = farrowings(place, listed);
    const int figures = static_cast<int>(std::size(Figures));
    const auto add = [&](Grid::Row cells, const std::vector<Row>& of) {
        for (int figure = 0; figure < figures; ++figure) {
            double sum = 0;
            for (const Row& row : of) sum += amount(figure, row, place);
            cells.append(static_cast<qint64>(sum));
        }
        grid.addValues(std::move(cells), sow.id);
        m_rows.emplace_back(place, of);
    };
    for (size_t i = 0; i < rows.size(); ++i) {
        Grid::Row head{Value(), Value(), Value()};
        if (i == 0) head = {sow.nummer, sow.stallnr, sow.gruppe};
        const double number = rows[i].farrowing->amounts[StoredNumber];
        head.append(number == NoNumberStored ? Value() : Value(static_cast<int>(number)));
        head.append(QDate::fromJulianDay(rows[i].farrowing->day));
        add(std::move(head), {rows[i]});
    }
    if (listed >= 2) add({QStringLiteral("Summe"), Value(), Value(), listed, Value()}, rows);
    if (listed == 0) return;
    grid.addSeparator();
    m_rows.emplace_back(place, std::vector<Row>());
}

std::optional<Explanation> Ferkelungslauf::explain(const Grid& grid, int row, int column) const {
    const int figure = column - FirstNumber;
    if (figure < 0 || row > static_cast<int>(m_rows.size())) return {};
    const auto& [place, litters] = m_rows[static_cast<size_t>(row - 1)];
    if (litters.empty()) return {};
    const Figure& kind = Figures[figure];
    Herleitung lines(m_db);
    const QString table = Buchungsname(kind.table);
    const auto add = [&, place = place](const Zaehlbuchung& booking) {
        Herleitungszeile line = lines.line(booking, table);
        line.numerator = booking.amounts[kind.amount];
        if (kind.table != Tabelle::Verschiebung || *line.numerator != 0) lines.add(std::move(line));
    };
    for (const Row& litter : litters) {
        if (kind.table == Tabelle::Ferkelung)
            add(*litter.farrowing);
        else
            for (const Zaehlbuchung* booking : of(figure)[static_cast<size_t>(place)])
                if (booking->day >= litter.farrowing->day && booking->day < litter.next) add(*booking);
    }
    QString sentence = QString::fromUtf8(kind.sentence);
    if (kind.table != Tabelle::Ferkelung)
        sentence += QStringLiteral(", vom Tag der Ferkelung an bis vor die nächste Ferkelung der Liste.");
    return lines.told(sentence + " Sau " + m_sows[place].nummer + ".", {}, grid.cell(row, column));
}

}  // namespace koben

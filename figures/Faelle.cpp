#include "figures/Faelle.h"

#include <algorithm>
#include <cmath>

namespace koben {

namespace {

Column columnFor(const char* title, int decimals) {
    const QString text = QString::fromUtf8(title);
    QString key = text.toLower();
    key.replace(u' ', u'_');
    if (decimals == isText) return {.key = key, .title = text};
    return {.key = key, .title = text, .align = Align::Right, .sort = Sort::Number, .decimals = decimals};
}

double rounded(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    return std::round(value * scale) / scale;
}

}  // namespace

Faelle::Faelle(std::shared_ptr<const Sauenbuch> book, const char* title, const QStringList& names,
               std::vector<Fallspalte> columns)
    : m_book(std::move(book)), m_columns(std::move(columns)) {
    m_table.columns.push_back(columnFor(title, isText));
    for (const Fallspalte& column : m_columns) m_table.columns.push_back(columnFor(column.title, column.decimals));
    for (const QString& name : names) {
        Grid::Row cells(static_cast<qsizetype>(m_table.columns.size()));
        cells[0] = name;
        m_table.rows.push_back(std::move(cells));
    }
    m_tallies.resize(m_table.rows.size() * m_columns.size());
}

int Faelle::place(int row, int column) const { return (row - 1) * static_cast<int>(m_columns.size()) + column - 2; }

void Faelle::count(int row, int column, const Sau& sow, qint32 day, int part) {
    m_cases.push_back({place(row, column), {day, &sow, part}});
    add(row, column, part);
}

void Faelle::add(int row, int column, int part) {
    Tally& tally = m_tallies[static_cast<size_t>(place(row, column))];
    tally.sum += part, ++tally.count;
}

void Faelle::set(int row, int column, const Value& value) {
    m_table.rows[static_cast<size_t>(row) - 1][column - 1] = value;
}

Value Faelle::valueOf(const Fallspalte& column, const Tally& tally) const {
    if (column.art == Fallspalte::Art::Summe && tally.count >= 0) return tally.sum;
    if (tally.count <= 0) return {};
    const double factor = column.art == Fallspalte::Art::Prozent ? 100 : 1;
    return rounded(factor * static_cast<double>(tally.sum) / static_cast<double>(tally.count), column.decimals);
}

Explanation Faelle::explain(std::vector<Fall> bookings, const Fallspalte& column, const Value& shown) {
    const bool sum = column.art == Fallspalte::Art::Summe;
    Explanation told;
    const auto number = [](const char* title) {
        const QString text = QString::fromUtf8(title);
        return Column{.key = text.toLower(), .title = text, .align = Align::Right, .sort = Sort::Number};
    };
    told.columns = {{.key = QStringLiteral("nummer"), .title = QStringLiteral("Nummer")},
                    {.key = QStringLiteral("datum"), .title = QStringLiteral("Datum"), .sort = Sort::Date},
                    {.key = QStringLiteral("buchung"), .title = QStringLiteral("Buchung")},
                    number(sum ? "Wert" : "Zähler")};
    if (!sum) told.columns.push_back(number("Nenner"));
    std::stable_sort(bookings.begin(), bookings.end(), [](const Fall& a, const Fall& b) { return a.day < b.day; });
    qint64 total = 0;
    for (const Fall& one : bookings) {
        total += one.part;
        Explanation::Line line{{Value(one.sow->nummer), Value(QDate::fromJulianDay(one.day)),
                                Value(QString::fromUtf8(column.was)), Value(one.part)},
                               one.sow->id};
        if (!sum) line.cells += Value(1);
        told.lines.push_back(std::move(line));
    }
    if (!sum) told.numerator = QString::number(total), told.denominator = QString::number(bookings.size());
    told.value =
        shown.isNull() ? QString() : QString::number(shown.toDouble(), 'f', column.decimals).replace(u'.', u',');
    return told;
}

Grafikinhalt Faelle::finish() {
    for (int row = 1; row <= static_cast<int>(m_table.rows.size()); ++row)
        for (size_t i = 0; i < m_columns.size(); ++i)
            if (m_columns[i].art != Fallspalte::Art::Given && m_table.cell(row, static_cast<int>(i) + 2).isNull())
                set(row, static_cast<int>(i) + 2, valueOf(m_columns[i], tally(row, static_cast<int>(i) + 2)));
    Grafikinhalt content;
    content.table = m_table;
    // Cases point into the book.
    content.behind = [book = m_book, cases = std::make_shared<const std::vector<Gezaehlt>>(std::move(m_cases)),
                      columns = std::move(m_columns), table = std::move(m_table)](int row, int column) {
        std::optional<Explanation> told;
        if (column < 2 || row < 1 || column > static_cast<int>(columns.size()) + 1) return told;
        const Fallspalte& what = columns[static_cast<size_t>(column) - 2];
        if (what.art == Fallspalte::Art::Given || table.cell(row, column).isNull()) return told;
        const int cell = (row - 1) * static_cast<int>(columns.size()) + column - 2;
        std::vector<Fall> own;
        for (const Gezaehlt& one : *cases)
            if (one.cell == cell) own.push_back(one.booking);
        told = explain(std::move(own), what, table.cell(row, column));
        return told;
    };
    return content;
}

}  // namespace koben

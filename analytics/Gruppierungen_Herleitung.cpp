#include <array>
#include "analytics/Gruppierungen.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

using Art = Gruppenwert::Art;

constexpr std::array AnimalFields{"Art", "Nummer", "Gruppe", "Stallnr"};

Column column(const QString& title, Sort sort = Sort::Text) {
    return {.key = title, .title = title, .align = sort == Sort::Number ? Align::Right : Align::Left, .sort = sort};
}

QString shown(const QString& what, const Value& value) {
    if (value.isNull()) return what + " ohne Angabe";
    return QStringLiteral("%1 = „%2“").arg(what, value.toText());
}

/// A condition that holds for the group of this value; a value to be bound is added.
QString equals(const QString& what, const Value& value, std::vector<Value>& bound) {
    if (value.isNull()) return what + " IS NULL";
    bound.push_back(value);
    return what + " = ?";
}

/// A group that a cell stands for.
struct Zelle {
    Gruppenwert figure;
    QString text;  ///< as it reads
    Value key;
    std::optional<Value> pivot;
};

class Herleitung {
public:
    Herleitung(const Database& db, const Gruppierung& grouping, const Table& result)
        : m_db(db), m_grouping(grouping), m_result(result) {}

    std::optional<Explanation> of(int row, int column) const {
        if (row < 1 || row > m_result.rowCount() || column < 1 || column > m_result.columnCount()) return {};
        if (!m_grouping.list.isEmpty()) return days(row - 1, column - 1);
        const int fixed = static_cast<int>(m_grouping.columns.size());
        Zelle cell{m_grouping.cell, m_result.text(row - 1, column - 1), m_result.value(row - 1, 0), {}};
        if (column == 1) return {};
        if (column - 2 < fixed) {
            cell.figure = m_grouping.columns[static_cast<size_t>(column - 2)];
        } else {
            const Table pivots =
                m_db.table(QStringLiteral("select %1 as h0%2 group by %1").arg(m_grouping.pivot, m_grouping.source()));
            const int pivot = column - 2 - fixed;
            if (pivot >= pivots.rowCount()) return {};
            cell.pivot = pivots.value(pivot, 0);
        }
        return told(cell);
    }

private:
    QString sentence(const Zelle& cell) const {
        const bool bookings = !m_grouping.table.isEmpty();
        QString words = QStringLiteral("Anzahl");
        if (cell.figure.art == Art::Summe) words = "Summe von " + cell.figure.field;
        if (cell.figure.art == Art::Mittel)
            words = QStringLiteral("Durchschnitt von %1 (Summe / Anzahl der Buchungen mit einer Angabe)")
                        .arg(cell.figure.field);
        words += bookings ? QStringLiteral(" der Buchungen (%1) mit ").arg(m_grouping.table)
                          : QStringLiteral(" der Tiere mit ");
        words += shown(m_grouping.keyName.isEmpty() ? m_grouping.key : m_grouping.keyName, cell.key);
        if (cell.pivot) words += " und " + shown(m_grouping.pivot, *cell.pivot);
        return words +
               (m_grouping.inHerd ? "; nur Tiere im Bestand." : "; auch Tiere, die nicht mehr im Bestand sind.");
    }

    /// Everything that the result put into the group: ID, names of the animal, day of the booking, what is summed.
    Statement behind(const Zelle& cell) const {
        const bool bookings = !m_grouping.table.isEmpty();
        std::vector<Value> bound;
        QString conditions = m_grouping.source().contains(QStringLiteral(" where ")) ? " and " : " where ";
        conditions += equals(m_grouping.key, cell.key, bound);
        if (cell.pivot) conditions += " and " + equals(m_grouping.pivot, *cell.pivot, bound);
        Statement rows = m_db.prepare(
            QStringLiteral(
                "select Sauen.ID as h0, Art as h1, Nummer as h2, Gruppe as h3, Stallnr as h4, %1 as h5, %2 as "
                "h6%3%4 order by Nummer%5")
                .arg(bookings ? QStringLiteral("Datum") : QStringLiteral("Geburtsdatum"),
                     cell.figure.field.isEmpty() ? QStringLiteral("1") : cell.figure.field, m_grouping.source(),
                     conditions, bookings ? QStringLiteral(", Datum") : QString()));
        rows.bind(bound);
        return rows;
    }

    Explanation told(const Zelle& cell) const {
        const bool mean = cell.figure.art == Art::Mittel;
        Explanation told;
        told.sentence = sentence(cell);
        told.value = cell.text;
        told.columns.push_back(
            column(m_grouping.table.isEmpty() ? QStringLiteral("Geburtsdatum") : QStringLiteral("Datum"), Sort::Date));
        for (const char* field : AnimalFields) told.columns.push_back(column(QString::fromUtf8(field)));
        told.columns.push_back(column(mean ? QStringLiteral("Zähler") : QStringLiteral("Wert"), Sort::Number));
        if (mean) told.columns.push_back(column(QStringLiteral("Nenner"), Sort::Number));
        qint64 sum = 0, counted = 0;
        Statement rows = behind(cell);
        while (rows.next()) {
            Grid::Row cells{rows.value(5)};
            for (int i = 1; i <= static_cast<int>(AnimalFields.size()); ++i)
                cells.append(Hochkomma_ersetzen(rows.text(i)));
            cells.append(rows.value(6));
            if (mean) cells.append(rows.isNull(6) ? 0 : 1);
            sum += rows.integer(6);
            counted += !rows.isNull(6);
            told.lines.push_back({std::move(cells), rows.integer(0)});
        }
        if (mean) told.numerator = Value(Money{sum}).toText(), told.denominator = QString::number(counted);
        return told;
    }

    /// The days of a piglet in its box.
    std::optional<Explanation> days(int row, int column_) const {
        if (column_ != m_result.columnCount() - 1) return {};
        Explanation told;
        told.sentence = QStringLiteral("Tage vom Boxdatum bis heute; nur Ferkel im Bestand mit einem Boxdatum.");
        told.value = m_result.text(row, column_);
        Grid::Row cells;
        for (int i = 0; i < m_result.columnCount(); ++i) {
            const bool figure = i == column_;
            const Field& field = m_result.field(i);
            told.columns.push_back(column(figure ? QStringLiteral("Wert") : field.name, figure ? Sort::Number
                                                                                        : field.type == Type::Date
                                                                                            ? Sort::Date
                                                                                            : Sort::Text));
            cells.append(m_result.value(row, i));
        }
        told.lines.push_back({std::move(cells)});
        return told;
    }

    const Database m_db;
    const Gruppierung m_grouping;
    const Table m_result;
};

}  // namespace

std::function<std::optional<Explanation>(int row, int column)> Gruppierung_herleiten(const Database& db,
                                                                                     const Gruppierung& grouping,
                                                                                     const Table& result) {
    return [from = Herleitung(db, grouping, result)](int row, int column) { return from.of(row, column); };
}

}  // namespace koben

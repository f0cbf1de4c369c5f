#include "plans/Buchungsbericht.h"

#include <algorithm>
#include <tuple>

#include "core/PZ_Koben_Subs.h"
#include "forms/Grid.h"
#include "store/Collation.h"

namespace koben {

namespace {

constexpr std::array AnimalFields{"Art", "Nummer", "Gruppe", "Stallnr"};
constexpr std::array EventOrder{1, 0, 2, 3};  // of the animal's fields in the list of events

constexpr int Beside = 2;  // columns that are read and not listed
constexpr int Share = Buchungsschritte / static_cast<int>(Buchungstabellen.size() * 2);  // reading or listing a table

QString utf8(const char* text) { return QString::fromUtf8(text); }

/// How far the listing of a table is.
bool listed(Progress& progress, size_t table, int row, const Table& rows) {
    const auto begun = static_cast<qint64>(table) * 2 * Share + Share;
    return progress.step(begun + static_cast<qint64>(row) * Share / rows.rowCount());
}

/// The bookings of one table; nothing where the user has cancelled. The animal's number and ID come last, shown
/// or not.
std::optional<Table> read(const Database& db, const Buchungswahl& choice, size_t table, const QStringList& fields,
                          Progress& progress) {
    const QString name = utf8(Buchungstabellen[table]);
    QStringList columns;
    for (size_t i = 0; i < AnimalFields.size(); ++i)
        if (choice.columns[i]) columns += QStringLiteral("Sauen.%1 as %1").arg(utf8(AnimalFields[i]));
    for (const QString& field : fields) columns += QStringLiteral("%1.%2 as %2").arg(name, field);
    columns += {QStringLiteral("Sauen.Nummer as tiernr"), QStringLiteral("Sauen.ID as tier")};
    QString select = "select " + columns.join(QStringLiteral(", ")) + " from Sauen, " + name + " where " +
                     choice.animals + (choice.animals.isEmpty() ? "" : " and ") + "Sauen.ID = " + name + ".Kennung";
    if (!choice.from.isEmpty())
        select += QStringLiteral(" and %1.Datum >= %2 and %1.Datum <= %3")
                      .arg(name, Sql_Datum(QString(choice.from)), Sql_Datum(QString(choice.to)));
    return db.table(select + " order by Sauen.Nummer, " + name + ".Datum",
                    [&](qint64) { return progress.step(static_cast<qint64>(table) * 2 * Share); });
}

Value cellOf(const Table& rows, int row, int column) {
    const Type type = rows.field(column).type;
    if (type == Type::Currency) return Zahl_formatieren(rows.text(row, column), 2);
    if (type == Type::Text) return Hochkomma_ersetzen(rows.text(row, column));
    return rows.value(row, column);
}

// --------------------------------------------------------------------------------------------------- table by table

class TableReport {
public:
    TableReport(Grid& grid, const Buchungswahl& choice, Progress& progress)
        : m_grid(grid), m_choice(choice), m_progress(progress) {}

    bool add(const Table& rows, size_t table) {
        if (rows.rowCount() == 0) return true;
        const QString name = utf8(Buchungstabellen[table]);
        const int number = rows.columnCount() - Beside;
        Grid::Row titles;
        for (int column = 0; column < number; ++column) titles.append(rows.field(column).name.toUpper());
        m_grid.addRow({name.toUpper()});
        m_grid.addValues(std::move(titles));
        for (int row = 0; row < rows.rowCount(); ++row) {
            if (!listed(m_progress, table, row, rows)) return false;
            const bool last = row + 1 == rows.rowCount();
            const bool animalEnds = last || rows.text(row + 1, number) != rows.text(row, number);
            if (!m_choice.latestOnly || animalEnds) addRow(rows, row, number);
            if (m_choice.emptyRows && animalEnds && !last) m_grid.addRow({});
        }
        m_grid.addRow({});
        m_grid.addRow({});
        return true;
    }

private:
    void addRow(const Table& rows, int row, int columns) {
        Grid::Row cells;
        cells.reserve(columns);
        for (int column = 0; column < columns; ++column) cells.append(cellOf(rows, row, column));
        m_grid.addValues(std::move(cells), rows.integer(row, columns + 1));
    }

    Grid& m_grid;
    const Buchungswahl& m_choice;
    Progress& m_progress;
};

// ----------------------------------------------------------------------------------------------------- as events

/// What an event says of a booking beyond day and animal.
struct EventFields {
    QStringList cost;                                       ///< the field; or the one that the other lessens
    std::vector<std::pair<const char*, const char*>> hint;  ///< what stands before a field, and the field
    QStringList all() const {
        QStringList fields = cost;
        for (const auto& [before, field] : hint) fields += utf8(field);
        return fields;
    }
};

const EventFields& eventFields(size_t table) {
    static const std::array<EventFields, 8> all{
        {{{"Kosten"}, {{"", "Ebernr"}, {"\t", "Belegungart"}}},
         {{"Kosten"}, {{"", "Ferkel_Gesamt"}, {" / ", "Ferkel_Lebendig"}, {" / ", "Ferkel_Tot"}}},
         {{}, {{"", "Anzahl_Ferkel"}}},
         {{"Kosten"}, {{"", "Trächtig"}}},
         {{"Kosten"}, {{"", "Anzahl_Ferkel"}, {"\t", "Grund"}}},
         {{}, {{"", "Anzahl_Ferkel"}, {"\t", "Zu_Saunr"}}},
         {{"Kosten"}, {{"", "Behandlungsart"}, {"\t", "Medikament"}, {"\t", "Menge"}, {" ", "Einheit"}}},
         {{"Ausgaben", "Einnahmen"}, {{"", "Anzahl_Einkauf"}, {" / ", "Anzahl_Verkauf"}, {"\t", "Kunde"}}}}};
    return all[table];
}

struct Event {
    qint64 day;
    QByteArray animal;  ///< sort key of the number
    QString number;
    qint64 id;
    Grid::Row cells;
};

class EventReport {
public:
    EventReport(Grid& grid, const Buchungswahl& choice, Progress& progress)
        : m_grid(grid), m_choice(choice), m_progress(progress) {
        grid.addColumn({.key = "datum", .title = "Datum", .sort = Sort::Date});
        grid.addColumn({.key = "buchung", .title = "Buchung"});
        for (const int field : EventOrder)
            if (choice.columns[static_cast<size_t>(field)]) {
                const QString title = utf8(AnimalFields[static_cast<size_t>(field)]);
                grid.addColumn({.key = title.toLower(), .title = title});
            }
        grid.addColumn({.key = "kosten", .title = "Kosten"});
        grid.addColumn({.key = "hinweise", .title = "Hinweise"});
    }

    bool take(const Table& rows, size_t table) {
        for (int row = 0; row < rows.rowCount(); ++row) {
            if (!listed(m_progress, table, row, rows)) return false;
            const QString number = rows.text(row, rows.columnCount() - Beside);
            // Rows of one animal stand together.
            if (m_events.empty() || m_events.back().number != number) m_key = sortKey(Hochkomma_ersetzen(number));
            m_events.push_back({rows.integer(row, rows.columnOf(u"Datum")), m_key, number,
                                rows.integer(row, rows.columnCount() - 1), cells(rows, row, table)});
        }
        return true;
    }

    void write() {
        const bool numbered = m_choice.columns[1];  // what is not shown does not sort
        std::stable_sort(m_events.begin(), m_events.end(), [&](const Event& a, const Event& b) {
            if (!numbered) return a.day < b.day;
            return m_choice.byAnimal ? std::tie(a.animal, a.day) < std::tie(b.animal, b.day)
                                     : std::tie(a.day, a.animal) < std::tie(b.day, b.animal);
        });
        for (size_t i = 0; i < m_events.size(); ++i) {
            if (m_choice.emptyRows && i > 0 && m_events[i - 1].number != m_events[i].number) m_grid.addRow({});
            m_grid.addValues(std::move(m_events[i].cells), m_events[i].id);
        }
    }

private:
    Grid::Row cells(const Table& rows, int row, size_t table) const {
        Grid::Row cells{rows.value(row, rows.columnOf(u"Datum")), utf8(Buchungstabellen[table])};
        for (const int field : EventOrder)
            if (m_choice.columns[static_cast<size_t>(field)])
                cells.append(
                    Hochkomma_ersetzen(rows.text(row, rows.columnOf(utf8(AnimalFields[static_cast<size_t>(field)])))));
        const EventFields& kind = eventFields(table);
        cells.append(cost(rows, row, kind.cost));
        QString hint;
        for (const auto& [before, field] : kind.hint)
            hint += utf8(before) + Hochkomma_ersetzen(rows.text(row, rows.columnOf(utf8(field))));
        cells.append(hint);
        return cells;
    }

    static QString cost(const Table& rows, int row, const QStringList& fields) {
        if (fields.isEmpty()) return {};
        Money cost{rows.integer(row, rows.columnOf(fields.first()))};
        if (fields.size() > 1) cost.tenThousandths -= rows.integer(row, rows.columnOf(fields.last()));
        return Zahl_formatieren(Value(cost).toText(), 2);
    }

    Grid& m_grid;
    const Buchungswahl& m_choice;
    Progress& m_progress;
    std::vector<Event> m_events;
    QByteArray m_key;
};

}  // namespace

bool Buchungen_auflisten(Grid& grid, const Database& db, const Buchungswahl& choice, Progress& progress) {
    std::vector<std::pair<size_t, Table>> tables;
    int widest = 0;
    for (size_t table = 0; table < Buchungstabellen.size(); ++table) {
        if (choice.fields[table].isEmpty()) continue;
        const auto rows = read(db, choice, table, choice.fields[table], progress);
        if (!rows) return false;
        if (rows->rowCount() > 0) widest = std::max(widest, rows->columnCount() - Beside);
        tables.emplace_back(table, *rows);
    }
    for (int column = 1; column <= widest; ++column)
        grid.addColumn({.key = QString::number(column), .title = QString()});
    TableReport report(grid, choice, progress);
    return std::all_of(tables.begin(), tables.end(),
                       [&](const auto& one) { return report.add(one.second, one.first); });
}

bool Ereignisse_auflisten(Grid& grid, const Database& db, const Buchungswahl& choice, Progress& progress) {
    EventReport report(grid, choice, progress);
    for (size_t table = 0; table < Buchungstabellen.size(); ++table) {
        const auto rows = read(db, choice, table, QStringList{"Datum"} + eventFields(table).all(), progress);
        if (!rows || !report.take(*rows, table)) return false;
    }
    report.write();
    return true;
}

}  // namespace koben

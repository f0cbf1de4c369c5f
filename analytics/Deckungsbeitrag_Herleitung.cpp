#include "analytics/Deckungsbeitrag_Herleitung.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

constexpr std::array AnimalFields{"Art", "Nummer", "Gruppe", "Stallnr"};

QString columnName(int item) {
    return item == Endposten ? QStringLiteral("Summe")
                             : QString::fromUtf8(Postenliste[static_cast<size_t>(item)].column);
}

Column column(const QString& title, Sort sort = Sort::Text) {
    return {.key = title, .title = title, .align = sort == Sort::Number ? Align::Right : Align::Left, .sort = sort};
}

void appendAnimal(Grid::Row& cells, const Deckungsbeitrag& margin, int row) {
    for (int i = 0; i < static_cast<int>(AnimalFields.size()); ++i)
        cells.append(row < 0 ? Value() : Value(Hochkomma_ersetzen(margin.animals().text(row, i))));
}

void addAnimalColumns(Explanation& told) {
    for (const char* field : AnimalFields) told.columns.push_back(column(QString::fromUtf8(field)));
}

class Herleitung {
public:
    explicit Herleitung(Deckungsliste list) : m_list(std::move(list)) {}

    std::optional<Explanation> of(int row, int column) const {
        const int at = column - 1 - m_list.names, rows = static_cast<int>(m_list.rows.size());
        if (at < 0 || at >= static_cast<int>(m_list.items.size()) || row < 1 || row > rows + 1) return {};
        const int item = m_list.items[static_cast<size_t>(at)];
        return row > rows ? total(item) : amount(m_list.rows[static_cast<size_t>(row - 1)], item);
    }

private:
    QString definition(int item) const {
        if (item != Endposten) return QString::fromUtf8(Postenliste[static_cast<size_t>(item)].sentence);
        QString words = QStringLiteral("Einnahmen weniger Kosten:");
        for (const int i : m_list.items)
            if (i != Endposten) words += (Postenliste[static_cast<size_t>(i)].income ? " + " : " - ") + columnName(i);
        return words;
    }

    QString sentence(int item, int from, int to) const {
        QString words = QStringLiteral("%1 (01.01.%2 bis 31.12.%3).").arg(definition(item)).arg(from).arg(to);
        if (m_list.years) words += QStringLiteral(" Tiere: %1.").arg(m_list.choice.words);
        if (m_list.years && item == 1)
            words += m_list.choice.strays ? QStringLiteral(" Verkäufe ohne Sau zählen mit.")
                                          : QStringLiteral(" Verkäufe ohne Sau zählen nicht mit.");
        if (m_list.years && item == 8) words += QStringLiteral(" Ein Einkauf ohne Sau zählt bei jedem Tier einmal.");
        return words;
    }

    Explanation amount(const Deckungsbeitrag::Zeile& row, int item) const {
        Explanation told;
        told.sentence =
            sentence(item, row.year ? row.year : m_list.choice.from, row.year ? row.year : m_list.choice.to);
        told.value = Betrag_mit_Waehrung(row.amounts[static_cast<size_t>(item)]);
        if (item == Endposten) told.columns.push_back(column(QStringLiteral("Posten")));
        told.columns.push_back(column(QStringLiteral("Datum"), Sort::Date));
        addAnimalColumns(told);
        told.columns.push_back(column(QStringLiteral("Angabe")));
        told.columns.push_back(column(QStringLiteral("Wert"), Sort::Number));
        const Deckungsbeitrag margin(m_list.db, m_list.choice);
        const int animal = row.animal ? margin.rowOf(row.animal) : -1;
        if (row.animal && animal < 0) return told;
        for (const auto& behind : margin.behind(item, row.year, animal)) {
            Grid::Row cells;
            if (item == Endposten) cells.append(columnName(behind.item));
            cells.append(behind.day);
            appendAnimal(cells, margin, behind.row);
            cells << Value(Hochkomma_ersetzen(behind.detail)) << behind.amount;
            told.lines.push_back({std::move(cells), behind.row < 0 ? 0 : margin.id(behind.row)});
        }
        return told;
    }

    Explanation total(int item) const {
        Explanation told;
        told.sentence =
            QStringLiteral("Summe der Spalte %1 über alle Zeilen der Liste (%2); keine Zelle ist ausgelassen.")
                .arg(columnName(item))
                .arg(m_list.rows.size());
        told.value = Betrag_mit_Waehrung(m_list.totals[static_cast<size_t>(item)]);
        if (m_list.years)
            told.columns.push_back(column(QStringLiteral("Jahr"), Sort::Number));
        else
            addAnimalColumns(told);
        told.columns.push_back(column(QStringLiteral("Wert"), Sort::Number));
        const auto margin = m_list.years ? nullptr : std::make_unique<Deckungsbeitrag>(m_list.db, m_list.choice);
        for (const auto& row : m_list.rows) {
            Grid::Row cells;
            if (margin)
                appendAnimal(cells, *margin, margin->rowOf(row.animal));
            else
                cells.append(row.year);
            cells.append(row.amounts[static_cast<size_t>(item)]);
            told.lines.push_back({std::move(cells), row.animal});
        }
        return told;
    }

    const Deckungsliste m_list;
};

}  // namespace

std::function<std::optional<Explanation>(int row, int column)> Deckungsbeitrag_herleiten(Deckungsliste list) {
    return [told = std::make_shared<const Herleitung>(std::move(list))](int row, int column) {
        return told->of(row, column);
    };
}

}  // namespace koben

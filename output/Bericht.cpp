#include "output/Bericht.h"

#include <algorithm>

#include "core/PZ_Koben_Subs.h"

namespace koben {

// ------------------------------------------------------------------------------------------------------------ choices

void Bericht::bindButtons(Button& accept, Button& close, Button* help) {
    acceptButton = &accept;
    cancelButton = &close;
    close.onClick = [this] { leave(); };
    if (help) help->onClick = [this] { koben.open(QStringLiteral("PH_Hilfe")); };
}

void Bericht::bind(std::function<void()> restore, std::function<void()> keep) {
    m_choices.push_back({std::move(restore), std::move(keep)});
}

void Bericht::bind(CheckBox& box, int slot) {
    qint16& kept = koben.Konfig_Zahl.at(static_cast<size_t>(slot));
    bind(
        [&box, &kept] {
            if (kept < 2) box.setChecked(kept == 1);
        },
        [&box, &kept] { kept = box.checked() ? 1 : 0; });
}

void Bericht::bind(ControlArray<CheckBox>& boxes, int first) {
    for (int i = 0; i < boxes.count(); ++i) bind(boxes[i], first + i);
}

void Bericht::bind(OptionGroup& options, int slot) {
    qint16& kept = koben.Konfig_Zahl.at(static_cast<size_t>(slot));
    bind(
        [&options, &kept] {
            options.select(0);
            options.select(std::max<int>(kept, 0));
        },
        [&options, &kept] { kept = static_cast<qint16>(options.selected()); });
}

void Bericht::bindNumber(TextBox& box, int slot) {
    qint16& kept = koben.Konfig_Zahl.at(static_cast<size_t>(slot));
    bind([&box, &kept] { box.setText(QString::number(kept)); },
         [&box, &kept] { kept = static_cast<qint16>(std::clamp(Wert(box.text()), -32768.0, 32767.0)); });
}

void Bericht::bindText(TextBox& box, int slot) {
    QString& kept = koben.Konfig_Text.at(static_cast<size_t>(slot));
    bind([&box, &kept] { box.setText(kept); }, [&box, &kept] { kept = box.text(); });
}

void Bericht::bindMarks(ListBox& list, int slot, Marks marks) {
    QString& kept = koben.Konfig_Text.at(static_cast<size_t>(slot));
    const auto restore = [&list, &kept] {
        for (int row = 0; row < list.items().size(); ++row)
            list.setMarked(row, kept.contains(u';' + list.items().at(row) + u';'));
    };
    bind(
        marks == Marks::Restored ? std::function<void()>(restore) : [] {},
        [&list, &kept] {
            kept = QStringLiteral(";");
            for (const QString& text : marked(list)) kept += text + u';';
        });
}

void Bericht::bindAllAndNone(ControlArray<Button>& buttons, std::function<ListBox&()> list) {
    for (int i = 0; i < buttons.count(); ++i) buttons[i].onClick = [list, i] { markAll(list(), i == 0); };
}

void Bericht::bindDate(TextBox& field, Button& opens, Calendar& calendar) {
    field.onLostFocus = [this, &field] {
        field.setText(Datum_ergaenzen(field.text(), koben.Heute));
        dateChanged(field);
    };
    opens.icon = QStringLiteral("kalender");
    opens.setHint(QStringLiteral("Kalender"));
    if (!m_calendarFor) m_calendarFor = &field;
    opens.onClick = [this, &field, &calendar] {
        const bool other = std::exchange(m_calendarFor, &field) != &field;
        calendar.setVisible(other || !calendar.visible());
    };
    calendar.onPick = [this, &calendar](QDate date) {
        m_calendarFor->setText(Datum_als_Anzeige(date));
        calendar.setVisible(false);
        dateChanged(*m_calendarFor);
    };
    bind([this, &calendar] { calendar.setDate(Datum_aus_Text(koben.Heute)); }, [] {});
}

void Bericht::bindWidths(Grid& list, const QString& section) {
    bind([this, &list, section] { koben.restoreWidths(list, section); }, [] {});
    list.onResized = [this, &list, section](int) { koben.saveWidths(list, section); };
}

// --------------------------------------------------------------------------------------------------------------- life

void Bericht::Load() {
    m_db = koben.connect();
    fillChoices();
    for (const Choice& choice : m_choices) choice.restore();
}

void Bericht::leave() {
    for (const Choice& choice : m_choices) choice.keep();
    m_db.close();
    close();
}

// -------------------------------------------------------------------------------------------------------------- a run

void Bericht::markAll(ListBox& list, bool on) {
    for (int row = 0; row < list.items().size(); ++row) list.setMarked(row, on);
}

QStringList Bericht::marked(const ListBox& list) {
    QStringList texts;
    for (int row = 0; row < list.items().size(); ++row)
        if (list.marked(row)) texts.append(list.items().at(row));
    return texts;
}

QStringList Bericht::markedOrAll(ListBox& list) {
    if (list.markedCount() == 0) markAll(list, true);
    return marked(list);
}

bool Bericht::run(const QString& what, qint64 steps, ProgressBar* meter, const std::function<void(Progress&)>& work) {
    const WaitCursor wait(koben);
    Progress progress(koben, what, steps, meter);
    work(progress);
    return !progress.cancelled();
}

namespace {

bool holdsNumbers(const Grid& grid, int column, int first) {
    return column >= std::max(first, 2) && column <= grid.columnCount() && grid.column(column).sort == Sort::Number;
}

/// What the cells of a column up to a row add up to; a cell that is empty or 0 does not count.
struct ColumnSum {
    double sum = 0;
    int count = 0;
    ColumnSum(const Grid& grid, int column, int rows) {
        QHash<QString, double> known;  // few different numbers fill a column of a large herd
        for (int row = 1; row <= rows; ++row) {
            const QString cell = grid.cell(row, column);
            auto number = known.constFind(cell);
            if (number == known.constEnd()) number = known.insert(cell, Zahl_aus_Text(QString(cell)));
            if (*number != 0) sum += *number, ++count;
        }
    }
    double mean() const { return count > 0 ? sum / count : 0; }
};

QString shown(double number) { return Zahl_formatieren(QString::number(number, 'f', 6), 1); }

/// "12, 15 und 3 weitere".
QString listed(const QStringList& names) {
    constexpr int most = 10;
    if (names.size() <= most) return names.join(QStringLiteral(", "));
    return names.mid(0, most).join(QStringLiteral(", ")) + QStringLiteral(" und %1 weitere").arg(names.size() - most);
}

}  // namespace

void Bericht::addMeansAndSums(Grid& grid, int first) {
    if (grid.rowCount() == 0) return;
    Grid::Row means{QStringLiteral("SCHNITT")}, sums{QStringLiteral("SUMME")};
    for (int c = 2; c <= grid.columnCount(); ++c) {
        if (!holdsNumbers(grid, c, first)) {
            means.append(Value()), sums.append(Value());
            continue;
        }
        const ColumnSum column(grid, c, grid.rowCount());
        means.append(shown(column.mean()));
        sums.append(shown(column.sum));
    }
    grid.addValues(std::move(means));
    grid.addValues(std::move(sums));
}

std::optional<Explanation> Bericht::explainMeansAndSums(const Grid& grid, int row, int column, int first) {
    const int rows = grid.rowCount() - 2;
    if (rows < 1 || row <= rows || !holdsNumbers(grid, column, first)) return {};
    const bool mean = row == rows + 1;
    const ColumnSum total(grid, column, rows);
    const auto number = [](double value) { return Value(Wert(QString::number(value, 'f', 6))); };
    const QString head = grid.column(1).title;
    Explanation told{
        .sentence = {},
        .value = grid.cell(row, column),
        .columns = {{.key = "zeile", .title = head},
                    {.key = "zelle", .title = "Zelle", .align = Align::Right, .sort = Sort::Number},
                    {.key = "anmerkung", .title = "Anmerkung"},
                    {.key = "wert", .title = mean ? "Zähler" : "Wert", .align = Align::Right, .sort = Sort::Number}}};
    if (mean) {
        told.numerator = number(total.sum).toText(), told.denominator = QString::number(total.count);
        told.columns.push_back({.key = "nenner", .title = "Nenner", .align = Align::Right, .sort = Sort::Number});
    }
    QStringList leftOut;
    for (int r = 1; r <= rows; ++r) {
        if (grid.isSeparator(r)) continue;
        const QString cell = grid.cell(r, column);
        const double value = Zahl_aus_Text(QString(cell));
        const QString name = grid.cell(r, 1);
        const QString why = value != 0       ? QString()
                            : cell.isEmpty() ? QStringLiteral("leer, ausgelassen")
                                             : QStringLiteral("0 oder keine Zahl, ausgelassen");
        if (value == 0) leftOut += name.isEmpty() ? QStringLiteral("Zeile %1").arg(r) : name;
        Grid::Row cells{name, cell, why, value != 0 ? number(value) : Value()};
        if (mean) cells.append(value != 0 ? Value(1) : Value());
        told.lines.push_back({std::move(cells), grid.animal(r)});
    }
    told.sentence =
        QStringLiteral("%1 der Spalte „%2“ über alle Zellen, die nicht leer und nicht 0 sind (%3). ")
            .arg(mean ? "Mittelwert" : "Summe", grid.column(column).title)
            .arg(total.count) +
        (leftOut.isEmpty() ? QStringLiteral("Keine Zelle ist ausgelassen.")
                           : QStringLiteral("Ausgelassen: %1 (%2 %3).").arg(leftOut.size()).arg(head, listed(leftOut)));
    return told;
}

}  // namespace koben

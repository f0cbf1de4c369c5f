#include "ui/QuietLine.h"

#include <QAccessible>
#include <QRegularExpression>

#include "core/Aktionsnamen.h"
#include "forms/Grid.h"

namespace koben::ui {

namespace {

const QString lineName = QStringLiteral("Hinweiszeile");
constexpr size_t MostToName = 500;  // marked rows whose kind is looked at

/// The one kind of the marked animals, "" where they are of several.
QString kindOf(const Grid& grid, const std::vector<int>& rows) {
    const int art = grid.columnOf(u"Art");
    if (rows.size() > MostToName) return {};
    const QString first = grid.cell(rows.front(), art);
    for (const int row : rows)
        if (grid.cell(row, art) != first) return {};
    return first;
}

}  // namespace

QuietLine::QuietLine(QWidget* parent) : QLabel(parent) {
    setObjectName(lineName);
    setTextFormat(Qt::PlainText);
    setForegroundRole(QPalette::PlaceholderText);
    setMinimumHeight(fontMetrics().height());
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // a long sentence must not widen the window
}

void QuietLine::say(const QString& text) {
    if (text == this->text()) return;
    setText(text);
    setToolTip(text);
    setAccessibleName(text);
    if (text.isEmpty()) return;
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void say(const QWidget& widget, const QString& text) {
    if (auto* line = static_cast<QuietLine*>(widget.window()->findChild<QLabel*>(lineName))) line->say(text);
}

QString markedText(const Grid& grid) {
    const std::vector<int> rows = grid.markedRows();
    if (rows.size() < 2) return {};
    const auto count = static_cast<qint64>(rows.size());
    return (grid.columnOf(u"Art") == 0 ? counted(count, "Zeile", "Zeilen")
                                       : countedAnimals(count, kindOf(grid, rows))) +
           QStringLiteral(" markiert");
}

QString doneText(const QString& action) {
    // "Belegung 1023 vom 17.07.2026 gelöscht" says what became of it, "Belegung 1023, 17.07.2026" does not
    static const QRegularExpression participle(QStringLiteral(" (ge|ver|auf)\\w*[tn]$|iert$"));
    return participle.match(action).hasMatch() ? action : QStringLiteral("Gespeichert: ") + action;
}

}  // namespace koben::ui

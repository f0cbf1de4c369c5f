#include "ui/QuietLine.h"

#include <QAccessible>
#include <QRegularExpression>

#include "forms/Grid.h"

namespace koben::ui {

namespace {

const QString lineName = QStringLiteral("Hinweiszeile");
constexpr int MostToName = 500;  // marked rows whose kind is looked at

struct Kind {
    const char16_t* art;
    const char16_t* many;
};
const Kind Kinds[] = {{u"Sau", u"Sauen"}, {u"Eber", u"Eber"}, {u"Mast", u"Masttiere"}, {u"Ferkel", u"Ferkel"}};

/// The plural of the marked animals' kind; that of all animals where they are of several.
QString kindOf(const Grid& grid, const std::vector<int>& rows) {
    const int art = grid.columnOf(u"Art");
    if (art == 0) return QStringLiteral("Zeilen");
    const QString first = grid.cell(rows.front(), art);
    for (const int row : rows)
        if (rows.size() > MostToName || grid.cell(row, art) != first) return QStringLiteral("Tiere");
    for (const Kind& kind : Kinds)
        if (first == kind.art) return QString::fromUtf16(kind.many);
    return QStringLiteral("Tiere");
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
    return rows.size() < 2 ? QString() : QStringLiteral("%1 %2 markiert").arg(rows.size()).arg(kindOf(grid, rows));
}

QString doneText(const QString& action) {
    // "Belegung 1023 vom 17.07.2026 gelöscht" says what became of it, "Belegung 1023, 17.07.2026" does not
    static const QRegularExpression participle(QStringLiteral(" (ge|ver|auf)\\w*[tn]$|iert$"));
    return participle.match(action).hasMatch() ? action : QStringLiteral("Gespeichert: ") + action;
}

}  // namespace koben::ui

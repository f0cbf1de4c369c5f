#include "figures/Chart.h"

#include <QLocale>
#include <algorithm>

namespace koben {

// --------------------------------------------------------------------------------------------------------------- table

const Value& ChartTable::cell(int row, int column) const {
    static const Value null;
    if (row < 1 || row > static_cast<int>(rows.size())) return null;
    const Grid::Row& cells = rows[static_cast<size_t>(row) - 1];
    return column < 1 || column > cells.size() ? null : cells[column - 1];
}

QString ChartTable::text(int row, int column) const {
    const Value& value = cell(row, column);
    if (value.isNull() || value.isText() || value.isDate()) return value.toText();
    static const QLocale german(QLocale::German, QLocale::Germany);
    const int decimals = columns[static_cast<size_t>(column) - 1].decimals;
    return german.toString(value.toDouble(), 'f', std::max(decimals, 0));
}

// --------------------------------------------------------------------------------------------------------------- looks

const SeriesLook& lookOf(Look look) {
    static const SeriesLook looks[] = {
        {Tone::Accent, 0.85, Hatch::None, Dash::Solid, Shape::Circle},
        {Tone::Second, 0.25, Hatch::Rising, Dash::Dashed, Shape::Square},
        {Tone::Third, 0.45, Hatch::Falling, Dash::DashDot, Shape::Triangle},
        {Tone::Quiet, 0.1, Hatch::Crossed, Dash::Dotted, Shape::Cross},
        {Tone::Warning, 0.1, Hatch::Level, Dash::Dashed, Shape::Cross},
        {Tone::Accent, 0.3, Hatch::None, Dash::Solid, Shape::Circle},
    };
    return looks[static_cast<size_t>(look)];
}

std::optional<std::pair<int, int>> cellOf(const QString& area) {
    const int row = area.section(u'.', 0, 0).toInt(), column = area.section(u'.', 1).toInt();
    if (row < 1 || column < 1) return std::nullopt;
    return std::pair(row, column);
}

}  // namespace koben

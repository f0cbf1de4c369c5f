#include "tools/skript/Show.h"

#include "forms/DrawingBox.h"
#include "tools/skript/PrintedJob.h"

namespace koben::skript {

namespace {

QString mark(bool current, bool marked) {
    return QString(current ? u'>' : marked ? u'*' : u' ') + (current && marked ? u'*' : u' ');
}

void showGrid(const Grid& grid, Transcript& transcript) {
    std::vector<int> columns;  // a row's key without a title is no column for a reader
    for (int column = 1; column <= grid.columnCount(); ++column)
        if (!grid.column(column).technical || !grid.column(column).title.isEmpty()) columns.push_back(column);
    QStringList cells;
    for (int column : columns) cells += grid.column(column).title;
    transcript.printed(mark(false, false) + cells.join(u'\t'));
    for (int row = 1; row <= grid.rowCount(); ++row) {
        cells.clear();
        for (int column : columns) cells += grid.cell(row, column);
        transcript.printed(mark(grid.row() == row, grid.multi && grid.marked(row)) + cells.join(u'\t'));
    }
}

void showEntries(const QStringList& entries, int current, const std::function<bool(int)>& marked,
                 Transcript& transcript) {
    for (int i = 0; i < entries.size(); ++i) transcript.printed(mark(i == current, marked && marked(i)) + entries[i]);
}

/// Where a drawing can be pointed at stands behind its lines.
void showDrawing(const DrawingBox& box, Transcript& transcript) {
    for (const DrawItem& item : box.sketch().items) transcript.printed(placedText(item));
    for (const DrawnArea& area : box.sketch().areas)
        transcript.printed(mark(area.id == box.current(), false) + area.id + u'\t' + area.text);
}

std::optional<bool> isOn(const Target& target) {
    if (auto* check = dynamic_cast<CheckBox*>(target.control)) return check->checked();
    if (auto* option = dynamic_cast<Option*>(target.control)) return option->selected();
    auto* tabs = dynamic_cast<Tabs*>(target.control);
    return tabs && target.page >= 0 ? std::optional(tabs->front() == target.page) : std::nullopt;
}

void showList(const Target& target, Transcript& transcript) {
    if (auto* grid = dynamic_cast<Grid*>(target.control)) return showGrid(*grid, transcript);
    if (auto* list = dynamic_cast<ListBox*>(target.control))
        return showEntries(
            list->items(), list->current(), [&](int row) { return list->multi && list->marked(row); }, transcript);
    if (auto* combo = dynamic_cast<ComboBox*>(target.control))
        return showEntries(combo->items(), combo->current(), nullptr, transcript);
    auto& tabs = as<Tabs>(target, "nichts, das sich zeigen lässt");
    if (target.page >= 0) return transcript.printed(tabs.captions().at(target.page));
    showEntries(tabs.captions(), tabs.front(), nullptr, transcript);
}

}  // namespace

void show(const Target& target, Transcript& transcript) {
    auto* box = dynamic_cast<TextBox*>(target.control);
    if (target.textPart && !box) throw Failure{QStringLiteral("%1 hat keinen Text").arg(target.name())};
    if (box && (target.textPart || !dynamic_cast<ComboBox*>(box))) return transcript.lines(box->text());
    if (auto* label = dynamic_cast<Label*>(target.control)) return transcript.printed(label->text());
    if (auto* button = dynamic_cast<Button*>(target.control)) return transcript.printed(button->caption());
    if (auto* calendar = dynamic_cast<Calendar*>(target.control))
        return transcript.printed(calendar->date().toString(QStringLiteral("dd.MM.yyyy")));
    if (auto* bar = dynamic_cast<ProgressBar*>(target.control))
        return transcript.printed(QStringLiteral("%1 %2").arg(bar->value()).arg(bar->maximum()));
    if (auto* drawn = dynamic_cast<DrawingBox*>(target.control)) return showDrawing(*drawn, transcript);
    const auto on = isOn(target);
    if (on && !dynamic_cast<Tabs*>(target.control))
        return transcript.printed(*on ? QStringLiteral("an") : QStringLiteral("aus"));
    showList(target, transcript);
}

void show(const Explanation& told, Koben& koben, Transcript& transcript) {
    transcript.lines(told.sentence);
    for (const auto& [name, figure] : told.figures()) transcript.printed(name + u'\t' + figure);
    transcript.printed(QStringLiteral("="));
    Form nowhere(koben, QString(), QString());
    Grid behind(nowhere, QStringLiteral("gridli"));
    Erklaerung_fuellen(behind, told);
    showGrid(behind, transcript);
}

bool holds(const Target& target, const QString& state) {
    if (state == u"sichtbar") return target.control->visible();
    if (state == u"unsichtbar") return !target.control->visible();
    if (state == u"frei") return target.control->enabled();
    if (state == u"gesperrt") return !target.control->enabled();
    const auto on = isOn(target);
    if (!on || (state != u"an" && state != u"aus"))
        throw Failure{QStringLiteral("%1 lässt sich nicht auf \"%2\" prüfen").arg(target.name(), state)};
    return *on == (state == u"an");
}

}  // namespace koben::skript

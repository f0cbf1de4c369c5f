#include "tools/skript/Hand.h"

#include <QHash>
#include <numeric>

#include "core/PZ_Koben_Subs.h"
#include "forms/DrawingBox.h"

namespace koben::skript {

namespace {

void demand(bool holds, const Target& target, const char* reason) {
    if (!holds) throw Failure{QStringLiteral("%1 %2").arg(target.name(), QString::fromUtf8(reason))};
}

void demandWorkable(const Target& target) {
    for (const Control* control = target.control; control; control = control->tabs()) {
        demand(control->onFrontPage(), target, "liegt auf einer Seite, die nicht vorn ist");
        demand(control->visible(), target, "ist unsichtbar");
        demand(control->enabled(), target, "ist gesperrt");
    }
    if (const auto* entry = dynamic_cast<const MenuEntry*>(target.control))
        demand(entry->reachable(), target, "liegt in einem gesperrten Menü");
}

/// "1,3-5", "alle" or "keine" as rows from 1.
std::vector<int> rowsOf(const QString& text, int count) {
    std::vector<int> rows;
    if (text == u"alle") {
        rows.resize(static_cast<size_t>(count));
        std::iota(rows.begin(), rows.end(), 1);
        return rows;
    }
    if (text == u"keine") return rows;
    for (const QString& part : text.split(u',')) {
        const int first = rowOf(part.section(u'-', 0, 0).trimmed(), count);
        const int last = part.contains(u'-') ? rowOf(part.section(u'-', 1).trimmed(), count) : first;
        for (int row = first; row <= last; ++row) rows.push_back(row);
    }
    return rows;
}

std::optional<Key> keyNamed(const QString& name) {
    static const QHash<QString, Key> keys{{QStringLiteral("Enter"), Key::Enter},
                                          {QStringLiteral("Esc"), Key::Escape},
                                          {QStringLiteral("Entf"), Key::Delete},
                                          {QStringLiteral("F1"), Key::F1},
                                          {QStringLiteral("Einfg"), Key::Insert}};
    const auto found = keys.constFind(name);
    return found == keys.constEnd() ? std::nullopt : std::optional(*found);
}

bool workable(const Button* button) { return button && button->visible() && button->enabled(); }

}  // namespace

void Hand::leaveFocus(Form& form) {
    auto* box = dynamic_cast<TextBox*>(std::exchange(m_focus[&form], nullptr));
    if (box) box->leave();
}

bool Hand::reach(const Target& target) {
    demandWorkable(target);
    if (m_focus[target.form] == target.control) return true;
    leaveFocus(*target.form);
    if (target.form->closed()) return false;
    demandWorkable(target);
    m_focus[target.form] = target.control;
    if (auto* box = dynamic_cast<TextBox*>(target.control)) box->enter();
    return !target.form->closed();
}

void Hand::click(const Target& target) {
    if (dynamic_cast<MenuEntry*>(target.control)) return menu(target);
    if (!reach(target)) return;
    if (auto* button = dynamic_cast<Button*>(target.control)) return button->click();
    if (auto* option = dynamic_cast<Option*>(target.control)) return option->click();
    if (auto* check = dynamic_cast<CheckBox*>(target.control)) return check->click();
    if (auto* grid = dynamic_cast<Grid*>(target.control)) return grid->click();
    if (auto* list = dynamic_cast<ListBox*>(target.control)) return list->click();
    if (auto* box = dynamic_cast<DrawingBox*>(target.control)) return box->clickAt(box->current());
    if (dynamic_cast<TextBox*>(target.control)) return;  // it has the focus now
    auto* tabs = dynamic_cast<Tabs*>(target.control);
    demand(tabs && target.page >= 0, target, "kann nicht angeklickt werden");
    tabs->choose(target.page);
}

void Hand::doubleClick(const Target& target) {
    if (!reach(target)) return;
    if (auto* grid = dynamic_cast<Grid*>(target.control)) return grid->doubleClick();
    as<ListBox>(target, "keine Liste").doubleClick();
}

void Hand::type(const Target& target, const QString& value) {
    if (auto* calendar = dynamic_cast<Calendar*>(target.control)) {
        const QDate day = Datum_aus_Text(value);
        demand(day.isValid(), target, "verlangt ein Datum");
        if (reach(target)) calendar->pick(day);
        return;
    }
    auto& box = as<TextBox>(target, "kein Textfeld");
    auto* combo = dynamic_cast<ComboBox*>(&box);
    const bool fixed = combo && combo->fixed;
    if (!reach(target)) return;
    if (!fixed) return box.type(value);
    const auto entry = combo->items().indexOf(value);
    demand(entry >= 0, target, "hat keinen solchen Eintrag");
    combo->choose(static_cast<int>(entry));
}

void Hand::text(const Target& target, const QString& value) {
    type(target, value);
    if (!target.form->closed()) leaveFocus(*target.form);
}

void Hand::leave(const Target& target) {
    as<TextBox>(target, "kein Textfeld");
    if (reach(target)) leaveFocus(*target.form);
}

void Hand::pick(const Target& target, const QString& entry) {
    auto& combo = as<ComboBox>(target, "kein Auswahlfeld");
    if (!reach(target)) return;
    const auto index = combo.items().indexOf(entry);
    demand(index >= 0, target, "hat keinen solchen Eintrag");
    combo.choose(static_cast<int>(index));
    if (!target.form->closed()) leaveFocus(*target.form);
}

void Hand::check(const Target& target, bool on) {
    auto& box = as<CheckBox>(target, "kein Kontrollkästchen");
    if (reach(target) && box.checked() != on) box.click();
}

void Hand::spin(const Target& target, bool up) {
    auto& button = as<SpinButton>(target, "kein Pfeilpaar");
    if (!reach(target)) return;
    if (up)
        button.up();
    else
        button.down();
}

void Hand::row(const Target& target, const QString& row) {
    if (!reach(target)) return;
    if (auto* grid = dynamic_cast<Grid*>(target.control)) return grid->choose(rowOf(row, grid->rowCount()));
    if (auto* box = dynamic_cast<DrawingBox*>(target.control)) {
        const auto& areas = box->sketch().areas;
        return box->choose(areas[static_cast<size_t>(rowOf(row, static_cast<int>(areas.size()))) - 1].id);
    }
    auto& list = as<ListBox>(target, "keine Liste");
    list.choose(rowOf(row, static_cast<int>(list.items().size())) - 1);
}

void Hand::mark(const Target& target, const QString& rows) {
    if (!reach(target)) return;
    if (auto* grid = dynamic_cast<Grid*>(target.control)) {
        demand(grid->multi, target, "kennt keine markierten Zeilen");
        return grid->mark(rowsOf(rows, grid->rowCount()));
    }
    auto& list = as<ListBox>(target, "keine Liste");
    demand(list.multi, target, "kennt keine markierten Zeilen");
    std::vector<int> marked = rowsOf(rows, static_cast<int>(list.items().size()));
    for (int& row : marked) --row;
    list.mark(marked);
}

void Hand::edit(const Target& target, const QString& row, const QString& column, const QString& value) {
    auto& grid = as<Grid>(target, "keine Tabelle");
    if (!reach(target)) return;
    const bool edited = grid.editByUser(rowOf(row, grid.rowCount()), columnOf(grid, column), value);
    demand(edited, target, "lässt diese Zelle nicht ändern");
}

void Hand::sort(const Target& target, const QString& column, bool ascending) {
    auto& grid = as<Grid>(target, "keine Tabelle");
    if (reach(target)) grid.sortByUser(columnOf(grid, column), ascending ? 1 : 2);
}

void Hand::resize(const Target& target, const QString& column, const QString& pixels) {
    auto& grid = as<Grid>(target, "keine Tabelle");
    bool ok = false;
    const int width = pixels.toInt(&ok);
    demand(ok && width >= 0, target, "verlangt eine Breite in Bildpunkten");
    if (reach(target)) grid.resizeByUser(columnOf(grid, column), width);
}

void Hand::key(const Target& target, const QString& name) {
    if (name == u"Tab") {
        if (reach(target)) leaveFocus(*target.form);
        return;
    }
    const auto key = keyNamed(name);
    demand(key.has_value(), target, "verlangt Entf, Enter, Esc, F1, Einfg oder Tab");
    if (!reach(target) || target.control->key(*key)) return;
    if (*key == Key::Enter) enterKey(target);
    if (*key == Key::F1) help(*target.form);
}

void Hand::enterKey(const Target& target) {
    if (auto* button = dynamic_cast<Button*>(target.control)) return button->click();
    auto* box = dynamic_cast<TextBox*>(target.control);
    if (box && box->enterIsTab) return leaveFocus(*target.form);
    if (box && box->multiLine) return;
    Form& form = *target.form;
    if (workable(form.acceptButton)) click({&form, form.acceptButton});  // leaves the field first, as the window does
}

void Hand::help(Form& form) {
    const QString viewer = QStringLiteral("PH_Hilfe");
    if (!form.koben.catalogue.has(viewer) || form.name() == viewer) return;
    form.act([&] { form.koben.open(viewer); });
}

void Hand::menu(const Target& target) {
    demandWorkable(target);
    as<MenuEntry>(target, "kein Menüeintrag").click();
}

void Hand::close(Form& form) {
    form.act([&] { form.closeBox(); });
}

}  // namespace koben::skript

#pragma once
// Menus of a form: the bar with its sub-menus, and the menu of the right mouse button.
#include <functional>
#include <vector>

#include "forms/Controls.h"

class QMenuBar;
class QPoint;
class QToolBar;
class QWidget;

namespace koben::ui {

/// A menu bar of these top menus; entries are those of the form that name one of them as parent, at any depth.
QMenuBar* menuBarOf(const std::vector<MenuEntry*>& menus);

/// A tool bar of icons with short texts; what has no room goes behind its arrow.
QToolBar* toolBarOf(const std::vector<Button*>& buttons);

/// The control behind a menu's or tool bar's action; nothing for other objects.
Control* controlOfAction(const QObject* action);

/// Opens the form's context menu (its entries `popzeile`) where it has one, below it what explains a list's cell.
void popUpMenu(Form& form, QWidget& widget, const QPoint& at, const std::function<void()>& explain = {});

}  // namespace koben::ui

#pragma once
// What every window must keep, whatever it shows: nothing cut, nothing out of the keyboard's reach, one meaning for
// each letter, texts that stand out from their ground.
#include <functional>

#include "ui/FormWindow.h"

namespace koben::ui {

/// Looks at the window with each of its pages in front, the one that is there first.
void turnPages(FormWindow& window, const std::function<void()>& look);
/// Every text and field has the room that it asks for, on the page in front and within what surrounds it.
void expectUncut(const FormWindow& window);
/// What can be worked is among the stops of the Tab key. Menus and tool bar are reached by their own keys.
void expectReached(const FormWindow& window, const std::vector<QWidget*>& stops);
/// No letter with Alt leads to two places of the window, nor to two entries of a menu.
void expectLetters(const FormWindow& window);
/// 4.5 to 1 at least, by the colours that each widget has in fact.
void expectContrast(const FormWindow& window);

/// How much one colour stands out from another, 1 to 21.
double contrast(const QColor& a, const QColor& b);

}  // namespace koben::ui

#pragma once
// The keys that mean the same in every window: Strg+N a new one, F2 change, Strg+F search, Strg+P list or print,
// Strg+1 to 8 the kinds of bookings, F5 read anew. In the main window they stand in the menus.
#include <QString>

class QKeyEvent;

namespace koben::ui {

class Window;

/// The keys of an entry of the main window's menus as Qt writes them, "" for none.
QString menuKeys(const QString& entry);
/// What a context menu shows beside an entry of this caption, "" for none.
QString shownKeys(const QString& plainCaption);

/// Adds search, reading anew and printing to the menus of the main window, and tells the keys in the tooltips of
/// others.
void prepareKeys(Window& window);
/// A key that no widget took; true where it meant something.
bool windowKey(Window& window, const QKeyEvent& event);

}  // namespace koben::ui

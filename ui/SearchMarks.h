#pragma once
// Several animals by their numbers: "+" behind a number in the search field marks the animal that was found, beside
// those marked so before, and empties the field for the next one.

class QWidget;

namespace koben {

class Grid;
class TextBox;

namespace ui {

/// `field` is the widget of the search box `search` of the list.
void markFromSearch(QWidget& field, TextBox& search, Grid& list);

}  // namespace ui
}  // namespace koben

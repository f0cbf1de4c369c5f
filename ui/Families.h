#pragma once
// Layouts shared by forms of one shape: a form of such a family needs no unit of its own.
#include "ui/Layout.h"

namespace koben {
class Buchungseingabe;
class Stammdatenliste;
class Stammdateneingabe;
}  // namespace koben

namespace koben::ui {

/// Entry screen of a booking: the animal, the inputs in the order of the clipboard, buttons.
Piece bookingEntry(Buchungseingabe& form);
/// The same with a piece of its own beside the inputs, which holds all that is no input.
Piece bookingEntry(Buchungseingabe& form, const Piece& beside);
/// List of a master-data pair.
Piece masterList(Stammdatenliste& form);
/// Entry screen of a master-data pair, around its own `inputs`.
Piece masterEntry(Stammdateneingabe& form, const Piece& inputs);
/// The four buttons of entry screens.
Piece entryButtons(ControlArray<Button>& ok, Button& cancel);

/// The layout of the family that a form is of; nothing outside of any.
Arrange familyLayout(Form& form);

}  // namespace koben::ui

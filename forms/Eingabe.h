#pragma once
// What entry screens share: the date field with its calendar, and a save whose values may not fit their fields.
#include <functional>

#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

/// A date field completes short input as it is left; the button opens and shuts the calendar that fills it.
void Datumsfeld_verbinden(Koben& koben, TextBox& field, Button& button, Calendar& calendar);

/// Runs a save. Where a value does not fit its field it tells the user, beginning with `failed` ("Die Eingabe kann
/// nicht übernommen werden"), and says false; the save must have left nothing then. Other errors pass.
bool Speichern_oder_melden(Koben& koben, const QString& failed, const std::function<void()>& save);

}  // namespace koben

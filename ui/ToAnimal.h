#pragma once
// The way from a row of a report to its animal.
#include "forms/Form.h"

namespace koben::ui {

/// A double click (or Enter) on a row that is about an animal makes it the current one of the herd list. The windows in
/// front of the herd list close, each by its own close box. The window's own: the form knows nothing of it.
void leadsToAnimals(Grid& list);

}  // namespace koben::ui

#pragma once
// Buttons that would do nothing as things stand: the window shows them inactive, whatever the form says.
#include "forms/Controls.h"

namespace koben::ui {

bool hasEffect(const Button& button);

}  // namespace koben::ui

#pragma once
// Files dropped on a window: an animal list opens its preview, and nothing is written.
#include <QString>

namespace koben {

class Form;

namespace ui {

/// Whether a form knows what to do with a dropped file.
bool takesFile(const Form& form);
/// Shows the file in the import screen, opening that first where it is not in front.
void dropFile(Form& form, const QString& path);

}  // namespace ui
}  // namespace koben

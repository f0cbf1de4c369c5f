#include "ui/SampleFarm.h"

#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben::ui {

bool isSampleFarm(const Form& form) { return dynamic_cast<const SampleMachine*>(&form.koben.platform); }

QString windowTitle(const Form& form) {
    return isSampleFarm(form) ? form.caption() + QStringLiteral(" - Musterbetrieb, nichts davon bleibt")
                              : form.caption();
}

}  // namespace koben::ui

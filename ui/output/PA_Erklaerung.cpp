#include "output/PA_Erklaerung.h"

#include "ui/Layout.h"
#include "ui/ToAnimal.h"

LAYOUT(PA_Erklärung) {
    leadsToAnimals(form.gridli);
    return column({label(form.satz), facts(form.wert, form.bez, 0, 3),
                   grid(form.gridli, QStringLiteral("Keine Buchungen stehen dahinter.")),
                   buttons({button(form.ok), button(form.beenden)})});
}

#include "plans/PB_Wartezeiten.h"

#include "ui/Layout.h"
#include "ui/ToAnimal.h"

LAYOUT(PB_Wartezeiten) {
    leadsToAnimals(form.gridli);
    return column({label(form.Label1), grid(form.gridli), buttons({button(form.ok), button(form.beenden)})});
}

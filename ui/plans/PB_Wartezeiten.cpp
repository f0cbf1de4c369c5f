#include "plans/PB_Wartezeiten.h"

#include "ui/Layout.h"

LAYOUT(PB_Wartezeiten) {
    return column({label(form.Label1), grid(form.gridli), buttons({button(form.ok), button(form.beenden)})});
}

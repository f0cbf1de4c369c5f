#include "herd/PB_Lebenslauf.h"

#include "ui/Layout.h"
#include "ui/ToAnimal.h"

LAYOUT(PB_Lebenslauf) {
    leadsToAnimals(form.li);
    return column({label(form.Label1),
                   grid(form.li, QStringLiteral("Von diesem Tier ist weder Geburt noch Zugang noch eine Buchung da.")),
                   buttons({button(form.hilfe), button(form.nextschwein[0]), button(form.nextschwein[1])},
                           {button(form.ok), button(form.beenden)})});
}

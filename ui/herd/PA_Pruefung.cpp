#include "herd/PA_Pruefung.h"

#include "ui/Layout.h"

LAYOUT(PA_Prüfung) {
    return column({label(form.Label1), text(form.t),
                   buttons({button(form.hilfe)}, {button(form.kenntnis), button(form.reparieren), button(form.listen),
                                                  button(form.ok), button(form.beenden)})});
}

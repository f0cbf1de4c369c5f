#include "plans/PB_Statusplan.h"

#include "ui/Layout.h"

LAYOUT(PB_Statusplan) {
    std::vector<Piece> lists;
    for (Grid* list : form.listen) lists.push_back(grid(*list, QStringLiteral("Keine Sau in diesem Zustand.")));
    return column({tabs(form.sstab, lists) * 1, label(form.Label1),
                   buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}

#include "plans/PB_Statusplan.h"

#include "ui/Layout.h"
#include "ui/ToAnimal.h"

LAYOUT(PB_Statusplan) {
    std::vector<Piece> lists;
    for (Grid* list : form.listen) {
        leadsToAnimals(*list);
        // A sign beside the row, so that what is late is seen without reading and without colours.
        list->rowTitle = [list](int row) {
            return PB_Statusplan::isOverdue(*list, row) ? QStringLiteral(" ! ") : QStringLiteral("   ");
        };
        lists.push_back(grid(*list, QStringLiteral("Keine Sau in diesem Zustand.")));
    }
    return column({tabs(form.sstab, lists) * 1, label(form.Label1),
                   caption(QStringLiteral("! vor der Zeile: Der nächste Termin der Sau ist überschritten.")),
                   buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}

#include "plans/PB_Statusplan.h"

#include "ui/GridView.h"
#include "ui/Layout.h"
#include "ui/ToAnimal.h"

LAYOUT(PB_Statusplan) {
    std::vector<Piece> lists;
    for (Grid* list : form.listen) {
        leadsToAnimals(*list);
        lists.push_back(grid(*list, QStringLiteral("Keine Sau in diesem Zustand.")));
        static_cast<GridView*>(lists.back().widget)
            ->setUrgent([list](int row) { return PB_Statusplan::isOverdue(*list, row + 1); },
                        QStringLiteral("überfällig"));
    }
    return column({tabs(form.sstab, lists) * 1, label(form.Label1),
                   caption(QStringLiteral("! und fette Schrift: Der nächste Termin der Sau ist überschritten.")),
                   buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}

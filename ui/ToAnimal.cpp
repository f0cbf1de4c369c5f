#include "ui/ToAnimal.h"

#include "forms/Koben.h"

namespace koben::ui {

namespace {

bool makeCurrent(Grid& herd, qint64 animal) {
    const int column = herd.columnOf(u"ID");
    for (int row = 1; row <= herd.rowCount(); ++row)
        if (herd.integer(row, column) == animal) return herd.choose(row), true;
    return false;
}

void lead(Koben& koben, qint64 animal) {
    if (animal == 0 || !koben.herdList) return;
    if (!makeCurrent(koben.herdList->herd(), animal))
        return koben.message(
            QStringLiteral("Das Tier steht nicht in der Liste des Hauptmoduls, weil sie zur Zeit nur bestimmte Tiere "
                           "anzeigt. Bitte wählen Sie dort „Alle Tiere“ und „Alles“."));
    const auto open = koben.stack();
    for (size_t i = open.size(); i-- > 1;) open[i]->closeBox();
}

}  // namespace

void leadsToAnimals(Grid& list) {
    list.onDoubleClick = [&list] { lead(list.form().koben, list.animal(list.row())); };
}

}  // namespace koben::ui

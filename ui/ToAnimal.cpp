#include "ui/ToAnimal.h"

#include "forms/Koben.h"

namespace koben::ui {

namespace {

/// The herd list's row of the animal that a row is about: known by the row, or named in it; 0 where it is not there.
int herdRow(const Grid& herd, const Grid& list) {
    const qint64 animal = list.animal(list.row());
    const QString number = list.cell(list.row(), u"Nummer");
    if (animal == 0) return number.isEmpty() ? 0 : herd.findText(u"Nummer", number);
    const int column = herd.columnOf(u"ID");
    for (int row = 1; row <= herd.rowCount(); ++row)
        if (herd.integer(row, column) == animal) return row;
    return 0;
}

void lead(const Grid& list) {
    Koben& koben = list.form().koben;
    const bool names = list.animal(list.row()) != 0 || !list.cell(list.row(), u"Nummer").isEmpty();
    if (!names || !koben.herdList) return;
    Grid& herd = koben.herdList->herd();
    const int row = herdRow(herd, list);
    if (row == 0)
        return koben.message(
            QStringLiteral("Das Tier steht nicht in der Liste des Hauptmoduls, weil sie zur Zeit nur bestimmte Tiere "
                           "anzeigt. Bitte wählen Sie dort „Alle Tiere“ und „Alles“."));
    herd.choose(row);
    const auto open = koben.stack();
    for (size_t i = open.size(); i-- > 1;) open[i]->closeBox();
}

}  // namespace

void leadsToAnimals(Grid& list) {
    list.onDoubleClick = [&list] { lead(list); };
}

}  // namespace koben::ui

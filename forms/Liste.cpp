#include "forms/Liste.h"

#include <QFile>
#include <algorithm>

namespace koben {

namespace {

QString pathOf(const Koben& koben) { return koben.Datenordner + QStringLiteral("gridli.txt"); }

}  // namespace

void Liste_uebergeben(Koben& koben, const Grid& gridli) {
    const QString path = pathOf(koben);
    const HandedList list{gridli, gridli.fileText()};
    if (!Grid::writeFile(path, list.file))
        return koben.message(
            QStringLiteral("Die Liste kann nicht ausgegeben werden, weil die Datei %1 nicht geschrieben werden "
                           "kann. Bitte prüfen Sie, ob im Datenordner genügend Platz und das Schreiben "
                           "erlaubt ist.")
                .arg(path));
    struct Handing {
        Koben& koben;
        const HandedList* before;
        ~Handing() { koben.handedList = before; }
    } const handing{koben, std::exchange(koben.handedList, &list)};
    koben.open(QStringLiteral("PA_Zwischenliste"));
}

void Liste_ausgeben(Koben& koben, const Grid& gridli, const QString& empty) {
    if (gridli.rowCount() == 0) return koben.message(empty);
    Liste_uebergeben(koben, gridli);
}

bool Liste_uebernehmen(Koben& koben, Grid& gridli) {
    if (koben.handedList) {
        QFile file(pathOf(koben));
        if (file.open(QIODevice::ReadOnly) && file.readAll() == koben.handedList->file) {
            gridli.copy(koben.handedList->grid);
            if (gridli.lead) gridli.setRow(koben.handedList->grid.row());
            return true;
        }
    }
    return gridli.load(pathOf(koben));
}

bool chooseAnimal(Koben& koben, qint64 animal, const QString& noun) {
    if (animal == 0 || !koben.herdList) return false;
    Grid& herd = koben.herdList->herd();
    const int column = herd.columnOf(u"ID");
    int row = column > 0 ? herd.rowCount() : 0;
    while (row > 0 && herd.integer(row, column) != animal) --row;
    if (row > 0)
        herd.choose(row);
    else
        koben.message(noun +
                      QStringLiteral(" steht nicht in der Liste des Hauptmoduls, weil sie zur Zeit nur bestimmte Tiere "
                                     "anzeigt. Bitte wählen Sie dort „Alle Tiere“ und „Alles“."));
    return row > 0;
}

void tickAllIfNone(ControlArray<CheckBox>& fields) {
    if (std::any_of(fields.begin(), fields.end(), [](const auto& box) { return box->checked(); })) return;
    for (auto& box : fields) box->setChecked(true);
}

void takeTicked(Grid& gridli, const Grid& list, const ControlArray<CheckBox>& ticked) {
    gridli.clear();
    std::vector<int> columns;
    for (int c = 1; c <= ticked.count(); ++c)
        if (ticked[c - 1].checked()) columns.push_back(c), gridli.addColumn(list.column(c));
    for (int row = 1; row <= list.rowCount(); ++row) {
        Grid::Row cells;
        for (const int c : columns) cells.append(list.value(row, c));
        gridli.addValues(std::move(cells));
    }
}

}  // namespace koben

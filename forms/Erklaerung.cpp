#include "forms/Erklaerung.h"

#include "forms/Koben.h"

namespace koben {

void Erklaerung_fuellen(Grid& grid, const Explanation& told) {
    for (const Column& column : told.columns) grid.addColumn(column);
    for (const Explanation::Line& line : told.lines) grid.addValues(line.cells, line.animal);
}

void Herkunft_zeigen(Koben& koben, const Explanation& told) {
    struct Telling {
        Koben& koben;
        const Explanation* before;
        ~Telling() { koben.explained = before; }
    } const telling{koben, std::exchange(koben.explained, &told)};
    koben.open(QStringLiteral("PA_Erklärung"));
}

void Zelle_erklaeren(Grid& list, int row, int column) {
    Koben& koben = list.form().koben;
    const auto told = list.explanation(row, column);
    if (!told)
        return koben.message(QStringLiteral(
            "Zu dieser Zelle gibt es keine Herleitung. Bitte wählen Sie eine Zelle, in der eine Kennzahl steht."));
    Herkunft_zeigen(koben, *told);
}

}  // namespace koben

#include "forms/Erklaerung.h"

#include "forms/Koben.h"

namespace koben {

std::vector<std::pair<QString, QString>> Explanation::figures() const {
    std::vector<std::pair<QString, QString>> found;
    if (numerator) found.emplace_back(QStringLiteral("Zähler"), *numerator);
    if (denominator) found.emplace_back(QStringLiteral("Nenner"), *denominator);
    if (value) found.emplace_back(QStringLiteral("Wert"), *value);
    return found;
}

void Explanation::fill(Grid& grid) const {
    for (const Column& column : columns) grid.addColumn(column);
    for (const Line& line : lines) grid.addValues(line.cells, line.animal);
}

void Zelle_erklaeren(Grid& list, int row, int column) {
    Koben& koben = list.form().koben;
    const auto told = list.explanation(row, column);
    if (!told)
        return koben.message(QStringLiteral(
            "Zu dieser Zelle gibt es keine Herleitung. Bitte wählen Sie eine Zelle, in der eine Kennzahl steht."));
    struct Telling {
        Koben& koben;
        const Explanation* before;
        ~Telling() { koben.explained = before; }
    } const telling{koben, std::exchange(koben.explained, &*told)};
    koben.open(QStringLiteral("PA_Erklärung"));
}

}  // namespace koben

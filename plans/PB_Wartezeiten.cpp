#include "plans/PB_Wartezeiten.h"

#include "core/PZ_Koben_Subs.h"
#include "core/Wartezeit.h"

namespace koben {

PB_Wartezeiten::PB_Wartezeiten(Koben& koben_)
    : Bericht(koben_, "PB_Wartezeiten", "Wartezeiten (Fleischverkaufssperre) aufgrund von Medizingaben") {
    for (const char* title : {"Nummer", "Art", "Gruppe", "Stallnr"})
        gridli.addColumn({.key = QString::fromUtf8(title).toLower(), .title = QString::fromUtf8(title)});
    gridli.addColumn({.key = "sperre_bis", .title = "Sperre_bis", .sort = Sort::Date});
    gridli.addColumn({.key = "tage", .title = "Tage", .align = Align::Right, .sort = Sort::Number});
    gridli.setHint(Label1.text());
    ok.onClick = [this] { Liste_ausgeben(koben, gridli); };
    bindButtons(ok, beenden);
    bindWidths(gridli, "pb_wartezeiten");
}

void PB_Wartezeiten::Load() {
    Bericht::Load();
    readAnew();
}

void PB_Wartezeiten::readAnew() {
    gridli.clearRows();
    const QDate today = Datum_aus_Text(koben.Heute);
    const Table animals = readWartezeittiere(m_db, koben.Heute);
    for (int row = 0; row < animals.rowCount(); ++row) {
        Grid::Row cells;
        for (int column = 0; column < 4; ++column) cells += Hochkomma_ersetzen(animals.text(row, column));
        const QDate until = animals.value(row, 4).toDate();
        cells << until << today.daysTo(until);
        gridli.addValues(std::move(cells), animals.integer(row, 5));
    }
}

void PB_Wartezeiten::FirstShown() {
    if (gridli.rowCount() > 0) return;
    koben.message("Es wurden keine Wartezeiten ab dem aktuellen Datum " + koben.Heute +
                  " gefunden. Das Modul wird deshalb wieder geschlossen!");
    close();
}

}  // namespace koben

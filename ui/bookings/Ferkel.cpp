// Losses and trade of piglets: two lists of the farm, their entry screens, and the two of the booking frame.
#include "bookings/PB_Verkauf_Ferkel.h"
#include "bookings/PB_Verkauf_Ferkel_Eingabe.h"
#include "bookings/PB_Verluste_Ferkel.h"
#include "bookings/PB_Verluste_Ferkel_Eingabe.h"
#include "bookings/PE_Bewegungsdaten_Ferkelverkauf.h"
#include "bookings/PE_Bewegungsdaten_Verluste.h"
#include "ui/Families.h"
#include "ui/GridView.h"

namespace koben::ui {

namespace {

/// The piglets in stock, and what becomes of the marked ones.
template <class F>
Piece piglets(F& form) {
    const Piece animals = grid(form.gridli, QStringLiteral("Keine Ferkel im Bestand"));
    static_cast<GridView*>(animals.widget)->allowNoMark();  // a loss need not be one of these
    return group(form.optiverkauf.frame, column({radios(form.optiverkauf), animals, label(form.gridlisumme)}));
}

Piece farmList(Ferkelliste& form) {
    return column({grid(form.li, QStringLiteral("Noch keine Einträge. „Neu“ legt den ersten an.")),
                   buttons({button(form.neu), button(form.ändern), button(form.löschen), button(form.kopieren)},
                           {button(form.cmdschließen)})});
}

template <class F>
Piece farmEntry(F& form) {
    std::vector<FieldRow> rows;
    for (const auto& line : form.zeilen())
        rows.push_back(field(
            line.label, line.calender ? date(form.tdat, form.calender, form.calend) : input(*line.control, line.spin)));
    return column(
        {split(column({fields(rows), spring()}), piglets(form), 2, 3) * 1, entryButtons(form.ok, form.abbrechen)});
}

}  // namespace

}  // namespace koben::ui

LAYOUT(PB_Verluste_Ferkel) { return farmList(form); }
LAYOUT(PB_Verkauf_Ferkel) { return farmList(form); }
LAYOUT(PB_Verluste_Ferkel_Eingabe) { return farmEntry(form); }
LAYOUT(PB_Verkauf_Ferkel_Eingabe) { return farmEntry(form); }
LAYOUT(PE_Bewegungsdaten_Verluste) { return bookingEntry(form, piglets(form)); }
LAYOUT(PE_Bewegungsdaten_Ferkelverkauf) { return bookingEntry(form, piglets(form)); }

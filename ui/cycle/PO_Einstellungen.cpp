#include "cycle/PO_Einstellungen.h"

#include "ui/Layout.h"

LAYOUT(PO_Einstellungen) {
    std::vector<FieldRow> numbers;
    for (auto& box : form.tzahl) numbers.push_back(field(PO_Einstellungen::label(*box), text(*box, 6)));
    std::vector<Piece> switches;
    for (auto& box : form.kon) switches.push_back(check(*box));
    std::vector<FieldRow> sorts;
    for (auto& list : form.kom) sorts.push_back(field(PO_Einstellungen::label(*list), combo(*list, 20)));
    return column(
        {row({column({fields(numbers), group(form.sortierung, fields(sorts)),
                      fields({field(PO_Einstellungen::label(form.tsonst[0]), text(form.tsonst[0]))}), spring()}),
              column({column(switches), group(form.opti.frame, radios(form.opti)), spring()})}),
         label(form.hinweis),
         buttons({button(form.comhilfe), button(form.standard)}, {button(form.ok), button(form.abbrechen)})});
}

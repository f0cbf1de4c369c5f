#include "cycle/PO_Einstellungen.h"

#include "ui/Layout.h"

namespace {

using koben::PO_Einstellungen;

constexpr int CycleNumbers = 7;   // the first ones of tzahl: distances of the cycle and their tolerance
constexpr int CycleSwitches = 2;  // the first ones of kon: what of the cycle is checked

}  // namespace

LAYOUT(PO_Einstellungen) {
    std::vector<FieldRow> cycle, lists;
    for (int i = 0; i < form.tzahl.count(); ++i)
        (i < CycleNumbers ? cycle : lists)
            .push_back(field(PO_Einstellungen::label(form.tzahl[i]), text(form.tzahl[i], 6)));
    std::vector<Piece> checks, switches;
    for (int i = 0; i < form.kon.count(); ++i) (i < CycleSwitches ? checks : switches).push_back(check(form.kon[i]));
    std::vector<FieldRow> sorts;
    for (auto& list : form.kom) sorts.push_back(field(PO_Einstellungen::label(*list), combo(*list, 20)));
    return column({pages({{QStringLiteral("Zyklus"), column({fields(cycle), column(checks), label(form.hinweis)})},
                          {QStringLiteral("Listen und Berichte"),
                           column({fields(lists), group(form.opti.frame, radios(form.opti)),
                                   group(form.sortierung, fields(sorts)),
                                   fields({field(PO_Einstellungen::label(form.tsonst[0]), text(form.tsonst[0]))})})},
                          {QStringLiteral("Eingabe und Anzeige"), column(switches)}}),
                   buttons({button(form.comhilfe), button(form.standard), button(form.zurueckholen)},
                           {button(form.ok), button(form.abbrechen)})});
}

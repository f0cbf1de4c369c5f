#include "analytics/PB_Gruppierungen.h"

#include "ui/Layout.h"
#include "ui/ToAnimal.h"

namespace koben::ui {
namespace {

/// Buttons below each other in lines of so many.
Piece block(ControlArray<Button>& members, int perLine) {
    std::vector<std::vector<Piece>> lines;
    for (int i = 0; i < members.count(); ++i) {
        if (i % perLine == 0) lines.emplace_back();
        lines.back().push_back(button(members[i]));
    }
    return table(lines);
}

Piece choice(Label& caption, ComboBox& box) { return row({plain(caption), combo(box, 12), spring()}); }

}  // namespace
}  // namespace koben::ui

LAYOUT(PB_Gruppierungen) {
    leadsToAnimals(form.datali);  // where the groups are animals
    const Piece groupings =
        group(form.rahmen[0], column({choice(form.bez[0], form.kom[0]), block(form.auswertungok, 6)}));
    const Piece ages = group(form.rahmen[1], column({choice(form.bez[1], form.kom[1]), block(form.sonstigeok, 2)}));
    const Piece costs =
        group(form.rahmen[2], column({choice(form.bez[2], form.kom[2]), block(form.gruppekostenjetier, 3)}));
    const Piece animals = group(form.rahmen[3], block(form.gruppeok, 5));
    return column({pages({{QStringLiteral("Bewegungen"), groupings},
                          {QStringLiteral("Alter und Boxen"), ages},
                          {QStringLiteral("Kosten"), costs},
                          {QStringLiteral("Tiere"), animals}}) *
                       0,
                   heading(form.Label1),
                   grid(form.datali, QStringLiteral("Noch keine Gruppierung gewählt, oder sie hat keine Zeilen.")) * 1,
                   buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}

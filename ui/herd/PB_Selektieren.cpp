#include "herd/PB_Selektieren.h"

#include "ui/Layout.h"

LAYOUT(PB_Selektieren) {
    std::vector<std::vector<Piece>> rules;
    for (int rule = 0; rule < form.entselekt.count(); ++rule) {
        ComboBox* input = form.inputOf(rule);
        rules.push_back({button(form.entselekt[rule]), input ? combo(*input, 20) : Piece()});
    }
    return column({group(form.Frame1, table(rules)), check(form.kon), label(form.hinweis), spring(),
                   buttons({button(form.abbv)})});
}

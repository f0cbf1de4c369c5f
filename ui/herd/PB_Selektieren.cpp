#include "herd/PB_Selektieren.h"

#include "ui/Layout.h"

LAYOUT(PB_Selektieren) {
    // What needs a value stands with its value at the right, all else at the left.
    std::vector<std::vector<Piece>> chosen;
    std::vector<Piece> plainRules;
    for (int rule = 0; rule < form.entselekt.count(); ++rule) {
        if (ComboBox* input = form.inputOf(rule))
            chosen.push_back({button(form.entselekt[rule]), combo(*input, 20)});
        else
            plainRules.push_back(button(form.entselekt[rule]));
    }
    plainRules.push_back(spring());
    return column({group(form.Frame1, row({column(plainRules), column({table(chosen), spring()}) * 1})),
                   check(form.kon), label(form.hinweis), spring(), buttons({button(form.abbv)})});
}

#include "exchange/S_Importtabelle.h"

#include "ui/Layout.h"

LAYOUT(S_Importtabelle) {
    std::vector<FieldRow> targets;
    for (int i = 0; i < form.kom.count(); ++i) targets.push_back(field(form.Text2[i], combo(form.kom[i], 30)));
    return column(
        {tabs(form.SSTab1,
              {label(form.Label1[0]),
               column({label(form.Label1[1]), row({button(form.comöffnen), spring()}), text(form.Text1, 80)}) * 1,
               column({label(form.Label1[2]), fields(targets)}),
               column({label(form.Label1[3]), row({button(form.ok), spring()}), label(form.bez)})}),
         buttons({button(form.comvorheriger2), button(form.comnächster2), button(form.abbv)})});
}

#include "output/PA_Zwischenliste.h"

#include "output/Uebergabe.h"
#include "ui/GridView.h"
#include "ui/Layout.h"
#include "ui/Preview.h"
#include "ui/ToAnimal.h"

LAYOUT(PA_Zwischenliste) {
    // The list as it stands, on paper: the window's own, beside the roads that the form offers.
    auto* print = new QPushButton(QStringLiteral("D&rucken..."));
    print->setObjectName(QStringLiteral("listendruck"));
    print->setAutoDefault(false);
    QObject::connect(print, &QPushButton::clicked, print, [print, &form] {
        if (form.gridli.rowCount() == 0) return form.koben.message(QStringLiteral("Es sind keine Daten in der Liste."));
        previewTable(*print->window(), form.koben, form.gridli, Berichtstitel(form.koben));
    });
    leadsToAnimals(form.gridli);
    bool named = form.gridli.explain != nullptr;  // a list of figures: its rows keep their name when scrolled sideways
    for (int i = 1; named && i <= form.gridli.rowCount(); ++i) named = !form.gridli.cell(i, 1).isEmpty();
    if (named) form.gridli.rowTitle = [&list = form.gridli](int number) { return list.cell(number, 1); };
    const Piece list = grid(form.gridli, QStringLiteral("Die Liste ist leer."));
    auto* explain = new QPushButton(QStringLiteral("&Zahl herleiten"));
    explain->setAutoDefault(false);
    explain->setToolTip(QStringLiteral("Woher die Zahl der gewählten Zelle kommt (F2)"));
    QObject::connect(explain, &QPushButton::clicked, list.widget,
                     [view = dynamic_cast<GridView*>(list.widget)] { view->explainCurrent(); });
    if (!form.gridli.explain) explain->setVisible(false);
    return column({list,
                   flow({button(form.comtext), button(form.comexcel), button(form.roexplorer[0]),
                         button(form.roexplorer[1]), own(print), own(explain)}),
                   buttons({button(form.hilfe), button(form.cmdschließen)})});
}

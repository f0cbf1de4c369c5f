#include "herd/PA_Koben.h"

#include <QSplitter>

#include "ui/AnimalPanel.h"
#include "ui/Layout.h"
#include "ui/SearchMarks.h"

LAYOUT(PA_Koben) {
    const Piece list =
        grid(form.datali, QStringLiteral("Noch keine Tiere. Legen Sie über „Bestand“ neue Schweine an oder "
                                         "lesen Sie über „Optionen / Import Excel“ eine Liste ein."));
    const Piece panel = column({flow({button(form.cmdok), button(form.abwaerts[1]), button(form.abwaerts[0]),
                                      button(form.comdrucken), button(form.linksrechts)}),
                                animalPanel(form)});
    const Piece both = split(list, panel, 2, 1);
    auto* splitter = static_cast<QSplitter*>(both.widget);
    form.layoutChanged = [splitter, &form] {
        const bool wide = form.koben.Konfig_Zahl[Zahl::ListeBreit] == 1;  // the panel is the wide one
        const int third = 1000;
        splitter->setSizes({wide ? third : 2 * third, wide ? 2 * third : third});
    };
    form.layoutChanged();
    const Piece number = search(form.t, QStringLiteral("Saunummer"));
    markFromSearch(*number.widget, form.t, form.datali);
    return column({menus(form.menuBar()), toolBar(form.toolBar()),
                   flow({segments(form.optianzeige), segments(form.optiverkauft), row({plain(form.Label1), number}),
                         row({plain(form.Label2), segments(form.optisauen)})}),
                   both, label(form.loeschhinweis), label(form.bezstati)});
}

#include "herd/PA_Verlauf.h"

#include "ui/Layout.h"

LAYOUT(PA_Verlauf) {
    const Piece words =
        row({plain(form.bez[0]), search(form.suche, QStringLiteral("Wort, Tag oder Tiernummer")), spring()});
    const Piece keeping = flow({plain(form.bez[1]), text(form.tz[0], 3), plain(form.bez[2]), text(form.tz[1], 5)});
    return column({words, grid(form.li, QStringLiteral("Noch keine Aktionen, oder keine mit diesen Wörtern.")) * 1,
                   label(form.umfang), keeping,
                   buttons({button(form.hilfe)}, {button(form.ruecknahme), button(form.beenden)})});
}

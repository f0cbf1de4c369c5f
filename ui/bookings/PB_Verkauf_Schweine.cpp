#include "bookings/PB_Verkauf_Schweine.h"

#include <QFontDatabase>

#include "ui/Layout.h"

LAYOUT(PB_Verkauf_Schweine) {
    auto& bez = form.bez;
    const Piece titles = plain(form.Label2), animals = list(form.li);
    for (const Piece& piece : {titles, animals}) {  // the columns of a row are made of blanks
        QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        font.setPointSizeF(piece.widget->font().pointSizeF());
        piece.widget->setFont(font);
    }
    const Piece sale =
        group(form.rahmen, fields({field(bez[0], date(form.tdat, form.calender, form.calend)),
                                   field(bez[1], text(form.tz[0], 12)), field(bez[2], text(form.tz[1], 12)),
                                   field(bez[3], combo(form.kom[0], 24)), field(bez[4], combo(form.kom[1], 24))}));
    return column({heading(form.Label1), row({titles, spring()}), animals * 1, label(form.Label3), sale,
                   buttons({button(form.neu), button(form.cmdschließen)})});
}

#include "output/PA_Textausgabe.h"

#include "ui/Layout.h"
#include "ui/Preview.h"

LAYOUT(PA_Textausgabe) {
    const Piece sheet = text(form.t, 80);
    // The sheet shows the font that was chosen for it.
    form.schriftChanged = [area = sheet.widget, &form] {
        QFont font(form.schrift().name, form.schrift().punkt);
        font.setStyleHint(QFont::Monospace);
        font.setBold(form.schrift().fett);
        font.setItalic(form.schrift().kursiv);
        area->setFont(font);
    };
    auto* preview = new QPushButton(QStringLiteral("&Vorschau"));
    preview->setAutoDefault(false);
    QObject::connect(preview, &QPushButton::clicked, preview, [preview, &form] {
        const Drawing shown = form.druckbild();
        koben::ui::preview(*preview->window(), form.koben, shown.sheet.title, shown.landscape,
                           [&](QPrinter&) { return shown; });
    });
    return column({flow({plain(form.Schriftart), combo(form.kom, 20), plain(form.Schriftgröße), text(form.gr_e, 3),
                         button(form.plus1[0]), button(form.plus1[1]), button(form.plus5[0]), button(form.plus5[1]),
                         check(form.kon[0]), check(form.kon[1])}),
                   flow({plain(form.Drucker), combo(form.komdrucker, 24), segments(form.druckformat),
                         plain(form.LinkerRand), text(form.tz, 3), plain(form.Zeichen)}),
                   sheet,
                   buttons({plain(form.Seitenumbruch)}, {own(preview), button(form.drucken), button(form.dateidrucken),
                                                         button(form.hilfe), button(form.abbv)})});
}

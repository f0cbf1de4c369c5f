#include "exchange/S_Importtabelle.h"

#include "ui/Layout.h"
#include "ui/WindowScreens.h"

namespace {

/// The separator of the file's columns: that of its first line, asked for where several stand there.
QChar separatorOf(koben::Form& form, const QString& path) {
    const QString found = koben::Importdatei::Trennzeichen(path);
    if (found.isEmpty()) return u';';
    auto* screens = dynamic_cast<koben::ui::WindowScreens*>(&form.koben.screens);
    if (found.size() == 1 || !screens) return found.front();
    QStringList captions;
    for (const QChar c : found)
        captions.prepend(c == u';'    ? QStringLiteral("&Semikolon ;")
                         : c == u'\t' ? QStringLiteral("&Tabulator")
                                      : QStringLiteral("&Komma ,"));
    const int answer = screens->decide(
        QStringLiteral("In der ersten Zeile der Datei stehen mehrere Zeichen, die Spalten trennen können. Womit sind "
                       "die Spalten getrennt?"),
        captions);
    return found[found.size() - 1 - answer];
}

}  // namespace

LAYOUT(S_Importtabelle) {
    form.trennerWaehlen = [&form](const QString& path) { return separatorOf(form, path); };
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

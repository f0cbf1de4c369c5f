#include "help/PH_Hilfe.h"

#include <QPushButton>
#include <QShortcut>

#include "ui/Application.h"
#include "ui/Layout.h"
#include "ui/help/HelpView.h"

namespace koben::ui {

namespace {

void addKey(HelpView& view, const QKeySequence& keys, std::function<void()> act) {
    QObject::connect(new QShortcut(keys, &view), &QShortcut::activated, &view,
                     [act = std::move(act)] { guarded(act); });
}

void addKey(HelpView& view, const char* keys, Button& button) {
    addKey(view, QKeySequence(QString::fromLatin1(keys)), [&button] {
        if (button.enabled()) button.click();
    });
}

void addKeys(HelpView& view, PH_Hilfe& form) {
    addKey(view, "Alt+Left", form.zurueck);
    addKey(view, "Alt+Right", form.vor);
    addKey(view, "F3", form.naechster);
    addKey(view, "Ctrl+-", form.plus1[0]);
    addKey(view, "Ctrl++", form.plus1[1]);
    addKey(view, QKeySequence(Qt::Key_F1), [&form] { form.act([&form] { form.open(form.name()); }); });
}

}  // namespace

}  // namespace koben::ui

LAYOUT(PH_Hilfe) {
    auto* view = new HelpView(form);
    view->setAccessibleName(QStringLiteral("Kapitel der Hilfe"));
    addKeys(*view, form);
    auto* copy = new QPushButton(QStringLiteral("Ko&pieren"));
    copy->setObjectName(QStringLiteral("kopieren"));
    copy->setAutoDefault(false);
    QObject::connect(copy, &QPushButton::clicked, view, [view] { view->copyToClipboard(); });
    const Piece words = search(form.suche, QStringLiteral("Wort oder mehrere"));
    words.widget->setAccessibleName(QStringLiteral("Suchen"));
    const Piece contents = list(form.li), links = list(form.verweise);
    contents.widget->setAccessibleName(QStringLiteral("Inhalt"));
    contents.widget->setMinimumWidth(contents.widget->fontMetrics().averageCharWidth() * 36);
    links.widget->setAccessibleName(QStringLiteral("Siehe auch"));
    return column(
        {flow({button(form.zurueck), button(form.vor), row({plain(form.Label1), words}), button(form.naechster),
               plain(form.treffer)}),
         split(column({contents * 3, plain(form.Label2), links * 1}), own(view), 1, 2),
         buttons({button(form.plus1[0]), button(form.plus1[1])}, {own(copy), button(form.drucken), button(form.ok)})});
}

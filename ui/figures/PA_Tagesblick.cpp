// Today's page: its own window, and a part of the herd list's.
#include "figures/PA_Tagesblick.h"

#include <QTabWidget>
#include <QVBoxLayout>

#include "forms/Startseite.h"
#include "herd/PA_Koben.h"
#include "ui/GridView.h"
#include "ui/SidePage.h"
#include "ui/figures/Tagesblick.h"

namespace koben::ui {

namespace {

Piece works(PA_Tagesblick& form) {
    constexpr int overdue = 3;
    const Piece list = grid(form.liarbeit, QStringLiteral("Noch keine Arbeiten. Legen Sie unter „Verwaltung / "
                                                          "Arbeitsplandaten“ fest, was wann zu tun ist."));
    static_cast<GridView*>(list.widget)
        ->setUrgent([&rows = form.liarbeit](int row) { return rows.integer(row + 1, overdue) > 0; },
                    QStringLiteral("überfällig"));
    return group(QStringLiteral("Arbeit"), list);
}

Piece states(PA_Tagesblick& form) { return group(QStringLiteral("Sauen"), grid(form.listatus)); }

Piece blocks(PA_Tagesblick& form) {
    return group(QStringLiteral("Wartezeiten bis Sonntag"),
                 grid(form.lisperren, QStringLiteral("Diese Woche endet keine Wartezeit.")));
}

/// Pages that fill their height.
Piece filled(const Piece& pages) {
    auto* tabs = static_cast<QTabWidget*>(pages.widget);
    for (int i = 0; i < tabs->count(); ++i) {
        auto* box = static_cast<QVBoxLayout*>(tabs->widget(i)->layout());
        box->setStretch(0, 1);
        box->setStretch(1, 0);
    }
    return pages;
}

}  // namespace

Piece withToday(PA_Koben& form, const Piece& panel) {
    Koben& koben = form.koben;
    auto page = readStartseite(koben.platform) == Startseite::Daneben
                    ? koben.catalogue.make(QStringLiteral("PA_Tagesblick"), koben)
                    : nullptr;
    if (!page) return panel;
    form.showsTagesblick = true;
    auto* side = new SidePage(std::move(page), form, form.datali);
    auto& today = static_cast<PA_Tagesblick&>(side->page());
    const Piece tabs = filled(
        pages({{QStringLiteral("Heute"), column({heading(today.Label1), works(today) * 3,
                                                 row({states(today) * 1, blocks(today) * 1}) * 4, button(today.ok)})},
               {QStringLiteral("Zahlen"), column({label(today.Label2), drawing(today.kacheln) * 1})},
               {QStringLiteral("Tier"), panel}}));
    side->setParent(tabs.widget);
    return tabs;
}

}  // namespace koben::ui

LAYOUT(PA_Tagesblick) {
    const Piece figures = row({group(QStringLiteral("Kacheln"), drawing(form.kacheln)) * 3,
                               group(QStringLiteral("Zahlen und Ziele"), grid(form.likacheln)) * 2});
    const Piece page =
        column({heading(form.Label1), row({works(form) * 4, states(form) * 3, blocks(form) * 3}) * 2,
                label(form.Label2), figures * 3, row({group(form.optistart.frame, segments(form.optistart)), spring()}),
                buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
    if (readStartseite(form.koben.platform) == Startseite::Statt)  // nothing of the list is to be seen
        QMetaObject::invokeMethod(
            page.widget, [widget = page.widget] { widget->window()->setWindowState(Qt::WindowMaximized); },
            Qt::QueuedConnection);
    return page;
}

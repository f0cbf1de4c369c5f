// Today's page: its own window, and a part of the herd list's.
#include "figures/PA_Tagesblick.h"

#include <QBoxLayout>
#include <QTabWidget>

#include "forms/Startseite.h"
#include "herd/PA_Koben.h"
#include "ui/GridView.h"
#include "ui/SidePage.h"
#include "ui/figures/Tagesblick.h"

namespace koben::ui {

namespace {

/// A list that asks for the height of its rows, as far as they are few.
Piece shortGrid(const Piece& list) {
    constexpr int leastRows = 4, mostRows = 7;
    static_cast<GridView*>(list.widget)->fitRows(leastRows, mostRows);
    return list;
}

/// The same for a page that scrolls rather than its lists.
Piece wholeGrid(const Piece& list) {
    list.widget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    return shortGrid(list);
}

/// Two pieces beside each other where the window is wide, otherwise one below the other. The first takes spare room.
class Pair final : public QWidget {
public:
    Pair(const Piece& first, const Piece& second) {
        m_box.setContentsMargins(0, 0, 0, 0);
        m_box.addWidget(first.widget, 1);
        m_box.addWidget(second.widget);
    }

protected:
    void resizeEvent(QResizeEvent*) override {
        constexpr int letters = 130;
        const bool wide = width() >= letters * fontMetrics().averageCharWidth();
        m_box.setDirection(wide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    }

private:
    QBoxLayout m_box{QBoxLayout::LeftToRight, this};
};

/// Never so low that the tiles' words could not be read.
Piece tiles(PA_Tagesblick& form) {
    constexpr int lines = 15;
    const Piece drawn = drawing(form.kacheln);
    drawn.widget->setMinimumHeight(lines * drawn.widget->fontMetrics().height());
    return drawn;
}

Piece works(PA_Tagesblick& form) {
    constexpr int overdue = 3;
    const Piece list = grid(form.liarbeit, QStringLiteral("Noch keine Arbeiten. Legen Sie unter „Verwaltung / "
                                                          "Arbeitsplandaten“ fest, was wann zu tun ist."));
    static_cast<GridView*>(list.widget)
        ->setUrgent([&rows = form.liarbeit](int row) { return rows.integer(row + 1, overdue) > 0; },
                    QStringLiteral("überfällig"));
    return list;
}

Piece blocks(PA_Tagesblick& form) { return grid(form.lisperren, QStringLiteral("Diese Woche endet keine Wartezeit.")); }

Piece asWork(const Piece& list) { return group(QStringLiteral("Arbeit"), list); }
Piece asStates(const Piece& list) { return group(QStringLiteral("Sauen"), list); }
Piece asBlocks(const Piece& list) { return group(QStringLiteral("Wartezeiten bis Sonntag"), list); }

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
    const Piece tabs = filled(pages(
        {{QStringLiteral("Heute"),
          column({heading(today.Label1), asWork(shortGrid(works(today))) * 3,
                  row({asStates(shortGrid(grid(today.listatus))) * 1, asBlocks(shortGrid(blocks(today))) * 1}) * 4,
                  button(today.ok)})},
         {QStringLiteral("Zahlen"), column({label(today.Label2), tiles(today) * 1})},
         {QStringLiteral("Tier"), panel}}));
    side->setParent(tabs.widget);
    return tabs;
}

}  // namespace koben::ui

LAYOUT(PA_Tagesblick) {
    const Piece figures = own(new Pair(tiles(form), wholeGrid(grid(form.likacheln))));
    const Piece lists = row({asWork(wholeGrid(works(form))) * 4, asStates(wholeGrid(grid(form.listatus))) * 3,
                             asBlocks(wholeGrid(blocks(form))) * 3});
    const Piece head =
        row({heading(form.Label1), spring(), caption(form.optistart.frame + u':'), segments(form.optistart)});
    const Piece page = column({head, lists * 0, label(form.Label2), figures * 1,
                               buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
    if (readStartseite(form.koben.platform) == Startseite::Statt)  // nothing of the list is to be seen
        QMetaObject::invokeMethod(
            page.widget, [widget = page.widget] { widget->window()->setWindowState(Qt::WindowMaximized); },
            Qt::QueuedConnection);
    return page;
}

#include "herd/PA_Koben.h"

#include <QFrame>
#include <QLabel>
#include <QMenuBar>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

#include "core/Konfig.h"
#include "ui/AnimalPanel.h"
#include "ui/FirstSteps.h"
#include "ui/Layout.h"
#include "ui/Menus.h"
#include "ui/QuickEntry.h"
#include "ui/SampleFarm.h"
#include "ui/Scanner.h"
#include "ui/SearchMarks.h"
#include "ui/figures/Tagesblick.h"

namespace {

/// An entry of the window's own at the end of the menu of this name.
void addCommand(const koben::ui::Piece& bar, const char* menu, const QString& caption, std::function<void()> work) {
    for (QAction* top : static_cast<QMenuBar*>(bar.widget)->actions()) {
        const koben::Control* control = koben::ui::controlOfAction(top->menu());
        if (control == nullptr || control->name() != QString::fromUtf8(menu)) continue;
        QObject::connect(top->menu()->addAction(caption), &QAction::triggered, top, std::move(work));
        return;
    }
}

/// Says across the window that another day is shown, in the colours of what is chosen; not there today.
class StandBand final : public QFrame, private koben::Control::View {
public:
    StandBand(koben::PA_Koben& form, QWidget* line) : View(form.standhinweis), m_form(form) {
        setAutoFillBackground(true);
        setBackgroundRole(QPalette::Highlight);
        for (QLabel* words : line->findChildren<QLabel*>()) {
            QFont bold = words->font();
            bold.setBold(true);
            words->setFont(bold);
            words->setForegroundRole(QPalette::HighlightedText);
        }
        auto* box = new QVBoxLayout(this);
        const int margin = fontMetrics().height() / 4;
        box->setContentsMargins(2 * margin, margin, 2 * margin, margin);
        box->addWidget(line);
        changed(koben::Aspect::Visible);
    }

private:
    void changed(koben::Aspect) override { setVisible(m_form.standhinweis.visible()); }
    koben::PA_Koben& m_form;
};

}  // namespace

LAYOUT(PA_Koben) {
    const Piece list =
        grid(form.datali, QStringLiteral("Noch keine Tiere. Legen Sie über „Bestand“ neue Schweine an oder "
                                         "lesen Sie über „Optionen / Import Excel“ eine Liste ein."));
    form.linksrechts.icon = QStringLiteral("aufteilung");
    form.comlebenslauf.icon = QStringLiteral("uebersicht");
    const Piece animal =
        column({flow({button(form.cmdok), button(form.abwaerts[1]), button(form.abwaerts[0]), button(form.comdrucken),
                      iconButton(form.comlebenslauf), iconButton(form.linksrechts)}),
                animalPanel(form)});
    auto* scrolled = new QScrollArea;  // where the screen is low
    scrolled->setWidgetResizable(true);
    scrolled->setFrameShape(QFrame::NoFrame);
    scrolled->setFocusPolicy(Qt::NoFocus);
    scrolled->setWidget(animal.widget);
    const Piece panel = own(scrolled);
    const Piece both = split(listOrFirstSteps(form, list), withToday(form, panel), 2, 1);
    auto* splitter = static_cast<QSplitter*>(both.widget);
    form.layoutChanged = [splitter, &form] {
        const bool wide = form.koben.Konfig_Zahl[Zahl::ListeBreit] == 1;  // the panel is the wide one
        const int third = 1000;
        splitter->setSizes({wide ? third : 2 * third, wide ? 2 * third : third});
    };
    form.layoutChanged();
    const Piece number = search(form.t, QStringLiteral("Saunummer"));
    markFromSearch(*number.widget, form.t, form.datali);
    const Piece bar = menus(form.menuBar());
    addCommand(bar, "H_Hilfe", QStringLiteral("Fehlerprotokoll für die Hilfe am Telefon"),
               [&form] { form.Fehlerprotokoll_zeigen(); });
    std::vector<Piece> pieces{bar, toolBar(form.toolBar())};
    if (isSampleFarm(form)) pieces.push_back(sampleFarmLine(form));
    pieces.push_back(own(new StandBand(form, row({label(form.standhinweis) * 1, button(form.comheute)}).widget)));
    const Piece filters =
        flow({segments(form.optianzeige), segments(form.optiverkauft), row({plain(form.Label1), number}),
              button(form.comstand), row({plain(form.Label2), segments(form.optisauen)})});
    new Scanner(*list.widget, [&form](const QString& code) { form.Scan(code); });
    const Piece quick = quickEntry(form.schnell, form.schnellsatz, form.datali);
    for (const Piece& piece :
         {label(form.hinweis), filters, both, quick, label(form.loeschhinweis), label(form.bezstati)})
        pieces.push_back(piece);
    return column(pieces);
}

#include "ui/FirstSteps.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>

#include "herd/PA_Koben.h"
#include "ui/Application.h"
#include "ui/FormWindow.h"
#include "ui/SampleVisit.h"
#include "ui/WindowScreens.h"

namespace koben::ui {

namespace {

QLabel* words(const QString& text, bool quiet) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    if (quiet) label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

QLabel* bold(QLabel* label) {
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

/// Follows the list: where it is empty and the herd too, the ways to begin stand in its place.
class ListOrSteps final : public QStackedWidget, private Control::View {
public:
    ListOrSteps(PA_Koben& form, QWidget* list) : View(form.datali), m_form(form), m_list(list) {
        auto* page = new QWidget;  // of its own: the list shows and hides itself by its model
        auto* box = new QVBoxLayout(page);
        box->setContentsMargins({});
        box->addWidget(list);
        addWidget(page);
        auto* area = new QScrollArea;
        area->setFrameShape(QFrame::NoFrame);
        area->setWidgetResizable(true);
        area->setFocusPolicy(Qt::NoFocus);
        area->setWidget(steps());
        area->widget()->setAutoFillBackground(false);
        area->viewport()->setAutoFillBackground(false);
        addWidget(area);
    }

private:
    void changed(Aspect aspect) override {
        if (aspect != Aspect::Rows && aspect != Aspect::Columns) return;
        if (std::exchange(m_waiting, true)) return;
        QMetaObject::invokeMethod(
            this, [this] { follow(); }, Qt::QueuedConnection);
    }

    void follow() {
        m_waiting = false;
        const int page = m_form.Bestand_leer() ? 1 : 0;
        if (page == currentIndex()) return;
        setCurrentIndex(page);
        if (!qobject_cast<QLineEdit*>(window()->focusWidget()))
            (page == 1 ? m_first : m_list)->setFocus(Qt::OtherFocusReason);
    }

    QWidget* steps() {
        auto* panel = new QWidget;
        auto* box = new QVBoxLayout(panel);
        box->addStretch(1);
        box->addWidget(bold(words(QStringLiteral("Noch ist kein Tier im Bestand. Wie möchten Sie anfangen?"), false)));
        m_first =
            addWay(*box, QStringLiteral("Bestand aus einer Datei einlesen..."),
                   QStringLiteral("Eine Tabelle mit Ihren Tieren, etwa aus der Tabellenkalkulation oder aus einem "
                                  "anderen Programm (CSV). Was gelesen wird, sehen Sie vorher."),
                   [this] { enter(u"O_ImportExcelCSV"); });
        addWay(*box, QStringLiteral("Erste Tiere eingeben..."),
               QStringLiteral("Tier für Tier: Art, Nummer, Geburt und Zugang. Bei wenigen Tieren geht das am "
                              "schnellsten."),
               [this] { enter(u"XB_neueschweine"); });
        if (auto* screens = dynamic_cast<WindowScreens*>(&m_form.koben.screens); screens && screens->sample.make)
            addWay(*box, QStringLiteral("Musterbetrieb ansehen"),
                   QStringLiteral("Ein erfundener Betrieb mit allen Buchungen, zum Ausprobieren. Nichts davon bleibt, "
                                  "und mit Ihren Daten kommt er nie zusammen."),
                   [this, screens] { m_form.act([this, screens] { visitSampleFarm(m_form.koben, *screens); }); });
        box->addWidget(words(QStringLiteral("Eine Datensicherung und den Bestand aus KOBEN 1.0 holen Sie über das Menü "
                                            "„Optionen“ herein. F1 zeigt die ersten Schritte."),
                             true));
        box->addStretch(2);
        return panel;
    }

    static QPushButton* addWay(QBoxLayout& box, const QString& caption, const QString& about,
                               const std::function<void()>& go) {
        auto* button = new QPushButton(caption);
        button->setAutoDefault(false);
        button->setAccessibleDescription(about);
        connect(button, &QPushButton::clicked, button, [go] { guarded(go); });
        box.addSpacing(button->fontMetrics().height() / 2);
        box.addWidget(button, 0, Qt::AlignLeft);
        box.addWidget(words(about, true));
        return button;
    }

    /// The same as the menu's entry.
    void enter(QStringView entry) {
        if (auto* menu = dynamic_cast<MenuEntry*>(m_form.find(entry)); menu && menu->enabled()) menu->click();
    }

    PA_Koben& m_form;
    QWidget* m_list;
    QPushButton* m_first = nullptr;
    bool m_waiting = false;
};

}  // namespace

Piece listOrFirstSteps(PA_Koben& form, const Piece& list) {
    Piece piece = list;
    piece.widget = new ListOrSteps(form, list.widget);
    return piece;
}

Piece sampleFarmLine(PA_Koben& form) {
    auto* back = new QPushButton(QStringLiteral("Musterbetrieb &verlassen"));
    back->setAutoDefault(false);
    QObject::connect(back, &QPushButton::clicked, back,
                     [&form] { guarded([&form] { form.act([&form] { form.closeBox(); }); }); });
    auto* where = bold(words(QStringLiteral("Sie sehen den Musterbetrieb. Buchen, ändern und drucken Sie, was Sie "
                                            "wollen: Nichts davon bleibt, und Ihre eigenen Daten sind nicht dabei."),
                             false));
    return row({own(where) * 1, own(back)});
}

}  // namespace koben::ui

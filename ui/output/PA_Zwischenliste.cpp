#include "output/PA_Zwischenliste.h"

#include "output/Uebergabe.h"
#include "ui/GridView.h"
#include "ui/Layout.h"
#include "ui/Preview.h"
#include "ui/ToAnimal.h"

namespace koben::ui {
namespace {

/// What a list of figures has besides: its rows keep their name when scrolled sideways, and a button tells where a
/// figure comes from. Known once the list has come.
class Figures final : public QObject, private Control::View {
public:
    Figures(Grid& list, QPushButton& button) : QObject(&button), View(list), m_list(list), m_button(button) {
        button.hide();
    }

private:
    void changed(Aspect aspect) override {
        if (aspect != Aspect::Rows && aspect != Aspect::Columns) return;
        bool named = m_list.explain != nullptr;
        if (m_button.isHidden() == named) m_button.setVisible(named);
        for (int i = 1; named && i <= m_list.rowCount(); ++i)
            named = m_list.isSeparator(i) || !m_list.cell(i, 1).isEmpty();
        if (named == (m_list.rowTitle != nullptr)) return;
        m_list.rowTitle = nullptr;
        if (named) m_list.rowTitle = [&list = m_list](int number) { return list.cell(number, 1); };
    }
    Grid& m_list;
    QPushButton& m_button;
};

}  // namespace
}  // namespace koben::ui

LAYOUT(PA_Zwischenliste) {
    // The list as it stands, on paper: the window's own, beside the roads that the form offers.
    auto* print = new QPushButton(QStringLiteral("D&rucken..."));
    print->setObjectName(QStringLiteral("listendruck"));
    print->setAutoDefault(false);
    QObject::connect(print, &QPushButton::clicked, print, [print, &form] {
        if (form.gridli.rowCount() == 0) return form.koben.message(QStringLiteral("Es sind keine Daten in der Liste."));
        previewTable(*print->window(), form.koben, form.gridli, Berichtstitel(form.koben));
    });
    leadsToAnimals(form.gridli);
    const Piece list = grid(form.gridli, QStringLiteral("Die Liste ist leer."));
    auto* explain = new QPushButton(QStringLiteral("&Zahl herleiten"));
    explain->setAutoDefault(false);
    explain->setToolTip(QStringLiteral("Woher die Zahl der gewählten Zelle kommt (F2)"));
    QObject::connect(explain, &QPushButton::clicked, list.widget,
                     [view = dynamic_cast<GridView*>(list.widget)] { view->explainCurrent(); });
    new Figures(form.gridli, *explain);
    return column({list,
                   flow({button(form.comtext), button(form.comexcel), button(form.roexplorer[0]),
                         button(form.roexplorer[1]), own(print), own(explain)}),
                   buttons({button(form.hilfe), button(form.cmdschließen)})});
}

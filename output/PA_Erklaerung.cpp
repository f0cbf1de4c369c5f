#include "output/PA_Erklaerung.h"

#include "forms/Erklaerung.h"
#include "forms/Liste.h"

namespace koben {

PA_Erklärung::PA_Erklärung(Koben& koben_)
    : Form(koben_, QStringLiteral("PA_Erklärung"), QStringLiteral("Herkunft der Zahl")) {
    helpTopic = name();
    cancelButton = &beenden;
    beenden.onClick = [this] { close(); };
    ok.onClick = [this] { Liste_ausgeben(koben, gridli); };
}

void PA_Erklärung::Load() {
    if (!koben.explained) return close();
    const Explanation& told = *koben.explained;
    satz.setText(told.sentence);
    const auto figures = told.figures();
    for (int i = 0; i < wert.count(); ++i) {
        const bool there = i < static_cast<int>(figures.size());
        if (there) bez[i].setText(figures[static_cast<size_t>(i)].first);
        if (there) wert[i].setText(figures[static_cast<size_t>(i)].second);
        bez[i].setVisible(there), wert[i].setVisible(there);
    }
    Erklaerung_fuellen(gridli, told);
}

}  // namespace koben

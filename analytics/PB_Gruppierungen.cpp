#include "analytics/PB_Gruppierungen.h"

namespace koben {

namespace {

enum Choice { Rows, Pivots, Costs };

}  // namespace

PB_Gruppierungen::PB_Gruppierungen(Koben& koben_) : Bericht(koben_, "PB_Gruppierungen", "Gruppierungen") {
    for (int i = 0; i < kom.count(); ++i) {
        kom[i].fixed = true;
        kom[i].setHint(rahmen[i].text() + u' ' + bez[i].text());
    }
    datali.setHint("Ergebnis der Gruppierung");
    gridli.setVisible(false);
    for (int i = 0; i < auswertungok.count(); ++i)
        auswertungok[i].onClick = [this, i] { show(Kreuztabelle(i, kom[Rows].text())); };
    for (int i = 0; i < sonstigeok.count(); ++i)
        sonstigeok[i].onClick = [this, i] { show(Altersgruppierung(i, kom[Pivots].text())); };
    for (int i = 0; i < gruppekostenjetier.count(); ++i)
        gruppekostenjetier[i].onClick = [this, i] { show(Kostengruppierung(i, kom[Costs].text())); };
    for (int i = 0; i < gruppeok.count(); ++i) gruppeok[i].onClick = [this, i] { show(Tiergruppierung(i)); };
    ok.onClick = [this] { ok_Click(); };
    bindButtons(ok, beenden, &hilfe);
}

void PB_Gruppierungen::fillChoices() {
    for (int i = 0; i < kom.count(); ++i) {
        kom[i].setItems({i == Pivots ? "Art" : "Nummer", "Gruppe", "Stallnr", "Rasse"});
        kom[i].setCurrent(0);
    }
}

void PB_Gruppierungen::show(const Gruppierung& grouping) {
    std::optional<Table> result;
    const bool whole = run("Die Gruppierung wird berechnet ...", 1, nullptr, [&](Progress& progress) {
        result = m_db.table(grouping.statement(), [&](qint64) { return progress.step(0); });
    });
    if (!whole || !result) return;
    Label1.setText("Ergebnis (" + grouping.caption + u')');
    datali.clear();
    datali.bind(*result);
    datali.explain = Gruppierung_herleiten(m_db, grouping, *result);
}

void PB_Gruppierungen::ok_Click() {
    gridli.copy(datali);
    Liste_ausgeben(koben, gridli);
}

}  // namespace koben

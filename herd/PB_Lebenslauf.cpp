#include "herd/PB_Lebenslauf.h"

#include "core/Aktionsnamen.h"
#include "core/PZ_Koben_Subs.h"
#include "herd/Lebenslauf.h"

namespace koben {

namespace {

Value moment(const QDateTime& when) {
    if (!when.isValid()) return {};
    DateTime value = DateTime::of(when.date());
    value.second = when.time().msecsSinceStartOfDay() / 1000;
    return value;
}

}  // namespace

PB_Lebenslauf::PB_Lebenslauf(Koben& koben_) : Bericht(koben_, "PB_Lebenslauf", "Lebenslauf") {
    li.addColumn({.key = "datum", .title = "Datum", .sort = Sort::Date});
    li.addColumn({.key = "was", .title = "Was"});
    li.addColumn({.key = "einzelheiten", .title = "Einzelheiten", .width = 495});
    li.addColumn({.key = "geschrieben", .title = "Geschrieben", .width = 140, .sort = Sort::Date});
    li.setHint(QStringLiteral("Was das Tier erlebt hat"));
    ok.onClick = [this] { Liste_ausgeben(koben, li); };
    for (int i = 0; i < nextschwein.count(); ++i) nextschwein[i].onClick = [this, i] { nextschwein_Click(i); };
    bindButtons(ok, beenden, &hilfe);
    bindWidths(li, "pb_lebenslauf");
}

void PB_Lebenslauf::Load() {
    Bericht::Load();
    showAnimal();
}

void PB_Lebenslauf::FirstShown() {
    if (koben.herdList && koben.herdList->herd().row() > 0) return;
    koben.message("Bitte wählen Sie zuerst in der Liste das Tier aus, dessen Lebenslauf Sie sehen möchten.");
    close();
}

void PB_Lebenslauf::showAnimal() {
    li.clearRows();
    if (!koben.herdList || koben.herdList->herd().row() == 0) return;
    const Grid& herd = koben.herdList->herd();
    const qint64 animal = herd.integer(herd.row(), herd.columnOf(u"ID"));
    const QString name = herd.cell(herd.row(), u"Art") + u' ' + herd.cell(herd.row(), u"Nummer");
    setCaption(QStringLiteral("Lebenslauf ") + name);
    const auto events = Lebenslauf_lesen(m_db, animal, Aenderungen_lesen(m_db, animal, koben.Stand));
    for (const Lebensereignis& each : events)
        li.addValues({each.tag == 0 ? Value() : Value(QDate::fromJulianDay(each.tag)), each.was, each.einzelheiten,
                      moment(each.geschrieben)},
                     each.sau);
    Label1.setText(
        QStringLiteral("%1: %2, der älteste zuerst.").arg(name, counted(li.rowCount(), "Eintrag", "Einträge")));
    if (li.rowCount() > 0) li.setRow(1);
}

void PB_Lebenslauf::nextschwein_Click(int direction) {
    koben.Tier_weiterschalten(direction);
    showAnimal();
}

}  // namespace koben

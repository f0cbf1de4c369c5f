#include "analytics/PB_Statistiken.h"

#include <algorithm>

#include "analytics/Betriebsstatistik.h"
#include "core/PZ_Koben_Subs.h"
#include "output/Uebergabe.h"

namespace koben {

namespace {

enum Run { JeSau, JeJahr, JeWurf, JeEber, EberJeJahr, Betrieb, Uebersicht };
enum Number { JahrVon, JahrBis, WurfVon, WurfBis };

constexpr int MostYears = 20;

bool byYear(int run) { return run == JeJahr || run == EberJeJahr; }
bool byLitter(int run) { return run == JeWurf || run == Betrieb || run == Uebersicht; }

QStringList texts(std::span<const Kennwert> measures, const char* Kennwert::*what) {
    QStringList all;
    for (const Kennwert& measure : measures) all += QString::fromUtf8(measure.*what);
    return all;
}

/// The first and the last day of a year as its digits mean them within a date; nothing where they make none.
std::optional<Statistikjahr> yearOf(const Database& db, int year) {
    try {
        const Table days = db.table(QStringLiteral("select #01/01/%1# as von, #12/31/%1# as bis").arg(year));
        const Statistikjahr found{year, days.value(0, 0).toDate(), days.value(0, 1).toDate()};
        if (found.von.isValid() && found.bis.isValid()) return found;
    } catch (const DatabaseError&) {
    }
    return {};
}

}  // namespace

PB_Statistiken::PB_Statistiken(Koben& koben_) : Bericht(koben_, "PB_Statistiken", "Statistiken") {
    const std::initializer_list<Control*> sows{&li1, &li1x, &ok[JeSau], &ok[JeJahr], &ok[JeWurf]};
    for (Control* control : sows) control->setPage(sstab, 0);
    const std::initializer_list<Control*> boars{&li2, &li2x, &ok[JeEber], &ok[EberJeJahr]};
    for (Control* control : boars) control->setPage(sstab, 1);
    const std::initializer_list<Control*> hidden{&li1x, &li2x, &gridli, &li};
    for (Control* control : hidden) control->setVisible(false);
    li1.setHint(rahmen[0].text());
    li2.setHint(rahmen[0].text());
    for (int i = 0; i < t.count(); ++i) {
        bindNumber(t[i], Zahl::StatistikJahrVon + i);
        t[i].setHint(bez[tdat.count() + i].text());
    }
    for (int i = 0; i < tdat.count(); ++i) {
        bindDate(tdat[i], calender[i], calend);
        tdat[i].setHint(bez[i].text());
    }
    bindMarks(li1, Text::StatistikSauen);
    bindMarks(li2, Text::StatistikEber);
    bindAllAndNone(alletier, [this]() -> ListBox& { return sstab.front() == 0 ? li1 : li2; });
    bindButtons(ok[JeSau], beenden, &hilfe);
    for (int i = 0; i < ok.count(); ++i) ok[i].onClick = [this, i] { ok_Click(i); };
}

void PB_Statistiken::fillChoices() {
    li1.setItems(texts(Kennwerte_Sau(), &Kennwert::caption));
    li1x.setItems(texts(Kennwerte_Sau(), &Kennwert::column));
    li2.setItems(texts(Kennwerte_Eber(), &Kennwert::caption));
    li2x.setItems(texts(Kennwerte_Eber(), &Kennwert::column));
}

void PB_Statistiken::leave() {
    m_run.reset();
    Bericht::leave();
}

/// A period ends at least a day after it begins.
void PB_Statistiken::dateChanged(TextBox& field) {
    if (&field != &tdat[1]) return;
    const QDate von = Datum_aus_Text(tdat[0].text()), bis = Datum_aus_Text(tdat[1].text());
    if (von.isValid() && bis.isValid() && bis <= von) tdat[1].setText(QString());
}

int PB_Statistiken::number(int index) const { return static_cast<int>(std::clamp(Wert(t[index].text()), -1e9, 1e9)); }

/// Why the run cannot be made, a reason each.
QStringList PB_Statistiken::refusals(int index) {
    QStringList reasons;
    if (byYear(index) && number(JahrBis) < number(JahrVon))
        reasons += "...das Jahr von... nicht höher sein darf als das Jahr bis...!";
    if (byYear(index) && number(JahrBis) - number(JahrVon) > MostYears)
        reasons += "...der Unterschied Jahr von... zu Jahr bis... max. 20 Jahre sein darf.";
    if (byLitter(index) && number(WurfBis) < number(WurfVon))
        reasons += "...der Wurf von... nicht höher sein darf als der Wurf bis...!";
    if (byLitter(index) && number(WurfBis) - number(WurfVon) > Wurflauf::Most)
        reasons += "...der Unterschied Wurf von... zu Wurf bis... max. 20 Würfe sein darf.";
    if (number(WurfBis) > Wurflauf::Most) reasons += "...der Wurf bis... nicht über 20 sein darf.";
    if (index == JeWurf && reasons.isEmpty() && number(WurfVon) < 0)
        reasons += "...der Wurf von... nicht unter 0 sein darf.";
    m_years.clear();
    for (int year = number(JahrVon); byYear(index) && reasons.isEmpty() && year <= number(JahrBis); ++year)
        if (const auto days = yearOf(m_db, year))
            m_years.push_back(*days);
        else
            reasons +=
                QStringLiteral("...%1 keine Jahreszahl ist. Bitte geben Sie das Jahr vierstellig ein.").arg(year);
    return reasons;
}

/// Nothing chosen means all; the page of the farm takes all in any case.
void PB_Statistiken::choose(int index) {
    if (li1.markedCount() == 0 || index == Betrieb) alletier[0].onClick();
    if (index == Betrieb) {
        kon[0].setChecked(true);
        markAll(li1, true);
    }
}

/// Whether the run is limited to the period; without both days it is not, and says so.
bool PB_Statistiken::periodGiven() {
    if (!kon[0].checked()) return false;
    if (Ist_Datum(tdat[0].text()) && Ist_Datum(tdat[1].text())) return true;
    koben.message(
        "Es sind keine Zeitwerte für die Auswertung angegeben. Die Statistik wird deshalb zeitlich unbegrenzt "
        "berechnet.");
    kon[0].setChecked(false);
    return false;
}

Kennwertlauf::Auftrag PB_Statistiken::order(int index) {
    Kennwertlauf::Auftrag order{.eber = index == JeEber || index == EberJeJahr,
                                .years = m_years,
                                .zyklustage = koben.Konfig_Zahl[Zahl::TageFerkelungBelegung],
                                .geburtsgewicht = koben.Konfig_Zahl[Zahl::Geburtsgewicht]};
    order.condition = order.eber ? "Art = 'Eber'" : "Art = 'Sau'";
    if (index == Betrieb) order.condition += " and Selektiert = 'X'";
    if ((index == JeSau || index == Betrieb) && periodGiven()) {
        order.von = Datum_aus_Text(tdat[0].text());
        order.bis = Datum_aus_Text(tdat[1].text());
    }
    const ListBox& list = order.eber ? li2 : li1;
    const auto measures = order.eber ? Kennwerte_Eber() : Kennwerte_Sau();
    for (size_t i = 0; i < measures.size(); ++i) {
        const bool column = !(index == EberJeJahr && measures[i].text);  // dates have no column by year
        if (list.marked(static_cast<int>(i)) && column) order.measures.push_back(&measures[i]);
    }
    return order;
}

std::unique_ptr<Statistiklauf> PB_Statistiken::statistic(int index) {
    if (index == JeWurf) return std::make_unique<Wurflauf>(m_db, number(WurfVon), number(WurfBis));
    if (index == Uebersicht) return std::make_unique<Ferkelungslauf>(m_db, number(WurfVon), number(WurfBis));
    return std::make_unique<Kennwertlauf>(m_db, order(index));
}

/// Fills the list with its closing rows. False where the user has cancelled.
bool PB_Statistiken::compute(int index) {
    m_run = statistic(index);
    const int first = index == Uebersicht ? Ferkelungslauf::FirstNumber : 2;
    gridli.clear();
    const bool whole = Bericht::run("Die Statistik wird berechnet ...", m_run->steps(), &meter,
                                    [&](Progress& progress) { m_run->fill(gridli, progress); });
    meter.setValue(0);
    if (!whole) return gridli.clear(), false;
    if (index != JeWurf) addMeansAndSums(gridli, first);
    gridli.explain = [this, index, first](int row, int column) {
        if (index != JeWurf)
            if (auto told = explainMeansAndSums(gridli, row, column, first)) return std::optional(told);
        return m_run->explain(gridli, row, column);
    };
    return true;
}

void PB_Statistiken::ok_Click(int index) {
    const QStringList reasons = refusals(index);
    if (!reasons.isEmpty())
        return koben.message("Die Statisktik kann nicht erstellt werden, weil..." + Crlf + Crlf + reasons.join(Crlf));
    choose(index);
    if (!compute(index)) return;
    if (gridli.rowCount() == 0) return koben.message("Keine zu listenden Daten gefunden");
    if (index == Betrieb)
        Text_uebergeben(koben, Betriebsstatistik(m_db, gridli, tdat[0].text(), tdat[1].text()));
    else
        Liste_ausgeben(koben, gridli);
}

}  // namespace koben

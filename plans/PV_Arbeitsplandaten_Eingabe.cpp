#include "plans/PV_Arbeitsplandaten_Eingabe.h"

#include <array>

#include "core/PZ_Koben_Subs.h"
#include "plans/Arbeitsplan.h"

namespace koben {

namespace {

constexpr int MostDays = 999;                              // by the arrows
constexpr std::array DayFields{u"Tage_von", u"Tage_bis"};  // of tz
constexpr std::array DateFields{u"Bezugstermin", u"Aktiv_gross", u"Aktiv_klein", u"Erledigt_gross",
                                u"Erledigt_klein"};  // of kom

}  // namespace

PV_Arbeitsplandaten_Eingabe::PV_Arbeitsplandaten_Eingabe(Koben& koben_)
    : Stammdateneingabe(koben_, "PV_Arbeitsplandaten_Eingabe", "Arbeitsplandaten eingeben/ändern",
                        "Arbeitsplan (Art des Arbeitsplans):") {
    for (int i = 0; i < tz.count(); ++i) {
        tz[i].maxLength = 5;
        tz[i].setHint(bez[i].text());
        tz[i].onKeyPress = Nur_Ziffern;
        tz[i].onLostFocus = [this, i] { tz_LostFocus(i); };
        UpDown[i].onUp = [this, i] { stepField(tz[i], 1, 1, MostDays); };
        UpDown[i].onDown = [this, i] { stepField(tz[i], -1, 1, MostDays); };
    }
    for (int i = 0; i < kom.count(); ++i) {
        kom[i].fixed = true;
        kom[i].setHint(bez[i + 2].text());
    }
}

void PV_Arbeitsplandaten_Eingabe::prepare() {
    for (auto& box : kom) box->setItems(QStringList{QString()} + Terminnamen());
}

void PV_Arbeitsplandaten_Eingabe::showDefaults() {
    t.setText(QString());
    for (auto& field : tz) field->setText(QStringLiteral("1"));
    for (auto& box : kom) box->setCurrent(0);
}

void PV_Arbeitsplandaten_Eingabe::showRow() {
    t.setText(rowText(u"Arbeitsart"));
    for (size_t i = 0; i < DayFields.size(); ++i) tz[static_cast<int>(i)].setText(rowText(DayFields[i]));
    for (size_t i = 0; i < DateFields.size(); ++i) {
        ComboBox& box = kom[static_cast<int>(i)];
        box.setCurrent(static_cast<int>(box.items().indexOf(rowText(DateFields[i]))));
    }
}

void PV_Arbeitsplandaten_Eingabe::tz_LostFocus(int index) {
    if (Wert(tz[index].text()) < 1) tz[index].setText(QStringLiteral("1"));
}

bool PV_Arbeitsplandaten_Eingabe::halfFilled(int first) const {
    return kom[first].text().isEmpty() != kom[first + 1].text().isEmpty();
}

void PV_Arbeitsplandaten_Eingabe::check(Findings& findings) {
    if (t.text().trimmed().isEmpty()) findings.add(t, "...der Arbeitsplan eingegeben werden muß.");
    if (exists(QStringLiteral("select Arbeitsart from Arbeitsplanoptionen where Arbeitsart = '%1'")
                   .arg(Hochkomma_ersetzen(t.text())) +
               exceptThisRow()))
        findings.add(t, "...Der Arbeitsplan bereits existiert.");
    if (Wert(tz[0].text()) > Wert(tz[1].text()))
        findings.add(tz[0], "...die 'Tage von' nicht höher sein dürfen als die 'Tage bis'.");
    if (kom[0].text().isEmpty()) findings.add(kom[0], "...der Bezugstermin eingegeben werden muß.");
    if (halfFilled(1) || halfFilled(3))
        findings.add(kom[halfFilled(1) ? 1 : 3],
                     "...in den Erledigungs-Gruppen (Rahmenfelder) entweder in beiden Auswahlfelder ein Termin "
                     "ausgewählt werden muß oder in keinem.");
}

void PV_Arbeitsplandaten_Eingabe::write(Recordset& row) {
    row.set(u"Arbeitsart", Hochkomma_ersetzen(t.text()));
    for (size_t i = 0; i < DayFields.size(); ++i)
        row.set(DayFields[i], static_cast<int>(Wert(tz[static_cast<int>(i)].text())));
    for (size_t i = 0; i < DateFields.size(); ++i)
        row.set(DateFields[i], Hochkomma_ersetzen(kom[static_cast<int>(i)].text()));
}

}  // namespace koben

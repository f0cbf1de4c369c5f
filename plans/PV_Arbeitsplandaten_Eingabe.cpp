#include "plans/PV_Arbeitsplandaten_Eingabe.h"

#include "core/Arbeitsplan.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

constexpr int MostDays = 999;                              // by the arrows
const char* const DayFields[] = {"Tage_von", "Tage_bis"};  // of tz
const char* const DateFields[] = {"Bezugstermin", "Aktiv_gross", "Aktiv_klein", "Erledigt_gross",
                                  "Erledigt_klein"};  // of kom

}  // namespace

PV_Arbeitsplandaten_Eingabe::PV_Arbeitsplandaten_Eingabe(Koben& koben_)
    : Stammdateneingabe(koben_, "PV_Arbeitsplandaten_Eingabe", "Arbeitsplandaten eingeben/ändern",
                        "Arbeitsplan (Art des Arbeitsplans):", "Arbeitsart") {
    for (int i = 0; i < tz.count(); ++i) {
        count(bez[i].text(), tz[i], DayFields[i], "1", UpDown[i], 1, MostDays);
        tz[i].maxLength = 5;
        tz[i].onLostFocus = [&field = tz[i]] {
            if (Wert(field.text()) < 1) field.setText(QStringLiteral("1"));
        };
    }
    const QStringList dates = QStringList{QString()} + Terminnamen();
    for (int i = 0; i < kom.count(); ++i) choice(bez[i + 2].text(), kom[i], DateFields[i], dates);
}

bool PV_Arbeitsplandaten_Eingabe::halfFilled(int first) const {
    return kom[first].text().isEmpty() != kom[first + 1].text().isEmpty();
}

void PV_Arbeitsplandaten_Eingabe::check(Findings& found) {
    if (t.text().trimmed().isEmpty()) found.add(t, "...der Arbeitsplan eingegeben werden muß.");
    if (exists(QStringLiteral("Arbeitsart = '%1'").arg(Hochkomma_ersetzen(t.text()))))
        found.add(t, "...Der Arbeitsplan bereits existiert.");
    if (Wert(tz[0].text()) > Wert(tz[1].text()))
        found.add(tz[0], "...die 'Tage von' nicht höher sein dürfen als die 'Tage bis'.");
    if (kom[0].text().isEmpty()) found.add(kom[0], "...der Bezugstermin eingegeben werden muß.");
    if (halfFilled(1) || halfFilled(3))
        found.add(kom[halfFilled(1) ? 1 : 3],
                  "...in den Erledigungs-Gruppen (Rahmenfelder) entweder in beiden Auswahlfelder ein Termin "
                  "ausgewählt werden muß oder in keinem.");
}

}  // namespace koben

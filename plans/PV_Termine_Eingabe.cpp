#include "plans/PV_Termine_Eingabe.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

PV_Termine_Eingabe::PV_Termine_Eingabe(Koben& koben_)
    : Stammdateneingabe(koben_, "PV_Termine_Eingabe", "Termine eingeben/ändern", "Art des Termins:", "Terminart") {
    shareCalendar(calend);
    date(bez[0].text(), tdat, calender, "Datum");
    choice(bez[1].text(), kom, "Wiederholung",
           {"Einmalig", "Jährlich", "Halbjährlich", "Vierteljährlich", "Monatlich", "Zweiwöchentlich", "Wöchentlich"});
}

void PV_Termine_Eingabe::check(Findings& found) {
    const QString kind = Hochkomma_ersetzen(t.text());
    if (kind.isEmpty()) found.add(t, "...der Termin eingegeben werden muß.");
    if (!Ist_Datum(tdat.text())) found.add(tdat, "...das Datum korrekt eingegeben werden muß.");
    if (!found.empty()) return;
    if (exists(QStringLiteral("Terminart = '%1' and Datum = %2 and Wiederholung = '%3'")
                   .arg(kind, Sql_Datum(QString(tdat.text())), kom.text())))
        found.add(t, "...der Termin bereits existiert.");
}

}  // namespace koben

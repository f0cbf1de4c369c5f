#include "plans/PV_Termine_Eingabe.h"

#include "core/PZ_Koben_Subs.h"
#include "forms/Eingabe.h"

namespace koben {

PV_Termine_Eingabe::PV_Termine_Eingabe(Koben& koben_)
    : Stammdateneingabe(koben_, "PV_Termine_Eingabe", "Termine eingeben/ändern", "Art des Termins:") {
    tdat.setHint(bez[0].text());
    Datumsfeld_verbinden(koben, tdat, calender, calend);
    kom.fixed = true;
    kom.setHint(bez[1].text());
    kom.setItems(
        {"Einmalig", "Jährlich", "Halbjährlich", "Vierteljährlich", "Monatlich", "Zweiwöchentlich", "Wöchentlich"});
}

void PV_Termine_Eingabe::prepare() { calend.setDate(Datum_aus_Text(koben.Heute)); }

void PV_Termine_Eingabe::showDefaults() {
    t.setText(QString());
    tdat.setText(QString());
    kom.setCurrent(0);
}

void PV_Termine_Eingabe::showRow() {
    t.setText(rowText(u"Terminart"));
    tdat.setText(Datum_ergaenzen(rowText(u"Datum"), koben.Heute));
    kom.setCurrent(static_cast<int>(kom.items().indexOf(rowText(u"Wiederholung"))));
}

void PV_Termine_Eingabe::check(Findings& findings) {
    const QString kind = Hochkomma_ersetzen(t.text());
    if (kind.isEmpty()) findings.add(t, "...der Termin eingegeben werden muß.");
    if (!Ist_Datum(tdat.text())) findings.add(tdat, "...das Datum korrekt eingegeben werden muß.");
    if (!findings.empty()) return;
    if (exists(QStringLiteral("select * from Termine where Terminart = '%1' and Datum = %2 and Wiederholung = '%3'")
                   .arg(kind, Sql_Datum(QString(tdat.text())), kom.text()) +
               exceptThisRow()))
        findings.add(t, "...der Termin bereits existiert.");
}

void PV_Termine_Eingabe::write(Recordset& row) {
    row.set(u"Terminart", Hochkomma_ersetzen(t.text()));
    row.set(u"Datum", Datum_aus_Text(tdat.text()));
    row.set(u"Wiederholung", kom.text());
}

}  // namespace koben

#include "stock/PV_Bestandsdaten_Eingabe.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Input { AlterVon, AlterBis, Geldwert, Ferkelungen };
enum List { Zeit, Geschlecht, Belegt, Tierart };

constexpr int Most = 99;  // by the arrows
constexpr int Digits = 4;

}  // namespace

PV_Bestandsdaten_Eingabe::PV_Bestandsdaten_Eingabe(Koben& koben_)
    : Stammdateneingabe(koben_, "PV_Bestandsdaten_Eingabe", "Bestandsdaten eingeben/ändern",
                        "Tiergruppe:", "Tiergruppe") {
    count(bez[0].text(), tz[AlterVon], "Alter_von", "0", UpDown[0], 0, Most);
    count(bez[1].text(), tz[AlterBis], "Alter_bis", "1", UpDown[1], 0, Most);
    choice(bez[2].text(), kom[Zeit], "Zeit", {"Tage", "Wochen", "Monate", "Jahre"});
    choice(bez[3].text(), kom[Geschlecht], "Geschlecht", {"Weiblich", "Männlich", "Egal"}, Stored::Letter);
    amount(bez[4].text(), tz[Geldwert], "Wert");
    count(bez[5].text(), tz[Ferkelungen], "Mindestferkelung", "0", UpDown[2], 0, Most);
    choice(bez[6].text(), kom[Belegt], "Belegt", {"Nein", "Ja"}, Stored::Letter);
    choice(bez[7].text(), kom[Tierart], "Tierart", {"Alle", "Sau", "Eber", "Mast", "Ferkel"});
    for (const Input field : {AlterVon, AlterBis, Ferkelungen}) tz[field].maxLength = Digits;
    tz[AlterBis].onLostFocus = [this] {
        if (Wert(tz[AlterBis].text()) < 1) tz[AlterBis].setText(QStringLiteral("1"));
    };
    tz[Geldwert].onLostFocus = [this] {
        tz[Geldwert].setText(Betrag_als_Punkttext(Betrag_aus_Text(QString(tz[Geldwert].text()))));
    };
}

void PV_Bestandsdaten_Eingabe::check(Findings& found) {
    const QString group = Hochkomma_ersetzen(t.text());
    if (group.isEmpty()) found.add(t, "...die Tiergruppe eingegeben werden muß.");
    if (exists(QStringLiteral("Tiergruppe = '%1'").arg(group))) found.add(t, "...die Tiergruppe bereits existiert.");
    if (Wert(tz[AlterVon].text()) > Wert(tz[AlterBis].text()))
        found.add(tz[AlterVon], "...das 'Alter von' nicht höher sein darf als das 'Alter bis'.");
    if (kom[Zeit].text().isEmpty()) found.add(kom[Zeit], "...die Zeiteinheit fehlt.");
    if (kom[Geschlecht].text().isEmpty()) found.add(kom[Geschlecht], "...das Geschlecht fehlt.");
    if (kom[Tierart].text().isEmpty()) found.add(kom[Tierart], "...die Tierart fehlt.");
}

}  // namespace koben

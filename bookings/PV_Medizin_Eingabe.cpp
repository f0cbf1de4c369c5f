#include "bookings/PV_Medizin_Eingabe.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Input { Menge, Tage, Kosten };
enum List { Einheit, Behandlungsart, Verabreichungsart };

constexpr int MostDays = 999;  // by the arrows
constexpr int TextWidth = 20;

}  // namespace

PV_Medizin_Eingabe::PV_Medizin_Eingabe(Koben& koben_)
    : Stammdateneingabe(koben_, "PV_Medizin_Eingabe", "Medikamente eingeben/ändern", "Medikament:", "Medikament") {
    weight(bez[0].text(), tz[Menge], "Menge");
    choice(bez[1].text(), kom[Einheit], "Einheit", {"", "kg", "g", "mg", "l", "dl", "ml", "St"});
    count(bez[2].text(), tz[Tage], "Wartezeit_Tage", "0", UpDown, 1, MostDays);
    amount(bez[3].text(), tz[Kosten], "Kosten_je_Gabe");
    text(bez[4].text(), kom[Behandlungsart], "Behandlungsart", TextWidth,
         {.sql = "select DISTINCT Behandlungsart from Medikamente", .grows = true});
    text(bez[5].text(), kom[Verabreichungsart], "Verabreichungsart", TextWidth,
         {.sql = "select DISTINCT Verabreichungsart from Medikamente", .grows = true});
    for (List list : {Behandlungsart, Verabreichungsart}) kom[list].maxLength = TextWidth;
}

void PV_Medizin_Eingabe::Load() {
    Stammdateneingabe::Load();
    if (adding()) ok[2].setVisible(true);  // stores and stays for the next one
}

void PV_Medizin_Eingabe::check(Findings& found) {
    const QString medicine = Hochkomma_ersetzen(t.text());
    if (medicine.isEmpty())
        found.add(t, "...das Medikament eingegeben werden muß.");
    else if (exists(QStringLiteral("Medikament = '%1'").arg(medicine)))
        found.add(t, "...das Medikament bereits existiert.");
    if (Zahl_aus_Text(QString(tz[Menge].text())) == 0)
        found.add(tz[Menge], "...die Menge je Verabreichung eingegen werden muß.");
}

}  // namespace koben

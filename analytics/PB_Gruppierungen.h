#pragma once
// The panel of ready-made groupings: each button runs one, the list shows its answer.
#include "analytics/Gruppierungen.h"
#include "output/Bericht.h"

namespace koben {

class PB_Gruppierungen final : public Bericht {
public:
    explicit PB_Gruppierungen(Koben& koben);

    ControlArray<Frame> rahmen{
        *this,
        "rahmen",
        {"Sonstige Auswertungen", "Pivot Auswertungen", "Kosten je Kostenart und Tier (aktueller Bestand)",
         "Tierbezogene Gruppierungen (aktueller Bestand)"}};
    ControlArray<Label> bez{*this, "bez", {"Gruppiert nach:", "Pivot nach:", "Gruppiert nach:"}};
    ControlArray<ComboBox> kom{*this, "kom", 3};
    ControlArray<Button> auswertungok{
        *this, "auswertungok", {"Belegung/Ebernr",  "Belegung/Art",      "Belegung/Station", "Ferkelung/Gesamt",
                                "Ferkelung/Lebend", "Ferkelung/Tot",     "Absetzung/Anzahl", "Trächtig (J/N)",
                                "Verschiebung/Anz", "Verluste/Anz",      "Verluste/Grund",   "Behandl./Art",
                                "Behandl./Medik.",  "Behandl./Tierarzt", "Verkauf/Anzahl",   "Verkauf/Kunde",
                                "Ferkel/Jahr",      "Ferkel Leb./Jahr",  "Ferkelungen/Nr",   "Ferkelungen/NrJ.",
                                "Abgang/Jahr"}};
    ControlArray<Button> sonstigeok{
        *this,
        "sonstigeok",
        {"Bestandsalter nach Jahren", "Bestandsalter nach Monaten", "Stall/Box-Zuordnung der Ferkel in Tagen",
         "Stall/Box-Zuordnung der Ferkel in Tagen"}};
    ControlArray<Button> gruppekostenjetier{
        *this,
        "gruppekostenjetier",
        {"Belegung", "Ferkelung", "Trächtigkeit", "Verluste", "Behandlung", "Ferkelverkauf"}};
    ControlArray<Button> gruppeok{*this,
                                  "gruppeok",
                                  {"Art", "Gruppe", "Stallnr", "Anz_Belegungen", "Anz_Ferkelungen", "Rasse",
                                   "Zugangsgrund", "Lieferant", "Abgangsgrund", "Abnehmer"}};
    Label Label1{*this, "Label1", "Ergebnis"};
    Grid datali{*this, "datali"};
    Grid gridli{*this, "gridli"};
    Button ok{*this, "ok", "&Listen"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};

private:
    void fillChoices() override;
    void show(const Gruppierung& grouping);
    void ok_Click();
};

}  // namespace koben

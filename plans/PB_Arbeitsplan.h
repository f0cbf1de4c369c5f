#pragma once
// The work plan: which animal needs which work in the coming days, as a list by date or as a chart with one column a
// day. The same rows go to the file of the pocket device.
#include "output/Arbeitsplanliste.h"
#include "output/Bericht.h"

namespace koben {

class PB_Arbeitsplan final : public Bericht {
public:
    explicit PB_Arbeitsplan(Koben& koben);

    ControlArray<Frame> rahmen{
        *this, "rahmen", {"Arbeitspläne", "Berechnungszeitraum ab...", "Zu Listende Datenfelder"}};
    ListBox liarplan{*this, "liarplan", true};
    ControlArray<Button> allearplan{*this, "allearplan", {"Alle", "Keine"}};
    TextBox tdat{*this, "tdat"};
    Button calender{*this, "calender", ""};
    Calendar calend{*this, "calend"};
    Label Bezeichnung1{*this, "Bezeichnung1"};
    ControlArray<Button> woche{*this, "woche", {"&1 Woche", "&2 Wochen", "&3 Wochen", "&4 Wochen"}};
    ControlArray<CheckBox> kon{*this, "kon", {"Nummer", "Art", "Stallnr", "Gruppe"}};
    CheckBox konnurweiblich{*this, "konnurweiblich", "Nur Sauen berücksichtigen"};
    CheckBox wartezeit{*this, "wartezeit", "Wartezeit (Fleischverkauf) listen"};
    OptionGroup optisort{*this, "optisort", {"Nummer", "Art und Nummer", "Stallnr und Nummer", "Gruppe und Nummer"}};
    ControlArray<TextBox> t{*this, "t", 2};  ///< marks of a due day and of a free day in the chart
    ControlArray<Label> bez{*this,
                            "bez",
                            {"= Anzeige bei vorhandenem Termin (nur tabellarische Liste)",
                             "= Anzeige bei freiem Termin (nur tabellarische Liste)"}};
    ControlArray<Button> ok{*this, "ok", {"Termin-&Liste", "&Tabellarische Liste"}};
    Button comarbplanoptionen{*this, "comarbplanoptionen", "Arbeitsplan-Optionen"};
    ProgressBar meter{*this, "meter"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};
    Grid gridli{*this, "gridli"};

private:
    void Load() override;
    void fillChoices() override;
    void dateChanged(TextBox& field) override;
    void bindChoices();
    void showEnd();
    void woche_Click(int index);
    void comarbplanoptionen_Click();

    // a run, in its steps
    void ok_Click(int index);
    void fixMarks();
    enum class Outcome { Done, NoAnimals, Cancelled };
    Outcome fill(Planzeitraum period, const Arbeitsplanform& form);
    Arbeitsplanform chosenForm(bool chart) const;
    void writePocketFile();

    QDate m_end;  // last day of the period
};

}  // namespace koben

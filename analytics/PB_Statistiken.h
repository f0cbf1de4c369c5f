#pragma once
// The statistics of the herd: measures chosen from two lists, seven runs, each with a list or a page of its own.
#include <memory>

#include "analytics/Statistiklauf.h"
#include "output/Bericht.h"

namespace koben {

class PB_Statistiken final : public Bericht {
public:
    explicit PB_Statistiken(Koben& koben);

    Tabs sstab{*this, "sstab", {QStringLiteral("Sauen"), QStringLiteral("Eber")}};
    ControlArray<Frame> rahmen{
        *this,
        "rahmen",
        {"Zu berechnende Daten", "Bei Auswertung je Sau", "Bei Auswertung je Jahr", "Bei Auswertung je Wurf"}};
    ListBox li1{*this, "li1", true};
    ListBox li1x{*this, "li1x"};
    ListBox li2{*this, "li2", true};
    ListBox li2x{*this, "li2x"};
    ControlArray<Button> alletier{*this, "alletier", {"&Alle", "&Keine"}};
    ControlArray<CheckBox> kon{*this, "kon", {"Nur für folgenden Zeitraum"}};
    ControlArray<Label> bez{
        *this, "bez", {"Datum von:", "Datum bis:", "Von Jahr...:", "Bis Jahr...:", "Von Wurf...:", "Bis Wurf...:"}};
    ControlArray<TextBox> tdat{*this, "tdat", 2};
    ControlArray<Button> calender{*this, "calender", {"", ""}};
    Calendar calend{*this, "calend"};
    ControlArray<TextBox> t{*this, "t", 4};
    Label Label1{*this, "Label1",
                 "Hinweis: Bei der Auswertung nach Jahr werden nicht alle Datenfelder aufgelistet. Bei der Auswertung "
                 "nach Wurf werden lediglich die wurfbezogenen Daten statistisch ausgewertet."};
    /// By sow, by year, by litter, by boar, boars by year, page of the farm, overview of farrowings.
    ControlArray<Button> ok{*this,
                            "ok",
                            {"Je Sau", "Je Jahr", "Je Wurf", "Je Eber", "Je Jahr",
                             "Betriebsstatistik für den obigen Zeitraum (selektierte Sauen)",
                             "Ferkelungsübersicht für obige Würfe (selektierte Sauen)"}};
    ProgressBar meter{*this, "meter"};
    Grid gridli{*this, "gridli"};
    ListBox li{*this, "li"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};

private:
    void fillChoices() override;
    void dateChanged(TextBox& field) override;
    void leave() override;
    void ok_Click(int index);

    QStringList refusals(int index);
    void choose(int index);
    bool periodGiven();
    std::unique_ptr<Statistiklauf> statistic(int index);
    Kennwertlauf::Auftrag order(int index);
    bool compute(int index);
    int number(int index) const;

    std::vector<Statistikjahr> m_years;  // of a run by year
    std::unique_ptr<Statistiklauf> m_run;
};

}  // namespace koben

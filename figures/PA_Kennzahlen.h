#pragma once
// The figures of a period as a list, and the early warning below it.
#include "figures/Herleitung_Kennzahl.h"
#include "figures/Warnanzeige.h"
#include "output/Bericht.h"

namespace koben {

class PA_Kennzahlen final : public Bericht {
public:
    explicit PA_Kennzahlen(Koben& koben);

    ControlArray<Frame> rahmen{*this, "rahmen", {"Kennzahlen der Sauen", "Frühwarnung"}};
    ControlArray<Label> bez{
        *this, "bez", {"Datum von:", "Datum bis:", "Abzug je Woche:", "Schwelle:", "Wochen:", "Mindestens Wochen:"}};
    ControlArray<TextBox> tdat{*this, "tdat", 2};
    ControlArray<Button> calender{*this, "calender", {"", ""}};
    Calendar calend{*this, "calend"};
    Grid gridli{*this, "gridli"};
    Grid liwarnung{*this, "liwarnung"};
    /// Slack, threshold, weeks watched and least weeks of the base.
    ControlArray<TextBox> t{*this, "t", 4};
    Label Label1{
        *this, "Label1",
        "F2 auf einer Zelle zeigt, woraus sie entsteht. Die Warnung vergleicht jede Woche mit der Zeit davor."};
    /// What is handed on: the figures with unit, variant and period.
    Grid liste{*this, "liste"};
    Button ok{*this, "ok", "&Listen"};
    Button standard{*this, "standard", "Vor&gaben"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};

private:
    void Load() override;
    void dateChanged(TextBox& field) override;
    void settingChanged();
    void standard_Click();
    void ok_Click();

    QStringList findings();
    Zeitraum period() const;
    void showFigures();
    void showWarnings();
    std::optional<Explanation> explain(int row, int column) const;

    QString m_hint;  ///< what Label1 says where there are figures
    Warnvorgaben m_how;
    Kennzahlenstand m_stand;
    std::shared_ptr<const Sauenbuch> m_book;
    std::vector<Warnung> m_warnings;
    std::vector<Rueckblick> m_past;
};

}  // namespace koben

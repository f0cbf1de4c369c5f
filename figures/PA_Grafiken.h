#pragma once
// The farm's plots: one at a time, with its table, over a period.
#include "figures/Grafik.h"
#include "forms/DrawingBox.h"
#include "output/Bericht.h"

namespace koben {

class PA_Grafiken final : public Bericht {
public:
    explicit PA_Grafiken(Koben& koben);

    ControlArray<Label> bez{*this, "bez", {"Datum von:", "Datum bis:", "Ziel Belegungen je Woche:"}};
    ListBox li{*this, "li"};
    ControlArray<TextBox> tdat{*this, "tdat", 2};
    ControlArray<Button> calender{*this, "calender", {"", ""}};
    Calendar calend{*this, "calend"};
    TextBox ziel{*this, "ziel"};
    DrawingBox bild{*this, "bild"};
    Label satz{*this, "satz"};
    Grid gridli{*this, "gridli"};
    Button drucken{*this, "drucken", "&Drucken..."};
    ControlArray<Button> datei{*this, "datei", {"Als P&NG...", "Als S&VG...", "Als &PDF..."}};
    ControlArray<Button> kopie{*this, "kopie", {"&Bild kopieren", "&Tabelle kopieren"}};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button ok{*this, "ok", "&Listen"};
    Button beenden{*this, "beenden", "&Schließen"};

private:
    void Load() override;
    void dateChanged(TextBox&) override { show(); }
    void ziel_LostFocus();
    void ok_Click();
    void drucken_Click();
    void datei_Click(int kind);

    QStringList findings() const;
    Zeitraum period() const;
    const Grafik& plot() const;
    void show();
    void showNothing();
    void fillTable();
    void tell(int row, int column);
    Sketch onPaper(QSizeF size) const;
    Drawing document() const;
    bool write(int kind, const QString& path);
    int shownRow(int row) const;
    int tableRow(int shown) const;
    int firstColumn(int row) const;

    std::shared_ptr<const Grafikinhalt> m_content = std::make_shared<const Grafikinhalt>();
    Zeitraum m_shown;
};

}  // namespace koben

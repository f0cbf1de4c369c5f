#pragma once
// The herd register that keepers of pigs must show: the stock at both ends of a period, and every arrival and departure
// between them in the order of the days.
#include "output/Bericht.h"
#include "stock/Bestandsregister.h"

namespace koben {

class PB_Bestandsregister final : public Bericht {
public:
    explicit PB_Bestandsregister(Koben& koben);

    ControlArray<Label> bez{*this,
                            "bez",
                            {"Bestandsdaten listen ab dem Datum:", "Bestandsdaten listen bis zum Datum:",
                             "Betriebsinhaber / Unternehmen:", "Straße + Hausnr:", "PLZ + Wohnort:",
                             "Betriebssitz - falls nicht obige Anschrift:", "Registriernummer des Betriebs:"}};
    ControlArray<TextBox> tdat{*this, "tdat", 2};
    ControlArray<Button> calender{*this, "calender", {"", ""}};
    Calendar calend{*this, "calend"};
    /// Keeper, street, town, seat of the farm where it is another place, registration number.
    ControlArray<TextBox> t{*this, "t", 5};
    CheckBox kon{*this, "kon", "Ferkel (Zu- und Abgänge) berücksichtigen"};
    CheckBox konadd{*this, "konadd", "Die Bestände für jeden Tag addieren"};
    Label Label1{*this, "Label1"};
    Button ok{*this, "ok", "&Listen"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};
    Grid gridli{*this, "gridli"};  ///< the movements in order

private:
    void Load() override;
    void ok_Click();
    bool periodStands();
    void show(const std::vector<Bestandsbewegung>& movements);
};

}  // namespace koben

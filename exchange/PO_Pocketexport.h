#pragma once
// The export screen of the barn device: which animals and bookings go to it, and in which order.
#include "exchange/Geraeteexport.h"
#include "exchange/Geraeteordner.h"
#include "output/Bericht.h"

namespace koben {

class PO_Pocketexport final : public Bericht {
public:
    explicit PO_Pocketexport(Koben& koben);
    bool onlyToday() const override { return true; }

    Label Label1{*this, "Label1"};
    OptionGroup optisort{*this, "optisort", {"Saunummer, Datum", "Datum, Saunummer", "Stallnummer, Saunummer, Datum"}};
    Frame rahmen{*this, "rahmen", "Daten übertragen ab dem..."};
    TextBox tdat{*this, "tdat"};
    Button calender{*this, "calender", ""};
    Calendar calend{*this, "calend"};
    CheckBox konnursauen{*this, "konnursauen", "Nur Sauen exportieren"};
    Geraeteordner geraet{*this};
    ProgressBar meter{*this, "meter"};
    ControlArray<Button> ok{*this, "ok", {"Export Schritt 1", "Export Schritt 2"}};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};
    Button hausnetz{*this, "hausnetz", "Im Haus&netz anbieten..."};

private:
    void Load() override;
    /// As the controls say it; a text that is no day is wiped out.
    Exportauswahl choice();
    void writeFile();
    void offer();
    QString keepPage(const Exportauswahl& chosen, const QByteArray& exchangeFile);
    void copyToDevice();
};

}  // namespace koben

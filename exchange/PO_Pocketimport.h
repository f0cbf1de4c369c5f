#pragma once
// The import screen of the barn device: brings what was booked on it into the herd, whole or not at all.
#include "exchange/Geraeteordner.h"
#include "forms/Koben.h"

namespace koben {

class PO_Pocketimport final : public Form {
public:
    explicit PO_Pocketimport(Koben& koben);
    bool onlyToday() const override { return true; }

    Label Label1{*this, "Label1"};
    CheckBox koneindatum{*this, "koneindatum", "Je Maßnahme, Tag und Tier nur eine Buchung zulassen"};
    Geraeteordner geraet{*this};
    ControlArray<Button> ok{*this, "ok", {"Import Schritt 1", "Import Schritt 2"}};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button cmdschließen{*this, "cmdschließen", "&Schließen"};
    Button vorschau{*this, "vorschau", "&Vorschau ..."};  ///< what the file holds, to take or to leave

private:
    void Load() override;
    void copyFromDevice();
    void importFile();

    Database m_db;
};

}  // namespace koben

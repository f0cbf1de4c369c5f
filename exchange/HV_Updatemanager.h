#pragma once
#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

/// "Update-Manager": asks the update server for the newest version, shows what has changed since the own one, and saves
/// the setup where the user wants it. It starts nothing, and changes nothing of the program or its data.
class HV_Updatemanager final : public Form {
public:
    explicit HV_Updatemanager(Koben& koben);
    bool onlyToday() const override { return true; }

    ControlArray<Label> labelakt{*this, "labelakt", {"", ""}};  ///< the own version, the newest one
    TextBox Text2{*this, "Text2"};                              ///< what the own version lacks
    TextBox Text1{*this, "Text1"};                              ///< all changes
    Label hinweis{*this, "hinweis"};                            ///< what became of the check, or of the download
    Button cmdschliessen{*this, "cmdschliessen", "&Schließen"};

private:
    void Activate() override;
    void pruefen();
    void gescheitert(const QString& reason);
    void herunterladen();
};

}  // namespace koben

#pragma once
#include "forms/Form.h"
#include "forms/Koben.h"
#include "output/Listenzeilen.h"

namespace koben {

/// The list screen: shows the grid that a report left in "gridli.txt" and hands it on as text, spreadsheet or HTML
/// report, at the user's choice or at once as the settings say.
class PA_Zwischenliste final : public Form {
public:
    explicit PA_Zwischenliste(Koben& koben);

    Grid gridli{*this, "gridli"};
    Button comtext{*this, "comtext", "&Text-Auswertung"};
    Button comexcel{*this, "comexcel", "&Excel-Auswertung"};
    ControlArray<Button> roexplorer{*this, "roexplorer", {"Stan&dard-Explorer", "&Internet-Explorer"}};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button cmdschließen{*this, "cmdschließen", "&Schließen"};

    /// The grid's context menu.
    MenuEntry popupliste{*this, "popupliste", "Liste"};
    ControlArray<MenuEntry> popzeile{*this,
                                     "popzeile",
                                     {"Übergabe an &Texteditor", "Übergabe an &Excel", "Übergabe an &Standard-Explorer",
                                      "Übergabe an &Internet-Explorer", "-", "&Schließen"}};

private:
    void Load() override;
    void comtext_Click();
    void comexcel_Click();
    void roexplorer_Click(int index);

    void connectHandlers();
    void erkenneDatumsspalten();
    void passeSpaltenbreitenAn();
    bool listeLeer();
    void meldeSchreibfehler(const QString& path);
    bool arbeiten(const QString& what, const std::function<void(Progress&)>& work);
    QString kopfDatum() const;

    const std::array<qint16, 101>& m_zahlen;
};

}  // namespace koben

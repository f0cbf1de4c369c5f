#pragma once
// Prints designed sow cards, an A4 page each or two A5 cards a page, with the facts and in the order that the user
// chooses. Reads only.
#include "plans/Kartenblatt.h"
#include "plans/Sauenkartendruck.h"

namespace koben {

class PB_Sauenkarte_gezeichnet final : public Sauenkartendruck {
public:
    explicit PB_Sauenkarte_gezeichnet(Koben& koben);

    OptionGroup optigröße{*this, "optigröße", {"A4, eine je Seite", "A5, zwei je Seite"}};
    Label Label3{*this, "Label3", "Nicht auf der Karte"};
    ListBox livorrat{*this, "livorrat"};
    Label Label4{*this, "Label4", "Auf der Karte, von oben nach unten"};
    ListBox lifelder{*this, "lifelder"};
    Button aufnehmen{*this, "aufnehmen", "Auf die &Karte"};
    Button entfernen{*this, "entfernen", "&Von der Karte"};
    ControlArray<Button> verschieben{*this, "verschieben", {"Nach &oben", "Nach &unten"}};

private:
    bool draw(PrintJob& job, const std::vector<int>& rows, const PrintJob::Go& go) const override;
    void restoreFields();
    void showFields(int row);
    void aufnehmen_Click();
    void entfernen_Click();
    void verschieben_Click(int index);

    QStringList m_fields;  ///< ids of lifelder
};

}  // namespace koben

#pragma once
// Sets the stored selection of animals by rule.
#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

class PB_Selektieren final : public Form {
public:
    explicit PB_Selektieren(Koben& koben);
    bool onlyToday() const override { return true; }

    Frame Frame1{*this, "Frame1", "Selektions-Auswahl"};
    ControlArray<Button> entselekt{
        *this,
        "entselekt",
        {"Alle Schweine entselektieren", "Alle Schweine selektieren", "Schweine selektieren der Art --->",
         "Schweine selektieren der Gruppe --->", "Schweine selektieren der Rasse --->",
         "Schweine selektieren ab x Belegungen--->", "Schweine selektieren ab x Ferkelungen --->",
         "Mechanische Ammen selektieren", "Sauen selektieren mit Belegung und ohne Ferkelung",
         "Sauen selektieren mit Ferkelung und ohne Belegung", "Schweine selektieren mit Stallnr --->"}};
    ControlArray<ComboBox> kom{*this, "kom", 6};
    CheckBox kon{*this, "kon", "Alte Selektion vor neuer Selektion löschen"};
    Label hinweis{*this, "hinweis",
                  "Hinweis: Alle Selektionen, außer \"Alle Schweine entselektieren\", wirken sich nur auf Tiere aus, "
                  "die sich im Bestand befinden."};
    Button abbv{*this, "abbv", "&Schließen"};

    /// The input that belongs to a rule's button; nullptr where the rule needs none.
    ComboBox* inputOf(int rule);

private:
    void Load() override;
    QStringList valuesOf(const char* field) const;
    QString condition(int rule) const;
    QString equals(const char* field, int input) const;
    QString atLeast(const char* field, int input) const;
    void entselekt_Click(int rule);
    void abbv_Click();

    Database m_db;
};

}  // namespace koben

#pragma once
// Adds an animal, or changes the one selected in the herd list and walks from there through the list.
#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

class PB_Neues_Schwein final : public Form {
public:
    explicit PB_Neues_Schwein(Koben& koben);

    /// What stands before the inputs; 20 belongs to the boar's kom(4), 21 to 30 to the facts.
    ControlArray<Label> bez{*this,
                            "Label",
                            {"Art:",
                             "Sau-Nummer:",
                             "Gruppe:",
                             "Stallnr / Box:",
                             "Box-Zuordnung:",
                             "Ohrmarke:",
                             "Tätowierung-Nr:",
                             "Geburtsdatum:",
                             "Rasse:",
                             "Bemerkungen:",
                             "Zugangsdatum:",
                             "Zugangsgewicht (kg):",
                             "Einkaufspreis:",
                             "Zugangsgrund:",
                             "Lieferant:",
                             "Abgangsdatum:",
                             "Abgangsgewicht (kg):",
                             "Verkaufspreis:",
                             "Abgangsgrund:",
                             "Abnehmer:",
                             "Besamungsart:",
                             "Anzahl Belegungen:",
                             "Anzahl Ferkelungen:",
                             "Anzahl Ferkel gesamt:",
                             "Anzahl Ferkel lebend:",
                             "Letzte Belegung:",
                             "Letzte Ferkelung:",
                             "Nächste Belegung:",
                             "Nächste Ferkelung:",
                             "Letzte Trächtigkeit:",
                             "Letzte Absetzung:"}};
    ControlArray<ComboBox> kom{*this, "kom", 9};
    ControlArray<TextBox> t{*this, "t", 4};
    ControlArray<TextBox> tdat{*this, "tdat", 4};
    ControlArray<Button> calender{*this, "calender", {"Kalender", "Kalender", "Kalender", "Kalender"}};
    Calendar calend{*this, "calend"};
    ControlArray<TextBox> tz{*this, "tz", 4};
    CheckBox konstatus{*this, "konstatus", "Status ignorieren (nur aktivieren, wenn Sau nicht mehr belegt wird)"};
    CheckBox konamme{*this, "konamme", "Mechanische Amme"};
    ControlArray<Frame> rahmen{*this, "Frame", {"Tier-Informationen", "Zugang", "Abgang"}};
    ControlArray<Label> bezinfo{*this, "bezinfo", {"", "", "", "", "", "", "", "", "", ""}};
    Button ok{*this, "ok", "&OK"};
    ControlArray<Button> oknächster{*this, "oknächster", {"OK + &Nächster", "OK + &Vorheriger"}};
    Button standard{*this, "standard", "&Standardwerte sichern"};
    Button comhilfe{*this, "comhilfe", "&Hilfe"};
    Button cmdabbrechen{*this, "cmdabbrechen", "&Abbrechen"};

private:
    /// Failed rules or warnings: one line each, and the field to go back to.
    struct Findings {
        QStringList lines;
        Control* first = nullptr;
        void add(Control& field, const char* line);
    };

    void Load() override;
    void connectFields();
    void connectButtons();

    // showing
    void fillLists();
    void show();
    void showNew();
    void showStored();
    void showMask();
    QString followingNumber() const;
    void kom0_Click();
    qint64 currentId() const;

    // saving
    Findings check();
    Findings doubtful();
    bool taken(const char* field, const QString& text) const;
    bool accepted();
    bool save();
    qint64 store(const QString& number);
    void write(Recordset& row) const;
    void enterKeywords();
    void renumberMother(const QString& before, const QString& number);

    void calender_Click(int index);
    void ok_Click();
    void oknächster_Click(int index);
    void standard_Click();
    void cmdabbrechen_Click();
    std::vector<TextBox*> maskFields();

    Database m_db;
    bool m_adding = true;
    int m_calendarFor = 0;
};

}  // namespace koben

#pragma once
// Adds an animal, or changes the one selected in the herd list and walks from there through the list.
#include "forms/Eingabe.h"

namespace koben {

class PB_Neues_Schwein final : public Eingabe {
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
    Button comlebenslauf{*this, "comlebenslauf", "&Lebenslauf"};  ///< of the animal that is shown; not of a new one
    Button comhilfe{*this, "comhilfe", "&Hilfe"};
    Button cmdabbrechen{*this, "cmdabbrechen", "&Abbrechen"};

private:
    void Load() override;
    void bindFields();

    // showing
    void showAnimal();
    void showNew();
    void showChanged();
    void showMask();
    QString followingNumber() const;
    void kom0_Click();
    qint64 currentId() const;
    QString stored(const QString& column) const override;
    void calendarOpens(const TextBox& field) override;

    // saving: PB_Neues_Schwein_Speichern.cpp
    QString table() const override { return QStringLiteral("Sauen"); }
    void check(Findings& found) override;
    bool agreed() override;
    bool taken(const char* field, const TextBox& box) const;
    QString actionName() const override;
    void write(const Action& action) override;
    void refresh() override;
    QStringList hints() const override;
    void goOn(int index) override;

    void standard_Click();
    void comlebenslauf_Click();
    std::vector<TextBox*> maskFields();

    std::optional<Recordset> m_row;  // the animal that is shown, while it is shown
    QString m_warning;               // of the waiting time, from the last save
};

}  // namespace koben

#pragma once
// Entry of one group of animals: kind, sex, ages, least number of farrowings, and the value of one animal.
#include "forms/Stammdaten.h"

namespace koben {

class PV_Bestandsdaten_Eingabe final : public Stammdateneingabe {
public:
    explicit PV_Bestandsdaten_Eingabe(Koben& koben);

    ControlArray<Label> bez{
        *this,
        "bez",
        {"Alter von:", "Alter bis:", "Zeit-Einheit:", "Geschlecht:", "Geldwert:", "Anzahl Mindestferkelungen:",
         "Mindestens einmal belegt:", "Tierart (Sau, Eber, Mast...):"}};
    ControlArray<TextBox> tz{*this, "tz", 4};             ///< youngest, oldest, value, least farrowings
    ControlArray<SpinButton> UpDown{*this, "UpDown", 3};  ///< of ages and farrowings
    ControlArray<ComboBox> kom{*this, "kom", 4};          ///< unit of the ages, sex, served, kind

private:
    void prepare() override;
    void showDefaults() override;
    void showRow() override;
    void check(Findings& findings) override;
    void write(Recordset& row) override;
};

}  // namespace koben

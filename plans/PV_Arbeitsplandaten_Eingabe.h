#pragma once
// Entry of one kind of work: its day window after a reference date, and the two comparisons of an animal's dates that
// switch it on and off.
#include "forms/Stammdaten.h"

namespace koben {

class PV_Arbeitsplandaten_Eingabe final : public Stammdateneingabe {
public:
    explicit PV_Arbeitsplandaten_Eingabe(Koben& koben);

    ControlArray<Label> bez{
        *this,
        "bez",
        {"Tage von (bezogen auf Bezugstermin):", "Tage bis (bezogen auf Bezugstermin):", "Bezugstermin:",
         "...der Termin --", "aktueller ist als der Termin --", "...der Termin --", "aktueller ist als der Termin --",
         "Keine Angabe bedeutet, der Termin wird immer berücksichtigt",
         "Keine Angabe bedeutet, der Termin wird immer gelistet (wenn er im Zeitraum liegt)"}};
    ControlArray<Frame> rahmen{
        *this,
        "rahmen",
        {"Der Termin wird für die Arbeitsplanberechnung nur berücksichtigt, wenn...",
         "Der Termin gilt als erledigt (und wird somit im Arbeitsplan nicht mehr gelistet), wenn..."}};
    ControlArray<TextBox> tz{*this, "tz", 2};  ///< days from, days to
    ControlArray<SpinButton> UpDown{*this, "UpDown", 2};
    /// Reference date; active if (0) is later than (1); done if (0) is later than (1).
    ControlArray<ComboBox> kom{*this, "kom", 5};

private:
    void check(Findings& found) override;
    bool halfFilled(int first) const;
};

}  // namespace koben

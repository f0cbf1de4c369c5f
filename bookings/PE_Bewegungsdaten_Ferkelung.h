#pragma once
// Entry of farrowings: three counts that keep each other in step, and the roads on to weaning and cross-fostering.
#include "bookings/Buchungseingabe.h"

namespace koben {

class PE_Bewegungsdaten_Ferkelung final : public Buchungseingabe {
public:
    explicit PE_Bewegungsdaten_Ferkelung(Koben& koben);

    ControlArray<TextBox> tz{*this, "tz", 5};
    ControlArray<SpinButton> UpDown{*this, "UpDown", 3};
    ControlArray<ComboBox> kom{*this, "kom", 2};
    Button ok_Verschiebung{*this, "ok_Verschiebung", "Gleich Verschiebungen eintragen"};
    Button roCommand1{*this, "roCommand1", "Gleich Absetzungen eintragen"};

private:
    void Activate() override;
    void check(Findings& found) override;
    QString heading() const override;
    void tz_LostFocus(int index);
    void weiter(const char* screen);
};

}  // namespace koben

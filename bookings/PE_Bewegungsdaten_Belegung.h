#pragma once
// Entry of services.
#include "bookings/Buchungseingabe.h"

namespace koben {

class PE_Bewegungsdaten_Belegung final : public Buchungseingabe {
public:
    explicit PE_Bewegungsdaten_Belegung(Koben& koben);

    ControlArray<ComboBox> kom{*this, "kom", 5};
    ControlArray<TextBox> tz{*this, "tz", 2};
    ControlArray<SpinButton> UpDown{*this, "UpDown", 1};

private:
    void showBooking() override;
};

}  // namespace koben

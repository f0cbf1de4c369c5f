#pragma once
// Entry of pregnancy checks.
#include "bookings/Buchungseingabe.h"

namespace koben {

class PE_Bewegungsdaten_Trächtigkeit final : public Buchungseingabe {
public:
    explicit PE_Bewegungsdaten_Trächtigkeit(Koben& koben);

    ControlArray<ComboBox> kom{*this, "kom", 3};
    TextBox tz{*this, "tz", 0};

private:
    void showBooking() override;
};

}  // namespace koben

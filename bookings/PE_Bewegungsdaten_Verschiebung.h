#pragma once
// Entry of cross-fosterings: piglets moved from one sow to another, a row at each with opposite signs.
#include "bookings/Buchungseingabe.h"

namespace koben {

class PE_Bewegungsdaten_Verschiebung final : public Buchungseingabe {
public:
    explicit PE_Bewegungsdaten_Verschiebung(Koben& koben);

    TextBox tz{*this, "tz", 0};
    SpinButton UpDown{*this, "UpDown", 0};
    ControlArray<ComboBox> kom{*this, "kom", 3};

private:
    void Activate() override;
    void check(Findings& found) override;
    std::optional<std::vector<int>> animals() override;
    void finish(const Action& action) override;
    QStringList hints() const override;
    QString partner() const { return kom[0].text(); }

    bool m_partnerFound = false;  // by the last save
};

}  // namespace koben

#pragma once
// Entry of treatments: proposals from the list of medicines, dose and cost in step, and the waiting time in step as
// days and as a date. The date is what later warns of a sale.
#include "bookings/Buchungseingabe.h"

namespace koben {

class PE_Bewegungsdaten_Behandlung final : public Buchungseingabe {
public:
    explicit PE_Bewegungsdaten_Behandlung(Koben& koben);

    ControlArray<ComboBox> kom{*this, "kom", 7};
    ControlArray<TextBox> tz{*this, "tz", 3};
    SpinButton UpDown{*this, "UpDown", 1};
    TextBox tdat1{*this, "tdat", 1};  ///< last day of the waiting time
    Button calender1{*this, "calender", "Kalender", 1};
    TextBox t{*this, "t"};

private:
    void Load() override;
    void showBooking() override;
    void check(Findings& found) override;
    QString heading() const override;
    void prepare(const std::vector<int>& rows) override;
    void finish(const Action& action) override;

    void tdat1_LostFocus();
    void tz0_LostFocus();
    void tz1_LostFocus();
    void kom0_LostFocus();
    void kom6_LostFocus();
    /// Runs `rule` on leaving a box whose text is another one than on entering it, and not empty.
    static void onNewText(ComboBox& box, const std::function<void()>& rule);

    Table medicines(const char* field, const QString& text) const;
    void propose(const Table& medicine);
    bool nothingToChange() const;

    QString Menge_alt = QStringLiteral("0");
    bool m_neuesMedikament = false;  ///< the save adds the medicine to the list too
};

}  // namespace koben

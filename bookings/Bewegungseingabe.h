#pragma once
// The entry of a booking, at an animal or of the farm: its date, which a series of entries keeps, and its buttons.
#include "core/Buchungen.h"
#include "forms/Eingabe.h"

namespace koben {

class Bewegungseingabe : public Eingabe {
public:
    TextBox tdat{*this, "tdat", 0};
    Button calender{*this, "calender", "Kalender", 0};
    Calendar calend{*this, "calend"};
    ControlArray<Button> ok{*this, "ok", {"&OK", "OK + &Vorheriger", "OK + &Nächster"}};
    Button abbrechen{*this, "abbrechen", "&Abbrechen"};

protected:
    Bewegungseingabe(Koben& koben, const QString& name, const QString& caption, Buchungsart art);

    /// A date of bookings: numbers alone, which shut the calendar.
    void bookingDate(const QString& label, TextBox& control, Button& button, const QString& column);

    /// The list of bookings behind, whose current row is changed in "Ändern".
    virtual Grid& li() const = 0;
    QString table() const override { return QString::fromUtf8(angaben(kind).table); }
    QString stored(const QString& column) const override;
    void Activate() override;
    void move(int index) override;
    virtual void preset() { showPresets(); }           ///< "Neu": all inputs but the date
    virtual void showBooking() { showStored(); }       ///< "Ändern": all inputs from the current booking
    bool dateEntered() const;                          ///< the date field holds a date
    double storedNumber(const QString& column) const;  ///< of the booking that is changed; 0 in "Neu"

    const Buchungsart kind;
};

}  // namespace koben

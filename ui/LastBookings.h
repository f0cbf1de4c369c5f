#pragma once
// The bookings of this kind that the animal has already, beside the inputs of the next one; what would be booked twice
// is seen before it is made, and so is a booking that no animal is marked for.
#include "ui/Layout.h"

namespace koben {
class Buchungseingabe;
}

namespace koben::ui {

/// Only read; empty space where no booking frame stands behind the form.
Piece lastBookings(Buchungseingabe& form);

/// Says where the same day is booked already or no animal is marked; else it takes no room.
Piece bookingNotice(Buchungseingabe& form);

}  // namespace koben::ui

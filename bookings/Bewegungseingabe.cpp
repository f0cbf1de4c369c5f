#include "bookings/Bewegungseingabe.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

Bewegungseingabe::Bewegungseingabe(Koben& context, const QString& name, const QString& caption, Buchungsart art)
    : Eingabe(context, name, caption), kind(art) {
    tdat.setHint(QStringLiteral("Datum"));
    shareCalendar(calend);
    bookingDate(QStringLiteral("Datum:"), tdat, calender, QString::fromUtf8(angaben(kind).date));
    connectButtons(ok, abbrechen);
}

void Bewegungseingabe::bookingDate(const QString& label, TextBox& control, Button& button, const QString& column) {
    control.onKeyPress = [this](int key) {
        calend.setVisible(false);
        return Nur_Zahlzeichen(key);
    };
    date(label, control, button, column);
}

QString Bewegungseingabe::stored(const QString& column) const { return li().cell(li().row(), column); }

double Bewegungseingabe::storedNumber(const QString& column) const {
    return adding() ? 0 : Wert(li().cell(li().row(), column));
}

bool Bewegungseingabe::dateEntered() const { return Ist_Datum(tdat.text()); }

void Bewegungseingabe::Activate() {
    ok[1].setVisible(!adding());
    if (adding()) {
        const QString day = tdat.text().isEmpty() ? koben.Heute : tdat.text();
        preset();
        tdat.setText(day);
    } else {
        showBooking();
        for (auto& button : ok) button->setEnabled(li().row() > 0);
    }
    tdat.setFocus();
}

/// Walks the list, wrapping at the ends.
void Bewegungseingabe::move(int index) {
    if (index == 2) li().setRow(li().row() < li().rowCount() ? li().row() + 1 : 1);
    if (index == 1) li().setRow(li().row() > 1 ? li().row() - 1 : li().rowCount());
}

}  // namespace koben

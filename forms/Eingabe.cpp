#include "forms/Eingabe.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

void Datumsfeld_verbinden(Koben& koben, TextBox& field, Button& button, Calendar& calendar) {
    field.onLostFocus = [&] { field.setText(Datum_ergaenzen(field.text().trimmed(), koben.Heute)); };
    button.icon = QStringLiteral("kalender");
    button.onClick = [&] { calendar.setVisible(!calendar.visible()); };
    calendar.onPick = [&](QDate date) {
        field.setText(Datum_als_Anzeige(date));
        calendar.setVisible(false);
    };
}

bool Speichern_oder_melden(Koben& koben, const QString& failed, const std::function<void()>& save) {
    try {
        save();
        return true;
    } catch (const DatabaseError& error) {
        if (error.kind != DatabaseError::Kind::Type && error.kind != DatabaseError::Kind::TooLong) throw;
        koben.message(failed +
                      QStringLiteral(", weil ein Wert nicht in sein Feld passt. Es wurde nichts gespeichert.") + Crlf +
                      Crlf + error.message());
        return false;
    }
}

}  // namespace koben

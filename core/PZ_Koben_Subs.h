#pragma once
// The small conversions that every screen uses: short dates, numbers with a decimal comma, values made safe for SQL.
// None of them reports anything; bad input gives "" or 0.
#include <QDate>
#include <QString>
#include <optional>

#include "store/Value.h"

namespace koben {

/// Completes a half-typed date to dd.mm.yyyy with month, year and century of `heute`; "" where no date comes out.
QString Datum_ergaenzen(const QString& text, const QString& heute);
/// Completes a year; "" for three digits.
QString Jahr_ergaenzen(const QString& text, const QString& heute);
/// Leading number of a text with a decimal comma, rounded to single precision. The first comma becomes a point in
/// `text` too.
float Zahl_aus_Text(QString& text);
float Zahl_aus_Text(QString&& text);
/// The same for amounts: exact, half to even at the fourth decimal. Beyond the type it is the type's end.
Money Betrag_aus_Text(QString& text);
Money Betrag_aus_Text(QString&& text);
/// A text that is an amount as a whole, with point or comma; nothing where it is none or beyond the type.
std::optional<Money> Betrag_lesen(const QString& text);

/// What becomes of a typed number. The conversions above take any text; an entry asks first.
enum class Reading { Fits, TooLarge, Unreadable };
/// An amount: beyond 922337203685477,5807 it does not fit.
Reading readAmount(const QString& text);
/// A weight or dose in single precision: beyond 38 digits before the comma it does not fit.
Reading readWeight(const QString& text);
/// A number with points for the thousands ("1.234,56"), or with several commas: the conversions above would take it
/// for another number.
bool severalSeparators(const QString& text);

/// Each control character as one blank, so that no text can pass for structure; line breaks may stay.
QString withoutControls(const QString& text, bool keepLineBreaks = false);
/// The plain numeric value of a text (leading number, decimal point), as counts are read.
double Wert(const QString& text);
/// A number for a text box: fixed decimals, decimal comma. `wert` itself turns from "" to "0", its point to a comma.
QString Zahl_formatieren(QString& wert, int decimals);
QString Zahl_formatieren(QString&& wert, int decimals);
/// The amount with two decimals and a decimal point, cut and filled with blanks on the right to exactly `width`.
QString Betrag_formatieren(int width, Money amount);
QString Betrag_als_Punkttext(Money amount);
/// Any field value as text, trimmed, an apostrophe as backtick, Null as "".
QString Hochkomma_ersetzen(const Value& value);
QString Hochkomma_ersetzen(const QString& text);
/// Sort key yyyymmdd of dd.mm.yyyy; "" for "". A text of 8 characters is first completed, in the caller's variable too.
QString Datum_als_Text(QString& date);
QString Datum_als_Text(QString&& date);
/// #mm/dd/yyyy#; the date text is completed in the caller's variable too.
QString Sql_Datum(QString& date);
QString Sql_Datum(QString&& date);
/// dd.mm.yy, or eight blanks.
QString Datum_kurz(const QString& date);
QString Text_links(const QString& text, int width);
QString Text_rechts(const QString& text, int width);
/// Key filters: the code, or 0 to swallow the key.
int Nur_Ziffern(int key);
int Nur_Zahlzeichen(int key);

/// The platform's date test under German settings: d.m.yy or d.m.yyyy, impossible days refused.
bool Ist_Datum(const QString& text);
/// The date of a text that Ist_Datum accepts; invalid otherwise.
QDate Datum_aus_Text(const QString& text);
QString Datum_als_Anzeige(QDate date);  ///< dd.mm.yyyy, "" for an invalid one
bool Ordner_existiert(const QString& path);

}  // namespace koben

#pragma once
// The quick entry: a line such as "123 f 14/1 gestern" read as a booking, and the German sentence that says what it
// would book. Pure: it knows the animals that it is given, and writes nothing.
#include <QDate>
#include <optional>
#include <utility>
#include <vector>

#include "core/Buchungen.h"
#include "core/Schnelltier.h"

namespace koben {

struct Schnellwort;

/// A field of a kind's entry screen, as a line can fill it. The fields of a kind stand in the order of the screen.
struct Schnellfeld {
    enum Kind { Count, Number, Text, Choice, Day };
    enum Flag {
        Needed = 1,   ///< the booking makes no sense without it
        Digits = 2,   ///< a text that may be a number, as that of a boar
        Aside = 4,    ///< a whole number without a comma is not for it
        Derived = 8,  ///< the screen reckons it; a line gives it by name
        Negative = 16
    };
    const char* control;  ///< its address in the screen: "tz(0)"
    const char* name;     ///< in the sentence, and before "=" in a line
    Kind kind;
    int flags = 0;
    int width = 20;            ///< what a text is cut to
    const char* choices = "";  ///< separated by blanks
    const char* preset = "";   ///< what the screen books where nothing is given; "" where that need not be said
    const char* also = "";     ///< other words that name it, before its value: "mit Hektor"
    const char* units = "";    ///< what may stand behind its number: "7,5 kg"
};

/// How a line calls a kind of booking.
struct Schnellart {
    Buchungsart kind;
    const char* letter;
    const char* words;  ///< the first three letters do where no other kind begins so
    const char* example;
    std::vector<Schnellfeld> fields;
    const char* implied = "";  ///< words that call it and say more: "leer=trächtig=n"
};

const std::vector<Schnellart>& Schnellarten();
const Schnellart& schnellart(Buchungsart kind);
/// What "?" shows, in lines.
QString Schnellgrammatik();

/// A line as it was understood.
struct Schnellzeile {
    bool empty = false;    ///< nothing was typed
    bool grammar = false;  ///< "?"
    std::vector<Schnelltier> animals;
    std::optional<Buchungsart> kind;
    QDate day;
    std::vector<std::pair<const Schnellfeld*, QString>> values;  ///< as they are typed into the screen, in its order
    QStringList problems;                                        ///< German sentences; none where it can be booked
    QString note;  ///< what is odd about it and can be booked all the same

    bool ready() const { return !empty && !grammar && problems.isEmpty(); }
    /// What would be booked, or what is missing or wrong; the grammar for "?".
    QString sentence() const;

private:
    QString understood() const;
    QString named() const;
};

/// `heute` as dd.mm.yyyy. Each word goes to the next field, in the order of the screen, that can hold it:
/// heute/gestern/Montag and what has a point and is a day are the day; "am" says so of the number behind it; a bare
/// number that no field takes is a day of the month as the date fields have it. FELD=WERT names the field, and so does
/// its name before the value, or before the day at the end of the line all names behind theirs; "-" passes one, quotes
/// hold blanks together. What could be two things is neither: the sentence says how to write either.
/// `day` is that of a line without one, today where it is invalid.
Schnellzeile Schnellzeile_lesen(const QString& line, const std::vector<Schnelltier>& herd, const QString& heute,
                                QDate day = {});
/// The day of a line that says nothing else ("gestern", "am 14.7."), as the head of a list; invalid for others.
QDate Schnelltag_lesen(const QString& line, const QString& heute);

/// A part of Schnellzeile_lesen: puts the words behind animal and kind into the fields of the line's kind and into its
/// day. What does not fit, is missing or could be two things is told in the line's problems.
void Schnellwerte(Schnellzeile& line, std::vector<Schnellwort> words, const QString& heute, QDate day);

}  // namespace koben

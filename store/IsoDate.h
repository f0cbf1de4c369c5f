#pragma once
// Days and times as texts: the ISO form of the file, the German form of the user, the literals of the dialect.
#include <QStringView>
#include <optional>

#include "store/Scalars.h"

namespace koben {

/// Julian day of a Gregorian date; the date must be valid.
qint32 julianDay(int year, int month, int day);
/// Splits a Julian day.
void splitDay(qint32 julianDay, int& year, int& month, int& day);
bool validDate(int year, int month, int day);
/// Julian day from month and day numbers that may lie outside their range (month 13, day 0); empty outside 100-9999.
std::optional<qint32> normalizedDay(qint64 year, qint64 month, qint64 day);
/// Two-digit years: 00-29 are 20xx, 30-99 are 19xx.
int fullYear(int year);

/// "yyyy-mm-dd", with " hh:mm:ss" where there is a time. Empty for anything else.
std::optional<DateTime> parseIso(const char* text, int length);
/// Writes the ISO form into at least 20 bytes, ended by 0; gives its length.
int formatIso(DateTime value, char* out);
/// What a person or program may write as text: d.m.yyyy, d.m.yy or ISO, with or without a time.
std::optional<DateTime> parseDateText(QStringView text);
/// Between the # of a date literal: m/d/yyyy or yyyy-mm-dd, with or without a time.
std::optional<DateTime> parseDateLiteral(QStringView text);

/// Days since 30.12.1899, the time as fraction.
double serialOf(DateTime value);
/// Empty outside the years 100 to 9999.
std::optional<DateTime> dateOfSerial(double serial);

}  // namespace koben

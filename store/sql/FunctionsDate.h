#pragma once
// The date functions of the dialect.
#include <span>

#include "store/Value.h"

namespace koben::sql {

Value dateDiff(std::span<const Value> a);    // interval, date, date
Value dateAdd(std::span<const Value> a);     // interval, number, date
Value datePart(std::span<const Value> a);    // interval, date
Value dateSerial(std::span<const Value> a);  // year, month, day
Value weekdayOf(std::span<const Value> a);   // date [, first day]
Value yearOf(std::span<const Value> a);
Value monthOf(std::span<const Value> a);
Value dayOf(std::span<const Value> a);
Value hourOf(std::span<const Value> a);
Value minuteOf(std::span<const Value> a);
Value secondOf(std::span<const Value> a);
/// Format(value, pattern) for dates: d dd ddd m mm mmm yy yyyy h hh n nn s ss, other characters as they are.
QString formatDate(DateTime date, const QString& pattern);

}  // namespace koben::sql

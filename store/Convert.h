#pragma once
// Values from one type to another, as an assignment to a field of that type converts them.
#include "store/DatabaseError.h"
#include "store/Value.h"

namespace koben {

/// Thrown when a value has no place in the type; the caller adds statement and place.
struct ConversionError {
    DatabaseError::Kind kind;
    QString what;  ///< German, a sentence without its end
};

/// The type's German name for messages.
QString typeText(Type type);
/// Converts exactly or refuses (ConversionError): '12' to a number, 12 to a text, 'dd.mm.yyyy' or ISO to a date.
/// Fractions are rounded half to even on their way to whole numbers and money. Null stays Null.
Value convert(const Value& value, Type to);
/// convert(), and the text must not be longer than `size` (0: any). `name` is the field's, for the message.
Value assign(const Value& value, Type to, int size, const QString& name);

}  // namespace koben

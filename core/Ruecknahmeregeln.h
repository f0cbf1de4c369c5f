#pragma once
// What the fields of the herd's tables mean when an action is taken back.
#include "store/Journal.h"

namespace koben::Regeln {

inline const QString Tiere = QStringLiteral("Sauen");
inline const QString Tier = QStringLiteral("Kennung");  ///< of a booking, names the animal
inline const QString Nummer = QStringLiteral("Nummer");
inline const QString Wuerfe = QStringLiteral("Ferkelung");

Journal::Role role(const QString& table, const QString& field);
/// The field of which no two rows may have the same text, "" for none. Such a table has a counter.
QString uniqueField(const QString& table);
/// Fields of bookings that name a sow or a boar by her number.
const QStringList& numberFields();
/// Whether counters, dates or the status of animals hang on this change of a row.
bool changesCycle(const RowChange& row);

}  // namespace koben::Regeln

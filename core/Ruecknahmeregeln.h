#pragma once
// What the fields of the herd's tables mean when an action is taken back.
#include "store/Journal.h"

namespace koben::Regeln {

inline const QString Tiere = QStringLiteral("Sauen");
inline const QString Tier = QStringLiteral("Kennung");  ///< of a booking, names the animal
inline const QString Tag = QStringLiteral("Datum");     ///< of a booking
inline const QString Nummer = QStringLiteral("Nummer");
inline const QString Selektiert = QStringLiteral("Selektiert");
inline const QString Wuerfe = QStringLiteral("Ferkelung");
inline const QString Absetzungen = QStringLiteral("Absetzung");
inline const QString Verluste = QStringLiteral("Verluste");
inline const QString Verschiebungen = QStringLiteral("Verschiebung");

/// The Julian day of a date as the journal keeps it; 0 for none.
qint32 dayOf(const Value& value);
Journal::Role role(const QString& table, const QString& field);
/// The lists of words that feed the boxes of choice: tables of one text, without a counter.
const QStringList& keywordTables();
bool isKeywords(const QString& table);
/// Fields of bookings that name a sow or a boar by her number.
const QStringList& numberFields();
/// Whether counters, dates or the status of animals hang on this change of a row.
bool changesCycle(const RowChange& row);
/// Whether an animal comes, goes, or gets other fields than those that are derived.
bool changesList(const RowChange& animal);

}  // namespace koben::Regeln

#pragma once
// The database routines that several screens share: creating and upgrading the file, keywords, litter numbers, the
// derived data of the cycle.
#include <QString>
#include <functional>

#include "core/Variablen.h"

namespace koben {

/// Makes the database file with all tables, indexes and seed rows, whole or not at all.
void Datenbank_anlegen(Workspace& workspace, const QString& path);
/// Adds the columns that an older file lacks.
void Spalten_nachruesten(const Database& db);

/// Enters a keyword unless it is there (case does not count). True when it was added.
bool Stichwort_eintragen(const Database& db, const QString& value, const QString& table);

/// Numbers the litters of an animal anew, over her life and within the calendar year.
void Wurfnummern_berechnen(const Database& db, qint64 kennung);

/// Derives counters, latest and next dates of every animal from the bookings. One transaction. The result is that of a
/// walk over all animals; the work grows with what has changed since the last one. `go` hears now and then how far it
/// is, in percent, and answers false to give it up: then nothing is written, and the answer here is false too.
bool Werte_berechnen(const Database& db, const Variablen& v, const std::function<bool(int percent)>& go = {});
/// Within the transaction of a booking: its derivation follows when the booking frame closes.
void Werte_vormerken(const Database& db);
/// Derives what a killed program had no time for; nothing where the booking frame was closed in order.
void Werte_nachholen(const Database& db, const Variablen& v);
/// Derives the cycle status of every animal, as Werte_berechnen the values. One transaction.
bool statussetzen(const Database& db, const std::function<bool(int percent)>& go = {});

/// The hint about cycle dates outside their tolerance, "" where there is none.
/// modus: "Belegung", "Trächtigkeit", "Ferkelung" or "Absetzung"; dates are dd.mm.yyyy or "".
QString Datumsabstaende_pruefen(const Variablen& v, const QString& modus, const QString& nummer,
                                const QString& belegung, const QString& traechtigkeit, const QString& ferkelung,
                                const QString& absetzung, const QString& geburt);

}  // namespace koben

#pragma once
// Bookings as a service: the eight kinds with what each has, and the one way in which bookings are made, changed,
// copied and deleted, together with what follows from it. Every function works within the action that it is given and
// on that action's database; nothing of it stays where the action is not committed.
#include "core/RowWriter.h"
#include "core/Wurfnummern.h"
#include "store/Action.h"

namespace koben {

/// The kinds, in the order of the booking frame's options.
enum class Buchungsart {
    Belegung,
    Trächtigkeit,
    Ferkelung,
    Absetzung,
    Verschiebung,
    Verluste,
    Ferkelverkauf,
    Behandlung
};

/// What a kind of booking has. Lists of fields are separated by blanks.
struct Artangaben {
    const char* caption;  ///< its option, and its name in the check of cycle dates
    const char* noun;     ///< one booking of it, in names of actions
    const char* table;
    const char* date;     ///< field of the day
    const char* screen;   ///< its entry screen
    bool cycle;           ///< counters, next dates or status of the animal hang on it
    bool litters;         ///< the numbers of the animal's litters follow it
    const char* taken;    ///< field that counts the piglets which leave the sow by it, "" for none
    const char* partner;  ///< field that names the sow with the counter-booking, "" for none
    const char* texts;    ///< fields that are empty in a new booking unless they are given
    const char* amounts;  ///< fields that are 0 in a new booking unless they are given
};

inline constexpr Artangaben Buchungsarten[] = {
    {"Belegung", "Belegung", "Belegung", "Datum", "PE_Bewegungsdaten_Belegung", true, false, "", "",
     "Ebernr Belegungsstation Kommentar Bemerkung", "Kosten"},
    {"Trächtigkeit", "Trächtigkeitsfeststellung", "Trächtigkeit", "Datum", "PE_Bewegungsdaten_Trächtigkeit", true,
     false, "", "", "Kommentar Bemerkung", "Kosten"},
    {"Ferkelung", "Ferkelung", "Ferkelung", "Datum", "PE_Bewegungsdaten_Ferkelung", true, true, "", "",
     "Kommentar Bemerkung", "Stück_Gewicht_kg Kosten"},
    {"Absetzung", "Absetzung", "Absetzung", "Datum", "PE_Bewegungsdaten_Absetzung", true, false, "Anzahl_Ferkel", "",
     "Kommentar Bemerkung", "Stück_Gewicht_kg"},
    {"Verschiebung", "Verschiebung", "Verschiebung", "Datum", "PE_Bewegungsdaten_Verschiebung", false, false,
     "Anzahl_Ferkel", "Zu_Saunr", "Kommentar Bemerkung", ""},
    {"Verluste", "Verlust", "Verluste", "Datum", "PE_Bewegungsdaten_Verluste", false, false, "Anzahl_Ferkel", "",
     "Grund Muttersau Kommentar Bemerkung", "Kosten"},
    {"Ferkelverkauf", "Ferkelverkauf", "Ferkelverkauf", "Datum", "PE_Bewegungsdaten_Ferkelverkauf", false, false,
     "Anzahl_Verkauf", "", "Kunde Muttersau Kommentar",
     "Anzahl_Einkauf Anzahl_Verkauf Preis_je_Stück Einnahmen Ausgaben Stück_Gewicht_kg Gesamtgewicht_kg"},
    {"Behandlung", "Behandlung", "Behandlung", "Datum", "PE_Bewegungsdaten_Behandlung", false, false, "", "",
     "Behandlungsart Medikament Einheit Verabreichungsart Tierarzt Beleg_Nr Kommentar Bemerkung",
     "Menge Wartezeit_Tage Kosten"}};

constexpr const Artangaben& angaben(Buchungsart art) { return Buchungsarten[static_cast<int>(art)]; }

/// Bookings of one kind, written within one action: prepared once a save, run for each animal. What follows from a
/// booking follows at once: litter numbers, and that the cycle is to be derived when the booking frame closes.
/// A value that does not fit its field throws DatabaseError (Type or TooLong).
class Buchungen {
public:
    /// `fields` get their values with each booking, `fixed` are the same in all. The animal's field is not among them.
    Buchungen(const Action& action, Buchungsart art, const QStringList& fields, const FieldValues& fixed = {});
    /// A new booking; `animal` 0: of the farm, not of an animal. Fields that are not given have the kind's defaults.
    void book(qint64 animal, std::vector<Value> values = {});
    /// Sets the given fields and the animal of a booking. Throws DatabaseError (State) where it is gone.
    void change(qint64 id, qint64 animal, std::vector<Value> values = {});

private:
    void follow(qint64 animal);

    const Action& m_action;
    const Buchungsart m_art;
    RowWriter m_new, m_changed;
    std::optional<Wurfnummern> m_litters;
    bool m_noted = false;
};

/// Books the row of the other sow for a cross-fostering: `booking` as it was booked, the count the other way and
/// `number`, the first sow's, as its partner.
void Verschiebung_gegenbuchen(const Action& action, FieldValues booking, qint64 partner, const QString& number);
/// Losses that a weaning found: give each sow and, as the one value, her number. `count` as a field's number reads.
Buchungen Absetzverluste(const Action& action, QDate day, double count, const QString& reason);
/// The sale of piglets to the farm's own fattening; it belongs to no animal. More than a booking can count becomes
/// several.
void Eigenverkauf_buchen(const Action& action, QDate day, qint64 count);

/// Deletes one booking. `animal`: whose litters are numbered anew and whose cycle is derived when the booking frame
/// closes; 0 where nothing follows.
void Buchung_loeschen(const Action& action, Buchungsart art, qint64 id, qint64 animal);
/// Copies a booking to another day, its other fields unchanged; `animal` as in Buchung_loeschen. A counter-booking is
/// not made. Throws DatabaseError (State) where the booking is gone.
void Buchung_kopieren(const Action& action, Buchungsart art, qint64 id, QDate day, qint64 animal);
/// Deletes all bookings of an animal; how many they were.
qint64 Buchungen_loeschen(const Action& action, qint64 animal);
/// How many bookings an animal has, of all kinds.
qint64 Buchungen_zaehlen(const Database& db, qint64 animal);

}  // namespace koben

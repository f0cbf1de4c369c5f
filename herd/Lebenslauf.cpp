#include "herd/Lebenslauf.h"

#include <QHash>
#include <algorithm>

#include "core/Buchungen.h"
#include "core/Feldnamen.h"
#include "core/PZ_Koben_Subs.h"
#include "core/Ruecknahmeregeln.h"

namespace koben {
namespace {

/// A field as the details name it, and what stands behind its value.
struct Angabe {
    const char* field;
    const char* label;
    const char* unit = "";
};

/// The kinds of booking by their places in Buchungsart; texts and dates that are empty and numbers that are 0 are left
/// out.
const std::vector<Angabe> Angaben[] = {
    {{"Ebernr", "Eber"},
     {"Deckanzahl", "Deckungen"},
     {"Belegungart", "Art"},
     {"Belegungsstation", "Station"},
     {"Kosten", "Kosten", "€"},
     {"Kommentar", "Kommentar"},
     {"Bemerkung", "Bemerkung"}},
    {{"Trächtig", "Trächtig"}, {"Kosten", "Kosten", "€"}, {"Kommentar", "Kommentar"}, {"Bemerkung", "Bemerkung"}},
    {{"LNr", "Wurf"},
     {"Ferkel_Gesamt", "Ferkel"},
     {"Ferkel_Lebendig", "lebend"},
     {"Ferkel_Tot", "tot"},
     {"Stück_Gewicht_kg", "je Stück", "kg"},
     {"Kosten", "Kosten", "€"},
     {"Kommentar", "Kommentar"},
     {"Bemerkung", "Bemerkung"}},
    {{"Anzahl_Ferkel", "Ferkel"},
     {"Stück_Gewicht_kg", "je Stück", "kg"},
     {"Kommentar", "Kommentar"},
     {"Bemerkung", "Bemerkung"}},
    {{"Anzahl_Ferkel", "Ferkel abgegeben"},
     {"Zu_Saunr", "Sau"},
     {"Kommentar", "Kommentar"},
     {"Bemerkung", "Bemerkung"}},
    {{"Anzahl_Ferkel", "Ferkel"},
     {"Grund", "Grund"},
     {"Kosten", "Kosten", "€"},
     {"Kommentar", "Kommentar"},
     {"Bemerkung", "Bemerkung"}},
    {{"Anzahl_Verkauf", "verkauft"},
     {"Anzahl_Einkauf", "zugekauft"},
     {"Preis_je_Stück", "je Stück", "€"},
     {"Einnahmen", "Einnahmen", "€"},
     {"Ausgaben", "Ausgaben", "€"},
     {"Gesamtgewicht_kg", "Gewicht", "kg"},
     {"Kunde", "Kunde"},
     {"Kommentar", "Kommentar"}},
    {{"Behandlungsart", "Art"},
     {"Medikament", "Medikament"},
     {"Menge", "Menge"},
     {"Einheit", "Einheit"},
     {"Verabreichungsart", "Verabreichung"},
     {"Wartezeit_Datum", "Wartezeit bis"},
     {"Tierarzt", "Tierarzt"},
     {"Beleg_Nr", "Beleg"},
     {"Kosten", "Kosten", "€"},
     {"Kommentar", "Kommentar"},
     {"Bemerkung", "Bemerkung"}}};

const std::vector<Angabe> Ohne;
const std::vector<Angabe> Zugang{{"Zugangsgrund", "Grund"},
                                 {"Lieferant", "Lieferant"},
                                 {"Zugangsgewicht_kg", "Gewicht", "kg"},
                                 {"Einkaufspreis", "Preis", "€"}};
const std::vector<Angabe> Abgang{{"Abgangsgrund", "Grund"},
                                 {"Abnehmer", "Abnehmer"},
                                 {"Abgangsgewicht_kg", "Gewicht", "kg"},
                                 {"Verkaufspreis", "Preis", "€"}};
const std::vector<Angabe> Box{{"Stallnr", "Stall"}};

/// What stands on one day: arrival before, departure behind what was booked on it.
enum Rang { Geboren, Gekommen, Umgestallt, Gebucht, Geaendert, Gegangen };

/// What a day in the animal's own row tells, with what was written beside it.
struct Lebenstag {
    const char* field;
    Rang rank;
    const char* what;
    const std::vector<Angabe>& fields;
};
const Lebenstag Tage[] = {{"Geburtsdatum", Geboren, "Geburt", Ohne},
                          {"Zugangsdatum", Gekommen, "Zugang", Zugang},
                          {"BoxDatum", Umgestallt, "In Box gestellt", Box},
                          {"Abgangsdatum", Gegangen, "Abgang", Abgang}};

const QString Leer = QStringLiteral("leer");

QString utf8(const char* text) { return QString::fromUtf8(text); }

QString valueText(const Value& value, bool money) {
    if (value.isNull()) return {};
    const QString text = Hochkomma_ersetzen(value);
    if (value.isText() || value.isDate()) return text;
    if (value.toDouble() == 0) return {};
    return money ? Zahl_formatieren(QString(text), 2) : text;
}

QString details(const Table& rows, int row, const std::vector<Angabe>& fields) {
    QStringList told;
    for (const Angabe& each : fields) {
        const QString text =
            valueText(rows.value(row, rows.columnOf(utf8(each.field))), QString::fromUtf8(each.unit) == u"€");
        if (text.isEmpty()) continue;
        told += utf8(each.label) + u' ' + text + (*each.unit ? u' ' + utf8(each.unit) : QString());
    }
    // a count below 0 says that she took piglets in
    return told.join(QStringLiteral(", "))
        .replace(QStringLiteral("Ferkel abgegeben -"), QStringLiteral("Ferkel aufgenommen "));
}

class Leben {
public:
    Leben(const Database& db, qint64 animal, const std::vector<Aenderung>& changes)
        : m_db(db), m_animal(animal), m_changes(changes) {
        for (const Aenderung& each : changes)
            if (each.what == Aenderung::What::Added) m_added.insert(key(each.table, each.row), each.when);
    }

    std::vector<Lebensereignis> read() {
        const Table animal = m_db.table(QStringLiteral("select * from Sauen where ID = %1").arg(m_animal));
        if (animal.rowCount() == 0) return {};
        const QString number = Hochkomma_ersetzen(animal.text(0, animal.columnOf(u"Nummer")));
        for (const Lebenstag& day : Tage) addRowDay(animal, day);
        for (const Aenderung& each : m_changes)
            if (each.what == Aenderung::What::Changed && !tellsOtherwise(animal, each)) addChange(each);
        for (int kind = 0; kind < static_cast<int>(std::size(Buchungsarten)); ++kind) addBookings(kind, number);
        if (animal.text(0, animal.columnOf(u"Art")) == u"Eber") addServed(number);
        std::stable_sort(m_events.begin(), m_events.end(), [](const Event& a, const Event& b) {
            return std::pair(a.event.tag, a.rank) < std::pair(b.event.tag, b.rank);
        });
        std::vector<Lebensereignis> result;
        for (Event& each : m_events) result.push_back(std::move(each.event));
        return result;
    }

private:
    struct Event {
        Lebensereignis event;
        Rang rank;
    };
    static QString key(const QString& table, qint64 row) { return table.toLower() + u' ' + QString::number(row); }
    QDateTime written(const QString& table, qint64 row) const { return m_added.value(key(table, row)); }

    static QDate dayOf(const Table& animal, const Lebenstag& day) {
        return animal.value(0, animal.columnOf(utf8(day.field))).toDate();
    }

    void addRowDay(const Table& animal, const Lebenstag& day) {
        const QDate date = dayOf(animal, day);
        if (!date.isValid()) return;
        QDateTime when = day.rank == Gekommen ? written(QStringLiteral("Sauen"), m_animal) : QDateTime();
        for (const Aenderung& each : m_changes)
            if (each.field == utf8(day.field)) when = each.when;
        m_events.push_back(
            {{static_cast<qint32>(date.toJulianDay()), utf8(day.what), details(animal, 0, day.fields), when},
             day.rank});
    }

    /// What was first filled in beside a day stands with that day. The kind of service is a boar's; the entry screen
    /// writes it for every animal.
    static bool tellsOtherwise(const Table& animal, const Aenderung& change) {
        if (change.field == u"Belegungsart" && animal.text(0, animal.columnOf(u"Art")) != u"Eber") return true;
        if (change.before != Leer) return false;
        return std::any_of(std::begin(Tage), std::end(Tage), [&](const Lebenstag& day) {
            const auto same = [&](const Angabe& each) { return change.field == utf8(each.field); };
            return dayOf(animal, day).isValid() &&
                   (change.field == utf8(day.field) ||
                    (day.rank != Umgestallt && std::any_of(day.fields.begin(), day.fields.end(), same)));
        });
    }

    /// Her own, and those of the farm's lists of piglets that name her as the mother.
    void addBookings(int place, const QString& number) {
        const Artangaben& kind = Buchungsarten[place];
        QString sql = QStringLiteral("select * from %1 where Kennung = %2").arg(utf8(kind.table)).arg(m_animal);
        if (utf8(kind.texts).contains(u"Muttersau") && !number.isEmpty())
            sql += QStringLiteral(" or (Muttersau = '%1' and (Kennung IS NULL or Kennung = 0))").arg(number);
        const Table rows = m_db.table(sql + QStringLiteral(" order by ID"));
        for (int row = 0; row < rows.rowCount(); ++row) add(place, rows, row, {}, 0);
    }

    /// A boar's services over all sows.
    void addServed(const QString& number) {
        if (number.isEmpty()) return;
        const Table rows = m_db.table(
            QStringLiteral("select Belegung.Datum, Belegung.Deckanzahl, Belegung.Kosten, Belegung.ID, Sauen.Nummer as "
                           "Saunr, Sauen.ID as Sau from Belegung left join Sauen on Belegung.Kennung = Sauen.ID where "
                           "Belegung.Ebernr = '%1' order by Belegung.ID")
                .arg(number));
        for (int row = 0; row < rows.rowCount(); ++row)
            add(-1, rows, row, QStringLiteral("Sau ") + Hochkomma_ersetzen(rows.text(row, rows.columnOf(u"Saunr"))),
                rows.integer(row, rows.columnOf(u"Sau")));
    }

    void add(int place, const Table& rows, int row, const QString& served, qint64 sow) {
        static const std::vector<Angabe> Deckung{{"Deckanzahl", "Deckungen"}, {"Kosten", "Kosten", "€"}};
        const Artangaben& kind = Buchungsarten[std::max(place, 0)];
        const QDate day = rows.value(row, rows.columnOf(u"Datum")).toDate();
        QStringList told{served, details(rows, row, place < 0 ? Deckung : Angaben[place])};
        told.removeAll(QString());
        m_events.push_back({{day.isValid() ? static_cast<qint32>(day.toJulianDay()) : 0,
                             place < 0 ? QStringLiteral("Deckung") : utf8(kind.noun), told.join(QStringLiteral(", ")),
                             written(utf8(kind.table), rows.integer(row, rows.columnOf(u"ID"))), sow},
                            Gebucht});
    }

    void addChange(const Aenderung& change) {
        const bool move = change.field == u"Stallnr";
        const QString told = !move ? QStringLiteral("%1: %2, vorher %3")
                                         .arg(fieldLabel(change.table, change.field), change.after, change.before)
                             : change.before == Leer ? QStringLiteral("nach ") + change.after
                             : change.after == Leer  ? QStringLiteral("aus ") + change.before
                                                    : QStringLiteral("von %1 nach %2").arg(change.before, change.after);
        m_events.push_back({{static_cast<qint32>(change.when.date().toJulianDay()),
                             move ? QStringLiteral("Umstallung") : QStringLiteral("Änderung"), told, change.when},
                            Geaendert});
    }

    const Database& m_db;
    const qint64 m_animal;
    const std::vector<Aenderung>& m_changes;
    QHash<QString, QDateTime> m_added;
    std::vector<Event> m_events;
};

QDateTime momentOf(const DateTime& time) { return {time.date(), QTime::fromMSecsSinceStartOfDay(time.second * 1000)}; }

/// Gathers what entries of the journal did to the animal's row, and that they wrote one of a booking.
class Aenderungen {
public:
    Aenderungen(const Database& db, qint64 animal) : m_animal(animal) {
        for (const Field& field : db.fields(Regeln::Tiere)) m_types.insert(field.name, field.type);
    }

    void add(const RowChange& row, const QDateTime& when) {
        const bool own = *row.table == Regeln::Tiere;
        if (own && row.row != m_animal) return;
        if (row.kind == RowChange::Kind::Inserted) found.push_back({*row.table, row.row, when, Aenderung::What::Added});
        if (row.kind != RowChange::Kind::Changed || !own) return;
        for (const RowChange::Cell& cell : row.cells) addCell(row, cell, when);
    }

    std::vector<Aenderung> found;

private:
    void addCell(const RowChange& row, const RowChange::Cell& cell, const QDateTime& when) {
        const QString& field = row.fields->at(cell.field);
        if (Regeln::role(*row.table, field) != Journal::Role::Own) return;
        const auto text = [&](const Value& kept) {
            return fieldText(*row.table, field, Journal::typed(kept, m_types.value(field, Type::Text)));
        };
        const QString before = text(cell.before), after = text(cell.after);
        if (before != after)  // nothing and a blank, or 0, are the same to the eye
            found.push_back({*row.table, row.row, when, Aenderung::What::Changed, field, before, after});
    }

    const qint64 m_animal;
    QHash<QString, Type> m_types;
};

}  // namespace

std::vector<Aenderung> Aenderungen_lesen(const Database& db, qint64 animal, QDate until) {
    Aenderungen all(db, animal);
    const Journal journal(db);
    for (const qint64 number : journal.ofAnimal(animal)) {
        const auto entry = journal.entry(number);
        if (!entry || !entry->known || !entry->counts() || entry->kind != Journal::Kind::Action) continue;
        const QDateTime when = momentOf(entry->time);
        if (until.isValid() && when.date() > until) continue;
        journal.read(number, [&](const RowChange& row) { return all.add(row, when), true; });
    }
    return std::move(all.found);
}

std::vector<Lebensereignis> Lebenslauf_lesen(const Database& db, qint64 animal, const std::vector<Aenderung>& changes) {
    return Leben(db, animal, changes).read();
}

}  // namespace koben

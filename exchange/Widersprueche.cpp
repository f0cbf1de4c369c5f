#include "exchange/Widersprueche.h"

#include <algorithm>

#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

using A = Buchungsart;
constexpr int Heat = 17;  // days: a sow served again within them has not come into heat anew
constexpr A Cycle[] = {A::Belegung, A::Trächtigkeit, A::Ferkelung, A::Absetzung};

std::optional<A> cycleKind(const QString& table) {
    for (const A art : Cycle)
        if (table == QString::fromUtf8(angaben(art).table)) return art;
    return std::nullopt;
}

Value before(const RowChange& change, QStringView field) {
    const RowChange::Cell* cell = change.cell(field);
    return cell ? cell->before : Value();
}

QString dated(A art, QDate day) {
    return QString::fromUtf8(angaben(art).noun) + QStringLiteral(" vom ") + Datum_als_Anzeige(day);
}

}  // namespace

Widersprueche::Widersprueche(const Database& db, const Variablen& v, std::optional<DateTime> exported,
                             const Geraetedatei& file)
    : m_db(db), m_exported(exported) {
    makeRules(v);
    std::optional<DateTime> since;
    for (const Geraetebuchung& booking : file.bookings())
        if (booking.complete()) since = std::min(since.value_or(known(booking.day)), known(booking.day));
    if (since) readJournal(*since);
}

void Widersprueche::makeRules(const Variablen& v) {
    const int gestation = v.Konfig_Zahl[Zahl::TageBelegungFerkelung],
              suckling = v.Konfig_Zahl[Zahl::TageFerkelungAbsetzung], slack = v.Konfig_Zahl[Zahl::ToleranzTage];
    const int least = gestation - slack, longest = gestation + slack, weaned = suckling + slack;
    m_rules = {{A::Belegung, A::Belegung, -Heat, Heat, {}, {}, "Das ist wohl dieselbe Rausche."},
               {A::Belegung, A::Ferkelung, 1 - least, -1, {}, {}, "Da war die Sau schon tragend."},
               {A::Belegung, A::Trächtigkeit, 0, longest, A::Ferkelung, false, "Die Sau war da schon tragend."},
               {A::Trächtigkeit, A::Trächtigkeit, -longest, longest, A::Belegung, {}, "Das Ergebnis ist ein anderes."},
               {A::Trächtigkeit, A::Ferkelung, 0, longest, A::Belegung, {}, "Die Sau hatte da schon geferkelt."},
               {A::Ferkelung, A::Ferkelung, 1 - least, least - 1, {}, {}, "Das ist wohl derselbe Wurf."},
               {A::Ferkelung, A::Trächtigkeit, 0, longest, A::Belegung, true, "Danach war die Sau nicht tragend."},
               {A::Ferkelung, A::Belegung, 0, least - 1, {}, {}, "Dafür ist es zu früh."},
               {A::Absetzung, A::Absetzung, -weaned, weaned, A::Ferkelung, {}, "Das ist wohl derselbe Wurf."},
               {A::Absetzung, A::Belegung, 1, weaned, A::Ferkelung, {}, "Da hatte die Sau schon keine Ferkel mehr."},
               {A::Verluste, A::Absetzung, 1, weaned, A::Ferkelung, {}, "Da hatte die Sau keine Ferkel mehr."}};
    m_grounds = {{A::Trächtigkeit, A::Belegung, 0, longest, {}, {}, {}},
                 {A::Ferkelung, A::Belegung, 0, longest, {}, {}, {}},
                 {A::Absetzung, A::Ferkelung, 0, weaned, {}, {}, {}},
                 {A::Verluste, A::Ferkelung, 0, weaned, {}, {}, {}}};
}

/// What the device can have known: nothing behind its export, and nothing behind the day itself.
DateTime Widersprueche::known(QDate day) const {
    const DateTime begins = DateTime::of(day);
    return m_exported ? std::min(*m_exported, begins) : begins;
}

void Widersprueche::readJournal(DateTime since) {
    const Journal journal(m_db);
    std::vector<Journal::Entry> entries = journal.entries();
    std::reverse(entries.begin(), entries.end());
    for (const Journal::Entry& entry : entries)
        if (entry.known && entry.time > since)
            journal.read(entry.number, [&](const RowChange& change) { return note(change, entry.time), true; });
}

void Widersprueche::note(const RowChange& change, DateTime time) {
    const bool deleted = change.kind == RowChange::Kind::Deleted, inserted = change.kind == RowChange::Kind::Inserted;
    if (deleted && *change.table == u"Sauen") m_deleted[before(change, u"Nummer").toText()] = time;
    const auto art = cycleKind(*change.table);
    if (!art) return;
    const auto [at, first] = m_traces.try_emplace({*art, change.row});
    Spur& trace = at->second;
    if (first) trace.before = !inserted;
    trace.removed.reset();
    if (deleted) {
        trace.animal = before(change, u"Kennung").toInt();
        trace.removed = Ereignis{.art = *art,
                                 .id = change.row,
                                 .day = QDate::fromString(before(change, u"Datum").toText(), Qt::ISODate),
                                 .removed = time};
    } else if (inserted ? !trace.before
                        : change.cell(u"Datum") || change.cell(u"Kennung") || change.cell(u"Trächtig")) {
        trace.written = time;
    }
}

const Widersprueche::Lage& Widersprueche::lage(qint64 animal) {
    const auto [at, first] = m_animals.try_emplace(animal);
    Lage& lage = at->second;
    if (!first) return lage;
    Statement gone = m_db.prepare("select Abgangsdatum from Sauen where ID = ?");
    for (gone.bind({animal}); gone.next();) lage.gone = gone.value(0).toDate();
    for (const A art : Cycle) {
        Statement rows = m_db.prepare(QStringLiteral("select ID, Datum%1 from %2 where Kennung = ?")
                                          .arg(art == A::Trächtigkeit ? QStringLiteral(", Trächtig") : QString(),
                                               QString::fromUtf8(angaben(art).table)));
        for (rows.bind({animal}); rows.next();) {
            if (rows.isNull(1)) continue;
            Ereignis event{.art = art, .id = rows.integer(0), .day = QDate::fromJulianDay(rows.day(1))};
            event.negative = art == A::Trächtigkeit && rows.text(2) == u"N";
            if (const auto trace = m_traces.find({art, event.id}); trace != m_traces.end())
                event.written = trace->second.written;
            lage.events.push_back(event);
        }
    }
    for (const auto& [row, trace] : m_traces)
        if (trace.animal == animal && trace.before && trace.removed) lage.events.push_back(*trace.removed);
    return lage;
}

QString Widersprueche::reason(const Geplant& entry) {
    const Geraetebuchung& booking = *entry.booking;
    if (entry.animal <= 0) {
        const auto deleted = m_deleted.find(booking.number());
        const bool known = deleted != m_deleted.end() && deleted->second > this->known(booking.day);
        return known && entry.animal < 0 ? QStringLiteral("Das Tier wurde nach dem Export gelöscht.") : QString();
    }
    QString found = departed(entry);
    if (found.isEmpty()) found = overtaken(booking, lage(entry.animal));
    return found.isEmpty() ? withoutGround(booking, lage(entry.animal)) : found;
}

QString Widersprueche::departed(const Geplant& entry) {
    const QDate day = entry.booking->day;
    const auto goneBefore = [&](qint64 animal) {
        return animal > 0 && lage(animal).gone.isValid() && lage(animal).gone < day;
    };
    if (goneBefore(entry.animal))
        return QStringLiteral("Das Tier ist am %1 abgegangen.").arg(Datum_als_Anzeige(lage(entry.animal).gone));
    if (goneBefore(entry.partner))
        return QStringLiteral("Die andere Sau ist am %1 abgegangen.").arg(Datum_als_Anzeige(lage(entry.partner).gone));
    return {};
}

/// Whether a booking of the kind is here, after the one day and not after the other.
bool Widersprueche::stands(const Lage& lage, Buchungsart art, QDate after, QDate until) {
    return std::any_of(lage.events.begin(), lage.events.end(), [&](const Ereignis& event) {
        return event.art == art && !event.removed && event.day > after && event.day <= until;
    });
}

QString Widersprueche::overtaken(const Geraetebuchung& booking, const Lage& lage) const {
    const bool negative =
        booking.section->art == A::Trächtigkeit && booking.fields[2].startsWith(u'N', Qt::CaseInsensitive);
    for (const Ereignis& event : lage.events) {
        if (event.removed || event.written <= known(booking.day)) continue;
        const qint64 days = event.day.daysTo(booking.day);
        for (const Regel& rule : m_rules) {
            if (rule.coming != booking.section->art || rule.here != event.art || days < rule.from || days > rule.to ||
                (rule.negative && *rule.negative != event.negative) ||
                (rule.coming == rule.here && rule.here == A::Trächtigkeit && event.negative == negative) ||
                (rule.unless &&
                 stands(lage, *rule.unless, std::min(event.day, booking.day), std::max(event.day, booking.day))))
                continue;
            return QStringLiteral("Nach dem Export gebucht: %1. %2").arg(dated(event.art, event.day), rule.sentence);
        }
    }
    return {};
}

QString Widersprueche::withoutGround(const Geraetebuchung& booking, const Lage& lage) const {
    for (const Ereignis& event : lage.events) {
        if (!event.removed || !event.day.isValid() || *event.removed <= known(booking.day)) continue;
        const qint64 days = event.day.daysTo(booking.day);
        for (const Regel& rule : m_grounds)
            if (rule.coming == booking.section->art && rule.here == event.art && days >= rule.from && days <= rule.to &&
                !stands(lage, event.art, booking.day.addDays(-rule.to - 1), booking.day))
                return QStringLiteral("Nach dem Export gelöscht: %1, worauf sie beruht.")
                    .arg(dated(event.art, event.day));
    }
    return {};
}

}  // namespace koben

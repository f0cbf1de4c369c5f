#include "analytics/Logikpruefung.h"

#include <algorithm>

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

const QString Sows = QStringLiteral("Sauen.Art = 'Sau' and Sauen.Abgangsdatum IS NULL and Sauen.Anz_Ferkelungen > 0");

DateTime midnight(QDate day) { return DateTime::of(day); }

}  // namespace

Logikpruefung::Logikpruefung(const Database& db, const Logikauswahl& choice) : m_db(db), m_choice(choice) {
    m_sows = db.table("select ID, Nummer, Stallnr, Gruppe from Sauen where " + Sows + " order by Nummer");
    const auto tests = [&](Termin what) { return choice.tested[static_cast<size_t>(what)]; };
    m_farrowings = readFarrowings();
    m_services = read("Belegung");
    if (tests(Termin::Kontrolle)) m_checks = read("Trächtigkeit", " and Trächtig = 'J'");
    if (tests(Termin::Absetzung)) m_weanings = read("Absetzung");
}

/// Bookings without a day happened at no time.
Logikpruefung::Buch Logikpruefung::read(const QString& table, const QString& condition) const {
    Buch book;
    Statement rows =
        m_db.prepare(QStringLiteral("select Kennung, Datum, %1.ID from %1, Sauen where Kennung = Sauen.ID and "
                                    "%2 and Datum IS NOT NULL%3 order by Kennung, Datum")
                         .arg(table, Sows, condition));
    rows.bind({});
    while (rows.next())
        book.entries.push_back({rows.integer(0), {std::get<DateTime>(rows.value(1).variant()), rows.integer(2)}});
    return book;
}

/// One without a day is counted, but nothing can be tested from it.
Logikpruefung::Buch Logikpruefung::readFarrowings() const {
    Buch book;
    Statement rows = m_db.prepare(
        "select Kennung, Datum, Ferkelung.ID, Ferkel_Lebendig from Ferkelung, Sauen where "
        "Kennung = Sauen.ID and " +
        Sows + " order by Kennung, Datum");
    rows.bind({});
    while (rows.next()) {
        const Value day = rows.value(1);
        const bool allDead = !rows.isNull(3) && rows.integer(3) == 0;
        book.entries.push_back({rows.integer(0),
                                {day.isNull() ? DateTime{} : std::get<DateTime>(day.variant()), rows.integer(2),
                                 !day.isNull() && !allDead}});
    }
    return book;
}

Logikpruefung::Ereignisse Logikpruefung::Buch::of(qint64 sow) const {
    auto at = std::lower_bound(entries.begin(), entries.end(), sow,
                               [](const auto& entry, qint64 id) { return entry.first < id; });
    Ereignisse events;
    for (; at != entries.end() && at->first == sow; ++at) events.push_back(at->second);
    return events;
}

std::vector<Logikzeile> Logikpruefung::test(int sow) const {
    const qint64 id = m_sows.integer(sow, 0);
    const Ereignisse farrowings = m_farrowings.of(id), services = m_services.of(id), checks = m_checks.of(id),
                     weanings = m_weanings.of(id);
    std::vector<Logikzeile> lines;
    for (size_t i = m_choice.lastOnly && !farrowings.empty() ? farrowings.size() - 1 : 0; i < farrowings.size(); ++i) {
        if (!farrowings[i].live) continue;
        const QDate day = farrowings[i].at.date();
        const auto found = test(day, services, checks, weanings);
        if (std::none_of(found.begin(), found.end(), [](const Befund& f) { return f.wrong; })) continue;
        const auto text = [&](int column) { return Hochkomma_ersetzen(m_sows.text(sow, column)); };
        lines.push_back({id, text(1), text(2), text(3), lines.empty(), static_cast<int>(i) + 1, day, found});
    }
    return lines;
}

/// The latest service before the farrowing, the latest check behind that service, and the first weaning up to the next
/// service or today.
std::array<Befund, Termine> Logikpruefung::test(QDate farrowing, const Ereignisse& services, const Ereignisse& checks,
                                                const Ereignisse& weanings) const {
    const DateTime day = midnight(farrowing);
    const auto latestBefore = [&](const Ereignisse& events) {
        const Ereignis* latest = nullptr;
        for (const Ereignis& event : events)
            if (event.at < day && (!latest || latest->at < event.at)) latest = &event;
        return latest;
    };
    const auto firstFrom = [&](const Ereignisse& events) {
        const auto first = std::find_if(events.begin(), events.end(), [&](const Ereignis& e) { return e.at >= day; });
        return first == events.end() ? nullptr : &*first;
    };
    const Ereignis* service = latestBefore(services);
    const Ereignis* check = latestBefore(checks);
    const DateTime served = midnight(service ? service->at.date() : QDate(1900, 1, 1));
    if (check && check->at <= served) check = nullptr;
    const Ereignis* next = firstFrom(services);
    const Ereignis* weaning = firstFrom(weanings);
    if (weaning && weaning->at > midnight(next ? next->at.date() : m_choice.today)) weaning = nullptr;
    return {measured(Termin::Belegung, service, farrowing), measured(Termin::Kontrolle, check, farrowing),
            measured(Termin::Absetzung, weaning, farrowing)};
}

Befund Logikpruefung::measured(Termin what, const Ereignis* event, QDate farrowing) const {
    const auto test = static_cast<size_t>(what);
    if (!m_choice.tested[test]) return {};
    if (!event) return {.wrong = true, .day = {}};
    const qint64 days = std::abs(event->at.date().daysTo(farrowing));
    return {std::abs(days - m_choice.expected[test]) > m_choice.tolerance, event->at.date(), days, event->id};
}

}  // namespace koben

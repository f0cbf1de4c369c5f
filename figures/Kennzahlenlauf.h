#pragma once
// The one walk over a sow that all figures come from. It tells a sink each booking and each span of days that counts;
// one sink adds them up, another keeps them as the list behind a figure. For figures/ alone.
#include <algorithm>

#include "figures/Kennzahlen.h"

namespace koben {

/// What a figure needs of the walk.
namespace Teil {
enum : unsigned { Buchungen = 1, Tage = 2, Npt = 4, Bestand = 8, Alle = 15 };
}
unsigned parts(Kz figure);
/// Only the figures of these parts hold values.
std::vector<Kennzahlenstand> compute(const Sauenbuch& book, std::span<const Zeitraum> periods, unsigned parts);

enum class Ereignis { Wurf, AbgesetzterWurf, Absetzung, Belegung, Sau, Produktionstage, NichtproduktiveTage };

/// A booking, or a span of days, with its part.
struct Fall {
    Ereignis was;
    qint32 tag;  ///< by which it belongs to a period
    qint64 numerator = 0, denominator = 0;
    qint32 bezug = 0;  ///< another day that matters: the earlier litter, the next service, the last of the days
    const Wurf* wurf = nullptr;
};

namespace Frist {
inline constexpr int Offen = 125;          // days until a service has led to a litter or failed
inline constexpr int Umrauschen = 46;      // a return comes by then
inline constexpr int Absetzbelegung = 65;  // a later service after weaning is not counted
inline constexpr int Saeugen = 60;         // so long a litter that is not weaned counts as suckling
inline constexpr int Trage = 105, TrageBis = 125;
}  // namespace Frist

/// The walk. `Sink` has count(Kz, Fall), leaveOut(Kz, Fall), days(Fall) for a sow's production days and
/// idle(Kz, Fall) for days that are not productive, the first and the last of them.
template <class Sink>
class Sauenlauf {
public:
    Sauenlauf(const Sau& sow, qint32 heute, Sink& sink) : m_sow(sow), m_heute(heute), m_sink(sink) {}

    /// The bookings of the period.
    void bookings(Zeitraum period) {
        litters(period);
        weaned(period);
        for (size_t i = firstFrom(m_sow.absetzungen, period.von); i < m_sow.absetzungen.size(); ++i) {
            const Ferkelbuchung& w = m_sow.absetzungen[i];
            if (w.tag > period.bis) break;
            m_sink.count(Kz::AbgesetztSauJahr, {Ereignis::Absetzung, w.tag, w.anzahl});
        }
        for (size_t i = firstFrom(m_sow.gruppen, period.von); i < m_sow.gruppen.size(); ++i) {
            if (m_sow.gruppen[i] > period.bis) break;
            service(i);
        }
    }

    /// The production days of the period; with `idle` also which of them are not productive, as known on its last day.
    void days(Zeitraum period, bool idle) {
        if (m_sow.gruppen.empty()) return;
        Zeitraum days{std::max(period.von, m_sow.gruppen.front() + 1), period.bis};
        if (m_sow.abgang != 0) days.bis = std::min(days.bis, m_sow.abgang);
        if (days.days() == 0) return;
        m_sink.days({Ereignis::Produktionstage, days.von, 0, days.days(), days.bis});
        if (idle) gaps(days, period.bis);
    }

    /// Whether she is in the herd at the end of the day.
    void stock(qint32 day) {
        if (m_sow.zugang > day || m_sow.gone(day)) return;
        const auto litters = static_cast<int>(firstFrom(m_sow.wuerfe, day + 1));
        const int row = static_cast<int>(Kz::Wuerfe0) + std::min(litters, 10);
        m_sink.count(static_cast<Kz>(row), {Ereignis::Sau, day, 1, 0, litters});
    }

private:
    static qint32 dayOf(qint32 day) { return day; }
    static qint32 dayOf(const Wurf& litter) { return litter.tag; }
    static qint32 dayOf(const Ferkelbuchung& booking) { return booking.tag; }
    /// Position of the first that is not before the day.
    template <class T>
    static size_t firstFrom(std::span<const T> all, qint32 day) {
        return static_cast<size_t>(
            std::lower_bound(all.begin(), all.end(), day, [](const T& t, qint32 d) { return dayOf(t) < d; }) -
            all.begin());
    }
    /// A litter on one of the days between the two.
    bool litterBetween(qint32 after, qint32 before) const {
        const size_t i = firstFrom(m_sow.wuerfe, after + 1);
        return i < m_sow.wuerfe.size() && m_sow.wuerfe[i].tag < before;
    }

    void litters(Zeitraum period) {
        for (size_t i = firstFrom(m_sow.wuerfe, period.von); i < m_sow.wuerfe.size(); ++i) {
            const Wurf& w = m_sow.wuerfe[i];
            if (w.tag > period.bis) break;
            m_sink.count(Kz::WuerfeSauJahr, {Ereignis::Wurf, w.tag, 1, 0, 0, &w});
            m_sink.count(Kz::LebendWurf, {Ereignis::Wurf, w.tag, w.lebend, 1, 0, &w});
            m_sink.count(Kz::TotProzent, {Ereignis::Wurf, w.tag, w.tot, w.gesamt, 0, &w});
            if (i == 0) continue;
            const qint32 before = m_sow.wuerfe[i - 1].tag;
            m_sink.count(Kz::Zwischenwurfzeit, {Ereignis::Wurf, w.tag, w.tag - before, 1, before, &w});
        }
    }

    void weaned(Zeitraum period) {
        // Only the last of the litters before the period can be weaned within it.
        const size_t first = firstFrom(m_sow.wuerfe, period.von);
        for (size_t i = first == 0 ? 0 : first - 1; i < m_sow.wuerfe.size() && m_sow.wuerfe[i].tag < period.bis; ++i) {
            const Wurf& w = m_sow.wuerfe[i];
            if (!period.contains(w.abgesetztAm)) continue;
            const Ereignis what = Ereignis::AbgesetzterWurf;
            m_sink.count(Kz::AbgesetztWurf, {what, w.abgesetztAm, w.abgesetzt, 1, w.tag, &w});
            m_sink.count(Kz::VerlusteProzent, {what, w.abgesetztAm, w.lebend - w.abgesetzt, w.lebend, w.tag, &w});
        }
    }

    void service(size_t i) {
        const qint32 s = m_sow.gruppen[i];
        const qint32 next = i + 1 < m_sow.gruppen.size() ? m_sow.gruppen[i + 1] : 0;
        if (i == 0) m_sink.count(Kz::Remontierung, {Ereignis::Belegung, s, 1});
        farrowed(s);
        returned(s, next != 0 && next - s <= Frist::Umrauschen && !litterBetween(s, next) ? next : 0);
        afterWeaning(i);
    }

    void farrowed(qint32 s) {
        Fall fall{Ereignis::Belegung, s};
        if (m_heute - s <= Frist::Offen) return m_sink.leaveOut(Kz::Abferkelrate, fall);
        fall.denominator = 1;
        for (size_t i = firstFrom(m_sow.wuerfe, s + Frist::Trage); i < m_sow.wuerfe.size(); ++i) {
            const Wurf& w = m_sow.wuerfe[i];
            if (w.tag > s + Frist::TrageBis) break;
            if (w.belegtAm != s) continue;
            fall.numerator = 1;
            fall.wurf = &w;
            break;
        }
        m_sink.count(Kz::Abferkelrate, fall);
    }

    void returned(qint32 s, qint32 next) {
        constexpr int lastDays[] = {17, 24, 37, 46};
        Fall fall{Ereignis::Belegung, s, 0, 0, next};
        if (m_heute - s <= Frist::Umrauschen) return m_sink.leaveOut(Kz::Umrauscher, fall);
        fall.numerator = next != 0 ? 1 : 0;
        fall.denominator = 1;
        m_sink.count(Kz::Umrauscher, fall);
        if (next == 0) return;
        int row = 0;
        while (next - s > lastDays[row]) ++row;
        fall.denominator = 0;
        m_sink.count(static_cast<Kz>(static_cast<int>(Kz::Umrauscher_4_17) + row), fall);
    }

    /// The first service on or after the weaning day of the litter before it.
    void afterWeaning(size_t i) {
        const qint32 s = m_sow.gruppen[i];
        const size_t behind = firstFrom(m_sow.wuerfe, s);
        if (behind == 0 || (behind < m_sow.wuerfe.size() && m_sow.wuerfe[behind].tag == s)) return;
        const Wurf& w = m_sow.wuerfe[behind - 1];
        if (w.abgesetztAm == 0 || s < w.abgesetztAm || (i > 0 && m_sow.gruppen[i - 1] >= w.abgesetztAm)) return;
        Fall fall{Ereignis::Belegung, s, s - w.abgesetztAm, 1, w.abgesetztAm, &w};
        if (fall.numerator <= Frist::Absetzbelegung) return m_sink.count(Kz::AbsetzBelegTage, fall);
        m_sink.leaveOut(Kz::AbsetzBelegTage, fall);
    }

    /// Hands on the days of pregnancy and of suckling, as spans, latest first; those that end before `von` are left
    /// out.
    template <class Take>
    void productive(qint32 von, qint32 bis, const Take& take) const {
        size_t i = firstFrom(m_sow.wuerfe, bis + 1);
        const qint32 service = latestService(bis);
        if (service != 0 && bis - service <= Frist::Offen && !m_sow.gone(bis) &&
            (i == 0 || m_sow.wuerfe[i - 1].tag <= service) && !foundEmpty(service, bis))
            take(service + 1, bis);
        while (i-- > 0) {
            const Wurf& w = m_sow.wuerfe[i];
            const bool weaned = w.abgesetztAm != 0 && w.abgesetztAm <= bis;
            take(w.tag + 1, weaned ? w.abgesetztAm : std::min(bis, w.tag + Frist::Saeugen));
            if (w.belegtAm != 0) take(w.belegtAm + 1, w.tag);
            if (w.tag < von - Frist::Saeugen) break;  // what is earlier has ended by then
        }
    }

    qint32 latestService(qint32 bis) const {
        const size_t behind = firstFrom(m_sow.gruppen, bis + 1);
        return behind == 0 ? 0 : m_sow.gruppen[behind - 1];
    }

    bool foundEmpty(qint32 after, qint32 bis) const {
        const size_t i = firstFrom(m_sow.nichtTragend, after + 1);
        return i < m_sow.nichtTragend.size() && m_sow.nichtTragend[i] <= bis;
    }

    /// The days that lie in none of the spans, first to last.
    void gaps(Zeitraum days, qint32 bis) {
        m_spans.clear();
        productive(days.von, bis, [&](qint32 first, qint32 last) {
            if (last >= days.von && first <= days.bis && first <= last) m_spans.push_back({first, last});
        });
        std::sort(m_spans.begin(), m_spans.end(), [](Zeitraum a, Zeitraum b) { return a.von < b.von; });
        qint32 day = days.von;
        for (const Zeitraum span : m_spans) {
            if (span.von > day) idle({day, std::min(span.von - 1, days.bis)}, bis);
            day = std::max(day, span.bis + 1);
        }
        if (day <= days.bis) idle({day, days.bis}, bis);
    }

    /// Tells days that are not productive by what comes next: a service, or that the sow goes, or nothing yet.
    void idle(Zeitraum gap, qint32 bis) {
        while (gap.von <= gap.bis) {
            const size_t next = firstFrom(m_sow.gruppen, gap.von);
            const bool served = next < m_sow.gruppen.size() && m_sow.gruppen[next] <= bis &&
                                (m_sow.abgang == 0 || m_sow.gruppen[next] <= m_sow.abgang);
            qint32 last = served ? std::min(gap.bis, m_sow.gruppen[next]) : gap.bis;
            Kz kind = m_sow.gone(bis) ? Kz::NptBisAbgang : Kz::NptOffen;
            if (served) kind = beforeService(gap.von, next, last);
            m_sink.idle(kind, {Ereignis::NichtproduktiveTage, gap.von, last - gap.von + 1, 0, last});
            gap.von = last + 1;
        }
    }

    /// Between two services of one heat and the next she has returned; after a litter she waits for the service.
    Kz beforeService(qint32 day, size_t next, qint32& last) const {
        if (next == 0) return Kz::NptBisBelegung;
        const size_t litter = firstFrom(m_sow.wuerfe, m_sow.gruppen[next - 1] + 1);
        if (litter == m_sow.wuerfe.size() || m_sow.wuerfe[litter].tag >= last) return Kz::NptBisUmrauschen;
        if (m_sow.wuerfe[litter].tag < day) return Kz::NptBisBelegung;
        last = m_sow.wuerfe[litter].tag;  // up to the day of the litter
        return Kz::NptBisUmrauschen;
    }

    const Sau& m_sow;
    const qint32 m_heute;
    Sink& m_sink;
    std::vector<Zeitraum> m_spans;
};

}  // namespace koben

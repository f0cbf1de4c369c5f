#include <algorithm>

#include "figures/Kennzahlenlauf.h"

namespace koben {
namespace {

bool ofDays(Kz figure) { return (parts(figure) & Teil::Tage) != 0; }

QString piglets(int count) { return QStringLiteral("%1 Ferkel").arg(count); }
QString since(const char* what, qint32 day, qint64 days) {
    return QStringLiteral("%1 am %2, %3 Tage").arg(QString::fromUtf8(what), Tag_als_Text(day)).arg(days);
}

QString name(Ereignis what) {
    switch (what) {
        case Ereignis::Wurf:
            return QStringLiteral("Ferkelung");
        case Ereignis::AbgesetzterWurf:
        case Ereignis::Absetzung:
            return QStringLiteral("Absetzung");
        case Ereignis::Belegung:
            return QStringLiteral("Belegung");
        case Ereignis::Sau:
            return QStringLiteral("Sau");
        case Ereignis::Produktionstage:
            return QStringLiteral("Produktionstage");
        case Ereignis::NichtproduktiveTage:
            return QStringLiteral("Nichtproduktive Tage");
    }
    return {};
}

QString ofLitter(Kz figure, const Fall& fall) {
    const Wurf& w = *fall.wurf;
    if (figure == Kz::Zwischenwurfzeit) return since("voriger Wurf", fall.bezug, fall.numerator);
    if (fall.was == Ereignis::AbgesetzterWurf)
        return QStringLiteral("Wurf am %1, lebend %2, abgesetzt %3")
            .arg(Tag_als_Text(w.tag))
            .arg(w.lebend)
            .arg(w.abgesetzt);
    return QStringLiteral("gesamt %1, lebend %2, tot %3").arg(w.gesamt).arg(w.lebend).arg(w.tot);
}

QString ofService(Kz figure, const Fall& fall) {
    if (figure == Kz::Remontierung) return QStringLiteral("erste Belegung");
    if (figure == Kz::AbsetzBelegTage) return since("abgesetzt", fall.bezug, fall.tag - fall.bezug);
    if (figure == Kz::Abferkelrate)
        return fall.wurf ? since("Wurf", fall.wurf->tag, fall.wurf->tag - fall.tag) : QStringLiteral("kein Wurf");
    return fall.bezug != 0 ? since("wieder belegt", fall.bezug, fall.bezug - fall.tag)
                           : QStringLiteral("nicht umgerauscht");
}

QString detail(Kz figure, const Fall& fall) {
    switch (fall.was) {
        case Ereignis::Wurf:
        case Ereignis::AbgesetzterWurf:
            return ofLitter(figure, fall);
        case Ereignis::Absetzung:
            return piglets(static_cast<int>(fall.numerator));
        case Ereignis::Belegung:
            return ofService(figure, fall);
        case Ereignis::Sau:
            return fall.bezug == 1 ? QStringLiteral("1 Wurf") : QStringLiteral("%1 Würfe").arg(fall.bezug);
        case Ereignis::Produktionstage:
        case Ereignis::NichtproduktiveTage:
            return QStringLiteral("bis %1").arg(Tag_als_Text(fall.bezug));
    }
    return {};
}

/// Keeps what belongs to one figure.
class Liste {
public:
    Liste(Kz figure, bool leftOut) : m_figure(figure), m_leftOut(leftOut) {}

    void count(Kz figure, const Fall& fall) {
        if (!m_leftOut && figure == m_figure) add(fall, kennzahl(figure).quotient && !ofDays(figure));
    }
    void leaveOut(Kz figure, const Fall& fall) {
        const bool ofReturns = m_figure >= Kz::Umrauscher && m_figure <= Kz::Umrauscher_38_46;
        if (!m_leftOut || figure != (ofReturns ? Kz::Umrauscher : m_figure)) return;
        add(fall, false);
        lines.back().numerator.reset();
        if (figure != Kz::AbsetzBelegTage) lines.back().einzelheit = QStringLiteral("noch offen");
    }
    void days(const Fall& fall) {
        if (m_leftOut || !ofDays(m_figure) || !kennzahl(m_figure).quotient) return;
        add(fall, true);
        lines.back().numerator.reset();
    }
    void idle(Kz figure, const Fall& fall) {
        if (m_leftOut || (figure != m_figure && m_figure != Kz::NptSauJahr)) return;
        add(fall, false);
        lines.back().einzelheit += QStringLiteral(", ") + QString::fromUtf8(kennzahl(figure).id).section(u'.', 1);
    }

    const Sau* sow = nullptr;
    std::vector<Beitrag> lines;

private:
    void add(const Fall& fall, bool quotient) {
        lines.push_back({sow, fall.tag, name(fall.was), detail(m_figure, fall), fall.numerator, {}});
        if (quotient) lines.back().denominator = fall.denominator;
    }

    const Kz m_figure;
    const bool m_leftOut;
};

std::vector<Beitrag> list(const Sauenbuch& book, Kz figure, Zeitraum period, bool leftOut) {
    period.bis = std::min(period.bis, book.heute());
    const unsigned needed = parts(figure);
    Liste sink(figure, leftOut);
    for (const Sau& sow : book.sauen()) {
        sink.sow = &sow;
        Sauenlauf walk(sow, book.heute(), sink);
        if (needed & Teil::Buchungen) walk.bookings(period);
        if (needed & Teil::Tage) walk.days(period, (needed & Teil::Npt) != 0);
        if (needed & Teil::Bestand) walk.stock(period.bis);
    }
    std::stable_sort(sink.lines.begin(), sink.lines.end(),
                     [](const Beitrag& a, const Beitrag& b) { return a.tag < b.tag; });
    return std::move(sink.lines);
}

}  // namespace

std::vector<Beitrag> Beitraege(const Sauenbuch& book, Kz figure, Zeitraum period) {
    return list(book, figure, period, false);
}

std::vector<Beitrag> Ausgelassene(const Sauenbuch& book, Kz figure, Zeitraum period) {
    return list(book, figure, period, true);
}

}  // namespace koben

#include "core/Wurfnummern.h"

#include <QDate>

namespace koben {
namespace {

struct Wurf {
    qint64 id;
    qint32 day;
    qint64 lifeBefore, yearBefore;
    bool open;  // a number is still missing
};

}  // namespace

Wurfnummern::Wurfnummern(const Database& db)
    : m_litters(
          db.prepare(QStringLiteral("select ID, Datum, LNr, LNrJahr from Ferkelung where Kennung = ? order by Datum"))),
      m_update(db.prepare(QStringLiteral("update Ferkelung set LNr = ?, LNrJahr = ? where ID = ?"))) {}

void Wurfnummern::number(qint64 animal) {
    std::vector<Wurf> litters;
    m_litters.bind({animal});
    while (m_litters.next())
        litters.push_back({m_litters.integer(0), m_litters.day(1), m_litters.integer(2), m_litters.integer(3),
                           m_litters.isNull(2) || m_litters.isNull(3)});
    int life = 1, inYear = 1, previousMark = -1;
    for (const Wurf& litter : litters) {
        // The last digit of the year alone tells a new year; a litter without a date has no digit.
        const int mark = litter.day == 0 ? -1 : QDate::fromJulianDay(litter.day).year() % 10;
        if (mark != previousMark) inYear = 1;
        previousMark = mark;
        if (litter.open || litter.lifeBefore != life || litter.yearBefore != inYear)
            m_update.run({life, inYear, litter.id});
        ++life;
        ++inYear;
    }
}

}  // namespace koben

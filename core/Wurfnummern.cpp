#include "core/Wurfnummern.h"

#include <QDate>
#include <algorithm>

namespace koben {
namespace {

struct Wurf {
    qint64 id;
    qint32 day;
    qint64 lifeBefore, yearBefore;
    bool open;  // a number is still missing
};

/// The numbers of an animal's litters, given out in the order of their days.
class Zaehlung {
public:
    void next(qint32 day) {
        // The last digit of the year alone tells a new year; a litter without a date has no digit.
        const int mark = day == 0 ? -1 : QDate::fromJulianDay(day).year() % 10;
        inYear = mark == std::exchange(m_mark, mark) ? inYear + 1 : 1;
        ++life;
    }
    qint64 life = 0, inYear = 0;

private:
    int m_mark = -2;
};

/// Which of two litters of a day comes first is left open.
bool numberedRight(std::vector<Wurf>& litters) {
    std::sort(litters.begin(), litters.end(), [](const Wurf& a, const Wurf& b) {
        return std::pair(a.day, a.lifeBefore) < std::pair(b.day, b.lifeBefore);
    });
    Zaehlung numbers;
    return std::all_of(litters.begin(), litters.end(), [&](const Wurf& litter) {
        numbers.next(litter.day);
        return !litter.open && litter.lifeBefore == numbers.life && litter.yearBefore == numbers.inYear;
    });
}

bool unnumbered(const std::vector<Wurf>& litters) {
    return std::all_of(litters.begin(), litters.end(),
                       [](const Wurf& litter) { return litter.open && litter.lifeBefore == 0; });
}

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
    Zaehlung numbers;
    for (const Wurf& litter : litters) {
        numbers.next(litter.day);
        if (litter.open || litter.lifeBefore != numbers.life || litter.yearBefore != numbers.inYear)
            m_update.run({numbers.life, numbers.inYear, litter.id});
    }
}

std::vector<qint64> misnumbered(const Database& db) {
    std::vector<qint64> found;
    std::vector<Wurf> litters;
    qint64 animal = 0;
    const auto judge = [&] {
        if (animal != 0 && !unnumbered(litters) && !numberedRight(litters)) found.push_back(animal);
        litters.clear();
    };
    Statement row = db.prepare(QStringLiteral(
        "select Kennung, ID, Datum, LNr, LNrJahr from Ferkelung where Kennung IS NOT NULL order by Kennung"));
    row.bind({});
    while (row.next()) {
        if (row.integer(0) != animal) judge();
        animal = row.integer(0);
        litters.push_back({row.integer(1), row.day(2), row.integer(3), row.integer(4), row.isNull(3) || row.isNull(4)});
    }
    judge();
    return found;
}

}  // namespace koben

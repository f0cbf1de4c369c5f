#pragma once
// Free animal numbers of a box: the box, a hyphen, a number counted from 1.
#include <QString>
#include <vector>

#include "store/Database.h"

namespace koben {

/// Gives the free numbers of one base in ascending order, gaps first. The taken ones are read once, in one pass over
/// the range of the base, so that a whole batch costs one query. A number given out counts as taken.
class FreieNummern {
public:
    FreieNummern(const Database& db, const QString& base);
    QString naechste();

private:
    QString m_base;
    std::vector<qint64> m_taken;  // ascending
    size_t m_at = 0;
    qint64 m_last = 0;
};

/// The first free number of a base.
QString Freie_Nummer(const Database& db, const QString& base);

}  // namespace koben

#pragma once
// The rules of the stock report: which animals belong to a group or to a special report on a day.
#include <QDate>
#include <QStringList>
#include <optional>

#include "store/Database.h"

namespace koben {

/// A group of animals as the options define it.
struct Bestandsgruppe {
    QString name, kind, unit, sex, served;
    std::optional<qint64> youngest, oldest;  ///< in units; without one of them any age belongs
    qint64 leastFarrowings = 0;
    Money value;

    QString ages() const;  ///< "Von 0 bis 99 Jahre"
    /// The animal's age on a day in the group's unit, with one decimal; never below 0.
    QString age(QDate born, QDate day) const;
    /// The condition on `Sauen` for the animals of the group. `inHerd`: only those in the herd on the day.
    QString condition(QDate day, bool inHerd) const;
};

/// The groups of these names, in their order; a name without a group is left out.
std::vector<Bestandsgruppe> Bestandsgruppen_lesen(const Database& db, const QStringList& names);

/// So many units (Tage, Wochen, Monate, Jahre) later; the end of a shorter month stands for a day that it lacks.
QDate Alter_addieren(QDate from, const QString& unit, qint64 count);

/// The condition of a special report by its number; "" for all animals. `onlyInHerd` is the day in question, invalid
/// where gone animals count too.
QString Sonderbericht(int number, QDate onlyInHerd);

/// How many animals meet each of the conditions ("" for all), by one pass over the animals. `go` is asked within it;
/// where it answers false there are no counts.
std::vector<qint64> Tiere_zaehlen(const Database& db, const QStringList& conditions,
                                  const std::function<bool(qint64)>& go = {});

}  // namespace koben

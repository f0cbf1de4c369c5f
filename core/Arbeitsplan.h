#pragma once
// The rules of the work plan: which kind of work falls due for which animal in a period, and what is due or overdue on
// one day. One pass over the animals in memory; the forms around it read the data and write the result.
#include <QHash>
#include <functional>
#include <vector>

#include "store/Database.h"

namespace koben {

/// The names of an animal's dates that the options offer.
QStringList Terminnamen();

/// Field of `Sauen` behind a date name of the options; "" for any other text, which leaves a comparison out.
QString get_feldname(QStringView date);

/// One kind of work; the dates are fields of `Sauen`, "" for none.
struct Arbeit {
    QString name;
    bool known = false;    ///< an option row of that name exists
    int from = 0, to = 0;  ///< days after the reference date
    QString reference;
    QString activeLater, activeEarlier;
    QString doneLater, doneEarlier;
    /// Whether bookings can say that it was done; other work is only ever due, never overdue.
    bool ends() const { return !doneLater.isEmpty() && !doneEarlier.isEmpty(); }
};

/// The kinds of work of the given names, in their order, each by the first option row of that name (case does not
/// count). `options` holds the rows of `Arbeitsplanoptionen`.
std::vector<Arbeit> Arbeiten_lesen(const Table& options, const QStringList& names);

/// Days by their Julian number, both ends included.
struct Planzeitraum {
    qint32 first = 0, last = 0;
    bool contains(qint64 day) const { return day >= first && day <= last; }
};

/// True where a window of days touches the period: it begins or ends within it, or spans it whole.
bool trifft(qint64 from, qint64 to, Planzeitraum period);

/// One row of the plan.
struct Faelligkeit {
    int animal;  ///< row of the table of animals
    int work;    ///< position among the kinds of work; `Verkaufssperre` for a meat sale block
    qint32 from, to;
};
constexpr int Verkaufssperre = -1;

/// Which animals the plan walks.
struct Tierauswahl {
    bool sowsOnly = false;
    bool withBlocks = false;  ///< sale blocks are listed, which any animal may have
};

/// The animals in stock that may have a row in the plan, with the fields that the plan needs. An animal without a
/// reference date that brings work into the period is left out already here.
Table Tiere_lesen(const Database& db, const std::vector<Arbeit>& works, Planzeitraum period, Tierauswahl choice);

/// True where there is any animal to walk, whether it has a row or not.
bool Tiere_vorhanden(const Database& db, Tierauswahl choice);

/// Called after each animal with the number of steps done: one for each animal and kind of work that was neither
/// inactive nor done. False gives the work up.
using Fortschritt = std::function<bool(int steps)>;

/// The plan, in the order of the animals and, for one animal, of the kinds of work, the sale block last.
std::vector<Faelligkeit> Arbeitsplan_berechnen(const Table& animals, const std::vector<Arbeit>& works,
                                               Planzeitraum period, const QHash<qint64, qint32>& blocks,
                                               const Fortschritt& progress);

/// What a day's work is: rows of the plan for that day alone, and work whose last day has passed without it being done.
struct Tagesarbeit {
    Table animals;
    std::vector<Faelligkeit> due, overdue;  ///< as the plan has them, by animal and kind of work
};

/// Of the animals in stock. Only animals with open work are read.
Tagesarbeit computeTagesarbeit(const Database& db, const std::vector<Arbeit>& works, qint32 day);

}  // namespace koben

#pragma once
// The ready-made groupings: animals or bookings counted and summed by what is written with them. Each is a row of data;
// its statement is the whole of the arithmetic.
#include <QStringList>
#include <functional>

#include "forms/Erklaerung.h"
#include "store/Database.h"

namespace koben {

/// What a cell shows of the rows behind it.
struct Gruppenwert {
    enum class Art { Anzahl, Summe, Mittel };
    Art art = Art::Anzahl;
    QString field;  ///< what is summed
    QString name;   ///< of the column
    QString text() const;
};

struct Gruppierung {
    QString caption;
    QString key, keyName;              ///< what the rows stand for, and its column where it is not a field
    std::vector<Gruppenwert> columns;  ///< behind the key
    Gruppenwert cell;                  ///< of a crosstab, a column for each value of `pivot`
    QString pivot;                     ///< "" for no crosstab
    QString table;                     ///< of the bookings, "" where the animals themselves are grouped
    bool inHerd = false;               ///< without the animals that have left
    QString list;                      ///< a statement that groups nothing, in place of all the others

    QString statement() const;
    QString source() const;  ///< from which rows, "from ... where ..."
};

/// Crosstabs over bookings and departures; a row for each value of `key`.
inline constexpr int Kreuztabellen = 21;
Gruppierung Kreuztabelle(int number, const QString& key);
/// Ages of the animals in the herd, in years or months; then the days of the piglets in their boxes.
Gruppierung Altersgruppierung(int number, const QString& pivot);
/// Costs of one kind of booking, or (5) the piglets sold.
Gruppierung Kostengruppierung(int number, const QString& key);
/// How many animals of the herd have each value of a field.
Gruppierung Tiergruppierung(int number);

/// Tells which bookings or animals stand behind a cell of a result. They are read when they are asked for.
std::function<std::optional<Explanation>(int row, int column)> Gruppierung_herleiten(const Database& db,
                                                                                     const Gruppierung& grouping,
                                                                                     const Table& result);

}  // namespace koben

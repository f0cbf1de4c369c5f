#pragma once
// The two axes of a chart: round numbers along the values, and which of many weeks, months or classes are named.
#include <QString>
#include <QStringList>
#include <vector>

namespace koben {

/// Round numbers, German style.
struct ValueAxis {
    double from = 0, to = 1, step = 1;
    int decimals = 0;
    std::vector<double> ticks() const;
    QString label(double value) const;  ///< "1.200", "12,5"
};

/// An axis that holds both values, with at most so many steps of 1, 2 or 5 times a power of ten; never finer than so
/// many decimals. `fromZero`: zero is on it, as the lengths of bars need.
ValueAxis valueAxis(double smallest, double largest, int mostSteps, int decimals, bool fromZero);

/// What runs along the other axis.
enum class Classes { Plain, Numbers, Weeks, Months };

/// A name at a class, and above it the year or nothing.
struct ClassLabel {
    int place;  ///< from 0
    QString text;
};
struct ClassAxis {
    std::vector<ClassLabel> labels;  ///< none touches another
    std::vector<ClassLabel> years;   ///< at the first class of each year; of weeks and months only
};
/// Names as the table has them ("2026-W53", "2026-12", "7", "Eber 4711"), each class `room` millimetres wide. Weeks and
/// months are named by number, at round distances, anew in each year.
ClassAxis classAxis(Classes kind, const QStringList& names, double room, double points);

/// The name of a class in words: "KW 53/2026", "Dezember 2026"; others as they are.
QString className(Classes kind, const QString& name);

}  // namespace koben

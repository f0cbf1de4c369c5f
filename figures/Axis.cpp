#include "figures/Axis.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

#include "output/TextWidth.h"

namespace koben {

namespace {

constexpr double gap = 1.2;  // millimetres between two names

const QLocale& german() {
    static const QLocale locale(QLocale::German, QLocale::Germany);
    return locale;
}

double roundStep(double least, double finest) {
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (power * factor >= least * (1 - 1e-9)) return std::max(power * factor, finest);
    return std::max(power * 10, finest);
}

}  // namespace

ValueAxis valueAxis(double smallest, double largest, int mostSteps, int decimals, bool fromZero) {
    if (fromZero) smallest = std::min(smallest, 0.0), largest = std::max(largest, 0.0);
    const double finest = std::pow(10.0, -decimals);
    const double span = std::max(largest - smallest, finest);
    ValueAxis axis;
    // Rounding both ends outward may take a step more than wanted.
    for (double least = span / std::max(mostSteps, 1);; least = axis.step * 1.01) {
        axis.step = roundStep(least, finest);
        axis.from = std::floor(smallest / axis.step + 1e-9) * axis.step;
        axis.to = std::ceil(largest / axis.step - 1e-9) * axis.step;
        if (axis.to - axis.from < axis.step / 2) axis.to = axis.from + axis.step;
        if (std::lround((axis.to - axis.from) / axis.step) <= std::max(mostSteps, 1) + 1) break;
    }
    axis.decimals = std::clamp(static_cast<int>(std::ceil(-std::log10(axis.step) - 1e-9)), 0, decimals);
    return axis;
}

std::vector<double> ValueAxis::ticks() const {
    std::vector<double> result;
    for (int i = 0; from + i * step < to + step / 2; ++i) result.push_back(from + i * step);
    return result;
}

QString ValueAxis::label(double value) const { return german().toString(value, 'f', decimals); }

namespace {

QString yearOf(Classes kind, const QString& name) {
    return kind == Classes::Weeks || kind == Classes::Months ? name.left(4) : QString();
}
/// The number of a week or month within its year.
int numberOf(const QString& name) { return name.section(u'-', 1).remove(u'W').toInt(); }

QString shortName(Classes kind, const QString& name) {
    if (kind == Classes::Weeks) return QString::number(numberOf(name));
    if (kind == Classes::Months) return german().standaloneMonthName(numberOf(name), QLocale::ShortFormat).left(3);
    return name;
}

/// Every how many classes may be named.
std::vector<int> distances(Classes kind) {
    if (kind == Classes::Weeks) return {1, 2, 4, 13, 26};
    if (kind == Classes::Months) return {1, 2, 3, 6};
    return {1, 2, 5, 10, 20, 50, 100};
}

/// Whether a class is named where every n-th is.
bool isNamed(Classes kind, const QStringList& names, int place, int every) {
    if (kind == Classes::Weeks || kind == Classes::Months) return (numberOf(names[place]) - 1) % every == 0;
    bool number = false;
    const int value = names[place].toInt(&number);
    return (kind == Classes::Numbers && number ? value : place) % every == 0;
}

double half(const ClassLabel& label, double points) { return textWidth(label.text, points) / 2; }

/// Drops what touches its neighbour: of a pair the second, but where a new year begins the one before it.
void makeRoom(std::vector<ClassLabel>& labels, const std::vector<ClassLabel>& years, double room, double points) {
    const auto begins = [&](int place) {
        return std::any_of(years.begin(), years.end(), [&](const ClassLabel& year) { return year.place == place; });
    };
    for (size_t i = 1; i < labels.size();) {
        const double apart = (labels[i].place - labels[i - 1].place) * room;
        const bool touch = apart < half(labels[i - 1], points) + half(labels[i], points) + gap;
        if (!touch) {
            ++i;
        } else if (begins(labels[i].place) && i > 1) {
            labels.erase(labels.begin() + static_cast<qsizetype>(i) - 1);
            --i;
        } else {
            labels.erase(labels.begin() + static_cast<qsizetype>(i));
        }
    }
}

}  // namespace

ClassAxis classAxis(Classes kind, const QStringList& names, double room, double points) {
    ClassAxis axis;
    for (int i = 0; i < names.size(); ++i)
        if (const QString year = yearOf(kind, names[i]);
            !year.isEmpty() && (i == 0 || year != yearOf(kind, names[i - 1])))
            axis.years.push_back({i, year});
    double widest = 0;
    for (const QString& name : names) widest = std::max(widest, textWidth(shortName(kind, name), points));
    for (const int every : distances(kind)) {
        axis.labels.clear();
        if (every * room < widest + gap && kind != Classes::Plain) continue;
        for (int i = 0; i < names.size(); ++i)
            if (isNamed(kind, names, i, every)) axis.labels.push_back({i, shortName(kind, names[i])});
        break;
    }
    makeRoom(axis.labels, axis.years, room, points);
    // The first of the years may begin late in it and have no room before the next.
    for (size_t i = 0; i + 1 < axis.years.size();) {
        const double apart = (axis.years[i + 1].place - axis.years[i].place) * room;
        if (apart < textWidth(axis.years[i].text, points) + gap)
            axis.years.erase(axis.years.begin() + static_cast<qsizetype>(i == 0 ? 0 : i + 1));
        else
            ++i;
    }
    return axis;
}

QString className(Classes kind, const QString& name) {
    if (kind == Classes::Weeks) return QStringLiteral("KW %1/%2").arg(numberOf(name)).arg(name.left(4));
    if (kind == Classes::Months) return german().standaloneMonthName(numberOf(name)) + u' ' + name.left(4);
    return name;
}

}  // namespace koben

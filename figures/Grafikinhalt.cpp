#include "figures/Grafikinhalt.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

std::shared_ptr<const Sauenbuch> bookFor(const Grafikauftrag& order) {
    constexpr int rollingYear = 366;  // from the first of the month eleven before
    return Sauenbuch_holen(order.db, order.heute, order.period.von - rollingYear);
}

QString periodCondition(const Grafikauftrag& order) {
    constexpr int most = 1000;  // days
    if (order.period.days() > most) return {};
    return QStringLiteral(" where Datum >= %1 and Datum <= %2")
        .arg(Sql_Datum(Tag_als_Text(order.period.von)), Sql_Datum(Tag_als_Text(order.period.bis)));
}

Value share(qint64 part, qint64 whole, int factor) {
    if (whole == 0) return {};
    const qint64 tenths = part * factor * 10;
    return static_cast<double>((2 * tenths + (tenths < 0 ? -whole : whole)) / (2 * whole)) / 10;
}

}  // namespace koben

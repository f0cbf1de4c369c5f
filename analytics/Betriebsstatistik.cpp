#include "analytics/Betriebsstatistik.h"

#include "core/PZ_Koben_Subs.h"
#include "core/Variablen.h"

namespace koben {

namespace {

constexpr int CaptionWidth = 45, ValueWidth = 10, Width = CaptionWidth + 1 + ValueWidth;

QString entry(const QString& caption, const QString& value) {
    return Text_links(caption, CaptionWidth) + u'|' + Text_rechts(value, ValueWidth);
}

/// Animals but piglets that were in the herd on the first and on the last day of a period, came, and went.
struct Bestandszahlen {
    double first = 0, last = 0, came = 0, went = 0;

    Bestandszahlen(const Database& db, const QString& from, const QString& to) {
        const auto stock = [](const QString& day) {
            return QStringLiteral("sum(iif(Zugangsdatum <= %1 and (Abgangsdatum > %1 or Abgangsdatum is null), 1, 0))")
                .arg(day);
        };
        const auto moved = [&](const char* field) {
            return QStringLiteral("sum(iif(%1 >= %2 and %1 <= %3, 1, 0))").arg(QString::fromUtf8(field), from, to);
        };
        const Table counted = db.table(QStringLiteral("select %1, %2, %3, %4 from Sauen where Art <> 'Ferkel'")
                                           .arg(stock(from), stock(to), moved("Zugangsdatum"), moved("Abgangsdatum")));
        const auto number = [&](int column) { return static_cast<double>(counted.integer(0, column)); };
        first = number(0), last = number(1), came = number(2), went = number(3);
    }
};

}  // namespace

QString Betriebsstatistik(const Database& db, const Grid& list, const QString& von, const QString& bis) {
    const QString rule(Width, u'-'), ends(Width, u'=');
    const int sums = list.rowCount(), means = sums - 1;
    QStringList lines{
        "Betriebsstatistik", "Zeitraum: " + von + " - " + bis, QStringLiteral("Anzahl Sauen: %1").arg(means - 1),
        QString(),           entry("Statistikart", "Wert"),    ends};
    for (const Kennwert& measure : Kennwerte_Sau()) {
        const int column = list.columnOf(QString::fromUtf8(measure.column));
        lines += entry(QString::fromUtf8(measure.caption), list.cell(measure.summed ? sums : means, column));
        if (measure.ruled) lines += rule;
    }
    if (!von.isEmpty() && !bis.isEmpty()) {
        lines += rule;
        const QString from = Sql_Datum(QString(von)), to = Sql_Datum(QString(bis));
        const auto rate = [&](const char* caption, double herd, double moved) {
            if (herd != 0 && moved != 0) lines += entry(QString::fromUtf8(caption), eine_Stelle(moved * 100 / herd));
        };
        const Bestandszahlen animals(db, from, to);
        rate("Remontierungsrate nach Aufstockung", animals.first, animals.went);
        rate("Remontierungsrate nach Abstockung", animals.last, animals.came);
    }
    lines += ends;
    return lines.join(Crlf) + Crlf;
}

}  // namespace koben

#include "analytics/Betriebsstatistik.h"

#include "core/PZ_Koben_Subs.h"
#include "core/Variablen.h"

namespace koben {

namespace {

constexpr int CaptionWidth = 45, ValueWidth = 10, Width = CaptionWidth + 1 + ValueWidth;

QString entry(const QString& caption, const QString& value) {
    return Text_links(caption, CaptionWidth) + u'|' + Text_rechts(value, ValueWidth);
}

/// Animals but piglets that were in the herd on a day, and those that came or went in a period.
double counted(const Database& db, const QString& condition) {
    return static_cast<double>(
        db.table("select count(*) as n from Sauen where Art <> 'Ferkel' and " + condition).integer(0, 0));
}

double stock(const Database& db, const QString& day) {
    return counted(db, QStringLiteral("Zugangsdatum <= %1 and (Abgangsdatum > %1 or Abgangsdatum is null)").arg(day));
}

double moved(const Database& db, const char* field, const QString& from, const QString& to) {
    return counted(db, QStringLiteral("%1 >= %2 and %1 <= %3").arg(QString::fromUtf8(field), from, to));
}

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
        const auto rate = [&](const char* caption, double herd, double animals) {
            if (herd != 0 && animals != 0)
                lines += entry(QString::fromUtf8(caption), eine_Stelle(animals * 100 / herd));
        };
        rate("Remontierungsrate nach Aufstockung", stock(db, from), moved(db, "Abgangsdatum", from, to));
        rate("Remontierungsrate nach Abstockung", stock(db, to), moved(db, "Zugangsdatum", from, to));
    }
    lines += ends;
    return lines.join(Crlf) + Crlf;
}

}  // namespace koben

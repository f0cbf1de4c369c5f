#include "core/Wartezeit.h"

#include "core/PZ_Koben_Subs.h"
#include "core/Variablen.h"

namespace koben {

QString Wartezeit_pruefen(const Database& db, qint64 kennung, const QString& nummer, const QString& verkaufsdatum) {
    const Recordset treatment =
        db.open(QStringLiteral("select top 1 * from Behandlung where Kennung = %1 and Wartezeit_Datum >= %2 order by "
                               "Wartezeit_Datum DESC")
                    .arg(kennung)
                    .arg(Sql_Datum(QString(verkaufsdatum))));
    if (treatment.recordCount() == 0) return {};
    const QString until = Datum_als_Anzeige(treatment.value(u"Wartezeit_Datum").toDate());
    return QStringLiteral("ACHTUNG!!!") + Crlf + Crlf + QStringLiteral("Sie haben beim Tier ") + nummer +
           QStringLiteral(" das Verkaufsdatum ") + verkaufsdatum +
           QStringLiteral(
               " eingetragen. Laut den Medizingaben liegt für das Tier eine Schlacht-/Verkaufssperre bis "
               "zum ") +
           until + QStringLiteral(" vor.");
}

QHash<qint64, qint32> Wartezeiten_lesen(const Database& db, qint32 first) {
    // Only a block that still lasts counts, so earlier days need not be grouped.
    const QString since = Sql_Datum(Datum_als_Anzeige(QDate::fromJulianDay(first)));
    const Table rows = db.table(QStringLiteral("select Kennung, max(Wartezeit_Datum) as xdatum from Behandlung where "
                                               "Wartezeit_Datum >= %1 group by Kennung")
                                    .arg(since));
    QHash<qint64, qint32> blocks;
    blocks.reserve(rows.rowCount());
    for (int row = 0; row < rows.rowCount(); ++row)
        blocks.insert(rows.integer(row, 0), static_cast<qint32>(rows.integer(row, 1)));
    return blocks;
}

Table readWartezeittiere(const Database& db, const QString& heute) {
    return db.table(
        QStringLiteral(
            "select Nummer, Art, Gruppe, Stallnr, xdatum, Sauen.ID as tier, Abgangsdatum from Sauen inner join (select "
            "Kennung, max(Wartezeit_Datum) as xdatum from Behandlung where Wartezeit_Datum >= %1 group by Kennung) "
            "as sperre on Sauen.ID = sperre.Kennung order by Nummer")
            .arg(Sql_Datum(QString(heute))));
}

}  // namespace koben

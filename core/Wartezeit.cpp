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

}  // namespace koben

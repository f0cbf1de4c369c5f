#include "bookings/Ferkelbilanz.h"

#include "core/Buchungen.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

qint64 Muttersau_ID(const Database& db, const QString& number) {
    if (number.isEmpty()) return 0;
    const Table found =
        db.table(QStringLiteral("select Nummer, ID from Sauen where Nummer = '%1'").arg(Hochkomma_ersetzen(number)));
    return found.rowCount() == 0 ? 0 : found.integer(0, 1);
}

qint64 Ferkelrest(const Database& db, qint64 sow) {
    const auto sum = [&](const char* field, Buchungsart art) {
        return db
            .table(QStringLiteral("select sum(%1) as summeferkel from %2 where Kennung = %3")
                       .arg(QString::fromUtf8(field), QString::fromUtf8(angaben(art).table))
                       .arg(sow))
            .integer(0, 0);
    };
    qint64 rest = sum("Ferkel_Lebendig", Buchungsart::Ferkelung);
    for (const Buchungsart art : {Buchungsart::Verluste, Buchungsart::Ferkelverkauf})
        rest -= sum(angaben(art).taken, art);
    return rest;
}

bool Ferkelrest_bestaetigt(Koben& koben, double rest, const QString& sow) {
    return rest >= 0 ||
           koben.yesNo(QStringLiteral("Lt. den aktuellen Dateneingaben ist die Summe der Ferkel (Lebendzugang - "
                                      "Verluste - Verkauf) bei der Sau ") +
                       sow + QStringLiteral(" auf ") + Value(rest).toText() + QStringLiteral(" (also unter 0).") +
                       Crlf + Crlf + QStringLiteral("Soll die Buchung trotzdem gespeichert werden?"));
}

}  // namespace koben

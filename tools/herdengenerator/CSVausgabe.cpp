// Writes a herd as the file that the import takes.
#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"
#include "tools/herdengenerator/Ausgabe.h"

namespace koben {
namespace {

const char* const kopf =
    "Art (Sau, Eber, Mast, Ferkel);Saunummer;Gruppe;Stallnummer;Ohrmarke;Tätowierung;Geburtsdatum;Rasse;Zugangsdatum;"
    "Lieferant;Abgangsdatum;Abgangsgrund;Abnehmer";

QString tag(int julianDay) { return julianDay == 0 ? QString() : Datum_als_Anzeige(QDate::fromJulianDay(julianDay)); }

QString feld(QString text) {
    text.replace(u'`', u'\'');  // as people write it; the import stores the backtick
    if (text.contains(u';') || text.startsWith(u'"')) return u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"';
    return text;
}

QString zeile(const Tier& t) {
    const QString werte[] = {QString::fromUtf8(t.art),
                             t.nummer,
                             t.gruppe,
                             t.stallnr,
                             t.ohrmarke,
                             t.taetowierung,
                             tag(t.geburt),
                             t.rasse,
                             tag(t.zugang),
                             t.lieferant,
                             tag(t.abgang),
                             t.abgangsgrund,
                             t.abnehmer};
    QStringList felder;
    for (const QString& wert : werte) felder += feld(wert);
    return felder.join(u';') + Crlf;
}

}  // namespace

bool Herde_als_CSV(const Herde& herde, const QString& path) {
    const auto vorEinemJahr = static_cast<int>(herde.vorgaben.ende.addYears(-1).toJulianDay());
    QString text = QString::fromUtf8(kopf) + Crlf;
    for (const Tier& tier : herde.tiere)
        if (tier.abgang == 0 || tier.abgang > vorEinemJahr) text += zeile(tier);
    for (const Ferkel& ferkel : herde.ferkel)
        if (ferkel.abgang == 0) text += zeile(herde.alsTier(ferkel));
    return Textdatei_schreiben(path, text);
}

}  // namespace koben

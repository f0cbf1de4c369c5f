// Writes a herd as the file that the import takes.
#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"
#include "tools/herdengenerator/Output.h"

namespace koben {
namespace {

const char* const head =
    "Art (Sau, Eber, Mast, Ferkel);Saunummer;Gruppe;Stallnummer;Ohrmarke;Tätowierung;Geburtsdatum;Rasse;Zugangsdatum;"
    "Lieferant;Abgangsdatum;Abgangsgrund;Abnehmer";

QString tag(int julianDay) { return julianDay == 0 ? QString() : Datum_als_Anzeige(QDate::fromJulianDay(julianDay)); }

QString field(QString text) {
    text.replace(u'`', u'\'');  // as people write it; the import stores the backtick
    if (text.contains(u';') || text.startsWith(u'"')) return u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"';
    return text;
}

QString row(const Tier& t) {
    const QString values[] = {QString::fromUtf8(t.art),
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
    QStringList fields;
    for (const QString& value : values) fields += field(value);
    return fields.join(u';') + Crlf;
}

}  // namespace

bool writeCsv(const Herde& herde, const QString& path) {
    const auto aYearAgo = static_cast<int>(herde.vorgaben.ende.addYears(-1).toJulianDay());
    QString text = QString::fromUtf8(head) + Crlf;
    for (const Tier& tier : herde.tiere)
        if (tier.abgang == 0 || tier.abgang > aYearAgo) text += row(tier);
    for (const Ferkel& ferkel : herde.ferkel)
        if (ferkel.abgang == 0) text += row(herde.alsTier(ferkel));
    return Textdatei_schreiben(path, text);
}

}  // namespace koben

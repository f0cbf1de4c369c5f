#include "order/Bestellung.h"

#include <QFile>

#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

const QString CustomerFile = QStringLiteral("PO_Bestellschein.ko1");
constexpr qint64 LargestFile = 64 * 1024;
constexpr qsizetype LongestLine = 100;

/// "19", "7,5"
QString rateText(int hundredths) {
    QString text = Betragstext({hundredths * 100});
    while (text.endsWith(u'0')) text.chop(1);
    return text.endsWith(u',') ? text.chopped(1) : text;
}

}  // namespace

Kunde Kunde::read(const QString& folder) {
    Kunde kunde;
    QFile file(folder + CustomerFile);
    if (!file.open(QIODevice::ReadOnly)) return kunde;
    const QStringList lines = ausWindows1252(file.read(LargestFile)).split(u'\n');
    for (int i = 0; i < Angaben && i < lines.size(); ++i)
        kunde[i] = withoutControls(lines[i]).trimmed().left(LongestLine);
    return kunde;
}

bool Kunde::write(const QString& folder) const {
    QString text;
    for (const QString& angabe : angaben) text += angabe + QStringLiteral("\r\n");
    return Textdatei_schreiben(folder + CustomerFile, text);
}

QStringList Kunde::anschrift() const {
    QStringList lines{angaben[Betrieb], angaben[Name], angaben[Strasse],
                      (angaben[Plz] + u' ' + angaben[Ort]).trimmed()};
    lines.removeAll(QString());
    return lines;
}

Money Bestellung::netto() const {
    Money sum;
    for (const Position& position : positionen) sum.tenThousandths += position.summe().tenThousandths;
    return sum;
}

Money Bestellung::steuer() const {
    const qint64 cents = netto().tenThousandths / 100;
    return {(cents * steuersatz.value_or(0) + 5'000) / 10'000 * 100};
}

std::vector<std::pair<QString, Money>> Bestellung::summen() const {
    if (!steuersatz) return {{QStringLiteral("Gesamtbetrag in Euro"), netto()}};
    return {{QStringLiteral("Summe ohne Umsatzsteuer in Euro"), netto()},
            {QStringLiteral("Umsatzsteuer %1 %").arg(rateText(*steuersatz)), steuer()},
            {QStringLiteral("Gesamtbetrag in Euro"), brutto()}};
}

QString Betragstext(Money amount) { return Betrag_als_Punkttext(amount).replace(u'.', u','); }

}  // namespace koben

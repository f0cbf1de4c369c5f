#include "order/Preisliste.h"

#include <algorithm>

#include "core/PZ_Koben_Subs.h"
#include "core/Textdatei.h"

namespace koben {

namespace {

constexpr qint64 LargestFile = 1024 * 1024;
constexpr size_t MostArticles = 500;
constexpr qsizetype LongestNumber = 15, LongestName = 60, LongestUnit = 12, LongestLine = 60;
constexpr qint64 Cent = 100, Euro = 10'000;  // of a Money
constexpr qint64 HighestPrice = 100'000 * Euro;

const QString Recipient = QStringLiteral("Empfänger:");
const QString Rate = QStringLiteral("Umsatzsteuer:");

/// Why a line counts for nothing.
struct Fault {
    QString reason;
};

void demandText(const QString& text, const char* what, qsizetype longest) {
    const QString name = QString::fromUtf8(what);
    if (text.isEmpty()) throw Fault{name + QStringLiteral(" fehlt")};
    if (text.size() > longest) throw Fault{QStringLiteral("%1 ist länger als %2 Zeichen").arg(name).arg(longest)};
}

Money priceOf(const QString& text) {
    const auto price = Betrag_lesen(text);
    if (!price) throw Fault{QStringLiteral("der Preis „%1“ ist kein Betrag").arg(text.left(20))};
    if (price->tenThousandths < 0) throw Fault{QStringLiteral("der Preis ist kleiner als 0")};
    if (price->tenThousandths >= HighestPrice) throw Fault{QStringLiteral("der Preis ist zu hoch")};
    if (price->tenThousandths % Cent != 0)
        throw Fault{QStringLiteral("der Preis „%1“ hat mehr als zwei Stellen hinter dem Komma").arg(text.left(20))};
    return *price;
}

}  // namespace

Preisliste Preisliste::read(const QString& path, QString& trouble) {
    Preisliste list(readShippedText(path, LargestFile, trouble));
    if (trouble.isEmpty() && list.artikel.empty())
        trouble = list.faults.isEmpty()
                      ? QStringLiteral("weil sie keinen Artikel enthält.")
                      : QStringLiteral("weil sie keinen lesbaren Artikel enthält (%1).").arg(list.faults.first());
    return list;
}

Preisliste::Preisliste(const QString& text) {
    const QStringList lines = text.split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString line = lines[i].trimmed();
        if (line.isEmpty() || line.startsWith(u'#')) continue;
        try {
            take(line);
        } catch (const Fault& fault) {
            faults.append(QStringLiteral("Zeile %1: %2").arg(i + 1).arg(fault.reason));
        }
    }
}

void Preisliste::take(const QString& line) {
    if (line.contains(u';')) return takeArticle(line.split(u';'));
    if (line.startsWith(Rate)) return takeRate(line.mid(Rate.size()).remove(u'%').trimmed());
    if (!line.startsWith(Recipient))
        throw Fault{QStringLiteral("die Zeile ist weder ein Artikel noch „%1“ oder „%2“").arg(Recipient, Rate)};
    const QString name = line.mid(Recipient.size()).trimmed();
    demandText(name, "der Empfänger", LongestLine);
    if (empfaenger.size() >= 6) throw Fault{QStringLiteral("der Empfänger hat mehr als sechs Zeilen")};
    empfaenger.append(name);
}

void Preisliste::takeArticle(const QStringList& fields) {
    if (fields.size() != 4)
        throw Fault{QStringLiteral("%1 Angaben statt vier (Nummer;Artikel;Einheit;Preis)").arg(fields.size())};
    const Artikel next{fields[0].trimmed(), fields[1].trimmed(), fields[2].trimmed(), {}};
    demandText(next.nummer, "die Nummer", LongestNumber);
    demandText(next.name, "der Artikel", LongestName);
    demandText(next.einheit, "die Einheit", LongestUnit);
    const bool twice =
        std::any_of(artikel.begin(), artikel.end(), [&](const Artikel& other) { return other.nummer == next.nummer; });
    if (twice) throw Fault{QStringLiteral("die Nummer %1 steht schon weiter oben").arg(next.nummer)};
    if (artikel.size() >= MostArticles) throw Fault{QStringLiteral("mehr als %1 Artikel").arg(MostArticles)};
    artikel.push_back({next.nummer, next.name, next.einheit, priceOf(fields[3].trimmed())});
}

void Preisliste::takeRate(const QString& text) {
    const auto rate = Betrag_lesen(text);
    if (!rate || rate->tenThousandths < 0 || rate->tenThousandths > 100 * Euro || rate->tenThousandths % Cent != 0)
        throw Fault{QStringLiteral("„%1“ ist kein Steuersatz in Prozent").arg(text.left(20))};
    steuersatz = static_cast<int>(rate->tenThousandths / Cent);
}

}  // namespace koben

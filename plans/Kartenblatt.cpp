// What stands on designed cards: the sows' facts, litters and remarks, read for many at once.
#include "plans/Kartenblatt.h"

#include <algorithm>
#include <array>

#include "core/Buchungen.h"
#include "core/PZ_Koben_Subs.h"
#include "core/Zyklus.h"
#include "plans/Sauenkarte.h"

namespace koben {

namespace {

/// A field of `Sauen` where `column` says so, else computed from the bookings.
struct Feld : Kartenfeld {
    const char* column = nullptr;
};
constexpr std::array<Feld, 18> Felder{{{{"stall", "Stall"}, "Stallnr"},
                                       {{"gruppe", "Gruppe"}, "Gruppe"},
                                       {{"zustand", "Zustand"}, "Status"},
                                       {{"belegung", "Letzte Belegung"}, "L_Belegung"},
                                       {{"eber", "Eber"}},
                                       {{"ferkelt", "Ferkelt am"}, "N_Ferkelung"},
                                       {{"würfe", "Würfe"}, "Anz_Ferkelungen"},
                                       {{"lebend", "Lebend je Wurf"}},
                                       {{"abgesetzt", "Abgesetzt je Wurf"}},
                                       {{"ferkelung", "Letzte Ferkelung"}, "L_Ferkelung"},
                                       {{"absetzung", "Letzte Absetzung"}, "L_Absetzung"},
                                       {{"nächste", "Nächste Belegung"}, "N_Belegung"},
                                       {{"kontrolle", "Tragend geprüft"}, "L_Trächtigkeit"},
                                       {{"rasse", "Rasse"}, "Rasse"},
                                       {{"geboren", "Geboren"}, "Geburtsdatum"},
                                       {{"ohrmarke", "Ohrmarke"}, "Ohrmarke"},
                                       {{"tätowierung", "Tätowierung"}, "Tätowierung"},
                                       {{"zugang", "Zugang"}, "Zugangsdatum"}}};
constexpr size_t ByDefault = 10;  // the first ones
constexpr int YearsOfHerd = 3;

QString mean(qint64 sum, size_t count) {
    return Zahl_formatieren(QString::number(static_cast<double>(sum) / static_cast<double>(count), 'f', 6), 1);
}

/// The means of the litters, as far as there are any.
void addMeans(Kartenblatt& card) {
    qint64 live = 0, weaned = 0;
    size_t weanings = 0;
    for (const auto& litter : card.wuerfe) {
        live += litter.lebend;
        if (litter.abgesetzt < 0) continue;
        weaned += litter.abgesetzt;
        ++weanings;
    }
    if (!card.wuerfe.empty()) card.fakten[QStringLiteral("lebend")] = mean(live, card.wuerfe.size());
    if (weanings > 0) card.fakten[QStringLiteral("abgesetzt")] = mean(weaned, weanings);
}

}  // namespace

std::span<const Kartenfeld> Kartenfelder() {
    static const std::vector<Kartenfeld> fields(Felder.begin(), Felder.end());
    return fields;
}

QString Kartenfeldname(const QString& id) {
    for (const Kartenfeld& field : Felder)
        if (id == QString::fromUtf8(field.id)) return QString::fromUtf8(field.caption);
    return {};
}

QStringList Kartenfelder_vorgabe() {
    QStringList ids;
    for (size_t i = 0; i < ByDefault; ++i) ids += QString::fromUtf8(Felder[i].id);
    return ids;
}

Kartenblaetter::Kartenblaetter(const Database& db, const QString& heute, const std::vector<qint64>& sows,
                               const std::function<bool()>& go) {
    m_cards.reserve(static_cast<qsizetype>(sows.size()));
    for (const qint64 id : sows) m_cards.insert(id, {});
    readSows(db, sows);
    readLitters(db, sows, [&](qint64) { return go(); });
    if (go()) readRemarks(db, sows, go);
    if (go()) readHerd(db, heute);
}

void Kartenblaetter::readSows(const Database& db, const std::vector<qint64>& sows) {
    QStringList columns{QStringLiteral("ID"), QStringLiteral("Nummer"), QStringLiteral("Infos")};
    for (const Feld& field : Felder)
        if (field.column) columns += QString::fromUtf8(field.column);
    const Table rows = db.table(QStringLiteral("select %1 from Sauen where %2")
                                    .arg(columns.join(u','), Kartensauen(QStringLiteral("ID"), sows)));
    for (int row = 0; row < rows.rowCount(); ++row) {
        const auto card = m_cards.find(rows.integer(row, 0));
        if (card == m_cards.end()) continue;
        card->nummer = Hochkomma_ersetzen(rows.text(row, 1));
        if (const QString infos = Hochkomma_ersetzen(rows.text(row, 2)); !infos.isEmpty())
            card->bemerkungen.push_back({{}, {}, infos});
        int column = 2;
        for (const Feld& field : Felder) {
            if (!field.column) continue;
            QString text = Hochkomma_ersetzen(rows.text(row, ++column));
            if (field.column == QByteArray("Status")) text = Statuswort(statusOf(text));
            if (!text.isEmpty()) card->fakten[QString::fromUtf8(field.id)] = text;
        }
    }
}

void Kartenblaetter::readLitters(const Database& db, const std::vector<qint64>& sows,
                                 const std::function<bool(qint64)>& go) {
    const Kartenbuchungen bookings(db, sows, go);
    for (auto card = m_cards.begin(); card != m_cards.end(); ++card) {
        const Kartenbuchungen::Bookings& of = bookings.of(card.key());
        if (!of.services.empty() && !of.services.back().boar.isEmpty())
            card->fakten[QStringLiteral("eber")] = of.services.back().boar;
        for (const auto& farrowing : of.farrowings) {
            const int counted = static_cast<int>(card->wuerfe.size()) + 1;
            const int number = farrowing.litter.toInt();
            card->wuerfe.push_back({.nummer = number > 0 ? number : counted,
                                    .tag = farrowing.day,
                                    .lebend = farrowing.live.toInt(),
                                    .tot = farrowing.dead.toInt()});
        }
        for (const auto& weaning : of.weanings) {
            const auto later = std::find_if(card->wuerfe.begin(), card->wuerfe.end(),
                                            [&](const auto& litter) { return litter.tag >= weaning.day; });
            if (later == card->wuerfe.begin()) continue;
            int& weaned = std::prev(later)->abgesetzt;
            weaned = std::max(weaned, 0) + weaning.piglets.toInt();
        }
        addMeans(*card);
    }
}

void Kartenblaetter::readRemarks(const Database& db, const std::vector<qint64>& sows, const std::function<bool()>& go) {
    for (const Artangaben& kind : Buchungsarten) {
        if (!go()) return;
        if (!QByteArray(kind.texts).contains("Bemerkung")) continue;
        const Table rows =
            db.table(QStringLiteral("select Kennung, Datum, Bemerkung from %1 where %2 and Bemerkung <> "
                                    "''")
                         .arg(QString::fromUtf8(kind.table), Kartensauen(QStringLiteral("Kennung"), sows)));
        for (int row = 0; row < rows.rowCount(); ++row)
            if (const auto card = m_cards.find(rows.integer(row, 0)); card != m_cards.end())
                card->bemerkungen.push_back({rows.value(row, 1).toDate(), QString::fromUtf8(kind.caption),
                                             Hochkomma_ersetzen(rows.text(row, 2))});
    }
    for (Kartenblatt& card : m_cards)
        std::stable_sort(card.bemerkungen.begin(), card.bemerkungen.end(), [](const auto& a, const auto& b) {
            return a.was.isEmpty() != b.was.isEmpty() ? a.was.isEmpty() : a.tag > b.tag;
        });
}

void Kartenblaetter::readHerd(const Database& db, const QString& heute) {
    const QDate since = Datum_aus_Text(heute).addYears(-YearsOfHerd);
    const Table rows = db.table(QStringLiteral("select LNr, count(*) as n, sum(Ferkel_Lebendig) as lebend from "
                                               "Ferkelung where LNr > 0 and Datum >= %1 group by LNr")
                                    .arg(Sql_Datum(Datum_als_Anzeige(since))));
    for (int row = 0; row < rows.rowCount(); ++row)
        m_herd[static_cast<int>(rows.integer(row, 0))] =
            static_cast<double>(rows.integer(row, 2)) / static_cast<double>(rows.integer(row, 1));
}

const Kartenblatt& Kartenblaetter::of(qint64 sow) const {
    static const Kartenblatt none;
    const auto found = m_cards.constFind(sow);
    return found == m_cards.constEnd() ? none : *found;
}

}  // namespace koben

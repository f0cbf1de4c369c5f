#include "stock/Bestandsregister.h"

#include <algorithm>

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

constexpr size_t RowsPerPage = 50;
constexpr int Share = Registerschritte / 5;  // of one reading

QString sqlDay(const QString& day) { return Sql_Datum(QString(day)); }

qint64 sum(const Database& db, const QString& select) { return db.table(select).integer(0, 0); }

/// Born alive and bought, less lost and sold, up to the day.
qint64 pigletsUpTo(const Database& db, const QString& day) {
    const QString upTo = QStringLiteral(" where Datum <= ") + sqlDay(day);
    return sum(db, "select sum(Ferkel_Lebendig) as summe from Ferkelung" + upTo) -
           sum(db, "select sum(Anzahl_Ferkel) as summe from Verluste" + upTo) +
           sum(db, "select sum(Anzahl_Einkauf) as summe from Ferkelverkauf" + upTo) -
           sum(db, "select sum(Anzahl_Verkauf) as summe from Ferkelverkauf" + upTo);
}

/// Reads movements and puts them in the order of their days.
class Gatherer {
public:
    Gatherer(const Database& db, const Registerzeit& period, Progress& progress)
        : m_db(db), m_period(period), m_progress(progress) {}

    /// Animals that came or went: `day` and `partner` name the fields.
    void animals(const QString& day, const QString& partner, bool arrival, bool added) {
        const QString from = QStringLiteral(" from Sauen where Art <> 'Ferkel' and ") + within(day);
        begin();
        const Table rows =
            added ? m_db.table(QStringLiteral("select %1, count(*) as Summe, Art, %2").arg(day, partner) + from +
                               QStringLiteral(" group by %1, Art, %2").arg(day, partner))
                  : m_db.table(QStringLiteral("select %1, 1 as Summe, Art, %2, Nummer, Ohrmarke").arg(day, partner) +
                               from + QStringLiteral(" order by ") + day);
        for (int row = 0; goesOn(row, rows); ++row) {
            const QString count = text(rows, row, 1);
            add(rows, row,
                {.in = arrival ? count : QString(),
                 .out = arrival ? QString() : count,
                 .kind = text(rows, row, 2),
                 .number = added ? QString() : text(rows, row, 4),
                 .earTag = added ? QString() : text(rows, row, 5),
                 .partner = text(rows, row, 3)});
        }
    }

    /// Piglets of one table of bookings; an empty field name leaves its column empty.
    void piglets(const QString& table, const QStringList& inOutPartner, const QString& remark) {
        begin();
        QStringList fields{QStringLiteral("Datum")};
        for (const QString& field : inOutPartner) fields += field.isEmpty() ? QStringLiteral("''") : field;
        const Table rows = m_db.table(QStringLiteral("select %1 from %2 where %3 order by Datum")
                                          .arg(fields.join(QStringLiteral(", ")), table, within("Datum")));
        for (int row = 0; goesOn(row, rows); ++row)
            add(rows, row,
                {.in = text(rows, row, 1),
                 .out = text(rows, row, 2),
                 .kind = QStringLiteral("Ferkel"),
                 .partner = text(rows, row, 3),
                 .remark = remark});
    }

    std::vector<Bestandsbewegung> inOrder() {
        std::stable_sort(m_movements.begin(), m_movements.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        std::vector<Bestandsbewegung> movements;
        movements.reserve(m_movements.size());
        for (auto& [day, movement] : m_movements) movements.push_back(std::move(movement));
        return movements;
    }

private:
    QString within(const QString& day) const {
        return QStringLiteral("%1 IS NOT NULL and %1 >= %2 and %1 <= %3")
            .arg(day, sqlDay(m_period.from), sqlDay(m_period.to));
    }
    void begin() { m_progress.step(Share * m_reads++); }
    bool goesOn(int row, const Table& rows) {
        if (row >= rows.rowCount()) return false;
        return m_progress.step(Share * (m_reads - 1) + static_cast<qint64>(row) * Share / rows.rowCount());
    }
    static QString text(const Table& rows, int row, int column) { return Hochkomma_ersetzen(rows.text(row, column)); }
    void add(const Table& rows, int row, Bestandsbewegung movement) {
        movement.day = text(rows, row, 0);
        m_movements.emplace_back(rows.integer(row, 0), std::move(movement));
    }

    const Database& m_db;
    const Registerzeit& m_period;
    Progress& m_progress;
    int m_reads = 0;
    std::vector<std::pair<qint64, Bestandsbewegung>> m_movements;  // with the Julian day
};

QString stockLine(const QString& day, const Registerbestand& stock) {
    const auto count = [](qint64 number) { return Text_rechts(QString::number(number), 5); };
    QString line = QStringLiteral("Gesamtbestand am %1:").arg(day) + count(stock.sows) + " Sauen," +
                   count(stock.boars) + " Eber," + count(stock.fattening) + " Mastsauen";
    if (stock.piglets) line += QStringLiteral(", %1 Ferkel").arg(*stock.piglets);
    return line;
}

QStringList pageHead(const Registerkopf& head, int page) {
    const QString titles = QStringLiteral(
        "DATUM       ZU  AB  ART     SAUNUMMER       OHRMARKE             LIEFERANT/ABNEHMER   BEMERKUNG");
    const QString indent(16, u' ');
    QStringList lines{"",
                      "",
                      QStringLiteral("Bestandsregister nach § 24 c VVVO für Schweine          Seite %1").arg(page),
                      "",
                      "Anschrift:      " + head.farm[0],
                      indent + head.farm[1],
                      indent + head.farm[2]};
    if (!head.farm[3].trimmed().isEmpty()) lines += "Betriebssitz:   " + head.farm[3];
    lines += "Betriebsnummer: " + head.farm[4];
    lines += {"", stockLine(head.period.from, head.before), stockLine(head.period.to, head.after)};
    lines += {"", "", titles, QString(titles.size(), u'-')};
    return lines;
}

QString movementLine(const Bestandsbewegung& m) {
    return Text_links(m.day, 11) + Text_rechts(m.in, 3) + Text_rechts(m.out, 4) + QStringLiteral("  ") +
           Text_links(m.kind, 8) + Text_links(m.number, 16) + Text_links(m.earTag, 21) + Text_links(m.partner, 21) +
           m.remark;
}

}  // namespace

Registerbestand Registerbestand_zaehlen(const Database& db, const QString& day, bool piglets) {
    const auto count = [&](const char* kind) {
        return sum(db, QStringLiteral("select count(*) as summe from Sauen where Art = '%1' and (Zugangsdatum IS NULL "
                                      "or Zugangsdatum <= %2) and (Abgangsdatum IS NULL or Abgangsdatum >= %2)")
                           .arg(QString::fromUtf8(kind), sqlDay(day)));
    };
    Registerbestand stock{.sows = count("Sau"), .boars = count("Eber"), .fattening = count("Mast"), .piglets = {}};
    if (piglets) stock.piglets = pigletsUpTo(db, day);
    return stock;
}

std::vector<Bestandsbewegung> Bestandsbewegungen_lesen(const Database& db, const Registerzeit& period, bool piglets,
                                                       bool added, Progress& progress) {
    Gatherer gatherer(db, period, progress);
    gatherer.animals("Zugangsdatum", "Lieferant", true, added);
    gatherer.animals("Abgangsdatum", "Abnehmer", false, added);
    if (piglets) {
        gatherer.piglets("Ferkelung", {"Ferkel_Gesamt", "Ferkel_Tot", ""}, "Ferkelung");
        gatherer.piglets("Verluste", {"", "Anzahl_Ferkel", ""}, "Verluste");
        gatherer.piglets("Ferkelverkauf", {"Anzahl_Einkauf", "Anzahl_Verkauf", "Kunde"}, "Ein- und Verkauf");
    }
    return gatherer.inOrder();
}

QString Bestandsregister_schreiben(const Registerkopf& head, const std::vector<Bestandsbewegung>& movements) {
    int page = 1;
    QString text = pageHead(head, page).join(Crlf) + Crlf;
    for (size_t i = 0; i < movements.size(); ++i) {
        text += movementLine(movements[i]) + Crlf;
        if ((i + 1) % RowsPerPage == 0 && i + 1 < movements.size())
            text += u'#' + Crlf + pageHead(head, ++page).join(Crlf) + Crlf;
    }
    return text;
}

}  // namespace koben

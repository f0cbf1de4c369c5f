#include "analytics/Herleitung.h"

#include <algorithm>
#include <set>

#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

QString dayText(qint32 julian) {
    return julian == 0 ? QStringLiteral("ohne Datum") : Datum_als_Anzeige(QDate::fromJulianDay(julian));
}

/// What one booking brings to some quantities of its table.
std::optional<double> partOf(const std::vector<Groesse>& quantities, Tabelle table, const Buchung& booking,
                             Buchungsauszug& bookings) {
    std::optional<double> sum;
    for (const Groesse quantity : quantities)
        if (art(quantity).table == table)
            if (const auto value = part(quantity, booking, bookings)) sum = sum.value_or(0) + *value;
    return sum;
}

bool onlyChosen(const std::vector<Groesse>& quantities) {
    return std::all_of(quantities.begin(), quantities.end(), [](Groesse q) { return art(q).chosen; });
}

Value numberOf(const std::optional<double>& part) { return part ? Value(*part) : Value(); }

}  // namespace

QString Herleitung::nummer(qint64 id) {
    const auto known = m_numbers.constFind(id);
    if (known != m_numbers.constEnd()) return *known;
    Statement row = m_db.prepare("select Nummer from Sauen where ID = ?");
    row.bind({id});
    return *m_numbers.insert(id, row.next() ? Hochkomma_ersetzen(row.text(0)) : QString());
}

Herleitungszeile Herleitung::line(const Buchung& booking, const QString& name) {
    return {nummer(booking.kennung), booking.kennung, booking.day, name, {}, {}, {}};
}

void Herleitung::addParts(const std::vector<Groesse>& numerator, const std::vector<Groesse>& denominator,
                          Buchungsauszug& bookings, const std::function<bool(const Buchung&)>& mine) {
    std::vector<Groesse> all = numerator;
    all.insert(all.end(), denominator.begin(), denominator.end());
    std::set<Tabelle> tables;
    for (const Groesse quantity : all) tables.insert(art(quantity).table);
    const bool chosen = onlyChosen(all);
    for (const Tabelle table : tables)
        for (const Buchung& booking : bookings.rows(table)) {
            if (!mine(booking)) continue;
            Herleitungszeile added = line(booking, Buchungsname(table));
            added.numerator = partOf(numerator, table, booking, bookings);
            added.denominator = partOf(denominator, table, booking, bookings);
            if (chosen && added.numerator.value_or(0) == 0 && added.denominator.value_or(0) == 0) continue;
            m_lines.push_back(added);
        }
}

void Herleitung::add(const Formel& formel, Buchungsauszug& bookings, const std::function<bool(const Buchung&)>& mine,
                     const Zellenlage& from) {
    switch (formel.kind) {
        case Formel::Fehlt:
        case Formel::Strich:
            return;
        case Formel::Abstand: {
            const Groessenart& kind = art(formel.of[0]);
            for (const Buchung& booking : bookings.rows(kind.table)) {
                if (!mine(booking)) continue;
                Herleitungszeile added = line(booking, Buchungsname(kind.table));
                const qint32 before = bookings.before(*kind.since, booking.place, booking.day);
                added.einzelheit = before == 0 ? "ohne frühere " + Buchungsname(*kind.since) + ", nicht gezählt"
                                               : Buchungsname(*kind.since) + " am " + dayText(before);
                if (before != 0) added.numerator = booking.day - before, added.denominator = 1;
                m_lines.push_back(added);
            }
            return;
        }
        case Formel::Bestand:
            return addStock(from);
        case Formel::JeJahr:
            return addPerYear(formel.of[0], bookings, from);
        case Formel::Zunahme:
            return addGain(bookings, mine, from);
        case Formel::Erste:
        case Formel::Letzte: {
            const Summe& all = from.sum(formel.of[0]);
            const qint32 day = formel.kind == Formel::Erste ? all.first : all.last;
            for (const Buchung& booking : bookings.rows(art(formel.of[0]).table))
                if (mine(booking) && booking.day == day)
                    m_lines.push_back(line(booking, Buchungsname(Tabelle::Deckung)));
            return;
        }
        case Formel::JeMonat:
        case Formel::JeZwoelftel:
            addParts(formel.of, {}, bookings, mine);
            if (const auto months = berechnen(formel, from).denominator)
                m_lines.push_back({Value(),
                                   0,
                                   0,
                                   QString(),
                                   formel.kind == Formel::JeMonat
                                       ? "Kalendermonate von der ersten bis zur letzten Belegung"
                                       : "Monate des Jahres",
                                   {},
                                   months});
            return;
        default:
            addParts({formel.of[0]}, {formel.of.begin() + 1, formel.of.end()}, bookings, mine);
    }
}

/// Where the stored figure is not that of the bookings, a line says by how much.
void Herleitung::balance(double stored, size_t first, const Tier& tier) {
    for (size_t i = first; i < m_lines.size(); ++i) stored -= m_lines[i].numerator.value_or(0);
    if (stored != 0)
        m_lines.push_back(
            {tier.nummer, tier.id, 0, "Sau", "Unterschied des gespeicherten Werts zu den Buchungen", stored, {}});
}

void Herleitung::addStock(const Zellenlage& from) {
    const Tierliste animal(m_db, QStringLiteral("ID = %1").arg(from.tier->id));
    Buchungsauszug life(m_db, animal, {.tier = from.tier->id});
    qint32 last = 0;
    for (const Buchung& farrowing : life.rows(Tabelle::Ferkelung)) last = std::max(last, farrowing.day);
    for (const Buchung& service : life.rows(Tabelle::Belegung))
        if (last == 0 || service.day >= last) {
            m_lines.push_back(line(service, Buchungsname(Tabelle::Belegung)));
            m_lines.back().numerator = 1;
        }
    balance(from.tier->belegungen.toDouble(), 0, *from.tier);
}

void Herleitung::addPerYear(Groesse quantity, Buchungsauszug& bookings, const Zellenlage& from) {
    const Tierliste animal(m_db, QStringLiteral("ID = %1").arg(from.tier->id));
    Buchungsauszug life(m_db, animal, {.tier = from.tier->id});
    addParts({quantity}, {}, life, [](const Buchung&) { return true; });
    balance(static_cast<double>(quantity == Groesse::Ferkel ? from.tier->ferkel : from.tier->ferkelungen), 0,
            *from.tier);
    Summe services, farrowings;
    for (const Buchung& booking : bookings.rows(Tabelle::Belegung)) services.add(booking.day, {});
    for (const Buchung& booking : bookings.rows(Tabelle::Ferkelung)) farrowings.add(booking.day, {});
    if (services.undated || services.first == 0 || farrowings.last <= services.first) return;
    m_lines.push_back({from.tier->nummer,
                       from.tier->id,
                       farrowings.last,
                       "Ferkelung",
                       "letzte; erste Belegung am " + dayText(services.first),
                       {},
                       static_cast<double>(farrowings.last - services.first)});
    m_lines.push_back({from.tier->nummer,
                       from.tier->id,
                       0,
                       "Sau",
                       "Tage von der Ferkelung bis zur Belegung lt. Einstellungen",
                       {},
                       static_cast<double>(from.zyklustage)});
}

/// The denominator is a product: piglets and days of each weaning stand in words.
void Herleitung::addGain(Buchungsauszug& bookings, const std::function<bool(const Buchung&)>& mine,
                         const Zellenlage& from) {
    constexpr int gramsPerKilo = 1000;
    for (const Buchung& weaning : bookings.rows(Tabelle::Absetzung)) {
        if (!mine(weaning)) continue;
        Herleitungszeile added = line(weaning, Buchungsname(Tabelle::Absetzung));
        const auto days = part(Groesse::Saeugezeit, weaning, bookings);
        const double piglets = weaning.amounts[0], weight = weaning.amounts[1];
        added.einzelheit = QStringLiteral("%1 Ferkel, %2 kg, %3 Säugetage")
                               .arg(Zahlentext(piglets), Zahlentext(weight), Zahlentext(days.value_or(0)));
        added.numerator = weight * gramsPerKilo - from.geburtsgewicht * piglets;
        m_lines.push_back(added);
    }
    const double piglets = from.sum(Groesse::Abgesetzt).amount, days = from.sum(Groesse::Saeugezeit).amount;
    m_lines.push_back({from.tier->nummer,
                       from.tier->id,
                       0,
                       "Sau",
                       QStringLiteral("%1 Ferkel mal %2 Säugetage").arg(Zahlentext(piglets), Zahlentext(days)),
                       {},
                       piglets * days});
}

Explanation Herleitung::told(const QString& sentence, const Zelle& cell, const QString& shown) {
    Explanation result{.sentence = sentence};
    const bool quotient = cell.numerator || cell.denominator;
    if (cell.numerator) result.numerator = Zahlentext(*cell.numerator);
    if (cell.denominator) result.denominator = Zahlentext(*cell.denominator);
    if (!shown.isEmpty()) result.value = shown;
    const auto column = [&](const char* title, Align align, Sort sort) {
        result.columns.push_back({.key = QString::fromUtf8(title).toLower(),
                                  .title = QString::fromUtf8(title),
                                  .align = align,
                                  .sort = sort});
    };
    column("Nummer", Align::Left, Sort::Text);
    column("Datum", Align::Left, Sort::Date);
    column("Buchung", Align::Left, Sort::Text);
    column("Einzelheiten", Align::Left, Sort::Text);
    column(quotient ? "Zähler" : "Wert", Align::Right, Sort::Number);
    if (quotient) column("Nenner", Align::Right, Sort::Number);
    std::stable_sort(m_lines.begin(), m_lines.end(),
                     [](const Herleitungszeile& a, const Herleitungszeile& b) { return a.day < b.day; });
    for (const Herleitungszeile& line : m_lines) {
        Grid::Row cells{line.wer, line.day == 0 ? Value() : Value(QDate::fromJulianDay(line.day)), line.buchung,
                        line.einzelheit, numberOf(line.numerator)};
        if (quotient) cells.append(numberOf(line.denominator));
        result.lines.push_back({std::move(cells), line.tier});
    }
    return result;
}

}  // namespace koben

#include "analytics/Deckungsbeitrag.h"

#include <algorithm>

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Item { Ferkelverkauf = 1, Ferkeleinkauf = 8, Futter = 9 };

constexpr int rowsPerQuestion = 4096;

QDate firstDay(int year) { return {year, 1, 1}; }
QDate lastDay(int year) { return {year, 12, 31}; }

float single(qint64 tenThousandths) { return static_cast<float>(static_cast<double>(tenThousandths) / 10000); }

}  // namespace

QString Betrag_mit_Waehrung(float amount) {
    static const QString nothing = QStringLiteral("0,00 €");
    if (amount == 0) return nothing;
    QString text = Zahl_formatieren(QString::number(static_cast<double>(amount), 'f', 6), 2);
    const qsizetype first = text.startsWith(u'-') ? 1 : 0;
    if (text.mid(first) == u"0,00") return nothing;
    for (qsizetype at = text.size() - 6; at > first; at -= 3) text.insert(at, u'.');
    return text + QStringLiteral(" €");
}

std::optional<Futterzeit> Futterzeit_ermitteln(QDate came, QDate left, int first, int last) {
    if (came.isValid() && came.year() > last) return {};
    if (left.isValid() && left.year() < first) return {};
    const bool there = !came.isValid() || came.year() < first, stays = !left.isValid() || left.year() > last;
    return Futterzeit{there ? firstDay(first) : came, stays ? lastDay(last) : left};
}

Deckungsbeitrag::Deckungsbeitrag(const Database& db, const Deckungsauswahl& choice, const Go& go)
    : m_db(db), m_choice(choice) {
    QString select =
        QStringLiteral("select Art, Nummer, Gruppe, Stallnr, Zugangsdatum, Geburtsdatum, Abgangsdatum, ID from Sauen");
    if (!choice.animals.isEmpty()) select += " where " + choice.animals;
    const auto animals = db.table(select + " order by ID", [&](qint64) { return !go || go(0); });
    m_whole = animals.has_value();
    if (m_whole) m_animals = *animals;
    if (choice.chosen[Futter]) readFed();
}

int Deckungsbeitrag::rowOf(qint64 wanted) const {
    int first = 0, behind = m_animals.rowCount();
    while (first < behind) {
        const int middle = first + (behind - first) / 2;
        id(middle) < wanted ? first = middle + 1 : behind = middle;
    }
    return first < m_animals.rowCount() && id(first) == wanted ? first : -1;
}

/// All amounts of a kind in these years, of one animal or (0) of everything; amounts of 0 are left out. A year ends
/// with the first moment of its last day, and so does a span; but the animals' own days belong to a span by their year.
void Deckungsbeitrag::read(int item, int from, int to, Zeit time, qint64 animal, bool details,
                           const std::function<bool(const Buchung&)>& each) const {
    const Posten& what = Postenliste[static_cast<size_t>(item)];
    const QString table = QString::fromUtf8(what.table), day = QString::fromUtf8(what.day),
                  amount = QString::fromUtf8(what.amount);
    const bool own = table == u"Sauen", byYear = time == Zeit::Jahre;
    const QString key = own ? QStringLiteral("ID") : QStringLiteral("Kennung");
    QString select =
        QStringLiteral("select %1 as tier, %2 as tag, %3 as betrag%4 from %5 where %3 <> 0 and %2 >= ? and %2 %6 ?")
            .arg(key, day, amount, details ? ", " + QString::fromUtf8(what.detail) + " as was" : QString(), table,
                 own && !byYear ? QStringLiteral("<") : QStringLiteral("<="));
    std::vector<Value> bounds{firstDay(from), own && !byYear ? firstDay(to + 1) : lastDay(to)};
    if (animal != 0) select += " and " + key + " = ?", bounds.emplace_back(animal);
    Statement statement = m_db.prepare(select);
    statement.bind(bounds);
    while (statement.next()) {
        const QDate date = QDate::fromJulianDay(statement.day(1));
        if (byYear && date.month() == 12 && date.day() == 31 && statement.value(1) != Value(date)) continue;
        if (!each({statement.integer(0), date, statement.integer(2), details ? statement.text(3) : QString()})) return;
    }
}

Betraege& Deckungsbeitrag::addUp(Betraege& amounts) const {
    float sum = 0;
    for (size_t i = 0; i < Postenzahl; ++i) sum = Postenliste[i].income ? sum + amounts[i] : sum - amounts[i];
    amounts[Endposten] = sum;
    return amounts;
}

int Deckungsbeitrag::numberedAnimals() const {
    int count = 0;
    for (int row = 0; row < m_animals.rowCount(); ++row) count += numbered(row);
    return count;
}

// --------------------------------------------------------------------------------------------------------------- feed

void Deckungsbeitrag::readFed() {
    const std::array<QString, 3> kinds{"Sau", "Eber", "Mast"};
    for (int row = 0; row < m_animals.rowCount(); ++row) {
        const auto kind = std::find(kinds.begin(), kinds.end(), Hochkomma_ersetzen(m_animals.text(row, 0)));
        if (kind == kinds.end()) continue;
        const QDate arrived = m_animals.value(row, 4).toDate();
        m_fed.push_back({row, m_choice.feed[static_cast<size_t>(kind - kinds.begin())],
                         arrived.isValid() ? arrived : m_animals.value(row, 5).toDate(),
                         m_animals.value(row, 6).toDate()});
    }
}

/// Of all animals, one after the other in their order: so the digits come out that a reader gets who adds them up.
float Deckungsbeitrag::feed(int year) const {
    float sum = 0;
    for (const Futtertier& animal : m_fed)
        if (const auto time = Futterzeit_ermitteln(animal.came, animal.left, year, year))
            sum += animal.lumpSum * time->share();
    return sum;
}

// --------------------------------------------------------------------------------------------------------------- rows

std::optional<std::vector<Deckungsbeitrag::Zeile>> Deckungsbeitrag::perYear(const Go& go) const {
    const int years = std::max(m_choice.to - m_choice.from + 1, 0);
    std::vector<Zeile> rows(static_cast<size_t>(years));
    for (int i = 0; i < years; ++i) rows[static_cast<size_t>(i)].year = m_choice.from + i;
    const int numbers = numberedAnimals();
    for (int item = 0; item < Futter && years > 0; ++item) {
        if (!go(item * 100 / Postenzahl)) return {};
        if (!m_choice.chosen[static_cast<size_t>(item)]) continue;
        std::vector<qint64> sums(rows.size()), strays(rows.size());
        int seen = 0;
        bool whole = true;
        read(item, m_choice.from, m_choice.to, Zeit::Jahre, 0, false, [&](const Buchung& booking) {
            const auto year = static_cast<size_t>(booking.day.year() - m_choice.from);
            if (booking.animal == 0) {
                strays[year] += booking.amount;
            } else if (const int row = rowOf(booking.animal); row >= 0 && numbered(row)) {
                sums[year] += booking.amount;
            }
            return ++seen % rowsPerQuestion != 0 || (whole = go(item * 100 / Postenzahl));
        });
        if (!whole) return {};
        for (size_t i = 0; i < rows.size(); ++i) {
            float& amount = rows[i].amounts[static_cast<size_t>(item)];
            if (item == Ferkeleinkauf) sums[i] += strays[i] * numbers;  // what was bought for no sow counts with each
            amount = single(sums[i]);
            if (item == Ferkelverkauf && m_choice.strays) amount += single(strays[i]);
        }
    }
    for (int i = 0; i < years; ++i) {
        Zeile& row = rows[static_cast<size_t>(i)];
        if (!go((Futter * years + i) * 100 / (Postenzahl * years))) return {};
        row.amounts[Futter] = feed(row.year);
        addUp(row.amounts);
    }
    return rows;
}

std::optional<std::vector<Deckungsbeitrag::Zeile>> Deckungsbeitrag::perAnimal(const Go& go) const {
    std::vector<Zeile> rows(static_cast<size_t>(m_animals.rowCount()));
    for (int item = 0; item < Futter; ++item) {
        if (!go(item * 100 / Postenzahl)) return {};
        if (!m_choice.chosen[static_cast<size_t>(item)] || m_choice.from > m_choice.to) continue;
        std::vector<qint64> sums(rows.size());
        int seen = 0;
        bool whole = true;
        read(item, m_choice.from, m_choice.to, Zeit::Spanne, rows.size() == 1 ? id(0) : 0, false,
             [&](const Buchung& booking) {
                 if (const int row = rowOf(booking.animal); row >= 0) sums[static_cast<size_t>(row)] += booking.amount;
                 return ++seen % rowsPerQuestion != 0 || (whole = go(item * 100 / Postenzahl));
             });
        if (!whole) return {};
        for (size_t i = 0; i < rows.size(); ++i) rows[i].amounts[static_cast<size_t>(item)] = single(sums[i]);
    }
    if (!go(Futter * 100 / Postenzahl)) return {};
    for (const Futtertier& animal : m_fed)
        if (const auto time = Futterzeit_ermitteln(animal.came, animal.left, m_choice.from, m_choice.to))
            rows[static_cast<size_t>(animal.row)].amounts[Futter] = animal.lumpSum * time->share();
    for (int row = 0; row < m_animals.rowCount(); ++row) {
        rows[static_cast<size_t>(row)].animal = id(row);
        addUp(rows[static_cast<size_t>(row)].amounts);
    }
    return rows;
}

// ------------------------------------------------------------------------------------------------------ what is behind

void Deckungsbeitrag::bookingsBehind(std::vector<Beleg>& found, int item, int year, int row) const {
    const int from = year ? year : m_choice.from, to = year ? year : m_choice.to;
    const int numbers = numberedAnimals();
    if (from > to) return;
    read(item, from, to, year ? Zeit::Jahre : Zeit::Spanne, year ? 0 : id(row), true, [&](const Buchung& booking) {
        Beleg beleg{item, -1, booking.day, Value(Money{booking.amount}), booking.detail};
        if (booking.animal != 0) {
            const int at = rowOf(booking.animal);
            if (at < 0 || (year && !numbered(at))) return true;
            beleg.row = at;
        } else if (item == Ferkeleinkauf && numbers > 0) {
            beleg.detail +=
                QStringLiteral(" (ohne Sau, je Tier einmal: %1 x %2)").arg(numbers).arg(beleg.amount.toText());
            beleg.amount = Value(Money{booking.amount * numbers});
        } else if (item == Ferkelverkauf && m_choice.strays) {
            beleg.detail += QStringLiteral(" (ohne Sau)");
        } else {
            return true;
        }
        found.push_back(beleg);
        return true;
    });
}

void Deckungsbeitrag::feedBehind(std::vector<Beleg>& found, int year, int row) const {
    for (const Futtertier& animal : m_fed) {
        if (!year && animal.row != row) continue;
        const auto time =
            Futterzeit_ermitteln(animal.came, animal.left, year ? year : m_choice.from, year ? year : m_choice.to);
        if (!time) continue;
        found.push_back({Futter, animal.row, time->from, Value(animal.lumpSum * time->share()),
                         QStringLiteral("bis %1: %2 Tage / 365 x %3")
                             .arg(Datum_als_Anzeige(time->to))
                             .arg(time->from.daysTo(time->to))
                             .arg(Betrag_mit_Waehrung(animal.lumpSum))});
    }
}

std::vector<Deckungsbeitrag::Beleg> Deckungsbeitrag::behind(int item, int year, int row) const {
    std::vector<Beleg> found;
    for (int i = 0; i < Postenzahl; ++i) {
        if (!m_choice.chosen[static_cast<size_t>(i)] || (item != Endposten && item != i)) continue;
        const size_t before = found.size();
        i == Futter ? feedBehind(found, year, row) : bookingsBehind(found, i, year, row);
        std::stable_sort(found.begin() + static_cast<std::ptrdiff_t>(before), found.end(),
                         [](const Beleg& a, const Beleg& b) { return a.day < b.day; });
        if (item != Endposten || Postenliste[static_cast<size_t>(i)].income) continue;
        for (size_t at = before; at < found.size(); ++at) {  // costs lessen the sum
            Value& amount = found[at].amount;
            amount = i == Futter ? Value(static_cast<float>(-amount.toDouble()))
                                 : Value(Money{-amount.toMoney().tenThousandths});
        }
    }
    return found;
}

}  // namespace koben

#include "analytics/Buchungsauszug.h"

#include <algorithm>
#include <cmath>

#include "core/PZ_Koben_Subs.h"
#include "store/Collation.h"

namespace koben {
namespace {

constexpr int Often = 4096;  // rows between two questions whether to go on
constexpr int Few = 500;     // animals whose bookings are looked up; those of more are found by reading all

/// A table, and what a booking of it counts for beside 1.
struct Source {
    const char* name;
    std::array<const char*, 4> amounts;
};
constexpr Source Sources[] = {
    {"Belegung", {}},
    {"Trächtigkeit", {"iif(Trächtig = 'J', 1, 0)", "iif(Trächtig = 'N', 1, 0)"}},
    {"Ferkelung", {"Ferkel_Gesamt", "Ferkel_Lebendig", "Ferkel_Tot", "nz(LNr, -99999)"}},
    {"Absetzung", {"Anzahl_Ferkel", "Anzahl_Ferkel * Stück_Gewicht_kg"}},
    {"Verluste", {"Anzahl_Ferkel"}},
    {"Verschiebung", {"iif(Anzahl_Ferkel > 0, Anzahl_Ferkel, 0)", "iif(Anzahl_Ferkel < 0, -Anzahl_Ferkel, 0)"}},
    {"Belegung", {}},
};

const Source& source(Tabelle table) { return Sources[static_cast<size_t>(table)]; }

/// A weight is kept in single precision and means the decimal number that was typed, its first seven digits.
double decimal(double single) {
    if (single == 0 || !std::isfinite(single)) return single;
    const double scale = std::pow(10.0, 6 - std::floor(std::log10(std::abs(single))));
    return std::round(single * scale) / scale;
}

double amountOf(const Statement& row, int column) {
    const Type type = row.field(column).type;
    if (type != Type::Single && type != Type::Double) return static_cast<double>(row.integer(column));
    return decimal(row.value(column).toDouble());
}

/// The checks of each sow in the order of entry: the day, and whether she was found pregnant.
using Checks = QHash<qint64, std::vector<std::pair<qint32, bool>>>;

/// The boars by number, as numbers are compared; the place of each in the list.
class Boars {
public:
    explicit Boars(const Tierliste& animals) {
        for (int i = 0; i < animals.count(); ++i) m_byKey[sortKey(animals[i].nummer)].push_back(i);
    }
    const std::vector<int>& of(const QString& number) {
        const auto known = m_byText.constFind(number);
        if (known != m_byText.constEnd()) return *known;
        return *m_byText.insert(number, m_byKey.value(sortKey(number)));
    }

private:
    QHash<QByteArray, std::vector<int>> m_byKey;
    QHash<QString, std::vector<int>> m_byText;
};

}  // namespace

QString Buchungsname(Tabelle table) { return QString::fromUtf8(source(table).name); }

Tierliste::Tierliste(const Database& db, const QString& condition) {
    Statement row = db.prepare(
        "select ID, Nummer, Stallnr, Gruppe, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt from Sauen where " +
        condition + " order by Nummer");
    while (row.next()) {
        m_places.insert(row.integer(0), count());
        m_animals.push_back({row.integer(0), Hochkomma_ersetzen(row.text(1)), Hochkomma_ersetzen(row.text(2)),
                             Hochkomma_ersetzen(row.text(3)), row.value(4), row.integer(5), row.integer(6)});
    }
}

QString Buchungsauszug::where(bool ofPeriod, const QString& more) const {
    QStringList conditions;
    if (!more.isEmpty()) conditions += more;
    if (m_cut.tier != 0) conditions += QStringLiteral("Kennung = %1").arg(m_cut.tier);
    if (m_cut.fewAnimals && m_animals.count() > 0 && m_animals.count() <= Few) {
        QStringList ids;
        for (int i = 0; i < m_animals.count(); ++i) ids += QString::number(m_animals[i].id);
        conditions += "Kennung in (" + ids.join(QStringLiteral(", ")) + ")";
    }
    if (ofPeriod && m_cut.von.isValid())
        conditions += "Datum >= " + Sql_Datum(Datum_als_Anzeige(m_cut.von)) +
                      " and Datum <= " + Sql_Datum(Datum_als_Anzeige(m_cut.bis));
    return conditions.isEmpty() ? QString() : " where " + conditions.join(QStringLiteral(" and "));
}

void Buchungsauszug::read(Tabelle table, bool ofPeriod, std::vector<Zaehlbuchung>& rows) const {
    QString select = QStringLiteral("select Kennung, Datum");
    size_t amounts = 0;
    for (; amounts < 4 && source(table).amounts[amounts]; ++amounts)
        select += ", " + QString::fromUtf8(source(table).amounts[amounts]) + QStringLiteral(" as m%1").arg(amounts);
    Statement row = m_db.prepare(select + " from " + Buchungsname(table) + where(ofPeriod));
    for (int read = 0; row.next(); ++read) {
        if (m_go && read % Often == 0 && !m_go()) return;
        Zaehlbuchung booking{row.isNull(0) ? -1 : m_animals.place(row.integer(0)), row.integer(0), row.day(1)};
        if (booking.place < 0) continue;
        for (size_t i = 0; i < amounts; ++i) booking.amounts[i] = amountOf(row, static_cast<int>(i) + 2);
        rows.push_back(booking);
    }
}

/// Each service counts as a success (first amount) or a failure (second) by the check of the sow that was entered first
/// among those of its day or later; neither where there is none.
void Buchungsauszug::readServices(std::vector<Zaehlbuchung>& rows) const {
    Checks checks;
    Statement check = m_db.prepare("select Kennung, Datum, Trächtig from Trächtigkeit");
    for (int read = 0; check.next(); ++read) {
        if (m_go && read % Often == 0 && !m_go()) return;
        if (!check.isNull(1)) checks[check.integer(0)].emplace_back(check.day(1), check.text(2) == u"J");
    }
    const QStringList conditions{where(true, m_byBoar ? "Ebernr is not null" : "Ebernr <> ''")};
    Statement row = m_db.prepare("select Kennung, Datum, Ebernr from Belegung" + conditions.first());
    Boars boars(m_animals);
    const std::vector<int> any{-1};
    for (int read = 0; row.next(); ++read) {
        if (m_go && read % Often == 0 && !m_go()) return;
        Zaehlbuchung booking{0, row.integer(0), row.day(1)};
        const auto found = checks.constFind(booking.kennung);
        if (booking.day != 0 && !row.isNull(0) && found != checks.constEnd())
            for (const auto& [day, pregnant] : *found)
                if (day >= booking.day) {
                    booking.amounts[pregnant ? 0 : 1] = 1;
                    break;
                }
        for (const int place : m_byBoar ? boars.of(row.text(2)) : any) {
            booking.place = place;
            rows.push_back(booking);
        }
    }
}

const std::vector<Zaehlbuchung>& Buchungsauszug::rows(Tabelle table) {
    auto& rows = m_rows[static_cast<size_t>(table)];
    if (rows) return *rows;
    rows.emplace();
    if (table == Tabelle::Deckung)
        readServices(*rows);
    else
        read(table, true, *rows);
    return *rows;
}

Buchungsauszug::Days Buchungsauszug::daysOf(Tabelle table) {
    std::vector<Zaehlbuchung> all;
    const bool ofPeriod = m_cut.von.isValid();
    if (ofPeriod) read(table, false, all);
    const std::vector<Zaehlbuchung>& bookings = ofPeriod ? all : rows(table);
    Days result;
    result.begins.resize(static_cast<size_t>(m_animals.count()) + 1);
    for (const Zaehlbuchung& booking : bookings)
        if (booking.day != 0) ++result.begins[static_cast<size_t>(booking.place) + 1];
    for (size_t i = 1; i < result.begins.size(); ++i) result.begins[i] += result.begins[i - 1];
    result.days.resize(result.begins.back());
    std::vector<size_t> next = result.begins;
    for (const Zaehlbuchung& booking : bookings)
        if (booking.day != 0) result.days[next[static_cast<size_t>(booking.place)]++] = booking.day;
    for (size_t i = 1; i < result.begins.size(); ++i)
        std::sort(result.days.begin() + static_cast<qsizetype>(result.begins[i - 1]),
                  result.days.begin() + static_cast<qsizetype>(result.begins[i]));
    return result;
}

qint32 Buchungsauszug::before(Tabelle table, int place, qint32 day) {
    auto& days = m_days[static_cast<size_t>(table)];
    if (!days) days = daysOf(table);
    const auto begin = days->days.begin() + static_cast<qsizetype>(days->begins[static_cast<size_t>(place)]);
    const auto end = days->days.begin() + static_cast<qsizetype>(days->begins[static_cast<size_t>(place) + 1]);
    const auto at = std::lower_bound(begin, end, day);
    return at == begin ? 0 : *(at - 1);
}

}  // namespace koben

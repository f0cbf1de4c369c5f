#include "plans/Sauenkarte.h"

#include <algorithm>
#include <array>
#include <optional>

#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "store/Collation.h"

namespace koben {

namespace {

constexpr int Plain = 10, Planned = 40, Headline = 50;  // points
constexpr int TableWidth = 93, FormWidth = 56;          // characters
constexpr size_t FewSows = 1000;                        // beyond, the tables are read whole
constexpr int Reasons = 4;

constexpr std::array<const char*, 3> NamedReasons{"Verhungert", "Totgelegen", "Grätscher"};
constexpr std::array<const char*, 7> Weekdays{"So ", "Mo ", "Di ", "Mi ", "Do ", "Fr ", "Sa "};

/// Column of a loss; one without a reason has none.
int reasonOf(const Table& losses, int row, int column) {
    if (losses.isNull(row, column)) return -1;
    const QString reason = losses.text(row, column);
    for (size_t i = 0; i < NamedReasons.size(); ++i)
        if (equalTexts(reason, QString::fromUtf8(NamedReasons[i]))) return static_cast<int>(i);
    return Reasons - 1;
}

/// "" and zero leave their place blank.
QString blankIfZero(qint64 number) {
    return number == 0 ? QStringLiteral("  ") : Text_rechts(QString::number(number), 2);
}

QString days(QDate from, QDate to, int width) {
    return Text_rechts(from.isValid() && to.isValid() ? QString::number(from.daysTo(to)) : QString(), width);
}

QString shortDay(QDate day) { return Text_links(Datum_kurz(Datum_als_Anzeige(day)), 9); }

/// Within the days after `start`, up to the next service where there is one.
struct Span {
    QDate start, next;
    bool contains(QDate day) const { return day > start && (!next.isValid() || day <= next); }
    template <class Booking>
    const Booking* first(const std::vector<Booking>& bookings) const {
        const auto found =
            std::find_if(bookings.begin(), bookings.end(), [&](const Booking& b) { return contains(b.day); });
        return found == bookings.end() ? nullptr : &*found;
    }
};

class Card {
public:
    Card(PrintJob& job, const Kartensau& sow, const Kartenbuchungen::Bookings& bookings, const Kartentage& planned)
        : m_job(job), m_sow(sow), m_bookings(bookings), m_days(planned) {}

    void print() {
        printHead();
        bold({"BELEGUNGEN             | FERKELUNGEN       | VERLUSTE    | ABSETZUNGEN       | ABSTÄNDE TAGE",
              "Nr Datum      Ebernr   | Nr Datum    Le To | Su VhTgGrSo | Datum    ab Vl zu | Trt ST ABT URT"});
        rule(TableWidth);
        for (size_t i = 0; i < m_bookings.services.size(); ++i) printService(i);
        rule(TableWidth);
        bold({sumsLine()});
        lines({"", ""});
        if (m_sow.lastService.isValid()) printForms();
    }

private:
    void lines(const QStringList& texts) {
        for (const QString& text : texts) m_job.line(text);
    }
    void bold(const QStringList& texts) {
        m_job.setBold(true);
        lines(texts);
        m_job.setBold(false);
    }
    void boldPiece(const QString& text) {
        m_job.setBold(true);
        m_job.text(text);
        m_job.setBold(false);
    }
    void rule(int width) { m_job.line(QString(width, u'-')); }

    void printHead() {
        m_job.setSize(Plain);
        m_job.setBold(true);
        lines({"", "Sauenkarte zum Abferkeln", ""});
        m_job.setSize(Headline);
        m_job.line(m_sow.number + " / " + m_sow.box);
        m_job.setSize(Plain);
        m_job.setBold(false);
        lines({"", "Gruppe:      " + m_sow.group, "Geb.Datum:   " + m_sow.birth, "Ohrmarke:    " + m_sow.earTag,
               "Tätowierung: " + m_sow.tattoo, "Rasse:       " + m_sow.breed, ""});
    }

    void printService(size_t index) {
        const auto& service = m_bookings.services[index];
        const auto next = std::find_if(m_bookings.services.begin(), m_bookings.services.end(),
                                       [&](const auto& other) { return other.day > service.day; });
        const QDate nextDay = next == m_bookings.services.end() ? QDate() : next->day;
        const Span span{service.day, nextDay};
        m_job.text(Text_rechts(QString::number(index + 1), 2) + u' ' + shortDay(service.day) +
                   Text_links(service.boar, 10) + m_gap);
        const auto* farrowing = span.first(m_bookings.farrowings);
        m_farrowing = farrowing ? farrowing->day : QDate();
        printFarrowing(farrowing);
        m_job.text(losses(span) + m_gap);
        const auto* weaning = farrowing ? Span{m_farrowing, nextDay}.first(m_bookings.weanings) : nullptr;
        m_weaning = weaning ? weaning->day : QDate();
        printWeaning(weaning, farrowing ? farrowing->live.toLongLong() : 0);
        m_job.line(m_gap + days(service.day, m_farrowing, 3) + days(m_farrowing, m_weaning, 3) +
                   days(m_weaning, nextDay, 4) + days(farrowing ? QDate() : service.day, nextDay, 4));
    }

    void printFarrowing(const Kartenbuchungen::Farrowing* farrowing) {
        if (!farrowing) return m_job.text(QString(17, u' ') + m_gap);
        const qint64 dead = farrowing->dead.toLongLong();
        m_live += farrowing->live.toLongLong();
        m_dead += dead;
        m_job.text(Text_rechts(farrowing->litter, 2) + u' ' + shortDay(farrowing->day));
        boldPiece(Text_rechts(farrowing->live, 2));
        m_job.text(u' ' + blankIfZero(dead) + m_gap);
    }

    /// The losses of a cycle: all of them, then by reason.
    QString losses(const Span& span) {
        qint64 all = 0;
        std::array<qint64, Reasons> byReason{};
        for (const auto& loss : m_bookings.losses) {
            if (!span.contains(loss.day)) continue;
            all += loss.piglets;
            if (loss.reason >= 0) byReason[static_cast<size_t>(loss.reason)] += loss.piglets;
        }
        QString text = Text_rechts(QString::number(all), 2) + u' ';
        m_lost += all;
        for (size_t i = 0; i < Reasons; ++i) {
            m_lostByReason[i] += byReason[i];
            text += blankIfZero(byReason[i]);
        }
        return text;
    }

    void printWeaning(const Kartenbuchungen::Weaning* weaning, qint64 live) {
        if (!weaning) return m_job.text(QString(17, u' '));
        const qint64 weaned = weaning->piglets.toLongLong();
        const qint64 fewer = std::max<qint64>(live - weaned, 0), more = std::max<qint64>(weaned - live, 0);
        m_weaned += weaned;
        m_fewer += fewer;
        m_more += more;
        m_job.text(shortDay(weaning->day));
        boldPiece(Text_rechts(weaning->piglets, 2));
        m_job.text(u' ' + blankIfZero(fewer) + u' ' + blankIfZero(more));
    }

    QString sumsLine() const {
        const auto sum = [](qint64 number, int width) { return Text_rechts(QString::number(number), width); };
        QString text = QString(23, u' ') + u'|' + QString(12, u' ') + sum(m_live, 3) + sum(m_dead, 3) +
                       QStringLiteral(" |") + sum(m_lost, 3) + u' ';
        for (const qint64 lost : m_lostByReason) text += sum(lost, 2);
        return text + QStringLiteral(" |") + QString(9, u' ') + sum(m_weaned, 3) + sum(m_fewer, 3) + sum(m_more, 3) +
               QStringLiteral(" |");
    }

    /// What is planned hangs on the last line of the table.
    void printForms() {
        QDate farrowing = m_sow.lastService.addDays(m_days.pregnancy);
        QDate weaning = farrowing.addDays(m_days.suckling);
        QDate service = weaning.addDays(m_days.untilService);
        if (m_farrowing.isValid()) weaning = m_farrowing.addDays(m_days.suckling);
        if (m_weaning.isValid() && m_weaning > m_sow.lastService) service = m_weaning.addDays(m_days.untilService);
        if (!m_farrowing.isValid()) {
            bold({"Abferkeln"});
            printForm(farrowing, {"Ferkeldatum | Lebendig |  Tot  | Bemerkung", "            |          |       |"}, 3);
        }
        if (!m_weaning.isValid()) {
            lines({"", "Absetzen"});
            printForm(weaning, {"Absetzdatum | Abgang |  Verluste  | Bemerkung", "            |        |            |"},
                      3);
        }
        lines({"", "Nächste Belegung nach der Absetzung"});
        printForm(service, {"Belegungsdatum | Ebernummer | Bemerkung", "               |            |"}, 1);
    }

    void printForm(QDate day, const std::array<const char*, 2>& form, int emptyLines) {
        m_job.setSize(Planned);
        m_job.line(QString::fromUtf8(Weekdays[static_cast<size_t>(day.dayOfWeek() % 7)]) + u' ' +
                   Datum_als_Anzeige(day));
        m_job.setSize(Plain);
        m_job.line(QString::fromUtf8(form[0]));
        rule(FormWidth);
        m_job.line(QString::fromUtf8(form[1]));
        for (int i = 0; i < emptyLines; ++i) m_job.line({});
    }

    PrintJob& m_job;
    const Kartensau& m_sow;
    const Kartenbuchungen::Bookings& m_bookings;
    const Kartentage& m_days;
    const QString m_gap = QStringLiteral(" | ");
    QDate m_farrowing, m_weaning;  // of the last service printed
    qint64 m_live = 0, m_dead = 0, m_lost = 0, m_weaned = 0, m_fewer = 0, m_more = 0;
    std::array<qint64, Reasons> m_lostByReason{};
};

/// The rows of a table of bookings that belong to these sows, by day; those without a day are left out.
std::optional<Table> read(const Database& db, const QString& fields, const QString& table,
                          const std::vector<qint64>& sows, const std::function<bool(qint64)>& go) {
    return db.table(QStringLiteral("select Kennung, Datum, %1 from %2 where %3 and Datum IS NOT NULL order by Datum")
                        .arg(fields, table, Kartensauen(QStringLiteral("Kennung"), sows)),
                    go);
}

}  // namespace

QString Kartensauen(const QString& field, const std::vector<qint64>& sows) {
    if (sows.size() > FewSows)
        return field + QStringLiteral(" in (select ID from Sauen where Art = 'Sau' and Abgangsdatum IS NULL)");
    QStringList ids;
    for (const qint64 id : sows) ids += QString::number(id);
    return QStringLiteral("%1 in (%2)").arg(field, ids.join(u','));
}

Kartenbuchungen::Kartenbuchungen(const Database& db, const std::vector<qint64>& sows,
                                 const std::function<bool(qint64)>& go) {
    const auto always = [](qint64) { return true; };
    m_bookings.reserve(static_cast<qsizetype>(sows.size()));
    for (const qint64 id : sows) m_bookings.insert(id, {});
    const auto each = [&](const QString& fields, const QString& table, const auto& take) {
        const auto rows = read(db, fields, table, sows, go ? go : always);
        for (int row = 0; rows && row < rows->rowCount(); ++row) {
            const auto sow = m_bookings.find(rows->integer(row, 0));
            if (sow != m_bookings.end()) take(*sow, *rows, row, QDate::fromJulianDay(rows->integer(row, 1)));
        }
    };
    const auto text = [](const Table& rows, int row, int column) { return Hochkomma_ersetzen(rows.text(row, column)); };
    each("Ebernr", "Belegung", [&](Bookings& b, const Table& rows, int row, QDate day) {
        b.services.push_back({day, text(rows, row, 2)});
    });
    each("LNr, Ferkel_Lebendig, Ferkel_Tot", "Ferkelung", [&](Bookings& b, const Table& rows, int row, QDate day) {
        b.farrowings.push_back({day, text(rows, row, 2), text(rows, row, 3), text(rows, row, 4)});
    });
    each("Anzahl_Ferkel, Grund", "Verluste", [&](Bookings& b, const Table& rows, int row, QDate day) {
        b.losses.push_back({day, rows.integer(row, 2), reasonOf(rows, row, 3)});
    });
    each("Anzahl_Ferkel", "Absetzung", [&](Bookings& b, const Table& rows, int row, QDate day) {
        b.weanings.push_back({day, text(rows, row, 2)});
    });
}

const Kartenbuchungen::Bookings& Kartenbuchungen::of(qint64 sow) const {
    static const Bookings none;
    const auto found = m_bookings.constFind(sow);
    return found == m_bookings.constEnd() ? none : *found;
}

Kartentage::Kartentage(const Variablen& v)
    : pregnancy(v.Konfig_Zahl[Zahl::TageBelegungFerkelung]),
      suckling(v.Konfig_Zahl[Zahl::TageFerkelungAbsetzung]),
      untilService(v.Konfig_Zahl[Zahl::TageAbsetzungBelegung]) {}

void Sauenkarten_beginnen(PrintJob& job) {
    Sheet sheet;
    sheet.cardColumns = TableWidth;
    job.setSheet(sheet);
    job.setFont(QStringLiteral("Courier New"));
}

void Sauenkarte_drucken(PrintJob& job, const Kartensau& sow, const Kartenbuchungen::Bookings& bookings,
                        const Kartentage& days) {
    Card(job, sow, bookings, days).print();
}

}  // namespace koben

#include "exchange/Geraetedatei.h"

#include <algorithm>

#include "core/Aktionsnamen.h"
#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"
#include "store/Convert.h"

namespace koben {
namespace {

constexpr char EndOfFile = '\x1a';  // as some devices close a text
constexpr int MostDigits = 9;       // of a number of lines
constexpr int PenWidth = 10, TattooWidth = 20, MotherWidth = 15;
const QDate LastDay(9999, 12, 31);

enum Position { Number, Day };
enum Treatment { Days = 7, Until = 8 };

/// What is wrong, as the end of a sentence that begins with the line.
struct Damage {
    int line;
    QString what;
};

/// Lines that end with CR LF or LF; the last one need not.
class Lines {
public:
    explicit Lines(QByteArrayView bytes) : m_rest(bytes) {
        if (m_rest.endsWith(EndOfFile)) m_rest.chop(1);
    }
    bool next(QByteArrayView& line) {
        if (m_rest.isEmpty()) return false;
        ++m_number;
        const qsizetype end = m_rest.indexOf('\n');
        line = end < 0 ? m_rest : m_rest.first(end);
        m_rest = end < 0 ? QByteArrayView() : m_rest.sliced(end + 1);
        if (line.endsWith('\r')) line.chop(1);
        if (std::any_of(line.begin(), line.end(), [](char c) { return (c >= 0 && c < ' ' && c != '\t') || c == 0x7f; }))
            throw Damage{m_number, QStringLiteral("enthält ein Steuerzeichen")};
        return true;
    }
    int number() const { return m_number; }

private:
    QByteArrayView m_rest;
    int m_number = 0;
};

QString text(QByteArrayView bytes) { return ausWindows1252(bytes.toByteArray()); }

QString nameOf(const Geraeteabschnitt& section) { return QString::fromUtf8(angaben(section.art).caption); }

qint64 countOf(Lines& lines, const Geraeteabschnitt& section) {
    QByteArrayView line;
    if (!lines.next(line))
        throw Damage{
            lines.number() + 1,
            QStringLiteral("fehlt: hier sollte stehen, wie viele Zeilen der Art %1 folgen").arg(nameOf(section))};
    const QByteArrayView digits = line.trimmed();
    if (digits.isEmpty() || digits.size() > MostDigits ||
        !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
        throw Damage{
            lines.number(),
            QStringLiteral("sollte die Anzahl der Zeilen der Art %1 nennen und ist keine Zahl").arg(nameOf(section))};
    return digits.toLongLong();
}

// ------------------------------------------------------------------------------------------------------------- values

Value valueOf(const Geraetefeld& field, const QString& given) {
    const auto letter = [&](QChar other) {
        return given.left(1).toUpper() == u"N" ? QStringLiteral("N") : QString(other);
    };
    switch (field.kind) {
        case Geraetewert::Text:
            return given.left(field.width);
        case Geraetewert::Count:
        case Geraetewert::LongCount:
        case Geraetewert::WholeWeight:
            return Wert(given);
        case Geraetewert::Weight:
            return Zahl_aus_Text(QString(given));
        case Geraetewert::Amount:
            return Betrag_aus_Text(QString(given));
        case Geraetewert::Service:
            return letter(u'K');
        case Geraetewert::Check:
            return letter(u'J');
        case Geraetewert::Day:
            break;
    }
    return Value::null();
}

Type typeOf(Geraetewert kind) {
    switch (kind) {
        case Geraetewert::Count:
            return Type::Short;
        case Geraetewert::LongCount:
            return Type::Long;
        case Geraetewert::WholeWeight:
        case Geraetewert::Weight:
            return Type::Single;
        case Geraetewert::Amount:
            return Type::Currency;
        case Geraetewert::Day:
            return Type::Date;
        case Geraetewert::Text:
        case Geraetewert::Service:
        case Geraetewert::Check:
            break;
    }
    return Type::Text;
}

/// The conversions of numbers end at the end of their types; a number beyond that is damage.
bool tooLarge(Geraetewert kind, const QString& given) {
    return (kind == Geraetewert::Weight && readWeight(given) == Reading::TooLarge) ||
           (kind == Geraetewert::Amount && readAmount(given) == Reading::TooLarge);
}

QString cutForMessage(const QString& text) {
    constexpr int most = 30;
    return text.size() > most ? text.left(most) + QStringLiteral("...") : text;
}

/// The fields of a booking with what its table will hold, or the damage.
class Values {
public:
    explicit Values(Geraetebuchung& booking) : m_booking(booking), m_section(*booking.section) {}

    void fill() {
        add(QStringLiteral("Datum"), m_booking.day, Type::Date, 0);
        for (size_t i = 0; i < m_section.fields.size(); ++i) {
            const Geraetefeld& field = m_section.fields[i];
            const QString& given = m_booking.fields[static_cast<qsizetype>(i) + 2];
            if (tooLarge(field.kind, given))
                refuse(QStringLiteral("die Zahl %1 ist zu groß").arg(cutForMessage(given)));
            add(QString::fromUtf8(field.column), valueOf(field, given), typeOf(field.kind), field.width);
        }
        if (m_section.mother) add(QStringLiteral("Muttersau"), m_booking.number(), Type::Text, MotherWidth);
        if (m_section.art == Buchungsart::Behandlung) wait();
        if (!m_booking.pen().isEmpty()) wean();
    }

private:
    void add(const QString& column, const Value& value, Type type, int width) {
        try {
            m_booking.values.emplace_back(column, assign(value, type, width, column));
        } catch (const ConversionError& error) {
            refuse(error.what);
        }
    }

    /// The waiting time ends so many days after the treatment; without days it has no length of its own.
    void wait() {
        const double days = Wert(m_booking.fields[Days]);
        if (days > static_cast<double>(m_booking.day.daysTo(LastDay)))
            refuse(
                QStringLiteral("eine Wartezeit von %1 Tagen gibt es nicht").arg(cutForMessage(m_booking.fields[Days])));
        for (auto& [column, value] : m_booking.values)
            if (column == u"Wartezeit_Datum") value = m_booking.day.addDays(Value(days).toInt());
    }

    void wean() {
        m_booking.piglets = static_cast<int>(std::max(Wert(m_booking.fields[Day + 1]), 0.0));
        if (m_booking.pen().size() > PenWidth)
            refuse(QStringLiteral("die Stallnummer %1 ist länger als %2 Zeichen")
                       .arg(cutForMessage(m_booking.pen()))
                       .arg(PenWidth));
        if ((m_booking.number() + u'-' + QString::number(m_booking.piglets)).size() > TattooWidth)
            refuse(QStringLiteral("die Nummer %1 ist zu lang").arg(cutForMessage(m_booking.number())));
    }

    [[noreturn]] void refuse(const QString& what) const {
        throw Damage{m_booking.line,
                     QStringLiteral("(%1) kann nicht übernommen werden: %2").arg(nameOf(m_section), what)};
    }

    Geraetebuchung& m_booking;
    const Geraeteabschnitt& m_section;
};

// -------------------------------------------------------------------------------------------------------------- lines

/// A waiting time without days has those up to its date; none is less than nothing.
void settleWaitingDays(QStringList& fields, QDate day) {
    QString& days = fields[Days];
    const QDate until = Datum_aus_Text(fields[Until]);
    if (Wert(days) == 0 && until.isValid() && until != day) days = QString::number(day.daysTo(until));
    if (Wert(days) < 0) days = QStringLiteral("0");
}

Geraetebuchung bookingOf(const Geraeteabschnitt& section, QByteArrayView line, int number) {
    Geraetebuchung booking{
        .section = &section, .line = number, .fields = text(line).split(u'\t'), .day = {}, .values = {}};
    QStringList& fields = booking.fields;
    fields[Number] = fields[Number].trimmed();
    if (section.pen) fields[section.penAt()] = fields[section.penAt()].trimmed();
    booking.day = Datum_aus_Text(fields[Day]);
    if (!booking.complete()) return booking;
    fields[Day] = Datum_als_Anzeige(booking.day);
    if (section.art == Buchungsart::Behandlung) settleWaitingDays(fields, booking.day);
    Values(booking).fill();
    return booking;
}

/// Where the mark of a line begins; the fields before it are those of the booking.
qsizetype markOf(QByteArrayView line, const Geraeteabschnitt& section, int number) {
    qsizetype at = 0;
    for (int field = 0; field < section.markAt(); ++field) {
        const qsizetype tab = line.indexOf('\t', at);
        if (tab < 0)
            throw Damage{number, QStringLiteral("hat nur %1; eine Zeile der Art %2 hat mindestens %3")
                                     .arg(counted(field + 1, "Feld", "Felder"), nameOf(section))
                                     .arg(section.markAt() + 1)};
        at = tab + 1;
    }
    return at;
}

bool isMarked(QByteArrayView line, qsizetype mark) {
    const QByteArrayView rest = line.sliced(mark);
    return rest == "N" || rest.startsWith("N\t");
}

void requireEnd(Lines& lines) {
    for (QByteArrayView line; lines.next(line);)
        if (!line.trimmed().isEmpty())
            throw Damage{lines.number(),
                         QStringLiteral("ist zu viel: die Zeilen davor sind alle, die die Datei zählt")};
}

struct Content {
    std::vector<Geraetebuchung> bookings;
    qint64 returned = 0;
};

void readSection(Lines& lines, const Geraeteabschnitt& section, Content& content) {
    const qint64 count = countOf(lines, section);
    for (qint64 i = 0; i < count; ++i) {
        QByteArrayView line;
        if (!lines.next(line))
            throw Damage{lines.number() + 1,
                         QStringLiteral("fehlt: von %1 Zeilen der Art %2 stehen nur %3 in der Datei")
                             .arg(count)
                             .arg(nameOf(section))
                             .arg(i)};
        const qsizetype mark = markOf(line, section, lines.number());
        if (isMarked(line, mark))
            content.bookings.push_back(bookingOf(section, line.first(mark - 1), lines.number()));
        else
            ++content.returned;
    }
}

}  // namespace

Geraetedatei Geraetedatei::read(const QByteArray& bytes) {
    Geraetedatei file;
    Lines lines(bytes);
    try {
        Content content;
        for (const Geraeteabschnitt& section : Geraeteabschnitte()) readSection(lines, section, content);
        requireEnd(lines);
        file.m_bookings = std::move(content.bookings);
        file.m_returned = content.returned;
    } catch (const Damage& damage) {
        file.m_problem = QStringLiteral("Die Zeile %1 %2.").arg(damage.line).arg(damage.what);
    }
    return file;
}

void Geraetedatei::renumber(const QString& from, const QString& to) {
    constexpr qsizetype partner = 3;  // of a cross-fostering
    for (Geraetebuchung& booking : m_bookings) {
        const auto give = [&](qsizetype field, QStringView column, int width) {
            if (booking.fields[field] != from) return;
            booking.fields[field] = to;
            for (auto& [name, value] : booking.values)
                if (name == column) value = to.left(width);
        };
        give(Number, u"Muttersau", MotherWidth);
        if (booking.section->art == Buchungsart::Verschiebung) give(partner, u"Zu_Saunr", MotherWidth);
    }
}

}  // namespace koben

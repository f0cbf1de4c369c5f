#include "exchange/PO_Vorschau.h"

#include <QFile>
#include <QHash>
#include <algorithm>
#include <map>
#include <numeric>

#include "core/Aktionsnamen.h"
#include "core/PZ_Koben_Subs.h"
#include "core/Zyklus.h"
#include "exchange/Geraeteeingang.h"
#include "exchange/PO_Pocketimport.h"
#include "exchange/Stallseite.h"
#include "forms/Liste.h"

namespace koben {
namespace {

const QString Widths = QStringLiteral("po_vorschau");
constexpr const char* Verdicts[] = {"Widerspruch", "Nummer unbekannt", "neu", "doppelt", "unvollständig"};

/// How a field is called in the list; comments and remarks speak for themselves.
QString called(const Geraetefeld& field) {
    static const QHash<QString, QString> names{{"Ebernr", "Eber"},
                                               {"Belegungart", "Art"},
                                               {"Belegungsstation", "Station"},
                                               {"Ferkel_Gesamt", "gesamt"},
                                               {"Ferkel_Lebendig", "lebend"},
                                               {"Ferkel_Tot", "tot"},
                                               {"Stück_Gewicht_kg", "kg je Stück"},
                                               {"Gesamtgewicht_kg", "kg gesamt"},
                                               {"Anzahl_Ferkel", "Ferkel"},
                                               {"Zu_Saunr", "zu Sau"},
                                               {"Kommentar", ""},
                                               {"Bemerkung", ""},
                                               {"Behandlungsart", ""},
                                               {"Medikament", ""},
                                               {"Einheit", ""},
                                               {"Verabreichungsart", ""}};
    const QString name = QString::fromUtf8(field.column);
    return names.value(name, QString(name).replace(u'_', u' '));
}

/// What is booked; what says nothing is left out.
QString detailsOf(const Geraetebuchung& booking) {
    QStringList parts;
    for (size_t i = 0; i < booking.section->fields.size(); ++i) {
        const Geraetefeld& field = booking.section->fields[i];
        const QString& given = booking.fields[static_cast<qsizetype>(i) + 2];
        const bool number = field.kind != Geraetewert::Text && field.kind != Geraetewert::Service &&
                            field.kind != Geraetewert::Check && field.kind != Geraetewert::Day;
        if (given.trimmed().isEmpty() || (number && Zahl_aus_Text(QString(given)) == 0)) continue;
        parts += (called(field) + u' ' + given).trimmed();
    }
    if (!booking.pen().isEmpty()) parts += QStringLiteral("in Stall ") + booking.pen();
    return parts.join(QStringLiteral(", "));
}

/// Numbers as numbers stand, before all others.
bool numberLess(const QString& a, const QString& b) {
    bool aNumber = false, bNumber = false;
    const qint64 first = a.toLongLong(&aNumber), second = b.toLongLong(&bNumber);
    if (aNumber && bNumber && first != second) return first < second;
    return aNumber == bNumber ? QString::localeAwareCompare(a, b) < 0 : aNumber;
}

std::optional<DateTime> exported(const Koben& koben) {
    const auto made = barnPageMade(koben.Datenordner);
    if (!made) return std::nullopt;
    DateTime time = DateTime::of(made->date());
    time.second = made->time().msecsSinceStartOfDay() / 1000;
    return time;
}

}  // namespace

PO_Vorschau::PO_Vorschau(Koben& koben_) : Form(koben_, "PO_Vorschau", "Vorschau auf den Import") {
    koneindatum.setChecked(true);
    koneindatum.onClick = [this] { judge(), show(); };
    li.addColumn({.key = "nehmen", .title = "Einlesen", .width = 64});
    li.addColumn({.key = "nummer", .title = "Nummer", .width = 70});
    li.addColumn({.key = "tier", .title = "Tier", .width = 110});
    li.addColumn({.key = "datum", .title = "Datum", .width = 80, .sort = Sort::Date});
    li.addColumn({.key = "buchung", .title = "Buchung", .width = 95});
    li.addColumn({.key = "angaben", .title = "Angaben", .width = 230});
    li.addColumn({.key = "urteil", .title = "Urteil", .width = 140});
    li.addColumn({.key = "grund", .title = "Grund", .width = 440});
    li.addColumn({.key = "nr", .title = {}, .technical = true});
    li.setHint("Buchungen der Datei");
    li.onResized = [this](int) { koben.saveWidths(li, Widths); };
    li.onDoubleClick = [this] { wish(li.row() > 0 && !taken(bookingOf(li.row()))); };
    übernehmen.onClick = [this] { wish(true); };
    auslassen.onClick = [this] { wish(false); };
    gleiche.onClick = [this] { gleiche_Click(); };
    zuordnen.onClick = [this] { zuordnen_Click(); };
    listen.onClick = [this] { Liste_ausgeben(koben, li); };
    ok.onClick = [this] { ok_Click(); };
    hilfe.onClick = [this] { koben.open("PH_Hilfe"); };
    cmdschließen.onClick = [this] { close(); };
    acceptButton = &ok;
    cancelButton = &cmdschließen;
}

void PO_Vorschau::Load() {
    m_db = koben.connect();
    koben.restoreWidths(li, Widths);
    for (Form* form : koben.stack())
        if (const auto* import = dynamic_cast<PO_Pocketimport*>(form))
            koneindatum.setChecked(import->koneindatum.checked());
}

void PO_Vorschau::FirstShown() {
    const Geraeteeingang eingang(koben);
    if (QFile::exists(koben.Datenordner + DateiVomGeraet)) m_file = eingang.read();
    if (m_file) {
        const WaitCursor wait(koben);
        m_contradictions.emplace(m_db, koben, exported(koben), *m_file);
        m_wishes.assign(m_file->bookings().size(), Geraetewunsch::Geprüft);
        judge();
    }
    show();
}

void PO_Vorschau::judge() {
    if (!m_file) return;
    m_unknown.clear();
    m_whole = planDeviceBookings(m_db, *m_file, koneindatum.checked(),
                                 [this](const QString& number) { return m_unknown.append(number), true; });
    m_reasons.clear();
    for (const Geplant& entry : m_whole.entries)
        m_reasons.push_back(entry.booking->complete() ? m_contradictions->reason(entry) : QString());
    heed();
}

void PO_Vorschau::heed() {
    m_plan = planDeviceBookings(
        m_db, *m_file, koneindatum.checked(), [](const QString&) { return true; },
        [this](size_t booking) { return m_wishes[booking]; });
}

PO_Vorschau::Urteil PO_Vorschau::urteil(size_t booking) const {
    const Geraeteurteil whole = m_whole.entries[booking].urteil, now = m_plan.entries[booking].urteil;
    if (whole == Geraeteurteil::Unvollständig) return Urteil::Ohne;
    const bool twice = now == Geraeteurteil::Doppelt || m_wishes[booking] == Geraetewunsch::Trotzdem ||
                       (now == Geraeteurteil::Ausgelassen && whole == Geraeteurteil::Doppelt);
    if (twice) return Urteil::Doppelt;
    if (!m_reasons[booking].isEmpty()) return Urteil::Widerspruch;
    return unknownNumber(booking).isEmpty() ? Urteil::Neu : Urteil::Unbekannt;
}

/// The animal of the booking, or the other sow of a cross-fostering, that the herd does not know; "" where it knows
/// all.
QString PO_Vorschau::unknownNumber(size_t booking) const {
    const Geraetebuchung& given = m_file->bookings()[booking];
    if (m_unknown.contains(given.number())) return given.number();
    const QString partner = given.section->art == Buchungsart::Verschiebung ? given.fields[3] : QString();
    return m_unknown.contains(partner) ? partner : QString();
}

QString PO_Vorschau::grund(size_t booking) const {
    switch (urteil(booking)) {
        case Urteil::Widerspruch:
            return m_reasons[booking];
        case Urteil::Unbekannt:
            return QStringLiteral("%1 gibt es hier nicht. Beim Einlesen wird gefragt, ob die Sau angelegt wird.")
                .arg(unknownNumber(booking));
        case Urteil::Doppelt:
            return QStringLiteral(
                "An diesem Tag gibt es schon eine Buchung dieser Art, hier oder weiter oben in der "
                "Datei.");
        case Urteil::Ohne:
            return m_file->bookings()[booking].day.isValid() ? QStringLiteral("Die Nummer des Tieres fehlt.")
                                                             : QStringLiteral("Der Tag fehlt.");
        case Urteil::Neu:
            break;
    }
    return {};
}

QString PO_Vorschau::tier(size_t booking) const {
    const Geplant& entry = m_whole.entries[booking];
    if (entry.booking->number().isEmpty()) return QStringLiteral("ohne Tier");
    if (entry.animal <= 0)
        return m_unknown.contains(entry.booking->number()) || entry.animal == 0 ? QStringLiteral("unbekannt")
                                                                                : QStringLiteral("Ferkel dieser Datei");
    Statement animal = m_db.prepare("select Art, Status, Abgangsdatum from Sauen where ID = ?");
    QString text;
    for (animal.bind({entry.animal}); animal.next();) {
        const QString state = animal.isNull(2) ? Statuswort(statusOf(animal.text(1))).toLower() : "abgegangen";
        text = animal.text(0) + (state.isEmpty() ? state : QStringLiteral(", ") + state);
    }
    return text;
}

/// What wants a decision comes first, then animal by animal.
std::vector<size_t> PO_Vorschau::sorted() const {
    std::vector<size_t> order(m_file->bookings().size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](size_t a, size_t b) {
        if (const Urteil first = urteil(a), second = urteil(b); first != second) return first < second;
        const Geraetebuchung &one = m_file->bookings()[a], &other = m_file->bookings()[b];
        if (one.number() != other.number()) return numberLess(one.number(), other.number());
        return one.day < other.day;
    });
    return order;
}

void PO_Vorschau::show() {
    li.clearRows();
    if (m_file)
        for (const size_t place : sorted()) {
            const Geraetebuchung& booking = m_file->bookings()[place];
            li.addValues({QString(), booking.number(), tier(place),
                          booking.day.isValid() ? Value(booking.day) : Value(booking.fields[1]),
                          QString::fromUtf8(angaben(booking.section->art).caption), detailsOf(booking), QString(),
                          QString(), static_cast<qint64>(place)},
                         std::max<qint64>(m_whole.entries[place].animal, 0));
        }
    if (li.rowCount() > 0) li.setRow(1);
    const bool any = li.rowCount() > 0;
    for (Button* button : {&übernehmen, &auslassen, &gleiche, &listen}) button->setEnabled(any);
    zuordnen.setEnabled(!m_unknown.isEmpty());
    ok.setEnabled(m_file.has_value());
    showVerdicts();
}

void PO_Vorschau::showVerdicts() {
    std::map<Urteil, qint64> counts;
    const auto set = [this](int row, QStringView key, const QString& text) {
        if (const int column = li.columnOf(key); li.cell(row, column) != text) li.setCell(row, column, text);
    };
    for (int row = 1; row <= li.rowCount(); ++row) {
        const size_t place = bookingOf(row);
        const Urteil verdict = urteil(place);
        ++counts[verdict];
        set(row, u"nehmen", taken(place) ? QStringLiteral("ja") : QStringLiteral("nein"));
        set(row, u"urteil", QString::fromUtf8(Verdicts[static_cast<int>(verdict)]));
        set(row, u"grund", grund(place));
    }
    QStringList parts;
    for (const auto& [verdict, one, many] : {std::tuple{Urteil::Neu, "neu", "neu"},
                                             {Urteil::Doppelt, "doppelt", "doppelt"},
                                             {Urteil::Unbekannt, "mit unbekannter Nummer", "mit unbekannter Nummer"},
                                             {Urteil::Widerspruch, "Widerspruch", "Widersprüche"},
                                             {Urteil::Ohne, "unvollständig", "unvollständig"}})
        if (counts[verdict] > 0) parts += counted(counts[verdict], one, many);
    if (!m_file)
        summe.setText(QStringLiteral("Es liegt keine Datei vom Gerät da, die sich lesen lässt."));
    else if (parts.isEmpty())
        summe.setText(QStringLiteral("Die Datei enthält keine Buchungen, die auf dem Gerät gemacht wurden."));
    else
        summe.setText(parts.join(QStringLiteral(", ")) + QStringLiteral(". Eingelesen wird: ") +
                      counted(m_plan.count(Geraeteurteil::Neu), "Buchung.", "Buchungen."));
}

size_t PO_Vorschau::bookingOf(int row) const { return static_cast<size_t>(li.value(row, u"nr").toInt()); }

/// The marked rows, or the current one.
std::vector<size_t> PO_Vorschau::chosen() const {
    std::vector<int> rows = li.markedRows();
    if (rows.empty() && li.row() > 0) rows.push_back(li.row());
    std::vector<size_t> bookings;
    for (const int row : rows) bookings.push_back(bookingOf(row));
    return bookings;
}

void PO_Vorschau::wish(bool take) {
    const std::vector<size_t> bookings = chosen();
    if (bookings.empty()) return;
    for (const size_t booking : bookings) m_wishes[booking] = take ? Geraetewunsch::Geprüft : Geraetewunsch::Auslassen;
    heed();
    if (take) {  // doubled ones come in only where it is said of them
        for (const size_t booking : bookings)
            if (m_plan.entries[booking].urteil == Geraeteurteil::Doppelt) m_wishes[booking] = Geraetewunsch::Trotzdem;
        heed();
    }
    showVerdicts();
}

void PO_Vorschau::gleiche_Click() {
    if (li.row() == 0) return;
    const QString verdict = li.cell(li.row(), u"urteil");
    for (int row = 1; row <= li.rowCount(); ++row) li.setMarked(row, li.cell(row, u"urteil") == verdict);
}

/// A mistyped number becomes that of an animal of the herd, in all bookings of the file.
void PO_Vorschau::zuordnen_Click() {
    const QString from = li.row() > 0 ? unknownNumber(bookingOf(li.row())) : QString();
    if (from.isEmpty())
        return koben.message(
            "Diese Nummer gibt es hier schon. Gehen Sie in eine Zeile mit dem Urteil „Nummer unbekannt“.");
    const QString typed =
        koben.screens
            .input(QStringLiteral("Die Nummer %1 gibt es hier nicht. Welches Tier ist gemeint?").arg(from), from,
                   QStringLiteral("Nummer zuordnen"))
            .trimmed();
    if (typed.isEmpty() || typed == from) return;
    QString found;
    Statement animal = m_db.prepare("select Nummer from Sauen where Nummer = ?");
    for (animal.bind({typed}); animal.next();) found = animal.text(0);
    if (found.isEmpty())
        return koben.message(
            QStringLiteral("Das Tier %1 gibt es hier auch nicht. Die Nummer %2 bleibt, wie sie ist.").arg(typed, from));
    m_file->renumber(from, found);
    judge();
    show();
}

void PO_Vorschau::ok_Click() {
    Geraeteeingang eingang(koben);
    if (!eingang.agreed(koneindatum.checked())) return;
    koben.Status_neu_berechnen = 1;
    eingang.take(m_db, *m_file, koneindatum.checked(), [this](size_t booking) { return m_wishes[booking]; });
    close();
}

}  // namespace koben

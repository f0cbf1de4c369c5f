#include "exchange/Geraeteexport.h"

#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"
#include "exchange/Geraeteabschnitte.h"
#include "output/Uebergabe.h"

namespace koben {
namespace {

struct Werteliste {
    const char* table;
    const char* column;
};

/// The lists of choice of the device, in the order of the file. The numbers of the animals in stock are the one that
/// has a condition.
constexpr Werteliste Wertelisten[] = {
    {"Belegung", "Ebernr"},        {"Belegung", "Belegungsstation"}, {"Belegung", "Kommentar"},
    {"Belegung", "Bemerkung"},     {"Ferkelung", "Kommentar"},       {"Ferkelung", "Bemerkung"},
    {"Absetzung", "Kommentar"},    {"Absetzung", "Bemerkung"},       {"Sauen", "Stallnr"},
    {"Trächtigkeit", "Kommentar"}, {"Trächtigkeit", "Bemerkung"},    {"Verluste", "Grund"},
    {"Sauen", "Nummer"},           {"Verluste", "Kommentar"},        {"Verluste", "Bemerkung"},
    {"Verschiebung", "Kommentar"}, {"Verschiebung", "Bemerkung"},    {"Behandlung", "Behandlungsart"},
    {"Behandlung", "Medikament"},  {"Behandlung", "Einheit"},        {"Behandlung", "Verabreichungsart"},
    {"Behandlung", "Tierarzt"},    {"Behandlung", "Beleg_Nr"},       {"Behandlung", "Kommentar"},
    {"Behandlung", "Bemerkung"},   {"Ferkelverkauf", "Kunde"},       {"Ferkelverkauf", "Kommentar"}};

/// Behind each booking: the places in which the device keeps its marks.
const QString Devices = QStringLiteral("\t\t");

QString utf8(const char* text) { return QString::fromUtf8(text); }

/// The number of lines that follow.
QString counted(qint64 count) { return QStringLiteral(" %1 ").arg(count); }

class Composer {
public:
    Composer(const Database& db, const Exportauswahl& choice, const std::function<bool(int)>& goOn)
        : m_db(db), m_choice(choice), m_goOn(goOn) {}

    Exportergebnis run(const QString& workPlan, QByteArray& bytes) {
        const Exportergebnis result = write(workPlan);
        if (result == Exportergebnis::Done) bytes = nachWindows1252(m_text);
        return result;
    }

private:
    Exportergebnis write(const QString& workPlan) {
        if (!rows(animals(), {}, {})) return Exportergebnis::Cancelled;
        if (m_rows == 0) return Exportergebnis::NoAnimals;
        plan(workPlan);
        for (const Geraeteabschnitt& section : Geraeteabschnitte())
            if (!rows(bookings(section), Devices, QStringLiteral("0"))) return Exportergebnis::Cancelled;
        for (const Werteliste& list : Wertelisten)
            if (!values(list)) return Exportergebnis::Cancelled;
        return Exportergebnis::Done;
    }

    QString sowsOnly() const { return m_choice.nurSauen ? QStringLiteral(" and Art = 'Sau'") : QString(); }

    QString animals() const {
        return QStringLiteral(
                   "select Art, Nummer, Stallnr, Gruppe, N_Belegung, N_Ferkelung, Geburtsdatum, Anz_Belegungen, "
                   "Anz_Ferkelungen, Anz_Ferkel_Lebend from Sauen where Abgangsdatum IS NULL") +
               sowsOnly() +
               (m_choice.sortierung == 2 ? QStringLiteral(" order by Stallnr, Nummer")
                                         : QStringLiteral(" order by Nummer"));
    }

    /// A sale need not have a sow, and the buyer's side of it outlives her; all other bookings are of animals in stock.
    QString bookings(const Geraeteabschnitt& section) const {
        const bool sale = section.art == Buchungsart::Ferkelverkauf;
        const QString table = utf8(angaben(section.art).table);
        const QString since =
            m_choice.ab.isValid() ? QStringLiteral("Datum >= ") + Sql_Datum(Datum_als_Anzeige(m_choice.ab)) : QString();
        if (sale)
            return QStringLiteral("select Muttersau, Datum") + fields(section) + QStringLiteral(" from ") + table +
                   (since.isEmpty() ? since : QStringLiteral(" where ") + since) +
                   (m_choice.sortierung == 1 ? QStringLiteral(" order by Datum, Muttersau")
                                             : QStringLiteral(" order by Muttersau, Datum"));
        static const char* const orders[] = {"Sauen.Nummer, Datum", "Datum, Sauen.Nummer",
                                             "Sauen.Stallnr, Sauen.Nummer, Datum"};
        return QStringLiteral(
                   "select Sauen.Nummer, Datum%1 from Sauen, %2 where Abgangsdatum IS NULL and "
                   "Sauen.ID = %2.Kennung%3")
                   .arg(fields(section), table, sowsOnly()) +
               // of a cross-fostering the side that takes in
               (section.art == Buchungsart::Verschiebung ? QStringLiteral(" and Anzahl_Ferkel > 0") : QString()) +
               (since.isEmpty() ? since : QStringLiteral(" and ") + since) + QStringLiteral(" order by ") +
               utf8(orders[m_choice.sortierung]);
    }

    /// With a service goes the kind of service that is usual with the sow, which the device proposes for the next one.
    static QString fields(const Geraeteabschnitt& section) {
        QString list;
        for (const Geraetefeld& field : section.fields)
            list += QStringLiteral(", ") +
                    (field.kind == Geraetewert::Service ? QStringLiteral("Sauen.Belegungsart") : utf8(field.column));
        return list;
    }

    /// A section, each row with `tail` at its end; `none` is the count of a section without rows.
    bool rows(const QString& sql, const QString& tail, const QString& none) {
        Statement rows = m_db.prepare(sql);
        QString lines;
        m_rows = 0;
        for (rows.bind({}); rows.next(); ++m_rows) {
            if (!m_goOn(m_sections)) return false;
            for (int i = 0; i < rows.fieldCount(); ++i) {
                if (i > 0) lines += u'\t';
                lines += Hochkomma_ersetzen(withoutControls(rows.text(i)));
            }
            lines += tail + Crlf;
        }
        add(m_rows > 0 ? counted(m_rows) : none, lines);
        return true;
    }

    /// The lines of the last work plan, as they are.
    void plan(const QString& path) {
        QString lines;
        qint64 count = 0;
        Zeilen_lesen(path, [&](const QString& line) {
            lines += line + Crlf;
            return ++count > 0;
        });
        add(counted(count), lines);
    }

    /// The different values of a field, whatever the day of their bookings. No value is one of them.
    bool values(const Werteliste& list) {
        const QString column = utf8(list.column);
        const QString condition =
            column == u"Nummer" ? QStringLiteral(" where Abgangsdatum IS NULL") + sowsOnly() : QString();
        Statement rows = m_db.prepare(
            QStringLiteral("select distinct %1 from %2%3 order by %1").arg(column, utf8(list.table), condition));
        QString lines;
        qint64 count = 0;
        for (rows.bind({}); rows.next(); ++count) {
            if (!m_goOn(m_sections)) return false;
            lines += (rows.isNull(0) ? QStringLiteral("Null") : withoutControls(rows.text(0))) + Crlf;
        }
        add(counted(count), lines);
        return true;
    }

    void add(const QString& count, const QString& lines) {
        m_text += count + Crlf + lines;
        m_goOn(++m_sections);
    }

    const Database& m_db;
    const Exportauswahl& m_choice;
    const std::function<bool(int)>& m_goOn;
    QString m_text;
    qint64 m_rows = 0;  // of the section written last
    int m_sections = 0;
};

}  // namespace

Exportergebnis composeDeviceFile(const Database& db, const Exportauswahl& choice, const QString& workPlan,
                                 const std::function<bool(int sections)>& goOn, QByteArray& bytes) {
    bytes.clear();
    return Composer(db, choice, goOn).run(workPlan, bytes);
}

}  // namespace koben

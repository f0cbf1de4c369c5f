// The hint about distances of cycle dates that lie outside their tolerance.
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"

namespace koben {
namespace {

/// A date text with its sort key.
struct Tag {
    explicit Tag(const QString& date) : datum(Datum_aus_Text(date)), schluessel(Datum_als_Text(QString(date))) {}
    bool leer() const { return schluessel.isEmpty(); }
    const QDate datum;
    const QString schluessel;
};

/// Collects the lines of the hint.
class Hinweise {
public:
    explicit Hinweise(const Variablen& v) : m_v(v) {}

    void zeile(const QString& line) { m_lines += line + Crlf; }

    /// Adds a line where the days between two dates miss the value of a slot by more than the tolerance.
    void abstand(const Tag& von, const Tag& bis, Zahl::Slot slot, const QString& names) {
        if (!von.datum.isValid() || !bis.datum.isValid()) return;
        const qint64 days = von.datum.daysTo(bis.datum);
        const qint64 off = days - zahl(slot);
        if (qAbs(off) <= zahl(Zahl::ToleranzTage)) return;
        zeile(QStringLiteral("...Differenz %1 %2 Tage?").arg(names).arg(days));
    }

    int zahl(Zahl::Slot slot) const { return m_v.Konfig_Zahl[slot]; }
    const QString& text() const { return m_lines; }

private:
    const Variablen& m_v;
    QString m_lines;
};

}  // namespace

QString Datumsabstaende_pruefen(const Variablen& v, const QString& modus, const QString& nummer,
                                const QString& belegung, const QString& traechtigkeit, const QString& ferkelung,
                                const QString& absetzung, const QString& geburt) {
    const Tag bel(belegung), tra(traechtigkeit), fer(ferkelung), abs(absetzung), geb(geburt);
    const bool istBelegung = modus == u"Belegung", istKontrolle = modus == u"Trächtigkeit",
               istFerkelung = modus == u"Ferkelung", istAbsetzung = modus == u"Absetzung";
    Hinweise h(v);
    if (h.zahl(Zahl::ZyklusPruefen) == 1) {
        if (istKontrolle && bel.leer() && !tra.leer())
            h.zeile(QStringLiteral("...Trächtigkeitsfeststellung ohne vorherige Belegung eingetragen."));
        if (istFerkelung && bel.leer() && !fer.leer())
            h.zeile(QStringLiteral("...Ferkelung ohne vorherige Belegung eingetragen."));
        if (istAbsetzung && fer.leer() && !abs.leer())
            h.zeile(QStringLiteral("...Absetzung ohne vorherige Ferkelung eingetragen."));
        if (!fer.leer() && !bel.leer()) {
            const bool vorher = bel.schluessel < fer.schluessel;
            if (vorher && istFerkelung)
                h.abstand(bel, fer, Zahl::TageBelegungFerkelung, QStringLiteral("Belegung - Ferkelung"));
            if (!vorher && istBelegung)
                h.abstand(fer, bel, Zahl::TageFerkelungBelegung, QStringLiteral("Ferkelung - Belegung"));
        }
        if (istAbsetzung && !fer.leer() && !abs.leer() && abs.schluessel >= fer.schluessel)
            h.abstand(fer, abs, Zahl::TageFerkelungAbsetzung, QStringLiteral("Ferkelung - Absetzung"));
        if (istAbsetzung && !bel.leer() && !abs.leer() && bel.schluessel >= abs.schluessel)
            h.abstand(abs, bel, Zahl::TageAbsetzungBelegung, QStringLiteral("Absetzung - Belegung"));
        // Counted backwards, unlike all others: the days are zero or negative here.
        if (istKontrolle && !bel.leer() && !tra.leer() && tra.schluessel >= bel.schluessel)
            h.abstand(tra, bel, Zahl::TageBelegungKontrolle, QStringLiteral("Belegung - Trächtigkeitsfeststellung"));
    }
    if (h.zahl(Zahl::GeburtPruefen) == 1 && istBelegung && !geb.leer() && !bel.leer())
        h.abstand(geb, bel, Zahl::TageGeburtBelegung, QStringLiteral("Geburtsdatum - ERST-Belegung"));
    if (h.text().isEmpty()) return {};
    return QStringLiteral("HINWEIS: Folgende Datumangaben liegen gegenseitig außerhalb der Toleranzen") + Crlf +
           QStringLiteral("Saunummer: ") + nummer + Crlf + Crlf + h.text() + Crlf;
}

}  // namespace koben

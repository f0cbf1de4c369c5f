// The rules of an animal's entry, and its save.
#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "core/Wartezeit.h"
#include "forms/Eingabe.h"
#include "herd/PB_Neues_Schwein.h"
#include "herd/PB_Neues_Schwein_Felder.h"

namespace koben {

using namespace animal;

void PB_Neues_Schwein::Findings::add(Control& field, const char* line) {
    lines += QString::fromUtf8(line);
    field.setWrong(true);
    if (!first) first = &field;
}

// ------------------------------------------------------------------------------------------------------------- rules

/// Whether another animal, also one that has left, holds this text.
bool PB_Neues_Schwein::taken(const char* field, const QString& text) const {
    const QString other = m_adding ? QString() : QStringLiteral(" and ID <> %1").arg(currentId());
    return m_db.open(QStringLiteral("select %1 from Sauen where %1 = '%2'%3")
                         .arg(QString::fromUtf8(field), Hochkomma_ersetzen(text), other))
               .recordCount() != 0;
}

/// What forbids the save.
PB_Neues_Schwein::Findings PB_Neues_Schwein::check() {
    Findings found;
    const QString number = Hochkomma_ersetzen(t[0].text());
    if (number.isEmpty())
        found.add(t[0], "...die Sau-Nummer angegeben werden muß.");
    else if (taken("Nummer", number))
        found.add(t[0], "...die Saunummer bereits existiert.");
    for (const PlainField& date : Dates)
        if (const QString entered = tdat[date.index].text(); !entered.isEmpty() && !Ist_Datum(entered))
            found.add(tdat[date.index], date.wrong);
    return found;
}

/// What the user may overrule.
PB_Neues_Schwein::Findings PB_Neues_Schwein::doubtful() {
    Findings found;
    if (!t[1].text().isEmpty() && taken("Ohrmarke", t[1].text())) found.add(t[1], "...die Ohrmarke bereits existiert.");
    if (!t[2].text().isEmpty() && koben.Konfig_Zahl[Zahl::TaetowierungDoppelt] == 0 &&
        taken("Tätowierung", t[2].text()))
        found.add(t[2], "...die Tätowierungs-Nummer bereits existiert.");
    return found;
}

/// Says everything at once; the entry stays as it was and the focus goes to the first field of concern.
bool PB_Neues_Schwein::accepted() {
    for (Control* control : controls()) control->setWrong(false);
    if (const Findings wrong = check(); wrong.first) {
        koben.message("Die Eingabe kann nicht übernommen werden, weil..." + Crlf + Crlf + wrong.lines.join(Crlf));
        wrong.first->setFocus();
        return false;
    }
    const Findings warnings = doubtful();
    if (!warnings.first || koben.yesNo("Bitte beachten:" + Crlf + Crlf + warnings.lines.join(Crlf) + Crlf + Crlf +
                                       "Sollen die Daten trotzdem akzeptiert werden?"))
        return true;
    warnings.first->setFocus();
    return false;
}

// -------------------------------------------------------------------------------------------------------------- save

/// Writes the animal, its keywords and the renumbering in one transaction; false where a value does not fit its field.
bool PB_Neues_Schwein::save() {
    const QString number = Hochkomma_ersetzen(t[0].text());
    QString warning;
    const bool saved = Speichern_oder_melden(koben, "Die Eingabe kann nicht übernommen werden", [&] {
        Transaction action(m_db);
        const qint64 id = store(number);
        enterKeywords();
        if (id != 0 && Ist_Datum(tdat[2].text())) warning = Wartezeit_pruefen(m_db, id, number, tdat[2].text());
        action.commit();
    });
    if (!saved) return false;
    koben.Liste_neu_laden = 1;
    fillLists();  // a keyword that was new can be chosen at once
    if (!warning.isEmpty()) koben.message(warning);
    koben.Quittungston();
    return true;
}

/// The row's id; 0 for a new row, which no booking can know yet.
qint64 PB_Neues_Schwein::store(const QString& number) {
    const qint64 id = currentId();
    Recordset row = m_db.open(QStringLiteral("select * from Sauen where ID = %1").arg(id));
    QString before = number;
    if (m_adding) {
        row.addNew();
        row.set(u"Selektiert", QString());
        row.set(u"Status", QString());
        for (const char* counter : {"Anz_Belegungen", "Anz_Ferkelungen", "Anz_Ferkel_Gesamt", "Anz_Ferkel_Lebend"})
            row.set(QString::fromUtf8(counter), 0);
    } else {
        before = Hochkomma_ersetzen(row.value(u"Nummer"));
        row.edit();
    }
    write(row);
    row.update();
    if (before != number) renumberMother(before, number);
    return id;
}

void PB_Neues_Schwein::write(Recordset& row) const {
    const auto set = [&row](const char* field, const Value& value) { row.set(QString::fromUtf8(field), value); };
    // a kind that the list does not know (from an import) is not lost by a change of other fields
    if (m_adding || !kom[0].text().isEmpty()) set("Art", kom[0].text());
    for (const TextField& field : Texts) set(field.name, Hochkomma_ersetzen(t[field.index].text()));
    for (const TextField& field : Keywords) set(field.name, Hochkomma_ersetzen(kom[field.index].text()));
    for (const PlainField& field : Dates) {
        const QString date = tdat[field.index].text();
        set(field.name, Ist_Datum(date) ? Value(Datum_aus_Text(date)) : Value());
    }
    for (const PlainField& field : Numbers) {
        QString entered = tz[field.index].text();
        set(field.name, field.amount ? Value(Betrag_aus_Text(entered)) : Value(Zahl_aus_Text(entered)));
    }
    set("Statusabfrage", konstatus.checked() ? QStringLiteral("N") : QString());
    if (kom[4].current() >= 0) set("Belegungsart", kom[4].text());
    set("Mechanische_Amme", konamme.checked() ? QStringLiteral("J") : QStringLiteral("N"));
}

void PB_Neues_Schwein::enterKeywords() {
    for (const TextField& field : Keywords)
        Stichwort_eintragen(m_db, Hochkomma_ersetzen(kom[field.index].text()), QString::fromUtf8(field.keywords));
}

/// Losses and sales name the mother by her number. Services and cross-fosterings keep the old one.
void PB_Neues_Schwein::renumberMother(const QString& before, const QString& number) {
    if (before.isEmpty()) return;  // bookings without a mother are not hers
    for (const char* table : {"Ferkelverkauf", "Verluste"})
        m_db.execute(QStringLiteral("update %1 set Muttersau = '%2' where Muttersau = '%3'")
                         .arg(QString::fromUtf8(table), number, before));
}

}  // namespace koben

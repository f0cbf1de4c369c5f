// The rules of an animal's entry, and its save.
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "core/Wartezeit.h"
#include "herd/PB_Neues_Schwein.h"

namespace koben {

namespace {

const char* const WrongDates[] = {"...das Geburtsdatum nicht korrekt ist.", "...das Zugangsdatum nicht korrekt ist.",
                                  "...das Abgangsdatum nicht korrekt ist.", "...das Box-Datum nicht korrekt ist."};
constexpr int Leaving = 2;  // of tdat

/// Losses and sales name the mother by her number. Services and cross-fosterings keep the old one.
void renumberMother(Database db, const QString& before, const QString& number) {
    if (before.isEmpty()) return;  // bookings without a mother are not hers
    for (const char* table : {"Ferkelverkauf", "Verluste"})
        db.execute(QStringLiteral("update %1 set Muttersau = '%2' where Muttersau = '%3'")
                       .arg(QString::fromUtf8(table), number, before));
}

}  // namespace

/// Whether another animal, also one that has left, holds this text.
bool PB_Neues_Schwein::taken(const char* field, const TextBox& box) const {
    const QString other = adding() ? QString() : QStringLiteral(" and ID <> %1").arg(currentId());
    return !box.text().isEmpty() && m_db.open(QStringLiteral("select %1 from Sauen where %1 = '%2'%3")
                                                  .arg(QString::fromUtf8(field), Hochkomma_ersetzen(box.text()), other))
                                            .recordCount() != 0;
}

/// What forbids the save.
void PB_Neues_Schwein::check(Findings& found) {
    if (Hochkomma_ersetzen(t[0].text()).isEmpty())
        found.add(t[0], "...die Sau-Nummer angegeben werden muß.");
    else if (taken("Nummer", t[0]))
        found.add(t[0], "...die Saunummer bereits existiert.");
    for (int i = 0; i < tdat.count(); ++i)
        if (!tdat[i].text().isEmpty() && !Ist_Datum(tdat[i].text()))
            found.add(tdat[i], QString::fromUtf8(WrongDates[i]));
}

/// What the user may overrule.
bool PB_Neues_Schwein::agreed() {
    Findings doubts;
    if (taken("Ohrmarke", t[1])) doubts.add(t[1], "...die Ohrmarke bereits existiert.");
    if (koben.Konfig_Zahl[Zahl::TaetowierungDoppelt] == 0 && taken("Tätowierung", t[2]))
        doubts.add(t[2], "...die Tätowierungs-Nummer bereits existiert.");
    if (doubts.empty() || koben.yesNo("Bitte beachten:" + Crlf + Crlf + doubts.lines().join(Crlf) + Crlf + Crlf +
                                      "Sollen die Daten trotzdem akzeptiert werden?"))
        return true;
    doubts.first()->setFocus();
    return false;
}

/// "Sau 1023 neu"
QString PB_Neues_Schwein::actionName() const {
    return QStringLiteral("%1 %2 %3")
        .arg(kom[0].text().isEmpty() ? "Tier" : kom[0].text(), Hochkomma_ersetzen(t[0].text()),
             adding() ? "neu" : "geändert");
}

/// Writes the animal and the renumbering; a new animal can be in no booking yet.
void PB_Neues_Schwein::write(const Action& action) {
    const Database& db = action.database();
    const QString number = Hochkomma_ersetzen(t[0].text());
    m_warning.clear();
    auto fields = values();
    // a kind that the list does not know (from an import) is not lost by a change of other fields
    if (adding() || !kom[0].text().isEmpty()) fields.emplace_back("Art", kom[0].text());
    if (kom[4].current() >= 0) fields.emplace_back("Belegungsart", kom[4].text());
    Recordset row = db.open(QStringLiteral("select * from Sauen where ID = %1").arg(currentId()));
    if (adding()) {
        row.addNew();
        for (const char* text : {"Selektiert", "Status"}) row.set(QString::fromUtf8(text), QString());
        for (const char* counter : {"Anz_Belegungen", "Anz_Ferkelungen", "Anz_Ferkel_Gesamt", "Anz_Ferkel_Lebend"})
            row.set(QString::fromUtf8(counter), 0);
    } else {
        const QString before = Hochkomma_ersetzen(row.value(u"Nummer"));
        if (before != number) renumberMother(db, before, number);
        row.edit();
    }
    for (const auto& [field, value] : fields) row.set(field, value);
    row.update();
    if (!adding() && Ist_Datum(tdat[Leaving].text()))
        m_warning = Wartezeit_pruefen(db, currentId(), number, tdat[Leaving].text());
}

void PB_Neues_Schwein::refresh() {
    koben.Liste_neu_laden = 1;
    readLists();  // a keyword that was new can be chosen at once
}

QStringList PB_Neues_Schwein::hints() const { return m_warning.isEmpty() ? QStringList() : QStringList(m_warning); }

/// To a fresh record, or to the neighbour in the herd list, wrapping at the ends.
void PB_Neues_Schwein::goOn(int index) {
    koben.Quittungston();
    if (index == 0) return cancel();
    if (adding()) {
        if (koben.herdList) koben.herdList->datenschweinelesen();
    } else if (koben.herdList && koben.herdList->herd().rowCount() > 1) {
        koben.Tier_weiterschalten(index == 2 ? 1 : 0);
    }
    showAnimal();
}

}  // namespace koben

#include "plans/PB_Sauenkarte.h"

#include "core/PZ_Koben_Subs.h"
#include "store/Action.h"

namespace koben {

PB_Sauenkarte::PB_Sauenkarte(Koben& koben_) : Sauenkartendruck(koben_, "PB_Sauenkarte", "Sauenkarten drucken") {
    ok.onClick = [this] { ok_Click(); };
}

void PB_Sauenkarte::ok_Click() {
    const std::vector<int> rows = rowsToPrint();
    if (rows.empty()) return;
    if (!koben.yesNo("ACHTUNG" + Crlf + Crlf +
                     QStringLiteral(
                         "Die Sauenkarte beinhaltet eine Übersicht von den Sauen mit den Belegungen, Ferkeldungen und "
                         "Absetzungen für jede Sau. In diesem Modul ist keine Druckvorschau möglich. D.h. wenn Sie "
                         "jetzt mit [Ja] bestätigen, wird für jede der %1 markierten Sauen eine Sauenkarte auf einer "
                         "DIN-A-4-Seite ausgedruckt. Soll der Ausdruck gemacht werden?")
                         .arg(rows.size())))
        return;
    if (print(rows) && !m_db.looksOnly()) notePrinted(rows);
}

bool PB_Sauenkarte::draw(PrintJob& job, const std::vector<int>& rows, const PrintJob::Go& go) const {
    const std::vector<qint64> sows = sowsOf(rows);
    const Kartenbuchungen bookings(m_db, sows, [&](qint64) { return go(0); });
    const Kartentage days(koben);
    Sauenkarten_beginnen(job);
    for (size_t i = 0; i < rows.size(); ++i) {
        if (!go(static_cast<int>(i * 100 / rows.size()))) return false;
        if (i > 0) job.newPage();
        Sauenkarte_drucken(job, sow(rows[i]), bookings.of(sows[i]), days);
    }
    return go(100);
}

Kartensau PB_Sauenkarte::sow(int row) const {
    const auto text = [&](QStringView field) { return Hochkomma_ersetzen(datali.cell(row, field)); };
    return {.id = datali.value(row, u"ID").toInt(),
            .number = text(u"Nummer"),
            .box = text(u"Stallnr"),
            .group = text(u"Gruppe"),
            .birth = text(u"Geburtsdatum"),
            .earTag = text(u"Ohrmarke"),
            .tattoo = text(u"Tätowierung"),
            .breed = text(u"Rasse"),
            .lastService = datali.value(row, u"L_Belegung").toDate()};
}

/// Their cards are up to date now.
void PB_Sauenkarte::notePrinted(const std::vector<int>& rows) {
    Action action(m_db, rows.size() == 1 ? QStringLiteral("1 Sauenkarte gedruckt")
                                         : QStringLiteral("%1 Sauenkarten gedruckt").arg(rows.size()));
    Statement clear =
        m_db.prepare("update Sauen set Aenderung = '' where ID = ? and (Aenderung <> '' or Aenderung IS NULL)");
    const int field = datali.columnOf(u"Aenderung");
    for (const int row : rows) clear.run({datali.value(row, u"ID")});
    action.commit();
    for (const int row : rows)
        if (datali.cell(row, field) != u"") datali.setCell(row, field, QString());
}

}  // namespace koben

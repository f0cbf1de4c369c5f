#include "plans/PB_Sauenkarte.h"

#include "core/PZ_Koben_Subs.h"
#include "store/Action.h"

namespace koben {

namespace {

enum Choice { All, None, Changed, Selected };

constexpr int Steps = 1000, Drawn = 200;  // of the progress: painting takes longest

}  // namespace

PB_Sauenkarte::PB_Sauenkarte(Koben& koben_) : Bericht(koben_, "PB_Sauenkarte", "Sauenkarten drucken") {
    datali.setHint(QStringLiteral("Sauen"));
    komdrucker.fixed = true;
    komdrucker.setHint(Label2.text());
    for (int i = 0; i < alletier.count(); ++i) alletier[i].onClick = [this, i] { alletier_Click(i); };
    ok.onClick = [this] { ok_Click(); };
    bindButtons(ok, beenden, &hilfe);
    bindWidths(datali, "pb_sauenkarte");
}

void PB_Sauenkarte::fillChoices() {
    datali.bind(
        m_db.table("select Nummer, Stallnr, Gruppe, Status, L_Belegung, Selektiert, Aenderung, Geburtsdatum, "
                   "Ohrmarke, Tätowierung, Rasse, ID from Sauen where Art = 'Sau'  and Abgangsdatum IS NULL "
                   "order by Nummer"));
    datali.column(datali.columnOf(u"Selektiert")).caption = QStringLiteral("Selektiert");
    datali.column(datali.columnOf(u"Aenderung")).caption = QStringLiteral("Aktualisiert");
    datali.column(datali.columnOf(u"ID")).technical = true;
    komdrucker.setItems(QStringList{QString()} + koben.platform.printers());
}

void PB_Sauenkarte::alletier_Click(int index) {
    const int field = datali.columnOf(index == Changed ? u"Aenderung" : u"Selektiert");
    std::vector<int> rows;
    for (int row = 1; row <= datali.rowCount(); ++row)
        if (index == All || (index != None && datali.cell(row, field) == u"X")) rows.push_back(row);
    datali.mark(rows);
}

void PB_Sauenkarte::ok_Click() {
    const std::vector<int> rows = datali.markedRows();
    if (rows.empty())
        return koben.message("Bitte markieren Sie zuerst die Sauen, von denen eine Sauenkarte erstellt werden soll.");
    if (!koben.yesNo("ACHTUNG" + Crlf + Crlf +
                     QStringLiteral(
                         "Die Sauenkarte beinhaltet eine Übersicht von den Sauen mit den Belegungen, Ferkeldungen und "
                         "Absetzungen für jede Sau. In diesem Modul ist keine Druckvorschau möglich. D.h. wenn Sie "
                         "jetzt mit [Ja] bestätigen, wird für jede der %1 markierten Sauen eine Sauenkarte auf einer "
                         "DIN-A-4-Seite ausgedruckt. Soll der Ausdruck gemacht werden?")
                         .arg(rows.size())))
        return;
    if (print(rows)) notePrinted(rows);
}

/// All cards as one document, whole or not at all. False where nothing was printed.
bool PB_Sauenkarte::print(const std::vector<int>& rows) {
    const auto job = koben.platform.print(komdrucker.text(), false);
    bool printed = false;
    const bool whole = !job || run("Die Sauenkarten werden gedruckt ...", Steps, nullptr, [&](Progress& progress) {
        if (!drawAll(*job, rows, progress)) return;
        printed = job->end([&](int percent) { return progress.step(Drawn + percent * (Steps - Drawn) / 100); });
    });
    if (whole && !printed)
        koben.message(
            "Die Sauenkarten können nicht gedruckt werden, weil der Drucker nicht bereit ist. Bitte prüfen Sie, ob er "
            "eingeschaltet und angeschlossen ist, oder wählen Sie einen anderen Drucker.");
    return printed;
}

/// False where the user has cancelled.
bool PB_Sauenkarte::drawAll(PrintJob& job, const std::vector<int>& rows, Progress& progress) const {
    std::vector<qint64> sows;
    for (const int row : rows) sows.push_back(datali.value(row, u"ID").toInt());
    const Kartenbuchungen bookings(m_db, sows, [&](qint64) { return progress.step(0); });
    const Kartentage days(koben);
    Sauenkarten_beginnen(job);
    const auto count = static_cast<qint64>(rows.size());
    for (qint64 i = 0; i < count; ++i) {
        if (!progress.step(i * Drawn / count)) return false;
        if (i > 0) job.newPage();
        const auto at = static_cast<size_t>(i);
        Sauenkarte_drucken(job, sow(rows[at]), bookings.of(sows[at]), days);
    }
    return !progress.cancelled();
}

void PB_Sauenkarte::draw(PrintJob& job, int row) const {
    const Kartensau drawn = sow(row);
    Sauenkarten_beginnen(job);
    Sauenkarte_drucken(job, drawn, Kartenbuchungen(m_db, {drawn.id}).of(drawn.id), Kartentage(koben));
    job.end();
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

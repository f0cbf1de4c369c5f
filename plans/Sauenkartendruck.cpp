#include "plans/Sauenkartendruck.h"

namespace koben {

namespace {

enum Choice { All, None, Changed, Selected };

constexpr int Steps = 1000, Drawn = 200;  // of the progress: painting takes longest

}  // namespace

Sauenkartendruck::Sauenkartendruck(Koben& koben_, const QString& name, const QString& caption)
    : Bericht(koben_, name, caption) {
    datali.setHint(QStringLiteral("Sauen"));
    komdrucker.fixed = true;
    komdrucker.setHint(Label2.text());
    for (int i = 0; i < alletier.count(); ++i) alletier[i].onClick = [this, i] { alletier_Click(i); };
    bindButtons(ok, beenden, &hilfe);
    bindWidths(datali, "pb_sauenkarte");
}

void Sauenkartendruck::fillChoices() {
    datali.bind(
        m_db.table("select Nummer, Stallnr, Gruppe, Status, L_Belegung, Selektiert, Aenderung, Geburtsdatum, "
                   "Ohrmarke, Tätowierung, Rasse, ID from Sauen where Art = 'Sau'  and Abgangsdatum IS NULL "
                   "order by Nummer"));
    datali.column(datali.columnOf(u"Selektiert")).caption = QStringLiteral("Selektiert");
    datali.column(datali.columnOf(u"Aenderung")).caption = QStringLiteral("Aktualisiert");
    datali.column(datali.columnOf(u"ID")).technical = true;
    komdrucker.setItems(QStringList{QString()} + koben.platform.printers());
}

void Sauenkartendruck::alletier_Click(int index) {
    const int field = datali.columnOf(index == Changed ? u"Aenderung" : u"Selektiert");
    std::vector<int> rows;
    for (int row = 1; row <= datali.rowCount(); ++row)
        if (index == All || (index != None && datali.cell(row, field) == u"X")) rows.push_back(row);
    datali.mark(rows);
}

std::vector<int> Sauenkartendruck::rowsToPrint() {
    std::vector<int> rows = datali.markedRows();
    if (rows.empty())
        koben.message("Bitte markieren Sie zuerst die Sauen, von denen eine Sauenkarte erstellt werden soll.");
    return rows;
}

std::vector<qint64> Sauenkartendruck::sowsOf(const std::vector<int>& rows) const {
    std::vector<qint64> sows;
    for (const int row : rows) sows.push_back(datali.value(row, u"ID").toInt());
    return sows;
}

bool Sauenkartendruck::print(const std::vector<int>& rows) {
    const auto job = koben.platform.print(komdrucker.text(), false);
    bool printed = false;
    const bool whole = !job || run("Die Sauenkarten werden gedruckt ...", Steps, nullptr, [&](Progress& progress) {
        if (!draw(*job, rows, [&](int percent) { return progress.step(percent * Drawn / 100); })) return;
        printed = job->end([&](int percent) { return progress.step(Drawn + percent * (Steps - Drawn) / 100); });
    });
    if (whole && !printed)
        koben.message(
            "Die Sauenkarten können nicht gedruckt werden, weil der Drucker nicht bereit ist. Bitte prüfen Sie, ob er "
            "eingeschaltet und angeschlossen ist, oder wählen Sie einen anderen Drucker.");
    return printed;
}

void Sauenkartendruck::look(PrintJob& job, const std::vector<int>& rows) {
    run("Die Sauenkarten werden gezeichnet ...", 100, nullptr, [&](Progress& progress) {
        if (draw(job, rows, [&](int percent) { return progress.step(percent); })) job.end();
    });
}

}  // namespace koben

#include "plans/PB_Arbeitsplan.h"

#include "core/Einstellungen.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "core/Wartezeit.h"

namespace koben {

PB_Arbeitsplan::PB_Arbeitsplan(Koben& koben_) : Bericht(koben_, "PB_Arbeitsplan", "Arbeitspläne berechnen") {
    optisort.frame = QStringLiteral("Sortierung nach...");
    allearplan[0].setHint("Alle Arbeitspläne markieren");
    allearplan[1].setHint("Keinen Arbeitsplan markieren");
    tdat.setHint(rahmen[1].text());
    for (int i = 0; i < t.count(); ++i) t[i].setHint(bez[i].text());
    gridli.setVisible(false);
    bindChoices();
    bindButtons(ok[0], beenden, &hilfe);
    for (int i = 0; i < woche.count(); ++i) woche[i].onClick = [this, i] { woche_Click(i); };
    for (int i = 0; i < ok.count(); ++i) ok[i].onClick = [this, i] { ok_Click(i); };
    comarbplanoptionen.onClick = [this] { comarbplanoptionen_Click(); };
}

void PB_Arbeitsplan::bindChoices() {
    bind(optisort, Zahl::PlanSortierung);
    bind(kon, Zahl::PlanFeldNummer);
    bind(konnurweiblich, Zahl::PlanNurSauen);
    bind(wartezeit, Zahl::PlanWartezeit);
    // The two marks come back together: a chart with one of them alone would tell nothing.
    QString &due = koben.Konfig_Text[Text::PlanZeichenTermin], &free = koben.Konfig_Text[Text::PlanZeichenFrei];
    bind(
        [this, &due, &free] {
            if (!due.isEmpty()) t[0].setText(due), t[1].setText(free);
        },
        [this, &due, &free] { due = t[0].text(), free = t[1].text(); });
    // A run takes no mark as all: the names kept in the settings are those of the last run and are not marked again.
    bindMarks(liarplan, Text::PlanArten, Marks::Forgotten);
    bindAllAndNone(allearplan, [this]() -> ListBox& { return liarplan; });
    bindDate(tdat, calender, calend);
}

void PB_Arbeitsplan::Load() {
    Bericht::Load();
    tdat.setText(koben.Heute);
    showEnd();
    if (liarplan.items().isEmpty())
        koben.message("Hinweis:" + Crlf + Crlf +
                      "Legen Sie in den Optionen die Arbeitspläne fest (sonst können keine Arbeitspläne erstellt "
                      "werden)!");
}

void PB_Arbeitsplan::fillChoices() {
    const Table options = m_db.table("select * from Arbeitsplanoptionen");
    QStringList names;
    for (int row = 0; row < options.rowCount(); ++row)
        names.append(Hochkomma_ersetzen(options.text(row, options.columnOf(u"Arbeitsart"))));
    liarplan.setItems(names);
}

// ------------------------------------------------------------------------------------------------------------- period

/// The period's last day, counted from the first; an invalid day leaves it as it is.
void PB_Arbeitsplan::showEnd() {
    const QDate start = Datum_aus_Text(tdat.text());
    if (!start.isValid()) return;
    m_end = start.addDays(koben.Konfig_Zahl[Zahl::PlanTage]);
    Bezeichnung1.setText("bis " + Datum_als_Anzeige(m_end));
}

void PB_Arbeitsplan::dateChanged(TextBox&) { showEnd(); }

void PB_Arbeitsplan::woche_Click(int index) {
    koben.Konfig_Zahl[Zahl::PlanTage] = static_cast<qint16>(7 * (index + 1) - 1);
    showEnd();
}

void PB_Arbeitsplan::comarbplanoptionen_Click() {
    koben.open("PV_Arbeitsplandaten");
    koben.message(
        "Falls Sie Änderungen in den Arbeitsplanoptionen vorgenommen haben, dann schließen Sie bitte dieses Modul und "
        "öffnen Sie es wieder, damit der Datenbestand wieder geladen wird!");
}

// -------------------------------------------------------------------------------------------------------------- a run

void PB_Arbeitsplan::ok_Click(int index) {
    const bool chart = index == 1;
    if (chart) fixMarks();
    const QDate start = Datum_aus_Text(tdat.text());
    if (!start.isValid())
        return koben.message("Die Arbeitspläne können nicht berechnet werden, weil..." + Crlf + Crlf +
                             "...die Berechnungszeiträume falsche Datumangaben enthalten.");
    const Planzeitraum period{static_cast<qint32>(start.toJulianDay()), static_cast<qint32>(m_end.toJulianDay())};
    tickAllIfNone(kon);
    switch (fill(period, chosenForm(chart))) {
        case Outcome::NoAnimals:
            return koben.message("Es wurden lt. den aktuellen Einstellungen keine Tiere gefunden!");
        case Outcome::Cancelled:
            return;
        case Outcome::Done:
            break;
    }
    writePocketFile();
    Liste_ausgeben(koben, gridli);
}

/// The result into the hidden grid.
PB_Arbeitsplan::Outcome PB_Arbeitsplan::fill(Planzeitraum period, const Arbeitsplanform& form) {
    const WaitCursor wait(koben);
    const Tierauswahl choice{.sowsOnly = konnurweiblich.checked(), .withBlocks = wartezeit.checked()};
    const QStringList names = markedOrAll(liarplan);
    const auto works = Arbeiten_lesen(m_db.table("select * from Arbeitsplanoptionen"), names);
    const Table animals = Tiere_lesen(m_db, works, period, choice);
    if (animals.rowCount() == 0 && !Tiere_vorhanden(m_db, choice)) return Outcome::NoAnimals;
    const auto blocks = choice.withBlocks ? Wartezeiten_lesen(m_db, period.first) : QHash<qint64, qint32>();
    std::vector<Faelligkeit> plan;
    const qint64 steps = animals.rowCount() * static_cast<qint64>(works.size());
    const bool whole = run("Der Arbeitsplan wird berechnet ...", steps, &meter, [&](Progress& progress) {
        plan = Arbeitsplan_berechnen(animals, works, period, blocks, [&](int done) { return progress.step(done); });
    });
    if (!whole) return Outcome::Cancelled;
    Arbeitsplan_ausgeben(gridli, animals, std::move(plan), names, period, form);
    return Outcome::Done;
}

/// The chart needs two different marks, and the one of a due day must be seen.
void PB_Arbeitsplan::fixMarks() {
    if (t[0].text().trimmed().isEmpty()) t[0].setText("X");
    if (t[1].text().trimmed().isEmpty()) t[1].setText(" ");
    if (t[0].text() != t[1].text()) return;
    koben.message(
        "Sie dürfen keinesfalls für die vorhandenen und freien Termine das gleiche Zeichen verwenden. KOBEN ersetzt "
        "deshalb Ihre Angaben durch Standard-Werte.");
    t[0].setText("X");
    t[1].setText(" ");
}

Arbeitsplanform PB_Arbeitsplan::chosenForm(bool chart) const {
    Arbeitsplanform form{.chart = chart, .sort = optisort.selected(), .due = t[0].text(), .free = t[1].text()};
    for (int i = 0; i < kon.count(); ++i) form.fields[static_cast<size_t>(i)] = kon[i].checked();
    return form;
}

void PB_Arbeitsplan::writePocketFile() {
    if (koben.Stand.isValid()) return;  // the barn works by today's plan
    const QString path = koben.Datenordner + "PB_Arbeitsplan_Pocket.txt";
    if (!Textdatei_schreiben(path, Arbeitsplan_Pocket(gridli)))
        koben.message(QStringLiteral("Die Datei %1 für den Pocket-PC kann nicht geschrieben werden und behält ihren "
                                     "alten Inhalt. Bitte prüfen Sie, ob im Datenordner genügend Platz und das "
                                     "Schreiben erlaubt ist.")
                          .arg(path));
}

}  // namespace koben

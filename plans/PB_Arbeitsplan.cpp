#include "plans/PB_Arbeitsplan.h"

#include <algorithm>

#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"
#include "forms/Stammdaten.h"

namespace koben {

PB_Arbeitsplan::PB_Arbeitsplan(Koben& koben_) : Form(koben_, "PB_Arbeitsplan", "Arbeitspläne berechnen") {
    optisort.frame = QStringLiteral("Sortierung nach...");
    allearplan[0].setHint("Alle Arbeitspläne markieren");
    allearplan[1].setHint("Keinen Arbeitsplan markieren");
    calender.icon = QStringLiteral("kalender");
    calender.setHint("Kalender");
    tdat.setHint(rahmen[1].text());
    for (int i = 0; i < t.count(); ++i) t[i].setHint(bez[i].text());
    gridli.setVisible(false);
    helpTopic = name();
    acceptButton = &ok[0];
    cancelButton = &beenden;
    connectHandlers();
}

void PB_Arbeitsplan::connectHandlers() {
    tdat.onLostFocus = [this] { tdat_LostFocus(); };
    calender.onClick = [this] { calend.setVisible(!calend.visible()); };
    calend.onPick = [this](QDate date) { calend_Pick(date); };
    for (int i = 0; i < woche.count(); ++i) woche[i].onClick = [this, i] { woche_Click(i); };
    for (int i = 0; i < allearplan.count(); ++i) allearplan[i].onClick = [this, i] { allearplan_Click(i); };
    for (int i = 0; i < ok.count(); ++i) ok[i].onClick = [this, i] { ok_Click(i); };
    comarbplanoptionen.onClick = [this] { comarbplanoptionen_Click(); };
    hilfe.onClick = [this] { koben.open("PH_Hilfe"); };
    beenden.onClick = [this] { beenden_Click(); };
}

void PB_Arbeitsplan::Load() {
    restoreChoices();
    const QDate today = Datum_aus_Text(koben.Heute);
    tdat.setText(koben.Heute);
    showEnd(today);
    m_db = koben.connect();
    // No kind of work is marked on opening, and a run takes this as all: the names kept in the settings are those of
    // the last run and are not marked again.
    const Table options = m_db.table("select * from Arbeitsplanoptionen");
    QStringList names;
    for (int row = 0; row < options.rowCount(); ++row)
        names.append(Hochkomma_ersetzen(options.text(row, options.columnOf(u"Arbeitsart"))));
    liarplan.setItems(names);
    if (names.isEmpty())
        koben.message("Hinweis:" + Crlf + Crlf +
                      "Legen Sie in den Optionen die Arbeitspläne fest (sonst können keine Arbeitspläne erstellt "
                      "werden)!");
    calend.setDate(today);
}

void PB_Arbeitsplan::restoreChoices() {
    const auto& number = koben.Konfig_Zahl;
    optisort.select(0);
    optisort.select(std::max<int>(number[Zahl::PlanSortierung], 0));
    for (int i = 0; i < kon.count(); ++i) {
        const int kept = number[static_cast<size_t>(Zahl::PlanFeldNummer + i)];
        if (kept < 2) kon[i].setChecked(kept == 1);
    }
    konnurweiblich.setChecked(number[Zahl::PlanNurSauen] == 1);
    wartezeit.setChecked(number[Zahl::PlanWartezeit] == 1);
    if (koben.Konfig_Text[Text::PlanZeichenTermin].isEmpty()) return;
    t[0].setText(koben.Konfig_Text[Text::PlanZeichenTermin]);
    t[1].setText(koben.Konfig_Text[Text::PlanZeichenFrei]);
}

// ------------------------------------------------------------------------------------------------ period and choices

/// The period's last day, counted from `start`; an invalid day leaves it as it is.
void PB_Arbeitsplan::showEnd(QDate start) {
    if (!start.isValid()) return;
    m_end = start.addDays(koben.Konfig_Zahl[Zahl::PlanTage]);
    Bezeichnung1.setText("bis " + Datum_als_Anzeige(m_end));
}

void PB_Arbeitsplan::tdat_LostFocus() {
    tdat.setText(Datum_ergaenzen(tdat.text(), koben.Heute));
    showEnd(Datum_aus_Text(tdat.text()));
}

void PB_Arbeitsplan::woche_Click(int index) {
    koben.Konfig_Zahl[Zahl::PlanTage] = static_cast<qint16>(7 * (index + 1) - 1);
    showEnd(Datum_aus_Text(tdat.text()));
}

void PB_Arbeitsplan::calend_Pick(QDate date) {
    tdat.setText(Datum_als_Anzeige(date));
    calend.setVisible(false);
    showEnd(date);
}

void PB_Arbeitsplan::allearplan_Click(int index) {
    for (int row = 0; row < liarplan.items().size(); ++row) liarplan.setMarked(row, index == 0);
}

void PB_Arbeitsplan::comarbplanoptionen_Click() {
    koben.open("PV_Arbeitsplandaten");
    koben.message(
        "Falls Sie Änderungen in den Arbeitsplanoptionen vorgenommen haben, dann schließen Sie bitte dieses Modul und "
        "öffnen Sie es wieder, damit der Datenbestand wieder geladen wird!");
}

void PB_Arbeitsplan::beenden_Click() {
    auto& number = koben.Konfig_Zahl;
    number[Zahl::PlanSortierung] = static_cast<qint16>(optisort.selected());
    for (int i = 0; i < kon.count(); ++i)
        number[static_cast<size_t>(Zahl::PlanFeldNummer + i)] = kon[i].checked() ? 1 : 0;
    number[Zahl::PlanNurSauen] = konnurweiblich.checked() ? 1 : 0;
    number[Zahl::PlanWartezeit] = wartezeit.checked() ? 1 : 0;
    koben.Konfig_Text[Text::PlanZeichenTermin] = t[0].text();
    koben.Konfig_Text[Text::PlanZeichenFrei] = t[1].text();
    QString names = ";";
    for (const QString& name : markedWorks()) names += name + u';';
    koben.Konfig_Text[Text::PlanArten] = names;
    m_db.close();
    close();
}

// ------------------------------------------------------------------------------------------------------------ a run

void PB_Arbeitsplan::ok_Click(int index) {
    const bool chart = index == 1;
    if (chart) fixMarks();
    const QDate start = Datum_aus_Text(tdat.text());
    if (!start.isValid())
        return koben.message("Die Arbeitspläne können nicht berechnet werden, weil..." + Crlf + Crlf +
                             "...die Berechnungszeiträume falsche Datumangaben enthalten.");
    const Zeitraum period{static_cast<qint32>(start.toJulianDay()), static_cast<qint32>(m_end.toJulianDay())};
    tickFields();
    if (liarplan.markedCount() == 0) allearplan_Click(0);
    if (!fill(period, chosenForm(chart)))
        return koben.message("Es wurden lt. den aktuellen Einstellungen keine Tiere gefunden!");
    writePocketFile();
    if (gridli.rowCount() == 0) return koben.message("Keine zu listenden Daten gefunden");
    Liste_uebergeben(koben, gridli);
}

/// The result into the hidden grid; false where there is no animal.
bool PB_Arbeitsplan::fill(Zeitraum period, const Arbeitsplanform& form) {
    const WaitCursor wait(koben);
    const Tierauswahl choice{.sowsOnly = konnurweiblich.checked(), .withBlocks = wartezeit.checked()};
    const QStringList names = markedWorks();
    const auto works = Arbeiten_lesen(m_db.table("select * from Arbeitsplanoptionen"), names);
    const Table animals = Tiere_lesen(m_db, works, period, choice);
    if (animals.rowCount() == 0 && !Tiere_vorhanden(m_db, choice)) return false;
    Arbeitsplan_ausgeben(gridli, animals, compute(animals, works, period), names, period, form);
    return true;
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

/// A list without any field of the animals would say nothing.
void PB_Arbeitsplan::tickFields() {
    if (std::any_of(kon.begin(), kon.end(), [](const auto& box) { return box->checked(); })) return;
    for (auto& box : kon) box->setChecked(true);
}

QStringList PB_Arbeitsplan::markedWorks() const {
    QStringList works;
    for (int row = 0; row < liarplan.items().size(); ++row)
        if (liarplan.marked(row)) works.append(liarplan.items().at(row));
    return works;
}

std::vector<Faelligkeit> PB_Arbeitsplan::compute(const Table& animals, const std::vector<Arbeit>& works,
                                                 Zeitraum period) {
    meter.setRange(animals.rowCount() * static_cast<int>(works.size()));
    meter.setVisible(true);
    const auto blocks = wartezeit.checked() ? Wartezeiten_lesen(m_db, period.first) : QHash<qint64, qint32>();
    auto plan = Arbeitsplan_berechnen(animals, works, period, blocks, [this](int steps) {
        meter.setValue(steps);
        koben.screens.breathe();
    });
    meter.setVisible(false);
    return plan;
}

Arbeitsplanform PB_Arbeitsplan::chosenForm(bool chart) const {
    Arbeitsplanform form{.chart = chart, .sort = optisort.selected(), .due = t[0].text(), .free = t[1].text()};
    for (int i = 0; i < kon.count(); ++i) form.fields[static_cast<size_t>(i)] = kon[i].checked();
    return form;
}

void PB_Arbeitsplan::writePocketFile() {
    const QString path = koben.Datenordner + "PB_Arbeitsplan_Pocket.txt";
    if (!Textdatei_schreiben(path, Arbeitsplan_Pocket(gridli)))
        koben.message(QStringLiteral("Die Datei %1 für den Pocket-PC kann nicht geschrieben werden und behält ihren "
                                     "alten Inhalt. Bitte prüfen Sie, ob im Datenordner genügend Platz und das "
                                     "Schreiben erlaubt ist.")
                          .arg(path));
}

}  // namespace koben

// Menu bar, toolbar and context menu of the main form, as tables of data.
#include <QFile>
#include <QFileInfo>

#include "core/Aktionsnamen.h"
#include "core/ErrorLog.h"
#include "herd/PA_Koben.h"
#include "store/Journal.h"

namespace koben {

/// An entry of the menu bar: what it opens, and what to set before and after.
struct MenuRow {
    const char* menu;
    const char* name;
    const char* caption;
    const char* form;  // the screen it needs, "" for none; a handler of the main form goes before opening it
    const char* mode = "";
    int kind = -1;
    bool cycleAfter = false;
};

namespace {

struct Menu {
    const char* name;
    const char* caption;
};
const Menu Menus[] = {{"XB_Bestand", "&Bestand"},      {"XE_Eingabe", "&Eingabe"},  {"A_Auswertungen", "&Auswertungen"},
                      {"V_Verwaltung", "&Verwaltung"}, {"O_Optionen", "&Optionen"}, {"H_Hilfe", "&Hilfe"}};

const MenuRow Rows[] = {
    {"XB_Bestand", "XB_neueschweine", "Neue Schweine &eingeben (Sauen, Eber, Masttiere)", "PB_Neues_Schwein", "Neu", -1,
     true},
    {"XB_Bestand", "XB_schweinändern", "Aktuelles Schwein &ändern", "PB_Neues_Schwein", "Ändern", -1, true},
    {"XB_Bestand", "XB_schweinlöschen", "Aktuelles Schwein &löschen", ""},
    {"XB_Bestand", "XB_Stallnrneuzuordnen", "Markierten Schweinen neue Stallnr zuordnen", ""},
    {"XB_Bestand", "XB_Markierte_Ferkel_in_Mast", "Markierte Ferkel als Masttiere führen", ""},
    {"XB_Bestand", "XB_Feste_Saunummer_zuordnen", "Saunummer auf feste Länge anpassen", ""},
    {"XB_Bestand", "XB_ferkeleinverkauf", "&Ferkel Ein- und Verkauf", "PB_Verkauf_Ferkel"},
    {"XB_Bestand", "XB_VerlusteFerkel", "Verluste von Ferkel", "PB_Verluste_Ferkel"},
    {"XB_Bestand", "XB_verkaufschweine", "&Verkauf Sauen, Eber, Masttiere", "PB_Verkauf_Schweine", "", -1, true},
    {"XB_Bestand", "XB_schweineselektieren", "Schweine sele&ktieren", "PB_Selektieren"},
    {"XB_Bestand", "XB_selektiertetieremarkieren", "Selektierte Schweine &markieren", ""},
    {"XB_Bestand", "XB_markierteschweineselektieren", "Markierte Schweine &selektieren", ""},
    {"XB_Bestand", "XB_stand", "S&tand vom ... (Herde an einem anderen Tag)", ""},
    {"XB_Bestand", "XB_heute", "Zurück zu heute", ""},
    {"XB_Bestand", "XB_beenden", "&Beenden", ""},
    {"XE_Eingabe", "XE_belegung", "&Belegung", "PE_Bewegungsdaten", "", 0},
    {"XE_Eingabe", "XE_trächtigkeit", "&Trächtigkeitsfeststellungen", "PE_Bewegungsdaten", "", 1},
    {"XE_Eingabe", "XE_ferkelung", "&Ferkelung", "PE_Bewegungsdaten", "", 2},
    {"XE_Eingabe", "XE_absetzung", "&Absetzung", "PE_Bewegungsdaten", "", 3},
    {"XE_Eingabe", "XE_Verschiebung", "&Verschiebung (Ferkel)", "PE_Bewegungsdaten", "", 4},
    {"XE_Eingabe", "XE_verluste", "Ver&luste (Ferkel)", "PE_Bewegungsdaten", "", 5},
    {"XE_Eingabe", "XE_Ferkelverkauf", "Ferkel-Ver&Kauf", "PE_Bewegungsdaten", "", 6},
    {"XE_Eingabe", "XE_behandlung", "Be&handlung", "PE_Bewegungsdaten", "", 7},
    {"XE_Eingabe", "XE_schnellliste", "Viele Buchungen als Te&xt", "PE_Schnellliste"},
    {"A_Auswertungen", "a_awsauenkarte", "Sauenkarte", "PB_Sauenkarte"},
    {"A_Auswertungen", "a_awsauenkarte_gezeichnet", "Sauenkarte (ge&zeichnet)", "PB_Sauenkarte_gezeichnet"},
    {"A_Auswertungen", "a_awschweine", "Schweine (Infobericht)", "PB_Tierinformation_Schweine"},
    {"A_Auswertungen", "a_awschweinebuchungen", "Schweine (Buchungen)", "PB_Tierinformation_Buchungen"},
    {"A_Auswertungen", "A_awarbeitspläne", "Arbeitspläne", "PB_Arbeitsplan"},
    {"A_Auswertungen", "A_awbestandsberichte", "Bestandsberichte", "PB_Bestand"},
    {"A_Auswertungen", "A_awbestandsregister", "Bestandsregister nach § 24 c VVVO", "PB_Bestandsregister"},
    {"A_Auswertungen", "A_awdeckungsbeiträge", "Deckungsbeiträge", "PB_Deckungsbeitrag"},
    {"A_Auswertungen", "A_awstatusplan", "Statusplan", "PB_Statusplan"},
    {"A_Auswertungen", "A_awwartezeiten", "Wartezeiten", "PB_Wartezeiten"},
    {"A_Auswertungen", "A_awstatistiken", "Statistiken", "PB_Statistiken"},
    {"A_Auswertungen", "A_awgruppierungen", "Gruppierungen", "PB_Gruppierungen"},
    {"A_Auswertungen", "A_awlogikpruefung", "Logik-Prüfung Sauen", "PB_Logiktest"},
    {"A_Auswertungen", "A_awlebenslauf", "Leb&enslauf des Tieres", "PB_Lebenslauf"},
    {"A_Auswertungen", "A_awtagesblick", "Tagesbli&ck", "PA_Tagesblick"},
    {"A_Auswertungen", "A_awkennzahlen", "Kennzahlen", "PA_Kennzahlen"},
    {"A_Auswertungen", "A_awgrafiken", "Grafiken", "PA_Grafiken"},
    {"V_Verwaltung", "V_Bestandsdaten", "Bestandsdaten", "PV_Bestandsdaten"},
    {"V_Verwaltung", "V_Arbeitspläne", "Arbeitsplandaten", "PV_Arbeitsplandaten"},
    {"V_Verwaltung", "V_Medizinundwartezeiten", "Medizin und Wartezeiten", "PV_Medizin"},
    {"V_Verwaltung", "V_Stichwortverwaltung", "Stichwortverwaltung", "PV_Stichworte"},
    {"V_Verwaltung", "V_Terminverwaltung", "Terminverwaltung (zyklusunabhängige Termine)", "PV_Termine"},
    {"V_Verwaltung", "V_verlauf", "Ver&lauf der Aktionen", "PA_Verlauf"},
    {"O_Optionen", "O_Einstellungen", "Einstellungen", "PO_Einstellungen"},
    {"O_Optionen", "O_Datensicherung", "Datensicherung", "S_Datensicherung_neu"},
    {"O_Optionen", "O_Datenbankprüfen", "Datenbank prüfen", "PA_Prüfung"},
    {"O_Optionen", "O_Datenbankkomprimieren", "Datenbank komprimieren", ""},
    {"O_Optionen", "O_ImportExcelCSV", "Import Excel", "S_Importtabelle"},
    {"O_Optionen", "O_Exportpocketpc", "Export an Pocket-PC", "PO_Pocketexport"},
    {"O_Optionen", "O_Importpocketpc", "Import von Pocket-PC", "PO_Pocketimport", "", -1, true},
    {"O_Optionen", "O_Updatemanager", "Update-Manager", "HV_Updatemanager"},
    {"O_Optionen", "O_Datenauskoben1", "Datenübernahme aus KOBEN 1.0", "PO_Update"},
    {"O_Optionen", "O_Bestellschein", "Bestell-&Formular", "PO_Bestellschein"},
    {"H_Hilfe", "hilfestartmenue", "Das Start&menue", "PH_Hilfe"},
    {"H_Hilfe", "hilfewiemacheich", "Wie mache ich...", "PH_Hilfe"},
    {"H_Hilfe", "hilfewieanfangen", "Wie &Fangen Sie an", "PH_Hilfe"},
    {"H_Hilfe", "hilfebestand", "Bestand", "PH_Hilfe"},
    {"H_Hilfe", "hilfeeingabe", "Eingabe", "PH_Hilfe"},
    {"H_Hilfe", "hilfeauswertungen", "Auswertungen", "PH_Hilfe"},
    {"H_Hilfe", "hilfeverwaltung", "Verwaltung", "PH_Hilfe"},
    {"H_Hilfe", "H_Hilfeoptionen", "Optionen", "PH_Hilfe"},
};

/// A toolbar button: key, menu entry it runs, short caption, icon.
struct ToolRow {
    const char* key;
    const char* entry;
    const char* caption;
    const char* icon;
};
const ToolRow Tools[] = {
    {"btn_neuesschwein", "XB_neueschweine", "Neu", "neu"},
    {"btn_beweg_belegung", "XE_belegung", "Belegung", "belegung"},
    {"btn_beweg_trächtig", "XE_trächtigkeit", "Trächtig", "traechtig"},
    {"btn_beweg_ferkelung", "XE_ferkelung", "Ferkelung", "ferkelung"},
    {"btn_beweg_absetzung", "XE_absetzung", "Absetzung", "absetzung"},
    {"btn_beweg_verschiebung", "XE_Verschiebung", "Verschiebung", "verschiebung"},
    {"btn_beweg_verluste", "XE_verluste", "Verluste", "verluste"},
    {"btn_beweg_ferkelverkauf", "XE_Ferkelverkauf", "Ferkelverkauf", "ferkelverkauf"},
    {"btn_beweg_behandlung", "XE_behandlung", "Behandlung", "behandlung"},
    {"btn_auswert_schweine", "a_awschweine", "Tierbericht", "tierbericht"},
    {"btn_auswert_buchungen", "a_awschweinebuchungen", "Buchungen", "buchungen"},
    {"btn_auswert_arbeitspläne", "A_awarbeitspläne", "Arbeitsplan", "arbeitsplan"},
    {"btn_auswert_bestandsberichte", "A_awbestandsberichte", "Bestand", "bestand"},
    {"btn_auswert_deckungsbeitrag", "A_awdeckungsbeiträge", "Deckungsbeitrag", "deckungsbeitrag"},
    {"btn_auswert_Statusplan", "A_awstatusplan", "Statusplan", "statusplan"},
    {"btn_auswert_statistiken", "A_awstatistiken", "Statistik", "statistik"},
    {"btn_auswert_tagesblick", "A_awtagesblick", "Heute", "tagesblick"},
    {"btn_auswert_grafiken", "A_awgrafiken", "Grafiken", "grafiken"},
    {"btn_einstellungen", "O_Einstellungen", "Einstellungen", "einstellungen"},
    {"btn_datensicherung", "O_Datensicherung", "Datensicherung", "datensicherung"},
};

/// What the entries of the context menu run, by index.
const char* const Popups[] = {"XB_neueschweine", "XB_schweinändern", "XB_schweinlöschen", "",
                              "XE_belegung",     "XE_trächtigkeit",  "XE_ferkelung",      "XE_absetzung",
                              "XE_Verschiebung", "XE_verluste",      "XE_Ferkelverkauf",  "XE_behandlung"};

/// Entries whose handlers write: refused while another day is shown, before they ask anything. Forms know it
/// themselves.
bool writes(const QString& entry) {
    static const QStringList writing{
        QStringLiteral("XB_schweinlöschen"),           QStringLiteral("XB_Stallnrneuzuordnen"),
        QStringLiteral("XB_Markierte_Ferkel_in_Mast"), QStringLiteral("XB_Feste_Saunummer_zuordnen"),
        QStringLiteral("XB_schweineselektieren"),      QStringLiteral("XB_markierteschweineselektieren"),
        QStringLiteral("O_Datenbankkomprimieren")};
    return writing.contains(entry);
}

}  // namespace

void PA_Koben::buildMenu() {
    std::map<QString, MenuEntry*> parents;
    for (const Menu& menu : Menus) {
        const QString name = QString::fromUtf8(menu.name);
        m_menus.push_back(std::make_unique<MenuEntry>(*this, name, QString::fromUtf8(menu.caption)));
        m_menuBar.push_back(m_menus.back().get());
        parents[name] = m_menus.back().get();
        m_actions[name];
    }
    const std::map<QString, std::function<void()>> handlers{
        {QStringLiteral("XB_schweinlöschen"), [this] { Tier_loeschen(); }},
        {QStringLiteral("XB_stand"), [this] { Stand_erfragen(); }},
        {QStringLiteral("XB_heute"), [this] { Zu_heute(); }},
        {QStringLiteral("XB_beenden"), [this] { beenden(); }},
        {QStringLiteral("O_Datenbankkomprimieren"), [this] { Datenbank_komprimieren(); }},
        {QStringLiteral("XB_schweineselektieren"), [this] { Schweine_selektieren(); }},
        {QStringLiteral("XB_selektiertetieremarkieren"), [this] { Selektierte_markieren(); }},
        {QStringLiteral("XB_markierteschweineselektieren"), [this] { Markierte_selektieren(); }},
        {QStringLiteral("XB_Stallnrneuzuordnen"), [this] { Stallnr_neu_zuordnen(); }},
        {QStringLiteral("XB_Markierte_Ferkel_in_Mast"), [this] { Ferkel_in_Mast(); }},
        {QStringLiteral("XB_Feste_Saunummer_zuordnen"), [this] { Saunummern_verlaengern(); }}};
    for (const MenuRow& row : Rows) {
        const QString name = QString::fromUtf8(row.name);
        m_menus.push_back(std::make_unique<MenuEntry>(*this, name, QString::fromUtf8(row.caption),
                                                      parents.at(QString::fromUtf8(row.menu))));
        m_menus.back()->onClick = [this, name] { run(name); };
        Action& action = m_actions[name];
        action.form = QString::fromUtf8(row.form);
        if (const auto handler = handlers.find(name); handler != handlers.end()) action.handler = handler->second;
        action.mode = QString::fromUtf8(row.mode);
        action.kind = row.kind;
        action.cycleAfter = row.cycleAfter;
        action.available = action.form.isEmpty() ? action.handler != nullptr : koben.catalogue.has(action.form);
        if (action.form == u"PH_Hilfe") m_menus.back()->setHint(QString::fromUtf8(row.caption));
    }
}

void PA_Koben::buildToolBar() {
    for (const ToolRow& row : Tools) {
        const QString key = QString::fromUtf8(row.key), entry = QString::fromUtf8(row.entry);
        m_buttons.push_back(std::make_unique<Button>(*this, key, QString::fromUtf8(row.caption)));
        Button& button = *m_buttons.back();
        button.icon = QString::fromUtf8(row.icon);
        button.onClick = [this, entry] { run(entry); };
        for (const MenuRow& menu : Rows)
            if (entry == QString::fromUtf8(menu.name)) button.setHint(QString::fromUtf8(menu.caption).remove(u'&'));
        m_toolBar.push_back(&button);
        m_toolAction[key] = entry;
        m_actions[key].available = m_actions.at(entry).available;
    }
}

void PA_Koben::buildContextMenu() {
    for (int i = 0; i < popzeile.count(); ++i) popzeile[i].onClick = [this, i] { popzeile_Click(i); };
}

void PA_Koben::popzeile_Click(int index) {
    if (datali.row() == 0 && index != 0) {
        koben.message(
            QStringLiteral("Bitte markieren Sie zuerst das Schwein, das Sie ändern oder löschen möchten oder "
                           "bei dem Sie Buchungen eintragen möchten!"));
        return;
    }
    run(QString::fromUtf8(Popups[index]));
}

void PA_Koben::run(const QString& entry) {
    const auto found = m_actions.find(entry);
    if (found == m_actions.end() || !found->second.available) return;
    const Action& action = found->second;
    if (writes(entry) && koben.nurAnsehen_melden()) return;
    if (action.handler) return action.handler();
    if (!action.mode.isEmpty()) koben.Buchungsmodus = action.mode;
    if (action.kind >= 0) koben.Buchungsart_Nr = action.kind;
    if (action.form == u"PH_Hilfe") helpTopic = entry;
    koben.open(action.form);
    helpTopic.clear();
    if (action.cycleAfter) koben.Status_neu_berechnen = 1;
}

void PA_Koben::allow(std::initializer_list<const char*> entries, bool on) {
    for (const char* entry : entries) m_actions[QString::fromUtf8(entry)].allowed = on;
}

void PA_Koben::Menues_sperren(bool on) {
    m_locked = !on;
    cmdok.setEnabled(on);
    for (auto& button : abwaerts) button->setEnabled(on);
    comdrucken.setEnabled(on);
    comlebenslauf.setEnabled(on);
    datali.setEnabled(on);
    showStates();
}

/// An entry can be worked where nothing is locked, its screen exists and the list allows it.
void PA_Koben::showStates() {
    const auto state = [this](const QString& name) {
        const Action& action = m_actions.at(name);
        return !m_locked && action.available && action.allowed;
    };
    for (auto& entry : m_menus) entry->setEnabled(state(entry->name()));
    for (auto& button : m_buttons) button->setEnabled(state(button->name()));
    for (int i = 0; i < popzeile.count(); ++i)
        if (*Popups[i]) popzeile[i].setEnabled(!m_locked && m_actions.at(QString::fromUtf8(Popups[i])).available);
}

QString PA_Koben::Loeschhinweis_text(qint64 id) const {
    const qint64 bookings = Buchungen_zaehlen(m_db, id);
    return QStringLiteral("Zum Löschen ausgewählt: %1 %2 mit %3.")
        .arg(datali.cell(datali.row(), u"Art"), datali.cell(datali.row(), u"Nummer"),
             bookings == 1 ? QStringLiteral("einer Buchung") : QStringLiteral("%1 Buchungen").arg(bookings));
}

void PA_Koben::Tier_loeschen() {
    if (datali.row() == 0) return;
    const qint64 id = datali.value(datali.row(), u"ID").toInt();
    loeschhinweis.setText(Loeschhinweis_text(id));
    loeschhinweis.setVisible(true);
    const bool wanted =
        koben.yesNo(QStringLiteral("Das Löschen eines Schweines entfernt das markierte Schwein unwiederbringlich mit "
                                   "allen zu diesem Schwein gehörenden Buchungen aus der Datenbank.") +
                        Crlf + Crlf + QStringLiteral("Soll das markierte Schwein wirklich gelöscht werden?"),
                    true);
    loeschhinweis.setVisible(false);
    if (!wanted) return;
    const QString animal =
        QStringLiteral("%1 %2").arg(datali.cell(datali.row(), u"Art"), datali.cell(datali.row(), u"Nummer"));
    koben::Action action(m_db, animal + QStringLiteral(" gelöscht"));
    if (const qint64 bookings = Buchungen_loeschen(action, id); bookings > 0)
        action.setName(animal + QStringLiteral(" mit ") + counted(bookings, "Buchung", "Buchungen") +
                       QStringLiteral(" gelöscht"));
    m_db.execute(QStringLiteral("delete from Sauen where ID = %1").arg(id));
    action.commit();
    datali.removeRow(datali.row());
    zaehlen();
    Menue_Zustand_setzen();
}

/// Where a compaction makes its copy.
QString PA_Koben::Komprimierte_Datei() const {
    return koben.Datenbankpfad.left(koben.Datenbankpfad.size() - 3) + QStringLiteral("$$$");
}

/// Tidies the database into a second file, which then takes the first one's place in one step.
void PA_Koben::Datenbank_komprimieren() {
    if (!koben.yesNo(QStringLiteral("Soll die Datenbasis wirklich komprimiert werden?") + Crlf + Crlf +
                     QStringLiteral("Durch das komprimieren werden alle als gelöscht markierten Datensätze endgültig "
                                    "aus der Datenbank entfernt. Eine Komprimierung ist nur erforderlich, wenn Sie "
                                    "einige (oder eher viele) Daten gelöscht haben!")))
        return;
    const QString path = koben.Datenbankpfad;
    const QString tidy = Komprimierte_Datei();
    try {
        const WaitCursor wait(koben);
        QFile::remove(tidy);  // left by a run that was cut off
        Journal(m_db).trim(koben.platform.now().date());
        m_db.close();
        koben.Hauptdatenbank.close();
        koben.workspace.closeAll();
        Progress progress(koben, QStringLiteral("Die Datenbasis wird komprimiert ..."), 100);
        if (!koben.workspace.compact(path, tidy, [&](int percent) { return progress.step(percent); })) {
            verbinden();
            koben.Hauptdatenbank = koben.connect();
            return;
        }
        koben.workspace.replace(tidy, path);
    } catch (const DatabaseError& error) {
        QFile::remove(tidy);
        ErrorLog(koben.platform.userFolder()).write(koben.platform.now(), error.detail());
        // said first: on a full disk the database may not open again either, which ends the program
        koben.message(QStringLiteral("Die Datenbasis konnte nicht komprimiert werden. Ihre Daten sind unverändert.") +
                      Crlf + Crlf + error.message());
        verbinden();
        koben.Hauptdatenbank = koben.connect();
        return;
    }
    koben.message(
        QStringLiteral("Die Komprimierung wurde erfolgreich abgeschlossen.") + Crlf + Crlf +
        QStringLiteral("KOBEN 2.0 wird nun beendet. Bitte starten Sie KOBEN neu, damit die Datenbasis geladen "
                       "wird!"));
    koben.end();
}

}  // namespace koben

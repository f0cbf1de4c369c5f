#include "exchange/S_Datensicherung_neu.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>

#include "core/ErrorLog.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "store/Files.h"

namespace koben {

namespace {

constexpr int kept = 3;             // of the backups in the data folder, where the user has the others deleted
constexpr qint64 wholeWork = 1000;  // steps of a bar

const char* const pages[] = {
    "Hier sichern Sie alle Daten von KOBEN in eine ZIP-Datei und übertragen diese auf einen USB-Stick oder eine "
    "externe "
    "Festplatte, oder Sie holen eine frühere Datensicherung zurück.",
    "Bitte wählen Sie aus, auf welches Laufwerk die Datensicherung übertragen werden soll.\r\n"
    "Falls der USB-Stick nach der Aufforderung eingesteckt wurde, müsste das richtige Laufwerk bereits ausgewählt "
    "sein.\r\n"
    "Nach der Laufwerksauswahl klicken Sie auf [Weiter].",
    "Mit [Weiter] wird die Datensicherung im Datenordner erstellt, geprüft und auf das gewählte Laufwerk kopiert.",
    "Hier können Sie die Datensicherung zusätzlich in einen Cloud-Ordner kopieren. Bleibt das Feld leer, wird nichts "
    "in "
    "die Cloud übertragen. Klicken Sie dann auf [Weiter].",
    "Mit [Weiter] wird die Datensicherung beendet, und Sie sehen, was getan wurde.",
    "Bitte wählen Sie aus, welches Backup Sie nutzen möchten. Sie erkennen am Dateinamen, welches Backup das "
    "aktuellste "
    "ist ...JJJJ_MM_TT.ZIP."};

/// "NICHT " where something is not so.
QString unless(bool so) { return so ? QString() : QStringLiteral("NICHT "); }

}  // namespace

S_Datensicherung_neu::S_Datensicherung_neu(Koben& koben_)
    : Form(koben_, QStringLiteral("S_Datensicherung_neu"), QStringLiteral("Datensicherung")),
      tabsicherung(*this, QStringLiteral("tabsicherung"),
                   {QStringLiteral("Beginn"), QStringLiteral("1. Laufwerk"), QStringLiteral("2. Sicherung"),
                    QStringLiteral("3. Cloud"), QStringLiteral("4. Ende"), QStringLiteral("Zurückholen")}) {
    binfos.multiLine = binfos.readOnly = true;
    binfos.setHint(QStringLiteral("Was getan wurde"));
    drive1.fixed = drive2.fixed = true;
    drive1.setHint(QStringLiteral("Laufwerk, auf das kopiert wird"));
    drive2.setHint(QStringLiteral("Laufwerk mit den Datensicherungen"));
    datei1.setHint(QStringLiteral("Dateien im Datenordner"));
    datei2.setHint(QStringLiteral("Datensicherungen im Datenordner"));
    backups.setHint(QStringLiteral("Datensicherungen zur Auswahl"));
    sev_cloud.setHint(QStringLiteral("Cloud-Ordner"));
    start_sicherung.onClick = [this] { start_sicherung_Click(); };
    weiter_laufwerkwahl.onClick = [this] { weiter_laufwerkwahl_Click(); };
    weiter_backuperstellen.onClick = [this] { weiter_backuperstellen_Click(); };
    weiter_cloud.onClick = [this] { weiter_cloud_Click(); };
    weiter_endebackup.onClick = [this] { weiter_endebackup_Click(); };
    start_rettung.onClick = [this] { start_rettung_Click(); };
    weiter_backuprettung.onClick = [this] { weiter_backuprettung_Click(); };
    zurueck_laufwerkwahl.onClick = zurueck_backuprettung.onClick = [this] { Seite_zeigen(Anfang); };
    zurueck_backuperstellen.onClick = [this] { Seite_zeigen(Laufwerk); };
    zurueck_cloud.onClick = [this] { Seite_zeigen(Sichern); };
    cominfo.onClick = [this] { cominfo_Click(); };
    comcloud.onClick = [this] { comcloud_Click(); };
    comlaufwerke.onClick = [this] { Laufwerke_lesen(drive1, m_drives, drive1.text()); };
    drive1.onClick = [this] { Platz_zeigen(); };
    drive2.onClick = [this] { drive2_Click(); };
    comordner.onClick = [this] { comordner_Click(); };
    comtage.setHint(QStringLiteral("Die Kopien, die KOBEN beim Beenden macht"));
    comtage.onClick = [this] { comtage_Click(); };
    backups.onClick = [this] { backups_Click(); };
    abbv.onClick = [this] { abbv_Click(); };
    tabsicherung.onClick = [this](int page) { Seite_zeigen(page); };
    acceptButton = &start_sicherung;
    cancelButton = &abbv;
    helpTopic = name();
}

void S_Datensicherung_neu::Load() {
    for (int page = Anfang; page <= Rettung; ++page) Label1[page].setText(QString::fromUtf8(pages[page]));
    m_heute = Datum_aus_Text(koben.Heute);
    m_stand = Sicherungsstand::lesen(koben.Datenordner);
    m_stick = &m_stand.faelligerStick(m_heute);
    kon_backupkonzept.setChecked(m_stand.backupkonzept);
    sev_cloud.setText(m_stand.cloud);
    bild.setVisible(false);
    binfos.setVisible(false);
    m_ordner = koben.Datenordner;
    Laufwerke_lesen(drive1, {}, {});
    Laufwerke_lesen(drive2, {}, {});
    Stand_zeigen();
    Dateien_zeigen();
    Backups_zeigen();
}

/// Brings a page to the front; Enter then goes on from there.
void S_Datensicherung_neu::Seite_zeigen(int page) {
    Button* const on[] = {&start_sicherung, &weiter_laufwerkwahl, &weiter_backuperstellen,
                          &weiter_cloud,    &weiter_endebackup,   &weiter_backuprettung};
    tabsicherung.setFront(page);
    acceptButton = on[page];
    acceptButton->setFocus();
}

void S_Datensicherung_neu::Stand_zeigen() {
    letztwochenbackup.setText(m_stand.letztwochenbackup);
    letztmonatsbackup.setText(m_stand.letztmonatsbackup);
    letztjahresbackup.setText(m_stand.letztjahresbackup);
    letztcloudbackup.setText(m_stand.letztcloudbackup);
}

void S_Datensicherung_neu::Dateien_zeigen() {
    datei1.setItems(Ordnerdateien(koben.Datenordner));
    datei2.setItems(QDir(koben.Datenordner).entryList({Sicherungsmuster}, QDir::Files, QDir::Name | QDir::IgnoreCase));
}

/// Fills both lists of drives. Chosen in `list` is a drive that was not there before, or else the wanted one, by its
/// text or its volume's name, or else that of the data folder.
void S_Datensicherung_neu::Laufwerke_lesen(ComboBox& list, QList<Drive> before, const QString& wanted) {
    m_drives = koben.platform.drives();
    if (Laufwerk_von(m_drives, koben.Datenordner) < 0) m_drives.prepend({koben.Datenordner, {}, 0, 0});
    const int dataDrive = Laufwerk_von(m_drives, koben.Datenordner);
    QStringList names;
    int chosen = dataDrive, fresh = -1;
    for (int i = 0; i < m_drives.size(); ++i) {
        const Drive& drive = m_drives[i];
        names += Laufwerksname(drive);
        if (!wanted.isEmpty() && (drive.name.compare(wanted, Qt::CaseInsensitive) == 0 || names.last() == wanted))
            chosen = i;
        const auto same = [&](const Drive& other) { return other.root == drive.root && other.name == drive.name; };
        if (!before.isEmpty() && std::none_of(before.begin(), before.end(), same)) fresh = i;
    }
    for (ComboBox* each : {&drive1, &drive2}) {
        const qsizetype at = names.indexOf(each->text());
        each->setItems(names);
        each->setCurrent(each != &list ? static_cast<int>(at < 0 ? dataDrive : at) : fresh < 0 ? chosen : fresh);
    }
    Platz_zeigen();
}

/// Whether the chosen drive is that of the data folder.
bool S_Datensicherung_neu::Datenlaufwerk(const ComboBox& list) const {
    return list.current() < 0 || list.current() == Laufwerk_von(m_drives, koben.Datenordner);
}

void S_Datensicherung_neu::Platz_zeigen() {
    const int at = drive1.current();
    if (at < 0 || at >= m_drives.size()) return platz.setText({});
    const QLocale german(QStringLiteral("de_DE"));
    const auto size = [&](qint64 bytes) { return german.formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat); };
    platz.setText(
        QStringLiteral("%1 von %2 sind frei.").arg(size(m_drives[at].freeBytes), size(m_drives[at].totalBytes)));
}

void S_Datensicherung_neu::protokoll(Abschnitt part, const QStringList& lines) {
    m_protokoll[part] = lines;
    QStringList all;
    for (const QStringList& told : m_protokoll) all += told;
    binfos.setText(all.join(Crlf));
}

QString S_Datensicherung_neu::Einsteckaufforderung() const {
    if (kon_backupkonzept.checked())
        return QStringLiteral("Bitte stecken Sie den USB-Stick für das ") + m_stick->kind +
               QStringLiteral(" ein. Warten Sie, bis dieser erkannt wird und bestätigen Sie dann mit [OK].");
    return QStringList{QStringLiteral("Hinweis!!! Die Datensicherung sollte immer auf einen externen Datenträger (USB, "
                                      "externe Festplatte) gemacht werden. Bitte gehen Sie wie folgt vor:"),
                       QString(),
                       QStringLiteral("Bei Datensicherung auf USB-Stick:"),
                       QStringLiteral("Stecken Sie diesen ein, warten Sie ein paar Sekunden, bis der USB-Stick "
                                      "angemeldet ist und klicken Sie dann [OK]."),
                       QStringLiteral("Bei Datensicherung auf Festplatte (oder bereits eingesteckten USB):"),
                       QStringLiteral("Klicken Sie auf [OK]."),
                       QStringLiteral("Datensicherung vorzeitig beenden:"),
                       QStringLiteral("Klicken Sie auf [Abbrechen].")}
        .join(Crlf);
}

void S_Datensicherung_neu::start_sicherung_Click() {
    m_stick = &m_stand.faelligerStick(m_heute);
    const bool concept_ = kon_backupkonzept.checked();
    bild.setText(QStringLiteral("%1 USB-Stick (%2)").arg(m_stick->adjective, m_stick->volume));
    bild.setVisible(concept_);
    const QList<Drive> before = koben.platform.drives();
    if (!koben.screens.okCancel(Einsteckaufforderung())) return;
    Laufwerke_lesen(drive1, before, concept_ ? m_stick->volume : QString());
    m_protokoll = {};
    protokoll(Begonnen, {QStringLiteral("Das Backup wurde ") + unless(concept_) +
                         QStringLiteral("mit dem Backup-Konzept für hohe Datensicherheit gestartet.")});
    Seite_zeigen(Laufwerk);
}

void S_Datensicherung_neu::weiter_laufwerkwahl_Click() {
    const bool sameDrive = Datenlaufwerk(drive1);
    if (sameDrive && !koben.yesNo(QStringLiteral("Sie haben das selbe Laufwerk ausgewählt, in dem sich auch die "
                                                 "Original-Daten befinden. Dieses Backup hat deshalb keine hohe "
                                                 "Datensicherheit. Bei einem Festplattendefekt wäre auch diese "
                                                 "Datensicherung nicht brauchbar.") +
                                  Crlf + QStringLiteral("Möchten Sie trotzdem fortfahren?")))
        return;
    QStringList told{QStringLiteral("Für das Backup wurde ") + unless(!sameDrive) +
                     QStringLiteral("ein externer Datenträger / USB-Stick ausgewählt.")};
    protokoll(Ziel, told);
    if (kon_backupkonzept.checked()) {
        const int at = drive1.current();
        const bool right = at >= 0 && m_drives[at].name.compare(m_stick->volume, Qt::CaseInsensitive) == 0;
        if (!right && !koben.yesNo(QStringLiteral(
                          "Sie haben ausgewählt, dass Sie das Backup-Konzept von TAMRO nutzen. Der "
                          "aktuell ausgewählte Datenstick hat nicht den zum Backup-Konzept passenden "
                          "Volume-Name. Soll das Backup trotzdem auf diesen Datenträger kopiert werden?")))
            return;
        told += QStringLiteral("Es wurde ") + unless(right) +
                QStringLiteral("der USB-Stick vom TAMRO-Backup-Konzept verwendet.");
        protokoll(Ziel, told);
    }
    Seite_zeigen(Sichern);
}

void S_Datensicherung_neu::weiter_backuperstellen_Click() {
    const QString target = koben.Datenordner + heutige();
    if (QFile::exists(target) &&
        !koben.yesNo(QStringLiteral("Für den heutigen Tag existiert bereits eine Datensicherung. Soll diese "
                                    "überschrieben werden?"),
                     true)) {
        koben.message(
            QStringLiteral("Es wurde keine neue Datensicherung erstellt, weil bereits eine existiert hatte."));
        protokoll(Erstellt, {QStringLiteral("Das Backup wurde NICHT erstellt, weil bereits ein Backup vom heutigen Tag "
                                            "existiert hatte.")});
    } else if (!Sicherung_schreiben(target)) {
        return;
    }
    if (Auf_Laufwerk_kopieren()) Seite_zeigen(Cloud);
}

/// False where nothing new was made: it failed, or the user gave up. The file of the day that was there still is.
bool S_Datensicherung_neu::Sicherung_schreiben(const QString& target) {
    try {
        Progress progress(koben, QStringLiteral("Die Datensicherung wird erstellt und geprüft ..."), wholeWork, &meter);
        const ShareDone go = [&](double share) { return progress.step(static_cast<qint64>(share * wholeWork)); };
        if (!Sicherung_erstellen(koben, target, Proof::Database, go)) return false;
    } catch (const DatabaseError& error) {
        ErrorLog(koben.platform.userFolder()).write(koben.platform.now(), error.detail());
        koben.message(error.message());
        protokoll(Erstellt, {QStringLiteral("Das Backup wurde NICHT erstellt wegen einer Fehlermeldung.")});
        return false;
    }
    koben.Konfig_Text[Text::LetzteSicherung] = koben.Heute;
    koben.message(QStringLiteral("Die Datensicherung wurde erstellt und ist in der ZIP-Datei ") + heutige() +
                  QStringLiteral(" gespeichert."));
    protokoll(Erstellt, {QStringLiteral("Das Backup ") + heutige() + QStringLiteral(" wurde erstellt.")});
    Dateien_zeigen();
    return true;
}

/// The day's backup into another place, with a bar.
std::optional<QString> S_Datensicherung_neu::uebertragen(const QString& to) {
    Progress progress(koben, QStringLiteral("Die Datensicherung wird kopiert ..."), wholeWork, &meter);
    return Datei_uebertragen(koben.Datenordner + heutige(), to,
                             [&](double share) { return progress.step(static_cast<qint64>(share * wholeWork)); });
}

/// True where the wizard goes on: also without a copy, which the protocol tells.
bool S_Datensicherung_neu::Auf_Laufwerk_kopieren() {
    const QString notCopied = QStringLiteral("Die Backupdatei wurde NICHT auf einen externen Datenträger kopiert.");
    if (Datenlaufwerk(drive1)) {
        koben.message(
            QStringLiteral("Die Datensicherung wurde nicht auf einen externen Datenträger kopiert, weil kein "
                           "externer Datenträger ausgewählt wurde. Die Datensicherung befindet sich auf Ihrer "
                           "Festplatte unter") +
            Crlf + QDir::toNativeSeparators(koben.Datenordner + heutige()));
        protokoll(Uebertragen, {notCopied});
        return true;
    }
    const QString target = m_drives[drive1.current()].root + heutige();
    const QString shown = QDir::toNativeSeparators(target);
    if (QFile::exists(target) &&
        !koben.yesNo(QStringLiteral("Auf dem externen Datenträger befindet sich bereits eine Datensicherung mit dem "
                                    "Namen ") +
                         heutige() + QStringLiteral(". Soll die Datensicherung dennoch kopiert werden?"),
                     true)) {
        koben.message(QStringLiteral("Die Datensicherung wurde nicht kopiert."));
        protokoll(Uebertragen, {notCopied});
        return true;
    }
    const auto reason = uebertragen(target);
    if (!reason) {
        protokoll(Uebertragen, {notCopied});
        return true;
    }
    if (!reason->isEmpty()) {
        koben.message(
            fileFailure(QStringLiteral("Die Datensicherung kann nicht nach %1 kopiert werden").arg(shown), *reason));
        protokoll(Uebertragen, {QStringLiteral("Die Backupdatei wurde NICHT auf einen externen Datenträger kopiert "
                                               "wegen einer Fehlermeldung.")});
        return true;
    }
    m_stand.letztes(*m_stick) = koben.Heute;
    Stand_zeigen();
    koben.message(QStringLiteral("Die Datensicherung wurde kopiert und ist abgelegt unter ") + shown);
    protokoll(Uebertragen, {QStringLiteral("Die Backupdatei wurde kopiert nach ") + shown});
    return true;
}

bool S_Datensicherung_neu::In_Cloud_kopieren(QString folder) {
    if (folder.isEmpty()) return false;
    if (!folder.endsWith(u'/') && !folder.endsWith(u'\\')) folder += QDir::separator();
    sev_cloud.setText(folder);
    if (!QDir(folder).exists()) {
        koben.message(QStringLiteral("Die Datei konnte nicht in die Cloud gespeichert werden, weil der Ordner ") +
                      folder + QStringLiteral(" nicht existiert."));
        return false;
    }
    const auto reason = uebertragen(folder + heutige());
    if (reason && !reason->isEmpty())
        koben.message(fileFailure(QStringLiteral("Die Datensicherung kann nicht in den Cloudordner %1 kopiert werden")
                                      .arg(QDir::toNativeSeparators(folder)),
                                  *reason));
    return reason && reason->isEmpty();
}

void S_Datensicherung_neu::weiter_cloud_Click() {
    const bool done = In_Cloud_kopieren(sev_cloud.text().trimmed());
    if (done) m_stand.letztcloudbackup = koben.Heute;
    Stand_zeigen();
    protokoll(InCloud, {QStringLiteral("Die Backupdatei wurde ") + unless(done) +
                        QStringLiteral("in den Cloudordner übertragen.")});
    Seite_zeigen(Ende);
}

void S_Datensicherung_neu::weiter_endebackup_Click() {
    m_stand.backupkonzept = kon_backupkonzept.checked();
    m_stand.cloud = sev_cloud.text().trimmed();
    if (!m_stand.schreiben(koben.Datenordner))
        koben.message(
            QStringLiteral("Die Datei S_Datensicherung.ol8 mit dem Stand der Datensicherungen kann nicht geschrieben "
                           "werden. Die Datensicherung selbst ist davon nicht betroffen. Bitte prüfen Sie, ob im "
                           "Datenordner genügend Platz und das Schreiben erlaubt ist."));
    Label1[Ende].setText(QStringLiteral("Die Datensicherung ist beendet. Das wurde getan:"));
    binfos.setVisible(true);
    Dateien_zeigen();
}

void S_Datensicherung_neu::cominfo_Click() {
    koben.message(QStringList{
        QStringLiteral("Das Backup-Konzept verteilt die Datensicherungen auf drei USB-Sticks, damit auch ein Fehler "
                       "auffällt und behoben werden kann, der erst nach Wochen bemerkt wird:"),
        QString(), QStringLiteral("Grüner Stick (Volume-Name TAMRO_GRUEN): die wöchentliche Datensicherung."),
        QStringLiteral("Blauer Stick (TAMRO_BLAU): wenn die letzte darauf mehr als 60 Tage her ist."),
        QStringLiteral("Roter Stick (TAMRO_ROT): wenn die letzte darauf mehr als 180 Tage her ist."), QString(),
        QStringLiteral(
            "KOBEN sagt Ihnen jedes Mal, welcher Stick an der Reihe ist. Bewahren Sie die Sticks getrennt vom "
            "Rechner auf, den roten möglichst an einem anderen Ort.")}
                      .join(Crlf));
}

void S_Datensicherung_neu::comcloud_Click() {
    koben.message(
        QStringLiteral("Wenn auf Ihrem Rechner das Programm eines Cloud-Anbieters eingerichtet ist, geben Sie "
                       "hier dessen Ordner an, zum Beispiel %1. Was KOBEN dort ablegt, überträgt das Programm "
                       "des Anbieters von selbst. Wer Zugang zu Ihrem Cloud-Speicher hat, kann die Daten lesen.")
            .arg(QDir::toNativeSeparators(QDir::homePath() + QStringLiteral("/Nextcloud/KOBEN/"))));
}

void S_Datensicherung_neu::abbv_Click() {
    Dateien_zeigen();
    const QStringList found = datei2.items();
    if (found.size() > kept &&
        koben.yesNo(QStringLiteral("Es sind zur Zeit mehr als 3 Datensicherungen auf Ihrem Rechner vorhanden.") + Crlf +
                        Crlf +
                        QStringLiteral("Sollen die ältesden Datensicherungen (bis auf die jünsten 3) gelöscht werden?"),
                    true)) {
        QStringList left;
        for (const QString& name : found.first(found.size() - kept))
            if (!QFile::remove(koben.Datenordner + name)) left += name;
        if (!left.isEmpty())
            koben.message(QStringLiteral("Diese Datensicherungen konnten nicht gelöscht werden: %1. Bitte prüfen Sie, "
                                         "ob Sie im Datenordner schreiben dürfen.")
                              .arg(left.join(QStringLiteral(", "))));
    }
    close();
}

}  // namespace koben

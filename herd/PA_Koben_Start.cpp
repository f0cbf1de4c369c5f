// Start and end of the program: the main form's load, its activations and its unload.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QTemporaryFile>
#include <algorithm>

#include "core/Einstellungen.h"
#include "core/Konfig.h"
#include "core/Ordnersperre.h"
#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "core/PrivateFolder.h"
#include "core/Tageskopien.h"
#include "core/Tagesstand.h"
#include "core/Version.h"
#include "forms/RunState.h"
#include "forms/SettingsGuard.h"
#include "forms/Startseite.h"
#include "herd/PA_Koben.h"
#include "herd/PA_Koben_Funde.h"
#include "store/FileExchange.h"
#include "store/Files.h"
#include "store/OldFile.h"

namespace koben {

namespace {

const QString ProgramFile = QStringLiteral("KOBEN2.EXE");

QString withSeparator(const QString& folder) {
    return folder.endsWith(u'/') || folder.endsWith(u'\\') ? folder : folder + u'/';
}

[[noreturn]] void refuseFolder(const QString& path) {
    throw DatabaseError(DatabaseError::Kind::Io,
                        QStringLiteral("Der Datenordner \"%1\" kann nicht angelegt werden. Bitte prüfen Sie, ob der "
                                       "Datenträger vorhanden und beschreibbar ist und ob Sie dort Schreibrechte "
                                       "haben, und starten Sie KOBEN dann neu.")
                            .arg(QDir::toNativeSeparators(path)));
}

/// Where a first start holds its lock until the folder is made: the folder above, which is made for it.
QString folderAbove(const QString& folder) {
    const QString above = QFileInfo(QDir::cleanPath(folder)).path();
    if (!QDir().mkpath(above)) refuseFolder(folder);
    return withSeparator(above);
}

/// Whether a file can be made and written in the folder: without that no lock says anything about other starts.
bool writable(const QString& folder) {
    QTemporaryFile probe(folder + QStringLiteral("koben-XXXXXX"));
    return probe.open() && probe.write("KOBEN") == 5 && probe.flush();
}

/// A copy counts once all of it is on the disk.
bool copied(const QString& from, const QString& to) {
    return QFile::copy(from, to) && QFileInfo(to).size() == QFileInfo(from).size() && flushFile(to).isEmpty();
}

/// The folder with copies of the program's files, under a working name until all are there: a start that is cut off
/// leaves no folder that the next one would take for complete.
void makeDataFolder(const QString& path, const QDir& program) {
    const QString draft = path + QStringLiteral(".neu");
    QDir(draft).removeRecursively();  // left by a start that was cut off
    if (!QDir().mkpath(draft)) refuseFolder(path);
    bool whole = true;
    for (const QString& file : program.entryList(QDir::Files)) {
        const QString from = program.filePath(file);
        if (file.toUpper() != ProgramFile && QFileInfo(from).isReadable())
            whole = whole && copied(from, draft + u'/' + file);
    }
    if (whole && flushFolder(draft).isEmpty() && renameFolder(draft, path).isEmpty()) return;
    QDir(draft).removeRecursively();
    refuseFolder(path);
}

}  // namespace

void PA_Koben::Load() {
    setCaption(QStringLiteral("KOBEN ") + Version + QStringLiteral(" - Der Sauenplaner"));
    koben.herdList = this;
    Tageskopie_abwarten();  // of a run of this process that has ended
    const QString folder = withSeparator(koben.platform.dataFolder());
    // two first starts at once would take each other's draft away
    const QString held = Ordner_existiert(folder) ? folder : folderAbove(folder);
    const auto refuseSecond = [&] {
        if (!writable(held))
            throw DatabaseError(DatabaseError::Kind::Io,
                                QStringLiteral("Im Ordner \"%1\" kann nicht geschrieben werden. Bitte prüfen Sie, ob "
                                               "auf dem Datenträger noch Platz ist und ob Sie dort Schreibrechte "
                                               "haben, und starten Sie KOBEN dann neu.")
                                    .arg(QDir::toNativeSeparators(held)));
        if (const QString reason = Ordnersperre::hindernis(held); !reason.isEmpty())
            throw DatabaseError(DatabaseError::Kind::Io, reason);
        koben.message(
            QStringLiteral("Die Anwendung wurde bereits gestartet!  Mit der Tastenkombination CTRL+ESC können Sie alle "
                           "aktiven Programme auflisten und auswählen."));
        koben.end();
    };
    if (!koben.platform.lockDataFolder(held)) return refuseSecond();
    koben.Status_neu_berechnen = 1;
    if (!Landeseinstellungen_pruefen()) return koben.end();
    Drucker_pruefen();
    koben.Programmordner = withSeparator(koben.platform.programFolder());
    Datenordner_suchen();
    if (!koben.platform.lockDataFolder(folder)) return refuseSecond();
    koben.Datenbankpfad = koben.Datenordner + QStringLiteral("koben2.mdb");
    koben.Liste_neu_laden = 1;
    koben.Start_erledigt = 0;
    const bool settingsToCome = FileExchange::isPending(koben.Datenordner, QStringLiteral("Einstellungen.ko2"));
    if (const QString reason = FileExchange::recover(koben.Datenordner); !reason.isEmpty())
        throw DatabaseError(
            DatabaseError::Kind::Io,
            fileFailure(QStringLiteral("Das Einlesen einer Datensicherung kann nicht zu Ende geführt werden"), reason));
    WorkFolder::clear(koben.platform.userFolder());
    PrivateFolder::removeLeft(koben.platform.userFolder(), Standordner);
    if (settingsToCome) SettingsGuard(koben).adopt();
    const bool logLeft = QFileInfo(koben.Datenbankpfad + QStringLiteral("-wal")).size() > 0;
    Datenbank_oeffnen();
    koben.Heute = koben.clockToday();
    Einstellungen_lesen();
    Uhr_pruefen();
    if (const QString said = Fehlende_Tageskopie(koben); !said.isEmpty()) m_hinweise += said;
    const bool cutOff = Abgebrochen(logLeft);
    if (cutOff) Seiten_pruefen_nach_Abbruch();
    Werte_nachholen(m_db, koben);
    if (cutOff) Daten_pruefen_nach_Abbruch();
    m_started = true;
    RunState(koben.platform, koben.Datenordner).setRunning(true);
    Hinweise_zeigen();
    if (layoutChanged) layoutChanged();
    optianzeige.select(koben.Konfig_Zahl[Zahl::FilterAnzeige]);
    optiverkauft.select(koben.Konfig_Zahl[Zahl::FilterVerkauft]);
    optisauen.select(koben.Konfig_Zahl[Zahl::FilterSauen]);
    // a damaged settings file must not leave a group without a choice
    if (optianzeige.selected() < 0) optianzeige.select(0);
    if (optiverkauft.selected() < 0) optiverkauft.select(0);
    if (optisauen.selected() < 0) optisauen.select(0);
}

/// The conversions that all dates and amounts rest on; false where they are broken, which ends the program.
bool PA_Koben::Landeseinstellungen_pruefen() {
    const bool dates = Ist_Datum(QStringLiteral("01.01.1999")) && Ist_Datum(QStringLiteral("01.01.2001"));
    if (!dates || !Zahl_formatieren(QStringLiteral("1"), 3).contains(u',')) {
        koben.message(QStringList{
            QStringLiteral("WICHTIG!!! Die Datumsberechnung oder Zahlenumrechnung kann nicht korrekt erkannt werden. "
                           "Bitte stellen Sie unter Start/Einstellungen/Systemsteuerung/Ländereinstellung folgende "
                           "Werte ein!"),
            QStringLiteral("Ländereinstellung = Deutsch (Standard)"), QStringLiteral("Zahlen:"),
            QStringLiteral("Dezimaltrennzeichen = ,"), QStringLiteral("Anzahl Dezimalstellen = 2"),
            QStringLiteral("Symbol für Zifferngruppierung = ."), QStringLiteral("Anzahl Ziffern je Gruppe = 3"),
            QStringLiteral("Währung: (siehe Zahlen)"), QStringLiteral("Uhrzeit:"),
            QStringLiteral("Zeitformat = HH:mm:ss"), QStringLiteral("Zeittrennzeichen = :"), QStringLiteral("Datum:"),
            QStringLiteral("Datumformat = TT.MM.JJ oder TT.MM.JJJJ"), QStringLiteral("Trennzeichen = ."),
            QStringLiteral("Da diese Einstellung Standard sind und für OLM zwingend erforderlich sind, wird OLM jetzt "
                           "beendet!")}
                          .join(Crlf));
        return false;
    }
    if (QLocale(QStringLiteral("de_DE")).toCurrencyString(0.0).endsWith(u"DM"))
        koben.message(
            QStringLiteral("Ihr Rechner ist noch auf die Währung DM eingestellt. Bitte stellen Sie in den "
                           "Systemeinstellungen (Ländereinstellung) die Währung auf Euro ein!"));
    const QString now = koben.clockToday() + koben.platform.now().toString(QStringLiteral(" HH:mm:ss"));
    if (now.indexOf(u' ') != 10)
        koben.message(QStringLiteral("Achtung!") + Crlf + Crlf +
                      QStringLiteral("In den Systemsteuerungen ist das Datumformat nicht auf TT.MM.JJJJ eingestellt. "
                                     "Bei datumspezifischen Berechnungen kann es deshalb zu fehlerhaften Berechnungen "
                                     "kommen. Um dies auszuschließen, sollten Sie in den Systemsteuerungen das "
                                     "Datumformat auf TT.MM.JJJJ einstellen."));
    return true;
}

void PA_Koben::Drucker_pruefen() {
    if (koben.platform.printers().isEmpty())
        koben.message(
            QStringLiteral("Es ist kein Drucker installiert bzw. eingerichtet. Bitte installieren Sie einen "
                           "Drucker, bevor Sie mit OLM arbeiten, weil es sonst zu Programmabbrüchen kommen "
                           "kann! Falls Sie keinen Drucker verwenden, installieren Sie bitte trotzdem einen "
                           "beliebigen Druckertreiber."));
}

/// Finds nothing despite its name: the data folder has its fixed place, and is made with copies of the shipped files.
void PA_Koben::Datenordner_suchen() {
    const WaitCursor wait(koben);
    koben.Datenordner = withSeparator(koben.platform.dataFolder());
    if (!QDir(koben.Datenordner).exists())
        makeDataFolder(QDir::cleanPath(koben.Datenordner), QDir(koben.Programmordner));
}

void PA_Koben::Datenbank_neu() {
    Menues_sperren(false);
    const QString missing = Fehlende_Datenbank(koben);
    if (!missing.isEmpty()) m_hinweise += missing;
    Datenbank_anlegen(koben.workspace, koben.Datenbankpfad);
    verbinden();
    Menues_sperren(true);
}

void PA_Koben::Datenbank_oeffnen() {
    m_neu = !QFile::exists(koben.Datenbankpfad) || Workspace::setUnfinishedAside(koben.Datenbankpfad);
    if (!m_neu && OldFile::isOld(koben.Datenbankpfad)) Altbestand_umstellen();
    if (m_neu)
        Datenbank_neu();
    else
        verbinden();
    // copies that a killed compaction left; where the database is missing they may be all there is
    if (m_hinweise.isEmpty()) {
        const QString tidy = Komprimierte_Datei();
        QFile::remove(tidy);
        for (const QString& path : {koben.Datenbankpfad, tidy}) Workspace::removeLeftovers(path);
    }
    koben.Hauptdatenbank = koben.connect();
    Spalten_nachruesten(koben.Hauptdatenbank);
}

/// What a short or damaged file does not say keeps the value of a new installation.
void PA_Koben::Einstellungen_lesen() {
    QString failed;
    m_einstellungshinweise = SettingsGuard(koben).load(koben.platform.now().date().year(), failed);
    Sortierung_pruefen();
    if (!failed.isEmpty()) koben.message(failed);
}

/// A damaged file must not name a sort field that does not exist: no list would ever come up again.
void PA_Koben::Sortierung_pruefen() {
    const std::vector<Field> fields = m_db.fields(QStringLiteral("Sauen"));
    for (int slot : {Text::Sortierung1, Text::Sortierung2}) {
        QString& name = koben.Konfig_Text[static_cast<size_t>(slot)];
        const auto same = [&name](const Field& field) { return name.compare(field.name, Qt::CaseInsensitive) == 0; };
        if (std::none_of(fields.begin(), fields.end(), same)) name.clear();
    }
}

void PA_Koben::Activate() {
    koben.screens.waitCursor(false);
    if (koben.Status_neu_berechnen) {
        Progress progress(koben, QStringLiteral("Der Status der Sauen wird bestimmt ..."), 100);
        if (statussetzen(m_db, [&](int percent) { return progress.step(percent); })) koben.Status_neu_berechnen = 0;
        koben.Liste_neu_laden = 1;
    }
    if (koben.Liste_neu_laden) {
        const int row = std::max(datali.row(), 1);
        datenschweinelesen();
        if (row <= datali.rowCount()) datali.setRow(row);
        Menue_Zustand_setzen();
    }
    if (!m_einstellungshinweise.isEmpty() && !SettingsGuard(koben).isOpen() && koben.Start_erledigt) {
        m_einstellungshinweise.clear();
        Hinweise_zeigen();
    }
    if (!koben.Start_erledigt) {
        koben.Start_erledigt = 1;
        Erststart_hinweisen();
        if (!koben.ended && !showsTagesblick && readStartseite(koben.platform) != Startseite::Liste)
            koben.open(QStringLiteral("PA_Tagesblick"));
    }
}

void PA_Koben::Erststart_hinweisen() {
    if (datali.rowCount() == 0 && !m_gelesen.isEmpty())  // and not because the reading was cancelled
        koben.message(QStringList{QStringLiteral("HINWEIS!!!"), QString(),
                                  QStringLiteral("Die 'ersten Schritte' mit KOBEN sowie eine Kurzbeschreibung aller "
                                                 "Hauptmenuepunkte können Sie unter der Hilfe nachlesen."),
                                  QStringLiteral("Umfangreiche Hilfe erhalten Sie direkt in den verschiedenen "
                                                 "Modulen!"),
                                  QString(),
                                  QStringLiteral("Sobald ein Schwein (Sau, Eber, Masttier) eingegeben wurde, wird "
                                                 "diese Information nicht mehr angezeigt!")}
                          .join(Crlf));
    qint16& starts = koben.Konfig_Zahl[Zahl::Starts];
    if (starts > 30000) starts = 1;
    ++starts;
    if (starts % 20 == 0) {
        koben.message(QStringLiteral("Bitte [OK] klicken, um zu prüfen, ob Updates verfügbar sind."));
        koben.open(QStringLiteral("HV_Updatemanager"));
    }
}

void PA_Koben::closeBox() { beenden(); }

void PA_Koben::beenden() {
    if (!m_started) return close();
    if (m_closing) return;  // the close box again while a question of the closing stands open
    struct Closing {
        bool& on;
        explicit Closing(bool& flag) : on(flag) { on = true; }
        ~Closing() { on = false; }  // a step that failed must not keep the program open for ever
    } const closing(m_closing);
    for (QDir folder(koben.Datenordner);;) {
        folder.refresh();
        const QStringList pages = folder.entryList({QStringLiteral("report-*.htm")}, QDir::Files);
        if (pages.isEmpty() || !folder.remove(pages.first())) break;
    }
    Stand_verlassen();
    Datensicherung_erinnern();
    if (koben.ended) return;  // a backup was read back: its settings count at the next start, not those of this run
    for (int i = 0; i <= 4; ++i) {
        if (optianzeige.selected() == i) koben.Konfig_Zahl[Zahl::FilterAnzeige] = static_cast<qint16>(i);
        if (optisauen.selected() == i) koben.Konfig_Zahl[Zahl::FilterSauen] = static_cast<qint16>(i);
        if (i <= 2 && optiverkauft.selected() == i) koben.Konfig_Zahl[Zahl::FilterVerkauft] = static_cast<qint16>(i);
    }
    const QString reason = SettingsGuard(koben).save();
    if (!reason.isEmpty()) koben.message(reason);
    if (koben.catalogue.has(QStringLiteral("S_Datensicherung_neu")))  // not where the herd is but a visitor's
        koben.atEnd = [&program = koben] { Tageskopie_ablegen(program); };
    koben.end();
}

void PA_Koben::Datensicherung_erinnern() {
    QString& last = koben.Konfig_Text[Text::LetzteSicherung];
    if (!Ist_Datum(last)) {
        last = koben.Heute;
        return;
    }
    const qint64 days = Datum_aus_Text(last).daysTo(Datum_aus_Text(koben.Heute));
    if (days < koben.Konfig_Zahl[Zahl::SicherungTage]) return;
    if (koben.yesNo(QStringLiteral("Sie haben seit dem ") + last +
                    QStringLiteral(" keine Datensicherung mehr gemacht.") + Crlf + Crlf +
                    QStringLiteral("Soll jetzt eine Datensicherung gemacht werden?")))
        koben.open(QStringLiteral("S_Datensicherung_neu"));
}

}  // namespace koben

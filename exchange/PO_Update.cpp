#include "exchange/PO_Update.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "core/Aktionsnamen.h"
#include "core/PZ_Koben_Subs.h"
#include "store/FileCheck.h"
#include "store/Files.h"
#include "store/OldFile.h"

namespace koben {

namespace {

const QString Program = QStringLiteral("koben.exe"), Predecessor = QStringLiteral("koben.mdb"),
              Own = QStringLiteral("koben2.mdb"), OldSettings = QStringLiteral("Einstellungen.ko1"),
              Settings = QStringLiteral("Einstellungen.ko2");

/// Where the predecessor's own installation puts it, on drive c:.
const QString Usual = QStringLiteral("programme/koben1");

constexpr int DayWidth = 90;  // of a column, which is filled after the window has shown it

/// Steps that a failed or cancelled run told have not happened.
class LogGuard {
public:
    explicit LogGuard(TextBox& log) : m_log(log), m_before(log.text()) {}
    ~LogGuard() {
        if (!m_keep) m_log.setText(m_before);
    }
    LogGuard(const LogGuard&) = delete;
    LogGuard& operator=(const LogGuard&) = delete;
    void keep() { m_keep = true; }

private:
    TextBox& m_log;
    QString m_before;
    bool m_keep = false;
};

QString sums(const Altuebernahme& taken) {
    return counted(taken.tiere, "Tier", "Tiere") + QStringLiteral(", ") +
           counted(taken.buchungen, "Buchung", "Buchungen");
}

}  // namespace

PO_Update::PO_Update(Koben& koben_)
    : Form(koben_, QStringLiteral("PO_Update"), QStringLiteral("Datenübernahme von KOBEN 1.0 nach KOBEN 2.0")) {
    lw.fixed = true;
    lw.setHint(QStringLiteral("Laufwerk"));
    pfad.setHint(QStringLiteral("Gewählter Ordner"));
    verzeichnis.setHint(QStringLiteral("Ordner zur Auswahl"));
    lifund.setHint(QStringLiteral("Was gefunden wurde"));
    t.multiLine = t.readOnly = true;
    t.setHint(Label2.text());
    lw.onClick = [this] { lw_Click(); };
    pfad.onLostFocus = [this] { pfad_LostFocus(); };
    verzeichnis.onDoubleClick = [this] { verzeichnis_DblClick(); };
    start.onClick = [this] { start_Click(); };
    koben2.onClick = [this] { koben2_Click(); };
    beenden.onClick = [this] { beenden_Click(); };
    cancelButton = &beenden;
    lifund.addColumn({QStringLiteral("was"), QStringLiteral("Gefunden")});
    lifund.addColumn({QStringLiteral("anzahl"), QStringLiteral("Anzahl"), Align::Right, 0, Sort::Number});
    lifund.addColumn({QStringLiteral("von"), QStringLiteral("Von"), Align::Left, DayWidth, Sort::Date});
    lifund.addColumn({QStringLiteral("bis"), QStringLiteral("Bis"), Align::Left, DayWidth, Sort::Date});
    lifund.addColumn({QStringLiteral("hinweis"), QStringLiteral("Zu beachten")});
    start.setEnabled(false);
    koben2.setVisible(false);
}

void PO_Update::Load() {
    m_db = koben.connect();
    QStringList roots;
    for (const Drive& drive : koben.platform.drives()) roots += drive.root;
    lw.setItems(roots);
    Ordner_zeigen(koben.Datenordner);
    Vorgaenger_suchen();
    start.setEnabled(!m_mdb.isEmpty() && m_version == Altversion::Koben1);
    Inhalt_zeigen();
    for (const QString& root : lw.items()) {
        const QString usual = QDir(root).filePath(Usual);
        if (!root.startsWith(u"c:", Qt::CaseInsensitive) || dateiIn(usual, Program).isEmpty() ||
            dateiIn(usual, Predecessor).isEmpty())
            continue;
        Ordner_zeigen(usual);
        return verzeichnis_Change();
    }
}

/// Shows the folder in all three controls; nothing is looked for in it yet.
void PO_Update::Ordner_zeigen(const QString& folder) {
    m_folder = QDir::cleanPath(folder);
    m_ordner = Ordnerliste(m_folder);
    verzeichnis.setItems(m_ordner.items());
    verzeichnis.setCurrent(m_ordner.current());
    pfad.setText(QDir::toNativeSeparators(m_folder));
    int drive = -1;  // the longest root that the folder lies on
    for (int i = 0; i < lw.items().size(); ++i)
        if (m_folder.startsWith(lw.items()[i]) && (drive < 0 || lw.items()[i].size() > lw.items()[drive].size()))
            drive = i;
    lw.setCurrent(drive);
}

void PO_Update::lw_Click() {
    if (lw.current() < 0) return;
    Ordner_zeigen(lw.items()[lw.current()]);
    verzeichnis_Change();
}

void PO_Update::pfad_LostFocus() {
    const QString typed = pfad.text().trimmed();
    const QString folder = QDir::cleanPath(QDir(m_folder).absoluteFilePath(typed));
    if (typed.isEmpty() || folder == m_folder) return;
    if (!QFileInfo(folder).isDir()) {
        pfad.setText(QDir::toNativeSeparators(m_folder));  // which is still the chosen one
        return befund.setText(QStringLiteral("Den Ordner %1 gibt es nicht.").arg(typed));
    }
    Ordner_zeigen(folder);
    verzeichnis_Change();
}

void PO_Update::verzeichnis_DblClick() {
    const QString folder = m_ordner.path(verzeichnis.current());
    if (folder.isEmpty() || folder == m_folder) return;
    Ordner_zeigen(folder);
    verzeichnis_Change();
}

/// The file to take over: the predecessor's, else a genuine one of this version.
void PO_Update::Vorgaenger_suchen() {
    m_version = Altversion::Koben1;
    m_mdb = dateiIn(m_folder, Program).isEmpty() ? QString() : dateiIn(m_folder, Predecessor);
    if (m_mdb.isEmpty()) {
        const QString own = dateiIn(m_folder, Own);
        if (!own.isEmpty() && (OldFile::isOld(own) || isAccdb(own))) m_mdb = own, m_version = Altversion::Koben2;
    }
    koben2.setVisible(m_version == Altversion::Koben2 && OldFile::isOld(m_mdb));
}

void PO_Update::verzeichnis_Change() {
    Vorgaenger_suchen();
    if (!m_mdb.isEmpty() && m_version == Altversion::Koben1) {
        Label1.setText(
            QStringLiteral("KOBEN 1.0 wurde gefunden. Sie können jetzt mit [Start] die Übernahme anstarten!"));
        koben.message(
            QStringLiteral("KOBEN 1.0 wurde gefunden! Sie können die Datenübernahme jetzt mit [Start] starten!"));
        start.setEnabled(true);
    } else {
        Label1.setText(QStringLiteral("Im aktuellen Ordner ist KOBEN 1.0 nicht installiert!"));
        start.setEnabled(false);
    }
    Inhalt_zeigen();
}

/// What the file holds, before anything of it is taken over. A file that cannot be read is told here as well.
void PO_Update::Inhalt_zeigen() {
    lifund.clearRows();
    befund.setText({});
    if (m_mdb.isEmpty()) return;
    try {
        Progress progress(koben, QStringLiteral("Die alte Datenbank wird durchgesehen ..."), 100);
        const auto found = findAltbestand(m_db, m_mdb, m_version, [&](int percent) { return progress.step(percent); });
        if (!found) return befund.setText(QStringLiteral("Die Durchsicht der alten Datenbank wurde abgebrochen."));
        for (const Altfund& line : *found)
            lifund.addValues({line.was, line.anzahl, line.von.isValid() ? Value(line.von) : Value(),
                              line.bis.isValid() ? Value(line.bis) : Value(), line.hinweis});
        befund.setText(QStringLiteral("In %1 wurde gefunden:").arg(QDir::toNativeSeparators(m_mdb)));
    } catch (const DatabaseError& error) {
        befund.setText(error.message());
    }
}

void PO_Update::log(const QStringList& lines) {
    const QString before = t.text();
    t.setText((before.isEmpty() ? QString() : before + Crlf) + lines.join(Crlf));
}

/// Nothing where the user gave it up.
std::optional<Altuebernahme> PO_Update::take(Altversion version, const QString& name) {
    const WaitCursor wait(koben);
    Progress progress(koben, QStringLiteral("Die Daten werden übernommen ..."), 100);
    const auto go = [&](int percent) { return progress.step(percent); };
    Action action(m_db, name);
    auto taken = version == Altversion::Koben1 ? takeOverKoben1(action, m_mdb, go) : takeOverKoben2(m_db, m_mdb, go);
    if (!taken) {
        befund.setText(QStringLiteral("Die Übernahme wurde abgebrochen. Der Bestand in KOBEN 2.0 ist unverändert."));
        return taken;
    }
    action.setName(name + QStringLiteral(": ") + sums(*taken));
    action.commit();
    koben.Liste_neu_laden = 1;
    if (!taken->hinweise.isEmpty())
        befund.setText(
            QStringLiteral("Übernommen. Dabei zu beachten: %1.").arg(taken->hinweise.join(QStringLiteral("; "))));
    return taken;
}

void PO_Update::start_Click() {
    if (!koben.yesNo(
            QStringLiteral("ACHTUNG!!!") + Crlf + Crlf +
                QStringLiteral("Durch die Datenübernahme von KOBEN 1.0 wird die Datenbasis in KOBEN 2.0 vorher "
                               "komplett gelöscht. Soll die Datenübernahme wirklich ausgeführt werden?"),
            true))
        return;
    LogGuard guard(t);
    log({QStringLiteral("Die Datenübernahme wurde angestartet."),
         QStringLiteral("Alle Tabelleninhalte in KOBEN 2.0 werden gelöscht")});
    const auto taken = take(Altversion::Koben1, QStringLiteral("Datenübernahme aus KOBEN 1.0"));
    if (!taken) return;
    guard.keep();
    QStringList lines = {QStringLiteral("Die Tabelleninhalte wurden gelöscht"),
                         QStringLiteral("Die Tiere werden eingelesen:")};
    lines += taken->tierzeilen;
    for (const QString& table : taken->tabellen)
        lines += QStringLiteral("Die Tabelle ") + table + QStringLiteral(" wurde kopiert.");
    Einstellungen_kopieren();
    lines += QStringLiteral("Die Übernahme wurde erfolgreich abgeschlossen.");
    log(lines);
    koben.message(QStringLiteral("Die Daten wurden erforgreich von KOBEN 1.0 nach KOBEN 2.0 übernommen."));
}

/// The settings in memory stay; they are written over the copy at the program's end.
void PO_Update::Einstellungen_kopieren() {
    const QString old = dateiIn(m_folder, OldSettings);
    QFile file(old);
    if (old.isEmpty()) return;
    QString reason;
    if (file.open(QIODevice::ReadOnly))
        reason = writeFile(koben.Datenordner + Settings, file.readAll());
    else
        reason = QStringLiteral("sie darf nicht gelesen werden");
    if (!reason.isEmpty())
        koben.message(fileFailure(
            QStringLiteral("Die Einstellungen %1 können nicht übernommen werden").arg(QDir::toNativeSeparators(old)),
            reason));
}

void PO_Update::koben2_Click() {
    if (!koben.yesNo(QStringLiteral("ACHTUNG!!!") + Crlf + Crlf +
                         QStringLiteral("Durch die Übernahme wird die Datenbasis in KOBEN 2.0 vorher komplett gelöscht "
                                        "und durch den Bestand aus %1 ersetzt. Soll die Übernahme wirklich ausgeführt "
                                        "werden?")
                             .arg(QDir::toNativeSeparators(m_mdb)),
                     true))
        return;
    const auto taken = take(Altversion::Koben2, QStringLiteral("Übernahme eines Bestands von KOBEN 2.0"));
    if (!taken) return;
    koben.Status_neu_berechnen = 1;
    koben.message(QStringLiteral("Der Bestand wurde übernommen: %1.").arg(sums(*taken)));
}

void PO_Update::beenden_Click() {
    m_db.close();
    close();
}

}  // namespace koben

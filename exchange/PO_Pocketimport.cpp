#include "exchange/PO_Pocketimport.h"

#include <QFile>

#include "core/Aktionsnamen.h"
#include "core/Einstellungen.h"
#include "exchange/Geraeteimport.h"
#include "store/Files.h"

namespace koben {
namespace {

const QString Achtung = QStringLiteral("ACHTUNG!!!") + Crlf + Crlf;
constexpr qint64 MostBytes = 64 << 20;

}  // namespace

PO_Pocketimport::PO_Pocketimport(Koben& koben_) : Form(koben_, "PO_Pocketimport", "Datenimport vom Pocket-PC") {
    Label1.setText(
        "Importieren der eingelesenen Dateien in die Datenbasis von KOBEN 2.0 - WICHTIG: Sie sollten rechts das Feld "
        "'Je Maßnahme, Tag nur Tier nur eine Buchung zulassen' aktivieren, um versehentliche Doppelimporte zu "
        "vermeiden. Der Nachteil ist, daß wenn Sie bei einem Tier an einem Tag und einer Maßnahme zwei oder mehr "
        "Buchungen vorgenommen haben (kann eigentlich nur bei den Behandlunen der Fall sein), dann wird nur eine "
        "Buchung akzeptiert.");
    koneindatum.setChecked(true);
    ok[0].onClick = [this] { copyFromDevice(); };
    ok[1].onClick = [this] { importFile(); };
    hilfe.onClick = [this] { koben.open("PH_Hilfe"); };
    cmdschließen.onClick = [this] {
        m_db.close();
        close();
    };
    cancelButton = &cmdschließen;
    helpTopic = name();
}

void PO_Pocketimport::Load() {
    m_db = koben.connect();
    geraet.show();
}

void PO_Pocketimport::copyFromDevice() {
    if (geraet.startTool("/is dev:\\" + DateiVomGeraet + " \"" + koben.Datenordner.chopped(1) + "\""))
        return koben.message(
            "Die Kopierfunktion wurde gestartet. Die Daten müssten in wenigen Sekunden übertragen sein. Sie sehen "
            "dieses an der eingeblendeten Eingabeaufforderung in der Taskleiste. Sobald die Eingabeaufforderung wieder "
            "automatisch schließt, ist die Übertragung abgeschlossen." +
            Crlf + Crlf + "Bitte warten Sie mit dem Import-Schritt 2, bis die Übertragung abgeschlossen ist!");
    if (geraet.known()) return geraet.fetch(DateiVomGeraet);
    koben.message(
        "Die Datei cecopy.exe fehlt. Diese wird durch die Installation von KOBEN 2.0 automatisch im "
        "Installationsverzeichnis von KOBEN 2.0 abgelegt und ist für das übertragen der Daten direkt in KOBEN zwingend "
        "erforderlich. Sie können die Datendatei KOBEN2_DATEN_VON_POCKET.KO2 auch mit dem Windows-Explorer aus dem "
        "Hauptverzeichnis des Pocket-PC's in das Installationsverzeichnis des Home-PC's kopieren.");
}

void PO_Pocketimport::importFile() {
    if (!QFile::exists(koben.Datenordner + DateiVomGeraet))
        return koben.message(
            "Es sind noch keine zu importierende Dateien vorhanden. Bitte kopieren Sie zuerst die Datendatei "
            "KOBEN2_DATEN_VON_POCKET.KO2 vom Pocket-PC auf den Home-PC in das Installationsverzeichnis von KOBEN 2.0!");
    if (!koneindatum.checked() &&
        !koben.yesNo("Sie haben ausgewählt, daß je Tag, Maßnahme und Tier mehrere Buchungen möglich sind. Dies hat den "
                     "Nachteil, daß bei einem versehentlichen doppelten Datenimport die Buchungen auch doppelt in der "
                     "Datenbasis eingetragen werden." +
                         Crlf + Crlf + "Möchten Sie mit dem Import wirklich fortfahren?",
                     true))
        return;
    const auto file = readFile();
    if (!file) return;
    const QString trouble = keepList(book(*file));
    koben.message(
        "Der Import wurde abgeschlossen. Im Anschluss öffnet sich ein Fenster, in dem alle importierten Buchungen "
        "angezeigt werden.");
    showList(trouble);
    koben.message(
        Achtung +
        "Bevor Sie den nächsten Datenimport starten, müssen Sie unbedingt vorher einen Datenexport ausführen, "
        "weil sonst die diesesmal eingelesenen Buchungen sonst nochmals eingelesen werden könnten!");
    koben.message(Achtung +
                  "Es wird jetzt das Modul für die Bewegungsdaten geöffnet. Bitte schließen Sie dieses Modul gleich "
                  "wieder. Damit werden die Datenimport mit den Sauen im Hauptmodul abgeglichen!");
    koben.open("PE_Bewegungsdaten");
}

/// The file, or nothing where it is refused; the user has then been told why.
std::optional<Geraetedatei> PO_Pocketimport::readFile() {
    const WaitCursor wait(koben);
    const auto refused = [this](const QString& why) {
        koben.message("Die Datei " + DateiVomGeraet + " kann nicht importiert werden, weil sie beschädigt ist:" + Crlf +
                      Crlf + why + Crlf + Crlf +
                      "Es wurde nichts importiert. Bitte übertragen Sie die Datei noch einmal vom Pocket-PC.");
        return std::nullopt;
    };
    QFile source(koben.Datenordner + DateiVomGeraet);
    if (!source.open(QIODevice::ReadOnly)) return refused("Sie lässt sich nicht lesen: " + fileReason() + u'.');
    if (source.size() > MostBytes) return refused("Sie ist größer, als eine Datei des Geräts sein kann.");
    const QByteArray bytes = source.readAll();
    if (bytes.size() != source.size()) return refused("Sie lässt sich nicht ganz lesen: " + fileReason() + u'.');
    Geraetedatei file = Geraetedatei::read(bytes);
    if (!file.problem().isEmpty()) return refused(file.problem());
    return file;
}

QString PO_Pocketimport::book(const Geraetedatei& file) {
    const Geraeteplan plan = planDeviceBookings(m_db, file, koneindatum.checked(), [this](const QString& number) {
        return koben.yesNo("Die Sau mit der Nummer " + number +
                           " existiert noch nicht in der Datenbank. Soll diese jetzt eingetragen werden?");
    });
    const int bookings = plan.count(Geraeteurteil::Neu);
    if (bookings == 0) return Importliste(plan);
    const WaitCursor wait(koben);
    Action action(m_db, "Import von " + counted(bookings, "Buchung", "Buchungen") + " vom Pocket-PC");
    bookDevicePlan(action, plan);
    action.commit();
    koben.Liste_neu_laden = 1;
    return Importliste(plan);
}

/// Before the import is called done, so that its list lies there then. Why it does not, or "".
QString PO_Pocketimport::keepList(const QString& list) {
    koben.Ausgabedatei = koben.Datenordner + "LISTE.TXT";
    return writeFile(koben.Ausgabedatei, nachWindows1252(list));
}

/// The import is on the disk: where its list cannot be written, the user reads that and goes on.
void PO_Pocketimport::showList(const QString& reason) {
    if (reason.isEmpty()) return koben.open("PA_Textausgabe");
    koben.message(fileFailure("Der Import ist gespeichert, aber die Liste der Buchungen kann nicht in die Datei " +
                                  koben.Ausgabedatei + " geschrieben werden",
                              reason));
}

}  // namespace koben

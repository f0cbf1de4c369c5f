#include "exchange/PO_Pocketimport.h"

#include "core/Einstellungen.h"
#include "exchange/Geraeteeingang.h"

namespace koben {

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
    vorschau.onClick = [this] { koben.open("PO_Vorschau"); };
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
    Geraeteeingang eingang(koben);
    if (!eingang.present() || !eingang.agreed(koneindatum.checked())) return;
    if (const auto file = eingang.read()) eingang.take(m_db, *file, koneindatum.checked());
}

}  // namespace koben

#include "exchange/PO_Pocketexport.h"

#include <QDir>

#include "core/PZ_Koben_Subs.h"
#include "exchange/Geraeteabschnitte.h"
#include "exchange/PO_Hausnetz.h"
#include "exchange/Stallseite.h"
#include "store/Files.h"

namespace koben {
namespace {

constexpr int Zurueck = 365;  // days that the export reaches back at first

}  // namespace

PO_Pocketexport::PO_Pocketexport(Koben& koben_)
    : Bericht(koben_, "PO_Pocketexport", "Daten an einen Windows-Pocket-PC exportieren") {
    Label1.setText(
        "Erstellen der Export-Datei. Diese hat den Dateinamen KOBEN2_DATEN_ZU_POCKET.KO2 und wird im "
        "Installationsverzeichnis von KOBEN 2.0 abgelegt. Falls Sie am Pocket bereits Daten geändert haben, sollten "
        "Sie unbedingt vorher einen Import ausführen und danach die Gesamten Daten exportieren.");
    optisort.frame = QStringLiteral("Export der Buchungen sortiert nach...");
    tdat.setHint(rahmen.text());
    bind(optisort, Zahl::PocketSortierung);
    bind(konnursauen, Zahl::PocketNurSauen);
    bindDate(tdat, calender, calend);
    bindButtons(ok[0], beenden, &hilfe);
    ok[0].onClick = [this] { writeFile(); };
    ok[1].onClick = [this] { copyToDevice(); };
    hausnetz.onClick = [this] { offer(); };
}

void PO_Pocketexport::Load() {
    Bericht::Load();
    tdat.setText(Datum_als_Anzeige(Datum_aus_Text(koben.Heute).addDays(-Zurueck)));
    geraet.show();
}

Exportauswahl PO_Pocketexport::choice() {
    if (!Ist_Datum(tdat.text())) tdat.setText({});
    return {.nurSauen = konnursauen.checked(), .sortierung = optisort.selected(), .ab = Datum_aus_Text(tdat.text())};
}

void PO_Pocketexport::offer() {
    PO_Hausnetz form(koben);
    form.auswahl = choice();
    koben.run(form);
}

void PO_Pocketexport::writeFile() {
    const Exportauswahl chosen = choice();
    Exportergebnis result = Exportergebnis::Done;
    QByteArray bytes;
    const bool whole =
        run("Die Daten für das Gerät werden zusammengestellt ...", Exportschritte, &meter, [&](Progress& progress) {
            result = composeDeviceFile(
                m_db, chosen, koben.Datenordner + "PB_Arbeitsplan_Pocket.txt",
                [&](int sections) { return progress.step(sections); }, bytes);
        });
    if (!whole) return;
    if (result == Exportergebnis::NoAnimals)
        return koben.message(
            "Es wurden lt. den aktuellen Einstellungen keine Tiere gefunden! Der Datenexport wird abgebrochen.");
    const QString path = koben.Datenordner + DateiZumGeraet;
    if (const QString reason = writeFileThrough(path + ".neu", path, bytes); !reason.isEmpty())
        return koben.message(fileFailure(
            QStringLiteral("Die Exportdatei %1 kann nicht geschrieben werden").arg(QDir::toNativeSeparators(path)),
            reason));
    const QString pageTrouble = keepPage(chosen, bytes);
    koben.message("Die Exportdatei wurde im Ordner " + koben.Datenordner +
                  " abgelegt. Mit dem Schritt 2 können diese direkt auf den Pocket-PC kopiert werden. Die Datei kann "
                  "auch mit dem Windows-Explorer in das Hauptverzeichnis des Pocket-PC's kopiert werden.");
    if (geraet.known()) geraet.send(DateiZumGeraet);
    if (!pageTrouble.isEmpty()) koben.message(pageTrouble);
}

/// The export is done: where the page cannot be made the user reads that at the end.
QString PO_Pocketexport::keepPage(const Exportauswahl& chosen, const QByteArray& exchangeFile) {
    const WaitCursor wait(koben);
    return writeBarnPage(koben, m_db, chosen, exchangeFile);
}

void PO_Pocketexport::copyToDevice() {
    if (geraet.startTool("/is \"" + koben.Datenordner + DateiZumGeraet + "\" dev:\\"))
        return koben.message(
            "Die Kopierfunktion wurde gestartet. Die Datenübertragung dauert in der Regel nur wenige Sekunden. Sobald "
            "die Eingabeaufforderung in der Taskleiste automatisch schließt, ist die Übertragung abgeschlossen.");
    if (geraet.known()) return geraet.send(DateiZumGeraet);
    koben.message(
        "Die Datei cecopy.exe fehlt. Diese wird durch die Installation von KOBEN 2.0 automatisch im "
        "Installationsverzeichnis von KOBEN 2.0 abgelegt und ist für das übertragen der Daten direkt aus KOBEN "
        "zwingend erforderlich. Sie können die Daten auch mit dem Windows-Explorer in das Hauptverzeichnis auf den "
        "Pocket-PC kopieren.");
}

}  // namespace koben

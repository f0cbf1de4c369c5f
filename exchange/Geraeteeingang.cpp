#include "exchange/Geraeteeingang.h"

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

bool Geraeteeingang::present() const {
    if (QFile::exists(m_koben.Datenordner + DateiVomGeraet)) return true;
    m_koben.message(
        "Es sind noch keine zu importierende Dateien vorhanden. Bitte kopieren Sie zuerst die Datendatei "
        "KOBEN2_DATEN_VON_POCKET.KO2 vom Pocket-PC auf den Home-PC in das Installationsverzeichnis von KOBEN 2.0!");
    return false;
}

bool Geraeteeingang::agreed(bool onceADay) const {
    return onceADay ||
           m_koben.yesNo(
               "Sie haben ausgewählt, daß je Tag, Maßnahme und Tier mehrere Buchungen möglich sind. Dies hat den "
               "Nachteil, daß bei einem versehentlichen doppelten Datenimport die Buchungen auch doppelt in der "
               "Datenbasis eingetragen werden." +
                   Crlf + Crlf + "Möchten Sie mit dem Import wirklich fortfahren?",
               true);
}

std::optional<Geraetedatei> Geraeteeingang::read() const {
    const WaitCursor wait(m_koben);
    const auto refused = [this](const QString& why) {
        m_koben.message("Die Datei " + DateiVomGeraet +
                        " kann nicht importiert werden, weil sie beschädigt ist:" + Crlf + Crlf + why + Crlf + Crlf +
                        "Es wurde nichts importiert. Bitte übertragen Sie die Datei noch einmal vom Pocket-PC.");
        return std::nullopt;
    };
    QFile source(m_koben.Datenordner + DateiVomGeraet);
    if (!source.open(QIODevice::ReadOnly)) return refused("Sie lässt sich nicht lesen: " + fileReason() + u'.');
    if (source.size() > MostBytes) return refused("Sie ist größer, als eine Datei des Geräts sein kann.");
    const QByteArray bytes = source.readAll();
    if (bytes.size() != source.size()) return refused("Sie lässt sich nicht ganz lesen: " + fileReason() + u'.');
    Geraetedatei file = Geraetedatei::read(bytes);
    if (!file.problem().isEmpty()) return refused(file.problem());
    return file;
}

void Geraeteeingang::take(const Database& db, const Geraetedatei& file, bool onceADay, const Geraetewahl& wanted) {
    const QString trouble = keepList(book(db, file, onceADay, wanted));
    m_koben.message(
        "Der Import wurde abgeschlossen. Im Anschluss öffnet sich ein Fenster, in dem alle importierten Buchungen "
        "angezeigt werden.");
    showList(trouble);
    m_koben.message(
        Achtung +
        "Bevor Sie den nächsten Datenimport starten, müssen Sie unbedingt vorher einen Datenexport ausführen, "
        "weil sonst die diesesmal eingelesenen Buchungen sonst nochmals eingelesen werden könnten!");
    m_koben.message(Achtung +
                    "Es wird jetzt das Modul für die Bewegungsdaten geöffnet. Bitte schließen Sie dieses Modul gleich "
                    "wieder. Damit werden die Datenimport mit den Sauen im Hauptmodul abgeglichen!");
    m_koben.open("PE_Bewegungsdaten");
}

/// The lines of the import's list.
QString Geraeteeingang::book(const Database& db, const Geraetedatei& file, bool onceADay, const Geraetewahl& wanted) {
    const Geraeteplan plan = planDeviceBookings(
        db, file, onceADay,
        [this](const QString& number) {
            return m_koben.yesNo("Die Sau mit der Nummer " + number +
                                 " existiert noch nicht in der Datenbank. Soll diese jetzt eingetragen werden?");
        },
        wanted);
    const int bookings = plan.count(Geraeteurteil::Neu);
    if (bookings == 0) return Importliste(plan);
    const WaitCursor wait(m_koben);
    Action action(db, "Import von " + counted(bookings, "Buchung", "Buchungen") + " vom Pocket-PC");
    bookDevicePlan(action, plan);
    action.commit();
    m_koben.Liste_neu_laden = 1;
    return Importliste(plan);
}

/// Before the import is called done, so that its list lies there then. Why it does not, or "".
QString Geraeteeingang::keepList(const QString& list) {
    m_koben.Ausgabedatei = m_koben.Datenordner + "LISTE.TXT";
    return writeFile(m_koben.Ausgabedatei, nachWindows1252(list));
}

/// The import is on the disk: where its list cannot be written, the user reads that and goes on.
void Geraeteeingang::showList(const QString& reason) {
    if (reason.isEmpty()) return m_koben.open("PA_Textausgabe");
    m_koben.message(fileFailure("Der Import ist gespeichert, aber die Liste der Buchungen kann nicht in die Datei " +
                                    m_koben.Ausgabedatei + " geschrieben werden",
                                reason));
}

}  // namespace koben

#include "exchange/HV_Updatemanager.h"

#include <QDir>
#include <QStandardPaths>

#include "core/Version.h"
#include "exchange/Versionsliste.h"

namespace koben {

namespace {

constexpr qint64 mostText = 1'000'000, mostSetup = 500'000'000;  // bytes

/// The bar of a request; without a known size it stands.
WebProgress shownBy(Progress& progress) {
    return [&progress](qint64 come, qint64 all) { return progress.step(all > 0 ? come * 100 / all : 0); };
}

}  // namespace

HV_Updatemanager::HV_Updatemanager(Koben& koben_)
    : Form(koben_, QStringLiteral("HV_Updatemanager"), QStringLiteral("Update-Manager")) {
    labelakt[0].setText(Version);
    for (TextBox* box : {&Text1, &Text2}) {
        box->multiLine = box->readOnly = box->fixedPitch = true;
        box->enterIsTab = box->marksAllOnFocus = false;
        box->setText(QStringLiteral("Daten werden aus dem Internet eingelesen (sofern eine Verbindung besteht)..."));
    }
    Text1.setHint(QStringLiteral("Alle Änderungen seit der Startversion"));
    Text2.setHint(QStringLiteral("Die Änderungen von Ihrer Version bis zur aktuellsten Version"));
    cmdschliessen.onClick = [this] { close(); };
    acceptButton = cancelButton = &cmdschliessen;
    helpTopic = name();
}

void HV_Updatemanager::Activate() {
    if (!koben.yesNo(QStringLiteral("Möchten Sie prüfen, ob Updates verfügbar sind?"))) return close();
    pruefen();
}

void HV_Updatemanager::pruefen() {
    WebAnswer answer;
    {
        Progress progress(koben, QStringLiteral("Die Liste der Versionen wird gelesen ..."), 100);
        answer = koben.platform.httpGet(Update::List, mostText, shownBy(progress));
    }
    if (!answer.read()) return gescheitert(answer.reason);
    const Versionsliste list = Versionsliste::lesen(answer.bytes, labelakt[0].text());
    if (!list.newest.isEmpty()) labelakt[1].setText(list.newest);
    if (!list.whole) return gescheitert(QStringLiteral("die Antwort des Servers ist keine Liste der Versionen"));
    Text1.setText(list.all);
    Text2.setText(list.missing);
    if (labelakt[0].text() == labelakt[1].text())
        return koben.message(
            QStringLiteral("Ihre Version ist auf dem aktuellen Stand. Sie brauchen nichts weiter zu unternehmen."));
    if (koben.yesNo(QStringLiteral("Ihre Version ist nicht mehr aktuell. Was sich alles geändert hat, wird Ihnen hier "
                                   "beschrieben. Möchten Sie jetzt das Update herunterladen?")))
        herunterladen();
}

void HV_Updatemanager::gescheitert(const QString& reason) {
    hinweis.setText(QStringLiteral("Es konnte nicht geprüft werden, ob Ihre Version aktuell ist: %1.").arg(reason));
    koben.message(QStringLiteral("Es ist ein Fehler aufgetreten! Bitte sehen Sie im Internet unter ") + Update::Site +
                  QStringLiteral(" nach, ob ein Update Verfügbar ist."));
}

void HV_Updatemanager::herunterladen() {
    koben.message(
        QStringList{QStringLiteral("Hinweis zum Download! Bitte gehen Sie wie folgt vor (nach betätigen von "
                                   "[OK]):"),
                    QStringLiteral("1. Legen Sie fest, wohin die Download-Datei gespeichert werden soll. Diese "
                                   "sollte NICHT in den Installationsordner der Software abgelegt werden "
                                   "(besser ist z.B. der Desktop)."),
                    QStringLiteral("2. Beenden Sie UNBEDINGT!!! das aktuelle Programm, bevor Sie die "
                                   "heruntergeladene Update-Datei starten."),
                    QStringLiteral("3. Starten Sie die heruntergeladene Update-Datei nach dem Download. Die "
                                   "Software wird nun installiert. Nach der Installation kann die "
                                   "heruntergeladene Datei gelöscht werden."),
                    QStringLiteral("4. Starten Sie das aktuelle Programm wieder.")}
            .join(Crlf));
    const QDir desktop(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation));
    const QString file = koben.screens.saveFile(QStringLiteral("Programme|*.EXE|Alle Dateien|*.*"),
                                                desktop.filePath(Update::Setup.section(u'/', -1)));
    if (file.isEmpty()) return;
    WebAnswer answer;
    {
        Progress progress(koben, QStringLiteral("Das Update wird heruntergeladen ..."), 100);
        answer = koben.platform.download(Update::Setup, file, mostSetup, shownBy(progress));
    }
    const QString shown = QDir::toNativeSeparators(file);
    if (answer.read())
        return hinweis.setText(
            QStringLiteral("Das Update ist gespeichert als %1. Bitte beenden Sie KOBEN, bevor Sie diese "
                           "Datei starten.")
                .arg(shown));
    hinweis.setText(QStringLiteral("Das Update wurde nicht heruntergeladen: %1.").arg(answer.reason));
    if (answer.result != WebAnswer::Result::GivenUp)
        koben.message(
            QStringLiteral("Das Update konnte nicht als %1 gespeichert werden: %2. Bitte prüfen Sie Verbindung "
                           "und Datenträger, und versuchen Sie es dann erneut.")
                .arg(shown, answer.reason));
}

}  // namespace koben

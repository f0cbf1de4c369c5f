#include "ui/Application.h"

#include <QLibraryInfo>
#include <QLocale>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "store/Database.h"
#include "ui/Look.h"

namespace koben::ui {

namespace {

const char* const noDisplay = "KOBEN braucht eine grafische Oberfläche, es wurde aber kein Bildschirm gefunden.\n";

void quitOnFatal(QtMsgType type, const QMessageLogContext&, const QString& text) {
    std::fputs(qPrintable(text + u'\n'), stderr);
    if (type != QtFatalMsg) return;
    std::fputs(noDisplay, stderr);
    std::_Exit(2);
}

}  // namespace

void refuseWithoutDisplay() {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        std::fputs(noDisplay, stderr);
        std::exit(2);
    }
    qInstallMessageHandler(quitOnFatal);  // a display that is named but does not answer
}

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    qInstallMessageHandler(nullptr);
    std::setlocale(LC_NUMERIC, "C");  // libraries below read and write numbers with a point
    QLocale::setDefault(QLocale(QStringLiteral("de_DE")));
    setApplicationName(QStringLiteral("KOBEN"));
    setOrganizationName(QStringLiteral("KOBEN"));
    setWindowIcon(programIcon());
    setQuitOnLastWindowClosed(false);
    if (m_german.load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        installTranslator(&m_german);
}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        fail();
        return true;
    }
}

void Application::fail() {
    m_failure = std::current_exception();
    QString reason;
    try {
        throw;
    } catch (const DatabaseError& error) {
        reason = error.message();
    } catch (const std::exception& error) {
        reason = QString::fromUtf8(error.what());
    } catch (...) {
        reason = QStringLiteral("Unbekannter Fehler");
    }
    // the handlers behind the failed one are left with the same exception, which is told already
    if (m_told || !onFailure) return;
    m_told = true;
    onFailure(reason);
}

void Application::rethrow() {
    if (m_failure) std::rethrow_exception(m_failure);
}

}  // namespace koben::ui

#include "ui/Application.h"

#include <QLibraryInfo>
#include <QLocale>
#include <clocale>

#include "store/Database.h"
#include "ui/Look.h"

namespace koben::ui {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    qInstallMessageHandler(nullptr);
    std::setlocale(LC_NUMERIC, "C");  // libraries below read and write numbers with a point
    QLocale::setDefault(QLocale(QStringLiteral("de_DE")));
    setApplicationName(QStringLiteral("KOBEN"));
    setOrganizationName(QStringLiteral("KOBEN"));
    QFont::insertSubstitution(QStringLiteral("Liberation Sans"), QStringLiteral("Arial"));  // of the same widths
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
    if (m_telling || !onFailure) return;  // a window painted behind the message fails for the same reason
    QString reason = QStringLiteral("Im Programm ist ein unerwarteter Fehler aufgetreten.");
    try {
        throw;
    } catch (const DatabaseError& error) {
        reason = error.message();
    } catch (...) {  // nothing that a user could make use of
    }
    m_telling = true;
    onFailure(reason);
    m_telling = false;
}

}  // namespace koben::ui

#include "ui/SystemPlatform.h"

#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QFontDatabase>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPrinterInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>

#include "ui/Printing.h"

namespace koben::ui {

const QString pdfPrinter = QStringLiteral("PDF-Datei");

namespace {

constexpr int httpTimeout = 10'000;  // milliseconds without progress

/// Where PDFs go at first: the data folder, under the day and a free number.
QString pdfPreset(const QString& folder) {
    const QString day = QDate::currentDate().toString(Qt::ISODate);
    QString path = folder + QStringLiteral("Liste_%1.pdf").arg(day);
    for (int n = 2; QFileInfo::exists(path); ++n) path = folder + QStringLiteral("Liste_%1_%2.pdf").arg(day).arg(n);
    return path;
}

}  // namespace

SystemPlatform::SystemPlatform(std::function<QString(const QString&)> choosePdf)
    : m_choosePdf(std::move(choosePdf)), m_settings(QStringLiteral("KOBEN"), QStringLiteral("KOBEN")) {}

SystemPlatform::~SystemPlatform() = default;

QDateTime SystemPlatform::now() { return QDateTime::currentDateTime(); }

QStringList SystemPlatform::printers() {
    QStringList names = QPrinterInfo::availablePrinterNames();
    names.append(pdfPrinter);
    return names;
}

QStringList SystemPlatform::fonts() {
    QStringList names = QFontDatabase::families();
    // The lists' own font: where it is not installed the system puts one of the same widths in its place.
    const QString listFont = QStringLiteral("Courier New");
    if (!names.contains(listFont)) names.insert(std::lower_bound(names.begin(), names.end(), listFont), listFont);
    return names;
}

std::unique_ptr<PrintJob> SystemPlatform::print(const QString& printer, bool landscape) {
    QString name = printer.isEmpty() ? QPrinterInfo::defaultPrinterName() : printer;
    if (name.isEmpty()) name = pdfPrinter;
    if (name != pdfPrinter) {
        auto job = beginPrint(name, landscape);
        if (!job)
            printTrouble = QStringLiteral(
                               "Nicht gedruckt: Der Drucker „%1“ ist nicht bereit. Bitte prüfen Sie, ob er "
                               "eingeschaltet ist, oder wählen Sie einen anderen.")
                               .arg(name);
        return job;
    }
    QString path = m_choosePdf(pdfPreset(dataFolder()));
    if (path.isEmpty()) return nullptr;
    if (QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".pdf");
    const auto failed = [this, path] {
        printTrouble = QStringLiteral(
                           "Die PDF-Datei %1 konnte nicht geschrieben werden. Bitte prüfen Sie, ob im Ordner "
                           "genügend Platz und das Schreiben erlaubt ist.")
                           .arg(QDir::toNativeSeparators(path));
    };
    auto job = beginPdf(path, landscape,
                        [this, failed](const QString& file) { file.isEmpty() ? failed() : void(open(file)); });
    if (!job) failed();
    return job;
}

bool SystemPlatform::open(const QString& fileOrAddress) {
    const QUrl address = QFileInfo::exists(fileOrAddress)
                             ? QUrl::fromLocalFile(QFileInfo(fileOrAddress).absoluteFilePath())
                             : QUrl::fromUserInput(fileOrAddress);
    const bool opened = address.isValid() && QDesktopServices::openUrl(address);
    refused = opened ? QString() : fileOrAddress;
    return opened;
}

bool SystemPlatform::start(const QString& command) {
    QStringList words = QProcess::splitCommand(command);
    if (words.isEmpty()) return false;
    const QString program = words.takeFirst();
    return QProcess::startDetached(program, words);
}

std::optional<QByteArray> SystemPlatform::httpGet(const QString& path) {
    // The maker's server is a setting of the user; without one there is nothing to ask.
    const QString server = userSetting(QStringLiteral("Update"), QStringLiteral("Server"));
    const QUrl address = path.contains(QStringLiteral("://")) ? QUrl(path) : QUrl(server + path);
    if (!address.isValid() || !address.scheme().startsWith(QStringLiteral("http"))) return std::nullopt;
    QNetworkAccessManager manager;
    manager.setTransferTimeout(httpTimeout);
    const std::unique_ptr<QNetworkReply> reply(manager.get(QNetworkRequest(address)));
    QEventLoop loop;
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished()) loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (reply->error() != QNetworkReply::NoError) return std::nullopt;
    return reply->readAll();
}

QString SystemPlatform::userSetting(const QString& section, const QString& key) {
    return m_settings.value(section + u'/' + key).toString();
}

void SystemPlatform::setUserSetting(const QString& section, const QString& key, const QString& value) {
    m_settings.setValue(section + u'/' + key, value);
    m_settings.sync();  // a killed program must not have forgotten how it left its files
}

QString SystemPlatform::userFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + u'/';
}

QString SystemPlatform::programFolder() {
    const QString installed = QStringLiteral(KOBEN_INSTALLED_DIR);
    const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/../share/koben");
    for (const QString& folder : {beside, installed})
        if (QFileInfo(folder).isDir()) return QDir::cleanPath(folder) + u'/';
    return QStringLiteral(KOBEN_SHIPPED_DIR) + u'/';
}

QString SystemPlatform::dataFolder() { return QDir::homePath() + QStringLiteral("/Daten/Sauenplaner_KOBEN2/"); }

bool SystemPlatform::lockDataFolder(const QString& folder) { return m_lock.nehmen(folder); }

}  // namespace koben::ui

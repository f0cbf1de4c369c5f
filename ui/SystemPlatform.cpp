#include "ui/SystemPlatform.h"

#include <QClipboard>
#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QMimeData>
#include <QPrinterInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QUrl>
#include <algorithm>

#include "store/Files.h"
#include "ui/DataFolder.h"
#include "ui/Http.h"
#include "ui/ListCopy.h"
#include "ui/Preview.h"
#include "ui/Printing.h"

namespace koben::ui {

constexpr double pictureDots = 192;  // to an inch, of pictures for other programs

const QString pdfPrinter = QStringLiteral("PDF-Datei");

namespace {

constexpr int downloadTime = 3'600'000;  // milliseconds; a slow line may need most of an hour

/// The volume of a folder, or where that is not there yet, of the nearest one above it.
QStorageInfo volumeOf(const QString& folder) {
    QFileInfo place(QDir::cleanPath(folder));
    while (!place.exists() && !place.isRoot()) place.setFile(place.absolutePath());
    return QStorageInfo(place.canonicalFilePath());
}

/// Whether a volume is one of the user's: none of the system's own parts, and none that lies in memory.
bool keepsFiles(const QStorageInfo& volume) {
    static const QByteArrayList kinds{"tmpfs", "devtmpfs", "ramfs", "squashfs", "overlay", "efivarfs", "autofs"};
    if (kinds.contains(volume.fileSystemType())) return false;
    static const QStringList systems{QStringLiteral("/boot"), QStringLiteral("/dev"),  QStringLiteral("/etc"),
                                     QStringLiteral("/proc"), QStringLiteral("/snap"), QStringLiteral("/sys"),
                                     QStringLiteral("/usr"),  QStringLiteral("/var")};
    const QString root = volume.rootPath() + u'/';
    if (root.startsWith(u"/run/") && !root.startsWith(u"/run/media/")) return false;
    return std::none_of(systems.begin(), systems.end(), [&](const QString& s) { return root.startsWith(s + u'/'); });
}

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

bool SystemPlatform::writePdf(const Drawing& document, const QString& path) {
    QPrinter paper(QPrinter::HighResolution);
    setPage(paper, document.landscape);
    return ui::writePdf(path, paper.pageLayout(), [&document](QPrinter&) { return document; });
}

bool SystemPlatform::writePng(const Sketch& sketch, const QString& path) {
    const QString draft = path + QStringLiteral(".teil");
    const bool written = pictureOf(sketch, pictureDots).save(draft, "PNG") && replaceFile(draft, path).isEmpty();
    if (!written) QFile::remove(draft);
    return written;
}

void SystemPlatform::copyPicture(const Sketch& sketch) {
    QGuiApplication::clipboard()->setImage(pictureOf(sketch, pictureDots));
}

QString SystemPlatform::pasted() { return QGuiApplication::clipboard()->text(); }

void SystemPlatform::copyCells(const Grid& list) { QGuiApplication::clipboard()->setMimeData(clipboardList(list)); }

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

QUrl SystemPlatform::onServer(const QString& path) const { return QUrl(server + path); }

WebAnswer SystemPlatform::httpGet(const QString& path, qint64 most, const WebProgress& go) {
    return fetchText(onServer(path), {.bytes = most, .silence = serverSilence, .whole = 3 * serverSilence}, go);
}

WebAnswer SystemPlatform::download(const QString& path, const QString& file, qint64 most, const WebProgress& go) {
    return fetchFile(onServer(path), file, {.bytes = most, .silence = serverSilence, .whole = downloadTime}, go);
}

QList<Drive> SystemPlatform::drives() {
    QList<Drive> found;
    const QString data = volumeOf(dataFolder()).rootPath();
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        if (!volume.isValid() || !volume.isReady() || volume.bytesTotal() <= 0) continue;
        if (volume.rootPath() != data && !keepsFiles(volume)) continue;
        const QString root = volume.rootPath();
        found.append({root.endsWith(u'/') ? root : root + u'/', volume.name(), volume.bytesAvailable(),
                      volume.bytesTotal(), volume.isReadOnly()});
    }
    return found;
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

QString SystemPlatform::dataFolder() {
    const QString agreed = agreedDataFolder(*this);
    return QDir::toNativeSeparators(
        agreed.isEmpty() ? usualDataFolder(QCoreApplication::applicationDirPath(), QDir::homePath()) : agreed);
}

bool SystemPlatform::lockDataFolder(const QString& folder) { return m_lock.nehmen(folder); }

}  // namespace koben::ui

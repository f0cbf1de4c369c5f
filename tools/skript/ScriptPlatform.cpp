#include "tools/skript/ScriptPlatform.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStorageInfo>
#include <utility>

#include "store/Files.h"
#include "tools/skript/Script.h"

namespace koben::skript {

namespace {

QString withSeparator(const QString& folder) { return folder.endsWith(u'/') ? folder : folder + u'/'; }

/// "C:\..." is a full path too, although none of this machine.
bool isAbsolute(const QString& path) {
    return QDir::isAbsolutePath(path) || (path.size() > 1 && path[0].isLetter() && path[1] == u':');
}

/// The path of an address on whatever server, without a slash at its head.
QString pathOnServer(const QString& address) {
    const qsizetype scheme = address.indexOf(QLatin1String("://"));
    const QString path = scheme < 0 ? address : address.mid(scheme + 3).section(u'/', 1);
    return path.startsWith(u'/') ? path.mid(1) : path;
}

}  // namespace

void ScriptPlatform::useFolder(const QString& path) {
    const QString folder = QDir(path).absolutePath();
    if (!QDir().mkpath(folder)) throw Failure{QStringLiteral("der Ordner %1 lässt sich nicht anlegen").arg(path)};
    m_dataFolder = withSeparator(folder);
}

QString ScriptPlatform::temporary(const QString& name) {
    if (!m_temporary) m_temporary.emplace(QDir::tempPath() + QStringLiteral("/koben-skript-XXXXXX"));
    if (!m_temporary->isValid() || !QDir(m_temporary->path()).mkpath(name))
        throw Failure{QStringLiteral("kein vorläufiger Ordner: %1").arg(m_temporary->errorString())};
    return withSeparator(m_temporary->filePath(name));
}

QString ScriptPlatform::dataFolder() {
    if (m_dataFolder.isEmpty()) m_dataFolder = temporary(QStringLiteral("daten"));
    return m_dataFolder;
}

QString ScriptPlatform::programFolder() {
    if (!m_programFolder.isEmpty()) return m_programFolder;
    const QString program = QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
    for (const QString& shipped : {program + QStringLiteral("/../share/koben"), QStringLiteral(KOBEN_SHIPPED_DIR)})
        if (!shipped.isEmpty() && QDir(shipped).exists())
            return m_programFolder = withSeparator(QDir(shipped).canonicalPath());
    return m_programFolder = temporary(QStringLiteral("programm"));
}

QString ScriptPlatform::pathOf(const QString& name) {
    if (isAbsolute(name)) return name;
    const QString inFolder = dataFolder() + name;
    const QString fromHere = QDir::current().absoluteFilePath(name);
    return !QFile::exists(inFolder) && QFile::exists(fromHere) ? fromHere : inFolder;
}

QDateTime ScriptPlatform::now() { return m_today.isValid() ? m_today.startOfDay() : QDateTime::currentDateTime(); }

QStringList ScriptPlatform::fonts() {
    return {QStringLiteral("Arial"), QStringLiteral("Courier New"), QStringLiteral("Times New Roman")};
}

std::unique_ptr<PrintJob> ScriptPlatform::print(const QString& printer, bool landscape) {
    if (!printer.isEmpty() && !printers().contains(printer)) return nullptr;
    return std::make_unique<ScriptPrintJob>(landscape, [this](const PrintedJob& job) {
        m_lastJob = job;
        m_transcript.line("@", QStringLiteral("drucke %1 Seiten").arg(job.pages));
    });
}

QString ScriptPlatform::withoutFolders(QString text) {
    for (const QString& folder : {dataFolder(), programFolder()}) {
        if (text == folder || text == folder.chopped(1)) return QStringLiteral(".");
        text.replace(folder, QString());
    }
    return text;
}

bool ScriptPlatform::open(const QString& fileOrAddress) {
    m_transcript.line("@", QStringLiteral("oeffne ") + withoutFolders(fileOrAddress));
    return true;
}

bool ScriptPlatform::start(const QString& command) {
    m_transcript.line("@", QStringLiteral("starte ") + withoutFolders(command));
    return true;
}

WebAnswer ScriptPlatform::httpGet(const QString& path, qint64 most, const WebProgress&) {
    using Result = WebAnswer::Result;
    if (m_net.empty()) return {Result::NoConnection, {}, QStringLiteral("es gibt keine Verbindung")};
    for (const auto& [known, file] : m_net) {
        if (pathOnServer(known) != pathOnServer(path)) continue;
        QFile answer(pathOf(file));
        if (!answer.open(QIODevice::ReadOnly)) throw Failure{QStringLiteral("die Datei %1 fehlt").arg(file)};
        if (answer.size() > most) return {Result::TooLarge, {}, QStringLiteral("die Datei ist zu groß")};
        return {Result::Read, answer.readAll()};
    }
    return {Result::Refused, {}, QStringLiteral("der Server hat diese Datei nicht")};
}

WebAnswer ScriptPlatform::download(const QString& path, const QString& file, qint64 most, const WebProgress& go) {
    WebAnswer answer = httpGet(path, most, go);
    if (!answer.read()) return answer;
    const QString reason = writeFile(file, std::exchange(answer.bytes, {}));
    if (!reason.isEmpty()) return {WebAnswer::Result::Unwritable, {}, reason};
    return answer;
}

void ScriptPlatform::plugIn(const QString& name, const QString& folder) {
    if (folder.isEmpty()) {
        m_sticks.erase(name);
        return;
    }
    const QString path = QDir::isAbsolutePath(folder) ? folder : dataFolder() + folder;
    if (!QDir().mkpath(path)) throw Failure{QStringLiteral("der Ordner %1 lässt sich nicht anlegen").arg(folder)};
    m_sticks[name] = withSeparator(path);
}

QList<Drive> ScriptPlatform::drives() {
    const QStorageInfo disk(dataFolder());
    const QString data = QDir(dataFolder()).absolutePath();
    QList<Drive> found{{data.left(data.indexOf(u'/') + 1), {}, disk.bytesAvailable(), disk.bytesTotal()}};
    for (const auto& [name, folder] : m_sticks) found.append({folder, name, disk.bytesAvailable(), disk.bytesTotal()});
    return found;
}

QString ScriptPlatform::userSetting(const QString& section, const QString& key) {
    const auto found = m_settings.find(section + u'/' + key);
    return found == m_settings.end() ? QString() : found->second;
}

void ScriptPlatform::setUserSetting(const QString& section, const QString& key, const QString& value) {
    m_settings[section + u'/' + key] = value;
}

bool ScriptPlatform::lockDataFolder(const QString& folder) { return m_lock.nehmen(folder); }

}  // namespace koben::skript

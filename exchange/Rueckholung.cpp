// The way back from a backup: what is refused, what would change, and the exchange of the files.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QStorageInfo>
#include <algorithm>
#include <limits>

#include "core/Tageskopien.h"
#include "exchange/Sicherung.h"
#include "forms/SettingsGuard.h"
#include "store/FileExchange.h"
#include "store/Files.h"

namespace koben {

namespace {

const QString DatabaseName = QStringLiteral("koben2.mdb");
const QString KeptHead = QStringLiteral("Vor_Rueckholung_");

constexpr qint64 reserve = 16'000'000;        // bytes of a disk that stay free
constexpr qint64 untoldRoom = 8'000'000'000;  // bytes, where the free ones are not told: far above any farm's backup
constexpr size_t mostFiles = 100'000;
constexpr int mostKept = 5;
// shares of the work
constexpr double unpacked = 0.4, checked = 0.6, kept = 0.95, half = 0.5;

bool isDatabase(const QString& name) { return name.compare(DatabaseName, Qt::CaseInsensitive) == 0; }

/// The name under which a file lies in the data folder; other systems may have spelled the program's own otherwise.
QString placeOf(const QString& name) {
    for (const char* own : {"koben2.mdb", "Einstellungen.ko2", "S_Datensicherung.ol8", "PB_Neues_Schwein.ko1"})
        if (name.compare(QLatin1String(own), Qt::CaseInsensitive) == 0) return QString::fromLatin1(own);
    return name;
}

/// A name within a folder, with no way out of it on any system.
bool isPlain(const QString& name) {
    if (name.isEmpty() || name.startsWith(u'.') || (name.size() > 1 && name[1] == u':')) return false;
    return std::none_of(name.begin(), name.end(), [](QChar c) { return c < u' ' || c == u'\\'; });
}

/// In the data folder or in a folder within it.
bool isPlace(const QStringList& parts) { return std::all_of(parts.begin(), parts.end(), isPlain); }

bool ownToProgram(const QString& name) {
    const QString small = name.toLower();
    return small == u"koben.lock" || small.endsWith(u"-wal") || small.endsWith(u"-shm") ||
           small.endsWith(u"-journal") || small == u"koben-arbeit" || small == u"koben-tausch";
}

/// Why one of its files is not taken; "" where it is.
QString against(const ZipEntry& entry) {
    const QStringList parts = (entry.folder ? entry.name.chopped(1) : entry.name).split(u'/');
    if (!isPlace(parts)) return QStringLiteral("Die Datei \"%1\" darin läge nicht im Datenordner").arg(entry.name);
    if (!entry.plainFile && !entry.folder)
        return QStringLiteral("Der Eintrag %1 darin ist ein Verweis").arg(entry.name);
    if (entry.encrypted) return QStringLiteral("Sie ist mit einem Kennwort verschlüsselt");
    if (std::any_of(parts.begin(), parts.end(), ownToProgram))
        return QStringLiteral("Die Datei %1 gehört in keine Datensicherung").arg(entry.name);
    if (entry.size < 0 && !entry.folder)
        return QStringLiteral("Die Größe der Datei %1 darin ist unbekannt").arg(entry.name);
    return {};
}

/// Why a backup is not read back, by what it says of itself; "" where it is.
QString against(const std::vector<ZipEntry>& entries, qint64 room) {
    if (entries.size() > mostFiles) return QStringLiteral("Sie enthält zu viele Dateien");
    QSet<QString> names;
    qint64 all = 0;
    for (const ZipEntry& entry : entries) {
        if (const QString reason = against(entry); !reason.isEmpty()) return reason;
        if (entry.folder) continue;  // it comes with the files in it
        if (names.contains(placeOf(entry.name)))
            return QStringLiteral("Die Datei %1 steht mehrmals darin").arg(entry.name);
        names.insert(placeOf(entry.name));
        if (entry.size > room - all)
            return QStringLiteral("Ausgepackt ist sie größer als der freie Platz auf dem Datenträger");
        all += entry.size;
    }
    return names.contains(DatabaseName) ? QString() : QStringLiteral("Sie enthält keine Datenbank von KOBEN");
}

/// Work on the database of a backup, whose failures are reasons to refuse it.
template <typename Work>
auto judged(const QString& path, const Work& work) {
    using Kind = DatabaseError::Kind;
    try {
        return work();
    } catch (const DatabaseError& error) {
        if (error.kind == Kind::NewerVersion)
            throw ZipFault(path, QStringLiteral("Ihre Datenbank stammt von einer neueren Version von KOBEN"));
        if (error.kind == Kind::ForeignFormat)
            throw ZipFault(
                path,
                QStringLiteral("Ihre Datenbank hat das alte Format (MDB). Entpacken Sie die Datensicherung in einen "
                               "eigenen Ordner, und übernehmen Sie sie unter Optionen / Datenübernahme aus KOBEN "
                               "1.0"));
        throw ZipFault(path, QStringLiteral("Ihre Datenbank ist keine von KOBEN oder beschädigt"));
    }
}

/// The backup, its entries found harmless and its database among them.
class Backup {
public:
    Backup(const QString& path, const QString& folder) : m_path(path), m_zip(path) {
        const qint64 free = QStorageInfo(folder).bytesAvailable();  // below 0 where the volume does not tell
        const qint64 room = free < 0 ? untoldRoom : free - reserve;
        if (const QString reason = against(m_zip.entries(), room); !reason.isEmpty()) refuse(reason);
        for (const ZipEntry& entry : m_zip.entries())
            if (!entry.folder) requireRoom(folder, placeOf(entry.name));
    }

    [[noreturn]] void refuse(const QString& reason) const { throw ZipFault(m_path, reason); }

    bool unpackDatabase(const QString& to, const ShareDone& go) const { return m_zip.unpack(database(), to, go); }

    bool unpackAll(const FileExchange& exchange, const ShareDone& go) const {
        for (size_t i = 0; i < m_zip.entries().size(); ++i) {
            if (m_zip.entries()[i].folder) continue;
            const bool big = i == database();
            if (!m_zip.unpack(i, exchange.file(placeOf(m_zip.entries()[i].name)), big ? go : ShareDone())) return false;
        }
        return true;
    }

    QDate day() const {
        const QDate named = Sicherungstag(m_path);
        return named.isValid() ? named : m_zip.entries()[database()].modified.date();
    }

    /// Rows of its unpacked database, which must be one that this version reads.
    TableCounts rowsOf(const QString& database) const {
        return judged(m_path, [&] { return Workspace::rowCounts(database); });
    }
    /// False where it was given up.
    bool check(Workspace& workspace, const QString& database, const ShareDone& go) const {
        const auto found = judged(m_path, [&] {
            return workspace.check(database, Check::Full, [&](int percent) { return !go || go(percent / 100.0); });
        });
        if (found && !found->isEmpty()) refuse(QStringLiteral("Die Datenbank darin ist beschädigt"));
        return found.has_value();
    }

private:
    /// A folder in the place of the file, or a file in the place of one of its folders, can be told beforehand.
    void requireRoom(const QString& folder, const QString& name) const {
        if (QFileInfo(QDir(folder).filePath(name)).isDir())
            refuse(QStringLiteral("Im Datenordner liegt an der Stelle der Datei %1 ein Ordner").arg(name));
        for (qsizetype end = name.indexOf(u'/'); end >= 0; end = name.indexOf(u'/', end + 1)) {
            const QString above = name.left(end);
            const bool file = QFileInfo(QDir(folder).filePath(above)).isFile();
            if (file || std::any_of(m_zip.entries().begin(), m_zip.entries().end(),
                                    [&](const ZipEntry& e) { return e.name == above; }))
                refuse(QStringLiteral("An der Stelle des Ordners %1 liegt eine Datei").arg(above));
        }
    }

    size_t database() const {
        const auto& entries = m_zip.entries();
        const auto found =
            std::find_if(entries.begin(), entries.end(), [](const ZipEntry& e) { return isDatabase(e.name); });
        return static_cast<size_t>(found - entries.begin());
    }

    QString m_path;
    ZipReader m_zip;
};

/// Packs the present state into the user's own folder and keeps the newest few of these.
bool keepPresent(Koben& koben, const ShareDone& go) {
    const QString folder = koben.platform.userFolder();
    QDir().mkpath(folder);
    const QString stem = KeptHead + koben.platform.now().toString(QStringLiteral("yyyy-MM-dd_HHmmss"));
    QString path = folder + stem + QStringLiteral(".zip");
    for (int n = 2; QFile::exists(path); ++n) path = folder + QStringLiteral("%1_%2.zip").arg(stem).arg(n);
    if (!Sicherung_erstellen(koben, path, Proof::Bytes, go)) return false;
    QStringList all = QDir(folder).entryList({KeptHead + QStringLiteral("*.zip")}, QDir::Files, QDir::Name);
    all.removeAll(QFileInfo(path).fileName());  // whatever the clock says, this one is the newest
    while (all.size() >= mostKept) QFile::remove(folder + all.takeFirst());
    return true;
}

/// The files of a backup, in the places from which they are exchanged. False where it was given up.
bool takeBackup(Koben& koben, const QString& zip, const FileExchange& exchange, const QString& database,
                const ShareDone& go) {
    const Backup backup(zip, koben.Datenordner);
    return backup.unpackAll(exchange, part(go, 0, unpacked)) &&
           backup.check(koben.workspace, database, part(go, unpacked, checked));
}

/// The same of the copy of a day, which is a database alone; each of its pages is looked at.
bool takeCopy(Workspace& workspace, const QString& copy, const QString& database, const ShareDone& go) {
    judged(copy, [&] { return Workspace::rowCounts(copy); });
    const auto heard = [](const ShareDone& share) {
        return [share](int percent) { return !share || share(percent / 100.0); };
    };
    const auto found = judged(copy, [&] { return workspace.check(copy, Check::Full, heard(part(go, 0, half))); });
    if (found && !found->isEmpty()) throw ZipFault(copy, QStringLiteral("Die Datenbank darin ist beschädigt"));
    return found && workspace.copy(copy, database, heard(part(go, half, 1)));
}

}  // namespace

QString Einwand(const std::vector<ZipEntry>& entries) { return against(entries, std::numeric_limits<qint64>::max()); }

std::optional<Sicherungsinhalt> Sicherung_ansehen(const QString& zip, const QString& folder, const ShareDone& go) {
    if (const QDate day = Tageskopietag(zip); day.isValid()) {
        Sicherungsinhalt found = Inhalt_zaehlen(judged(zip, [&] { return Workspace::rowCounts(zip); }));
        found.day = day;
        return found;
    }
    const Backup backup(zip, folder);
    const WorkFolder work(folder);
    const QString database = work.file(DatabaseName);
    if (!backup.unpackDatabase(database, go)) return std::nullopt;
    Sicherungsinhalt found = Inhalt_zaehlen(backup.rowsOf(database));
    found.day = backup.day();
    return found;
}

bool Sicherung_zurueckholen(Koben& koben, const QString& zip, const ShareDone& go, QString& left) {
    FileExchange exchange(koben.Datenordner);
    const QString database = exchange.file(DatabaseName);
    const bool ready = Tageskopietag(zip).isValid() ? takeCopy(koben.workspace, zip, database, part(go, 0, checked))
                                                    : takeBackup(koben, zip, exchange, database, go);
    if (!ready) return false;
    if (!keepPresent(koben, part(go, checked, kept))) return false;
    const bool settings = QFile::exists(exchange.file(QStringLiteral("Einstellungen.ko2")));
    if (const QString reason = exchange.decide(); !reason.isEmpty())
        throw DatabaseError(
            DatabaseError::Kind::Io,
            fileFailure(
                QStringLiteral("Die Datensicherung kann nicht eingelesen werden, und Ihre Daten sind unverändert"),
                reason));
    koben.workspace.closeAll();
    left = exchange.finish();
    if (settings && left.isEmpty()) SettingsGuard(koben).adopt();
    return true;
}

}  // namespace koben

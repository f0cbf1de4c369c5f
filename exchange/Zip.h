#pragma once
// ZIP files, written and read. The only unit that knows the library.
#include <QDateTime>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "store/DatabaseError.h"

namespace koben {

/// An archive that is none, or is damaged, or is refused. The message is the whole sentence for the user.
class ZipFault : public DatabaseError {
public:
    ZipFault(const QString& path, const QString& reason);
    const QString reason;  ///< a sentence without its end
};

/// Told now and then which share of the work is done, 0 to 1; false gives it up.
using ShareDone = std::function<bool(double share)>;
/// For a part of some work, as a share of the whole. `go` must outlive it.
inline ShareDone part(const ShareDone& go, double from, double to) {
    if (!go) return {};
    return [&go, from, to](double share) { return go(from + share * (to - from)); };
}

/// A file that goes into an archive, and its name there.
struct ZipSource {
    QString path;
    QString name;
};

/// Packs files into a new archive, over one that is there. False where it was given up; throws a DatabaseError where it
/// cannot be written. Then there is nothing new at `target`.
bool writeZip(const QString& target, const std::vector<ZipSource>& files, const ShareDone& go);

/// What an archive says of one of its files.
struct ZipEntry {
    QString name;
    qint64 size = -1;    ///< in bytes, unpacked; -1 where it does not say
    QDateTime modified;  ///< when the file was last written
    bool encrypted = false;
    bool folder = false;
    bool plainFile = true;  ///< no folder, and no link to somewhere else
};

/// An archive that is only read.
class ZipReader {
public:
    /// Throws a ZipFault where the file is no whole archive.
    explicit ZipReader(const QString& path);
    ~ZipReader();
    ZipReader(const ZipReader&) = delete;
    ZipReader& operator=(const ZipReader&) = delete;

    const std::vector<ZipEntry>& entries() const { return m_entries; }
    /// Unpacks one into a new file and compares its checksum; without a path it only compares. Throws a ZipFault where
    /// it is damaged or larger than it says, a DatabaseError where it cannot be written. False where it was given up.
    bool unpack(size_t entry, const QString& to, const ShareDone& go) const;

private:
    struct Archive;
    [[noreturn]] void damaged(const ZipEntry& entry) const;

    QString m_path;
    std::unique_ptr<Archive> m_archive;
    std::vector<ZipEntry> m_entries;
};

}  // namespace koben

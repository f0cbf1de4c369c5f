#include "exchange/Zip.h"

#include <zip.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cerrno>
#include <exception>

#include "store/Files.h"

namespace koben {

namespace {

constexpr int compression = 6;
constexpr double precision = 0.002;  // of the progress that the library tells
constexpr zip_uint32_t fileKinds = 0170000, plainKind = 0100000;

struct Discard {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Handle = std::unique_ptr<zip_t, Discard>;

[[noreturn]] void fail(const QString& message) { throw DatabaseError(DatabaseError::Kind::Io, message); }

[[noreturn]] void unwritable(const QString& target, const QString& reason) {
    fail(fileFailure(QStringLiteral("Die Datei %1 kann nicht geschrieben werden").arg(QDir::toNativeSeparators(target)),
                     reason));
}

/// The library's calls back while it writes. What is thrown must not go through it.
struct Writing {
    const ShareDone& go;
    bool on = true;
    std::exception_ptr thrown = nullptr;

    static void progress(zip_t*, double share, void* self) { static_cast<Writing*>(self)->tell(share); }
    static int cancel(zip_t*, void* self) { return static_cast<Writing*>(self)->on ? 0 : 1; }
    void tell(double share) {
        if (!on || !go) return;
        try {
            on = go(share);
        } catch (...) {
            thrown = std::current_exception();
            on = false;
        }
    }
};

void add(zip_t* archive, const ZipSource& file, const QString& target) {
    zip_source_t* source = zip_source_file(archive, file.path.toUtf8().constData(), 0, -1);
    const zip_int64_t at =
        source == nullptr ? -1 : zip_file_add(archive, file.name.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8);
    if (at >= 0 && zip_set_file_compression(archive, static_cast<zip_uint64_t>(at), ZIP_CM_DEFLATE, compression) == 0)
        return;
    if (source != nullptr && at < 0) zip_source_free(source);
    unwritable(target, fileReason(zip_error_code_system(zip_get_error(archive))));
}

}  // namespace

bool writeZip(const QString& target, const std::vector<ZipSource>& files, const ShareDone& go) {
    int code = 0;
    errno = 0;
    Handle archive(zip_open(target.toUtf8().constData(), ZIP_CREATE | ZIP_TRUNCATE, &code));
    if (!archive) unwritable(target, fileReason(errno));
    for (const ZipSource& file : files) add(archive.get(), file, target);
    Writing writing{go};
    zip_register_progress_callback_with_state(archive.get(), precision, &Writing::progress, nullptr, &writing);
    zip_register_cancel_callback_with_state(archive.get(), &Writing::cancel, nullptr, &writing);
    if (zip_close(archive.get()) == 0) {
        static_cast<void>(archive.release());
        return true;
    }
    if (writing.thrown) std::rethrow_exception(writing.thrown);
    if (!writing.on) return false;
    zip_error_t* const error = zip_get_error(archive.get());
    if (zip_error_code_zip(error) == ZIP_ER_READ || zip_error_code_zip(error) == ZIP_ER_OPEN)
        fail(fileFailure(QStringLiteral("Eine Datei des Datenordners kann nicht gelesen werden"),
                         QString::fromUtf8(zip_error_strerror(error))));
    unwritable(target, fileReason(zip_error_code_system(error)));
}

ZipFault::ZipFault(const QString& path, const QString& why)
    : DatabaseError(Kind::Io, QStringLiteral("Die Datensicherung %1 kann nicht eingelesen werden: %2. Ihre Daten sind "
                                             "unverändert. Bitte wählen Sie eine andere Datensicherung aus.")
                                  .arg(QFileInfo(path).fileName(), why)),
      reason(why) {}

struct ZipReader::Archive {
    Handle handle;
};

namespace {

ZipEntry described(zip_t* archive, zip_uint64_t index) {
    ZipEntry entry;
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat_index(archive, index, ZIP_FL_ENC_GUESS, &stat) != 0) return entry;
    if (stat.valid & ZIP_STAT_NAME) entry.name = QString::fromUtf8(stat.name);
    if (stat.valid & ZIP_STAT_SIZE) entry.size = static_cast<qint64>(std::min<zip_uint64_t>(stat.size, INT64_MAX));
    if (stat.valid & ZIP_STAT_MTIME) entry.modified = QDateTime::fromSecsSinceEpoch(stat.mtime);
    entry.encrypted = (stat.valid & ZIP_STAT_ENCRYPTION_METHOD) && stat.encryption_method != ZIP_EM_NONE;
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    if (zip_file_get_external_attributes(archive, index, 0, &system, &attributes) == 0 && system == ZIP_OPSYS_UNIX) {
        const zip_uint32_t kind = attributes >> 16 & fileKinds;
        entry.plainFile = kind == 0 || kind == plainKind;
    }
    entry.folder = entry.name.endsWith(u'/');
    if (entry.folder) entry.plainFile = false;
    return entry;
}

struct CloseFile {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

}  // namespace

ZipReader::ZipReader(const QString& path) : m_path(path), m_archive(std::make_unique<Archive>()) {
    int code = 0;
    m_archive->handle.reset(zip_open(path.toUtf8().constData(), ZIP_RDONLY | ZIP_CHECKCONS, &code));
    if (!m_archive->handle)
        throw ZipFault(path, code == ZIP_ER_NOENT || code == ZIP_ER_OPEN
                                 ? QStringLiteral("Die Datei lässt sich nicht öffnen")
                                 : QStringLiteral("Die Datei ist keine ZIP-Datei oder beschädigt"));
    const zip_int64_t count = zip_get_num_entries(m_archive->handle.get(), 0);
    for (zip_int64_t i = 0; i < count; ++i)
        m_entries.push_back(described(m_archive->handle.get(), static_cast<zip_uint64_t>(i)));
}

ZipReader::~ZipReader() = default;

void ZipReader::damaged(const ZipEntry& entry) const {
    throw ZipFault(m_path, QStringLiteral("Die Datei %1 darin ist beschädigt").arg(entry.name));
}

bool ZipReader::unpack(size_t index, const QString& to, const ShareDone& go) const {
    constexpr size_t atOnce = size_t{1} << 17;
    const ZipEntry& entry = m_entries[index];
    const std::unique_ptr<zip_file_t, CloseFile> packed(zip_fopen_index(m_archive->handle.get(), index, 0));
    if (!packed) damaged(entry);
    QFile out(to);
    clearFileReason();
    if (!to.isEmpty() && !out.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        unwritable(to, fileReason());
    std::vector<char> bytes(atOnce);
    for (qint64 done = 0;;) {
        const qint64 read = zip_fread(packed.get(), bytes.data(), bytes.size());
        if (read < 0) damaged(entry);  // the checksum, too
        if (read == 0 && done != entry.size) damaged(entry);
        if (read == 0) return true;
        done += read;
        if (done > entry.size)
            throw ZipFault(m_path, QStringLiteral("Die Datei %1 darin ist größer als angegeben").arg(entry.name));
        clearFileReason();
        if (!to.isEmpty() && out.write(bytes.data(), read) != read) unwritable(to, fileReason());
        if (go && !go(static_cast<double>(done) / static_cast<double>(std::max<qint64>(entry.size, 1)))) return false;
    }
}

}  // namespace koben

#pragma once
// What the fuzz targets share: demands, and a place for files.
#include <QDir>
#include <QFile>
#include <QString>
#include <cstdio>
#include <cstdlib>

namespace koben::fuzz {

/// A demand that is not met ends the process, so that any engine takes the input for a finding.
inline void require(bool met, const char* what, const QString& shown = {}) {
    if (met) return;
    std::fprintf(stderr, "fuzz: %s: %s\n", what, shown.toUtf8().constData());
    std::abort();
}

/// A folder in memory where the machine has one: the targets write by the thousand. It stays when the process dies.
inline QString place() {
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/koben-fuzz-XXXXXX");
}

inline void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "no place to write", path);
}

inline QByteArray readFile(const QString& path) {
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "not there", path);
    return file.readAll();
}

/// The input as bytes; they live as long as the input.
inline QByteArray raw(const uint8_t* data, size_t size) {
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}

}  // namespace koben::fuzz

/// One input; 0 for done, -1 for an input that is not worth keeping.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

// Backups of any content: read to their end or refused in German; nothing is unpacked but what was wanted, where it was
// wanted, and never more than was declared.
#include <QTemporaryDir>

#include "exchange/Sicherung.h"
#include "tests/fuzz/Require.h"

namespace koben::fuzz {
namespace {

void requireSentence(const DatabaseError& error) {
    const QString said = error.message();
    require(said.startsWith(QStringLiteral("Die D")) && said.endsWith(u'.'), "no sentence", said);
}

QStringList contentOf(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
}

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben;
    using namespace koben::fuzz;
    static const QTemporaryDir folder(place());
    const QString path = folder.filePath(QStringLiteral("t.zip")), out = folder.filePath(QStringLiteral("t.aus"));
    writeFile(path, raw(data, size));
    try {
        const ZipReader zip(path);
        for (size_t i = 0; i < zip.entries().size(); ++i) try {
                require(zip.unpack(i, out, {}), "given up by nobody");
                require(QFileInfo(out).size() == zip.entries()[i].size, "another size than declared");
            } catch (const DatabaseError& error) {
                requireSentence(error);
                require(QFileInfo(out).size() <= std::max<qint64>(zip.entries()[i].size, 0), "more than declared");
            }
    } catch (const DatabaseError& error) {
        requireSentence(error);
    }
    QFile::remove(out);
    try {
        const auto found = Sicherung_ansehen(path, folder.path() + u'/', {});
        require(found && found->animals >= 0 && found->bookings >= 0, "no numbers");
    } catch (const DatabaseError& error) {
        requireSentence(error);
    }
    require(contentOf(folder.path()) == QStringList{QStringLiteral("t.zip")}, "something stays",
            contentOf(folder.path()).join(u' '));
    return 0;
}

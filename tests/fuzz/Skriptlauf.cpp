// Scripts as runs of the whole program: a script is carried out as far as it goes or refused with line and reason; it
// never takes the program down, and the run leaves a sound database.
#include <unistd.h>

#include <QBuffer>
#include <QTemporaryDir>
#include <algorithm>

#include "app/Katalog.h"
#include "store/Database.h"
#include "tests/fuzz/Require.h"
#include "tools/skript/Interpreter.h"

namespace koben::fuzz {
namespace {

constexpr int Zeilen = 80;

/// The script up to so many lines, and up to the first that may name a file outside of its own folder.
QString harmless(const QByteArray& bytes) {
    const QStringList lines = QString::fromUtf8(bytes).split(u'\n').mid(0, Zeilen);
    const auto reachesOut = [](const QString& line) {
        const bool free = line.trimmed().startsWith(QStringLiteral("sql ")) || line.startsWith(u'#');
        return !free && (line.contains(u'/') || line.contains(QStringLiteral("..")));
    };
    return lines.mid(0, std::find_if(lines.begin(), lines.end(), reachesOut) - lines.begin()).join(u'\n');
}

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben;
    using namespace koben::fuzz;
    static const QTemporaryDir folder(place());
    const QString text = harmless(raw(data, size));
    if (text.isEmpty() || chdir(qPrintable(folder.path())) != 0) return -1;
    const QString data_ = folder.filePath(QStringLiteral("Daten"));
    QDir(data_).removeRecursively();
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    {
        skript::Transcript transcript(out);
        skript::Interpreter run(katalog(), QStringLiteral("ordner %1/\n").arg(data_) + text, transcript);
        const skript::Result result = run.run();
        require(result.status >= 0 && result.status <= 2, "a status");
        require(result.status == 0 || (!result.reason.isEmpty() && result.line >= 1), "no reason", text);
        require(result.status != 2 || (result.reason.front().isUpper() && result.reason.contains(u' ')), "no sentence",
                result.reason + u'\n' + text);
    }
    const QString database = data_ + QStringLiteral("/koben2.mdb");
    if (!QFile::exists(database)) return 0;
    Workspace workspace;
    const Database db = workspace.open(database);
    require(!db.tables().isEmpty(), "no tables", text);
    return 0;
}

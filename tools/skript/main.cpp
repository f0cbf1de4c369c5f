// koben-skript: works the program's forms without a window (docs/skript.md).
#include <QCoreApplication>
#include <QFile>
#include <QStringDecoder>
#include <clocale>
#include <cstdio>

#include "app/Katalog.h"
#include "store/System.h"
#include "tools/skript/Interpreter.h"

namespace {

using namespace koben;
using namespace koben::skript;

int complain(const QString& text) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    return 1;
}

/// The whole script; nothing where it cannot be read or is not UTF-8.
std::optional<QString> readScript(const QString& path) {
    QFile file(path);
    if (!(path == u"-" ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly))) return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(file.readAll());
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

void printTime(const Command& command, qint64 milliseconds) {
    std::fprintf(stderr, "%d %lld %s\n", command.line, static_cast<long long>(milliseconds),
                 qUtf8Printable(command.text));
}

int runScript(const QString& path, bool withTimes) {
    const auto script = readScript(path);
    if (!script) return complain(QStringLiteral("%1: nicht lesbar oder nicht UTF-8").arg(path));
    QFile out;
    if (!out.open(stdout, QIODevice::WriteOnly)) return complain(QStringLiteral("keine Ausgabe"));
    Transcript transcript(out);
    Interpreter interpreter(katalog(), *script, transcript, withTimes ? printTime : nullptr);
    const Result result = interpreter.run();
    if (result.status != 0) complain(QStringLiteral("%1:%2: %3").arg(path).arg(result.line).arg(result.reason));
    return result.status;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    system::plainStreams();
    std::setlocale(LC_NUMERIC, "C");
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool withTimes = arguments.removeAll(QStringLiteral("--zeiten")) > 0;
    if (arguments.size() != 1) return complain(QStringLiteral("koben-skript [--zeiten] SKRIPT"));
    return runScript(arguments.first(), withTimes);
}

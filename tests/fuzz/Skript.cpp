// Scripts as text: any text is cut into commands, and their lines alone give the same commands.
#include "tests/fuzz/Require.h"
#include "tools/skript/Addressing.h"
#include "tools/skript/PrintedJob.h"
#include "tools/skript/Transcript.h"

namespace koben::fuzz {
namespace {

/// Done, or refused with a reason.
template <class Work>
void attempt(const skript::Command& command, Work work) {
    try {
        work();
    } catch (const skript::Failure& failure) {
        require(!failure.reason.isEmpty(), "no reason", command.text);
    }
}

void splitCommands(const skript::Command& command) {
    require(!command.word.isEmpty() && command.line >= 1 && command.text.startsWith(command.word), "a word",
            command.text);
    for (int count = 0; count <= 3; ++count)
        for (int wide = -1; wide < count; ++wide)
            attempt(command, [&] { require(command.words(count, wide).size() == count, "words", command.text); });
    attempt(command, [&] {
        const skript::Address address = skript::parseAddress(command.arguments);
        require(address.index >= -1 && command.arguments.startsWith(address.name), "an address", command.arguments);
    });
    attempt(command, [&] {
        const skript::Assignment assignment = command.assignment();
        const QString shown = QString(assignment.value)
                                  .replace(u'\\', QStringLiteral("\\\\"))
                                  .replace(QStringLiteral("\r\n"), QStringLiteral("\\n"))
                                  .replace(u'\t', QStringLiteral("\\t"));
        require(skript::unescaped(shown) == assignment.value, "a value written and read", assignment.value);
        require(!skript::linesOf(assignment.value).isEmpty(), "lines", assignment.value);
    });
}

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben;
    using namespace koben::fuzz;
    skript::Script script(QString::fromUtf8(raw(data, size)));
    std::vector<skript::Command> commands;
    QString lines;
    while (const auto command = script.next()) {
        splitCommands(*command);
        require(commands.empty() || commands.back().line < command->line, "lines out of order", command->text);
        lines += command->text + u'\n';
        commands.push_back(*command);
    }
    skript::Script alone(lines);
    for (const skript::Command& command : commands) {
        const auto same = alone.next();
        require(
            same && command.text == same->text && command.word == same->word && command.arguments == same->arguments,
            "a command lost or another", command.text);
    }
    require(!alone.next(), "a command more", lines);
    return 0;
}

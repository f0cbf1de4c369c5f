// Replays a corpus and seeded mutations of it on a fuzz target:  fuzz_NAME FOLDER|FILE [VARIANTS [FOLDER OF SCRIPTS]]
// The work is done in a child process. Where that dies or hangs, the input is made again from its number, written to a
// file and told, and the next child goes on behind it. KOBEN_ROBUST_RUNS multiplies the variants.
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFileInfo>
#include <QSet>

#include "tests/fuzz/Require.h"
#include "tests/robust/Mutation.h"

namespace koben::fuzz {
namespace {

constexpr unsigned Patience = 60;   // seconds until an input counts as hanging
constexpr qsizetype Length = 4096;  // of a mutated input, bytes
constexpr int EnoughFindings = 5;

struct Seed {
    QString name;
    QByteArray bytes;
};

/// The words of a dictionary in libFuzzer's form: "text" a line, with \xNN, \\ and \".
QByteArrayList dictionary(const QString& path) {
    QByteArrayList words;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return words;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const qsizetype from = line.indexOf('"'), to = line.lastIndexOf('"');
        if (line.startsWith('#') || to <= from) continue;
        QByteArray word;
        for (qsizetype i = from + 1; i < to; ++i) {
            const bool escape = line[i] == '\\' && i + 1 < to;
            if (escape && line[i + 1] == 'x')
                word += static_cast<char>(line.mid(i + 2, 2).toInt(nullptr, 16)), i += 3;
            else
                word += line[escape ? ++i : i];
        }
        words += word;
    }
    return words;
}

class Replay {
public:
    Replay(const QString& path, int variants, const QString& scripts) : m_variants(variants) {
        const QFileInfo info(path);
        if (info.isFile()) m_seeds.push_back({info.fileName(), readFile(path)});
        addSeeds(QDir(path).entryInfoList(QDir::Files, QDir::Name));
        if (!scripts.isEmpty())
            addSeeds(QDir(scripts).entryInfoList({QStringLiteral("*.skript")}, QDir::Files, QDir::Name));
        m_words = dictionary(path + QStringLiteral(".dict"));
        addWordsOfSeeds();
        m_at = static_cast<int*>(mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    }

    int run(const char* target) {
        require(!m_seeds.empty(), "no corpus");
        int findings = 0;
        for (*m_at = 0; *m_at < total() && findings < EnoughFindings; ++*m_at) {
            fflush(nullptr);
            const pid_t child = fork();
            if (child == 0) work();
            int status = 0;
            waitpid(child, &status, 0);
            if (WIFEXITED(status) && WEXITSTATUS(status) == 0) break;
            ++findings;
            tell(target, WIFSIGNALED(status) ? WTERMSIG(status) : 0);
        }
        std::printf("%s: %d files, %d inputs, %d findings\n", target, static_cast<int>(m_seeds.size()),
                    std::min(*m_at, total()), findings);
        return findings == 0 ? 0 : 1;
    }

private:
    void addSeeds(const QFileInfoList& files) {
        for (const QFileInfo& file : files) m_seeds.push_back({file.fileName(), readFile(file.filePath())});
    }
    /// What stands between blanks, lines and brackets: the dictionary holds what does not.
    void addWordsOfSeeds() {
        constexpr qsizetype longest = 40;
        QSet<QByteArray> known(m_words.begin(), m_words.end());
        const auto add = [&](const QByteArray& word) {
            if (word.isEmpty() || word.size() > longest || known.contains(word)) return;
            known.insert(word);
            m_words += word;
        };
        for (const Seed& seed : m_seeds)
            for (const QByteArray& line : seed.bytes.split('\n'))
                for (QByteArray word : line.simplified().split(' ')) {
                    add(word);
                    for (const char bracket : "(),") word.replace(bracket, ' ');
                    for (const QByteArray& part : word.split(' ')) add(part);
                }
    }
    int total() const { return static_cast<int>(m_seeds.size()) + m_variants; }
    const Seed& seed(int number) const { return m_seeds[static_cast<size_t>(number) % m_seeds.size()]; }

    QByteArray input(int number) const {
        if (number < static_cast<int>(m_seeds.size())) return seed(number).bytes;
        robust::Mutation mutation(static_cast<unsigned>(number));
        const QByteArray& other = seed(static_cast<int>(mutation.below(total()))).bytes;
        return mutation.of(seed(number).bytes, m_words, other).left(Length);
    }

    [[noreturn]] void work() {
        for (; *m_at < total(); ++*m_at) {
            alarm(Patience);
            const QByteArray bytes = input(*m_at);
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.constData()),
                                   static_cast<size_t>(bytes.size()));
        }
        std::exit(0);
    }

    void tell(const char* target, int signal) const {
        const QString path = QDir::temp().filePath(QStringLiteral("%1-%2").arg(QString::fromUtf8(target)).arg(*m_at));
        writeFile(path, input(*m_at));
        std::fprintf(stderr, "%s: %s, variant %d: %s %d; the input is in %s\n", target, qPrintable(seed(*m_at).name),
                     *m_at, signal == SIGALRM ? "hangs" : "signal", signal, qPrintable(path));
    }

    std::vector<Seed> m_seeds;
    QByteArrayList m_words;
    int m_variants;
    int* m_at;  ///< number of the input at work, seen by both processes
};

}  // namespace
}  // namespace koben::fuzz

int main(int argc, char** argv) {
    using namespace koben::fuzz;
    require(argc > 1, "usage: fuzz_NAME FOLDER|FILE [VARIANTS [FOLDER OF SCRIPTS]]");
    const int runs = std::max(qEnvironmentVariableIntValue("KOBEN_ROBUST_RUNS"), 1);
    const int variants = argc > 2 ? QByteArray(argv[2]).toInt() * runs : 0;
    return Replay(QString::fromLocal8Bit(argv[1]), variants, QString::fromLocal8Bit(argc > 3 ? argv[3] : ""))
        .run(qPrintable(QFileInfo(QString::fromLocal8Bit(argv[0])).fileName()));
}

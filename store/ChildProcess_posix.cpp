#include "store/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <csignal>
#include <vector>

extern char** environ;

namespace koben {

ChildProcess::ChildProcess(const QString& program, const QStringList& arguments) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) return;
    m_output = ends[0];
    QByteArrayList texts{QFile::encodeName(program)};
    for (const QString& argument : arguments) texts += argument.toUtf8();
    std::vector<char*> words;
    for (QByteArray& text : texts) words.push_back(text.data());
    words.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&files, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t usual;
    sigemptyset(&usual);
    sigaddset(&usual, SIGPIPE);
    sigaddset(&usual, SIGCHLD);
    posix_spawnattr_setsigdefault(&attributes, &usual);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    pid_t process = 0;
    if (::posix_spawn(&process, words[0], &files, &attributes, words.data(), environ) == 0) m_process = process;
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    ::close(ends[1]);
}

ChildProcess::~ChildProcess() {
    if (m_output >= 0) ::close(m_output);
    end();
}

ChildProcess::Read ChildProcess::read(char* buffer, qsizetype most, int patience, qsizetype& count) {
    count = 0;
    pollfd waiting{m_output, POLLIN, 0};
    int ready = 0;
    while ((ready = ::poll(&waiting, 1, patience)) < 0 && errno == EINTR) {
    }
    if (ready == 0) return Read::Timeout;
    ssize_t got = 0;
    while ((got = ::read(m_output, buffer, static_cast<size_t>(most))) < 0 && errno == EINTR) {
    }
    if (got <= 0) return Read::End;
    count = got;
    return Read::Bytes;
}

bool ChildProcess::endedWell() {
    constexpr int steps = 200;
    constexpr useconds_t step = 10'000;
    for (int i = 0; i < steps && m_process > 0; ++i) {
        const pid_t ended = ::waitpid(m_process, &m_status, WNOHANG);
        if (ended < 0) m_status = 0;  // who started us ignores ended children: what it said has to do
        if (ended != 0)
            m_process = 0;
        else
            ::usleep(step);
    }
    end();  // it has nothing more to say, and goes on all the same
    return WIFEXITED(m_status) && WEXITSTATUS(m_status) == 0;
}

void ChildProcess::end() {
    if (m_process <= 0) return;
    ::kill(m_process, SIGKILL);
    while (::waitpid(m_process, &m_status, 0) < 0 && errno == EINTR) {
    }
    m_process = 0;
}

}  // namespace koben

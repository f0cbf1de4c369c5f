#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "tests/robust/Schuss.h"

namespace koben::robust {

End shoot(const Task& task, const DataFolder& folder, const Shot& shot) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        alive();
        performAndTell(
            task, folder, shot, [&](char what) { EXPECT_EQ(write(ends[1], &what, 1), 1); }, [] { raise(SIGKILL); });
        fflush(stdout);
        _exit(testing::Test::HasFailure() ? 3 : 0);
    }
    close(ends[1]);
    End end;
    QByteArray said;
    bool fired = shot.statement > 0;
    for (char c = 0; read(ends[0], &c, 1) == 1;) {
        said.append(c);
        if (fired || c != (shot.fromCommit ? 'c' : 'a')) continue;
        fired = true;
        usleep(static_cast<useconds_t>(shot.microseconds));
        kill(child, SIGKILL);
    }
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    end.wasShot = WIFSIGNALED(status);
    if (end.wasShot)
        EXPECT_EQ(WTERMSIG(status), SIGKILL) << task.name;
    else
        EXPECT_EQ(WEXITSTATUS(status), 0) << task.name;
    end.confirmed = said.contains('b') || said.contains('f');
    return end;
}

}  // namespace koben::robust

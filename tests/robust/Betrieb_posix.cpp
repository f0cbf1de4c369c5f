#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "tests/robust/Betrieb.h"

namespace koben::robust {

static constexpr unsigned Patience = 120;  // seconds until a child counts as hanging

/// Of the running test so far; a child inherits those of its parent.
static int failedParts() {
    const testing::TestResult& result = *testing::UnitTest::GetInstance()->current_test_info()->result();
    int count = 0;
    for (int i = 0; i < result.total_part_count(); ++i) count += result.GetTestPartResult(i).failed();
    return count;
}

bool shielded(const std::string& what, const std::function<void()>& work) {
    fflush(stdout);
    const int failures = failedParts();
    const pid_t child = fork();
    if (child == 0) {
        alarm(Patience);
        try {
            work();
        } catch (const std::exception& error) {
            ADD_FAILURE() << what << ": " << error.what();
        }
        fflush(stdout);
        _exit(failedParts() > failures ? 3 : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFSIGNALED(status))
        ADD_FAILURE() << what << (WTERMSIG(status) == SIGALRM ? " hangs" : " crashes with signal ") << WTERMSIG(status);
    else
        EXPECT_EQ(WEXITSTATUS(status), 0) << what;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

void alive() { alarm(Patience); }

}  // namespace koben::robust

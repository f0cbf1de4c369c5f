#include "tests/robust/Betrieb.h"

namespace koben::robust {

/// In this process: a crash ends the whole test, a hang is its caller's to see.
bool shielded(const std::string& what, const std::function<void()>& work) {
    const bool failed = testing::Test::HasFailure();
    try {
        work();
    } catch (const std::exception& error) {
        ADD_FAILURE() << what << ": " << error.what();
    }
    return failed || !testing::Test::HasFailure();
}

void alive() {}

}  // namespace koben::robust

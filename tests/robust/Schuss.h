#pragma once
// An action in a process of its own, which is killed: a child of this one where the system knows fork, otherwise this
// program started anew.
#include "tests/robust/Aktionen.h"

namespace koben::robust {

/// When the process dies.
struct Shot {
    int statement = 0;        ///< before its n-th writing statement; 0 for a moment in time
    bool fromCommit = false;  ///< the time counts from the commit on, otherwise from the beginning of the action
    int microseconds = 0;
    bool toMainForm = false;  ///< it may also die when the action is done and its frame closes
};

/// What the child said before it ended.
struct End {
    bool wasShot = false;
    bool confirmed = false;  ///< the user had seen or heard that the action is done
};

End shoot(const Task& task, const DataFolder& folder, const Shot& shot);

/// In the child: plays the action, and tells how far it is: a(ction begins), c(ommit), b(estätigt), f(ertig). Calls
/// `die` where the shot is to fall at a statement.
void performAndTell(const Task& task, const DataFolder& folder, const Shot& shot, const std::function<void(char)>& say,
                    const std::function<void()>& die);

}  // namespace koben::robust

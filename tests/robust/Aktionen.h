#pragma once
// The writing actions of the program, each worked through its own forms.
#include "tests/robust/Betrieb.h"

namespace koben::robust {

struct Task {
    const char* name;
    const DataFolder& (*farm)();        ///< what it begins with; null for a machine without a data folder
    std::function<void(Session&)> run;  ///< the run up to the action, and the action
    const char* confirmed = "";         ///< how the line begins with which the program confirms it, "" for none
    const char* prepare = "";           ///< statements, parted by ";", that are run on the database beforehand
    bool changes = true;                ///< somebody sees a difference afterwards
    bool writesDatabase = true;         ///< through statements; otherwise only files
    bool derives = false;               ///< a booking from which the closing frame derives values
};

const std::vector<Task>& tasks();
const Task& taskNamed(const std::string& name);

/// How the lines begin with which the program confirms a save, and hands a list over.
inline const char* const ToneLine = "~";
inline const char* const ListLine = "+ PA_Zwischenliste";

/// What becomes of piglets that a loss or a sale takes, as optiverkauf has it.
inline constexpr int Delete = 1, Leave = 2;

/// Rows 1 to `count` of a list.
std::vector<int> rows(int count);

/// The folder with which the action begins.
std::unique_ptr<DataFolder> prepared(const Task& task);
/// Plays the action to its end, which is where the program would go on.
void perform(const Task& task, Session& run);
/// Plays an action that may fail. What the user reads that is no confirmation; "" where all went well.
QString complaints(const Task& task, Session& run);
/// Plays the action in a process of its own, disturbed by `on` from the user's click on, and returns what she reads.
/// Where she reads anything it must be a message. `over` comes when the action is over, and with null when the run is.
QString disturbed(const std::string& what, const Task& task, const DataFolder& folder,
                  const std::function<void(Session&)>& on, const std::function<void(Session*)>& over = {});
/// From now on `goOn` is asked wherever the user may cancel: at each report of progress, and at the form's button.
void atEachReport(Session& run, const std::function<bool()>& goOn);

/// The action once without disturbance: what is there before and after it, and how much it does.
struct Comparison {
    State before, after;
    int statements = 0;  ///< writing statements, commits included
    int reports = 0;     ///< moments at which the user may cancel
    int microseconds = 0;
};
Comparison undisturbed(const Task& task, bool toMainForm = false);
/// Each file is that of before or of after, and so is the database; with `done` all is as after.
void expectRest(const State& left, const Comparison& whole, bool done);

inline void PrintTo(const Task& task, std::ostream* out) { *out << task.name; }
inline std::string nameOf(const testing::TestParamInfo<Task>& info) { return info.param.name; }

}  // namespace koben::robust

// The process is killed in the middle of each writing action; the next start finds all of it or nothing.
#include <algorithm>
#include <cstring>
#include <random>

#include "tests/robust/Schuss.h"

namespace koben::robust {
namespace {

void check(const DataFolder& folder, const Comparison& whole, const End& end) {
    expectRest(stateOf(folder), whole, !end.wasShot || end.confirmed);
    if (QFile::exists(folder.database())) {
        EXPECT_EQ(integrity(folder.database()), "ok");
    }
    nextStart(folder);
    EXPECT_EQ(integrity(folder.database()), "ok");
}

/// Moments of death: a third each at a statement, around the commit, and at any moment.
class Shooter {
public:
    Shot next(int number, const Comparison& whole) {
        if (whole.statements > 0 && number % 3 == 0) return {.statement = 1 + pick(whole.statements)};
        if (whole.statements > 0 && number % 3 == 1) return {.fromCommit = true, .microseconds = pick(3000)};
        return {.microseconds = pick(2 * whole.microseconds)};
    }

private:
    std::mt19937 m_random{20260715};
    int pick(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(std::max(below, 1))); }
};

std::string described(int number, const Shot& shot, const Comparison& whole) {
    return "shot " + std::to_string(number) + ": statement " + std::to_string(shot.statement) + " of " +
           std::to_string(whole.statements) + ", " + std::to_string(shot.microseconds) + " us of " +
           std::to_string(whole.microseconds) + (shot.fromCommit ? " from the commit on" : "");
}

class AbschussTest : public testing::TestWithParam<Task> {};

TEST_P(AbschussTest, allesOderNichts) {
    const Task& task = GetParam();
    const Comparison whole = undisturbed(task);
    ASSERT_EQ(whole.before != whole.after, task.changes);
    Shooter shooter;
    int killed = 0, confirmed = 0;
    const int first = static_cast<int>(strlen(task.name));  // a short run has all kinds of shots, over all actions
    for (int number = first; number < first + runs(2) && !HasFailure(); ++number) {
        const Shot shot = shooter.next(number, whole);
        SCOPED_TRACE(described(number, shot, whole));
        const auto folder = prepared(task);
        const End end = shoot(task, *folder, shot);
        check(*folder, whole, end);
        killed += end.wasShot;
        confirmed += end.confirmed;
    }
    if (longRun()) {
        EXPECT_GT(killed, 0);
    }
    RecordProperty("abgeschossen", killed);
    RecordProperty("bestaetigt", confirmed);
    if (longRun()) printf("%s: %d killed, %d of them or of the rest confirmed\n", task.name, killed, confirmed);
}

INSTANTIATE_TEST_SUITE_P(Aktionen, AbschussTest, testing::ValuesIn(tasks()), nameOf);

std::vector<Task> cycleBookings() {
    std::vector<Task> chosen;
    std::copy_if(tasks().begin(), tasks().end(), std::back_inserter(chosen),
                 [](const Task& task) { return task.derives; });
    return chosen;
}

class AbleitungTest : public testing::TestWithParam<Task> {};

/// A booking is saved and the process dies before its frame has closed: the next start, itself killed now and then,
/// leaves the derived values that closing the frame would have left.
TEST_P(AbleitungTest, naechsterStartHoltNach) {
    const Task& task = GetParam();
    const Comparison whole = undisturbed(task, true);
    ASSERT_NE(whole.before.data, whole.after.data);
    Shooter shooter;
    int between = 0;
    for (int number = 0; number < runs(3) && !HasFailure(); ++number) {
        Shot shot = shooter.next(number, whole);
        shot.toMainForm = true;
        SCOPED_TRACE(described(number, shot, whole));
        const auto folder = prepared(task);
        const End end = shoot(task, *folder, shot);
        const QString found = stateOf(*folder).data;
        between += found != whole.before.data && found != whole.after.data;
        if (number % 2 == 1) shoot(taskNamed("ersterStart"), *folder, {.statement = 1 + number / 2});
        nextStart(*folder);
        const QString left = stateOf(*folder).data;
        EXPECT_TRUE(left == whole.after.data || (left == whole.before.data && !end.confirmed))
            << "before the start:\n"
            << found.toStdString() << "after it:\n"
            << left.toStdString();
    }
    RecordProperty("dazwischen", between);
    if (longRun()) printf("%s: %d killed between save and derivation\n", task.name, between);
}

INSTANTIATE_TEST_SUITE_P(Aktionen, AbleitungTest, testing::ValuesIn(cycleBookings()), nameOf);

}  // namespace
}  // namespace koben::robust

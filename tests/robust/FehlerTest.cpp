// Each writing statement of each action fails once, and the user cancels wherever she can: nothing of the action stays,
// or all of it, and it succeeds afterwards.
#include <random>

#include "tests/robust/Aktionen.h"

namespace koben::robust {
namespace {

/// Moments tried in a short run: the first and last ones, where an action changes its kind of work, and some between.
/// A long run tries all.
bool chosenMoment(int nth, int count, std::mt19937& random) {
    constexpr int Edge = 2;
    return longRun() || nth <= Edge || nth > count - Edge || random() % static_cast<unsigned>(count / Edge) == 0;
}

class FehlerTest : public testing::TestWithParam<Task> {};

QStringList typedIn(const Form& form) {
    QStringList texts;
    for (Control* control : form.controls())
        if (const auto* box = dynamic_cast<TextBox*>(control)) texts += box->text();
    return texts;
}

/// The user reads why, her entries stand, and the same click works once the cause is gone. Only a start ends with it.
TEST_P(FehlerTest, nichtsBleibtUndDerselbeKlickGehtDanach) {
    const Task& task = GetParam();
    if (!task.writesDatabase) return;
    const Comparison whole = undisturbed(task);
    std::mt19937 random(20260715);
    int failures = 0;
    for (int nth = 1; nth <= whole.statements && !HasFailure(); ++nth) {
        if (!chosenMoment(nth, whole.statements, random)) continue;
        const auto folder = prepared(task);
        QString failed;
        bool again = false;
        {
            Session run(*folder);
            QStringList typed;
            std::deque<bool> answers;
            std::deque<QString> inputs;
            run.begins = [&] {
                answers = run.screens.answers, inputs = run.screens.inputs;
                if (run.koben.front()) typed = typedIn(*run.koben.front());
                Workspace::setFaultHook([&, count = 0](const QString& text) mutable {
                    if (++count != nth) return;
                    failed = text;
                    throw DatabaseError(DatabaseError::Kind::Io, "Die Platte ist weg.");
                });
            };
            run.repeat = [&] {
                Workspace::setFaultHook({});
                EXPECT_EQ(typedIn(*run.koben.front()), typed) << failed.toStdString();
                EXPECT_EQ(contentOf(run.koben.connect()), whole.before.data) << failed.toStdString();
                EXPECT_LE(run.screens.waiting, 0) << "the wait cursor stays";
                run.screens.answers = answers, run.screens.inputs = inputs;
                return again = true;
            };
            const QString said = complaints(task, run);
            EXPECT_TRUE(said.contains(u"Die Platte ist weg.")) << "swallowed: " << failed.toStdString();
            if (again) expectMessage(said.mid(said.indexOf(u"Die Aktion")));
        }
        const QString left = stateOf(*folder).data;
        const bool made = !task.farm && left == whole.after.data;  // a new database is there before it is opened
        EXPECT_TRUE(made || left == (again ? whole.after : whole.before).data)
            << "statement " << nth << ": " << failed.toStdString();
        ++failures;
    }
    EXPECT_GT(failures, 0);
    RecordProperty("fehler", failures);
    if (longRun()) printf("%s: %d failing statements\n", task.name, failures);
}

INSTANTIATE_TEST_SUITE_P(Aktionen, FehlerTest, testing::ValuesIn(tasks()), nameOf);

/// So many animals that reading the list and tidying the file take reports.
const DataFolder& largeFarm() {
    static const DataFolder folder;
    if (QFile::exists(folder.database())) return folder;
    folder.copyFrom(sampleFarm());
    folder.edit([](Database& db) {
        db.execute(
            QStringLiteral("insert into Sauen (Art, Nummer, Selektiert) select 'Sau', a.Nummer & '/' & b.ID & '/' "
                           "& c.ID, '' from Sauen a, Sauen b, Belegung c where c.ID < 4"));
    });
    Session(folder).start([](PA_Koben& main) { main.closeBox(); });
    return folder;
}

class AbbruchTest : public testing::TestWithParam<Task> {};

/// Where nothing was done the user does it again at once, on the same form.
TEST_P(AbbruchTest, allesOderNichtsUndDanachGehtEs) {
    const Task& task = GetParam();
    const Comparison whole = undisturbed(task);
    EXPECT_TRUE(whole.reports > 0 || task.farm != largeFarm) << "no report";
    std::mt19937 random(20260715);
    int undone = 0, done = 0;
    for (int nth = 1; nth <= whole.reports && !HasFailure(); ++nth) {
        if (!chosenMoment(nth, whole.reports, random)) continue;
        SCOPED_TRACE(testing::Message() << "cancelled at " << nth << " of " << whole.reports);
        const auto folder = prepared(task);
        {
            Session run(*folder);
            std::deque<bool> answers;
            std::deque<QString> inputs;
            run.begins = [&] {
                answers = run.screens.answers, inputs = run.screens.inputs;
                atEachReport(run, [nth, count = 0]() mutable { return ++count != nth; });
            };
            run.repeat = [&] {
                EXPECT_LE(run.screens.waiting, 0) << "the wait cursor stays";
                const State left{contentOf(run.koben.connect()), files(*folder)};
                expectRest(left, whole, false);
                const bool again = !run.koben.ended && left == whole.before;
                again ? ++undone : ++done;
                run.screens.answers = answers, run.screens.inputs = inputs;
                return again;
            };
            perform(task, run);
        }
        const State left = stateOf(*folder);
        expectRest(left, whole, true);
        EXPECT_EQ(left.files.size(), whole.after.files.size()) << "a draft stays";
        EXPECT_EQ(integrity(folder->database()), "ok");
    }
    if (longRun() && undone + done > 0) printf("%s: %d cancelled, %d done before\n", task.name, undone, done);
}

INSTANTIATE_TEST_SUITE_P(Aktionen, AbbruchTest, testing::ValuesIn(tasks()), nameOf);

std::vector<Task> onLargeFarm() {
    std::vector<Task> table;
    for (const char* name : {"statusBeimStart", "markierteSelektieren", "komprimieren"}) {
        table.push_back(taskNamed(name));
        table.back().farm = largeFarm;
    }
    return table;
}

INSTANTIATE_TEST_SUITE_P(ImGrossen, AbbruchTest, testing::ValuesIn(onLargeFarm()), nameOf);

}  // namespace
}  // namespace koben::robust

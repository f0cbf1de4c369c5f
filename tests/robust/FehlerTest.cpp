// Each writing statement of each action fails once: nothing of the action stays, and it succeeds afterwards.
#include <random>

#include "tests/robust/Aktionen.h"

namespace koben::robust {
namespace {

/// Statements tried in a short run: the first and last ones, where an action changes its kind of work, and some
/// between. A long run tries all.
bool gewaehlt(int nth, int count, std::mt19937& random) {
    constexpr int Rand = 2;
    return longRun() || nth <= Rand || nth > count - Rand || random() % static_cast<unsigned>(count / Rand) == 0;
}

/// The actions that write by statements.
std::vector<Aktion> schreibende() {
    std::vector<Aktion> chosen;
    for (const Aktion& aktion : aktionen())
        if (aktion.schreibtDatenbank) chosen.push_back(aktion);
    return chosen;
}

class FehlerTest : public testing::TestWithParam<Aktion> {};

TEST_P(FehlerTest, nichtsBleibtUndDanachGehtEs) {
    const Aktion& aktion = GetParam();
    const Vergleich whole = ungestoert(aktion);
    auto folder = angerichtet(aktion);
    std::mt19937 random(20260715);
    int failures = 0;
    for (int nth = 1; nth <= whole.anweisungen && !HasFailure(); ++nth) {
        if (!gewaehlt(nth, whole.anweisungen, random)) continue;
        if (!aktion.hof) folder = angerichtet(aktion);
        QString failed;
        {
            Sitzung run(*folder);
            run.beginnt = [&] {
                Workspace::setFaultHook([&, count = 0](const QString& text) mutable {
                    if (++count != nth) return;
                    failed = text;
                    throw DatabaseError(DatabaseError::Kind::Io, QStringLiteral("Die Platte ist weg."));
                });
            };
            bool said = false;
            try {
                aktion.lauf(run);
            } catch (const DatabaseError&) {
                said = true;
            } catch (const HierHalt&) {
            }
            said = said || run.screens.log.join(u'\n').contains(QStringLiteral("Die Platte ist weg."));
            EXPECT_TRUE(said) << "swallowed: " << failed.toStdString();
            EXPECT_LE(run.screens.waiting, 0) << "the wait cursor stays";
            if (QFile::exists(folder->database())) {
                const Database same = run.koben.workspace.open(folder->database());
                EXPECT_EQ(same.table(QStringLiteral("select count(*) from Sauen")).rowCount(), 1);
            }
        }
        const QString left = stand(*folder).daten;
        const bool made = !aktion.hof && left == whole.nachher.daten;  // a new database is there before it is opened
        EXPECT_TRUE(made || left == whole.vorher.daten) << "statement " << nth << ": " << failed.toStdString();
        ++failures;
    }
    {
        Sitzung run(*folder);
        spielen(aktion, run);
    }
    EXPECT_EQ(stand(*folder).daten, whole.nachher.daten);
    EXPECT_GT(failures, 0);
    RecordProperty("fehler", failures);
    if (longRun()) printf("%s: %d failing statements\n", aktion.name, failures);
}

INSTANTIATE_TEST_SUITE_P(Aktionen, FehlerTest, testing::ValuesIn(schreibende()), nameOf);

}  // namespace
}  // namespace koben::robust

// Each writing statement of each action fails once, and the user cancels wherever she can: nothing of the action stays,
// or all of it, and it succeeds afterwards.
#include <random>

#include "tests/robust/Aktionen.h"

namespace koben::robust {
namespace {

/// Moments tried in a short run: the first and last ones, where an action changes its kind of work, and some between.
/// A long run tries all.
bool gewaehlt(int nth, int count, std::mt19937& random) {
    constexpr int Rand = 2;
    return longRun() || nth <= Rand || nth > count - Rand || random() % static_cast<unsigned>(count / Rand) == 0;
}

class FehlerTest : public testing::TestWithParam<Aktion> {};

QStringList typedIn(const Form& form) {
    QStringList texts;
    for (Control* control : form.controls())
        if (const auto* box = dynamic_cast<TextBox*>(control)) texts += box->text();
    return texts;
}

/// The user reads why, her entries stand, and the same click works once the cause is gone. Only a start ends with it.
TEST_P(FehlerTest, nichtsBleibtUndDerselbeKlickGehtDanach) {
    const Aktion& aktion = GetParam();
    if (!aktion.schreibtDatenbank) return;
    const Vergleich whole = ungestoert(aktion);
    std::mt19937 random(20260715);
    int failures = 0;
    for (int nth = 1; nth <= whole.anweisungen && !HasFailure(); ++nth) {
        if (!gewaehlt(nth, whole.anweisungen, random)) continue;
        const auto folder = angerichtet(aktion);
        QString failed;
        bool again = false;
        {
            Sitzung run(*folder);
            QStringList typed;
            std::deque<bool> answers;
            std::deque<QString> inputs;
            run.beginnt = [&] {
                answers = run.screens.answers, inputs = run.screens.inputs;
                if (run.koben.front()) typed = typedIn(*run.koben.front());
                Workspace::setFaultHook([&, count = 0](const QString& text) mutable {
                    if (++count != nth) return;
                    failed = text;
                    throw DatabaseError(DatabaseError::Kind::Io, QStringLiteral("Die Platte ist weg."));
                });
            };
            run.nochmal = [&] {
                Workspace::setFaultHook({});
                EXPECT_EQ(typedIn(*run.koben.front()), typed) << failed.toStdString();
                EXPECT_EQ(inhalt(run.koben.connect()), whole.vorher.daten) << failed.toStdString();
                EXPECT_LE(run.screens.waiting, 0) << "the wait cursor stays";
                run.screens.answers = answers, run.screens.inputs = inputs;
                return again = true;
            };
            const QString said = klagen(aktion, run);
            EXPECT_TRUE(said.contains(u"Die Platte ist weg.")) << "swallowed: " << failed.toStdString();
            if (again) pruefeMeldung(said);
        }
        const QString left = stand(*folder).daten;
        const bool made = !aktion.hof && left == whole.nachher.daten;  // a new database is there before it is opened
        EXPECT_TRUE(made || left == (again ? whole.nachher : whole.vorher).daten)
            << "statement " << nth << ": " << failed.toStdString();
        ++failures;
    }
    EXPECT_GT(failures, 0);
    RecordProperty("fehler", failures);
    if (longRun()) printf("%s: %d failing statements\n", aktion.name, failures);
}

INSTANTIATE_TEST_SUITE_P(Aktionen, FehlerTest, testing::ValuesIn(aktionen()), nameOf);

/// So many animals that reading the list and tidying the file take reports.
const Ordner& grosserHof() {
    static const Ordner folder;
    if (QFile::exists(folder.database())) return folder;
    folder.copyFrom(vorlage());
    folder.edit([](Database& db) {
        db.execute(
            QStringLiteral("insert into Sauen (Art, Nummer, Selektiert) select 'Sau', a.Nummer & '/' & b.ID & '/' "
                           "& c.ID, '' from Sauen a, Sauen b, Belegung c where c.ID < 4"));
    });
    Sitzung(folder).start([](PA_Koben& main) { main.closeBox(); });
    return folder;
}

class AbbruchTest : public testing::TestWithParam<Aktion> {};

/// Where nothing was done the user does it again at once, on the same form.
TEST_P(AbbruchTest, allesOderNichtsUndDanachGehtEs) {
    const Aktion& aktion = GetParam();
    const Vergleich whole = ungestoert(aktion);
    EXPECT_TRUE(whole.meldungen > 0 || aktion.hof != grosserHof) << "no report";
    std::mt19937 random(20260715);
    int undone = 0, done = 0;
    for (int nth = 1; nth <= whole.meldungen && !HasFailure(); ++nth) {
        if (!gewaehlt(nth, whole.meldungen, random)) continue;
        SCOPED_TRACE(testing::Message() << "cancelled at " << nth << " of " << whole.meldungen);
        const auto folder = angerichtet(aktion);
        {
            Sitzung run(*folder);
            std::deque<bool> answers;
            std::deque<QString> inputs;
            run.beginnt = [&] {
                answers = run.screens.answers, inputs = run.screens.inputs;
                beiMeldung(run, [nth, count = 0]() mutable { return ++count != nth; });
            };
            run.nochmal = [&] {
                EXPECT_LE(run.screens.waiting, 0) << "the wait cursor stays";
                const Stand left{inhalt(run.koben.connect()), dateien(*folder)};
                pruefeRest(left, whole, false);
                const bool again = !run.koben.ended && left == whole.vorher;
                again ? ++undone : ++done;
                run.screens.answers = answers, run.screens.inputs = inputs;
                return again;
            };
            spielen(aktion, run);
        }
        const Stand left = stand(*folder);
        pruefeRest(left, whole, true);
        EXPECT_EQ(left.dateien.size(), whole.nachher.dateien.size()) << "a draft stays";
        EXPECT_EQ(integrity(folder->database()), QStringLiteral("ok"));
    }
    if (longRun() && undone + done > 0) printf("%s: %d cancelled, %d done before\n", aktion.name, undone, done);
}

INSTANTIATE_TEST_SUITE_P(Aktionen, AbbruchTest, testing::ValuesIn(aktionen()), nameOf);

std::vector<Aktion> imGrossen() {
    std::vector<Aktion> table;
    for (const char* name : {"statusBeimStart", "markierteSelektieren", "komprimieren"}) {
        table.push_back(finde(name));
        table.back().hof = grosserHof;
    }
    return table;
}

INSTANTIATE_TEST_SUITE_P(ImGrossen, AbbruchTest, testing::ValuesIn(imGrossen()), nameOf);

}  // namespace
}  // namespace koben::robust

// Each writing action of the program is taken back and carried out again: every row of every table as before it and as
// after it, the counters too.
#include <random>

#include "core/PZ_Koben_Subs_Datenbank.h"
#include "core/Ruecknahme.h"
#include "core/Wurfnummern.h"
#include "tests/robust/Aktionen.h"

namespace koben::robust {
namespace {

/// What the program derives by itself, a file that another one replaces, and taking back are no actions.
bool isAction(const Task& task) {
    static const QStringList others = {"ersterStart", "statusBeimStart", "rahmenSchliessen", "rueckholung",
                                       "ruecknahme"};
    return task.writesDatabase && task.changes && !others.contains(QString::fromUtf8(task.name));
}

class RuecknahmeTest : public testing::TestWithParam<Task> {};

TEST_P(RuecknahmeTest, wieVorherUndWieNachher) {
    const Task& task = GetParam();
    if (!task.writesDatabase || !task.changes) return;
    const Comparison whole = undisturbed(task, task.derives);
    const auto folder = prepared(task);
    Session run(*folder);
    run.toMainForm = task.derives;
    run.done = [&] {
        const Database db = run.koben.connect();
        const Ruecknahme journal(db, run.koben);
        EXPECT_EQ(journal.next().has_value(), isAction(task));
        if (!isAction(task)) return;
        // an import leaves deriving to what comes next; carrying it out again derives at once
        QString redone = task.derives ? whole.after.data : QString();
        for (int round = 0; round < 2; ++round) {
            const Rueckmeldung back = journal.back();
            EXPECT_EQ(back.refusal, QString());
            EXPECT_EQ(contentOf(db), whole.before.data) << back.name.toStdString();
            EXPECT_EQ(journal.again().refusal, QString());
            if (redone.isEmpty()) redone = contentOf(db);
            EXPECT_EQ(contentOf(db), redone) << back.name.toStdString();
        }
    };
    perform(task, run);
}

INSTANTIATE_TEST_SUITE_P(Aktionen, RuecknahmeTest, testing::ValuesIn(tasks()), nameOf);

/// A user at work: actions by chance in the running program, each through its forms.
class Arbeitstag {
public:
    Arbeitstag(Session& session, PA_Koben& list, unsigned seed) : m_s(session), m_list(list), m_random(seed) {}

    void act() {
        static const std::vector<void (Arbeitstag::*)()> deeds = {
            &Arbeitstag::book, &Arbeitstag::book,   &Arbeitstag::book,   &Arbeitstag::book,      &Arbeitstag::book,
            &Arbeitstag::edit, &Arbeitstag::onList, &Arbeitstag::onList, &Arbeitstag::newAnimal, &Arbeitstag::removal};
        m_s.screens.answers.assign(8, true);
        m_s.screens.inputs.assign(2, QStringLiteral("S%1").arg(pick(9)));
        (this->*deeds[static_cast<size_t>(pick(static_cast<int>(deeds.size())))])();
        m_list.settle();
    }
    int pick(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(std::max(below, 1))); }

private:
    int someRow() { return 1 + pick(std::min(12, m_list.datali.rowCount())); }
    void mark(int count) {
        std::vector<int> rows;
        for (int i = 0; i < count; ++i) rows.push_back(someRow());
        m_list.datali.choose(rows.front());
        m_list.datali.mark(rows);
    }
    QString day() { return QStringLiteral("%1.%2.2026").arg(1 + pick(28)).arg(1 + pick(7)); }
    QString word() { return QStringLiteral("Wort %1").arg(pick(6)); }

    /// One or two bookings in one frame, or one that is deleted or changed.
    void inFrame(const char* entry, const std::function<void(PE_Bewegungsdaten&)>& work) {
        m_s.screens.workIn<PE_Bewegungsdaten>([&](PE_Bewegungsdaten& frame) {
            work(frame);
            frame.cmdschließen.click();
        });
        Session::menu(m_list, entry);
    }
    void book() {
        struct Booking {
            const char* entry;
            const char* fields;
        };
        static const Booking bookings[] = {{"XE_belegung", "kom(0)=E1; kom(4)=%1"},
                                           {"XE_belegung", "kom(0)=E7; kom(4)=%1"},
                                           {"XE_trächtigkeit", "kom(0)=J; kom(2)=%1"},
                                           {"XE_ferkelung", "tz(0)=12; kom(1)=%1"},
                                           {"XE_absetzung", "tz(0)=3; kom(1)=%1; kom(2)=B1"},
                                           {"XE_Verschiebung", "tz=3; kom(0)=2; kom(2)=%1"},
                                           {"XE_verluste", "tz(0)=2; kom(2)=%1"},
                                           {"XE_behandlung", "kom(6)=Impfung; kom(0)=%1; tz(0)=2"}};
        const Booking& booking = bookings[pick(static_cast<int>(std::size(bookings)))];
        mark(QLatin1String(booking.entry) == QLatin1String("XE_Verschiebung") ? 1 : 1 + pick(3));
        inFrame(booking.entry, [&](PE_Bewegungsdaten& frame) {
            for (int times = 1 + pick(2); times > 0; --times) {
                m_s.screens.work([&](Form& form) {
                    play(form, "tdat=" + day() + "; " + QString::fromUtf8(booking.fields).arg(word()) + "; ok(0)");
                });
                frame.neu.click();
            }
        });
    }
    void edit() {
        mark(1);
        inFrame("XE_ferkelung", [&](PE_Bewegungsdaten& frame) {
            if (frame.li.rowCount() == 0) return;
            m_s.screens.work([&](Form& form) { play(form, "tdat=" + day() + "; ok(0)"); });
            pick(2) ? frame.ändern.click() : frame.löschen.click();
        });
        m_s.screens.forget();
    }
    void onList() {
        static const char* const entries[] = {"XB_Stallnrneuzuordnen", "XB_markierteschweineselektieren",
                                              "XB_Markierte_Ferkel_in_Mast"};
        mark(3);
        Session::menu(m_list, entries[pick(3)]);
    }
    void newAnimal() {
        m_s.screens.work([&](Form& form) {
            play(form, QStringLiteral("t(0)=N%1; kom(1)=%2; kom(0)=Sau; ok").arg(pick(9)).arg(word()));
        });
        Session::menu(m_list, "XB_neueschweine");
    }
    void removal() {
        mark(1);
        Session::menu(m_list, "XB_schweinlöschen");
    }

    Session& m_s;
    PA_Koben& m_list;
    std::mt19937 m_random;
};

/// Takes back, or carries out again, what counts of this kind, in an order by chance, until nothing is left of it.
/// How often something else had to be taken back too.
int reverse(const Ruecknahme& journal, const Database& db, Arbeitstag& day, Journal::Kind kind) {
    int added = 0;
    for (int vain = 0; vain < 1000;) {
        std::vector<qint64> open;
        for (const Journal::Entry& entry : Journal(db).entries())
            if (entry.kind == kind && entry.counts()) open.push_back(entry.number);
        if (open.empty()) return added;
        const auto plan = journal.plan({open[static_cast<size_t>(day.pick(static_cast<int>(open.size())))]});
        const bool wanted = plan.refusal.isEmpty() && (plan.added.empty() || day.pick(3) == 0);
        if (!wanted) {
            ++vain;
            continue;
        }
        added += !plan.added.empty();
        const Rueckmeldung done = journal.carryOut(plan);
        EXPECT_EQ(done.refusal, QString()) << plan.entries.front().name.toStdString();
        if (!done.done()) return -1;
    }
    ADD_FAILURE() << "some cannot be reversed any more";
    return added;
}

class RuecknahmeZufallTest : public testing::TestWithParam<unsigned> {};

TEST_P(RuecknahmeZufallTest, inBeliebigerFolgeWieNieGeschehen) {
    DataFolder folder;
    folder.copyFrom(sampleFarm());
    Session run(folder);
    run.start([&](PA_Koben& list) {
        const Database db = run.koben.connect();
        Arbeitstag day(run, list, GetParam());
        const Ruecknahme journal(db, run.koben);
        {  // the sample's litters came without numbers
            Transaction all(db);
            Wurfnummern litters(db);
            const Table sows = db.table("select ID from Sauen where Art = 'Sau'");
            for (int row = 0; row < sows.rowCount(); ++row) litters.number(sows.text(row, 0).toInt());
            all.commit();
        }
        const QString first = contentOf(db);
        for (int i = 0; i < 30; ++i) day.act();
        Werte_berechnen(run.koben.connect(), run.koben);
        statussetzen(db);
        const QString last = contentOf(db);
        EXPECT_NE(first, last);
        for (int way = 0; way < 2 && !HasFailure(); ++way) {
            reverse(journal, db, day, Journal::Kind::Action);
            EXPECT_EQ(contentOf(db), first) << "all taken back";
            while (!HasFailure() && journal.nextAgain()) EXPECT_EQ(journal.again().refusal, QString());
            EXPECT_EQ(contentOf(db), last) << "all carried out again";
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Saat, RuecknahmeZufallTest, testing::Range(1U, 1U + static_cast<unsigned>(runs(4))));

}  // namespace
}  // namespace koben::robust

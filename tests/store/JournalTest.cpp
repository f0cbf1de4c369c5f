// What the journal keeps of an action, and how it brings the rows back.
#include "store/Journal.h"

#include "tests/store/StoreTest.h"

namespace koben {
namespace {

/// Three rows of a table with a counter and a sort key, one of a table without either.
class JournalTest : public StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        run({"create table T(a TEXT (20), b LONG, c SINGLE, ID COUNTER)", "create index a on T(a)",
             "create table W(Inhalt TEXT (20))", "insert into T (a, b, c) values ('eins', 1, 1.5)",
             "insert into T (a, b) values ('zwei', 2)", "insert into T (a) values ('drei')",
             "insert into W values ('wort')"});
    }
    QString content() const {
        return ask("select * from T order by ID") + " / " + ask("select * from W") + " / " +
               ask("select ID from T where a = 'EINS'");
    }
    /// Statements parted by ";" as one action; its entry.
    Journal::Entry act(const char* statements) {
        Action action(db, QString::fromUtf8(statements));
        for (const QString& sql : QString::fromUtf8(statements).split(u';')) db.execute(sql);
        action.commit();
        return Journal(db).entries(1).at(0);
    }
    /// Takes entries back, newest first; false where one has a conflict, and then nothing is done.
    bool back(const std::vector<qint64>& numbers, Journal::Kind kind = Journal::Kind::TakeBack) {
        Action action(db, "zurück");
        action.setReversal(kind, numbers);
        for (const qint64 number : numbers)
            if (Journal(db).revert(action, number, own)) return false;
        if (kind == Journal::Kind::TakeBack) Journal(db).settleCounters(numbers, {});
        action.commit();
        return true;
    }
    static Journal::Role own(const QString&, const QString&) { return Journal::Role::Own; }
};

TEST_F(JournalTest, jedeFolgeVonAenderungenGehtZurueckUndWieder) {
    for (const char* statements :
         {"insert into T (a) values ('neu')", "update T set a = 'EINS', c = 2.25 where ID = 2",
          "delete from T where b = 2", "delete from T", "delete from W; insert into W values ('anders')",
          "update T set b = 7; update T set b = 8, a = ''",
          "insert into T (a) values ('kurz'); update T set b = 4 where a = 'kurz'",
          "update T set b = 9 where ID = 1; delete from T where ID = 1",
          "insert into T (a) values ('x'); delete from T",
          "delete from T where ID = 1; insert into T (a, c, ID) values ('anders', 3, 1)"}) {
        SCOPED_TRACE(statements);
        const QString before = content();
        const qint64 number = act(statements).number;
        const QString after = content();
        EXPECT_NE(before, after);
        ASSERT_TRUE(back({number}));
        EXPECT_EQ(content(), before);
        EXPECT_FALSE(Journal(db).entry(number)->counts());
        ASSERT_TRUE(back({Journal(db).entries(1).at(0).number}, Journal::Kind::Redo));
        EXPECT_EQ(content(), after);
        EXPECT_TRUE(Journal(db).entry(number)->counts());
        ASSERT_TRUE(back({number}));
    }
    // the next number is that of a file in which nothing happened
    EXPECT_EQ(db.table("select max(ID) as n from T").integer(0, 0), 3);
    run({"insert into T (a) values ('vier')"});
    EXPECT_EQ(db.table("select max(ID) as n from T").integer(0, 0), 4);
}

TEST_F(JournalTest, wasSichNichtAendertUndWasVerworfenWirdHinterlaesstNichts) {
    act("insert into W values ('da')");
    {
        Action action(db, "nichts"), inner(db, "innen");
        run({"update T set b = 1 where ID = 1"});
        inner.commit();
        action.commit();
    }
    {
        Action action(db, "verworfen");
        run({"delete from T"});
    }
    {
        Transaction derived(db);
        run({"update T set b = 5"});
        derived.commit();
    }
    EXPECT_EQ(Journal(db).entries().size(), 1U);
}

TEST_F(JournalTest, fremdeAenderungenUndAndereTabellenWerdenErkannt) {
    const qint64 first = act("update T set a = 'neu', b = 3 where ID = 1").number;
    run({"update T set c = 9 where ID = 1"});  // another field
    ASSERT_TRUE(back({first}));
    const qint64 second = act("update T set b = 4 where ID = 1").number;
    run({"update T set b = 5 where ID = 1"});
    const QString before = content();
    EXPECT_FALSE(back({second}));
    EXPECT_EQ(content(), before);
    EXPECT_FALSE(act("alter table T add column d TEXT (3); update T set d = 'x'").known);
    EXPECT_TRUE(Journal(db).unknownBehind(second).has_value());
}

TEST_F(JournalTest, spaetereAktionenUndAufbewahrung) {
    const qint64 first = act("update T set b = 3 where ID = 1").number, other = act("delete from W").number;
    const qint64 second = act("update T set a = 'x' where ID = 1").number;
    const Journal journal(db);
    EXPECT_EQ(journal.later(first, false), std::vector<qint64>{second});
    EXPECT_EQ(journal.lastToTouch("T", 1, 0), second);
    EXPECT_EQ(journal.lastToTouch("W", 1, 0), other);
    ASSERT_TRUE(back({second}));
    EXPECT_TRUE(journal.later(first, false).empty());
    journal.keep({1, 1});
    const QDate today = QDate::currentDate();
    journal.trim(today);
    EXPECT_EQ(journal.entries().size(), 4U);
    journal.trim(today.addYears(1).addDays(2));
    EXPECT_TRUE(journal.entries().empty());
}

}  // namespace
}  // namespace koben

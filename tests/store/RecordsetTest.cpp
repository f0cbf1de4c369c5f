#include <QDateTime>

#include "tests/store/StoreTest.h"

namespace koben {
namespace {

class RecordsetTest : public StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        run(
            {"create table Sauen(Nummer TEXT (5), Geburtsdatum DATETIME, Preis CURRENCY, Anz SHORT, Gewicht SINGLE, ID "
             "COUNTER)",
             "create index nummer on Sauen(Nummer)", "create table Gruppe(Inhalt TEXT (10))",
             "insert into Sauen (Nummer, Anz) values ('A', 1)", "insert into Sauen (Nummer, Anz) values ('b', 2)",
             "insert into Sauen (Nummer, Anz) values ('C', 3)", "insert into Gruppe values ('eins')"});
    }
    DatabaseError::Kind kindOf(const std::function<void()>& work) {
        try {
            work();
        } catch (const DatabaseError& e) {
            return e.kind;
        }
        ADD_FAILURE() << "no error";
        return DatabaseError::Kind::Io;
    }
    using Kind = DatabaseError::Kind;
};

TEST_F(RecordsetTest, CountsTheRecordsReached) {
    Recordset empty = db.open("select * from Sauen where ID = 0");
    EXPECT_EQ(empty.recordCount(), 0);
    EXPECT_TRUE(empty.eof() && empty.bof());
    EXPECT_EQ(kindOf([&] { empty.moveFirst(); }), Kind::State);
    EXPECT_EQ(kindOf([&] { empty.moveNext(); }), Kind::State);
    EXPECT_EQ(kindOf([&] { empty.value(0); }), Kind::State);
    EXPECT_EQ(empty.fieldCount(), 6);

    Recordset r = db.open("select * from Sauen order by Nummer");
    EXPECT_EQ(r.recordCount(), 1);
    r.moveNext();
    EXPECT_EQ(r.recordCount(), 2);
    r.moveFirst();
    EXPECT_EQ(r.recordCount(), 2);
    r.moveLast();
    EXPECT_EQ(r.recordCount(), 3);
    EXPECT_EQ(r.value(u"nummer"), Value(u"C"));
    r.moveNext();
    EXPECT_TRUE(r.eof());
    EXPECT_EQ(kindOf([&] { r.moveNext(); }), Kind::State);
    EXPECT_EQ(kindOf([&] { r.value(u"Nummer"); }), Kind::State);
    r.movePrevious();
    EXPECT_EQ(r.value(u"Nummer"), Value(u"C"));
    r.moveFirst();
    r.movePrevious();
    EXPECT_TRUE(r.bof());
    EXPECT_EQ(kindOf([&] { r.movePrevious(); }), Kind::State);
}

TEST_F(RecordsetTest, AddingKeepsTheCurrentRecord) {
    Recordset r = db.open("select * from Sauen where ID > 1");
    r.addNew();
    EXPECT_TRUE(r.value(u"Nummer").isNull());
    r.set(u"NUMMER", u"neu");
    r.set(u"Preis", QStringLiteral("12,345678"));
    r.set(u"Geburtsdatum", QDate(2024, 2, 29));
    r.set(u"Gewicht", 0.1);
    r.update();
    EXPECT_EQ(r.value(u"Nummer"), Value(u"b"));
    EXPECT_EQ(r.recordCount(), 2);
    r.moveLast();
    EXPECT_EQ(r.recordCount(), 3);
    EXPECT_EQ(r.value(u"Nummer"), Value(u"neu"));
    EXPECT_EQ(r.value(u"Preis"), Value(Money{123457}));
    EXPECT_EQ(r.value(u"Gewicht"), Value(0.1F));
    EXPECT_EQ(r.value(u"Geburtsdatum").toDate(), QDate(2024, 2, 29));
    EXPECT_EQ(r.value(u"ID"), Value(4));

    Recordset empty = db.open("select * from Gruppe where Inhalt = 'nichts'");
    empty.addNew();
    empty.set(0, u"zwei");
    empty.update();
    EXPECT_EQ(empty.recordCount(), 1);
    empty.moveFirst();
    EXPECT_EQ(empty.value(0), Value(u"zwei"));
}

TEST_F(RecordsetTest, TheCounterIsKnownWhileAdding) {
    Recordset r = db.open("select * from Sauen where ID = 0");
    r.addNew();
    EXPECT_EQ(r.value(u"ID"), Value(4));
    r.cancelUpdate();
    r.addNew();
    EXPECT_EQ(r.value(u"ID"), Value(5));
    run({"insert into Sauen (Nummer) values ('x')"});
    r.set(u"Nummer", u"y");
    r.update();
    EXPECT_EQ(ask("select Nummer, ID from Sauen where ID > 3"), QString("y|5; x|6"));
}

TEST_F(RecordsetTest, EditingRules) {
    Recordset r = db.open("select * from Sauen");
    EXPECT_EQ(kindOf([&] { r.set(u"Nummer", u"x"); }), Kind::State);
    EXPECT_EQ(kindOf([&] { r.update(); }), Kind::State);
    r.edit();
    EXPECT_EQ(kindOf([&] { r.set(u"Nummer", u"123456"); }), Kind::TooLong);
    EXPECT_EQ(kindOf([&] { r.set(u"Anz", 40000); }), Kind::Type);
    EXPECT_EQ(kindOf([&] { r.set(u"Geburtsdatum", QString()); }), Kind::Type);
    EXPECT_EQ(kindOf([&] { r.set(u"ID", 9); }), Kind::Constraint);
    EXPECT_EQ(kindOf([&] { r.set(u"Foo", 9); }), Kind::UnknownName);
    r.set(u"Nummer", u"neu");
    EXPECT_EQ(r.value(u"Nummer"), Value(u"neu"));
    r.moveNext();  // drops the edit
    r.moveFirst();
    EXPECT_EQ(r.value(u"Nummer"), Value(u"A"));
    r.edit();
    r.set(u"Nummer", u"neu");
    r.set(u"Anz", Value::null());
    r.update();
    EXPECT_EQ(ask("select ID, Anz from Sauen where Nummer = 'NEU'"), QString("1|<Null>"));
    EXPECT_EQ(kindOf([&] { r.update(); }), Kind::State);
}

TEST_F(RecordsetTest, SeesOtherWritesAsItsRulesSay) {
    Recordset r = db.open("select * from Sauen");
    Database other = workspace.open(path());
    EXPECT_EQ(r.value(u"Nummer"), Value(u"A"));
    other.execute("update Sauen set Nummer = 'Z'");
    EXPECT_EQ(r.value(u"Nummer"), Value(u"Z"));
    other.execute("insert into Sauen (Nummer) values ('spät')");
    r.moveLast();
    EXPECT_EQ(r.recordCount(), 3);
    other.execute("delete from Sauen where ID = 2");
    r.moveFirst();
    r.moveNext();
    EXPECT_EQ(kindOf([&] { r.value(u"Nummer"); }), Kind::State);
    EXPECT_EQ(kindOf([&] { r.edit(); }), Kind::State);
    r.moveNext();
    EXPECT_EQ(r.value(u"ID"), Value(3));
    r.edit();
    r.set(u"Nummer", u"x");
    other.execute("delete from Sauen where ID = 3");
    EXPECT_EQ(kindOf([&] { r.update(); }), Kind::State);
}

TEST_F(RecordsetTest, Removing) {
    Recordset r = db.open("select * from Sauen");
    r.moveLast();
    r.movePrevious();
    r.remove();
    EXPECT_EQ(r.recordCount(), 2);
    EXPECT_EQ(kindOf([&] { r.value(u"ID"); }), Kind::State);
    r.movePrevious();
    EXPECT_EQ(r.value(u"ID"), Value(1));
    r.moveNext();
    EXPECT_EQ(r.value(u"ID"), Value(3));
    EXPECT_EQ(ask("select ID from Sauen"), QString("1; 3"));
}

TEST_F(RecordsetTest, FindFirst) {
    Recordset r = db.open("select ID, Nummer as Nr, Anz from Sauen order by Nummer desc");
    const std::pair<const char*, int> cases[] = {{"ID = 2", 2},          {"Nummer = 'B'", 2},
                                                 {"Nummer LIKE '?'", 3}, {"Anz < 3", 2},
                                                 {"Nr = 'a'", 1},        {"[Nummer] > 'A' and Anz > 1", 3}};
    for (const auto& [criteria, id] : cases) {
        r.findFirst(QString::fromUtf8(criteria));
        EXPECT_FALSE(r.noMatch()) << criteria;
        EXPECT_EQ(r.value(u"ID"), Value(id)) << criteria;
    }
    r.findFirst("ID = 77");
    EXPECT_TRUE(r.noMatch());
    EXPECT_EQ(kindOf([&] { r.findFirst("Foo = 1"); }), Kind::UnknownName);
    EXPECT_EQ(kindOf([&] { r.findFirst("ID = "); }), Kind::Syntax);

    Recordset snapshot = db.open("select distinct Nummer, Anz as n from Sauen order by Nummer desc");
    snapshot.findFirst("n >= 1 and Nummer < 'C'");
    EXPECT_EQ(snapshot.value(u"Nummer"), Value(u"b"));
    snapshot.findFirst("n = 9");
    EXPECT_TRUE(snapshot.noMatch());
    // An added record is found, one that lies outside the cursor is not.
    Recordset part = db.open("select * from Sauen where ID = 1");
    part.findFirst("ID = 2");
    EXPECT_TRUE(part.noMatch());
    part.addNew();
    part.set(u"Nummer", u"neu");
    part.update();
    part.findFirst("Nummer = 'neu'");
    EXPECT_EQ(part.value(u"ID"), Value(4));
}

TEST_F(RecordsetTest, SnapshotsAreReadOnly) {
    for (const char* sql : {"select distinct Nummer from Sauen", "select a.Nummer from Sauen a, Gruppe",
                            "select Nummer from Sauen group by Nummer", "select max(Nummer) as Nummer from Sauen",
                            "transform count(*) select Nummer from Sauen group by Nummer pivot Anz"}) {
        Recordset r = db.open(QString::fromUtf8(sql));
        EXPECT_FALSE(r.value(u"Nummer").isNull()) << sql;
        EXPECT_EQ(kindOf([&] { r.edit(); }), Kind::State) << sql;
        EXPECT_EQ(kindOf([&] { r.addNew(); }), Kind::State) << sql;
        EXPECT_EQ(kindOf([&] { r.remove(); }), Kind::State) << sql;
    }
    Recordset r = db.open("select Nummer, Anz * 2 as d from Sauen");
    r.edit();
    EXPECT_EQ(kindOf([&] { r.set(u"d", 3); }), Kind::State);
    r.set(u"Nummer", u"q");
    r.update();
    EXPECT_EQ(r.value(u"d"), Value(2));
}

TEST_F(RecordsetTest, ClosedHandlesAreErrors) {
    Recordset r = db.open("select * from Sauen");
    Recordset closed = r;
    Statement s = db.prepare("select ID from Sauen");
    s.bind({});
    ASSERT_TRUE(s.next());
    workspace.closeAll();
    EXPECT_EQ(kindOf([&] { r.value(u"ID"); }), Kind::State);
    EXPECT_EQ(kindOf([&] { s.next(); }), Kind::State);
    EXPECT_EQ(kindOf([&] { db.execute("delete from Sauen"); }), Kind::State);
    db = workspace.open(path());
    EXPECT_EQ(ask("select count(*) from Sauen"), QString("3"));
    Recordset again = db.open("select * from Sauen");
    again.close();
    EXPECT_EQ(kindOf([&] { again.recordCount(); }), Kind::State);
}

TEST_F(RecordsetTest, TableInMemory) {
    run({"update Sauen set Geburtsdatum = #2/1/2024#, Preis = 300000 where ID = 1",
         "update Sauen set Geburtsdatum = #1/1/2024#, Preis = -5 where ID = 3"});
    Table t = db.table("select Nummer, Geburtsdatum, Preis, Gewicht from Sauen");
    const Table copy = t;
    EXPECT_GT(t.compare(0, 2, 1), 0);
    EXPECT_LT(t.compare(1, 2, 1), 0);
    EXPECT_LT(t.compare(0, 1, 0), 0);
    EXPECT_EQ(t.integer(0, 2), 3000000000LL);
    EXPECT_EQ(t.integer(0, 1), QDate(2024, 2, 1).toJulianDay());
    EXPECT_EQ(t.text(2, 2), QString("-5"));
    EXPECT_EQ(t.columnOf(u"GEWICHT"), 3);
    t.removeRow(0);
    EXPECT_EQ(t.text(0, 0) + t.text(1, 0), QString("bC"));
    EXPECT_EQ(copy.rowCount(), 3);
    EXPECT_EQ(copy.text(0, 0), QString("A"));
}

}  // namespace
}  // namespace koben

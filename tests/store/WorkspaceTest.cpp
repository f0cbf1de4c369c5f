#include <sqlite3.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <algorithm>

#include "tests/store/StoreTest.h"

namespace koben {
namespace {

using Kind = DatabaseError::Kind;

class WorkspaceTest : public StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        run({"create table Sauen(Nummer TEXT (15), Preis CURRENCY, ID COUNTER)", "create index nummer on Sauen(Nummer)",
             "insert into Sauen (Nummer, Preis) values ('A', 1.5)", "insert into Sauen (Nummer, Preis) values ('B', 2)",
             "delete from Sauen where ID = 2"});
    }
    void fill(const QString& file, const QByteArray& bytes) {
        QFile f(file);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size());
    }
    QByteArray content(const QString& file) {
        QFile f(file);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    /// What another SQLite tool does: no functions of ours, none of our collations.
    void foreign(const char* sql) {
        sqlite3* file = nullptr;
        ASSERT_EQ(sqlite3_open(path().toUtf8().constData(), &file), SQLITE_OK);
        char* reason = nullptr;
        EXPECT_EQ(sqlite3_exec(file, sql, nullptr, nullptr, &reason), SQLITE_OK) << (reason != nullptr ? reason : "");
        sqlite3_free(reason);
        sqlite3_close(file);
    }
};

TEST_F(WorkspaceTest, RefusesForeignFilesAndLeavesThemAlone) {
    workspace.closeAll();
    const QByteArray sqlite = content(path());
    QByteArray newer = sqlite, other = sqlite, broken = sqlite;
    newer[63] = 99;
    other[68] = 0;
    broken.replace(0, 6, "SQLitX");
    const struct {
        const char* name;
        QByteArray bytes;
        Kind kind;
    } cases[] = {{"jet3", QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4096, 'x'), Kind::ForeignFormat},
                 {"ace", QByteArray("\0\1\0\0Standard ACE DB\0", 20) + QByteArray(4096, 'x'), Kind::ForeignFormat},
                 {"text", "Einstellungen", Kind::NotADatabase},
                 {"leer", "", Kind::NotADatabase},
                 {"neuer", newer, Kind::NewerVersion},
                 {"fremd", other, Kind::NotADatabase},
                 {"kaputt", broken, Kind::NotADatabase}};
    for (const auto& c : cases) {
        const QString file = path(c.name);
        fill(file, c.bytes);
        for (const auto& work : std::initializer_list<std::function<void()>>{
                 [&] { workspace.open(file); }, [&] { workspace.compact(file, path("ziel")); },
                 [&] { workspace.copy(file, path("ziel")); }}) {
            try {
                work();
                ADD_FAILURE() << c.name;
            } catch (const DatabaseError& e) {
                EXPECT_EQ(e.kind, c.kind) << c.name;
                EXPECT_TRUE(e.message().contains(QDir::toNativeSeparators(file))) << e.what();
            }
        }
        EXPECT_EQ(content(file), c.bytes) << c.name;
        EXPECT_FALSE(QFile::exists(file + "-wal") || QFile::exists(path("ziel"))) << c.name;
    }
    EXPECT_THROW(workspace.open(path("fehlt")), DatabaseError);
    EXPECT_FALSE(QFile::exists(path("fehlt")));
}

TEST_F(WorkspaceTest, CompactAndCopyKeepEverything) {
    workspace.compact(path(), path("klein"));
    workspace.copy(path(), path("kopie"));
    workspace.copy(path(), path("kopie"));
    for (const char* name : {"klein", "kopie"}) {
        db = workspace.open(path(name));
        EXPECT_EQ(ask("select Nummer, Preis, ID from Sauen where Nummer = 'a'"), QString("A|1,5|1")) << name;
        run({"insert into Sauen (Nummer) values ('C')"});
        EXPECT_EQ(ask("select max(ID) from Sauen"), QString("3")) << name;
        EXPECT_EQ(error("create index nummer on Sauen(Nummer)"), QString("Constraint@13"));
    }
    workspace.closeAll();
    QStringList files = QDir(m_folder.path()).entryList(QDir::Files);
    EXPECT_EQ(files.join(u' '), QString("klein kopie test.mdb"));
}

TEST_F(WorkspaceTest, ChecksEveryPage) {
    foreign(
        "insert into Sauen(Nummer) with recursive n(i) as (select 1 union all select i + 1 from n where i < 50000) "
        "select 'x' || i from n");
    for (const Check check : {Check::Quick, Check::Full}) {
        EXPECT_EQ(workspace.check(path(), check), QString());
        EXPECT_EQ(workspace.check(path(), check, [](int) { return false; }), std::nullopt);
    }
    db.close();
    workspace.closeAll();
    QByteArray bytes = content(path());
    bytes.replace(bytes.size() / 2, 9000, QByteArray(9000, '\x55'));
    fill(path(), bytes);
    EXPECT_NE(workspace.check(path(), Check::Quick).value_or(QString()), QString());
}

TEST_F(WorkspaceTest, ForeignToolsMayWrite) {
    workspace.closeAll();
    foreign(
        "alter table Sauen add column Fremd INTEGER; insert into Sauen(Nummer, Fremd) values ('Neu', 7); update Sauen "
        "set Nummer = 'Alt' where ID = 1; VACUUM");
    db = workspace.open(path());
    EXPECT_EQ(ask("select * from Sauen where Nummer = 'neu'"), QString("Neu|<Null>|3|7"));
    EXPECT_EQ(ask("select ID from Sauen where Nummer = 'alt'"), QString("1"));
    EXPECT_EQ(ask("select ID from Sauen where Nummer = 'A'"), QString());
}

TEST_F(WorkspaceTest, ConnectionsOfOneFileSeeEachOther) {
    Workspace second;
    QDir::current().mkpath(m_folder.filePath("sub"));
    Database other = second.open(m_folder.filePath("sub/../test.mdb"));
    Recordset open = other.open("select * from Sauen");
    db.execute("insert into Sauen (Nummer) values ('Z')");
    EXPECT_EQ(rendered(other.table("select Nummer from Sauen")), QString("A; Z"));
    db.close();
    other.execute("delete from Sauen");
    EXPECT_EQ(rendered(other.table("select count(*) from Sauen")), QString("0"));
}

TEST_F(WorkspaceTest, Transactions) {
    {
        Transaction t(db);
        db.execute("delete from Sauen");
        db.execute("create table Neu(a LONG)");
    }
    EXPECT_EQ(ask("select Nummer from Sauen"), QString("A"));
    EXPECT_EQ(db.tables().size(), 1);
    {
        Transaction outer(db);
        {
            Transaction inner(db);
            db.execute("insert into Sauen (Nummer) values ('X')");
            inner.commit();
        }
        EXPECT_EQ(error("insert into Sauen (Nummer) values ('12345678901234567890')"), QString("TooLong@35"));
        outer.commit();
    }
    {
        Transaction outer(db);
        db.execute("delete from Sauen");
        { Transaction inner(db); }
        EXPECT_THROW(outer.commit(), DatabaseError);
    }
    EXPECT_EQ(ask("select Nummer from Sauen"), QString("A; X"));
}

}  // namespace
}  // namespace koben

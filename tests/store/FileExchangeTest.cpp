#include "store/FileExchange.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace koben {
namespace {

class FileExchangeTest : public testing::Test {
protected:
    QString at(const QString& name) const { return m_folder.filePath(name); }
    void put(const QString& path, const char* text) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    /// "name=content" of all there is, sorted.
    QString state() const {
        QStringList all;
        for (const QString& name : QDir(folder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name)) {
            QFile file(at(name));
            all += name + u'=' + (file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : "?");
        }
        return all.join(u' ');
    }
    void old() const {
        for (const char* name : {"a", "d.mdb", "d.mdb-wal", "d.mdb-shm", "z"}) put(at(name), "alt");
    }
    QString folder() const { return m_folder.path() + u'/'; }

    QTemporaryDir m_folder;
    const QString before = "a=alt d.mdb=alt d.mdb-shm=alt d.mdb-wal=alt z=alt", after = "a=neu d.mdb=neu z=alt";
};

/// Whatever is left when the program dies, the next start leaves the old files or the new ones.
TEST_F(FileExchangeTest, OldOrNewAfterADeath) {
    for (const int moved : {-2, -1, 0, 1, 2}) {  // undecided with one file and with both; decided, so many in place
        SCOPED_TRACE(moved);
        old();
        const QString gathering = at(moved < 0 ? "koben-arbeit/" : "koben-tausch/");
        QDir().mkpath(gathering);
        put(moved > 0 ? at("a") : gathering + "a", "neu");
        if (moved != -2) put(moved > 1 ? at("d.mdb") : gathering + "d.mdb", "neu");
        if (moved > 1)
            for (const char* log : {"d.mdb-wal", "d.mdb-shm"}) QFile::remove(at(log));
        EXPECT_EQ(FileExchange::recover(folder()), "");
        EXPECT_EQ(state(), moved < 0 ? before : after);
    }
}

TEST_F(FileExchangeTest, InOneGoAndWhatCannotBeFinishedWaits) {
    old();
    {
        FileExchange undecided(folder());
        put(undecided.file("a"), "neu");
    }
    EXPECT_EQ(state(), before);
    FileExchange exchange(folder());
    for (const char* name : {"a", "d.mdb", "ordner", "unter/c"}) put(exchange.file(name), "neu");
    QDir().mkpath(at("ordner/voll"));
    EXPECT_EQ(exchange.decide(), "");
    EXPECT_NE(exchange.finish(), "");
    EXPECT_NE(FileExchange::recover(folder()), "");
    QDir(at("ordner")).removeRecursively();
    EXPECT_EQ(FileExchange::recover(folder()), "");
    EXPECT_EQ(state(), "a=neu d.mdb=neu ordner=neu unter=? z=alt");
    EXPECT_EQ(QFile(at("unter/c")).size(), 3);
}

}  // namespace
}  // namespace koben

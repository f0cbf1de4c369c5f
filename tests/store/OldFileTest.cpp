// Files of the old engine through koben-altdaten: every type and fate of a row in both formats, and a reader that
// falls, falls silent or talks nonsense.
#include "store/OldFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "tools/altdatei/OldFileWriter.h"

namespace koben {
namespace {

using Fate = OldFileWriter::Fate;

/// A folder for a file, and all of it as a text: tables in brackets, cells joined by "|", Null as "-".
class OldFileTest : public testing::Test {
protected:
    QString write(const QByteArray& bytes, const QString& name = "alt.mdb") {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return file.fileName();
    }
    QString read(OldFile& file) {
        QString all;
        while (const OldTable* table = file.nextTable()) {
            all += '[' + table->name + "]\n";
            while (file.nextRow()) {
                QStringList cells;
                for (int i = 0; i < static_cast<int>(table->fields.size()); ++i) {
                    const Value value = file.row().value(i, losses);
                    cells += value.isNull() ? "-" : value.toText();
                }
                all += cells.join('|') + '\n';
            }
            losses.rows += file.rowsLost();
        }
        return all;
    }
    QString read(const QString& path, const QStringList& tables = {}) {
        losses = {};
        OldFile file(path, tables);
        return read(file);
    }
    /// The message of a file that cannot be read; "" where it can.
    QString refusal(const QString& path) {
        try {
            read(path);
        } catch (const DatabaseError& error) {
            return error.message();
        }
        return {};
    }
    /// A shell script in the place of koben-altdaten.
    void useHelper(const QString& script, int patienceMs = 300) {
        const QString helper = write("#!/bin/sh\n" + script.toUtf8() + '\n', "leser");
        QFile::setPermissions(helper, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        OldFile::setHelper(helper, patienceMs);
    }
    ~OldFileTest() override { OldFile::setHelper({}); }

    QTemporaryDir m_folder;
    OldLosses losses;
};

TEST_F(OldFileTest, everyTypeInBothFormats) {
    const QString memo = QString("Käse € „gut“ ").repeated(13000), mixed = QString("x").repeated(40) + "Ω€";
    for (const int version : {3, 4}) {
        SCOPED_TRACE(version);
        OldFileWriter file(version);
        file.table("Trächtigkeit",
                   "Jn YESNO, B BYTE, S SHORT, L LONG, C CURRENCY, F SINGLE, D DOUBLE, T DATETIME, Wort TEXT (200), "
                   "Größe TEXT (255), Lang MEMO, Bild OLE, ID COUNTER");
        file.row("Trächtigkeit", {{"Jn", true},
                                  {"B", 200},
                                  {"S", -32768},
                                  {"L", -2147483647},
                                  {"C", Money{-123456789012345}},
                                  {"F", 79.3F},
                                  {"D", 0.1},
                                  {"T", QDate(2026, 2, 28)},
                                  {"Wort", QString("a").repeated(200)},
                                  {"Größe", QString("ß").repeated(255)},
                                  {"Lang", memo}});
        file.row("Trächtigkeit", {{"Wort", QString()}, {"Größe", "€ 'x'\n"}, {"Lang", QString("m").repeated(1500)}});
        file.row("Trächtigkeit", {{"T", -1.75}, {"Lang", ""}});          // a day before the first, with a time
        file.row("Trächtigkeit", {{"T", 0.9999999}, {"Lang", "kurz"}});  // a midnight that was reckoned
        file.row("Trächtigkeit", {{"T", 3e6}});                          // no day at all
        if (version == 4) file.row("Trächtigkeit", {{"Wort", mixed}, {"Größe", QString(QChar(0x100))}});
        const QString seen = read(write(file.bytes()));
        QStringList rows = seen.split('\n');
        EXPECT_EQ(rows[0], "[Trächtigkeit]");
        EXPECT_EQ(rows[1], "-1|200|-32768|-2147483647|-12345678901,2345|79,3|0,1|28.02.2026|" +
                               QString("a").repeated(200) + '|' + QString("ß").repeated(255) + '|' + memo + "|-|1");
        EXPECT_TRUE(seen.contains("0|-|-|-|-|-|-|-||€ 'x'\n|" + QString("m").repeated(1500) + "|-|2\n"));
        EXPECT_TRUE(seen.contains("0|-|-|-|-|-|-|29.12.1899|-|-||-|3\n"));
        EXPECT_TRUE(seen.contains("0|-|-|-|-|-|-|31.12.1899|-|-|kurz|-|4\n"));
        EXPECT_TRUE(seen.contains("0|-|-|-|-|-|-|-|-|-|-|-|5\n"));
        EXPECT_EQ(seen.contains("|" + mixed + "|Ā|-|-|6\n"), version == 4);
        EXPECT_EQ(losses.cutTimes, 1);
        EXPECT_EQ(losses.values, 1);
        EXPECT_EQ(losses.rows, 0);
    }
}

TEST_F(OldFileTest, deletedAndMovedRowsAndFarPages) {
    for (const int version : {3, 4}) {
        SCOPED_TRACE(version);
        OldFileWriter file(version);
        file.table("A", "T TEXT (200), ID COUNTER");
        file.table("B", "N LONG");
        QStringList lines;
        for (int i = 1; i <= 6000; ++i) {  // B's pages lie between A's, on more than one map
            const Fate fate = i % 7 == 0 ? Fate::Deleted : i % 5 == 0 ? Fate::Moved : Fate::Lives;
            const QString text = QString::number(i).repeated(40);
            file.row("A", {{"T", text}}, fate);
            if (fate != Fate::Deleted) lines += QString("%1|%2").arg(text).arg(i);
            file.row("B", {{"N", i}});
        }
        const QString path = write(file.bytes());
        EXPECT_TRUE(read(path, {"a"}) == "[A]\n" + lines.join('\n') + '\n') << "moved rows stand at their place";
        EXPECT_EQ(losses.rows, 0);
        EXPECT_TRUE(read(path, {"B", "fehlt", "A"}).startsWith("[B]\n1\n2\n"));
        file.claimRows("B", 6003);
        read(write(file.bytes()), {"B"});
        EXPECT_EQ(losses.rows, 3);
    }
}

TEST_F(OldFileTest, filesThatAreNone) {
    OldFileWriter jet3(3);
    jet3.table("A", "N LONG");
    const QByteArray good = jet3.bytes();
    const struct {
        const char* what;
        QByteArray bytes;
        const char* said;
    } cases[] = {{"empty", "", "keine Datenbank im alten Format"},
                 {"a text", QByteArray(9000, 'x'), "keine Datenbank im alten Format"},
                 {"a later version", QByteArray(good).replace(0x14, 1, "\x02"), "keine Datenbank im alten Format"},
                 {"its successor", QByteArray(good).replace(4, 15, "Standard ACE DB"), "das Format ACCDB"},
                 {"no catalogue", good.first(4096), "Verzeichnis der Tabellen"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const QString path = write(c.bytes);
        EXPECT_TRUE(refusal(path).contains(QString::fromUtf8(c.said))) << refusal(path).toStdString();
    }
    EXPECT_TRUE(OldFile::isOld(write(good)));
    EXPECT_FALSE(OldFile::isOld(write(cases[2].bytes)));
    EXPECT_TRUE(refusal(m_folder.filePath("fehlt.mdb")).contains("gibt es nicht"));
}

/// The helper is another program that misbehaves; whatever it does, a message comes and nothing is left running.
TEST_F(OldFileTest, readersThatFail) {
    const QString path = write(QByteArray(100, 'x'));
    const QString head = "printf 'KOBEN-Altdaten 1\\n'; ";
    const QString table =
        "printf 'T\\030\\0\\0\\0\\1\\0\\0\\0\\0\\0\\0\\0\\1\\001A\\1\\0\\004\\0\\0\\0\\001N\\0\\0\\0'; ";
    const struct {
        const char* what;
        QString script;
        const char* said;
    } cases[] = {{"dies at once", "kill -9 $$", "Das Lesen brach ab"},
                 {"ends too soon", head, "Das Lesen brach ab"},
                 {"says nothing", "exec sleep 60", "kam nicht mehr voran"},
                 {"falls silent", head + "exec sleep 60", "kam nicht mehr voran"},
                 {"has no end", head + "exec yes", "Das Lesen brach ab"},
                 {"a message without end", head + "printf 'T\\377\\377\\377\\377'; exec yes", "Das Lesen brach ab"},
                 {"a torn table", head + table, "Das Lesen brach ab"},
                 {"goes on after its end", head + "printf 'Z\\0\\0\\0\\0x'", "Das Lesen brach ab"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        useHelper(c.script);
        const QString said = refusal(path);
        EXPECT_TRUE(said.contains(QString::fromUtf8(c.said)) && (said.isEmpty() || said.contains("Bitte")))
            << said.toStdString();
    }
    OldFile::setHelper(m_folder.filePath("nirgends"));
    EXPECT_TRUE(refusal(path).contains("Bitte installieren Sie KOBEN neu"));
}

/// A row that takes more memory than the reader may have.
TEST_F(OldFileTest, aReaderWithoutMemory) {
    OldFileWriter large(4);
    OldFileWriter::Fields row;
    QStringList fields;
    for (int i = 0; i < 10; ++i) {
        fields += QString("M%1 MEMO").arg(i);
        row.append({QString("M%1").arg(i), QString(200'000, 'x')});
    }
    large.table("A", fields.join(", "));
    large.row("A", row);
    const QString path = write(large.bytes());
    EXPECT_EQ(refusal(path), "");
    useHelper("ulimit -v 9000; exec " + QFileInfo("/proc/self/exe").canonicalPath() + "/koben-altdaten \"$@\"", 30'000);
    EXPECT_TRUE(refusal(path).contains("Das Lesen brach ab")) << refusal(path).toStdString();
}

/// The reader itself hangs, in a file that gives nothing: whoever waits may give it up, and it has its limits.
TEST_F(OldFileTest, aReaderThatHangsCanBeGivenUp) {
    const QString path = m_folder.filePath("haengt.mdb");
    ASSERT_EQ(mkfifo(qPrintable(path), 0600), 0);
    int asked = 0;
    QByteArray limits;
    const auto on = [&] {
        QFile children(QString("/proc/self/task/%1/children").arg(getpid()));
        EXPECT_TRUE(children.open(QIODevice::ReadOnly));
        QFile file("/proc/" + children.readAll().trimmed() + "/limits");
        if (file.open(QIODevice::ReadOnly)) limits = file.readAll().simplified();
        return ++asked < 3;
    };
    QString said;
    try {
        OldFile(path, {}, on);
    } catch (const DatabaseError& error) {
        said = error.message();
    }
    EXPECT_TRUE(said.contains("wurde abgebrochen")) << said.toStdString();
    EXPECT_EQ(asked, 3);
    EXPECT_TRUE(limits.contains("Max cpu time 600 600") && limits.contains("Max file size 0 0"))
        << limits.toStdString();
#ifndef __SANITIZE_ADDRESS__
    EXPECT_TRUE(limits.contains("Max address space 536870912 536870912"));
#endif
}

}  // namespace
}  // namespace koben

// What a start says in the notice line, beside its messages, which stay as they are.
#include "core/Ordnersperre.h"
#include "cycle/PO_Einstellungen.h"
#include "tests/robust/Betrieb.h"

namespace koben::robust {
namespace {

/// Runs of one user on one data folder.
struct User {
    User() { folder.copyFrom(sampleFarm()); }

    /// Starts the program and ends it; the notice line, "" where none is shown.
    QString start(const std::function<void(PA_Koben&, Session&)>& work = {}) {
        Session run(folder);
        run.platform.settings = settings;
        run.platform.clock = QDateTime(day, QTime(8, 0));
        if (!progress) run.screens.onProgress = [](const QString&, int) { return false; };
        run.screens.answers.assign(9, false);
        QString said;
        run.start([&](PA_Koben& main) {
            said = main.hinweis.visible() ? main.hinweis.text() : QString();
            if (work) work(main, run);
            if (!killed) main.closeBox();
        });
        log = run.screens.log;
        settings = run.platform.settings;
        return said;
    }
    void change(const QByteArray& from, const QByteArray& to, bool time = true) const {
        const QDateTime before = QFileInfo(folder.settings()).lastModified();
        QByteArray bytes = bytesOf(folder.settings());
        ASSERT_EQ(bytes.count(from), 1) << from.constData();
        setBytes(folder.settings(), bytes.replace(from, to));
        QFile file(folder.settings());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.setFileTime(time ? before.addSecs(5) : before, QFileDevice::FileModificationTime);
    }
    QStringList kept() const { return QDir(folder.user()).entryList({"*besch*"}, QDir::Files); }

    DataFolder folder;
    std::map<QString, QString> settings;
    QDate day{2026, 7, 15};
    bool killed = false, progress = true;
    QStringList log;
};

TEST(HinweisTest, einstellungen) {
    const char* const days = "Belegung bis Ferkelung";
    const struct {
        const char* name;
        const char *from, *to;
        bool time;
        QStringList said;
        int kept;
        bool open;
    } table[] = {
        {"untouched", " 116 \r\n", " 116 \r\n", true, {}, 0, false},
        {"a byte that is no digit", " 116 \r\n", " 1q6 \r\n", true, {"beschädigt", "Zeile 1"}, 1, true},
        {"a digit lost by the disk", " 116 \r\n", " 106 \r\n", false, {"beschädigt", days, "106 statt 116"}, 1, true},
        {"edited by hand", " 116 \r\n", " 114 \r\n", true, {"außerhalb", days, "114 statt 116"}, 0, true},
        {"edited by hand, no day", " 1000 \r\n", " 1100 \r\n", true, {"außerhalb"}, 0, false},
        {"a sign without a meaning",
         " 1000 \r\n",
         " 10\t\x01"
         "0 \r\n",
         true,
         {"beschädigt"},
         1,
         true}};
    for (const auto& c : table) {
        SCOPED_TRACE(c.name);
        User user;
        EXPECT_EQ(user.start(), QString());
        const QByteArray good = bytesOf(user.folder.settings());
        const QStringList usual = user.log;
        user.change(c.from, c.to, c.time);
        const QByteArray damaged = bytesOf(user.folder.settings());
        const QString said = user.start([&](PA_Koben& main, Session& run) {
            run.screens.workIn<PO_Einstellungen>([&](PO_Einstellungen& form) {
                EXPECT_EQ(form.zurueckholen.visible(), c.open);
                if (c.open) form.zurueckholen.click();
            });
            Session::menu(main, "O_Einstellungen");
            EXPECT_TRUE(!c.open || !main.hinweis.visible());
        });
        for (const QString& words : c.said) EXPECT_TRUE(said.contains(words)) << said.toStdString();
        EXPECT_EQ(said.isEmpty(), c.said.isEmpty()) << said.toStdString();
        EXPECT_EQ(user.kept().size(), c.kept);
        if (c.kept) {
            EXPECT_EQ(bytesOf(user.folder.user() + user.kept().first()), damaged);
        }
        if (c.open) {
            EXPECT_EQ(bytesOf(user.folder.settings()).left(150), good.left(150));
        }
        EXPECT_EQ(user.start(), QString()) << "settled";
        EXPECT_EQ(user.log, usual) << "messages as ever";
    }
}

/// Damage that nobody looks at must not become the last good settings.
TEST(HinweisTest, dieLetztenGutenBleiben) {
    User user;
    user.start();
    const QByteArray good = bytesOf(user.folder.settings());
    user.change(" 116 \r\n", " x16 \r\n");
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(user.start().contains("15.07.2026")) << i;
    ASSERT_TRUE(QFile::remove(user.folder.settings()));
    EXPECT_TRUE(user.start().contains("nicht mehr da"));
    user.start([&](PA_Koben& main, Session& run) {
        run.screens.workIn<PO_Einstellungen>([](PO_Einstellungen& form) { form.zurueckholen.click(); });
        Session::menu(main, "O_Einstellungen");
    });
    EXPECT_EQ(bytesOf(user.folder.settings()).left(150), good.left(150));
}

TEST(HinweisTest, uhr) {
    const std::pair<QDate, const char*> table[] = {{{2026, 7, 15}, ""},       {{2026, 7, 14}, "früher"},
                                                   {{2020, 1, 1}, "früher"},  {{2027, 7, 15}, ""},
                                                   {{2027, 7, 16}, "später"}, {{2063, 1, 1}, "später"}};
    for (const auto& [day, words] : table) {
        User user;
        user.start();
        user.day = day;
        const QString said = user.start();
        EXPECT_TRUE(*words ? said.contains(QString::fromUtf8(words)) : said.isEmpty()) << said.toStdString();
        EXPECT_EQ(user.start(), QString()) << "said once";
    }
}

TEST(HinweisTest, fehlendeDatenbank) {
    User user;
    user.start();
    const QByteArray log(40'000, 'w');
    setBytes(user.folder.data() + QStringLiteral("koben20_backup_2026_07_01.zip"), "PK");
    setBytes(user.folder.data() + QStringLiteral("koben2.$$$"), bytesOf(user.folder.database()));
    ASSERT_TRUE(QFile::remove(user.folder.database()));
    setBytes(user.folder.database() + QStringLiteral("-wal"), log);
    const QString said = user.start();
    for (const char* words : {"nicht mehr", "koben2_2026-07-15-wal", "koben2.$$$"})
        EXPECT_TRUE(said.contains(QString::fromUtf8(words))) << said.toStdString();
    EXPECT_EQ(bytesOf(user.folder.data() + QStringLiteral("koben2_2026-07-15-wal")), log);
    EXPECT_TRUE(QFile::exists(user.folder.data() + QStringLiteral("koben2.$$$"))) << "it may be all there is";
    const DataFolder fresh;
    Session first(fresh);
    first.start([](PA_Koben& main) { EXPECT_FALSE(main.hinweis.visible()); });
}

TEST(HinweisTest, pruefungNachAbbruch) {
    for (const bool damaged : {false, true}) {
        User user;
        user.start();
        user.killed = true;
        shielded("left running", [&] {
            user.start([&](PA_Koben&, Session& run) {
                user.settings = run.platform.settings;
                EXPECT_TRUE(std::any_of(user.settings.begin(), user.settings.end(), [](const auto& entry) {
                    return entry.first.endsWith("/Laeuft") && entry.second == u"1";
                }));
            });
        });
        user.killed = false;
        for (auto& [key, value] : user.settings)
            if (key.endsWith("/Laeuft")) value = QStringLiteral("1");
        if (damaged) {
            QByteArray bytes = bytesOf(user.folder.database());
            const qsizetype page = bytes.size() / 3 * 2 / 4096 * 4096;  // not one that the list of tables lies on
            bytes.replace(page, 4096, QByteArray(4096, '\x55'));
            setBytes(user.folder.database(), bytes);
        }
        EXPECT_EQ(user.start().contains("beschädigt"), damaged);
        EXPECT_EQ(QFile::exists(user.folder.user() + QStringLiteral("Fehlerprotokoll.txt")), damaged);
        // checked once; what is damaged takes no copy's place
        EXPECT_EQ(user.start().section(';', 0, 0),
                  damaged ? "Beim letzten Beenden wurde keine Kopie des Tages gemacht" : "");
    }
}

TEST(HinweisTest, sperrdatei) {
    const DataFolder folder;
    folder.copyFrom(sampleFarm());
    const QString lock = folder.data() + QStringLiteral("koben.lock");
    for (const bool link : {false, true}) {
        ASSERT_TRUE(link ? QDir().rmdir(lock) && QFile::link(QStringLiteral("/gibt/es/nicht"), lock)
                         : QDir().mkdir(lock));
        if (link && !QFileInfo(lock).isSymLink()) continue;  // a shortcut bears another name
        Session run(folder);
        try {
            run.start();
            ADD_FAILURE() << "it came up";
        } catch (const DatabaseError& error) {
            expectMessage(error.message());
            EXPECT_TRUE(error.message().contains("Sperrdatei")) << error.what();
        }
    }
    QFile::remove(lock);
    setBytes(lock, "anderer Rechner");
    Ordnersperre other;
    ASSERT_TRUE(other.nehmen(folder.data())) << "left by another system";
    Session second(folder);
    second.start();
    EXPECT_TRUE(second.screens.log.join(u'\n').contains("bereits gestartet"));
}

}  // namespace
}  // namespace koben::robust

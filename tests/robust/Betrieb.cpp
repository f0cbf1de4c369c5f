#include "tests/robust/Betrieb.h"

#include <sqlite3.h>

#include <QDirIterator>

#include "core/PZ_Koben_Subs_Datenbank.h"
#include "store/FileExchange.h"

#ifdef __SANITIZE_ADDRESS__
/// Children are forked by the thousand, and each takes over what the sanitizer keeps of freed memory.
extern "C" const char* __asan_default_options() { return "quarantine_size_mb=4"; }
#endif

namespace koben::robust {

namespace {

constexpr int Sauen = 40;

void stock(Database& db) {
    Transaction action(db);
    const auto tier = [&](const QString& number, const char* art) {
        db.execute(QStringLiteral("insert into Sauen (Art, Nummer, Stallnr, Selektiert, Status, Statusabfrage) values "
                                  "('%1', '%2', 'W1', '', '', '')")
                       .arg(QString::fromUtf8(art), number));
    };
    for (int i = 1; i <= Sauen; ++i) tier(QString::number(i), "Sau");
    tier(QStringLiteral("E1"), "Eber");
    for (int i = 1; i <= 4; ++i) tier(QStringLiteral("F%1").arg(i), "Ferkel");
    for (int i = 1; i <= Sauen; ++i) {
        for (const char* day : {"01/05/2026", "06/10/2026"})
            db.execute(QStringLiteral("insert into Ferkelung (Kennung, Datum, Ferkel_Gesamt, Ferkel_Lebendig, "
                                      "Ferkel_Tot) values (%1, #%2#, 10, 10, 0)")
                           .arg(i)
                           .arg(QString::fromUtf8(day)));
        db.execute(QStringLiteral("insert into Belegung (Kennung, Datum, Deckanzahl, Ebernr) values (%1, #02/14/2026#, "
                                  "1, 'E1')")
                       .arg(i));
    }
    action.commit();
}

/// A data folder as the program leaves it at its end.
std::unique_ptr<DataFolder> newFarm(bool animals) {
    auto folder = std::make_unique<DataFolder>();
    Session first(*folder);
    first.start();
    if (animals) {
        Database db = first.koben.connect();
        stock(db);
        Werte_berechnen(db, first.koben);
    }
    first.start([](PA_Koben& main) { main.closeBox(); });
    return folder;
}

}  // namespace

QString contentOf(const Database& db) {
    QString text;
    for (const QString& name : db.tables()) {
        const Table table = db.table(QStringLiteral("select * from ") + name);
        text += QStringLiteral("[%1]\n").arg(name);
        for (int row = 0; row < table.rowCount(); ++row) {
            for (int c = 0; c < table.columnCount(); ++c)
                text += (table.isNull(row, c) ? QStringLiteral("-") : table.text(row, c)) + u'|';
            text += u'\n';
        }
    }
    return text;
}

int runs(int usual) {
    const int wanted = qEnvironmentVariableIntValue("KOBEN_ROBUST_RUNS");
    return wanted > 0 ? wanted : usual;
}

bool longRun() { return qEnvironmentVariableIntValue("KOBEN_ROBUST_RUNS") > 0; }

/// In memory where the machine has such a place: a killed process loses no more there than on a disk, and the many
/// flushes cost nothing.
static QString room() {
    const QString memory = "/dev/shm";
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/koben-XXXXXX");
}

DataFolder::DataFolder() : m_own(std::make_unique<QTemporaryDir>(room())), m_root(m_own->path()) {
    QDir().mkpath(program());
    setBytes(program() + QStringLiteral("/Hilfe.txt"), QByteArray(20000, 'h'));
    setBytes(program() + QStringLiteral("/beispiel.csv"), QByteArray(20000, 'b'));
}

void DataFolder::copyFrom(const DataFolder& other) const {
    QDir().mkpath(data());
    for (const QFileInfo& file : QDir(other.data()).entryInfoList(QDir::Files)) {
        const QString to = data() + file.fileName();
        QFile::remove(to);
        EXPECT_TRUE(QFile::copy(file.filePath(), to)) << to.toStdString();
    }
}

void DataFolder::edit(const std::function<void(Database&)>& work) const {
    Workspace workspace;
    Database db = workspace.open(database());
    work(db);
    db.close();
    workspace.closeAll();
}

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(fehlt)");
}

void setBytes(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) << path.toStdString();
}

/// A spreadsheet and a backup bear the hour of their making: of a whole one it says so.
static QByteArray comparable(const QString& path) {
    const QByteArray bytes = bytesOf(path);
    return (path.endsWith(".xlsx") || path.endsWith(".zip")) && bytes.right(22).startsWith("PK\5\6") ? "(ganz)" : bytes;
}

std::map<QString, QByteArray> files(const DataFolder& folder) {
    std::map<QString, QByteArray> found;
    for (const QFileInfo& file : QDir(folder.data()).entryInfoList(QDir::Files))
        if (!file.fileName().startsWith("koben") || file.suffix() == "zip")  // the database, its log, the lock
            found[file.fileName()] = comparable(file.filePath());
    return found;
}

State stateOf(const DataFolder& folder) {
    EXPECT_EQ(FileExchange::recover(folder.data()), QString());
    State found{QStringLiteral("(fehlt)"), files(folder)};
    if (QFile::exists(folder.database())) folder.edit([&](Database& db) { found.data = contentOf(db); });
    return found;
}

QString integrity(const QString& database) {
    sqlite3* file = nullptr;
    QString answer = QStringLiteral("nicht zu öffnen");
    if (sqlite3_open_v2(database.toUtf8().constData(), &file, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK)
        sqlite3_exec(
            file, "PRAGMA integrity_check",
            [](void* out, int, char** values, char**) {
                *static_cast<QString*>(out) = QString::fromUtf8(values[0]);
                return 0;
            },
            &answer, nullptr);
    sqlite3_close(file);
    return answer;
}

Session::Session(const DataFolder& folder) : koben(screens, platform, katalog()) {
    platform.data = folder.data();
    platform.program = folder.program();
    platform.user = folder.user();
}

Session::~Session() { Workspace::setFaultHook({}); }

void Session::task(const std::function<void()>& deed) const {
    if (begins) begins();
    deed();
    if (repeat && repeat()) deed();
    if (toMainForm) return;
    if (done) done();
    throw StopHere{};
}

void Session::start(const std::function<void(PA_Koben&)>& script) {
    koben.ended = false;
    if (script) screens.workIn<PA_Koben>(script);
    koben.open("PA_Koben");
}

void Session::frame(const char* entry, const std::vector<int>& marks,
                    const std::function<void(PE_Bewegungsdaten&)>& script) {
    start([&](PA_Koben& main) {
        main.datali.choose(marks.front());
        main.datali.mark(marks);
        screens.workIn<PE_Bewegungsdaten>([&](PE_Bewegungsdaten& frame) {
            script(frame);
            if (toMainForm) frame.cmdschließen.click();
        });
        menu(main, entry);
        if (!toMainForm) return;
        if (done) done();
        throw StopHere{};
    });
}

void Session::menu(PA_Koben& main, const char* entry) {
    auto* found = dynamic_cast<MenuEntry*>(main.find(QString::fromUtf8(entry)));
    ASSERT_NE(found, nullptr) << entry;
    ASSERT_TRUE(found->reachable()) << entry;
    found->click();
}

const DataFolder& sampleFarm() {
    static const std::unique_ptr<DataFolder> folder = newFarm(true);
    return *folder;
}

const DataFolder& emptyFarm() {
    static const std::unique_ptr<DataFolder> folder = newFarm(false);
    return *folder;
}

void nextStart(const DataFolder& folder) {
    Session run(folder);
    run.start([&](PA_Koben& main) {
        EXPECT_TRUE(main.find(u"XB_beenden")->enabled());
        EXPECT_TRUE(main.find(u"XB_neueschweine")->enabled());
        EXPECT_EQ(main.datali.rowCount() > 0, !run.screens.log.join(u'\n').contains("HINWEIS!!!"));
        main.closeBox();
        EXPECT_TRUE(main.closed());
    });
    EXPECT_FALSE(QFile::exists(folder.user() + "koben-arbeit"));
    for (const QString& line : run.screens.log.filter("! "))
        EXPECT_TRUE(line.startsWith("! HINWEIS!!!")) << line.toStdString();
    for (const char* shipped : {"Hilfe.txt", "beispiel.csv"})
        EXPECT_EQ(bytesOf(folder.data() + QString::fromUtf8(shipped)).size(), 20000) << shipped;
}

bool isMessage(const QString& text) {
    if (text.isEmpty() || !text.front().isUpper()) return false;
    for (const char* word : {"Die ", "Der ", "Das ", "Bitte ", " nicht ", " ist "})
        if (text.contains(QString::fromUtf8(word))) return true;
    return false;
}

void expectMessage(const QString& text) {
    EXPECT_TRUE(isMessage(text) && (text.contains("nicht") || text.contains("kein")) &&
                text.contains(QStringLiteral("bitte"), Qt::CaseInsensitive))
        << text.toStdString();
}

}  // namespace koben::robust

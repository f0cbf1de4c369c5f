#pragma once
// A farm on disk on which the program is run, cut off and started again: the data folder, a run of the program on it
// with the real catalogue, and what is left behind.
#include <map>

#include "app/Katalog.h"
#include "bookings/PE_Bewegungsdaten.h"
#include "herd/PA_Koben.h"
#include "tests/support/Fakes.h"
#include "tests/support/Hand.h"
#include "ui/SystemPlatform.h"

namespace koben::robust {

/// How often the environment wants the random runs made; `usual` where it says nothing (KOBEN_ROBUST_RUNS).
int runs(int usual);
bool longRun();

/// A data folder of its own beside a program folder with two shipped files. It goes with the object.
class DataFolder {
public:
    DataFolder();
    /// One that another process has made; it stays.
    explicit DataFolder(const QString& root) : m_root(root) {}
    DataFolder(const DataFolder&) = delete;
    DataFolder& operator=(const DataFolder&) = delete;
    QString root() const { return m_root; }
    QString program() const { return root() + QStringLiteral("/Programm"); }
    QString data() const { return root() + QStringLiteral("/Daten/Sauenplaner/"); }
    QString database() const { return data() + QStringLiteral("koben2.mdb"); }
    QString user() const { return root() + QStringLiteral("/Benutzer/"); }
    QString settings() const { return data() + QStringLiteral("Einstellungen.ko2"); }
    /// Takes over the files of another data folder, which nothing has open.
    void copyFrom(const DataFolder& other) const;
    /// Works on the database as another run would, and closes it.
    void edit(const std::function<void(Database&)>& work) const;

private:
    std::unique_ptr<QTemporaryDir> m_own;
    QString m_root;
};

QByteArray bytesOf(const QString& path);
void setBytes(const QString& path, const QByteArray& bytes);

/// Everything that an action may change.
struct State {
    QString data;                         ///< all rows of all tables; "(fehlt)" without a database
    std::map<QString, QByteArray> files;  ///< the other files of the data folder
    bool operator==(const State&) const = default;
};
/// Opens the database as a next start does, and reads it whole.
State stateOf(const DataFolder& folder);
QString contentOf(const Database& db);
std::map<QString, QByteArray> files(const DataFolder& folder);
/// What SQLite itself says about the file: "ok".
QString integrity(const QString& database);

/// Ends a run at a fixed point, without the closing steps of the forms.
struct StopHere {};

/// The user's screen, which tells when the program confirms something.
class LoudScreens : public FakeScreens {
public:
    std::function<void(const QString& line)> onLine;  ///< messages, tones and opening forms, as the log writes them
    void message(const QString& text) override { FakeScreens::message(text), tell(); }
    void tone(int hertz, int milliseconds) override { FakeScreens::tone(hertz, milliseconds), tell(); }
    void opened(Form& form) override { FakeScreens::opened(form), tell(); }

private:
    void tell() const {
        if (onLine) onLine(log.last());
    }
};

/// The machine of the tests, with the lock on the data folder that the program has.
class Machine : public FakePlatform {
public:
    bool lockDataFolder(const QString& folder) override { return m_system.lockDataFolder(folder); }

private:
    ui::SystemPlatform m_system{[](const QString&) { return QString(); }};
};

/// A run of the program on a data folder. One user action in it is the one that is tried: task() tells the test when
/// it begins and when it has come to its end, and stops the run there.
class Session {
public:
    explicit Session(const DataFolder& folder);
    ~Session();
    std::function<void()> begins, done;
    std::function<bool()> repeat;  ///< asked when the action is done: true to do it once more
    bool toMainForm = false;  ///< a booking has come to its end only when its frame is closed and the herd list shown

    void task(const std::function<void()>& deed) const;
    /// Starts the program; without a script it closes at once.
    void start(const std::function<void(PA_Koben&)>& script = {});
    /// Starts it and opens a kind of booking for these rows of the list.
    void frame(const char* entry, const std::vector<int>& marks, const std::function<void(PE_Bewegungsdaten&)>& script);
    /// Starts it and opens a form from the menu.
    template <class F>
    void form(const char* entry, const std::function<void(F&)>& script) {
        start([&](PA_Koben& main) {
            screens.workIn<F>(script);
            menu(main, entry);
        });
    }
    static void menu(PA_Koben& main, const char* entry);

    LoudScreens screens;
    Machine platform;
    Koben koben;
};

/// A farm with forty sows that have litters and services, a boar and four piglets; made once. Nothing has it open.
const DataFolder& sampleFarm();
/// The same without animals.
const DataFolder& emptyFarm();

/// Runs `work` in a process of its own, which ends with a failed check, a crash or a hang of the test in it.
/// True where it came to its end without any of them; otherwise says what happened.
bool shielded(const std::string& what, const std::function<void()>& work);

/// The program starts on what is left, shows its list, and ends.
void nextStart(const DataFolder& folder);

/// Within shielded(): the work goes on, a hang is reckoned from here.
void alive();

/// A message for the user: German, and not a bare text of the machine.
bool isMessage(const QString& text);
/// One that says what could not be done, and what to do.
void expectMessage(const QString& text);

}  // namespace koben::robust

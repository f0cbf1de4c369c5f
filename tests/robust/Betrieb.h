#pragma once
// A farm on disk on which the program is run, cut off and started again: the data folder, a run of the program on it
// with the real catalogue, and what is left behind.
#include <map>

#include "app/Katalog.h"
#include "bookings/PE_Bewegungsdaten.h"
#include "herd/PA_Koben.h"
#include "tests/support/Fakes.h"
#include "ui/SystemPlatform.h"

namespace koben::robust {

/// How often the environment wants the random runs made; `usual` where it says nothing (KOBEN_ROBUST_RUNS).
int runs(int usual);
bool longRun();

/// A data folder of its own beside a program folder with two shipped files. It goes with the object.
class Ordner {
public:
    Ordner();
    Ordner(const Ordner&) = delete;
    Ordner& operator=(const Ordner&) = delete;
    QString root() const { return m_root.path(); }
    QString program() const { return root() + QStringLiteral("/Programm"); }
    QString data() const { return root() + QStringLiteral("/Daten/Sauenplaner/"); }
    QString database() const { return data() + QStringLiteral("koben2.mdb"); }
    QString user() const { return root() + QStringLiteral("/Benutzer/"); }
    QString settings() const { return data() + QStringLiteral("Einstellungen.ko2"); }
    /// Takes over the files of another data folder, which nothing has open.
    void copyFrom(const Ordner& other) const;
    /// Works on the database as another run would, and closes it.
    void edit(const std::function<void(Database&)>& work) const;

private:
    QTemporaryDir m_root;
};

QByteArray bytesOf(const QString& path);
void setBytes(const QString& path, const QByteArray& bytes);

/// Everything that an action may change.
struct Stand {
    QString daten;                          ///< all rows of all tables; "(fehlt)" without a database
    std::map<QString, QByteArray> dateien;  ///< the other files of the data folder
    bool operator==(const Stand&) const = default;
};
/// Opens the database as a next start does, and reads it whole.
Stand stand(const Ordner& folder);
QString inhalt(const Database& db);
std::map<QString, QByteArray> dateien(const Ordner& folder);
/// What SQLite itself says about the file: "ok".
QString integrity(const QString& database);

/// Ends a run at a fixed point, without the closing steps of the forms.
struct HierHalt {};

/// The user's screen, which tells when the program confirms something.
class Schirm : public FakeScreens {
public:
    std::function<void(const QString& line)> onLine;  ///< messages, tones and opening forms, as the log writes them
    void message(const QString& text) override { FakeScreens::message(text), melde(); }
    void tone(int hertz, int milliseconds) override { FakeScreens::tone(hertz, milliseconds), melde(); }
    void opened(Form& form) override { FakeScreens::opened(form), melde(); }

private:
    void melde() const {
        if (onLine) onLine(log.last());
    }
};

/// The machine of the tests, with the lock on the data folder that the program has.
class Rechner : public FakePlatform {
public:
    bool lockDataFolder(const QString& folder) override { return m_system.lockDataFolder(folder); }

private:
    ui::SystemPlatform m_system{[](const QString&) { return QString(); }};
};

/// A run of the program on a data folder. One user action in it is the one that is tried: aktion() tells the test when
/// it begins and when it has come to its end, and stops the run there.
class Sitzung {
public:
    explicit Sitzung(const Ordner& folder);
    ~Sitzung();
    std::function<void()> beginnt, fertig;
    std::function<bool()> nochmal;  ///< asked when the action is done: true to do it once more
    bool bisHauptform = false;  ///< a booking has come to its end only when its frame is closed and the herd list shown

    void aktion(const std::function<void()>& tat) const;
    /// Starts the program; without a script it closes at once.
    void start(const std::function<void(PA_Koben&)>& script = {});
    /// Starts it and opens a kind of booking for these rows of the list.
    void rahmen(const char* entry, const std::vector<int>& marks,
                const std::function<void(PE_Bewegungsdaten&)>& script);
    /// The same, and in it the entry screen for a new booking.
    template <class F>
    void neu(const char* entry, const std::vector<int>& marks, const std::function<void(F&)>& script) {
        rahmen(entry, marks, [&](PE_Bewegungsdaten& frame) {
            screens.workIn<F>(script);
            frame.neu.click();
        });
    }
    /// Starts it and opens a form from the menu.
    template <class F>
    void formular(const char* entry, const std::function<void(F&)>& script) {
        start([&](PA_Koben& main) {
            screens.workIn<F>(script);
            menue(main, entry);
        });
    }
    static void menue(PA_Koben& main, const char* entry);

    Schirm screens;
    Rechner platform;
    Koben koben;
};

/// A farm with forty sows that have litters and services, a boar and four piglets; made once. Nothing has it open.
const Ordner& vorlage();
/// The same without animals.
const Ordner& leereVorlage();

/// Runs `work` in a process of its own, which ends with a failed check, a crash or a hang of the test in it.
/// True where it came to its end without any of them; otherwise says what happened.
bool abgeschirmt(const std::string& what, const std::function<void()>& work);

/// The program starts on what is left, shows its list, and ends.
void naechsterStart(const Ordner& folder);

/// Within abgeschirmt(): the work goes on, a hang is reckoned from here.
void lebt();

/// A message for the user: German, and not a bare text of the machine.
bool istMeldung(const QString& text);
/// One that says what could not be done, and what to do.
void pruefeMeldung(const QString& text);

inline void eingeben(TextBox& field, const QString& text) {
    field.enter();
    field.type(text);
    field.leave();
}

}  // namespace koben::robust

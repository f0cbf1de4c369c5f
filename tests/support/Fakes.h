#pragma once
// A run without window and machine: ports that write down what the program did, and answer as the test told them.
// TestRun puts them together with a catalogue and a fresh data folder.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <deque>
#include <map>
#include <stdexcept>

#include "core/Einstellungen.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "forms/Form.h"
#include "forms/Koben.h"

/// Makes Qt's values readable in the messages of failed tests.
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QStringList& lines, std::ostream* out) {
    for (const QString& line : lines) *out << "\n  " << line.toStdString();
}

namespace koben {

/// Writes down what the user would see, a line each:
///   + NAME / - NAME    a form opens, closes
///   ! TEXT             a message
///   ? TEXT => ja       a question (ja, nein, ok, abbrechen); ?= TEXT => VALUE an input box or file picker
///   ~ 1000 15          a tone
/// A question without an answer waiting fails the test and is answered in the negative.
class FakeScreens : public Screens {
public:
    QStringList log;
    std::deque<bool> answers;    ///< true for Yes and OK
    std::deque<QString> inputs;  ///< for input boxes and pickers
    int waiting = 0;             ///< depth of the wait cursor
    QString inputTitle;          ///< of the last input box
    std::function<void()> onBreathe;
    std::function<bool(const QString&, int)> onProgress;  ///< what and percent; false cancels

    /// What the user does in the next form that runs; afterwards the form closes. Forms without a script close at once.
    void work(std::function<void(Form&)> script) { m_scripts.push_back(std::move(script)); }
    template <class F>
    void workIn(std::function<void(F&)> script) {
        work([script = std::move(script)](Form& form) {
            auto* wanted = dynamic_cast<F*>(&form);
            ASSERT_NE(wanted, nullptr) << "another form is in front: " << form.name().toStdString();
            script(*wanted);
        });
    }
    void forget() { m_scripts.clear(); }  ///< the scripts of forms that did not open
    int scriptsLeft() const { return static_cast<int>(m_scripts.size()); }
    /// The log so far, and begins a new one.
    QStringList takeLog() { return std::exchange(log, {}); }

    void message(const QString& text) override { log += "! " + text; }
    bool yesNo(const QString& text, bool) override { return ask(text, "ja", "nein"); }
    bool okCancel(const QString& text) override { return ask(text, "ok", "abbrechen"); }
    QString input(const QString& prompt, const QString&, const QString& title) override {
        return inputTitle = title, pick(prompt);
    }
    QString openFile(const QString& filter) override { return pick(filter); }
    QString saveFile(const QString& filter, const QString&) override { return pick(filter); }
    QString folder(const QString& prompt) override { return pick(prompt); }

    void opened(Form& form) override { log += "+ " + form.name(); }
    void closing(Form& form) override { log += "- " + form.name(); }
    void closed(Form&) override {}
    void run(Form& form) override {
        if (!m_scripts.empty()) {
            const auto script = std::move(m_scripts.front());
            m_scripts.pop_front();
            script(form);
        }
        form.close();
    }

    /// A question that follows about what failed is answered with no.
    void failed(const QString& text) override {
        message(text);
        m_told = true;
    }
    void waitCursor(bool on) override { waiting += on ? 1 : -1; }
    void tone(int hertz, int milliseconds) override { log += QStringLiteral("~ %1 %2").arg(hertz).arg(milliseconds); }
    void breathe() override {
        if (onBreathe) onBreathe();
    }
    int progressInterval() const override { return 0; }
    /// Told once for each percent.
    bool progress(const QString& what, int percent) override {
        return std::exchange(m_percent, percent) == percent || !onProgress || onProgress(what, percent);
    }
    void progressEnds() override { m_percent = -1; }

private:
    bool ask(const QString& text, const char* yes, const char* no) {
        EXPECT_TRUE(m_told || !answers.empty()) << "no answer waits for: " << text.toStdString();
        bool answer = false;
        if (!answers.empty()) answer = answers.front(), answers.pop_front();
        log += "? " + text + " => " + QString::fromUtf8(answer ? yes : no);
        return answer;
    }
    QString pick(const QString& text) {
        EXPECT_FALSE(inputs.empty()) << "no input waits for: " << text.toStdString();
        QString value;
        if (!inputs.empty()) value = inputs.front(), inputs.pop_front();
        log += "?= " + text + " => " + value;
        return value;
    }

    std::deque<std::function<void(Form&)>> m_scripts;
    int m_percent = -1;
    bool m_told = false;
};

/// What a job left behind. A change of font stands where it takes effect, as "{Courier New 10 fett}";
/// "{Seite}" is a new page.
struct PrintedJob {
    QString printer;
    bool landscape = false;
    bool ended = false;
    QStringList lines;
    Sheet sheet = {};
};

class FakePrintJob : public PrintJob {
public:
    FakePrintJob(std::shared_ptr<PrintedJob> job, int failAtLine) : m_job(std::move(job)), m_failAtLine(failAtLine) {}
    void setFont(const QString& name) override { m_font = name; }
    void setSize(double points) override { m_size = points; }
    void setBold(bool on) override { m_bold = on; }
    void setItalic(bool on) override { m_italic = on; }
    void text(const QString& piece) override {
        QString style = QStringLiteral("{%1 %2").arg(m_font).arg(m_size);
        if (m_bold) style += " fett";
        if (m_italic) style += " kursiv";
        style += u'}';
        m_line += (style == m_style ? QString() : style) + piece;
        m_style = style;
    }
    void line(const QString& last) override {
        if (++m_count == m_failAtLine) throw std::runtime_error("Kein Papier");
        text(last);
        m_job->lines += std::exchange(m_line, {});
    }
    void setSheet(const Sheet& sheet) override { m_job->sheet = sheet; }
    void newPage() override { m_job->lines += "{Seite}"; }
    bool end(const Go& go) override { return m_job->ended = !go || go(50); }

private:
    std::shared_ptr<PrintedJob> m_job;
    int m_failAtLine, m_count = 0;
    QString m_font, m_style, m_line;
    double m_size = 0;
    bool m_bold = false, m_italic = false;
};

class FakePlatform : public Platform {
public:
    QDateTime clock{QDate(2026, 7, 15), QTime(8, 0)};
    QStringList printerNames{"Laser", "Nadel"};
    QStringList fontNames{"Arial", "Courier New", "Times New Roman"};
    bool printerReady = true;  ///< otherwise no job begins
    int failAtLine = 0;        ///< the line at which a job fails; 0 for none
    bool opens = true;         ///< whether the system takes files and addresses
    QStringList opened, started;
    std::vector<std::shared_ptr<PrintedJob>> jobs;
    std::map<QString, QByteArray> web;    ///< answers by path; others have no connection
    WebAnswer trouble;                    ///< what comes of asking for any other path
    QList<Drive> sticks;                  ///< beside the volume of the data folder
    std::map<QString, QString> settings;  ///< "SECTION/KEY"
    QString data, program, user;

    QDateTime now() override { return clock; }
    QStringList printers() override { return printerNames; }
    QStringList fonts() override { return fontNames; }
    std::unique_ptr<PrintJob> print(const QString& printer, bool landscape) override {
        if (!printerReady) return nullptr;
        jobs.push_back(std::make_shared<PrintedJob>(PrintedJob{printer, landscape, false, {}, {}}));
        return std::make_unique<FakePrintJob>(jobs.back(), failAtLine);
    }
    bool open(const QString& fileOrAddress) override {
        opened += fileOrAddress;
        return opens;
    }
    bool start(const QString& command) override {
        started += command;
        return opens;
    }
    WebAnswer httpGet(const QString& path, qint64, const WebProgress&) override {
        const auto found = web.find(path);
        return found == web.end() ? trouble : WebAnswer{WebAnswer::Result::Read, found->second};
    }
    WebAnswer download(const QString& path, const QString& file, qint64 most, const WebProgress& go) override {
        WebAnswer answer = httpGet(path, most, go);
        QFile out(file);
        if (answer.read() && (!out.open(QIODevice::WriteOnly) || out.write(answer.bytes) != answer.bytes.size()))
            answer.result = WebAnswer::Result::Unwritable;
        return answer;
    }
    QList<Drive> drives() override {
        constexpr qint64 gigabyte = 1'000'000'000;
        return QList<Drive>{{QStringLiteral("/"), {}, 100 * gigabyte, 500 * gigabyte}} + sticks;
    }
    QString userSetting(const QString& section, const QString& key) override {
        const auto found = settings.find(section + "/" + key);
        return found == settings.end() ? QString() : found->second;
    }
    void setUserSetting(const QString& section, const QString& key, const QString& value) override {
        settings[section + "/" + key] = value;
    }
    QString userFolder() override { return user.isEmpty() ? QDir::tempPath() + "/koben-benutzer/" : user; }
    QString programFolder() override { return program; }
    QString dataFolder() override { return data; }
    bool lockDataFolder(const QString&) override { return true; }
};

/// A run on a fresh data folder with the settings of a new installation; the folder goes with it. No database yet.
class TestRun {
public:
    TestRun() : koben(screens, platform, catalogue) {
        koben.Datenordner = platform.data = m_folder.path() + "/";
        platform.user = m_folder.path() + "/.benutzer/";
        koben.Programmordner = platform.program = koben.Datenordner;
        koben.Datenbankpfad = koben.Datenordner + "koben2.mdb";
        koben.Heute = koben.clockToday();
        Einstellungen_vorgeben(koben, platform.clock.date().year());
    }

    QString path(const QString& name) const { return m_folder.filePath(name); }
    bool exists(const QString& name) const { return QFile::exists(path(name)); }
    QByteArray bytes(const QString& name) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }
    /// A file of the data folder, decoded from Windows-1252, split at CR LF.
    QStringList lines(const QString& name) const {
        QStringList found = ausWindows1252(bytes(name)).split("\r\n");
        if (found.last().isEmpty()) found.removeLast();
        return found;
    }
    void write(const QString& name, const QString& text) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
        file.write(nachWindows1252(text));
    }

private:
    QTemporaryDir m_folder;

public:
    FakeScreens screens;
    FakePlatform platform;
    Catalogue catalogue;
    Koben koben;
};

}  // namespace koben

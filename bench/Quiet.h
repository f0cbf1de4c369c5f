#pragma once
// Ports of a run that nobody watches: forms do what a script says and close, questions are answered with Yes.
#include <functional>
#include <map>

#include "forms/Form.h"
#include "forms/Koben.h"
#include "ui/Printing.h"

namespace koben {

class QuietScreens final : public Screens {
public:
    /// What is done in a form, by its name. Forms without an entry close at once.
    std::map<QString, std::function<void(Form&)>> script;
    QString picked;  ///< what the dialog for a file to open answers
    QString typed;   ///< what input boxes answer

    void message(const QString&) override {}
    bool yesNo(const QString&, bool) override { return true; }
    bool okCancel(const QString&) override { return true; }
    QString input(const QString&, const QString&, const QString&) override { return typed; }
    QString openFile(const QString&) override { return picked; }
    QString saveFile(const QString&, const QString&) override { return {}; }
    QString folder(const QString&) override { return {}; }
    void opened(Form&) override {}
    void run(Form& form) override {
        const auto found = script.find(form.name());
        if (found != script.end()) std::function(found->second)(form);  // a copy: the work may set itself anew
        form.close();
    }
    void closed(Form&) override {}
    void waitCursor(bool) override {}
    void tone(int, int) override {}
    void breathe() override {}
};

class QuietPlatform final : public Platform {
public:
    QuietPlatform(const QString& folder, QDate today) : m_folder(folder), m_today(today) {}
    QDateTime now() override { return QDateTime(m_today, QTime(8, 0)); }
    QStringList printers() override { return {QStringLiteral("Drucker")}; }
    QStringList fonts() override { return {QStringLiteral("Courier New")}; }
    /// Every document becomes a PDF.
    std::unique_ptr<PrintJob> print(const QString&, bool landscape) override {
        return ui::beginPdf(m_folder + QStringLiteral("/druck.pdf"), landscape, {});
    }
    bool open(const QString&) override { return true; }
    bool start(const QString&) override { return true; }
    WebAnswer httpGet(const QString&, qint64, const WebProgress&) override { return {}; }
    WebAnswer download(const QString&, const QString&, qint64, const WebProgress&) override { return {}; }
    QList<Drive> drives() override { return {}; }
    QString userSetting(const QString&, const QString&) override { return {}; }
    void setUserSetting(const QString&, const QString&, const QString&) override {}
    QString programFolder() override { return m_folder; }
    QString dataFolder() override { return m_folder; }
    QString userFolder() override { return m_folder + QStringLiteral("/benutzer/"); }
    bool lockDataFolder(const QString&) override { return true; }

private:
    QString m_folder;
    QDate m_today;
};

}  // namespace koben

#pragma once
// The two ports through which forms reach the world: what the user sees, and what the machine does. The window, the
// script runner and the tests bring their own.
#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

#include "forms/Zeichnung.h"

namespace koben {

class Form;
class Grid;

/// What the user sees beside the forms themselves.
class Screens {
public:
    virtual ~Screens() = default;
    virtual void message(const QString& text) = 0;
    /// A question with Yes and No.
    virtual bool yesNo(const QString& text, bool noIsDefault = false) = 0;
    /// A question with OK and Cancel.
    virtual bool okCancel(const QString& text) = 0;
    /// An input box; "" where nothing was entered or it was cancelled. Without a title it bears the program's name.
    virtual QString input(const QString& prompt, const QString& preset = {}, const QString& title = {}) = 0;
    /// A file to open; filter as "CSV-Dateien|*.CSV|Alle Dateien|*.*". "" for no choice.
    virtual QString openFile(const QString& filter) = 0;
    virtual QString saveFile(const QString& filter, const QString& preset) = 0;
    virtual QString folder(const QString& prompt) = 0;

    /// A form begins (before its load); shown() before its first activation; run() returns once it is closed; closing()
    /// comes at the moment at which it closes, while the handler that closed it may still go on; closed() when it is
    /// about to be destroyed.
    virtual void opened(Form& form) = 0;
    virtual void shown(Form&) {}
    virtual void run(Form& form) = 0;
    virtual void closing(Form&) {}
    virtual void closed(Form& form) = 0;

    /// An action reached the disk; the name is what the user knows it by.
    virtual void done(const QString&) {}
    /// What a handler threw, after its work was rolled back; the form stays with what was typed.
    virtual void failed(const QString& text) { message(text); }

    /// Shows how a document will stand on paper, from where it can be printed; `name` is offered for a file of it.
    /// False where nobody can look at it: then it is printed as it is.
    virtual bool preview(const QString& name, const Drawing& document) {
        Q_UNUSED(name)
        Q_UNUSED(document)
        return false;
    }

    virtual void waitCursor(bool on) = 0;
    virtual void tone(int hertz, int milliseconds) = 0;
    /// Lets progress be painted during long work; takes no input but a cancel.
    virtual void breathe() = 0;
    /// Tells how far long work is: a bar with a cancel, which appears only where the work takes longer. Comes often;
    /// true to go on, false once the user has cancelled. progressEnds() follows in any case. Use the class Progress.
    virtual bool progress(const QString& what, int percent) {
        Q_UNUSED(what)
        Q_UNUSED(percent)
        return true;
    }
    virtual void progressEnds() {}
    /// Milliseconds between two questions of a Progress.
    virtual int progressInterval() const { return 50; }
};

/// A volume that can be read, such as a disk or a stick.
struct Drive {
    QString root;  ///< where its files begin, with a separator at the end
    QString name;  ///< the volume's own name, "" for none
    qint64 freeBytes = 0, totalBytes = 0;
    bool readOnly = false;
};

/// What came of asking the update server.
struct WebAnswer {
    enum class Result {
        Read,
        NoConnection,  ///< no server there, or it broke off
        TimedOut,
        Refused,     ///< by the server, or an address that is not asked
        TooLarge,    ///< more than was wanted
        Unwritable,  ///< the file to save
        GivenUp      ///< by the user
    };
    Result result = Result::NoConnection;
    QByteArray bytes = {};  ///< what was read, unless it went into a file
    QString reason = {};    ///< why it was not read, as a part of a German sentence: "der Server antwortet nicht"
    bool read() const { return result == Result::Read; }
};

/// Told now and then how many bytes have come, and of how many, -1 where the server does not say; false gives up.
using WebProgress = std::function<bool(qint64 come, qint64 all)>;

/// What the machine does.
class Platform {
public:
    virtual ~Platform() = default;
    virtual QDateTime now() = 0;
    virtual QStringList printers() = 0;
    virtual QStringList fonts() = 0;
    /// A job on a printer by name ("" the standard one); nothing where it cannot begin.
    virtual std::unique_ptr<PrintJob> print(const QString& printer, bool landscape) = 0;
    /// Writes a document as PDF, a drawing as PNG. False, with what stood at `path` before, where that cannot be done.
    virtual bool writePdf(const Drawing& document, const QString& path) {
        Q_UNUSED(document)
        Q_UNUSED(path)
        return false;
    }
    virtual bool writePng(const Sketch& sketch, const QString& path) {
        Q_UNUSED(sketch)
        Q_UNUSED(path)
        return false;
    }
    /// Puts a drawing as a picture, or a list with its titles as cells, where other programs paste from.
    virtual void copyPicture(const Sketch& sketch) { Q_UNUSED(sketch) }
    virtual void copyCells(const Grid& list) { Q_UNUSED(list) }
    /// Hands a file or address to the system; false where nothing takes it.
    virtual bool open(const QString& fileOrAddress) = 0;
    virtual bool start(const QString& command) = 0;
    /// Reads a file of the update server by its path there ("/Sauenplaner/daten.txt"), of at most so many bytes.
    virtual WebAnswer httpGet(const QString& path, qint64 most, const WebProgress& go) = 0;
    /// Saves such a file. It takes the place of `file` once it is whole; otherwise that is as before.
    virtual WebAnswer download(const QString& path, const QString& file, qint64 most, const WebProgress& go) = 0;
    /// The volumes of this machine that the user keeps files on, the one with the data folder among them.
    virtual QList<Drive> drives() = 0;
    /// The user's own settings (column widths, window places): application "KOBEN", a section, a key.
    virtual QString userSetting(const QString& section, const QString& key) = 0;
    virtual void setUserSetting(const QString& section, const QString& key, const QString& value) = 0;
    /// The folder for files of the user's own, with a separator at the end; it may have to be made. Not the data
    /// folder, whose files go into backups and to other machines.
    virtual QString userFolder() = 0;
    virtual QString programFolder() = 0;  ///< folder of the program's shipped files
    virtual QString dataFolder() = 0;     ///< where the data belong on this machine
    /// Takes the data folder for this process; false where another instance holds it.
    virtual bool lockDataFolder(const QString& folder) = 0;
    /// The text that other programs have put where one pastes from; "" where there is none.
    virtual QString pasted() { return {}; }
};

}  // namespace koben

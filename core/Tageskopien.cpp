#include "core/Tageskopien.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QStorageInfo>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "core/Ordnersperre.h"
#include "core/PZ_Koben_Subs.h"
#include "store/Files.h"

namespace koben {
namespace {

using namespace std::chrono_literals;

constexpr qsizetype KeptDays = 7, KeptWeeks = 4;
constexpr qint64 Reserve = 16'000'000;  // bytes of the disk that a copy leaves to the herd itself
constexpr auto Patience = 500ms, OthersPatience = 60'000ms, Pause = 100ms;

const QString Head = QStringLiteral("koben2_"), Ending = QStringLiteral(".mdb"), Draft = QStringLiteral(".neu");

/// Those of these copies that are no longer kept, as of a day. One of a later day is another clock's: it stays.
QStringList outdated(QStringList names, QDate today) {
    QStringList gone;
    qsizetype days = 0, weeks = 0;
    QDate monday;  // of the week that the last kept one is of
    for (auto name = names.crbegin(); name != names.crend(); ++name) {
        const QDate day = Tageskopietag(*name), begin = day.addDays(1 - day.dayOfWeek());
        if (day > today) continue;
        if (days++ < KeptDays || (begin != monday && weeks++ < KeptWeeks))
            monday = begin;
        else
            gone.append(*name);
    }
    return gone;
}

QString native(const QString& path) { return QDir::toNativeSeparators(path); }

QString failure(const QString& reason) {
    return QStringLiteral("Beim letzten Beenden wurde keine Kopie des Tages gemacht; die früheren sind noch da. ") +
           reason;
}

QString notWritten(const QString& folder, const QString& reason) {
    return failure(
        fileFailure(QStringLiteral("In den Ordner %1 kann nicht geschrieben werden").arg(native(folder)), reason));
}

/// What killed programs left of their drafts.
void clearDrafts(const QString& folder) {
    for (const QString& name : QDir(folder).entryList({QStringLiteral("koben2*") + Draft + u'*'}, QDir::Files))
        QFile::remove(folder + name);
}

/// A copy that fills the disk would take the room from the herd that is worked on.
QString lackOfRoom(const QString& database, const QString& folder) {
    const qint64 needed = QFileInfo(database).size() + Reserve;
    const qint64 room = QStorageInfo(folder).bytesAvailable();
    if (room < 0 || room >= needed) return {};
    const QLocale german(QStringLiteral("de_DE"));
    const auto size = [&](qint64 bytes) { return german.formattedDataSize(bytes, 0, QLocale::DataSizeSIFormat); };
    return failure(QStringLiteral("Im Ordner %1 ist zu wenig Platz: Frei sind %2, gebraucht werden %3. Bitte schaffen "
                                  "Sie dort Platz.")
                       .arg(native(folder), size(room), size(needed)));
}

/// The draft, whole and on the disk; "" or what went wrong.
QString makeDraft(const QString& database, const QString& folder, const QString& draft) {
    clearFileReason();
    if (!QDir().mkpath(folder))
        return notWritten(folder, QFileInfo(QDir::cleanPath(folder)).isFile()
                                      ? QStringLiteral("an dieser Stelle liegt eine Datei")
                                      : fileReason());
    if (const QString lack = lackOfRoom(database, folder); !lack.isEmpty()) return lack;
    Workspace workspace;
    try {
        workspace.copy(database, draft, {}, false);
        if (const auto found = workspace.check(draft, Check::Quick); !found || !found->isEmpty())
            return failure(
                QStringLiteral("Die Datenbank ist beschädigt. Bitte geben Sie nichts mehr ein, und sehen Sie "
                               "unter Optionen / Datenbank prüfen nach."));
    } catch (const DatabaseError& error) {
        return failure(error.message());
    }
    const QString reason = flushFile(draft);
    return reason.isEmpty() ? QString() : notWritten(folder, reason);
}

/// The one copy of this process that is in the making.
class Nebenlauf {
public:
    ~Nebenlauf() { wait(); }

    void begin(const Tageskopieauftrag& job) {
        wait();
        m_done = false;
        m_thread = std::thread([this, job] {
            work(job);
            const std::lock_guard lock(m_mutex);
            m_done = true;
            m_changed.notify_all();
        });
        bool done = false;
        {
            std::unique_lock lock(m_mutex);
            done = m_changed.wait_for(lock, Patience, [this] { return m_done; });
        }
        if (done) wait();
    }

    void wait() {
        if (m_thread.joinable()) m_thread.join();
    }

private:
    static void work(const Tageskopieauftrag& job) {
        write(job.note,
              failure(QStringLiteral("KOBEN oder der Rechner wurde beendet, bevor sie fertig war. Beim nächsten "
                                     "Beenden wird wieder eine gemacht.")));
        const auto otherAtWork = [&] { return !job.alone && Ordnersperre::held(job.folder); };
        for (auto waited = 0ms; otherAtWork() && waited < OthersPatience; waited += Pause)
            std::this_thread::sleep_for(Pause);
        QString said;
        try {
            said = Tageskopie_machen(job.database, job.folder, job.day);
        } catch (const std::exception&) {
            said = failure(programFault());
        }
        said.isEmpty() ? static_cast<void>(QFile::remove(job.note)) : write(job.note, said);
    }

    static void write(const QString& path, const QString& text) {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly)) file.write(text.toUtf8());
    }

    std::thread m_thread;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_done = true;
};

Nebenlauf& nebenlauf() {
    static Nebenlauf one;
    // what it works with goes at the end of the process: it must have come to its own end before
    static const bool known = (qAddPostRoutine(Tageskopie_abwarten), true);
    Q_UNUSED(known)
    return one;
}

}  // namespace

QString Tageskopienordner(const QString& dataFolder) {
    return QDir::cleanPath(dataFolder) + QStringLiteral("-Tagesstände/");
}

QString Tageskopiename(QDate day) { return Head + day.toString(Qt::ISODate) + Ending; }

QDate Tageskopietag(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    if (!name.startsWith(Head) || !name.endsWith(Ending)) return {};
    return QDate::fromString(name.mid(Head.size()).chopped(Ending.size()), Qt::ISODate);
}

QStringList Tageskopien(const QString& folder) {
    QStringList names = QDir(folder).entryList({Head + u'*' + Ending}, QDir::Files, QDir::Name);
    names.removeIf([](const QString& name) { return !Tageskopietag(name).isValid(); });
    return names;
}

QString Tageskopie_machen(const QString& database, const QString& folder, QDate day) {
    const QString draft = folder + QStringLiteral("koben2_%1").arg(QCoreApplication::applicationPid()) + Draft;
    QString said = makeDraft(database, folder, draft);
    if (said.isEmpty()) {
        const QString reason = replaceFile(draft, folder + Tageskopiename(day));
        if (!reason.isEmpty()) said = notWritten(folder, reason);
    }
    QFile::remove(draft);
    if (!said.isEmpty()) return said;
    for (const QString& name : outdated(Tageskopien(folder), day)) QFile::remove(folder + name);
    return {};
}

void Tageskopie_beginnen(const Tageskopieauftrag& job) {
    if (job.alone) clearDrafts(job.folder);
    nebenlauf().begin(job);
}

void Tageskopie_abwarten() { nebenlauf().wait(); }

QString Tageskopie_meldung(const QString& folder, const QString& note) {
    QFile file(note);
    if (!file.open(QIODevice::ReadOnly)) return {};
    if (Ordnersperre::held(folder)) return {};
    const QString said = QString::fromUtf8(file.readAll());
    file.close();
    file.remove();
    return said;
}

}  // namespace koben

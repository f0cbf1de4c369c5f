#include "core/Tageskopien.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "store/Files.h"

namespace koben {
namespace {

constexpr qsizetype KeptDays = 7, KeptWeeks = 4;

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

QString Tageskopie_machen(Workspace& workspace, const QString& database, const QString& folder, QDate day) {
    clearFileReason();
    if (!QDir().mkpath(folder)) return fileReason();
    const QString draft = folder + QStringLiteral("koben2") + Draft;
    try {
        workspace.copy(database, draft, {}, false);
    } catch (const DatabaseError& error) {
        QFile::remove(draft);
        return error.message();
    }
    QString reason = flushFile(draft);
    if (reason.isEmpty()) reason = replaceFile(draft, folder + Tageskopiename(day));
    if (!reason.isEmpty()) {
        QFile::remove(draft);
        return reason;
    }
    for (const QString& name : outdated(Tageskopien(folder), day)) QFile::remove(folder + name);
    return {};
}

}  // namespace koben

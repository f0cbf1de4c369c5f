#pragma once
// What a file needs to be safe: flushed, put in place in one step, and a reason in German where that fails. Nothing of
// an operating system shows here.
#include <QByteArray>
#include <QString>

namespace koben {

/// Why the last call on a file failed, as a part of a sentence: "der Datenträger ist voll". Ask at once.
QString fileReason();
/// The same of a number as C's errno has it, which a library kept.
QString fileReason(int code);
/// Forgets what failed so far: before a step for whose reason is asked.
void clearFileReason();

/// Each of these gives "" where it was done, otherwise the reason as fileReason() words it.

/// Waits until a file is on the disk.
QString flushFile(const QString& path);
/// Waits until a folder's list of files is on the disk.
QString flushFolder(const QString& path);
/// Puts the finished file `from` in the place of `to`, on the same disk, in one step that a power cut cannot halve.
/// Where it fails `to` is as before, and `from` is still there. Without a flush the step is one for other programs, but
/// not for a power cut: for what is easily made again.
QString replaceFile(const QString& from, const QString& to, bool flush = true);
/// A folder takes another name on the same disk, in one step; there must be nothing of that name.
QString renameFolder(const QString& from, const QString& to);
/// Gives a file a second name on the same disk, which must not exist; where the disk knows no second names, a copy.
/// Whatever then takes the first name's place, the content stays under the second.
QString keepFile(const QString& path, const QString& name);
/// Writes a file whole or not at all: on failure the one before stands.
QString writeFile(const QString& path, const QByteArray& bytes);
/// The same through a draft of this name in the same folder. A killed program may leave the draft; unlike one of a name
/// by chance it can be known, and removed, later.
QString writeFileThrough(const QString& draft, const QString& path, const QByteArray& bytes);

/// The whole sentence for the user: `what` names the problem ("Die Datei X kann nicht geschrieben werden").
QString fileFailure(const QString& what, const QString& reason);

}  // namespace koben

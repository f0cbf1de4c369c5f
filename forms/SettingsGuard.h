#pragma once
// Watches over the settings file: the dates of the whole herd rest on some of its lines. A checksum of the file, as it
// was last written, stays in the user's own settings, and the last good file in the user's own folder.
#include "forms/Koben.h"
#include "forms/RunState.h"

namespace koben {

class SettingsGuard {
public:
    explicit SettingsGuard(Koben& koben);

    /// Reads the file over the values of a new installation; one that is missing is written. What the user should know
    /// of it, a sentence each: that it was damaged, edited or missing, and which values that dates rest on have
    /// changed. A damaged file is kept under a name of its own in the user's folder. "" in `failed`, or the reason why
    /// a missing file could not be written.
    QStringList load(int currentYear, QString& failed);
    /// Writes the file, whole or not at all. "" or the reason (German) why the old one was kept. `agreed`: the user has
    /// seen the values and wants them; until then the last good file stays the one from before the damage.
    QString save(bool agreed = false);

    /// The file came from a backup, by the user's wish: it counts as the one written last, and as the last good one.
    void adopt();

    /// True while settings that were damaged, missing or changed from outside are neither taken back nor agreed to.
    bool isOpen() const;
    /// The day of the last good file where it can be taken back; "" otherwise.
    QString lastGood() const;
    /// Takes the last good file back and writes it. "" or the reason.
    QString takeBack();

private:
    enum class Finding { AsLeft, Older, Edited, Damaged, Missing };
    Finding look(const QByteArray& bytes) const;
    QString tell(Finding finding, const QByteArray& bytes);
    QString changedDays() const;
    QString keepDamaged(const QByteArray& bytes) const;
    void remember(const QByteArray& bytes, const Variablen& values);
    void keepGood(const QByteArray& bytes);
    QString file() const;
    QString goodFile() const;
    QString fileTime() const;

    Koben& m_koben;
    RunState m_state;
};

}  // namespace koben

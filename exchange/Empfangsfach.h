#pragma once
// What phones have handed over in the house's network and the user has not read in yet: each hand-over a file of its
// own in the folder "Hausnetz" of the data folder, on the disk before the phone hears that it has arrived.
#include <QDateTime>
#include <QString>
#include <mutex>
#include <optional>
#include <vector>

#include "exchange/Hausnetz.h"

namespace koben {

class Empfangsfach {
public:
    /// A hand-over that waits, as its file's name tells it.
    struct Eingang {
        QString name;
        QDateTime wann;
        QString von;
    };

    explicit Empfangsfach(const QString& dataFolder) : m_data(dataFolder), m_folder(dataFolder + "Hausnetz/") {}

    /// Keeps the bytes of a hand-over, unless they are no file of bookings. What waits already to the byte is not kept
    /// twice: a phone that did not hear the answer sends again. May come from any thread.
    Quittung keep(const QByteArray& bytes, const QString& from, const QDateTime& when);
    /// In the order in which they came.
    std::vector<Eingang> waiting() const;
    QByteArray bytes(const Eingang& entry) const;

    /// Puts one where the import looks for the device's file. What lay there is kept among those read in. "" or why
    /// not.
    QString offer(const Eingang& entry);
    /// Puts one among those read in, of which the newest stay. "" or why not.
    QString putAway(const Eingang& entry);

private:
    QString keepOther(const QByteArray& offered) const;
    void thinOut() const;

    const QString m_data, m_folder;
    std::mutex m_mutex;
};

}  // namespace koben

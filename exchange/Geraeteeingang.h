#pragma once
// The road of the device's file into the herd, one for the import screen and for its preview: what the user is told and
// asked on it, the one action, the list, and the booking frame behind it.
#include <optional>

#include "exchange/Geraeteplan.h"
#include "forms/Koben.h"

namespace koben {

class Geraeteeingang {
public:
    explicit Geraeteeingang(Koben& koben) : m_koben(koben) {}

    /// Whether the file lies in the data folder. Where it does not the user is told.
    bool present() const;
    /// Asks where an animal may get several bookings of a kind on a day; false to stop.
    bool agreed(bool onceADay) const;
    /// The file, or nothing where it is refused; the user has then been told why.
    std::optional<Geraetedatei> read() const;
    /// Books what is new and wanted, keeps and shows the list, and leads to the booking frame.
    void take(const Database& db, const Geraetedatei& file, bool onceADay, const Geraetewahl& wanted = {});

private:
    QString book(const Database& db, const Geraetedatei& file, bool onceADay, const Geraetewahl& wanted);
    QString keepList(const QString& list);
    void showList(const QString& reason);

    Koben& m_koben;
};

}  // namespace koben

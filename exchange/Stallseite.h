#pragma once
// The page for the phone in the barn, beside the exchange file: the shipped page (barn/seite) with the farm's data
// inside.
#include <optional>

#include "exchange/Geraeteexport.h"
#include "forms/Koben.h"

namespace koben {

extern const QString Stallseite;  ///< its name in the data folder

/// When the page in a data folder was made, by the clock of the journal; nothing where there is none.
std::optional<QDateTime> barnPageMade(const QString& folder);

/// Writes the page whole or not at all: the exchange file, the work of the next days and what is overdue, the
/// medicines, and the distances that entries are checked by. The farm's mark, by which a browser tells her bookings
/// from those of others, is that of the page before. "", or a message for the user.
QString writeBarnPage(Koben& koben, const Database& db, const Exportauswahl& choice, const QByteArray& exchangeFile);

/// The same in two steps: the page in memory, with the mark of the one that is there; and that page in its place.
QString composeBarnPage(Koben& koben, const Database& db, const Exportauswahl& choice, const QByteArray& exchangeFile,
                        QByteArray& page);
QString keepBarnPage(Koben& koben, const QByteArray& page);

/// The page as the desk serves it itself: one that may send to where it came from, and nowhere else.
QByteArray servedPage(QByteArray page);

}  // namespace koben

#pragma once
// The designed sow card: her number and its QR code large, facts of the user's choice, the curve of her litters against
// the herd's, remarks in red.
#include <QDate>
#include <QHash>
#include <QRectF>
#include <QStringList>
#include <functional>
#include <map>
#include <span>
#include <vector>

#include "core/Variablen.h"
#include "forms/Zeichnung.h"

namespace koben {

/// A fact that a card can tell.
struct Kartenfeld {
    const char* id;
    const char* caption;
};
/// All of them, in the order in which they are offered.
std::span<const Kartenfeld> Kartenfelder();
/// "" for an id that is none.
QString Kartenfeldname(const QString& id);
/// The ids that a card tells where the user has chosen nothing.
QStringList Kartenfelder_vorgabe();

/// What one card is made of.
struct Kartenblatt {
    struct Wurf {
        int nummer = 0;
        QDate tag;
        int lebend = 0, tot = 0;
        int abgesetzt = -1;  ///< -1 before a weaning
    };
    struct Bemerkung {
        QDate tag;    ///< invalid for one that belongs to no day
        QString was;  ///< "Ferkelung"
        QString text;
    };
    QString nummer;
    QHash<QString, QString> fakten;      ///< by id of the field; without those that she has not
    std::vector<Wurf> wuerfe;            ///< by day
    std::vector<Bemerkung> bemerkungen;  ///< what holds on always first, then the newest
};

/// Live born piglets a litter of the herd, by number of the litter.
using Herdenkurve = std::map<int, double>;

/// The cards of some sows, read by a few statements for all of them.
class Kartenblaetter {
public:
    /// `go` is asked now and then; where it says no, some of it is missing.
    Kartenblaetter(const Database& db, const QString& heute, const std::vector<qint64>& sows,
                   const std::function<bool()>& go);
    const Kartenblatt& of(qint64 sow) const;
    /// Over the litters of the latest three years.
    const Herdenkurve& herd() const { return m_herd; }

private:
    void readSows(const Database& db, const std::vector<qint64>& sows);
    void readLitters(const Database& db, const std::vector<qint64>& sows, const std::function<bool(qint64)>& go);
    void readRemarks(const Database& db, const std::vector<qint64>& sows, const std::function<bool()>& go);
    void readHerd(const Database& db, const QString& heute);
    QHash<qint64, Kartenblatt> m_cards;
    Herdenkurve m_herd;
};

/// A whole A4 page, or half of one.
enum class Kartengroesse { A4, A5 };

/// What can be drawn on within the margins of an A4 page, in millimetres.
inline constexpr QSizeF Kartenseite{183, 273};

/// Draws a card into its box on the page.
std::vector<DrawItem> drawKartenblatt(const Kartenblatt& card, const Herdenkurve& herd, const QStringList& fields,
                                      Kartengroesse size, const QRectF& box);

}  // namespace koben

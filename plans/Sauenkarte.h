#pragma once
// The sow card: all cycles of a sow on one page, and ruled forms for what comes next.
#include <QDate>
#include <QHash>
#include <functional>
#include <vector>

#include "core/Variablen.h"
#include "forms/Ports.h"

namespace koben {

/// What the card's head says of the sow.
struct Kartensau {
    qint64 id = 0;
    QString number, box, group, birth, earTag, tattoo, breed;
    QDate lastService;
};

/// The bookings of some sows that the cards need, each kind in the order of its days.
class Kartenbuchungen {
public:
    struct Service {
        QDate day;
        QString boar;
    };
    struct Farrowing {
        QDate day;
        QString litter, live, dead;  ///< "" for Null
    };
    struct Loss {
        QDate day;
        qint64 piglets;
        int reason;  ///< 0 to 3: column of the card; -1 for none
    };
    struct Weaning {
        QDate day;
        QString piglets;
    };
    struct Bookings {
        std::vector<Service> services;
        std::vector<Farrowing> farrowings;
        std::vector<Loss> losses;
        std::vector<Weaning> weanings;
    };

    /// Reads four tables once for all these sows; `go` is asked now and then, and where it says no, some are missing.
    Kartenbuchungen(const Database& db, const std::vector<qint64>& sows,
                    const std::function<bool(qint64 rows)>& go = {});
    const Bookings& of(qint64 sow) const;

private:
    QHash<qint64, Bookings> m_bookings;
};

/// The condition that `field` is one of these sows; of many, that it is a sow in stock.
QString Kartensauen(const QString& field, const std::vector<qint64>& sows);

/// Days that the settings plan with.
struct Kartentage {
    int pregnancy, suckling, untilService;
    explicit Kartentage(const Variablen& v);
};

/// What a document of cards is begun with: its font, and that each card stays on its page.
void Sauenkarten_beginnen(PrintJob& job);
/// Prints one card on the current page.
void Sauenkarte_drucken(PrintJob& job, const Kartensau& sow, const Kartenbuchungen::Bookings& bookings,
                        const Kartentage& days);

}  // namespace koben

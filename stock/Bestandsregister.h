#pragma once
// The rules of the herd register: stocks, movements, and the pages of text.
#include <QStringList>
#include <array>
#include <optional>
#include <vector>

#include "forms/Koben.h"

namespace koben {

/// A period by its days as dd.mm.yyyy, both included.
struct Registerzeit {
    QString from, to;
};

/// The stock on one day. An animal that leaves on the day still counts.
struct Registerbestand {
    qint64 sows = 0, boars = 0, fattening = 0;
    std::optional<qint64> piglets;  ///< only where the register heeds them
};

Registerbestand Registerbestand_zaehlen(const Database& db, const QString& day, bool piglets);

/// One line of the register.
struct Bestandsbewegung {
    QString day = {};
    QString in = {}, out = {};
    QString kind = {};
    QString number = {}, earTag = {};
    QString partner = {}, remark = {};
};

/// All movements of the period: by day; within a day arrivals, departures, then the piglets' ones. `added` counts the
/// animals of one day, kind and partner together. Not all of them where the user has cancelled.
std::vector<Bestandsbewegung> Bestandsbewegungen_lesen(const Database& db, const Registerzeit& period, bool piglets,
                                                       bool added, Progress& progress);
/// The reading in steps of its progress.
inline constexpr int Registerschritte = 500;

/// What stands at the top of every page.
struct Registerkopf {
    std::array<QString, 5> farm;  ///< keeper, street, town, seat, registration number
    Registerzeit period;
    Registerbestand before, after;
};

/// The register as text, fifty movements a page, a line "#" between two pages.
QString Bestandsregister_schreiben(const Registerkopf& head, const std::vector<Bestandsbewegung>& movements);

}  // namespace koben

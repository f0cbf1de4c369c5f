// Brings the derived fields of the herd up to date. The result is that of a walk over all animals; the work is what has
// changed since the last one, as the change log of the file knows it. Where the log cannot tell (a new file, other
// settings, very many changes) the whole herd is walked: the bookings are streamed once and gathered per animal.
#include <algorithm>

#include "core/PZ_Koben_Subs_Datenbank.h"
#include "core/Zyklusdaten.h"

namespace koben {
namespace {

bool deriveAll(const Database& db, const Zyklusvorgaben& vorgaben, const CycleProgress& go) {
    const Zyklusbuchungen bookings = readBookings(db, Umfang(), vorgaben.lastDay);
    if (!goesOn(go, 30)) return false;
    const std::vector<Tierwerte> now = derive(bookings, vorgaben);
    return goesOn(go, 40) && writeValues(db, readStored(db, Umfang()), now, go);
}

/// The noted animals, and the boars whose services have become more or fewer.
bool deriveChanged(const Database& db, const Zyklusvorgaben& vorgaben, std::vector<qint64> ids,
                   const CycleProgress& go) {
    const std::vector<CountedBoar> boars = readBoars(db, servicesByBoar(db));
    for (const CountedBoar& boar : boars)
        if (boar.stored != boar.eber.deckungen) ids.push_back(boar.eber.tier);
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    std::vector<Tierwerte> stored, now;
    for (const auto& group : groups(ids)) {
        const Umfang umfang(group);
        Zyklusbuchungen bookings = readBookings(db, umfang, vorgaben.lastDay);
        for (const CountedBoar& boar : boars)
            if (std::binary_search(group.begin(), group.end(), boar.eber.tier)) bookings.eber.push_back(boar.eber);
        const auto add = [](std::vector<Tierwerte>& all, const std::vector<Tierwerte>& some) {
            all.insert(all.end(), some.begin(), some.end());
        };
        add(now, derive(bookings, vorgaben));
        add(stored, readStored(db, umfang));
        if (!goesOn(go, static_cast<int>(50 * now.size() / (now.size() + ids.size())))) return false;
    }
    return writeValues(db, stored, now, go);
}

const QString noBasis = QStringLiteral("-");  // the status hangs on no setting

}  // namespace

bool Werte_berechnen(const Database& db, const Variablen& v, const CycleProgress& go) {
    if (db.looksOnly()) return true;
    Transaction action(db);
    ChangeLog log(db, ChangeLog::Purpose::Values);
    const Zyklusvorgaben vorgaben(v);
    auto ids = changedAnimals(log, vorgaben.basis());
    if (!(ids ? deriveChanged(db, vorgaben, std::move(*ids), go) : deriveAll(db, vorgaben, go))) return false;
    log.settle(vorgaben.basis());
    action.commit();
    return true;
}

void Werte_vormerken(const Database& db) { ChangeLog(db, ChangeLog::Purpose::Values).expect(); }

void Werte_nachholen(const Database& db, const Variablen& v) {
    if (ChangeLog(db, ChangeLog::Purpose::Values).expected()) Werte_berechnen(db, v);
}

bool statussetzen(const Database& db, const CycleProgress& go) {
    if (db.looksOnly()) return true;
    Transaction action(db);
    ChangeLog log(db, ChangeLog::Purpose::Status);
    const auto ids = changedAnimals(log, noBasis);
    std::vector<StoredStatus> animals;
    if (ids)
        for (const auto& group : groups(*ids)) {
            const auto some = readStatus(db, Umfang(group));
            animals.insert(animals.end(), some.begin(), some.end());
        }
    else
        animals = readStatus(db, Umfang());
    if (!writeStatus(db, animals, go)) return false;
    log.settle(noBasis);
    action.commit();
    return true;
}

}  // namespace koben

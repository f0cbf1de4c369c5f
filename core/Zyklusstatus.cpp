// The status half of the cycle engine: one code for every sow, from her latest days and her newest check.
#include <QHash>
#include <algorithm>

#include "core/PZ_Koben_Subs_Datenbank.h"
#include "core/Umfang.h"
#include "store/Collation.h"

namespace koben {
namespace {

/// The status codes; a place in this list stands for the code.
const QString kodes[] = {QStringLiteral(""),      QStringLiteral("B"), QStringLiteral("B_T"),
                         QStringLiteral("B_NTG"), QStringLiteral("S"), QStringLiteral("G")};
enum Kode : int { unbekannt = -1, ohne, belegt, tragend, nichtTragend, saeugend, guest };

int kodeVon(const Statement& row, int column) {
    if (row.isNull(column)) return unbekannt;
    const auto* hit = std::find(std::begin(kodes), std::end(kodes), row.text(column));
    return hit == std::end(kodes) ? unbekannt : static_cast<int>(hit - kodes);
}

/// An animal with a service or a farrowing: the days that its status hangs on.
struct Zyklus {
    qint64 id = 0;
    qint32 belegung = 0, ferkelung = 0, absetzung = 0;
    bool zaehlt = false;  ///< a sow in stock whose status is not ignored
    int gespeichert = unbekannt;
    qint32 kontrolle = 0;  ///< newest check, with its booking and result
    qint64 kontrolleId = 0;
    bool negativ = false;
};

std::vector<Zyklus> liesZyklen(const Database& db, const Umfang& umfang) {
    std::vector<Zyklus> animals;
    const QString which = umfang.alle() ? QStringLiteral(" where ") + abgeleitet
                                        : umfang.bedingung(QStringLiteral("where"), QStringLiteral("ID"));
    Statement row = db.prepare(QStringLiteral("select ID, L_Belegung, L_Ferkelung, L_Absetzung, Abgangsdatum, Art, "
                                              "Statusabfrage, Status from Sauen") +
                               which);
    row.bind(umfang.werte());
    while (row.next()) {
        Zyklus z{row.integer(0), row.day(1), row.day(2), row.day(3)};
        if (umfang.alle() && z.belegung == 0 && z.ferkelung == 0) continue;  // liesVeraltete finds these
        z.zaehlt =
            row.isNull(4) && equalTexts(row.text(5), u"Sau") && (row.isNull(6) || !equalTexts(row.text(6), u"N"));
        z.gespeichert = kodeVon(row, 7);
        animals.push_back(z);
    }
    return animals;
}

/// Finds the newest check of every sow with a service newer than her farrowing; of several on one day the first
/// entered.
void sucheKontrollen(const Database& db, const Umfang& umfang, std::vector<Zyklus>& animals) {
    QHash<qint64, size_t> places;
    for (size_t i = 0; i < animals.size(); ++i) {
        if (animals[i].zaehlt && animals[i].belegung > animals[i].ferkelung) places.insert(animals[i].id, i);
    }
    if (places.isEmpty()) return;
    Statement row = db.prepare(QStringLiteral("select Kennung, Datum, ID, Trächtig from Trächtigkeit") +
                               umfang.bedingung(QStringLiteral("where"), QStringLiteral("Kennung")));
    row.bind(umfang.werte());
    while (row.next()) {
        const auto place = places.constFind(row.integer(0));
        if (place == places.cend()) continue;
        Zyklus& z = animals[*place];
        const qint32 day = row.day(1);
        const qint64 id = row.integer(2);
        if (day < z.kontrolle || (day == z.kontrolle && z.kontrolleId != 0 && id > z.kontrolleId)) continue;
        z.kontrolle = day;
        z.kontrolleId = id;
        z.negativ = equalTexts(row.text(3), u"N");
    }
}

/// The order of the tests decides the ties.
int kode(const Zyklus& z) {
    if (!z.zaehlt) return ohne;
    if (z.ferkelung > z.belegung && z.ferkelung > z.absetzung) return saeugend;
    if (z.belegung != 0 && z.absetzung > z.belegung) return guest;
    if (z.belegung <= z.ferkelung) return ohne;
    return z.kontrolle <= z.belegung ? belegt : z.negativ ? nichtTragend : tragend;
}

/// Animals without service and farrowing that still bear a status, or Null.
std::vector<qint64> liesVeraltete(const Database& db) {
    std::vector<qint64> ids;
    Statement row = db.prepare(
        QStringLiteral("select ID, L_Belegung, L_Ferkelung from Sauen where Status IS NULL or Status <> ''"));
    row.bind({});
    while (row.next()) {
        if (row.isNull(1) && row.isNull(2)) ids.push_back(row.integer(0));
    }
    return ids;
}

void setzeStatus(const Database& db, const Umfang& umfang) {
    std::vector<Zyklus> animals = liesZyklen(db, umfang);
    sucheKontrollen(db, umfang, animals);
    const std::vector<qint64> outdated = umfang.alle() ? liesVeraltete(db) : std::vector<qint64>();
    Statement update = db.prepare(QStringLiteral("update Sauen set Status = ? where ID = ?"));
    for (const Zyklus& z : animals) {
        const int code = kode(z);
        if (code != z.gespeichert) update.run({kodes[code], z.id});
    }
    for (const qint64 id : outdated) update.run({QStringLiteral(""), id});
}

const QString keineBasis = QStringLiteral("-");  // the status hangs on no setting

}  // namespace

void statussetzen(const Database& db) {
    Transaction action(db);
    ChangeLog log(db, ChangeLog::Purpose::Status);
    const auto ids = geaenderte(log, keineBasis);
    if (ids)
        for (const auto& group : gruppen(*ids)) setzeStatus(db, Umfang(group));
    else
        setzeStatus(db, Umfang());
    log.settle(keineBasis);
    action.commit();
}

}  // namespace koben

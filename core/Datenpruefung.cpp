#include "core/Datenpruefung.h"

#include <QCryptographicHash>
#include <QSet>
#include <algorithm>

#include "core/Aktionsnamen.h"
#include "core/Feldnamen.h"
#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "core/Ruecknahmeregeln.h"
#include "core/Wurfnummern.h"
#include "store/Journal.h"

namespace koben {
namespace {

constexpr qsizetype Beispiele = 10;

/// Bookings of the farm's lists of piglets belong to no animal: their field holds 0 or nothing.
const QString OhneTier = QStringLiteral(
    "Kennung IS NOT NULL and Kennung <> 0 and not exists (select ID from Sauen where Sauen.ID = %1.Kennung)");

QString utf8(const char* text) { return QString::fromUtf8(text); }

qint64 countOf(const Database& db, const QString& table, const QString& condition) {
    return db.table(QStringLiteral("select count(*) as n from %1 where %2").arg(table, condition)).integer(0, 0);
}

/// Counted in each kind of booking: "2 Belegungen, 1 Verluste" with their sum.
std::pair<qint64, QStringList> countBookings(const Database& db, const QString& condition) {
    qint64 all = 0;
    QStringList kinds;
    for (const Artangaben& kind : Buchungsarten) {
        const QString table = utf8(kind.table);
        const qint64 count =
            countOf(db, table, condition.contains(QStringLiteral("%1")) ? condition.arg(table) : condition);
        if (count > 0) kinds += QStringLiteral("%1: %2").arg(utf8(kind.caption)).arg(count);
        all += count;
    }
    return {all, kinds};
}

Pruefbefund bookingsWithoutAnimal(const Database& db) {
    Pruefbefund found{.was = QStringLiteral("Buchungen und ihre Tiere"),
                      .satz = QStringLiteral("Zu jeder Buchung gibt es das Tier.")};
    const auto [all, kinds] = countBookings(db, OhneTier);
    if (all == 0) return found;
    found.art = Pruefbefund::Art::OhneTier;
    found.satz =
        QStringLiteral(
            "%1 zu keinem Tier, das es noch gibt. Kein Fenster zeigt sie, Statistiken können sie "
            "mitzählen.")
            .arg(all == 1 ? QStringLiteral("Eine Buchung gehört") : QStringLiteral("%1 Buchungen gehören").arg(all));
    found.zeilen = kinds;
    return found;
}

Pruefbefund bookingsWithoutDay(const Database& db) {
    Pruefbefund found{.was = QStringLiteral("Datum der Buchungen"),
                      .satz = QStringLiteral("Jede Buchung hat ein Datum.")};
    const auto [all, kinds] = countBookings(db, QStringLiteral("Datum IS NULL"));
    if (all == 0) return found;
    found.art = Pruefbefund::Art::Hinweis;
    found.satz =
        QStringLiteral("%1 kein Datum. Bitte tragen Sie es nach.")
            .arg(all == 1 ? QStringLiteral("Eine Buchung hat") : QStringLiteral("%1 Buchungen haben").arg(all));
    found.zeilen = kinds;
    return found;
}

Pruefbefund numbersTwice(const Database& db) {
    Pruefbefund found{.was = QStringLiteral("Nummern der Tiere"),
                      .satz = QStringLiteral("Keine Nummer steht im Bestand zweimal.")};
    const Table twice = db.table(
        "select Nummer, count(*) as Tiere from Sauen where Abgangsdatum IS NULL and Nummer <> '' group by Nummer "
        "having "
        "count(*) > 1 order by Nummer");
    if (twice.rowCount() == 0) return found;
    found.art = Pruefbefund::Art::Hinweis;
    found.satz =
        twice.rowCount() == 1
            ? QStringLiteral("Eine Nummer tragen mehrere Tiere des Bestandes. Bitte geben Sie einem davon eine andere.")
            : QStringLiteral(
                  "%1 Nummern tragen mehrere Tiere des Bestandes. Bitte geben Sie je einem davon eine andere.")
                  .arg(twice.rowCount());
    for (int row = 0; row < twice.rowCount() && found.zeilen.size() < Beispiele; ++row)
        found.zeilen +=
            QStringLiteral("%1: %2 Tiere").arg(Hochkomma_ersetzen(twice.text(row, 0))).arg(twice.integer(row, 1));
    return found;
}

QString numberText(qint64 number) { return number == NoNumber ? QStringLiteral("nichts") : QString::number(number); }
QString dayText(qint32 day) {
    return day == 0 ? QStringLiteral("nichts") : Datum_als_Anzeige(QDate::fromJulianDay(day));
}

/// "Belegungen 3 statt 4, letzte Belegung nichts statt 03.05.2026"
QString difference(const Zykluswerte& stored, const Zykluswerte& right) {
    QStringList told;
    const auto counter = [&](const char* what, qint64 Zykluswerte::*field) {
        // an empty counter and one of 0 say the same of an animal without bookings
        if (stored.*field != right.*field &&
            !((stored.*field == 0 || stored.*field == NoNumber) && (right.*field == 0 || right.*field == NoNumber)))
            told +=
                QStringLiteral("%1 %2 statt %3").arg(utf8(what), numberText(stored.*field), numberText(right.*field));
    };
    const auto day = [&](const char* what, qint32 Zykluswerte::*field) {
        if (stored.*field != right.*field)
            told += QStringLiteral("%1 %2 statt %3").arg(utf8(what), dayText(stored.*field), dayText(right.*field));
    };
    counter("Belegungen", &Zykluswerte::belegungen);
    counter("Würfe", &Zykluswerte::ferkelungen);
    counter("Ferkel", &Zykluswerte::gesamt);
    counter("lebende Ferkel", &Zykluswerte::lebend);
    day("letzte Belegung", &Zykluswerte::lBelegung);
    day("letzte Ferkelung", &Zykluswerte::lFerkelung);
    day("letzte Trächtigkeit", &Zykluswerte::lTraechtigkeit);
    day("letzte Absetzung", &Zykluswerte::lAbsetzung);
    day("nächste Belegung", &Zykluswerte::nBelegung);
    day("nächste Ferkelung", &Zykluswerte::nFerkelung);
    return told.join(QStringLiteral(", "));
}

QString nameOf(const Database& db, qint64 animal) {
    const Table row = db.table(QStringLiteral("select Art, Nummer from Sauen where ID = %1").arg(animal));
    return row.rowCount() == 0 ? QString()
                               : Hochkomma_ersetzen(row.text(0, 0)) + u' ' + Hochkomma_ersetzen(row.text(0, 1));
}

Pruefbefund told(const Database& db, const QString& was, const std::vector<std::pair<qint64, QString>>& differences) {
    Pruefbefund found{.was = was, .satz = QStringLiteral("Alles stimmt mit den Buchungen überein.")};
    if (differences.empty()) return found;
    found.art = Pruefbefund::Art::Abgeleitet;
    found.satz =
        differences.size() == 1
            ? QStringLiteral("Bei einem Tier stimmt es nicht mit den Buchungen überein.")
            : QStringLiteral("Bei %1 Tieren stimmt es nicht mit den Buchungen überein.").arg(differences.size());
    for (const auto& [animal, text] : differences) {
        if (found.zeilen.size() == Beispiele) break;
        found.zeilen += nameOf(db, animal) + QStringLiteral(": ") + text;
    }
    return found;
}

/// Counters and days, both lists by ID.
Pruefbefund derivedValues(const Database& db, const Variablen& v) {
    const std::vector<Tierwerte> stored = readStored(db, Umfang());
    const std::vector<Tierwerte> right = derive(readBookings(db, Umfang(), NoEnd), Zyklusvorgaben(v));
    const Table ids = db.table("select ID from Sauen");
    QSet<qint64> there;
    for (int row = 0; row < ids.rowCount(); ++row) there.insert(ids.integer(row, 0));
    std::vector<std::pair<qint64, QString>> differences;
    for (size_t s = 0, r = 0; s < stored.size() || r < right.size();) {
        const bool isStored = s < stored.size() && (r == right.size() || stored[s].tier <= right[r].tier);
        const bool isRight = r < right.size() && (s == stored.size() || right[r].tier <= stored[s].tier);
        const qint64 animal = isStored ? stored[s].tier : right[r].tier;
        const QString text =
            difference(isStored ? stored[s].werte : Zykluswerte(), isRight ? right[r].werte : Zykluswerte());
        if (!text.isEmpty() && there.contains(animal)) differences.emplace_back(animal, text);
        s += isStored;
        r += isRight;
    }
    return told(db, QStringLiteral("Zähler und Termine"), differences);
}

Pruefbefund derivedStatus(const Database& db) {
    std::vector<std::pair<qint64, QString>> differences;
    const auto word = [](Zyklusstatus status) {
        const QString text = Statuswort(status);
        return text.isEmpty() ? QStringLiteral("ohne") : text;
    };
    for (const StoredStatus& animal : readStatus(db, Umfang())) {
        const Zyklusstatus right = status(animal.lage);
        const bool bothNone = kode(animal.stored).isEmpty() && kode(right).isEmpty();
        if (animal.stored != right && !bothNone)
            differences.emplace_back(animal.tier, QStringLiteral("%1 statt %2").arg(word(animal.stored), word(right)));
    }
    return told(db, QStringLiteral("Status der Sauen"), differences);
}

Pruefbefund litterNumbers(const Database& db) {
    Pruefbefund found{.was = QStringLiteral("Nummern der Würfe"),
                      .satz = QStringLiteral("Die Würfe sind der Reihe nach nummeriert.")};
    const std::vector<qint64> animals = misnumbered(db);
    if (animals.empty()) return found;
    found.art = Pruefbefund::Art::Wuerfe;
    found.satz =
        animals.size() == 1
            ? QStringLiteral("Bei einem Tier sind die Würfe nicht der Reihe nach nummeriert.")
            : QStringLiteral("Bei %1 Tieren sind die Würfe nicht der Reihe nach nummeriert.").arg(animals.size());
    for (const qint64 animal : animals) {
        if (found.zeilen.size() == Beispiele) break;
        if (const QString name = nameOf(db, animal); !name.isEmpty()) found.zeilen += name;
    }
    return found;
}

// ------------------------------------------------------------------------------------------- rows against the journal

/// What a row is to the user: "Sau 101", "Belegung vom 03.05.2026 (Sau 101)"; of other tables table and number.
QString rowName(const Database& db, const QString& table, qint64 row) {
    const QString number = QStringLiteral("Nr. %1").arg(row);
    if (table == Regeln::Tiere) {
        const QString name = nameOf(db, row);
        return name.isEmpty() ? QStringLiteral("Tier ") + number : name;
    }
    for (const Artangaben& kind : Buchungsarten) {
        if (table != utf8(kind.table)) continue;
        const Table booking =
            db.table(QStringLiteral("select %1, Kennung from %2 where ID = %3").arg(utf8(kind.date), table).arg(row));
        if (booking.rowCount() == 0) return utf8(kind.noun) + u' ' + number;
        const QString owner = nameOf(db, booking.integer(0, 1));
        return QStringLiteral("%1 vom %2").arg(utf8(kind.noun), booking.text(0, 0)) +
               (owner.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(owner));
    }
    return fieldLabel({}, table) + u' ' + number;
}

/// "Sau 101: Stallnr / Box D7, von KOBEN geschrieben D1"
QString told(const Database& db, const Journal::Departure& departure) {
    const QString name = rowName(db, departure.table, departure.row);
    if (departure.kind == RowChange::Kind::Deleted) return name + QStringLiteral(": fehlt");
    if (departure.kind == RowChange::Kind::Inserted)
        return name + QStringLiteral(": in KOBEN gelöscht, aber wieder da");
    QStringList cells;
    for (const auto& [field, left, present] : departure.cells)
        cells += QStringLiteral("%1 %2 statt %3")
                     .arg(fieldLabel(departure.table, field), fieldText(departure.table, field, present),
                          fieldText(departure.table, field, left));
    return name + QStringLiteral(": ") + cells.join(QStringLiteral(", "));
}

QString merkmalOf(const std::vector<Journal::Departure>& departures) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const auto add = [&](const QString& text) { hash.addData(text.toUtf8() + '\0'); };
    for (const Journal::Departure& each : departures) {
        add(each.table + u' ' + QString::number(each.row) + u' ' + QString::number(static_cast<int>(each.kind)));
        for (const auto& cell : each.cells) add(cell.field), add(cell.present.toText());
    }
    return QString::fromLatin1(hash.result().toHex().left(16));
}

}  // namespace

std::optional<Pruefbefund> Verlauf_pruefen(const Database& db, const CycleProgress& go) {
    Pruefbefund found{.was = QStringLiteral("Eingaben und Verlauf"),
                      .satz = QStringLiteral("Alles steht so da, wie KOBEN es zuletzt geschrieben hat.")};
    const auto departures = Journal(db).departures(Regeln::role, go);
    if (!departures) return std::nullopt;
    if (departures->empty()) return found;
    found.art = Pruefbefund::Art::Fremd;
    found.satz = (departures->size() == 1
                      ? QStringLiteral("Ein Eintrag steht anders da, als KOBEN ihn zuletzt geschrieben hat.")
                      : QStringLiteral("%1 Einträge stehen anders da, als KOBEN sie zuletzt geschrieben hat.")
                            .arg(departures->size())) +
                 QStringLiteral(" Ein anderes Programm hat die Datei geändert.");
    found.merkmal = merkmalOf(*departures);
    for (const Journal::Departure& each : *departures) {
        if (found.zeilen.size() == Beispiele) break;
        found.zeilen += told(db, each);
    }
    return found;
}

std::optional<std::vector<Pruefbefund>> Daten_pruefen(const Database& db, const Variablen& v, const CycleProgress& go) {
    const std::function<Pruefbefund()> steps[] = {
        [&] { return bookingsWithoutAnimal(db); }, [&] { return bookingsWithoutDay(db); },
        [&] { return numbersTwice(db); },          [&] { return litterNumbers(db); },
        [&] { return derivedValues(db, v); },      [&] { return derivedStatus(db); }};
    std::vector<Pruefbefund> findings;
    for (const auto& step : steps) {
        if (!goesOn(go, static_cast<int>(100 * findings.size() / std::size(steps)))) return std::nullopt;
        findings.push_back(step());
    }
    return findings;
}

bool enthaelt(const std::vector<Pruefbefund>& findings, Pruefbefund::Art kind) {
    return std::any_of(findings.begin(), findings.end(), [kind](const Pruefbefund& each) { return each.art == kind; });
}

bool Neu_ableiten(const Action& action, const Variablen& v, const CycleProgress& go) {
    const Database& db = action.database();
    for (const auto purpose : {ChangeLog::Purpose::Values, ChangeLog::Purpose::Status}) ChangeLog(db, purpose).forget();
    return Werte_berechnen(db, v, [&](int percent) { return goesOn(go, percent * 7 / 10); }) &&
           statussetzen(db, [&](int percent) { return goesOn(go, 70 + percent * 3 / 10); });
}

qint64 Wuerfe_neu_nummerieren(const Action& action) {
    const std::vector<qint64> animals = misnumbered(action.database());
    Wurfnummern litters(action.database());
    for (const qint64 animal : animals) litters.number(animal);
    return static_cast<qint64>(animals.size());
}

qint64 Buchungen_ohne_Tier_loeschen(const Action& action) {
    qint64 count = 0;
    for (const Artangaben& kind : Buchungsarten) {
        const QString table = utf8(kind.table);
        count +=
            action.database().prepare(QStringLiteral("delete from %1 where ").arg(table) + OhneTier.arg(table)).run();
    }
    return count;
}

}  // namespace koben

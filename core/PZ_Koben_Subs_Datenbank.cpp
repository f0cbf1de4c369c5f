// Creating and upgrading the database, keywords, litter numbers, deleting bookings. (The cycle engine is in units of
// its own.)
#include "core/PZ_Koben_Subs_Datenbank.h"

#include <algorithm>

#include "core/PZ_Koben_Subs.h"
#include "store/Schema.h"

namespace koben {
namespace {

bool hatFeld(const Database& db, const QString& name) {
    const Recordset row = db.open(QStringLiteral("select top 1 * from Sauen"));
    for (int i = 0; i < row.fieldCount(); ++i) {
        if (row.field(i).name.compare(name, Qt::CaseInsensitive) == 0) return true;
    }
    return false;
}

void ergaenzeFeld(Database& db, const QString& name, int size) {
    db.execute(QStringLiteral("ALTER TABLE Sauen ADD COLUMN %1 TEXT (%2)").arg(name).arg(size));
    db.execute(QStringLiteral("UPDATE Sauen SET %1 = ''").arg(name));
}

}  // namespace

void Datenbank_anlegen(Workspace& workspace, const QString& path) {
    workspace.make(path, [](Database& db) {
        for (const QString& sql : schemaStatements()) db.execute(sql);
    });
}

void Spalten_nachruesten(const Database& database) {
    Database db = database;
    Transaction action(db);
    if (!hatFeld(db, QStringLiteral("Aenderung"))) ergaenzeFeld(db, QStringLiteral("Aenderung"), 1);
    if (!hatFeld(db, QStringLiteral("Status"))) {
        ergaenzeFeld(db, QStringLiteral("Status"), 5);
        ergaenzeFeld(db, QStringLiteral("Statusabfrage"), 1);
    }
    action.commit();
}

bool Stichwort_eintragen(const Database& db, const QString& value, const QString& table) {
    const QString keyword = Hochkomma_ersetzen(value);
    if (keyword.isEmpty()) return false;
    Recordset rows = db.open(QStringLiteral("select * from %1 where Inhalt = '%2'").arg(table, keyword));
    if (rows.recordCount() != 0) return false;
    rows.addNew();
    rows.set(u"Inhalt", keyword);
    rows.update();
    return true;
}

void Wurfnummern_berechnen(const Database& db, qint64 kennung) {
    struct Wurf {
        qint64 id;
        qint32 day;
        qint64 alt, altJahr;
        bool leer;  // a number is still missing
    };
    Transaction action(db);
    std::vector<Wurf> litters;
    Statement rows =
        db.prepare(QStringLiteral("select ID, Datum, LNr, LNrJahr from Ferkelung where Kennung = ? order by Datum"));
    rows.bind({kennung});
    while (rows.next()) {
        litters.push_back(
            {rows.integer(0), rows.day(1), rows.integer(2), rows.integer(3), rows.isNull(2) || rows.isNull(3)});
    }
    Statement update = db.prepare(QStringLiteral("update Ferkelung set LNr = ?, LNrJahr = ? where ID = ?"));
    int life = 1, inYear = 1, previousMark = -1;
    for (const Wurf& litter : litters) {
        // The last digit of the year alone tells a new year; a litter without a date has no digit.
        const int mark = litter.day == 0 ? -1 : QDate::fromJulianDay(litter.day).year() % 10;
        if (mark != previousMark) inYear = 1;
        previousMark = mark;
        if (litter.leer || litter.alt != life || litter.altJahr != inYear) update.run({life, inYear, litter.id});
        ++life;
        ++inYear;
    }
    action.commit();
}

void Buchungen_loeschen(const Database& database, qint64 kennung) {
    Database db = database;
    Transaction action(db);
    for (const char* table : {"Belegung", "Ferkelung", "Absetzung", "Trächtigkeit", "Verluste", "Verschiebung",
                              "Behandlung", "Ferkelverkauf"}) {
        db.execute(QStringLiteral("delete from %1 where Kennung =%2").arg(QString::fromUtf8(table)).arg(kennung));
    }
    action.commit();
}

}  // namespace koben

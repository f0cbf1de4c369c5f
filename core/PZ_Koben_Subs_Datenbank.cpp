// Creating and upgrading the database, keywords, litter numbers. (The cycle engine is in units of its own.)
#include "core/PZ_Koben_Subs_Datenbank.h"

#include "core/PZ_Koben_Subs.h"
#include "core/Wurfnummern.h"
#include "store/Journal.h"
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
    Journal::need(db, table, keyword);
    Recordset rows = db.open(QStringLiteral("select * from %1 where Inhalt = '%2'").arg(table, keyword));
    if (rows.recordCount() != 0) return false;
    rows.addNew();
    rows.set(u"Inhalt", keyword);
    rows.update();
    return true;
}

void Wurfnummern_berechnen(const Database& db, qint64 kennung) {
    Transaction action(db);
    Wurfnummern(db).number(kennung);
    action.commit();
}

}  // namespace koben

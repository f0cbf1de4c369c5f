// Creating and upgrading the database, keywords, litter numbers. (The cycle engine is in units of its own.)
#include "core/PZ_Koben_Subs_Datenbank.h"

#include <QFile>

#include "core/PZ_Koben_Subs.h"
#include "core/Wurfnummern.h"
#include "store/Schema.h"

namespace koben {
namespace {

void entferneDatei(const QString& path) {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) QFile::remove(path + QLatin1String(suffix));
}

/// The new database under a working name, closed.
void fuelle(Workspace& workspace, const QString& path) {
    Database db = workspace.create(path);
    Transaction action(db);
    for (const QString& sql : schemaStatements()) db.execute(sql);
    action.commit();
}

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
    const QString draft = path + QStringLiteral(".neu");
    entferneDatei(draft);  // left by a crash
    try {
        fuelle(workspace, draft);
    } catch (...) {
        entferneDatei(draft);
        throw;
    }
    if (!QFile::rename(draft, path)) {
        entferneDatei(draft);
        throw DatabaseError(DatabaseError::Kind::Io,
                            QStringLiteral("Die Datenbank %1 konnte nicht angelegt werden.").arg(path));
    }
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
    Transaction action(db);
    Wurfnummern(db).number(kennung);
    action.commit();
}

}  // namespace koben

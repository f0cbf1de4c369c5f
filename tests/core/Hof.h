#pragma once
// A database in a temporary folder, and its state as text.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "core/Buchungen.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "tests/core/Texte.h"

namespace koben {

class Hof {
public:
    explicit Hof(bool made = true) {
        if (made) {
            Datenbank_anlegen(workspace, path());
            db = workspace.open(path());
        }
    }
    ~Hof() { Workspace::setFaultHook({}); }
    QString path() const { return m_folder.filePath("koben2.mdb"); }
    QString folder() const { return m_folder.path(); }
    int sql(const QString& text) { return db.execute(text); }
    int sql(const char* text) { return db.execute(QString::fromUtf8(text)); }

    /// The rows of a select: cells joined by blanks, rows by " | ", Null as "-".
    QString show(const QString& select) const {
        const Table table = db.table(select);
        QStringList rows;
        for (int row = 0; row < table.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < table.columnCount(); ++column)
                cells += table.isNull(row, column) ? QStringLiteral("-") : table.text(row, column);
            rows += cells.join(u' ');
        }
        return rows.join(QStringLiteral(" | "));
    }
    QString show(const char* select) const { return show(QString::fromUtf8(select)); }

private:
    QTemporaryDir m_folder;

public:
    Workspace workspace;
    Database db;
};

/// As an action of its own.
inline void Buchungen_loeschen(const Database& db, qint64 animal) {
    Action action(db, {});
    Buchungen_loeschen(action, animal);
    action.commit();
}

/// Lets the n-th writing statement from now (from 1) fail, as long as it lives.
class FailingStatement {
public:
    explicit FailingStatement(int nth) {
        Workspace::setFaultHook([nth, count = 0](const QString& sql) mutable {
            if (++count == nth) throw DatabaseError(DatabaseError::Kind::Io, sql);
        });
    }
    ~FailingStatement() { Workspace::setFaultHook({}); }
};

/// Reports every write, as long as it lives.
class NoWrites {
public:
    NoWrites() {
        Workspace::setFaultHook([](const QString& sql) {
            if (sql != u"commit") ADD_FAILURE() << "written again: " << sql.toStdString();
        });
    }
    ~NoWrites() { Workspace::setFaultHook({}); }
};

}  // namespace koben

#pragma once
// A fresh database for each test, and results rendered as short texts.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "store/Database.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace koben {

inline void PrintTo(const Value& value, std::ostream* out) {
    *out << (value.isNull() ? "<Null>" : value.toText().toStdString());
}

/// Cells joined by "|", rows by "; ". Null is "<Null>".
inline QString rendered(const Table& table) {
    QStringList rows;
    for (int r = 0; r < table.rowCount(); ++r) {
        QStringList cells;
        for (int c = 0; c < table.columnCount(); ++c)
            cells << (table.isNull(r, c) ? QStringLiteral("<Null>") : table.text(r, c));
        rows << cells.join(u'|');
    }
    return rows.join(QStringLiteral("; "));
}

inline QString names(const Table& table) {
    QStringList result;
    for (int c = 0; c < table.columnCount(); ++c) result << table.field(c).name;
    return result.join(u'|');
}

class StoreTest : public testing::Test {
protected:
    QString path(const char* name = "test.mdb") const { return m_folder.filePath(QString::fromUtf8(name)); }

    void run(std::initializer_list<const char*> statements) {
        for (const char* s : statements) db.execute(QString::fromUtf8(s));
    }
    QString ask(const char* sql) const { return rendered(db.table(QString::fromUtf8(sql))); }

    /// The error of a statement: "Kind@position", or what it gave.
    QString error(const char* sql) {
        static const char* const kKinds[] = {"Syntax",       "UnknownName",  "Type",          "TooLong", "Constraint",
                                             "NotADatabase", "NewerVersion", "ForeignFormat", "Io",      "State"};
        try {
            const QString text = QString::fromUtf8(sql);
            return text.startsWith(QLatin1String("select")) || text.startsWith(QLatin1String("transform"))
                       ? rendered(db.table(text))
                       : QString::number(db.execute(text));
        } catch (const DatabaseError& e) {
            message = e.detail();
            return QStringLiteral("%1@%2").arg(QString::fromLatin1(kKinds[static_cast<int>(e.kind)])).arg(e.position);
        }
    }

    void SetUp() override { db = workspace.create(path()); }
    void TearDown() override { Workspace::setFaultHook({}); }

    QTemporaryDir m_folder;
    Workspace workspace{[] { return QDateTime(QDate(2026, 7, 15), QTime(10, 30)); }};
    Database db;
    QString message;
};

}  // namespace koben

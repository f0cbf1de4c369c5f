#include "store/Connection.h"

namespace koben {
namespace {

using Kind = DatabaseError::Kind;
using sql::ColumnDef;
using sql::ColumnInfo;
using sql::TableInfo;

/// Runs a statement on the catalogue with texts and numbers bound in order.
void run(sqlite3* file, const char* sql, const std::vector<Value>& values) {
    const StatementHandle s = prepare(file, sql);
    for (size_t i = 0; i < values.size(); ++i) bindValue(s.get(), static_cast<int>(i) + 1, values[i]);
    if (sqlite3_step(s.get()) != SQLITE_DONE) throwSqlite(file, QString::fromUtf8(sql));
}

const char* affinity(const ColumnDef& c) {
    switch (c.type) {
        case Type::Text:
        case Type::Date:
            return "TEXT";
        case Type::Single:
        case Type::Double:
            return "REAL";
        default:
            return "INTEGER";
    }
}

std::string declaration(const ColumnDef& c) {
    if (c.counter) return sql::quoted(c.name) + " INTEGER PRIMARY KEY AUTOINCREMENT";
    return sql::quoted(c.name) + " " + affinity(c) + (c.notNull ? " NOT NULL" : "") +
           (c.unique && c.type != Type::Text ? " UNIQUE" : "");
}

class Runner {
public:
    Runner(sqlite3* file, const sql::Catalog& catalog, const sql::Ddl& ddl, const sql::Text& text)
        : m_file(file), m_catalog(catalog), m_ddl(ddl), m_text(text) {}

    void run() {
        switch (m_ddl.kind) {
            case sql::Ddl::Kind::CreateTable:
                return createTable();
            case sql::Ddl::Kind::CreateIndex:
                return createIndex();
            case sql::Ddl::Kind::DropTable:
                return dropTable();
            case sql::Ddl::Kind::DropIndex:
                return dropIndex();
            case sql::Ddl::Kind::AddColumn:
                return addColumn();
            case sql::Ddl::Kind::DropColumn:
                return dropColumn();
        }
    }

private:
    [[noreturn]] void fail(Kind kind, int position, const QString& what) const { m_text.fail(kind, position, what); }

    const TableInfo& table() const {
        const TableInfo* found = m_catalog.find(m_ddl.table);
        if (found == nullptr)
            fail(Kind::UnknownName, m_ddl.tablePosition,
                 QStringLiteral("Die Tabelle \"%1\" ist unbekannt").arg(m_ddl.table));
        return *found;
    }

    void refuseReserved(const QString& name, int position) const {
        if (name.startsWith(QLatin1String("koben_"), Qt::CaseInsensitive) ||
            name.startsWith(QLatin1String("sqlite_"), Qt::CaseInsensitive))
            fail(Kind::Syntax, position, QStringLiteral("Der Name \"%1\" ist nicht erlaubt").arg(name));
    }

    void describe(const QString& tableName, const ColumnDef& c, int position) const {
        koben::run(
            m_file, "INSERT INTO koben_columns VALUES (?1, ?2, ?3, ?4, ?5, ?6)",
            {tableName, position, c.name, QString::fromLatin1(sql::typeName(c.type)), c.size, c.counter ? 1 : 0});
    }

    void createTable() const {
        refuseReserved(m_ddl.table, m_ddl.tablePosition);
        if (m_catalog.find(m_ddl.table) != nullptr)
            fail(Kind::Constraint, m_ddl.tablePosition,
                 QStringLiteral("Die Tabelle \"%1\" gibt es schon").arg(m_ddl.table));
        std::string columns;
        int counters = 0;
        for (size_t i = 0; i < m_ddl.columns.size(); ++i) {
            const ColumnDef& c = m_ddl.columns[i];
            refuseReserved(c.name, c.position);
            for (size_t j = 0; j < i; ++j)
                if (sql::sameName(c.name, m_ddl.columns[j].name))
                    fail(Kind::Constraint, c.position, QStringLiteral("Das Feld \"%1\" steht zweimal da").arg(c.name));
            if (c.counter && ++counters > 1)
                fail(Kind::Constraint, c.position, QStringLiteral("Eine Tabelle kann nur ein Zählerfeld haben"));
            columns += (i > 0 ? ", " : "") + declaration(c);
        }
        execute(m_file, "CREATE TABLE " + sql::quoted(m_ddl.table) + " (" + columns + ")");
        koben::run(m_file, "INSERT INTO koben_tables(name) VALUES (?1)", {m_ddl.table});
        for (size_t i = 0; i < m_ddl.columns.size(); ++i) describe(m_ddl.table, m_ddl.columns[i], static_cast<int>(i));
    }

    void dropTable() const {
        const TableInfo& t = table();
        execute(m_file, "DROP TABLE " + t.sqlName);
        for (const char* sql :
             {"DELETE FROM koben_tables WHERE name = ?1", "DELETE FROM koben_columns WHERE table_name = ?1",
              "DELETE FROM koben_indexes WHERE table_name = ?1"})
            koben::run(m_file, sql, {t.name});
    }

    void createIndex() const {
        const TableInfo& t = table();
        if (t.index(m_ddl.index) != nullptr)
            fail(Kind::Constraint, m_ddl.indexPosition,
                 QStringLiteral("Den Index \"%1\" gibt es in der Tabelle \"%2\" schon").arg(m_ddl.index, t.name));
        std::string keys;
        QStringList names;
        bool onlyCounter = m_ddl.columns.size() == 1;
        for (const ColumnDef& d : m_ddl.columns) {
            const int number = t.columnOf(d.name);
            if (number < 0)
                fail(Kind::UnknownName, d.position,
                     QStringLiteral("Das Feld \"%1\" gibt es in der Tabelle \"%2\" nicht").arg(d.name, t.name));
            const ColumnInfo& c = t.columns[static_cast<size_t>(number)];
            onlyCounter = onlyCounter && c.counter;
            keys += (keys.empty() ? "" : ", ") + (c.type == Type::Text ? keyColumn(t, c) : c.sqlName);
            names.push_back(c.name);
        }
        // The counter is SQLite's own key already.
        const QString sqliteName = onlyCounter ? QString() : t.name + u'.' + m_ddl.index;
        if (!onlyCounter)
            execute(m_file, std::string("CREATE ") + (m_ddl.unique ? "UNIQUE " : "") + "INDEX " +
                                sql::quoted(sqliteName) + " ON " + t.sqlName + " (" + keys + ")");
        koben::run(m_file, "INSERT INTO koben_indexes VALUES (?1, ?2, ?3, ?4)",
                   {t.name, m_ddl.index, sqliteName, names.join(u'\n')});
    }

    /// The column that holds the sort keys of a text; made with its first index. Triggers notice a tool that writes
    /// the text but not the key.
    std::string keyColumn(const TableInfo& t, const ColumnInfo& c) const {
        if (!c.keyName.empty()) return c.keyName;
        const QString name = sql::keyColumn(c.name);
        const std::string key = sql::quoted(name);
        execute(m_file, "ALTER TABLE " + t.sqlName + " ADD COLUMN " + key + " BLOB");
        execute(m_file, "UPDATE " + t.sqlName + " SET " + key + " = koben_key(" + c.sqlName + ")");
        const std::string mark = " BEGIN UPDATE koben_state SET stale = 1 WHERE stale = 0; END";
        const QString trigger = QStringLiteral("koben_%1_%2_").arg(t.name, c.name);
        execute(m_file, "CREATE TRIGGER " + sql::quoted(trigger + u'i') + " AFTER INSERT ON " + t.sqlName +
                            " WHEN new." + key + " IS NULL AND new." + c.sqlName + " IS NOT NULL" + mark);
        execute(m_file, "CREATE TRIGGER " + sql::quoted(trigger + u'u') + " AFTER UPDATE OF " + c.sqlName + " ON " +
                            t.sqlName + " WHEN new." + key + " IS old." + key + " AND new." + c.sqlName +
                            " IS NOT old." + c.sqlName + mark);
        return key;
    }

    void dropIndex() const {
        const TableInfo& t = table();
        const sql::IndexInfo* index = t.index(m_ddl.index);
        if (index == nullptr)
            fail(Kind::UnknownName, m_ddl.indexPosition,
                 QStringLiteral("Den Index \"%1\" gibt es in der Tabelle \"%2\" nicht").arg(m_ddl.index, t.name));
        if (!index->sqlName.isEmpty()) execute(m_file, "DROP INDEX " + sql::quoted(index->sqlName));
        koben::run(m_file, "DELETE FROM koben_indexes WHERE table_name = ?1 AND name = ?2", {t.name, index->name});
    }

    void addColumn() const {
        const TableInfo& t = table();
        const ColumnDef& c = m_ddl.columns.front();
        refuseReserved(c.name, c.position);
        if (t.columnOf(c.name) >= 0)
            fail(Kind::Constraint, c.position,
                 QStringLiteral("Das Feld \"%1\" gibt es in der Tabelle \"%2\" schon").arg(c.name, t.name));
        if (c.counter || c.notNull || c.unique)
            fail(Kind::Constraint, c.position,
                 QStringLiteral("Ein Zählerfeld oder Pflichtfeld kann nicht nachträglich angelegt werden"));
        execute(m_file, "ALTER TABLE " + t.sqlName + " ADD COLUMN " + declaration(c));
        describe(t.name, c, static_cast<int>(number(m_file, "SELECT ifnull(max(position), 0) + 1 FROM koben_columns")));
    }

    void dropColumn() const {
        const TableInfo& t = table();
        const ColumnDef& d = m_ddl.columns.front();
        const int column = t.columnOf(d.name);
        if (column < 0)
            fail(Kind::UnknownName, d.position,
                 QStringLiteral("Das Feld \"%1\" gibt es in der Tabelle \"%2\" nicht").arg(d.name, t.name));
        const ColumnInfo& c = t.columns[static_cast<size_t>(column)];
        for (const sql::IndexInfo& index : t.indexes)
            for (const QString& name : index.columns)
                if (sql::sameName(name, c.name))
                    fail(Kind::Constraint, d.position,
                         QStringLiteral("Das Feld \"%1\" wird vom Index \"%2\" gebraucht").arg(c.name, index.name));
        if (c.counter || t.columns.size() == 1)
            fail(Kind::Constraint, d.position,
                 QStringLiteral("Das Feld \"%1\" kann nicht entfernt werden").arg(c.name));
        dropHidden(t, c);
        execute(m_file, "ALTER TABLE " + t.sqlName + " DROP COLUMN " + c.sqlName);
        koben::run(m_file, "DELETE FROM koben_columns WHERE table_name = ?1 AND name = ?2", {t.name, c.name});
    }

    /// Helper indexes, triggers and the key of a column that is about to go.
    void dropHidden(const TableInfo& t, const ColumnInfo& c) const {
        std::vector<QString> indexes;
        {
            const StatementHandle s = prepare(m_file,
                                              "SELECT name, sql FROM sqlite_master WHERE type = 'index' AND tbl_name = "
                                              "?1 AND name LIKE 'koben\\_%' ESCAPE '\\'");
            bindValue(s.get(), 1, t.name);
            while (sqlite3_step(s.get()) == SQLITE_ROW)
                if (columnValue(s.get(), 1, Type::Text).toText().contains(QString::fromStdString(c.sqlName)))
                    indexes.push_back(columnValue(s.get(), 0, Type::Text).toText());
        }
        for (const QString& name : indexes) execute(m_file, "DROP INDEX " + sql::quoted(name));
        dropLog(c);
        if (c.keyName.empty()) return;
        const QString trigger = QStringLiteral("koben_%1_%2_").arg(t.name, c.name);
        execute(m_file,
                "DROP TRIGGER " + sql::quoted(trigger + u'i') + "; DROP TRIGGER " + sql::quoted(trigger + u'u'));
        execute(m_file, "ALTER TABLE " + t.sqlName + " DROP COLUMN " + c.keyName);
    }

    /// Triggers of the change log that read a column about to go; the log then no longer counts as complete.
    void dropLog(const ColumnInfo& c) const {
        std::vector<QString> triggers;
        {
            const StatementHandle s = prepare(m_file,
                                              "SELECT name, sql FROM sqlite_master WHERE type = 'trigger' AND name "
                                              "LIKE 'koben\\_log\\_%' ESCAPE '\\'");
            while (sqlite3_step(s.get()) == SQLITE_ROW)
                if (columnValue(s.get(), 1, Type::Text).toText().contains(u'"' + c.name + u'"'))
                    triggers.push_back(columnValue(s.get(), 0, Type::Text).toText());
        }
        for (const QString& name : triggers) execute(m_file, "DROP TRIGGER " + sql::quoted(name));
    }

    sqlite3* m_file;
    const sql::Catalog& m_catalog;
    const sql::Ddl& m_ddl;
    const sql::Text& m_text;
};

}  // namespace

void runDdl(sqlite3* file, const sql::Catalog& catalog, const sql::Ddl& ddl, const sql::Text& text) {
    Runner(file, catalog, ddl, text).run();
}

}  // namespace koben

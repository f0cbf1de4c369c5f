#pragma once
// The door to the database file. All other floors speak the SQL dialect of docs/sql.md as text through these classes.
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "store/DatabaseError.h"
#include "store/Table.h"
#include "store/Value.h"

namespace koben {

class Connection;  // one SQLite connection per file and process, shared by all Databases on it
class RecordsetImpl;
class StatementImpl;

/// A cursor over a select. Over one plain table it is live and updatable (rows keyed, values read fresh);
/// a join, distinct, group by, aggregate or pivot gives a read-only snapshot.
/// Errors throw DatabaseError and leave the row as it was.
class Recordset {
public:
    /// 0 for an empty result and not 0 otherwise; the full number after moveLast() or a whole pass.
    int recordCount() const;
    bool eof() const;
    bool bof() const;
    void moveFirst();
    void moveNext();
    void movePrevious();
    void moveLast();
    /// Looks for the first row that meets a where text ("ID = 17", "Nummer LIKE 'A*'"); noMatch() tells.
    void findFirst(const QString& criteria);
    bool noMatch() const;
    void addNew();
    void edit();
    void update();
    void cancelUpdate();
    void remove();  ///< deletes the current record

    Value value(QStringView name) const;
    Value value(int index) const;
    void set(QStringView name, const Value& value);
    void set(int index, const Value& value);
    int fieldCount() const;
    const Field& field(int index) const;
    void close();

private:
    friend class Database;
    explicit Recordset(std::shared_ptr<RecordsetImpl> impl) : m_impl(std::move(impl)) {}
    std::shared_ptr<RecordsetImpl> m_impl;
};

/// A prepared statement with `?` for values, for work on many rows. run() executes and rewinds;
/// for a select, bind() then next() steps forward only and reads the current row without copying a table.
class Statement {
public:
    int run(const std::vector<Value>& values = {});
    void bind(const std::vector<Value>& values);
    bool next();
    bool isNull(int column) const;
    qint64 integer(int column) const;  ///< whole number, day (Julian) or money (ten-thousandths); 0 for Null
    qint32 day(int column) const;      ///< Julian day of a date; 0 for Null
    QString text(int column) const;    ///< as Value::toText(); "" for Null
    Value value(int column) const;
    int fieldCount() const;
    const Field& field(int index) const;

private:
    friend class Database;
    explicit Statement(std::shared_ptr<StatementImpl> impl) : m_impl(std::move(impl)) {}
    std::shared_ptr<StatementImpl> m_impl;
};

/// An open connection to a database file; a cheap handle. Several may be open on one file and see each other's
/// writes at once.
class Database {
public:
    Database() = default;
    bool isOpen() const { return m_connection != nullptr; }
    void close() { m_connection.reset(); }
    /// A copy that is only looked at (Workspace::view): there is nothing to bring up to date in it.
    bool looksOnly() const;

    /// Runs DDL, insert, update or delete; the number of rows touched.
    int execute(const QString& sql);
    /// Opens a cursor over a select.
    Recordset open(const QString& sql) const;
    /// Reads a whole result into memory, compact and typed.
    Table table(const QString& sql) const;
    /// The same, telling now and then how many rows are read; nothing where `go` answers false.
    std::optional<Table> table(const QString& sql, const std::function<bool(qint64 rows)>& go) const;
    /// Prepares a select or a writing statement with `?` parameters. Cached by text.
    Statement prepare(const QString& sql) const;

    /// Names of the tables in creation order, and the fields of one.
    QStringList tables() const;
    std::vector<Field> fields(const QString& table) const;

private:
    friend class Workspace;
    friend class Transaction;
    friend class Action;
    friend class ChangeLog;
    friend class Journal;
    friend class Watch;
    friend void addHelpers(const Database& database);
    friend std::vector<std::pair<QString, qint64>> servicesByBoar(const Database& database);
    explicit Database(std::shared_ptr<Connection> connection) : m_connection(std::move(connection)) {}
    std::shared_ptr<Connection> m_connection;
};

/// One user action: everything between construction and commit() reaches the disk whole or not at all.
/// Nested transactions join the outer one. Destroyed without commit() it rolls back (an inner one dooms the outer).
class Transaction {
public:
    explicit Transaction(const Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void commit();

private:
    std::shared_ptr<Connection> m_connection;
    bool m_open = true;
};

/// Called now and then during long work on a file, with how far it has come; false gives the work up.
using FileProgress = std::function<bool(int percent)>;

/// Names of tables with the numbers of their rows.
using TableCounts = std::vector<std::pair<QString, qint64>>;

/// How thoroughly the pages of a file are looked at: Quick leaves out whether each index names every row.
enum class Check { Quick, Full };

/// Opens and makes database files; the file-level operations.
class Workspace {
public:
    /// `now` gives the clock that the dialect's `now` reads.
    explicit Workspace(std::function<QDateTime()> now = {});
    ~Workspace();

    /// Makes a database and opens it; empty, or with what `fill` puts into it in one transaction.
    Database create(const QString& path, const std::function<void(Database&)>& fill = {});
    /// The same, without opening it. A draft beside it takes its place once its last page is on the disk and read back:
    /// on failure there is no file.
    void make(const QString& path, const std::function<void(Database&)>& fill = {});
    /// The same in the place of a file of another format, which `keep` puts aside once the draft is whole. Until the
    /// draft takes its place, in one step, the file is as it was; where anything throws it stays so.
    void makeInstead(const QString& path, const std::function<void(Database&)>& fill,
                     const std::function<void()>& keep);
    /// Opens a file for reading and writing. Refuses, before any write, a file that is not a database of this
    /// program (NotADatabase), one of a newer version (NewerVersion) and a genuine file of the old engine
    /// (ForeignFormat).
    Database open(const QString& path);
    /// Copies the file at `from`, tidied, into a new file `to` (which must not exist). Consistent also while open.
    /// False, with nothing at `to`, where it was given up.
    bool compact(const QString& from, const QString& to, const FileProgress& go = {});
    /// Puts the closed file `from` in the place of the closed file `to` in one step, logs included.
    void replace(const QString& from, const QString& to);
    /// Consistent copy of an open or closed database, for backups. Takes the place of a file at `to` once it is whole.
    /// False, with `to` as it was, where it was given up. Without `checked` its pages are not looked at: for who does
    /// that later.
    bool copy(const QString& from, const QString& to, const FileProgress& go = {}, bool checked = true);
    /// A copy of the file at `from` to be looked at, made at `to` and opened: `shape` writes into it what it shall
    /// show, from then on each try to write throws LookOnly with the message `refusal`. It is not flushed and may lie
    /// in a folder that goes. Nothing where it was given up, or where `shape` answers false; there may be a file at
    /// `to`.
    std::optional<Database> view(const QString& from, const QString& to, const QString& refusal,
                                 const std::function<bool(Database&, const FileProgress&)>& shape,
                                 const FileProgress& go = {});
    /// The tables of an open or closed database in the order of their creation, with the number of their rows. Reads
    /// only.
    static TableCounts rowCounts(const QString& path);
    /// Looks at every page of an open or closed database. "" where it is whole, otherwise what was found, for who mends
    /// it; nothing where it was given up.
    std::optional<QString> check(const QString& path, Check check, const FileProgress& go = {});
    /// Removes what cut-off drafts of this file have left beside it. Only while no other program works on it.
    static void removeLeftovers(const QString& path);
    /// A file that was put in its place before it was finished holds nothing and would be called damaged for ever:
    /// moves it aside. True where that was done; there is no file at `path` then.
    static bool setUnfinishedAside(const QString& path);
    /// Closes all connections of this workspace; handles still held become unusable.
    void closeAll();

    /// Hears the name of each Action of this workspace's databases once it is on the disk.
    void onAction(std::function<void(const QString& name)> observer) { *m_observer = std::move(observer); }

    /// The name of the form in which the user is, for the journal of actions.
    void onWindow(std::function<QString()> window) { *m_window = std::move(window); }

    /// For tests: called before each statement that writes, with its SQL; may throw to play a failing statement.
    static void setFaultHook(std::function<void(const QString& sql)> hook);

private:
    void fillDraft(const QString& path, const std::function<void(Database&)>& fill);

    std::function<QDateTime()> m_now;
    std::shared_ptr<std::function<void(const QString&)>> m_observer =
        std::make_shared<std::function<void(const QString&)>>();
    std::shared_ptr<std::function<QString()>> m_window = std::make_shared<std::function<QString()>>();
    std::vector<std::weak_ptr<Connection>> m_connections;
};

}  // namespace koben

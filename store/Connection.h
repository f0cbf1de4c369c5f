#pragma once
// The one SQLite connection of a file within the process, with its plans and prepared statements.
#include <QDateTime>
#include <QHash>
#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "store/SqliteFunctions.h"
#include "store/sql/Plan.h"

namespace koben {

inline constexpr quint32 kApplicationId = 0x4B4F4245;  // "KOBE"
inline constexpr int kFileVersion = 1;

/// A statement ready to run: its plan and the literals of its text.
struct Command {
    QString text;
    std::shared_ptr<const sql::Plan> plan;
    std::vector<sql::Literal> literals;
};

class Connection;
class JournalRecorder;

/// What a Watch knows: the rows of its table that were touched, unless it lost count.
struct WatchState {
    std::string table;
    std::unordered_set<qint64> rows;
    bool lost = true;
    qint64 version = 0;  ///< of the file as other processes write it
};

/// A statement that somebody steps through while the connection lives; let go when it closes.
class Stream {
public:
    virtual ~Stream() = default;
    virtual void release() = 0;
};

/// A prepared statement on loan; goes back to the connection's stock, rewound.
class Loan {
public:
    Loan(Connection& connection, const std::string& sql);
    ~Loan();
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;
    sqlite3_stmt* get() const { return m_statement.get(); }

private:
    Connection& m_connection;
    const std::string& m_sql;
    StatementHandle m_statement;
};

class Connection : public std::enable_shared_from_this<Connection> {
public:
    /// The file must have been checked. Throws where it cannot be opened for writing.
    Connection(const QString& path, std::function<QDateTime()> now);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    const QString& path() const { return m_path; }
    /// Throws State once closed.
    sqlite3* file() const;
    void close();
    /// Closes a file that is to stand alone: all that was written is in it, and no log is beside it. Throws where that
    /// cannot be said.
    void closeWithoutLog();
    /// A working copy: what is written goes without log and flush.
    void relax();
    /// From now on each try to write throws LookOnly with this message.
    void lookOnly(const QString& refusal);
    bool looksOnly() const { return !m_refusal.isEmpty(); }
    bool isClosed() const { return m_file == nullptr; }

    Command command(const QString& text);
    /// Kept plans for texts that are no statements (criteria); `make` compiles on the first use.
    Command cached(const QString& prefix, const QString& text,
                   const std::function<std::shared_ptr<const sql::Plan>(const sql::Text&, const sql::Lexed&)>& make);
    const std::shared_ptr<const sql::Catalog>& catalog();
    /// Binds the slots of a plan; converts as each slot asks.
    void bind(sqlite3_stmt* statement, const Command& command, const std::vector<Value>& parameters);
    /// Steps; true for a row. Throws with the statement's text.
    bool step(sqlite3_stmt* statement, const QString& text);

    /// Runs a writing plan (not DDL); rows touched.
    int write(const Command& command, const std::vector<Value>& parameters);
    int execute(const QString& text);
    /// Runs SQLite's own SQL that writes; `text` is what messages and the fault hook see.
    void writeNative(const std::string& sql, const QString& text);
    /// Before each write: the fault hook.
    void aboutToWrite(const QString& text);
    /// Grows with each write through this connection.
    qint64 writes() const { return m_writes; }
    /// After a change of tables: plans and catalogue are read afresh; with a name only that table.
    void schemaChanged(const QString& table = {});
    quint64 schemaNumber() const { return m_schemaNumber; }

    void begin();
    void commit();
    void rollback();  ///< of the innermost transaction; the outermost one undoes all
    bool inTransaction() const { return m_depth > 0; }

    /// Tells the observer of the workspace that opened the file last.
    void actionDone(const QString& name) const {
        if (m_observer && *m_observer) (*m_observer)(name);
    }
    void setObserver(std::shared_ptr<std::function<void(const QString&)>> observer) {
        m_observer = std::move(observer);
    }
    /// In which window an action happens.
    void setWindow(std::shared_ptr<std::function<QString()>> window) { m_window = std::move(window); }
    QString window() const { return m_window && *m_window ? (*m_window)() : QString(); }
    QDateTime now() const { return m_now ? m_now() : QDateTime::currentDateTime(); }

    /// Gathers what actions change; nullptr where no journal is kept.
    JournalRecorder* recorder() const { return m_recorder.get(); }
    void keepJournal(bool on);

    static void setFaultHook(std::function<void(const QString&)> hook);

    void watch(const std::shared_ptr<WatchState>& state);

    /// Streaming statements, closed with the connection.
    void keep(const std::shared_ptr<Stream>& statement);

private:
    friend class Loan;
    void releaseStatements();
    Value slotValue(const sql::Slot& slot, const Command& command, const std::vector<Value>& parameters,
                    const QDateTime& now) const;
    void ddl(const sql::Ddl& ddl, const QString& text);
    void requireWritable() const;
    static void rowTouched(void* connection, int what, const char* file, const char* table, sqlite3_int64 row);
    void watchesLost();

    QString m_path, m_refusal;
    std::function<QDateTime()> m_now;
    std::shared_ptr<std::function<void(const QString&)>> m_observer;
    std::shared_ptr<std::function<QString()>> m_window;
    FileHandle m_file;
    std::unique_ptr<JournalRecorder> m_recorder;
    std::unique_ptr<SqliteFunctions> m_functions;
    std::shared_ptr<const sql::Catalog> m_catalog;
    QHash<QString, std::shared_ptr<const sql::Plan>> m_plans;
    std::unordered_map<std::string, std::vector<StatementHandle>> m_stock;
    std::vector<std::weak_ptr<Stream>> m_streams;
    std::vector<std::weak_ptr<WatchState>> m_watches;
    qint64 m_writes = 0;
    quint64 m_schemaNumber = 0;
    int m_depth = 0;
    bool m_doomed = false;
    bool m_schemaTouched = false;  ///< within the open transaction
};

/// Reads the catalogue of a file; fields that another tool added are typed by their SQLite declaration.
/// With `before`, tables but `changed` are taken from there.
std::shared_ptr<const sql::Catalog> loadCatalog(sqlite3* file, const sql::Catalog* before = nullptr,
                                                const QString& changed = {});
/// Makes the catalogue's own tables in an empty file.
void createCatalog(sqlite3* file);
/// Sort keys that another tool's writing left behind are made anew.
void repairKeys(sqlite3* file);
/// Carries out a DDL statement; the caller has opened a transaction.
void runDdl(sqlite3* file, const sql::Catalog& catalog, const sql::Ddl& ddl, const sql::Text& text);

}  // namespace koben

#pragma once
// What has changed since the derived fields of the animals were last brought up to date. Triggers in the file keep it,
// so it is right after a crash, in a restored copy, and after another SQLite tool has written. The dialect does not
// see its tables (koben_log_stand, koben_log_werte, koben_log_status, koben_log_deckungen).
#include <utility>
#include <vector>

#include "store/Database.h"

namespace koben {

class ChangeLog {
public:
    /// Values: what bookings give an animal (counters, latest and next days). Status: the cycle status.
    enum class Purpose { Values, Status };
    ChangeLog(const Database& database, Purpose purpose) : m_connection(database.m_connection), m_purpose(purpose) {}

    /// True where the whole herd must be derived anew: never settled, another basis than at the last settle(), or a
    /// file whose triggers are gone. `basis`: the settings that the result hangs on, as a text.
    bool everything(const QString& basis) const;
    /// IDs of the animals with changes, at most `most` + 1 of them; some may not exist any more.
    std::vector<qint64> animals(int most) const;
    /// All is up to date as of now. Within the transaction that brought it there.
    void settle(const QString& basis);

    /// Nothing is known any more: the next derivation walks the whole herd. Within a transaction.
    void forget();

    /// Notes that changes are on their way whose derivation follows in the same dialog; within their transaction.
    void expect();
    /// True after expect() until settle(): where it holds at a start, the dialog did not come to its end.
    bool expected() const;

    /// While it lives, no trigger of this file runs: for many changes that settle() would strike out again within the
    /// same transaction, or that nothing watched hangs on. Statements prepared before are prepared anew.
    class Silence {
    public:
        explicit Silence(const Database& database);
        ~Silence();
        Silence(const Silence&) = delete;
        Silence& operator=(const Silence&) = delete;
        /// Of the silenced file, for dropHelpers().
        Connection& connection() const { return *m_connection; }

    private:
        std::shared_ptr<Connection> m_connection;
        int m_before = 1;  ///< whether they ran: one silence within another ends none
    };

private:
    const char* row() const;
    const char* table() const;

    std::shared_ptr<Connection> m_connection;
    Purpose m_purpose;
};

/// How often each boar's number stands in the services, as it is spelled there. Only while everything() is false.
std::vector<std::pair<QString, qint64>> servicesByBoar(const Database& database);

/// Makes the log's tables and triggers where they are missing and the tables that they watch are there. What was made
/// anew counts as "everything".
void addChangeLog(Connection& connection);

}  // namespace koben

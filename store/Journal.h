#pragma once
// The journal of actions: what each changed, in the database file itself. A layer on actions and rows. The dialect does
// not see its tables (koben_verlauf, koben_verlauf_felder, koben_verlauf_stand).
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "store/Action.h"

namespace koben {

/// A row before and after an action.
struct RowChange {
    enum class Kind : char { Inserted, Deleted, Changed };
    struct Cell {
        int field;  ///< number in `fields`
        Value before, after;
    };
    const QString* table = nullptr;
    const QStringList* fields = nullptr;
    qint64 row = 0;  ///< the counter, where the table has one
    Kind kind = Kind::Changed;
    std::vector<Cell> cells;  ///< every field of an inserted or deleted row, else those that changed

    /// The cell of a field; nullptr where it is not among them.
    const Cell* cell(QStringView field) const;
};

class Journal {
public:
    using Kind = ActionKind;
    struct Entry {
        qint64 number = 0;  ///< ascending in time
        DateTime time;
        Kind kind = Kind::Action;
        QString name;
        QString window;  ///< name of the form
        qint64 rows = 0;
        qint64 takenBackBy = 0;  ///< the entry that undid it, 0 while it counts
        std::vector<qint64> of;  ///< the entries that it took back or carried out again
        bool known = false;      ///< whether the states of its rows are kept

        bool counts() const { return takenBackBy == 0; }
    };
    /// How a field is heeded when its action is taken back. Own: what the user entered. Light: a mark beside the data,
    /// which nothing rests on. Derived: what the program makes of the rest. Apart: of a table that the caller himself
    /// brings back.
    enum class Role { Own, Light, Derived, Apart };
    using Roles = std::function<Role(const QString& table, const QString& field)>;
    /// The rows that an entry touched, and the animals whose bookings they are.
    struct Reach;
    /// Why a row cannot be taken back to where it was.
    struct Conflict {
        QString table;
        qint64 row = 0;
    };
    /// A keyword that an action needs in its list, whether it stood there or was added.
    struct Word {
        QString table, text;
    };
    /// What an entry keeps beside its rows.
    struct Beside {
        /// Fields of the animals whose bookings it touched, as they were before it: by animal and field.
        std::map<qint64, std::map<QString, Value>> animals;
        std::vector<Word> words;                       ///< in the order in which they were needed
        std::set<std::pair<QString, qint64>> doubles;  ///< rows that gave a name up which another row bore too
    };
    /// The rows of a table of one text that has no counter, by SQLite's own row numbers.
    using Texts = std::map<qint64, Value>;
    /// How long entries are kept, and how much.
    struct Keeping {
        int years = 2;
        int megabytes = 200;
    };
    /// A row that stands otherwise than the newest entry that touched it left it, and so was written by other hands.
    struct Departure {
        struct Cell {
            QString field;
            Value left, present;  ///< in the type of the field
        };
        QString table;
        qint64 row = 0;
        /// Deleted: it is not there any more; Inserted: it is there again; else `cells` tell what differs.
        RowChange::Kind kind = RowChange::Kind::Changed;
        std::vector<Cell> cells = {};
    };

    explicit Journal(const Database& database) : m_connection(database.m_connection) {}

    /// Newest first; with `most` not more of them.
    std::vector<Entry> entries(qint64 most = -1) const;
    std::optional<Entry> entry(qint64 number) const;
    /// The newest of this kind that counts.
    std::optional<Entry> newest(Kind kind) const;
    /// Whether an entry of this kind, counting or not, stands behind `number`.
    bool anyBehind(Kind kind, qint64 number) const;
    /// Numbers, ascending, of the entries behind `number` that count and touch a row that it touched, or an animal of
    /// its; those that take back or redo only with `reversals`.
    std::vector<qint64> later(qint64 number, bool reversals) const;
    /// The newest action behind `number` that counts and of which no states are kept.
    std::optional<Entry> unknownBehind(qint64 number) const;
    /// The newest action behind `number` that counts and touched this row; 0 for none.
    qint64 lastToTouch(const QString& table, qint64 row, qint64 behind) const;
    /// The newest action behind `number` that counts and gave this row the text in `field` that it has now; 0 for none.
    qint64 lastToName(const QString& table, qint64 row, const QString& field, const Value& name, qint64 behind) const;
    /// Numbers, ascending, of all actions behind `number` that count.
    std::vector<qint64> actionsBehind(qint64 number) const;
    /// Numbers of the entries that concern the animal which has this ID now, ascending. An ID that was given back with
    /// its animal may have been another one's before.
    std::vector<qint64> ofAnimal(qint64 id) const;
    /// Numbers of the entries from `first` on that touched one of these animals or its bookings, ascending.
    std::vector<qint64> ofAnimals(const std::vector<qint64>& ids, qint64 first = 0) const;
    /// All entries from `first` on, the oldest first.
    std::vector<Entry> entriesFrom(qint64 first) const;
    /// From where the actions must be gone through anew for one that counts no more, or again: nothing before it has
    /// been taken back, or carried out again, behind it.
    qint64 origin(qint64 number) const;

    /// Hands out the changed rows of an entry one after the other; `row` lives until the next. False of `on` ends it,
    /// and then `beside` stays as it was.
    void read(qint64 number, const std::function<bool(const RowChange& row)>& on, Beside* beside = nullptr) const;

    /// Brings the rows of an entry back to where they were, within an action. Where a field of the user's has another
    /// value than the entry left, that is the answer, and what was written until then must be rolled back.
    std::optional<Conflict> revert(const Action& action, qint64 number, const Roles& roles) const;
    Texts texts(const QString& table) const;
    /// Makes the rows of such a table these, within an action.
    void setTexts(const Action& action, const QString& table, const Texts& texts) const;
    /// Gives the numbers back that the reverted actions took from the counters, as far as nobody took one behind them;
    /// takes those of actions that count again.
    void settleCounters(const std::vector<qint64>& reverted, const std::vector<qint64>& revived) const;

    qint64 bytes() const;  ///< that the entries take up in the file
    Keeping keeping() const;
    void keep(const Keeping& keeping) const;
    /// Removes what is older than is to be kept, or more than it may take up, the oldest first; never an entry that one
    /// that stays took back.
    void trim(QDate today) const;
    /// A value of a row that was read, in the type of its field.
    static Value typed(const Value& kept, Type type);
    /// All rows that stand otherwise than their newest entry left them, in fields of the user's own; by table and row.
    /// What no entry tells, and what was before an entry without states, is left out, and so are tables without a
    /// counter, whose rows have no lasting number. Nothing where it was given up.
    std::optional<std::vector<Departure>> departures(const Roles& roles, const FileProgress& go = {}) const;
    /// For measurements: without it nothing is gathered on this file from now on.
    void setOn(bool on) const;

    /// The running action needs this keyword.
    static void need(const Database& database, const QString& table, const QString& word);
    /// The field of which no two rows of a table are to have the same text, "" for none. Such a table has a counter.
    static QString nameField(const QString& table);
    /// For the store itself: ends what Action began, and makes the tables where they are missing.
    static void note(Connection& connection, const QString& name, Kind kind, const std::vector<qint64>& of);
    static void addTables(Connection& connection);
    static void listen(Connection& connection, bool on = true);

private:
    struct Layout {
        QString table;
        QStringList fields;
    };
    const Layout& layout(qint64 id) const;
    std::vector<Entry> select(const std::string& condition, qint64 most) const;
    std::string blob(const char* field, qint64 number) const;
    struct Seen;
    std::vector<qint64> touching(const QString& table, qint64 row, qint64 behind) const;
    std::vector<Seen> reaches(const std::string& condition) const;
    const std::vector<Seen>& counting(qint64 behind) const;

    std::shared_ptr<Connection> m_connection;
    mutable std::shared_ptr<std::vector<Seen>> m_counting;  ///< what counts behind a number, until somebody writes
    mutable qint64 m_countingBehind = 0, m_writes = -1;
    mutable std::map<qint64, Layout> m_layouts;
};

}  // namespace koben

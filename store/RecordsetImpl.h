#pragma once
#include <QHash>

#include "store/Pivot.h"

namespace koben {

/// What lies under a cursor: row numbers of one table, fetched as they become current; or a finished table.
class RecordsetImpl {
public:
    RecordsetImpl(std::shared_ptr<Connection> connection, Command command);

    bool live() const { return command.plan->table != nullptr; }
    int size() const { return live() ? static_cast<int>(ids.size()) : static_cast<int>(snapshot->rowCount()); }
    const Field& field(int index) const;
    int indexOf(QStringView name) const;
    void requireOpen() const;
    bool onRow() const { return position >= 0 && position < size() && !removed(position); }
    bool removed(int at) const { return live() && ids[static_cast<size_t>(at)] == kRemoved; }
    /// Moves from `from` by `step` over rows removed through this cursor; -1 or size() at the ends.
    void land(int from, int step);
    void reach();
    void requireRow() const;
    Value value(int index);
    void set(int index, const Value& value);
    void addNew();
    void edit();
    void update();
    void remove();
    void findFirst(const QString& criteria);
    void dropEdit();

    static constexpr qint64 kRemoved = std::numeric_limits<qint64>::min();
    enum class Mode : quint8 { Browse, Edit, Add };

    std::shared_ptr<Connection> connection;  // empty once closed
    Command command;
    std::vector<Field> fields;
    std::vector<qint64> ids;
    std::shared_ptr<TableData> snapshot;
    int position = -1;
    int reached = 0;   // records of the first result seen so far
    int original = 0;  // their number
    int gone = 0;      // removed through this cursor
    bool noMatch = false;
    Mode mode = Mode::Browse;

private:
    void fetch();
    void readIds();
    int columnOf(int index) const { return command.plan->columns[static_cast<size_t>(index)]; }
    const sql::ColumnInfo& column(int index) const;
    void write(const std::string& sql, const QString& text, const std::vector<std::pair<int, Value>>& values,
               bool withId);
    qint64 nextCounter();
    int findLive(const QString& criteria);
    int findSnapshot(const QString& criteria);
    [[noreturn]] void fail(DatabaseError::Kind kind, const QString& what) const;

    std::vector<Value> m_row;
    int m_fetched = -1;                            // position of m_row
    qint64 m_fetchedWrites = -1;                   // writes() at that time
    std::vector<std::pair<int, Value>> m_changes;  // table column and value
    QHash<qint64, int> m_places;                   // position of each row number, made by the first find
};

}  // namespace koben

#pragma once
// A genuine database file of the old engine (Jet 3 and 4), read and never written. The reading is done by
// koben-altdaten, a process of its own with limits on time, memory and output; what comes from it is checked to the
// last byte here. A file that brings it down, or makes it loop or talk nonsense, is a DatabaseError with a German
// message and nothing else.
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "store/Value.h"

namespace koben {

/// A table as the file describes it.
struct OldTable {
    QString name;
    std::vector<Field> fields;  ///< in the dialect's types; Null for a field whose values cannot be taken over
    std::vector<char> cells;    ///< how each field's values come (oldfile::Type)
    int counter = -1;           ///< the field that counts by itself
    qint64 rows = 0;            ///< by the table's own count; 0 also where the file was not closed in order
    qint64 lastNumber = 0;      ///< that the counter gave
    bool readable = true;       ///< otherwise nothing of it can be read, and it has no fields
    int columnOf(QStringView field) const;  ///< -1 where there is none; case does not count
};

/// What had to be left out or cut while values were read.
struct OldLosses {
    qint64 rows = 0;      ///< that could not be read
    qint64 values = 0;    ///< that could not be read; they are Null
    qint64 cutTimes = 0;  ///< dates with a time of day, which is gone
};

/// One row: its bytes as they come, which may be kept, and its values on demand.
class OldRow {
public:
    explicit OldRow(const OldTable& table) : m_table(&table), m_at(table.fields.size()) {}
    /// Takes bytes of a row of this table, which must outlive it; false where they are none.
    bool take(QByteArrayView bytes);
    QByteArrayView bytes() const { return m_bytes; }
    /// Null where it could not be read; dates without their time. Notes what was lost.
    Value value(int column, OldLosses& losses) const;
    /// The bytes of a value as they came, null for Null; false where it could not be read.
    bool cell(int column, QByteArrayView& bytes) const;

private:
    const OldTable* m_table;
    QByteArrayView m_bytes;
    std::vector<qsizetype> m_at;
};

class OldFile {
public:
    /// Where the bytes come from: up to so many into the buffer; 0 at the end, below 0 where nothing came in time.
    using Source = std::function<qsizetype(char*, qsizetype)>;

    /// Begins to read and learns the tables: those named, in this order, or all. `on` is asked now and then while
    /// nothing comes; where it answers false the reading ends, then or in a later call, with a DatabaseError.
    explicit OldFile(const QString& path, const QStringList& tables = {}, std::function<bool()> on = {});
    /// The same from bytes that came some other way; at most so many.
    OldFile(const QString& path, Source source, qint64 most);
    ~OldFile();

    const std::vector<OldTable>& tables() const { return m_tables; }
    /// Goes on to the rows of the next table, past what is left of the present one; null after the last.
    const OldTable* nextTable();
    /// Goes on to the next row; false after the last one of this table. row() holds until the next call.
    bool nextRow();
    const OldRow& row() const { return *m_row; }
    /// Rows read so far of all tables, and how many there should be.
    qint64 rowsRead() const { return m_rowsRead; }
    qint64 rowsTold() const;
    /// Of the present table, once its last row was read: rows that could not be, or that its own count misses.
    qint64 rowsLost() const { return m_rowsLost; }

    /// Whether a file is one of the old engine in a version that can be read, by its first bytes.
    static bool isOld(const QString& path);

    /// For tests: another program in the place of koben-altdaten, and how long it may be silent. "" and 0 as usual.
    static void setHelper(const QString& program, int patienceMs = 0);

private:
    class Input;
    void readTables();
    void readTable(QByteArrayView content);
    void endTable(QByteArrayView content);
    [[noreturn]] void fail(const QString& cause) const;
    [[noreturn]] void nonsense() const;
    [[noreturn]] void told(QByteArrayView content) const;

    QString m_path;
    std::unique_ptr<Input> m_input;
    std::vector<OldTable> m_tables;
    size_t m_next = 0;
    bool m_inTable = false, m_done = false;
    std::unique_ptr<OldRow> m_row;
    qint64 m_rowsRead = 0, m_rowsHere = 0, m_rowsLost = 0;
};

}  // namespace koben

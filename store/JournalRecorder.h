#pragma once
// What an action does to the rows of the tables, gathered while it runs: of each row its state before the first change
// and after the last one. SQLite tells each change before it is made; triggers and statements without a condition too.
#include <memory>
#include <unordered_map>
#include <unordered_set>

#include "store/Connection.h"
#include "store/JournalCoding.h"

namespace koben {

namespace journal {
inline const char* const Animals = "Sauen";
}

/// A table as the recorder sees it: its fields without the hidden sort keys.
struct JournalLayout {
    std::string table;
    QStringList fields;
    std::vector<int> places;  ///< of each field among SQLite's columns
    std::vector<bool> reals;
    int owner = -1;  ///< the field that names the animal of a booking, -1 for none
    int mark = -1;   ///< the field of a mark that is kept also where a statement sets it to what it was, -1 for none
    qint64 id = 0;   ///< in the file, 0 before it is written there
};

/// What is written of an action.
struct JournalRecord {
    bool known = true;  ///< false: too large, or tables were changed
    qint64 rows = 0;
    journal::Bytes data, reach, counters;
};

class JournalRecorder final : public ChangeListener {
public:
    explicit JournalRecorder(Connection& connection);
    ~JournalRecorder() override;
    JournalRecorder(const JournalRecorder&) = delete;
    JournalRecorder& operator=(const JournalRecorder&) = delete;
    /// The one that listens to a file; nullptr where no journal is kept.
    static JournalRecorder* of(const Connection& connection) {
        return static_cast<JournalRecorder*>(connection.listener());
    }

    /// Gathers from now on, within the transaction that has just begun.
    void begin();
    void discard();
    /// The transaction was given up, and what finish() wrote with it.
    void rolledBack() override;
    bool recording() const { return m_on; }
    void lost() override;
    void begins(const sql::Plan& plan) override;
    void ends() override { m_expected = nullptr; }
    void need(const QString& table, const QString& word);
    /// Ends the gathering; the layouts that it names are in the file then.
    JournalRecord finish();

private:
    enum class Kind : char { Inserted, Deleted, Changed };
    /// Whole rows of an inserted and of a deleted one; fields with their numbers of a changed one.
    struct Change {
        Kind kind;
        journal::Bytes before, after;
    };
    struct Sheet {
        JournalLayout layout;
        std::unordered_map<qint64, Change> changes;
    };

    static void rowChanges(void* self, sqlite3*, int what, const char* file, const char* table, sqlite3_int64 before,
                           sqlite3_int64 after);
    void readLayouts();
    Sheet* sheetOf(const char* table);
    void inserted(Sheet& sheet, qint64 row);
    void deleted(Sheet& sheet, qint64 row);
    void changed(Sheet& sheet, qint64 row);
    void extend(const Sheet& sheet, Change& change);
    void compare(const Sheet& sheet, size_t field, Change& change, bool always = false) const;
    static bool unchanged(const Change& change);
    sqlite3_value* before(const Sheet& sheet, size_t field) const;
    sqlite3_value* after(const Sheet& sheet, size_t field) const;
    journal::Bytes whole(const Sheet& sheet, bool old) const;
    void noteOwner(const Sheet& sheet, bool old);
    std::vector<std::pair<std::string, qint64>> counters() const;
    void writeLayout(JournalLayout& layout);
    void putRows(journal::Bytes& out, const Sheet& sheet, const std::vector<qint64>& rows) const;
    void putCompanions(journal::Bytes& out);
    void putWords(journal::Bytes& out) const;
    void putDoubles(journal::Bytes& out) const;
    std::vector<qint64> doublesIn(const Sheet& sheet) const;

    Connection& m_connection;
    std::vector<std::unique_ptr<Sheet>> m_sheets;
    const char* m_lastName = nullptr;
    Sheet* m_lastSheet = nullptr;
    const Sheet* m_expected = nullptr;  ///< whose rows the running statement sets, and these columns alone
    const std::vector<int>* m_columns = nullptr;
    std::unordered_set<qint64> m_owners;
    std::vector<std::pair<std::string, std::string>> m_words;  ///< needed ones with their tables
    std::vector<std::pair<std::string, qint64>> m_counters;
    quint64 m_schemaNumber = 0;
    size_t m_bytes = 0;
    bool m_on = false, m_known = true;
};

}  // namespace koben

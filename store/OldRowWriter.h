#pragma once
// Rows of an old table on their way into one of the database, cell by cell as the old file's reader gave them: for the
// many in which nothing has to be converted, refused or told.
#include "store/OldFile.h"

namespace koben {

class Connection;

/// Inserts within the caller's transaction. Prepared with the first row; the table must stay as it is until the last.
class OldRowWriter {
public:
    /// `fields` of `table`, quoted where their names want it: those of the old table at `places`, then further ones.
    OldRowWriter(Connection& connection, const QString& table, const QStringList& fields, const OldTable& old,
                 const std::vector<int>& places);
    ~OldRowWriter();
    OldRowWriter(const OldRowWriter&) = delete;
    OldRowWriter& operator=(const OldRowWriter&) = delete;

    /// False, with nothing written, for a row that wants its values looked at: a kind that the field has not, a text or
    /// number that may not fit, a time of day, something damaged. What is written is what those values would give.
    bool insert(const OldRow& row, const std::vector<Value>& further = {});

private:
    struct Target;
    struct Prepared;
    void prepare();
    bool bind(Target& target, int place, const OldRow& row, const std::vector<Value>& further);

    Connection& m_connection;
    QString m_text;
    const OldTable& m_old;
    std::vector<int> m_places;
    std::unique_ptr<Prepared> m_prepared;
};

}  // namespace koben

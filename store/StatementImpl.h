#pragma once
#include "store/Connection.h"

namespace koben {

/// Cuts a `top n` result behind the last row that ties with the n-th.
class TopCut {
public:
    TopCut() = default;
    TopCut(qint64 top, const std::vector<sql::TopKey>& keys) : m_top(top), m_keys(&keys) {}
    /// Called with each row; false: this row and all further ones do not belong to the result.
    bool keeps(sqlite3_stmt* row);

private:
    qint64 m_top = -1;
    qint64 m_seen = 0;
    const std::vector<sql::TopKey>* m_keys = nullptr;
    std::vector<Value> m_last;
};

/// A statement of its own with its place in the result.
class StatementImpl : public Stream {
public:
    StatementImpl(std::shared_ptr<Connection> owner, Command text)
        : connection(std::move(owner)), command(std::move(text)) {}
    void release() override { statement.reset(); }
    sqlite3_stmt* get();
    bool next();
    void bind(const std::vector<Value>& values);

    std::shared_ptr<Connection> connection;
    Command command;
    StatementHandle statement;
    quint64 schemaNumber = 0;
    std::vector<Value> values;
    bool bound = false, onRow = false;
    TopCut cut;
};

}  // namespace koben

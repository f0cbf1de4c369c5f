#include "store/Watch.h"

#include <algorithm>

#include "store/Connection.h"

namespace koben {

Watch::Watch(const Database& database, const QString& table)
    : m_connection(database.m_connection), m_state(std::make_shared<WatchState>()) {
    m_state->table = table.toStdString();
    database.m_connection->watch(m_state);
}

bool Watch::watches(const Database& database) const {
    const auto connection = m_connection.lock();
    return connection != nullptr && connection == database.m_connection && !connection->isClosed();
}

std::optional<std::vector<qint64>> Watch::take(size_t most) {
    const auto connection = m_connection.lock();
    if (connection == nullptr || connection->isClosed()) return std::nullopt;
    const qint64 version = number(connection->file(), "PRAGMA data_version");
    const bool known = !m_state->lost && version == m_state->version && m_state->rows.size() <= most;
    std::vector<qint64> rows(m_state->rows.begin(), m_state->rows.end());
    m_state->rows.clear();
    m_state->lost = false;
    m_state->version = version;
    if (!known) return std::nullopt;
    return rows;
}

}  // namespace koben

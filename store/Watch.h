#pragma once
// Which rows of a table this process has touched since it was last asked, so that a list need not be read anew whole.
#include <memory>
#include <optional>
#include <vector>

#include "store/Database.h"

namespace koben {

struct WatchState;

class Watch {
public:
    Watch() = default;
    /// From now on; `table` has a counter field.
    Watch(const Database& database, const QString& table);

    /// Whether it watches the file of this connection.
    bool watches(const Database& database) const;
    /// Counters of the rows added, changed or removed since the last take(), each once. Nothing where that is not known
    /// and everything may have changed: at the first call, after another program's writing, after a rolled-back
    /// transaction or a change of tables, and where it is more than `most`.
    std::optional<std::vector<qint64>> take(size_t most);

private:
    std::weak_ptr<Connection> m_connection;  ///< the file may close meanwhile
    std::shared_ptr<WatchState> m_state;
};

}  // namespace koben

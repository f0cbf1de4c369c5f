#include "store/Action.h"

#include "store/Connection.h"

namespace koben {

Action::Action(const Database& database, const QString& name)
    : m_database(database),
      m_name(name),
      m_outermost(!database.m_connection->inTransaction()),
      m_transaction(database) {}

void Action::commit() {
    m_transaction.commit();
    if (m_outermost) m_database.m_connection->actionDone(m_name);
}

}  // namespace koben

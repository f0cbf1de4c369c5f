#include "store/Action.h"

#include "store/Connection.h"
#include "store/Journal.h"
#include "store/JournalRecorder.h"

namespace koben {

Action::Action(const Database& database, const QString& name)
    : m_database(database),
      m_name(name),
      m_outermost(!database.m_connection->inTransaction()),
      m_transaction(database) {
    if (JournalRecorder* recorder = m_database.m_connection->recorder(); m_outermost && recorder) recorder->begin();
}

void Action::commit() {
    if (m_outermost) Journal::note(*m_database.m_connection, m_name, m_kind, m_of);
    m_transaction.commit();
    if (m_outermost) m_database.m_connection->actionDone(m_name);
}

}  // namespace koben

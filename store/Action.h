#pragma once
// A user's action on the data, with the name by which she knows it: "Belegung 123, 17.07.2026".
#include "store/Database.h"

namespace koben {

/// What an entry of the journal did: an action, one that took others back, one that carried those out again.
enum class ActionKind { Action, TakeBack, Redo };

/// One named action: everything between construction and commit() reaches the disk whole or not at all, and with it an
/// entry in the journal, by which it can be taken back. Whoever opens one hands it on to the routines that write for
/// it; they work on its database() and open nothing of their own. An action within another one joins it, and the outer
/// one names both. Destroyed without commit() it rolls back.
class Action {
public:
    Action(const Database& database, const QString& name);

    const Database& database() const { return m_database; }
    const QString& name() const { return m_name; }
    /// For an action whose name is known only once it has begun, such as the number of rows it touches.
    void setName(const QString& name) { m_name = name; }
    /// The action takes these entries of the journal back, or carries them out again.
    void setReversal(ActionKind kind, const std::vector<qint64>& of) {
        m_kind = kind;
        m_of = of;
    }
    /// Once it is on the disk, the workspace's observer hears of it (Workspace::onAction).
    void commit();

private:
    Database m_database;
    QString m_name;
    ActionKind m_kind = ActionKind::Action;
    std::vector<qint64> m_of;
    bool m_outermost;
    Transaction m_transaction;
};

}  // namespace koben

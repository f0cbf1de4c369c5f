#pragma once
// Taking actions back and carrying them out again, by the rules of the herd: what rests on what, what typing would
// refuse, and what is derived anew afterwards. Taking back is itself an action.
#include "core/Variablen.h"
#include "store/Journal.h"

namespace koben {

/// What came of it: the name of what was taken back or carried out again, or why it was not.
struct Rueckmeldung {
    QString name;
    QString refusal;    ///< for the user, "" where nothing forbids it
    QString question;   ///< that she must agree to before it is done, as typing the same would ask it
    bool herd = false;  ///< rows of animals were written that the user knows, others than those that are derived
    bool done() const { return refusal.isEmpty() && question.isEmpty(); }
};

/// Why something cannot be taken back: this action rests on it.
QString Darauf_beruht(const Journal::Entry& entry);

class Ruecknahme {
public:
    using Entry = Journal::Entry;

    Ruecknahme(const Database& db, const Variablen& v) : m_db(db), m_variablen(v), m_journal(db) {}

    /// The newest action that counts, and what was taken back last and since then by no new action left behind.
    std::optional<Entry> next() const { return m_journal.newest(Journal::Kind::Action); }
    std::optional<Entry> nextAgain() const;
    /// The name of an entry in the user's words: of one that took back, what it took back.
    QString subject(const Entry& entry) const;

    /// Entries to take back together: those asked for, and what rests on them.
    struct Plan {
        std::vector<Entry> entries;  ///< all of them, newest first
        std::vector<Entry> added;    ///< those that nobody asked for, newest first
        QString refusal;             ///< why it cannot be done, "" where it can
        bool again = false;          ///< they take back, and what they took back is carried out again
    };
    /// Of actions that count, or of entries that took some back.
    Plan plan(const std::vector<qint64>& numbers) const;
    /// The newest action, and what was taken back last; with a refusal where there is none.
    Plan backPlan() const;
    Plan againPlan() const;
    /// In one action, whole or not at all. `agreed`: the user has said yes to what it would ask.
    Rueckmeldung carryOut(const Plan& plan, bool agreed = false) const;

    Rueckmeldung back() const;
    Rueckmeldung again() const;

private:
    struct Footprint;
    class Work;
    std::vector<qint64> meant(qint64 number) const;
    QString objection(const Entry& entry, bool again) const;
    Footprint footprint(const Entry& entry) const;
    std::vector<qint64> restingOn(const Entry& entry) const;
    void addTakers(const Entry& entry, std::vector<qint64>& numbers) const;
    std::vector<qint64> deeds(const Plan& plan) const;
    static bool countsAfter(const Entry& entry, const Plan& plan, const std::vector<qint64>& deeds);
    std::vector<qint64> missingWords(const Plan& plan) const;

    Database m_db;
    const Variablen& m_variablen;
    Journal m_journal;
};

}  // namespace koben

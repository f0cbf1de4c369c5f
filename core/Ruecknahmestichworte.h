#pragma once
// The lists of keywords when actions are taken back: bookings bring the words that they need, several may need the same
// one, and a list has nothing by which to tell its rows but their texts. So they are not brought back row by row: what
// was done to them is gone through anew, with the actions that count.
#include "store/Journal.h"

namespace koben {

class Stichwortlisten {
public:
    using Counts = std::function<bool(const Journal::Entry& entry)>;

    /// For actions that shall count no more, or again. Where none of them has to do with keywords nothing is read.
    Stichwortlisten(const Journal& journal, const std::vector<qint64>& deeds);

    /// Actions that count and change or delete a word that is not there where so many count.
    std::vector<qint64> without(const Counts& counts) const;
    /// Writes the lists as they are where those of `after` count; until now those of `before` did. Where something else
    /// than actions has written to a list, only what differs between the two is added and removed.
    void settle(const Action& action, const Counts& before, const Counts& after) const;

private:
    struct Change {
        QString table;
        qint64 row;
        RowChange::Kind kind;
        Value before, after;
    };
    struct Deed {
        Journal::Entry entry;
        std::vector<Change> changes;
        std::vector<Journal::Word> words;
        bool needs(const QString& table, const Value& text) const;
    };
    using Lists = std::map<QString, Journal::Texts>;
    class Game;

    Deed read(const Journal::Entry& entry) const;
    void rewind();
    Lists play(const Counts& counts, std::vector<qint64>* vain = nullptr) const;

    const Journal& m_journal;
    std::vector<Deed> m_deeds;  ///< from the oldest that matters on
    Lists m_now, m_first;       ///< as they are, and before the first deed
};

}  // namespace koben

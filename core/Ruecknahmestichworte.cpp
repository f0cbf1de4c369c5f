#include "core/Ruecknahmestichworte.h"

#include <QHash>
#include <algorithm>

#include "core/Ruecknahmeregeln.h"
#include "store/Collation.h"

namespace koben {

using Kind = RowChange::Kind;
using Texts = Journal::Texts;

namespace {

qint64 next(const Texts& rows) { return rows.empty() ? 1 : rows.rbegin()->first + 1; }

/// The row that holds this text, the given one rather than another.
Texts::iterator holding(Texts& rows, qint64 row, const Value& text) {
    if (const auto own = rows.find(row); own != rows.end() && own->second == text) return own;
    return std::find_if(rows.begin(), rows.end(), [&](const auto& item) { return item.second == text; });
}

std::vector<Value> inOrder(const Texts& rows) {
    std::vector<Value> result;
    for (const auto& [row, text] : rows) result.push_back(text);
    return result;
}

/// What is in `from` more often than in `minus`.
std::vector<Value> difference(const Texts& from, const Texts& minus) {
    std::vector<Value> result = inOrder(from);
    for (const auto& [row, text] : minus)
        if (const auto same = std::find(result.begin(), result.end(), text); same != result.end()) result.erase(same);
    return result;
}

}  // namespace

/// The lists while actions are gone through.
class Stichwortlisten::Game {
public:
    explicit Game(const Lists& first) : m_lists(first) {
        for (const auto& [table, rows] : m_lists)
            for (const auto& [row, text] : rows) ++count(table, text);
    }
    Lists& lists() { return m_lists; }

    void add(const QString& table, const Value& text) {
        Texts& rows = m_lists[table];
        rows.emplace(next(rows), text);
        ++count(table, text);
    }
    void need(const Journal::Word& word) {
        if (count(word.table, word.text) == 0) add(word.table, word.text);
    }
    /// False where there is no such row.
    bool change(const Change& change) {
        Texts& rows = m_lists[change.table];
        const auto at = holding(rows, change.row, change.before);
        if (at == rows.end()) return false;
        --count(change.table, change.before);
        if (change.kind == Kind::Deleted) {
            rows.erase(at);
        } else {
            at->second = change.after;
            ++count(change.table, change.after);
        }
        return true;
    }

private:
    int& count(const QString& table, const Value& text) { return m_counts[table][sortKey(text.toText())]; }

    Lists m_lists;
    QHash<QString, QHash<QByteArray, int>> m_counts;  ///< by the texts as they are compared
};

bool Stichwortlisten::Deed::needs(const QString& table, const Value& text) const {
    return std::any_of(words.begin(), words.end(), [&](const Journal::Word& word) {
        return word.table == table && equalTexts(word.text, text.toText());
    });
}

Stichwortlisten::Deed Stichwortlisten::read(const Journal::Entry& entry) const {
    Deed deed{entry, {}, {}};
    Journal::Beside beside;
    m_journal.read(
        entry.number,
        [&](const RowChange& row) {
            if (!row.cells.empty() && Regeln::isKeywords(*row.table))
                deed.changes.push_back(
                    {*row.table, row.row, row.kind, row.cells.front().before, row.cells.front().after});
            return true;
        },
        &beside);
    deed.words = std::move(beside.words);
    return deed;
}

Stichwortlisten::Stichwortlisten(const Journal& journal, const std::vector<qint64>& deeds) : m_journal(journal) {
    const bool concerned = std::any_of(deeds.begin(), deeds.end(), [&](qint64 number) {
        const auto entry = journal.entry(number);
        if (!entry) return false;
        const Deed deed = read(*entry);
        return !deed.words.empty() || !deed.changes.empty();
    });
    if (!concerned) return;
    const auto history = journal.entriesFrom(journal.origin(*std::min_element(deeds.begin(), deeds.end())));
    if (!std::all_of(history.begin(), history.end(), [](const auto& entry) { return entry.known; })) return;
    for (const Journal::Entry& entry : history) {
        Deed deed = read(entry);
        if (!deed.words.empty() || !deed.changes.empty()) m_deeds.push_back(std::move(deed));
    }
    for (const QString& table : Regeln::keywordTables()) m_now[table] = journal.texts(table);
    rewind();
}

/// As the lists were before the first deed. What took back and what carried out again has changed them too.
void Stichwortlisten::rewind() {
    m_first = m_now;
    for (auto deed = m_deeds.rbegin(); deed != m_deeds.rend(); ++deed)
        for (auto change = deed->changes.rbegin(); change != deed->changes.rend(); ++change) {
            Texts& rows = m_first[change->table];
            if (change->kind == Kind::Deleted) {
                rows.emplace(rows.contains(change->row) ? next(rows) : change->row, change->before);
                continue;
            }
            const auto at = holding(rows, change->row, change->after);
            if (at == rows.end()) continue;
            if (change->kind == Kind::Inserted)
                rows.erase(at);
            else
                at->second = change->before;
        }
}

Stichwortlisten::Lists Stichwortlisten::play(const Counts& counts, std::vector<qint64>* vain) const {
    Game game(m_first);
    for (const Deed& deed : m_deeds) {
        if (deed.entry.kind != Journal::Kind::Action || !counts(deed.entry)) continue;
        bool all = true;
        for (const Change& change : deed.changes) {
            if (change.kind != Kind::Inserted)
                all = game.change(change) && all;
            else if (!deed.needs(change.table, change.after))
                game.add(change.table, change.after);
        }
        for (const Journal::Word& word : deed.words) game.need(word);
        if (!all && vain) vain->push_back(deed.entry.number);
    }
    return game.lists();
}

std::vector<qint64> Stichwortlisten::without(const Counts& counts) const {
    std::vector<qint64> result;
    if (!m_deeds.empty()) play(counts, &result);
    return result;
}

void Stichwortlisten::settle(const Action& action, const Counts& before, const Counts& after) const {
    if (m_deeds.empty()) return;
    Lists old = play(before), lists = play(after);
    for (const auto& [table, now] : m_now) {
        if (old[table] == lists[table]) continue;
        if (inOrder(old[table]) == inOrder(now)) {
            m_journal.setTexts(action, table, lists[table]);
            continue;
        }
        Texts rows = now;
        for (const Value& text : difference(old[table], lists[table]))
            if (const auto at = holding(rows, 0, text); at != rows.end()) rows.erase(at);
        for (const Value& text : difference(lists[table], old[table]))
            if (std::none_of(rows.begin(), rows.end(),
                             [&](const auto& item) { return equalTexts(item.second.toText(), text.toText()); }))
                rows.emplace(next(rows), text);
        m_journal.setTexts(action, table, rows);
    }
}

}  // namespace koben

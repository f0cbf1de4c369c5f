#include <optional>

#include "figures/Sauenbuch.h"
#include "store/Watch.h"

namespace koben {
namespace {

constexpr auto& Tables = Sauenbuch::Tabellen;

/// One number of each table.
std::vector<qint64> ofEachTable(const Database& db, const QString& select, const std::vector<Value>& values = {}) {
    QStringList parts;
    for (const char* table : Tables) parts += select.arg(QString::fromUtf8(table));
    Statement row = db.prepare(parts.join(QStringLiteral(" union all ")));
    row.bind(values);
    std::vector<qint64> numbers;
    while (row.next()) numbers.push_back(row.integer(0));
    return numbers;
}

/// The book that was read last, of one file.
class Ablage {
public:
    std::shared_ptr<const Sauenbuch> of(const Database& db, qint32 heute, qint32 from, Lesen what) {
        if (!m_watches || !m_watches->front().watches(db)) watch(db);
        const auto touched = take();
        const bool known = touched && m_book && !emptied(db);
        m_newest = ofEachTable(db, QStringLiteral("select max(ID) from %1"));
        const bool stands = known && m_book->heute() == heute && m_book->holds(from, what);
        if (stands && *touched != Sauenbuch::Zeilen{})
            m_book = m_book->changed(db, *touched);
        else if (!stands)
            m_book.reset();
        if (!m_book) m_book = std::make_shared<const Sauenbuch>(db, heute, from, what);
        return m_book;
    }

private:
    void watch(const Database& db) {
        m_book.reset();
        m_watches.emplace();
        for (const char* table : Tables) m_watches->push_back(Watch(db, QString::fromUtf8(table)));
    }

    /// The rows touched since the last time; nothing where that is not known or they are many. Asks each watch.
    std::optional<Sauenbuch::Zeilen> take() {
        constexpr size_t most = 300;
        Sauenbuch::Zeilen rows;
        bool known = true;
        for (size_t i = 0; i < rows.size(); ++i)
            if (auto touched = (*m_watches)[i].take(most))
                rows[i] = std::move(*touched);
            else
                known = false;
        return known ? std::optional(rows) : std::nullopt;
    }

    /// A table that is emptied as a whole tells no row to its watch; its newest row of then is gone.
    bool emptied(const Database& db) const {
        const std::vector<Value> newest(m_newest.begin(), m_newest.end());
        const auto left = ofEachTable(db, QStringLiteral("select count(*) from %1 where ID = ?"), newest);
        for (size_t i = 0; i < left.size(); ++i)
            if (m_newest[i] != 0 && left[i] == 0) return true;
        return false;
    }

    std::optional<std::vector<Watch>> m_watches;
    std::vector<qint64> m_newest;
    std::shared_ptr<const Sauenbuch> m_book;
};

}  // namespace

std::shared_ptr<const Sauenbuch> Sauenbuch_holen(const Database& db, qint32 heute, qint32 from, Lesen what) {
    static Ablage kept;
    return kept.of(db, heute, from, what);
}

}  // namespace koben

#include <array>
#include <optional>

#include "figures/Sauenbuch.h"
#include "store/Watch.h"

namespace koben {
namespace {

constexpr std::array Tables{"Sauen", "Belegung", "Trächtigkeit", "Absetzung", "Ferkelung", "Verluste"};

/// The newest row of each table: a table that is emptied as a whole tells no row to its watch.
std::vector<qint64> newestRows(const Database& db) {
    QStringList parts;
    for (const char* table : Tables) parts += QStringLiteral("select max(ID) from %1").arg(QString::fromUtf8(table));
    Statement row = db.prepare(parts.join(QStringLiteral(" union all ")));
    std::vector<qint64> newest;
    while (row.next()) newest.push_back(row.integer(0));
    return newest;
}

/// The book that was read last, of one file.
class Ablage {
public:
    std::shared_ptr<const Sauenbuch> of(const Database& db, qint32 heute, qint32 from, Lesen what) {
        if (!m_watches || !m_watches->front().watches(db)) watch(db);
        bool stands = m_book != nullptr && m_book->heute() == heute;
        for (Watch& watch : *m_watches)
            if (!watch.take(0)) stands = false;  // each must be asked, so that it begins anew
        const std::vector<qint64> newest = newestRows(db);
        if (stands && newest == m_newest && m_book->holds(from, what)) return m_book;
        m_newest = newest;
        m_book = std::make_shared<const Sauenbuch>(db, heute, from, what);
        return m_book;
    }

private:
    void watch(const Database& db) {
        m_book.reset();
        m_watches.emplace();
        for (const char* table : Tables) m_watches->push_back(Watch(db, QString::fromUtf8(table)));
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

#include "core/Ruecknahmeselektion.h"

#include <algorithm>

#include "core/Ruecknahmeregeln.h"

namespace koben {

using Change = RowChange::Kind;

Selektionsmarken::Selektionsmarken(const Journal& journal, const std::vector<qint64>& deeds) : m_journal(journal) {
    for (const qint64 deed : deeds)
        journal.read(deed, [this](const RowChange& row) {
            if (*row.table == Regeln::Tiere && row.kind != Change::Inserted && row.cell(Regeln::Selektiert))
                m_marks.try_emplace(row.row);
            return true;
        });
    if (!m_marks.empty()) m_first = journal.origin(*std::min_element(deeds.begin(), deeds.end()));
}

void Selektionsmarken::read(qint64 number, const Counts& counts) {
    const auto entry = m_journal.entry(number);
    const bool counting = entry->kind == Journal::Kind::Action && counts(*entry);
    bool cleared = false;
    m_journal.read(number, [&](const RowChange& row) {
        const auto mark = *row.table == Regeln::Tiere ? m_marks.find(row.row) : m_marks.end();
        const RowChange::Cell* cell = mark == m_marks.end() ? nullptr : row.cell(Regeln::Selektiert);
        if (cell == nullptr) return true;
        if (!mark->second && row.kind != Change::Inserted) mark->second = cell->before;
        if (!counting || row.kind == Change::Deleted) return true;
        mark->second = cell->after;
        cleared = cleared || (row.kind == Change::Changed && !cell->after.isNull() && cell->after.toText().isEmpty());
        return true;
    });
    if (!cleared) return;
    for (auto& [animal, mark] : m_marks)  // of all animals, also of those that had no value
        if (mark && mark->isNull()) mark = QString();
}

void Selektionsmarken::restore(const Database& db, const Counts& counts) {
    if (m_marks.empty()) return;
    std::vector<qint64> animals;
    for (const auto& [animal, mark] : m_marks) animals.push_back(animal);
    for (const qint64 number : m_journal.ofAnimals(animals, m_first)) read(number, counts);
    Statement now = db.prepare(QStringLiteral("select Selektiert from Sauen where ID = ?"));
    Statement write = db.prepare(QStringLiteral("update Sauen set Selektiert = ? where ID = ?"));
    for (const auto& [animal, mark] : m_marks) {
        now.bind({animal});
        if (mark && now.next() && !(now.value(0) == *mark)) write.run({*mark, animal});
    }
}

}  // namespace koben

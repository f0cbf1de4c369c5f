#include "core/RowWriter.h"

namespace koben {

RowWriter::RowWriter(const Database& db, const QString& table, const QStringList& fields, const FieldValues& fixed)
    : m_db(db), m_table(table), m_fields(fields) {
    for (const auto& [field, value] : fixed) {
        m_fields.append(field);
        m_fixed.push_back(value);
    }
}

void RowWriter::insert(std::vector<Value> values) {
    if (!m_insert) {
        const QStringList marks(m_fields.size(), QStringLiteral("?"));
        m_insert =
            m_db.prepare(QStringLiteral("insert into %1 (%2) values (%3)")
                             .arg(m_table, m_fields.join(QStringLiteral(", ")), marks.join(QStringLiteral(", "))));
    }
    values.insert(values.end(), m_fixed.begin(), m_fixed.end());
    m_insert->run(values);
}

bool RowWriter::update(qint64 id, std::vector<Value> values) {
    if (!m_update)
        m_update = m_db.prepare(
            QStringLiteral("update %1 set %2 = ? where ID = ?").arg(m_table, m_fields.join(QStringLiteral(" = ?, "))));
    values.insert(values.end(), m_fixed.begin(), m_fixed.end());
    values.emplace_back(id);
    return m_update->run(values) > 0;
}

}  // namespace koben

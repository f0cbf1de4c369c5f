#include "core/Altfelder.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/Aktionsnamen.h"

namespace koben {

namespace {

bool isTooLong(const Value& value, int most) {
    const auto* text = most > 0 ? std::get_if<QString>(&value.variant()) : nullptr;
    return text != nullptr && text->size() > most;
}

bool isTooLarge(const Value& value, Type type) {
    constexpr double most = std::numeric_limits<qint16>::max();
    return type == Type::Short && !value.isNull() && !value.isText() && std::abs(value.toDouble()) > most;
}

}  // namespace

QStringList alttabellen() {
    QStringList names;
    for (const Alttabelle& table : Alttabellen) names += QString::fromUtf8(table.name);
    return names;
}

const Alttabelle* alttabelle(const QString& name) {
    for (const Alttabelle& table : Alttabellen)
        if (name.compare(QString::fromUtf8(table.name), Qt::CaseInsensitive) == 0) return &table;
    return nullptr;
}

Altfelder::Altfelder(const Database& db, const OldTable& table, const QStringList& without) : m_table(table) {
    const bool known = db.tables().contains(table.name, Qt::CaseInsensitive);
    const std::vector<Field> fields = known ? db.fields(table.name) : std::vector<Field>();
    for (size_t i = 0; i < table.fields.size(); ++i) {
        const QString& name = table.fields[i].name;
        if (without.contains(name, Qt::CaseInsensitive)) continue;
        const auto place = std::find_if(fields.begin(), fields.end(), [&](const Field& field) {
            return field.name.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (place == fields.end() || table.fields[i].type == Type::Null) {
            m_homeless += name;
            continue;
        }
        m_names += place->name;
        m_from.push_back(static_cast<int>(i));
        m_size.push_back(place->type == Type::Text ? place->size : 0);
        m_type.push_back(place->type);
    }
}

std::vector<Value> Altfelder::values(const OldRow& row) {
    std::vector<Value> values;
    values.reserve(m_from.size() + 2);
    for (const int column : m_from) values.push_back(row.value(column, m_losses));
    return values;
}

int Altfelder::tooLong(const std::vector<Value>& values) const {
    int count = 0;
    for (size_t i = 0; i < m_size.size(); ++i) count += isTooLong(values[i], m_size[i]);
    return count;
}

void Altfelder::requireFit(const std::vector<Value>& values) const {
    for (size_t i = 0; i < m_size.size(); ++i) {
        const bool large = isTooLarge(values[i], m_type[i]);
        if (!large && !isTooLong(values[i], m_size[i])) continue;
        const QString text = values[i].toText();
        const QString place =
            QStringLiteral("Tabelle %1, Feld %2").arg(m_table.name, m_names[static_cast<qsizetype>(i)]);
        if (large)
            throw DatabaseError(DatabaseError::Kind::TooLong,
                                QStringLiteral("In der alten Datenbank (%1) steht die Zahl %2, die in KOBEN 2.0 keinen "
                                               "Platz hat. Bitte berichtigen Sie sie in der alten Datenbank, und "
                                               "wiederholen Sie die Übernahme.")
                                    .arg(place, text),
                                QStringLiteral("Zahl zu groß: ") + place);
        throw DatabaseError(
            DatabaseError::Kind::TooLong,
            QStringLiteral(
                "In der alten Datenbank (%1) steht ein Text von %2 Zeichen (\"%3 ...\"). In KOBEN 2.0 ist Platz "
                "für %4 Zeichen, und gekürzt wird nichts. Bitte kürzen Sie den Text in der alten Datenbank, "
                "und wiederholen Sie die Übernahme.")
                .arg(place)
                .arg(text.size())
                .arg(text.left(20))
                .arg(m_size[i]),
            QStringLiteral("Text zu lang: ") + place);  // without the farm's words
    }
}

QString lossText(const OldLosses& losses) {
    QStringList parts;
    if (losses.rows > 0) parts += counted(losses.rows, "Zeile", "Zeilen") + QStringLiteral(" nicht lesbar");
    if (losses.values > 0)
        parts += counted(losses.values, "Wert", "Werte") + QStringLiteral(" nicht lesbar und deshalb leer");
    if (losses.cutTimes > 0)
        parts += QStringLiteral("bei %1 fällt die Uhrzeit weg").arg(counted(losses.cutTimes, "Datum", "Datumsangaben"));
    return parts.join(QStringLiteral(", "));
}

}  // namespace koben

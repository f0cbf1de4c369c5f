#include "core/NeuesTier.h"

#include <QSet>

namespace koben {
namespace {

const QStringList Texts = {
    QStringLiteral("Art"),          QStringLiteral("Nummer"),       QStringLiteral("Gruppe"),
    QStringLiteral("Stallnr"),      QStringLiteral("Ohrmarke"),     QStringLiteral("Tätowierung"),
    QStringLiteral("Rasse"),        QStringLiteral("Status"),       QStringLiteral("Statusabfrage"),
    QStringLiteral("Belegungsart"), QStringLiteral("Zugangsgrund"), QStringLiteral("Lieferant"),
    QStringLiteral("Abgangsgrund"), QStringLiteral("Abnehmer"),     QStringLiteral("Selektiert"),
    QStringLiteral("Infos")};
const QStringList Numbers = {QStringLiteral("Anz_Belegungen"),    QStringLiteral("Anz_Ferkelungen"),
                             QStringLiteral("Anz_Ferkel_Gesamt"), QStringLiteral("Anz_Ferkel_Lebend"),
                             QStringLiteral("Zugangsgewicht_kg"), QStringLiteral("Einkaufspreis"),
                             QStringLiteral("Abgangsgewicht_kg"), QStringLiteral("Verkaufspreis")};

FieldValues withDefaults(const QStringList& fields, FieldValues fixed) {
    QSet<QString> given;
    for (const QString& field : fields) given.insert(field.toLower());
    for (const auto& [field, value] : fixed) given.insert(field.toLower());
    const auto add = [&](const QString& field, const Value& value) {
        if (!given.contains(field.toLower())) fixed.emplace_back(field, value);
    };
    for (const QString& field : Texts) add(field, QString());
    for (const QString& field : Numbers) add(field, 0);
    add(QStringLiteral("Mechanische_Amme"), QStringLiteral("N"));
    return fixed;
}

}  // namespace

NeueTiere::NeueTiere(const Action& action, const QStringList& fields, const FieldValues& fixed)
    : m_rows(action.database(), QStringLiteral("Sauen"), fields, withDefaults(fields, fixed)) {}

}  // namespace koben

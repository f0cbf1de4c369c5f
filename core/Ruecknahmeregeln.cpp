#include "core/Ruecknahmeregeln.h"

#include <QHash>
#include <QSet>

#include "core/Buchungen.h"

namespace koben::Regeln {
namespace {

using Fields = QSet<QString>;

const Fields Derived = {
    QStringLiteral("Anz_Belegungen"),    QStringLiteral("Anz_Ferkelungen"), QStringLiteral("Anz_Ferkel_Gesamt"),
    QStringLiteral("Anz_Ferkel_Lebend"), QStringLiteral("Status"),          QStringLiteral("N_Belegung"),
    QStringLiteral("N_Ferkelung"),       QStringLiteral("L_Belegung"),      QStringLiteral("L_Ferkelung"),
    QStringLiteral("L_Trächtigkeit"),    QStringLiteral("L_Absetzung"),     QStringLiteral("Aenderung")};
const Fields Litters = {QStringLiteral("LNr"), QStringLiteral("LNrJahr")};
/// Of an animal, on which the cycle hangs.
const Fields Deciding = {QStringLiteral("Art"), QStringLiteral("Nummer"), QStringLiteral("Abgangsdatum"),
                         QStringLiteral("Statusabfrage")};

}  // namespace

Journal::Role role(const QString& table, const QString& field) {
    using Role = Journal::Role;
    if (table == Tiere) {
        if (field == u"Selektiert") return Role::Light;
        return Derived.contains(field) ? Role::Derived : Role::Own;
    }
    return table == Wuerfe && Litters.contains(field) ? Role::Derived : Role::Own;
}

QString uniqueField(const QString& table) {
    static const QHash<QString, QString> fields = {
        {Tiere, Nummer},
        {QStringLiteral("Medikamente"), QStringLiteral("Medikament")},
        {QStringLiteral("Bestandsoptionen"), QStringLiteral("Tiergruppe")},
        {QStringLiteral("Arbeitsplanoptionen"), QStringLiteral("Arbeitsart")}};
    return fields.value(table);
}

const QStringList& numberFields() {
    static const QStringList fields = {QStringLiteral("Muttersau"), QStringLiteral("Zu_Saunr"),
                                       QStringLiteral("Ebernr")};
    return fields;
}

bool changesCycle(const RowChange& row) {
    if (*row.table != Tiere) {
        for (const Artangaben& kind : Buchungsarten)
            if (*row.table == QString::fromUtf8(kind.table)) return kind.cycle;
        return false;
    }
    if (row.kind != RowChange::Kind::Changed) return row.kind == RowChange::Kind::Deleted;
    for (const auto& cell : row.cells)
        if (Deciding.contains(row.fields->at(cell.field))) return true;
    return false;
}

}  // namespace koben::Regeln

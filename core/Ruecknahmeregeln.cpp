#include "core/Ruecknahmeregeln.h"

#include <QSet>
#include <algorithm>

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

qint32 dayOf(const Value& value) {
    constexpr int isoDay = 10;
    const QDate day = value.isDate() ? value.toDate() : QDate::fromString(value.toText().left(isoDay), Qt::ISODate);
    return day.isValid() ? static_cast<qint32>(day.toJulianDay()) : 0;
}

Journal::Role role(const QString& table, const QString& field) {
    using Role = Journal::Role;
    if (table == Tiere) {
        if (field == u"Selektiert") return Role::Light;
        return Derived.contains(field) ? Role::Derived : Role::Own;
    }
    if (isKeywords(table)) return Role::Apart;
    return table == Wuerfe && Litters.contains(field) ? Role::Derived : Role::Own;
}

const QStringList& keywordTables() {
    static const QStringList tables = {
        QStringLiteral("Stammdaten_Gruppe"),       QStringLiteral("Stammdaten_Rasse"),
        QStringLiteral("Stammdaten_Stallnummer"),  QStringLiteral("Stammdaten_Zugangsgrund"),
        QStringLiteral("Stammdaten_Abgangsgrund"), QStringLiteral("Stammdaten_Kunde"),
        QStringLiteral("Stammdaten_Bemerkung")};
    return tables;
}

bool isKeywords(const QString& table) { return keywordTables().contains(table); }

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

bool changesList(const RowChange& animal) {
    return animal.kind != RowChange::Kind::Changed ||
           std::any_of(animal.cells.begin(), animal.cells.end(),
                       [&](const auto& cell) { return !Derived.contains(animal.fields->at(cell.field)); });
}

}  // namespace koben::Regeln

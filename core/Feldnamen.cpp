#include "core/Feldnamen.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

const QString Tiere = QStringLiteral("Sauen");

/// Of an animal, as its entry screen says it; the others are called as their columns are.
struct Beschriftung {
    const char16_t* field;
    const char* label;
};
constexpr Beschriftung Beschriftungen[] = {{u"Stallnr", "Stallnr / Box"},
                                           {u"BoxDatum", "Box-Zuordnung"},
                                           {u"Tätowierung", "Tätowierung-Nr"},
                                           {u"Infos", "Bemerkungen"},
                                           {u"Belegungsart", "Besamungsart"},
                                           {u"Statusabfrage", "Status ignorieren"},
                                           {u"Zugangsgewicht_kg", "Zugangsgewicht"},
                                           {u"Abgangsgewicht_kg", "Abgangsgewicht"}};

/// Ticks with the text that a set one has.
struct Haken {
    const char16_t* field;
    const char16_t* set;
};
constexpr Haken Haken_der_Tiere[] = {{u"Statusabfrage", u"N"}, {u"Mechanische_Amme", u"J"}};

}  // namespace

QString fieldLabel(const QString& table, const QString& field) {
    if (table == Tiere)
        for (const auto& [name, label] : Beschriftungen)
            if (field == QStringView(name)) return QString::fromUtf8(label);
    return QString(field).replace(u'_', u' ');
}

QString fieldText(const QString& table, const QString& field, const Value& value) {
    if (table == Tiere)
        for (const auto& [name, set] : Haken_der_Tiere)
            if (field == QStringView(name))
                return value.toText() == QStringView(set) ? QStringLiteral("ja") : QStringLiteral("nein");
    const QString text = Hochkomma_ersetzen(value), empty = QStringLiteral("leer");
    if (text.isEmpty()) return empty;
    const auto& held = value.variant();
    const bool money = std::holds_alternative<Money>(held);
    const bool fraction = std::holds_alternative<float>(held) || std::holds_alternative<double>(held);
    if ((money || fraction) && value.toDouble() == 0) return empty;
    if (money) return Zahl_formatieren(QString(text), 2) + QStringLiteral(" €");
    return field.endsWith(QStringLiteral("_kg")) ? text + QStringLiteral(" kg") : text;
}

}  // namespace koben

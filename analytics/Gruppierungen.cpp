#include "analytics/Gruppierungen.h"

#include <array>

namespace koben {

namespace {

using Art = Gruppenwert::Art;

const Gruppenwert Anzahl{Art::Anzahl, {}, QStringLiteral("Anzahl")};
const Gruppenwert Buchungen{Art::Anzahl, {}, QStringLiteral("Buchungen")};
const Gruppenwert Ferkelungen{Art::Anzahl, {}, QStringLiteral("Ferkelungen")};
const Gruppenwert Verkauft{Art::Summe, QStringLiteral("Anzahl_Verkauf"), QStringLiteral("Anz_Verkauf")};

Gruppenwert sum(const char* field, const char* name = "") { return {Art::Summe, field, name}; }
Gruppenwert count(const char* name) { return {Art::Anzahl, {}, name}; }

struct Kreuz {
    const char* caption;
    Gruppenwert cell;
    std::vector<Gruppenwert> columns;
    const char* table;
    const char* pivot;
};

const std::array<Kreuz, Kreuztabellen>& crosstabs() {
    static const std::array<Kreuz, Kreuztabellen> all{{
        {"Belegung/Ebernr", {}, {Anzahl}, "Belegung", "Ebernr"},
        {"Belegung/Art", {}, {Anzahl}, "Belegung", "Belegungart"},
        {"Belegung/Station", {}, {Anzahl}, "Belegung", "Belegungsstation"},
        {"Ferkelung/Gesamt", {}, {Ferkelungen, sum("Ferkel_Gesamt", "Anzahl")}, "Ferkelung", "Ferkel_Gesamt"},
        {"Ferkelung/Lebend", {}, {Ferkelungen, sum("Ferkel_Lebendig", "Anzahl")}, "Ferkelung", "Ferkel_Lebendig"},
        {"Ferkelung/Tot", {}, {Ferkelungen, sum("Ferkel_Tot", "Anzahl")}, "Ferkelung", "Ferkel_Tot"},
        {"Absetzung/Anzahl", {}, {count("Absetzungen"), sum("Anzahl_Ferkel", "Anzahl")}, "Absetzung", "Anzahl_Ferkel"},
        {"Trächtig (J/N)", {}, {Anzahl}, "Trächtigkeit", "Trächtig"},
        {"Verschiebung/Anz",
         {},
         {count("Verschiebungen"), sum("Anzahl_Ferkel", "Anzahl")},
         "Verschiebung",
         "Anzahl_Ferkel"},
        {"Verluste/Anz", {}, {Buchungen, sum("Anzahl_Ferkel", "Anzahl")}, "Verluste", "Anzahl_Ferkel"},
        {"Verluste/Grund", {}, {Buchungen}, "Verluste", "Grund"},
        {"Behandl./Art", {}, {Buchungen}, "Behandlung", "Behandlungsart"},
        {"Behandl./Medik.", {}, {Buchungen}, "Behandlung", "Medikament"},
        {"Behandl./Tierarzt", {}, {Buchungen}, "Behandlung", "Tierarzt"},
        {"Verkauf/Anzahl", {}, {Buchungen, Verkauft}, "Ferkelverkauf", "Anzahl_Verkauf"},
        {"Verkauf/Kunde", sum("Anzahl_Verkauf"), {Buchungen, Verkauft}, "Ferkelverkauf", "Kunde"},
        {"Ferkel/Jahr", sum("Ferkel_Gesamt"), {}, "Ferkelung", "Year(Datum)"},
        {"Ferkel Leb./Jahr", sum("Ferkel_Lebendig"), {}, "Ferkelung", "Year(Datum)"},
        {"Ferkelungen/Nr", {}, {Ferkelungen}, "Ferkelung", "LNr"},
        {"Ferkelungen/NrJ.", {}, {Ferkelungen}, "Ferkelung", "LNrJahr"},
        {"Abgang/Jahr", {}, {}, "", "Year(Abgangsdatum)"},
    }};
    return all;
}

constexpr std::array Kostenarten{"Belegung", "Ferkelung", "Trächtigkeit", "Verluste", "Behandlung", "Ferkelverkauf"};
constexpr int Verkauf = 5;

constexpr std::array Tierfelder{"Art",   "Gruppe",       "Stallnr",   "Anz_Belegungen", "Anz_Ferkelungen",
                                "Rasse", "Zugangsgrund", "Lieferant", "Abgangsgrund",   "Abnehmer"};

}  // namespace

QString Gruppenwert::text() const {
    switch (art) {
        case Art::Summe:
            return "sum(" + field + u')';
        case Art::Mittel:
            return "avg(" + field + u')';
        case Art::Anzahl:
            break;
    }
    return QStringLiteral("count(*)");
}

QString Gruppierung::source() const {
    QStringList conditions;
    if (inHerd) conditions += QStringLiteral("Abgangsdatum IS NULL");
    if (!table.isEmpty()) conditions += QStringLiteral("Kennung = Sauen.ID");
    QString text = QStringLiteral(" from Sauen");
    if (!table.isEmpty()) text += ", " + table;
    if (!conditions.isEmpty()) text += " where " + conditions.join(QStringLiteral(" and "));
    return text;
}

QString Gruppierung::statement() const {
    if (!list.isEmpty()) return list;
    QString text = pivot.isEmpty() ? QString() : "transform " + cell.text() + u' ';
    text += "select " + key;
    if (!keyName.isEmpty()) text += " as " + keyName;
    for (const Gruppenwert& column : columns) text += ", " + column.text() + " as " + column.name;
    text += source() + " group by " + key;
    return pivot.isEmpty() ? text : text + " pivot " + pivot + u';';
}

Gruppierung Kreuztabelle(int number, const QString& key) {
    const Kreuz& cross = crosstabs().at(static_cast<size_t>(number));
    return {.caption = QString::fromUtf8(cross.caption),
            .key = key,
            .keyName = {},
            .columns = cross.columns,
            .cell = cross.cell,
            .pivot = QString::fromUtf8(cross.pivot),
            .table = QString::fromUtf8(cross.table),
            .list = {}};
}

Gruppierung Altersgruppierung(int number, const QString& pivot) {
    Gruppierung grouping;
    grouping.inHerd = true;
    if (number < 2) {
        grouping.caption = number == 0 ? "Bestandsalter nach Jahren" : "Bestandsalter nach Monaten";
        grouping.key = number == 0 ? "datediff('yyyy',Geburtsdatum, now)" : "datediff('m',Geburtsdatum, now)";
        grouping.keyName = number == 0 ? "Alter_Jahre" : "Alter_Monate";
        grouping.pivot = pivot;
    } else {
        grouping.caption = QStringLiteral("Stall/Box-Zuordnung der Ferkel in Tagen");
        grouping.list = QStringLiteral(
            "select Nummer, Stallnr, Ohrmarke, Tätowierung, Boxdatum, datediff('d',Boxdatum, now) as Tage from Sauen "
            "where Abgangsdatum IS NULL and Boxdatum IS NOT NULL and Art = 'Ferkel' order by datediff('d',Boxdatum, "
            "now) DESC");
    }
    return grouping;
}

Gruppierung Kostengruppierung(int number, const QString& key) {
    Gruppierung grouping;
    grouping.caption = grouping.table = QString::fromUtf8(Kostenarten.at(static_cast<size_t>(number)));
    grouping.key = key;
    grouping.inHerd = true;
    const QString money = number == Verkauf ? "Einnahmen" : "Kosten";
    grouping.columns = {Buchungen};
    if (number == Verkauf) grouping.columns.push_back(Verkauft);
    grouping.columns.push_back({Art::Summe, money, number == Verkauf ? "Einnahme" : "Kosten_" + grouping.table});
    grouping.columns.push_back({Art::Mittel, money, QStringLiteral("Durchschnitt")});
    return grouping;
}

Gruppierung Tiergruppierung(int number) {
    Gruppierung grouping;
    grouping.caption = grouping.key = QString::fromUtf8(Tierfelder.at(static_cast<size_t>(number)));
    grouping.columns = {Anzahl};
    grouping.inHerd = true;
    return grouping;
}

}  // namespace koben

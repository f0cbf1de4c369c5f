#include "store/Schema.h"

#include "store/ChangeLog.h"
#include "store/Connection.h"
#include "store/Journal.h"

namespace koben {
namespace {

struct TableText {
    const char* name;
    const char* fields;
    const char* indexes;  ///< blank-separated; each is named after its field, in lower case
    std::vector<const char*> rows;
};

const std::vector<TableText>& tables() {
    static const std::vector<TableText> result = {
        {"Sauen",
         "Art TEXT (6), Nummer TEXT (15), Gruppe TEXT (20), Stallnr TEXT (10), BoxDatum DATETIME, Ohrmarke TEXT (20), "
         "Tätowierung TEXT (20), Geburtsdatum DATETIME, Anz_Belegungen LONG, Anz_Ferkelungen LONG, Anz_Ferkel_Gesamt "
         "LONG, "
         "Anz_Ferkel_Lebend LONG, Rasse TEXT (20), Status TEXT (5), Statusabfrage TEXT (1), Belegungsart TEXT (1), "
         "N_Belegung DATETIME, N_Ferkelung DATETIME, L_Belegung DATETIME, L_Ferkelung DATETIME, L_Trächtigkeit "
         "DATETIME, "
         "L_Absetzung DATETIME, Mechanische_Amme TEXT (1), Zugangsdatum DATETIME, Zugangsgewicht_kg SINGLE, "
         "Einkaufspreis CURRENCY, Zugangsgrund TEXT (20), Lieferant TEXT (20), Abgangsdatum DATETIME, "
         "Abgangsgewicht_kg SINGLE, Verkaufspreis CURRENCY, Abgangsgrund TEXT (20), Abnehmer TEXT (20), "
         "Selektiert TEXT (1), Infos TEXT (100), Aenderung TEXT (1), ID COUNTER",
         "Art Nummer Stallnr ID",
         {}},
        {"Belegung",
         "Datum DATETIME, Ebernr TEXT (15), Deckanzahl LONG, Belegungart TEXT (1), Belegungsstation TEXT (20), Kosten "
         "CURRENCY, "
         "Kommentar TEXT (20), Bemerkung TEXT (20), Kennung LONG, ID COUNTER",
         "Datum Kosten Kennung",
         {}},
        {"Ferkelung",
         "Datum DATETIME, LNr SHORT, LNrJahr SHORT, Ferkel_Gesamt SHORT, Ferkel_Lebendig SHORT, Ferkel_Tot SHORT, "
         "Stück_Gewicht_kg SINGLE, Kosten CURRENCY, Kommentar TEXT (20), Bemerkung TEXT (20), Kennung LONG, ID COUNTER",
         "Datum Kosten Kennung",
         {}},
        {"Absetzung",
         "Datum DATETIME, Anzahl_Ferkel SHORT, Stück_Gewicht_kg SINGLE, Kommentar TEXT (20), Bemerkung TEXT (20), "
         "Kennung LONG, "
         "ID COUNTER",
         "Datum Kennung",
         {}},
        {"Trächtigkeit",
         "Datum DATETIME, Trächtig TEXT (1), Kosten CURRENCY, Kommentar TEXT (20), Bemerkung TEXT (20), Kennung LONG, "
         "ID COUNTER",
         "Datum Kosten Kennung",
         {}},
        {"Verluste",
         "Datum DATETIME, Anzahl_Ferkel SHORT, Grund TEXT (20), Kosten CURRENCY, Muttersau TEXT (15), Kommentar TEXT "
         "(20), "
         "Bemerkung TEXT (20), Kennung LONG, ID COUNTER",
         "Datum Kosten Muttersau Kennung",
         {}},
        {"Verschiebung",
         "Datum DATETIME, Anzahl_Ferkel SHORT, Zu_Saunr TEXT (15), Kommentar TEXT (20), Bemerkung TEXT (20), Kennung "
         "LONG, ID COUNTER",
         "Datum Kennung",
         {}},
        {"Behandlung",
         "Datum DATETIME, Behandlungsart TEXT (20), Medikament TEXT (20), Menge SINGLE, Einheit TEXT (2), "
         "Verabreichungsart TEXT (20), Wartezeit_Tage LONG, Wartezeit_Datum DATETIME, Tierarzt TEXT (20), Beleg_Nr "
         "TEXT (20), "
         "Kosten CURRENCY, Kommentar TEXT (20), Bemerkung TEXT (20), Kennung LONG, ID COUNTER",
         "Datum Kosten Kennung",
         {}},
        {"Ferkelverkauf",
         "Datum DATETIME, Anzahl_Einkauf SHORT, Anzahl_Verkauf SHORT, Preis_je_Stück CURRENCY, Einnahmen CURRENCY, "
         "Ausgaben CURRENCY, Stück_Gewicht_kg SINGLE, Gesamtgewicht_kg SINGLE, Kunde TEXT (20), Muttersau TEXT (15), "
         "Kommentar TEXT (20), Kennung LONG, ID COUNTER",
         "Datum Einnahmen Ausgaben Muttersau Kennung",
         {}},
        {"Medikamente",
         "Medikament TEXT (20), Menge SINGLE, Einheit TEXT (2), Wartezeit_Tage LONG, Kosten_je_Gabe CURRENCY, "
         "Behandlungsart TEXT (20), Verabreichungsart TEXT (20), ID COUNTER",
         "Medikament",
         {}},
        {"Bestandsoptionen",
         "Tiergruppe TEXT (20), Tierart TEXT (7), Alter_von INTEGER, Alter_bis INTEGER, Zeit TEXT (6), Geschlecht TEXT "
         "(1), "
         "Wert CURRENCY, Mindestferkelung SHORT, Belegt TEXT (1), ID COUNTER",
         "Tiergruppe",
         {"(Tiergruppe, Tierart, Alter_von, Alter_bis, Zeit, Geschlecht, Wert, Mindestferkelung, Belegt) values ('Alle "
          "Schweine', 'Alle', 0, 99, 'Jahre', 'E', 250, 0, 'N')",
          "(Tiergruppe, Tierart, Alter_von, Alter_bis, Zeit, Geschlecht, Wert, Mindestferkelung, Belegt) values ('Alle "
          "Sauen', 'Sau', 0, 99, 'Jahre', 'W', 250, 0, 'N')",
          "(Tiergruppe, Tierart, Alter_von, Alter_bis, Zeit, Geschlecht, Wert, Mindestferkelung, Belegt) values ('Alle "
          "Eber', 'Eber', 0, 99, 'Jahre', 'M', 250, 0, 'N')",
          "(Tiergruppe, Tierart, Alter_von, Alter_bis, Zeit, Geschlecht, Wert, Mindestferkelung, Belegt) values "
          "('Belegte Sauen', 'Sau', 0, 99, 'Jahre', 'W', 250, 0, 'J')"}},
        {"Arbeitsplanoptionen",
         "Arbeitsart TEXT (20), Tage_von INTEGER, Tage_bis INTEGER, Bezugstermin TEXT (20), Aktiv_gross TEXT (20), "
         "Aktiv_klein TEXT (20), Erledigt_gross TEXT (20), Erledigt_klein TEXT (20), ID COUNTER",
         "Arbeitsart",
         {"(Arbeitsart, Tage_von, Tage_bis, Bezugstermin, Aktiv_gross, Aktiv_klein, Erledigt_gross, Erledigt_klein) "
          "values ('Belegung', 4, 8, 'Letzte Absetzung', '', '', 'Letzte Belegung', 'Letzte Absetzung')",
          "(Arbeitsart, Tage_von, Tage_bis, Bezugstermin, Aktiv_gross, Aktiv_klein, Erledigt_gross, Erledigt_klein) "
          "values ('Ferkelung', 113, 119, 'Letzte Belegung', '', '', 'Letzte Ferkelung', 'Letzte Belegung')",
          "(Arbeitsart, Tage_von, Tage_bis, Bezugstermin, Aktiv_gross, Aktiv_klein, Erledigt_gross, Erledigt_klein) "
          "values ('Absetzung', 28, 32, 'Letzte Ferkelung', '', '', 'Letzte Absetzung', 'Letzte Ferkelung')",
          "(Arbeitsart, Tage_von, Tage_bis, Bezugstermin, Aktiv_gross, Aktiv_klein, Erledigt_gross, Erledigt_klein) "
          "values ('Trächtigkeitskontr.', 20, 24, 'Letzte Belegung', '', '', 'Letzte Trächtigkeit', 'Letzte "
          "Belegung')"}},
        {"Termine", "Terminart TEXT (20), Datum DATETIME, Wiederholung TEXT (15), ID COUNTER", "Datum", {}},
        {"Stammdaten_Gruppe",
         "Inhalt TEXT (20)",
         "",
         {"values ('Zuchtsau')", "values ('Läufer')", "values ('Zuchteber')", "values ('Mastschwein')"}},
        {"Stammdaten_Stallnummer", "Inhalt TEXT (10)", "", {}},
        {"Stammdaten_Rasse", "Inhalt TEXT (20)", "", {"values ('Pietrain')", "values ('DL')"}},
        {"Stammdaten_Zugangsgrund", "Inhalt TEXT (20)", "", {}},
        {"Stammdaten_Abgangsgrund", "Inhalt TEXT (20)", "", {}},
        {"Stammdaten_Kunde", "Inhalt TEXT (20)", "", {}},
        {"Stammdaten_Bemerkung", "Inhalt TEXT (20)", "", {}},
    };
    return result;
}

std::vector<QString> makeStatements() {
    std::vector<QString> result;
    for (const TableText& t : tables()) {
        const QString name = QString::fromUtf8(t.name);
        result.push_back(QStringLiteral("create table %1(%2)").arg(name, QString::fromUtf8(t.fields)));
        for (const QString& field : QString::fromUtf8(t.indexes).split(u' ', Qt::SkipEmptyParts))
            result.push_back(QStringLiteral("create index %1 on %2(%3)").arg(field.toLower(), name, field));
        for (const char* row : t.rows)
            result.push_back(QStringLiteral("insert into %1 %2").arg(name, QString::fromUtf8(row)));
    }
    return result;
}

/// Indexes for what is asked of every animal: the stock, and the bookings of one animal by date with what is summed.
struct Helper {
    const char* name;
    const char* table;
    std::vector<const char*> fields;
    const char* where;  ///< only these rows, worded as the emitter words the same condition; nullptr: all
};

/// Animals whose derived data are not the empty ones: most rows of a large farm are piglets without a booking.
const char* const Abgeleitet =
    R"((((((((((((("Anz_Belegungen" <> 0) OR ("Anz_Belegungen" IS NULL)) OR ("Anz_Ferkelungen" <> 0)) OR )"
    R"(("Anz_Ferkelungen" IS NULL)) OR ("Anz_Ferkel_Gesamt" IS NOT NULL)) OR ("Anz_Ferkel_Lebend" IS NOT NULL)) OR )"
    R"(("L_Belegung" IS NOT NULL)) OR ("L_Ferkelung" IS NOT NULL)) OR ("L_Trächtigkeit" IS NOT NULL)) OR )"
    R"(("L_Absetzung" IS NOT NULL)) OR ("N_Belegung" IS NOT NULL)) OR ("N_Ferkelung" IS NOT NULL)))";

const std::vector<Helper>& helpers() {
    static const std::vector<Helper> result = {
        {"koben_bestand", "Sauen", {"ID"}, R"("Abgangsdatum" IS NULL)"},
        {"koben_bestandsart", "Sauen", {"^Art", "ID"}, R"("Abgangsdatum" IS NULL)"},
        {"koben_selektiert", "Sauen", {"ID"}, R"((("Selektiert" IS NULL) OR ("Selektiert" <> '' COLLATE RTRIM)))"},
        {"koben_zyklus", "Sauen", {"ID"}, Abgeleitet},
        {"koben_status", "Sauen", {"ID"}, R"((("Status" IS NULL) OR ("Status" <> '' COLLATE RTRIM)))"},
        {"koben_belegung", "Belegung", {"Kennung", "Datum"}, nullptr},
        {"koben_traechtigkeit", "Trächtigkeit", {"Kennung", "Datum", "Trächtig"}, nullptr},
        {"koben_ferkelung", "Ferkelung", {"Kennung", "Datum", "Ferkel_Gesamt", "Ferkel_Lebendig"}, nullptr},
        {"koben_absetzung", "Absetzung", {"Kennung", "Datum", "Anzahl_Ferkel"}, nullptr},
        {"koben_verschiebung", "Verschiebung", {"Kennung", "Datum", "Anzahl_Ferkel"}, nullptr},
        {"koben_verluste", "Verluste", {"Kennung", "Datum", "Anzahl_Ferkel"}, nullptr},
        {"koben_behandlung", "Behandlung", {"Kennung", "Datum"}, nullptr},
        {"koben_wartezeit", "Behandlung", {"Kennung", "Wartezeit_Datum"}, nullptr},
        {"koben_verkauf", "Ferkelverkauf", {"Kennung", "Datum", "Anzahl_Verkauf", "Anzahl_Einkauf"}, nullptr},
    };
    return result;
}

constexpr QChar keyMark = u'^';  // before a field of an index: by its sort keys

/// Fields whose different values fill lists of choices, by table.
const std::vector<std::pair<const char*, std::vector<const char*>>>& choices() {
    static const std::vector<std::pair<const char*, std::vector<const char*>>> result = {
        {"Sauen", {"Gruppe", "Rasse", "Stallnr"}},
        {"Belegung", {"Ebernr", "Belegungsstation", "Kommentar"}},
        {"Trächtigkeit", {"Kommentar"}},
        {"Ferkelung", {"Kommentar"}},
        {"Absetzung", {"Kommentar"}},
        {"Verschiebung", {"Kommentar"}},
        {"Verluste", {"Grund", "Kommentar", "Bemerkung"}},
        {"Behandlung", {"Behandlungsart", "Verabreichungsart", "Tierarzt", "Kommentar"}},
        {"Ferkelverkauf", {"Kommentar"}},
    };
    return result;
}

/// Whether the table has every field that a condition names (in double quotes).
bool hasFields(const sql::TableInfo& table, const char* where) {
    const QStringList parts = QString::fromUtf8(where).split(u'"');
    for (qsizetype i = 1; i < parts.size(); i += 2)
        if (table.columnOf(parts[i]) < 0) return false;
    return true;
}

/// Empty where the table or a field is missing.
std::string helperSql(const sql::Catalog& catalog, const Helper& helper) {
    const sql::TableInfo* table = catalog.find(QString::fromUtf8(helper.table));
    if (table == nullptr) return {};
    std::string fields;
    for (const char* field : helper.fields) {
        const QString name = QString::fromUtf8(field);
        const bool key = name.startsWith(keyMark);
        const int column = table->columnOf(key ? name.mid(1) : name);
        if (column < 0) return {};
        const sql::ColumnInfo& info = table->columns[static_cast<size_t>(column)];
        if (key && info.keyName.empty()) return {};
        fields += (fields.empty() ? "" : ", ") + (key ? info.keyName : info.sqlName);
    }
    std::string result = std::string("CREATE INDEX ") + helper.name + " ON " + table->sqlName + " (" + fields + ")";
    if (helper.where == nullptr) return result;
    return hasFields(*table, helper.where) ? result + " WHERE " + helper.where : std::string();
}

}  // namespace

const std::vector<QString>& schemaStatements() {
    static const std::vector<QString> result = makeStatements();
    return result;
}

bool addHelpers(Connection& connection, const std::function<bool()>& on) {
    const auto catalog = connection.catalog();
    bool added = false, goesOn = true;
    const auto add = [&](const std::string& name, const std::string& sql) {
        const std::string exists = "SELECT count(*) FROM sqlite_master WHERE type = 'index' AND name = " + name;
        goesOn = goesOn && (!on || on());
        if (!goesOn || sql.empty() || number(connection.file(), exists) != 0) return;
        connection.writeNative(sql, QString::fromStdString(sql));
        added = true;
    };
    for (const Helper& helper : helpers()) add(std::string("'") + helper.name + "'", helperSql(*catalog, helper));
    for (const auto& [table, fields] : choices()) {
        const sql::TableInfo* info = catalog->find(QString::fromUtf8(table));
        if (info == nullptr) continue;
        for (const char* field : fields) {
            const int column = info->columnOf(QString::fromUtf8(field));
            if (column < 0) continue;
            const std::string name = "'" + sql::leapIndex(info->name, QString::fromUtf8(field)).toStdString() + "'";
            add(name, "CREATE INDEX " + name + " ON " + info->sqlName + " (" +
                          sql::leapExpression(info->columns[static_cast<size_t>(column)]) + ")");
        }
    }
    addChangeLog(connection);
    Journal::addTables(connection);
    if (added) connection.schemaChanged();  // the catalogue tells which fields have such an index
    return goesOn;
}

void dropHelpers(Connection& connection) {
    const auto drop = [&](const QString& name) {
        const std::string sql = "DROP INDEX IF EXISTS " + sql::quoted(name);
        connection.writeNative(sql, QString::fromStdString(sql));
    };
    for (const Helper& helper : helpers()) drop(QString::fromUtf8(helper.name));
    for (const auto& [table, fields] : choices())
        for (const char* field : fields) drop(sql::leapIndex(QString::fromUtf8(table), QString::fromUtf8(field)));
}

void addHelpers(const Database& database) { addHelpers(*database.m_connection); }

}  // namespace koben

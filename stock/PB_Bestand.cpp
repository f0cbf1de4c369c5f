#include "stock/PB_Bestand.h"

#include <array>

#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Run { GroupList, SpecialList, GroupCounts, SpecialCounts };

constexpr std::array Orders{"Nummer", "Art, Nummer", "Stallnr, Nummer", "Ohrmarke, Nummer", "Geburtsdatum, Nummer"};
constexpr int Narrow = 133, Wide = 400;  // pixels of the overview's columns; 2000 and 6000 twips
constexpr double DaysPerYear = 365;
constexpr int Steps = 1000, Read = 400;  // of the progress of a list

const QString NoAnimals = QStringLiteral("Es wurden lt. den aktuellen Einstellungen keine Tiere gefunden!");

}  // namespace

PB_Bestand::PB_Bestand(Koben& koben_) : Bericht(koben_, "PB_Bestand", "Bestandsdaten listen") {
    optisort.frame = QStringLiteral("Sortierung nach...");
    libestand.setHint(rahmen[0].text());
    litiere.setHint(rahmen[1].text());
    tdat.setHint(bez.text());
    gridli.setVisible(false);
    bind(konbestand, Zahl::BestandNurBezugsdatum);
    bind(konalter, Zahl::BestandAlter);
    bind(optibest, Zahl::BestandBericht);
    bind(optisort, Zahl::BestandSortierung);
    bindMarks(litiere, Text::BestandFelder);
    bindAllAndNone(alletiere, [this]() -> ListBox& { return litiere; });
    bindDate(tdat, calender, calend);
    bindButtons(ok[GroupList], beenden, &hilfe);
    bestandsoptionen.onClick = [this] { bestandsoptionen_Click(); };
    for (int i = 0; i < ok.count(); ++i) ok[i].onClick = [this, i] { ok_Click(i); };
}

void PB_Bestand::Load() {
    Bericht::Load();
    tdat.setText(koben.Heute);
    if (libestand.items().isEmpty())
        koben.message("Hinweis!" + Crlf + Crlf +
                      "Bitte legen Sie einige Bestandsoptionen an, bevor Sie Bestandsberichte erstellen können!");
}

void PB_Bestand::fillChoices() {
    const Table groups = m_db.table("select Tiergruppe from Bestandsoptionen order by Tiergruppe");
    QStringList names;
    for (int row = 0; row < groups.rowCount(); ++row) names += Hochkomma_ersetzen(groups.text(row, 0));
    libestand.setItems(names);
    names.clear();
    for (const Field& field : m_db.fields("Sauen")) names += field.name;
    litiere.setItems(names);
}

void PB_Bestand::bestandsoptionen_Click() {
    koben.open("PV_Bestandsdaten");
    koben.message(
        "Falls Sie Änderungen in den Bestandsoptionen vorgenommen haben, dann schließen Sie bitte dieses Modul und "
        "öffnen Sie es wieder, damit der Datenbestand wieder geladen wird!");
}

QDate PB_Bestand::day() const { return Datum_aus_Text(tdat.text()); }

QDate PB_Bestand::onlyInHerd() const { return konbestand.checked() ? day() : QDate(); }

void PB_Bestand::ok_Click(int index) {
    m_fields = markedOrAll(litiere);
    if (!day().isValid())
        return koben.message(
            "Die Bestandsliste kann nicht erstellt werden. Bitte geben Sie ein korrektes Bezugsdatum ein.");
    gridli.clear();
    meter.setRange(1);  // the overviews set it anew
    bool whole = false;
    switch (index) {
        case GroupList:
            whole = listGroups();
            break;
        case SpecialList:
            whole = listSpecial();
            break;
        case GroupCounts:
            whole = countGroups();
            break;
        default:
            whole = countSpecial();
    }
    if (whole) Liste_uebergeben(koben, gridli);
}

// ---------------------------------------------------------------------------------------------------------- the lists

/// The animals that meet any of the conditions ("" for all), in the chosen order: the fields to list, the day of birth,
/// and for each condition whether it is met. Nothing where the user has cancelled.
std::optional<Table> PB_Bestand::animals(const QStringList& conditions, Progress& progress) {
    QStringList columns = m_fields;
    columns += {QStringLiteral("Geburtsdatum as geboren"), QStringLiteral("ID as tier")};
    for (qsizetype i = 0; i < conditions.size(); ++i)
        columns += conditions[i].isEmpty() ? QStringLiteral("1 as m%1").arg(i)
                                           : QStringLiteral("iif(%1, 1, 0) as m%2").arg(conditions[i]).arg(i);
    QString select = "select " + columns.join(QStringLiteral(", ")) + " from Sauen";
    if (!conditions.contains(QString())) select += " where " + conditions.join(QStringLiteral(" or "));
    const qint64 herd = std::max<qint64>(Tiere_zaehlen(m_db, {QString()}).front(), 1);
    return m_db.table(
        select + " order by " + QString::fromUtf8(Orders[static_cast<size_t>(std::max(optisort.selected(), 0))]),
        [&](qint64 rows) { return progress.step(rows * Read / herd); });
}

void PB_Bestand::addColumns(const Tabellenfelder& fields, const char* age) {
    for (int i = 0; i < fields.count(); ++i) {
        Column column = fields.column(i);
        column.key = QStringLiteral("%1x").arg(i + 1);
        gridli.addColumn(column);
    }
    if (konalter.checked()) gridli.addColumn({.key = "alter", .title = QString::fromUtf8(age), .decimals = 1});
}

bool PB_Bestand::listSpecial() {
    int count = 0;
    const bool whole = run("Die Bestandsliste wird erstellt ...", Steps, nullptr, [&](Progress& progress) {
        const auto found = animals({Sonderbericht(optibest.selected(), onlyInHerd())}, progress);
        count = found ? found->rowCount() : 0;
        if (count > 0) addAnimals(*found, progress);
    });
    if (!whole) return false;
    if (count == 0) return koben.message(NoAnimals), false;
    gridli.addRow({QStringLiteral("Anzahl Tiere: %1").arg(count)});
    passDone();
    return true;
}

/// The form's own bar counts groups and reports; how far the animals are, the progress tells.
void PB_Bestand::passDone() { meter.setValue(meter.value() + 1); }

/// The animals of a special report.
void PB_Bestand::addAnimals(const Table& animals, Progress& progress) {
    const Tabellenfelder fields(animals, m_fields, Tabellenfelder::Betraege::ZweiStellen);
    addColumns(fields, "Alter_Jahre");
    const int born = animals.columnOf(u"geboren"), id = animals.columnOf(u"tier"), count = animals.rowCount();
    for (int row = 0; row < count; ++row) {
        if (!progress.step(Read + qint64(row) * (Steps - Read) / count)) return;
        Grid::Row cells;
        fields.append(cells, row);
        const QDate birth = animals.value(row, born).toDate();
        if (konalter.checked() && birth.isValid())
            cells.append(static_cast<double>(std::max<qint64>(birth.daysTo(day()), 0)) / DaysPerYear);
        gridli.addValues(std::move(cells), animals.integer(row, id));
    }
}

bool PB_Bestand::listGroups() {
    const auto groups = Bestandsgruppen_lesen(m_db, marked(libestand));
    if (groups.empty()) return true;
    if (Tiere_zaehlen(m_db, {QString()}).front() == 0) return koben.message(NoAnimals), false;
    QStringList conditions;
    for (const Bestandsgruppe& group : groups) conditions += group.condition(day(), konbestand.checked());
    return run("Die Bestandsliste wird erstellt ...", Steps, nullptr, [&](Progress& progress) {
        const auto found = animals(conditions, progress);
        if (!found) return;
        const Tabellenfelder fields(*found, m_fields, Tabellenfelder::Betraege::ZweiStellen);
        addColumns(fields, "Alter");
        const int members = found->columnOf(u"m0");
        const qint64 rows = std::max<qint64>(found->rowCount() * static_cast<qint64>(groups.size()), 1);
        qint64 done = 0;
        const auto rowDone = [&] { return progress.step(Read + done++ * (Steps - Read) / rows); };
        for (size_t i = 0; i < groups.size(); ++i) {
            if (!addGroup(groups[i], fields, *found, members + static_cast<int>(i), rowDone)) return;
            passDone();
        }
    });
}

/// The group's animals between its head and its sums; `member` is the column that tells who belongs to it. False where
/// the user has cancelled.
bool PB_Bestand::addGroup(const Bestandsgruppe& group, const Tabellenfelder& fields, const Table& animals, int member,
                          const std::function<bool()>& rowDone) {
    gridli.addRow({group.name});
    gridli.addRow({group.ages()});
    const int born = animals.columnOf(u"geboren"), id = animals.columnOf(u"tier");
    qint64 count = 0;
    for (int row = 0; row < animals.rowCount(); ++row) {
        if (!rowDone()) return false;
        if (animals.integer(row, member) == 0) continue;
        ++count;
        Grid::Row cells;
        fields.append(cells, row);
        if (konalter.checked()) cells.append(group.age(animals.value(row, born).toDate(), day()));
        gridli.addValues(std::move(cells), animals.integer(row, id));
    }
    if (count == 0) {
        gridli.addRow({"Kein Bestand"});
        return true;
    }
    gridli.addRow({QStringLiteral("Anzahl Tiere: %1").arg(count)});
    const Value worth(Money{group.value.tenThousandths * count});
    gridli.addRow({"Gesamtwert: " + Zahl_formatieren(worth.toText(), 2)});
    return true;
}

// ------------------------------------------------------------------------------------------------------ the overviews

void PB_Bestand::addOverviewColumns(int width) {
    gridli.addColumn({.key = "xbestand", .title = "Bestandsart", .width = width});
    gridli.addColumn({.key = "xanzahl", .title = "Anzahl"});
}

/// Counted by one pass over the animals. Nothing where the user has cancelled.
std::optional<std::vector<qint64>> PB_Bestand::counts(const QStringList& conditions) {
    std::vector<qint64> counted;
    const auto steps = static_cast<qint64>(conditions.size());
    const bool whole = run("Die Stückzahlen werden ermittelt ...", steps, &meter, [&](Progress& progress) {
        counted = Tiere_zaehlen(m_db, conditions, [&](qint64) { return progress.step(0); });
        if (!progress.cancelled()) progress.step(steps);
    });
    return whole ? std::optional(counted) : std::nullopt;
}

bool PB_Bestand::countGroups() {
    addOverviewColumns(Narrow);
    gridli.addColumn({.key = "xhinweise", .title = "Hinweise", .width = Narrow});
    const auto groups = Bestandsgruppen_lesen(m_db, marked(libestand));
    QStringList conditions;
    for (const Bestandsgruppe& group : groups) conditions += group.condition(day(), konbestand.checked());
    const auto counted = counts(conditions);
    if (!counted) return false;
    for (size_t i = 0; i < groups.size(); ++i) gridli.addValues({groups[i].name, (*counted)[i], groups[i].ages()});
    return true;
}

bool PB_Bestand::countSpecial() {
    addOverviewColumns(Wide);
    QStringList conditions;
    for (int i = 0; i < optibest.count(); ++i) conditions += Sonderbericht(i, onlyInHerd());
    const auto counted = counts(conditions);
    if (!counted) return false;
    for (int i = 0; i < optibest.count(); ++i)
        gridli.addValues({optibest[i].caption(), (*counted)[static_cast<size_t>(i)]});
    return true;
}

}  // namespace koben

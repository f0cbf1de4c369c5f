#include "plans/PB_Tierinformation_Schweine.h"

#include <algorithm>

#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "output/Tabellenfelder.h"

namespace koben {

PB_Tierinformation_Schweine::PB_Tierinformation_Schweine(Koben& koben_)
    : Tierbericht(koben_, "PB_Tierinformation_Schweine", "Infobericht (Schweine)") {
    optibetrieb.frame = QStringLiteral("Nur Schweine listen, die am...");
    tdat.setHint(optibetrieb.frame);
    liste.setHint(rahmen.text());
    komsort.fixed = true;
    komsort.setHint(bez.text());
    bindAnimals(optitieraus, 5, Zahl::TierberichtTiere);
    bind(optibetrieb, Zahl::TierberichtBetrieb);
    qint16& sort = koben.Konfig_Zahl[Zahl::TierberichtSortierung];
    bind([this, &sort] { komsort.setCurrent(std::clamp<int>(sort, 0, static_cast<int>(komsort.items().size()) - 1)); },
         [this, &sort] { sort = static_cast<qint16>(komsort.current()); });
    bindMarks(liste, Text::TierberichtFelder);
    bindAllAndNone(alletier, [this]() -> ListBox& { return liste; });
    bindDate(tdat, calender, calend);
    ok.onClick = [this] { ok_Click(); };
}

void PB_Tierinformation_Schweine::Load() {
    Tierbericht::Load();
    tdat.setText(koben.Heute);
}

void PB_Tierinformation_Schweine::fillChoices() {
    QStringList names;
    for (const Field& field : m_db.fields("Sauen")) names += field.name;
    liste.setItems(names);
    komsort.setItems(names);
}

void PB_Tierinformation_Schweine::ok_Click() {
    const QStringList fields = markedOrAll(liste);
    const qint64 herd = m_db.table("select count(*) from Sauen").integer(0, 0);
    int found = 0;
    const bool whole = run("Der Bericht wird erstellt ...", 2 * herd, &meter, [&](Progress& progress) {
        const auto animals = m_db.table(query(fields), [&](qint64 rows) { return progress.step(rows); });
        found = animals ? animals->rowCount() : 0;
        if (found > 0) fill(*animals, fields, progress);
    });
    if (!whole) return;
    if (found == 0) return koben.message("Es wurden lt. den aktuellen Einstellungen keine Tiere gefunden!");
    gridli.addRow({QStringLiteral("Gesamt: %1 Tiere").arg(found)});
    Liste_uebergeben(koben, gridli);
}

QString PB_Tierinformation_Schweine::query(const QStringList& fields) {
    QStringList conditions{condition(optitieraus[optitieraus.selected()].caption()), presence()};
    conditions.removeAll(QString());
    QString select = "select " + fields.join(QStringLiteral(", ")) + ", ID as tier from Sauen";
    if (!conditions.isEmpty()) select += " where " + conditions.join(QStringLiteral(" and "));
    return select + " order by " + komsort.text();
}

/// In the herd on the day, or not any more; an animal that leaves on it counts as gone.
QString PB_Tierinformation_Schweine::presence() const {
    if (!Ist_Datum(tdat.text())) return {};
    const QString day = Sql_Datum(QString(tdat.text()));
    if (optibetrieb.selected() == 1) return "Abgangsdatum <= " + day;
    return QStringLiteral(
               "((Zugangsdatum IS NULL or Zugangsdatum <= %1) and (Abgangsdatum IS NULL or Abgangsdatum > %1))")
        .arg(day);
}

/// Not all of them where the user has cancelled.
void PB_Tierinformation_Schweine::fill(const Table& animals, const QStringList& fields, Progress& progress) {
    const Tabellenfelder columns(animals, fields, Tabellenfelder::Betraege::Kurz);
    gridli.clear();
    for (int i = 0; i < columns.count(); ++i) gridli.addColumn(columns.column(i));
    for (int row = 0; row < animals.rowCount() && progress.step(animals.rowCount() + row); ++row) {
        Grid::Row cells;
        columns.append(cells, row);
        gridli.addValues(std::move(cells), animals.integer(row, animals.columnCount() - 1));
    }
}

}  // namespace koben

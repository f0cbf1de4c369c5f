#include "figures/PA_Grafiken.h"

#include "core/PZ_Koben_Subs.h"
#include "core/Zyklus.h"
#include "figures/ChartDrawing.h"
#include "forms/Erklaerung.h"
#include "output/Svg.h"

namespace koben {

namespace {

constexpr int mostYears = 50;
constexpr QSizeF paper{268, 180};    // millimetres: A4 across within its margins
constexpr QSizeF picture{200, 120};  // of a file or copy
const QString section = QStringLiteral("pa_grafiken");
const QString targetKey = QStringLiteral("Ziel_Belegungen_Woche");

struct Dateiart {
    const char* filter;
    const char* suffix;
};
constexpr Dateiart Dateiarten[] = {
    {"PNG-Bilder|*.png", ".png"}, {"SVG-Zeichnungen|*.svg", ".svg"}, {"PDF-Dateien|*.pdf", ".pdf"}};

}  // namespace

PA_Grafiken::PA_Grafiken(Koben& koben_) : Bericht(koben_, "PA_Grafiken", "Grafiken") {
    for (const Grafik& one : Grafiken()) li.addItem(QString::fromLatin1(one.id));
    li.rowTitle = [](int row) { return QString::fromUtf8(Grafiken()[static_cast<size_t>(row)].name); };
    li.setHint("Grafik");
    bild.setHint("Zeichnung der Grafik");
    gridli.setHint("Tabelle der Grafik");
    for (int i = 0; i < tdat.count(); ++i) {
        tdat[i].setHint(bez[i].text());
        bindDate(tdat[i], calender[i], calend);
    }
    ziel.setHint(bez[2].text());
    ziel.maxLength = 4;
    ziel.onKeyPress = Nur_Ziffern;
    ziel.onLostFocus = [this] { ziel_LostFocus(); };
    li.onClick = [this] { show(); };
    bild.onClick = [this](const QString& area) {
        if (const auto cell = cellOf(area)) tell(cell->first, cell->second);
    };
    bild.onCurrent = [this] {
        if (const auto cell = cellOf(bild.current())) gridli.setRow(shownRow(cell->first));
    };
    gridli.onRowChange = [this] {
        const int row = tableRow(gridli.row());
        bild.setCurrent(QStringLiteral("%1.%2").arg(row).arg(firstColumn(row)));
    };
    gridli.onDoubleClick = [this] {
        const int row = tableRow(gridli.row());
        if (row > 0) tell(row, firstColumn(row));
    };
    gridli.onResized = [this](int) { koben.saveWidths(gridli, section + u'_' + QString::fromLatin1(plot().id)); };
    ok.onClick = [this] { ok_Click(); };
    drucken.onClick = [this] { drucken_Click(); };
    for (int i = 0; i < datei.count(); ++i) datei[i].onClick = [this, i] { datei_Click(i); };
    kopie[0].onClick = [this] { koben.platform.copyPicture(onPaper(picture)); };
    kopie[1].onClick = [this] { koben.platform.copyCells(gridli); };
    bindButtons(ok, beenden, &hilfe);
}

void PA_Grafiken::Load() {
    Bericht::Load();
    const QDate yearAgo = Datum_aus_Text(koben.Heute).addYears(-1);
    tdat[0].setText(Tag_als_Text(um(Takt::Woche, static_cast<qint32>(yearAgo.toJulianDay())).von));
    tdat[1].setText(koben.Heute);
    ziel.setText(koben.platform.userSetting(section, targetKey));
    li.setCurrent(0);
    show();
}

// ------------------------------------------------------------------------------------------------------- the choices

void PA_Grafiken::ziel_LostFocus() {
    if (ziel.text() == koben.platform.userSetting(section, targetKey)) return;
    koben.platform.setUserSetting(section, targetKey, ziel.text());
    show();
}

QStringList PA_Grafiken::findings() const {
    if (!Ist_Datum(tdat[0].text()) || !Ist_Datum(tdat[1].text())) return {"...der Zeitbereich nicht korrekt ist."};
    const QDate from = Datum_aus_Text(tdat[0].text()), to = Datum_aus_Text(tdat[1].text());
    QStringList lines;
    if (from > to) lines += "...das Datum von kleiner sein muß als das Datum bis.";
    if (from > Datum_aus_Text(koben.Heute)) lines += "...das Datum von nach dem heutigen Tag liegt.";
    if (from.addYears(mostYears) <= to)
        lines += QStringLiteral("...der Zeitbereich länger ist als %1 Jahre.").arg(mostYears);
    return lines;
}

Zeitraum PA_Grafiken::period() const {
    return {Tag_aus_Text(tdat[0].text()), std::min(Tag_aus_Text(tdat[1].text()), Tag_aus_Text(koben.Heute))};
}

const Grafik& PA_Grafiken::plot() const { return Grafiken()[static_cast<size_t>(std::max(li.current(), 0))]; }

// ---------------------------------------------------------------------------------------------------------- showing

void PA_Grafiken::show() {
    setCaption(QStringLiteral("Grafiken: ") + QString::fromUtf8(plot().title));
    if (!findings().isEmpty()) return showNothing();
    const WaitCursor wait(koben);
    const Zyklusvorgaben cycle(koben);
    m_content = std::make_shared<const Grafikinhalt>(Grafik_berechnen(plot(), {.db = m_db,
                                                                               .heute = Tag_aus_Text(koben.Heute),
                                                                               .period = period(),
                                                                               .tragezeit = cycle.tageBelegungFerkelung,
                                                                               .ziel = ziel.text().toInt()}));
    fillTable();
    satz.setText(m_content->chart.sentence);
    bild.setDraw([content = m_content](QSizeF size) { return drawChart(content->chart, content->table, size, false); });
}

void PA_Grafiken::showNothing() {
    Grafikinhalt nothing;
    nothing.chart.title = QString::fromUtf8(plot().title);
    nothing.chart.empty = QStringLiteral("Bitte geben Sie einen Zeitraum an.");
    m_content = std::make_shared<const Grafikinhalt>(std::move(nothing));
    gridli.clear();
    satz.setText({});
    bild.setDraw([content = m_content](QSizeF size) { return drawChart(content->chart, content->table, size, false); });
}

void PA_Grafiken::fillTable() {
    gridli.clear();
    for (const Column& column : m_content->table.columns) gridli.addColumn(column);
    koben.restoreWidths(gridli, section + u'_' + QString::fromLatin1(plot().id));
    for (const Grid::Row& row : m_content->table.rows) gridli.addValues(row);
    gridli.explain = m_content->behind;
}

/// Shows the animals and bookings behind a cell.
void PA_Grafiken::tell(int row, int column) {
    const auto told = m_content->behind ? m_content->behind(row, column) : std::nullopt;
    if (told) Herkunft_zeigen(koben, *told);
}

/// Where a row of the table stands in the list as the user has sorted it; 0 where it does not.
int PA_Grafiken::shownRow(int row) const {
    if (gridli.sortColumn() == 0) return row <= gridli.rowCount() ? row : 0;
    const QString name = m_content->table.cell(row, 1).toText();
    for (int shown = 1; shown <= gridli.rowCount(); ++shown)
        if (gridli.cell(shown, 1) == name) return shown;
    return 0;
}

int PA_Grafiken::tableRow(int shown) const {
    if (shown < 1) return 0;
    if (gridli.sortColumn() == 0) return shown;
    for (int row = 1; row <= static_cast<int>(m_content->table.rows.size()); ++row)
        if (m_content->table.cell(row, 1).toText() == gridli.cell(shown, 1)) return row;
    return 0;
}

/// The column that a row's bar shows.
int PA_Grafiken::firstColumn(int row) const {
    for (const ChartPanel& panel : m_content->chart.panels)
        if (row >= panel.firstRow && (panel.lastRow == 0 || row <= panel.lastRow) && !panel.series.empty())
            return panel.series.front().column;
    return 0;
}

// ------------------------------------------------------------------------------------------------------- handing on

void PA_Grafiken::ok_Click() {
    const QStringList lines = findings();
    if (!lines.isEmpty())
        return koben.message("Die Auswertung kann nicht erstellt werden, weil..." + Crlf + Crlf + lines.join(Crlf));
    Liste_ausgeben(koben, gridli);
}

Sketch PA_Grafiken::onPaper(QSizeF size) const { return drawChart(m_content->chart, m_content->table, size, true); }

Drawing PA_Grafiken::document() const {
    const QString& head = koben.Konfig_Text[Text::Berichtskopf];
    DrawingRecorder recorder(true);
    recorder.setSheet({.title = head.isEmpty() ? QStringLiteral("Grafiken") : head, .date = koben.Heute});
    place(onPaper(paper), {0, 0}, recorder);
    recorder.end();
    return recorder.drawing;
}

void PA_Grafiken::drucken_Click() {
    const Drawing pages = document();
    if (koben.screens.preview(m_content->chart.title, pages)) return;
    if (const auto job = koben.platform.print(QString(), pages.landscape)) play(pages, *job);
}

void PA_Grafiken::datei_Click(int kind) {
    const Dateiart& art = Dateiarten[kind];
    const QString suffix = QString::fromLatin1(art.suffix);
    QString path = koben.screens.saveFile(QString::fromLatin1(art.filter),
                                          koben.Datenordner + QString::fromLatin1(plot().id) + suffix);
    if (path.isEmpty()) return;
    if (!path.endsWith(suffix, Qt::CaseInsensitive)) path += suffix;
    if (!write(kind, path))
        koben.message(QStringLiteral("Die Datei %1 konnte nicht geschrieben werden. Bitte prüfen Sie, ob im Ordner "
                                     "genügend Platz und das Schreiben erlaubt ist.")
                          .arg(path));
}

bool PA_Grafiken::write(int kind, const QString& path) {
    if (kind == 0) return koben.platform.writePng(onPaper(picture), path);
    if (kind == 1) return Grid::writeFile(path, Svg(onPaper(picture), m_content->chart.title));
    return koben.platform.writePdf(document(), path);
}

}  // namespace koben

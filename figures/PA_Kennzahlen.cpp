#include "figures/PA_Kennzahlen.h"

#include <algorithm>

#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

enum GridColumn { Id = 1, Name, Value_, Counted, LeftOut, OwnColumns = LeftOut };

void addColumns(Grid& grid) {
    const auto add = [&](const char* title, Sort sort) {
        const QString name = QString::fromUtf8(title);
        grid.addColumn({.key = name.toLower(),
                        .title = name,
                        .align = sort == Sort::Number ? Align::Right : Align::Left,
                        .sort = sort});
    };
    add("Kürzel", Sort::Text);
    add("Kennzahl", Sort::Text);
    add("Wert", Sort::Number);
    add("Gezählt", Sort::Number);
    add("Ausgelassen", Sort::Number);
}

Grid::Row cells(const Kennzahl& figure, const Kennzahlwert& value) {
    return {QString::fromUtf8(figure.id), QString::fromUtf8(figure.name), value.text(), Value(value.counted),
            value.leftOut ? Value(*value.leftOut) : Value()};
}

}  // namespace

PA_Kennzahlen::PA_Kennzahlen(Koben& koben_) : Bericht(koben_, "PA_Kennzahlen", "Kennzahlen") {
    for (int i = 0; i < tdat.count(); ++i) {
        tdat[i].setHint(bez[i].text());
        bindDate(tdat[i], calender[i], calend);
    }
    for (int i = 0; i < t.count(); ++i) {
        t[i].setHint(bez[tdat.count() + i].text());
        t[i].onLostFocus = [this] { settingChanged(); };
        bindText(t[i], Text::WarnAbzug + i);
    }
    m_hint = Label1.text();
    addColumns(gridli);
    addColumns(liste);
    for (const char* title : {"Einheit", "Variante", "Zeitraum"})
        liste.addColumn({.key = QString::fromUtf8(title).toLower(), .title = QString::fromUtf8(title)});
    for (const Column& column : Warnspalten()) liwarnung.addColumn(column);
    gridli.setHint(rahmen[0].text());
    liwarnung.setHint(rahmen[1].text());
    liste.setVisible(false);
    bindWidths(gridli, "pa_kennzahlen");
    bindWidths(liwarnung, "pa_kennzahlen_warnung");
    ok.onClick = [this] { ok_Click(); };
    standard.onClick = [this] { standard_Click(); };
    bindButtons(ok, beenden, &hilfe);
}

void PA_Kennzahlen::Load() {
    Bericht::Load();
    const Zeitraum year = rollende_Jahre(Tag_aus_Text(koben.Heute), 1).front();
    tdat[0].setText(Tag_als_Text(year.von));
    tdat[1].setText(Tag_als_Text(year.bis));
    const WaitCursor wait(koben);
    m_book = Sauenbuch_holen(m_db, Tag_aus_Text(koben.Heute), 0, Lesen::Alles);
    settingChanged();
    showFigures();
}

void PA_Kennzahlen::dateChanged(TextBox&) { showFigures(); }

/// What cannot be used gives way to the default, which the field then shows.
void PA_Kennzahlen::settingChanged() {
    for (int i = 0; i < t.count(); ++i) koben.Konfig_Text[static_cast<size_t>(Text::WarnAbzug + i)] = t[i].text();
    const Warnvorgaben how = Warnvorgaben_lesen(koben);
    const QStringList texts = Warnvorgaben_als_Text(how);
    for (int i = 0; i < t.count(); ++i) t[i].setText(texts.at(i));
    if (how == m_how && !m_warnings.empty()) return;
    m_how = how;
    showWarnings();
}

void PA_Kennzahlen::standard_Click() {
    const QStringList texts = Warnvorgaben_als_Text({});
    for (int i = 0; i < t.count(); ++i) t[i].setText(texts.at(i));
    settingChanged();
}

QStringList PA_Kennzahlen::findings() {
    QStringList lines;
    if (!Ist_Datum(tdat[0].text()) || !Ist_Datum(tdat[1].text())) lines += "...der Zeitbereich nicht korrekt ist.";
    if (Datum_als_Text(QString(tdat[0].text())) > Datum_als_Text(QString(tdat[1].text())))
        lines += "...das Datum von kleiner sein muß als das Datum bis.";
    return lines;
}

Zeitraum PA_Kennzahlen::period() const { return {Tag_aus_Text(tdat[0].text()), Tag_aus_Text(tdat[1].text())}; }

void PA_Kennzahlen::showFigures() {
    gridli.clearRows();
    if (!findings().isEmpty()) return;
    const WaitCursor wait(koben);
    m_stand = Kennzahlen_berechnen(*m_book, period());
    for (const Kennzahl& figure : Kennzahlen()) gridli.addValues(cells(figure, m_stand[figure.nr]));
    gridli.explain = [this](int row, int column) { return explain(row, column); };
    const bool none = std::all_of(Kennzahlen().begin(), Kennzahlen().end(), [this](const Kennzahl& figure) {
        return m_stand[figure.nr].counted == 0 && m_stand[figure.nr].leftOut.value_or(0) == 0;
    });
    Label1.setText(
        none ? QStringLiteral("In diesem Zeitraum gibt es nichts zu zählen: keine Sauen, keine Belegungen, keine "
                              "Würfe. Bitte wählen Sie einen anderen Zeitraum.")
             : m_hint);
}

std::optional<Explanation> PA_Kennzahlen::explain(int row, int column) const {
    if (row < 1 || row > KennzahlAnzahl || column < Id || column > OwnColumns) return {};
    const Kz figure = static_cast<Kz>(row - 1);
    const Spalte part = column == Counted ? Spalte::Gezaehlt : column == LeftOut ? Spalte::Ausgelassen : Spalte::Wert;
    return Kennzahl_herleiten(*m_book, figure, m_stand.period, part);
}

void PA_Kennzahlen::showWarnings() {
    const WaitCursor wait(koben);
    liwarnung.clearRows();
    m_warnings.clear();
    m_past.clear();
    for (int i = 0; i < WarnreihenAnzahl; ++i) {
        const auto series = static_cast<Warnreihe>(i);
        m_warnings.push_back(Fruehwarnung(*m_book, series, m_how));
        m_past.push_back(Fruehwarnung_zurueck(*m_book, series, m_how));
        liwarnung.addValues(Warnzeile(m_warnings.back(), m_past.back()));
    }
    liwarnung.explain = [this](int row, int column) -> std::optional<Explanation> {
        constexpr int alarmWeeks = 3;
        if (row < 1 || row > WarnreihenAnzahl) return {};
        const auto at = static_cast<size_t>(row - 1);
        if (column == alarmWeeks) return Alarmwochen_herleiten(*m_book, m_warnings[at]);
        return Warnung_herleiten(m_warnings[at], m_past[at], m_how);
    };
}

void PA_Kennzahlen::ok_Click() {
    const QStringList lines = findings();
    if (!lines.isEmpty())
        return koben.message("Die Auswertung kann nicht erstellt werden, weil..." + Crlf + Crlf + lines.join(Crlf));
    showFigures();
    liste.clearRows();
    for (const Kennzahl& figure : Kennzahlen()) {
        Grid::Row row = cells(figure, m_stand[figure.nr]);
        row << QString::fromUtf8(figure.einheit) << QString::fromUtf8(figure.variante) << Zeitraumtext(m_stand.period);
        liste.addValues(std::move(row));
    }
    liste.explain = gridli.explain;
    Liste_ausgeben(koben, liste);
}

}  // namespace koben

#include "analytics/PB_Deckungsbeitrag.h"

#include <algorithm>

#include "analytics/Deckungsbeitrag_Herleitung.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

constexpr int MostYears = 30, LastYear = 9999, Percent = 100;
constexpr int AllAnimals = 0, AllSows = 2, CurrentAnimal = 5;
constexpr std::array NameFields{"Art", "Nummer", "Gruppe", "Stallnr"};

int year(const QString& text) { return static_cast<int>(std::clamp(Wert(text), 1.0, double(LastYear))); }

}  // namespace

PB_Deckungsbeitrag::PB_Deckungsbeitrag(Koben& koben_) : Tierbericht(koben_, "PB_Deckungsbeitrag", "Deckungsbeiträge") {
    optiauswertung.frame = QStringLiteral("Buchungen auswerten (gruppieren) nach");
    for (int i = 0; i < t.count(); ++i) {
        t[i].setHint(bez[i].text());
        bindNumber(t[i], Zahl::DeckungsbeitragVon + i);
    }
    for (int i = 0; i < tzahl.count(); ++i) {
        tzahl[i].setHint("Futterkosten je " + bez[t.count() + i].text());
        bindText(tzahl[i], Text::DeckungsbeitragFutter + i);
    }
    QString& digits = koben.Konfig_Text[Text::DeckungsbeitragPosten];
    bind(
        [this, &digits] {
            for (int i = 0; i < konkost.count(); ++i) konkost[i].setChecked(digits.mid(i, 1) == u"1");
        },
        [this, &digits] {
            digits.clear();
            for (int i = 0; i < konkost.count(); ++i) digits += konkost[i].checked() ? u'1' : u'0';
        });
    for (int i = 0; i < alletier.count(); ++i)
        alletier[i].onClick = [this, i] {
            for (auto& box : konkost) box->setChecked(i == 0);
        };
    bind(optiauswertung, Zahl::DeckungsbeitragZeilen);
    bind(kontier, Zahl::DeckungsbeitragFelder);
    bindAnimals(optitieraus, CurrentAnimal, Zahl::TierberichtTiere);
    const auto named = optitieraus.onClick;
    optitieraus.onClick = [this, named](int option) {
        named(option);
        showCurrent();
    };
    bind([this] { showCurrent(); }, [] {});
    ok.onClick = [this] { ok_Click(); };
}

/// The arrows move the current animal, so they have nothing to do elsewhere.
void PB_Deckungsbeitrag::showCurrent() {
    for (auto& arrow : nächster) arrow->setEnabled(optitieraus.selected() == CurrentAnimal);
}

QStringList PB_Deckungsbeitrag::findings() {
    for (auto& box : t)
        if (box->text().trimmed().isEmpty()) box->setText(koben.Heute.mid(6));
    const QString from = t[0].text(), to = t[1].text();
    QStringList lines;
    if (from > to)
        lines += "...das 'Wirtschaftsjahr von' größer ist als das 'Wirtschaftsjahr bis'.";
    else if (Wert(to) - Wert(from) > MostYears)
        lines += "...die Auswertung max. über 30 Jahre erlaubt ist.";
    if (from.size() != 4 && to.size() != 4) lines += "...das Wirtschaftsjahr immer 4-stellig angegeben werden muß.";
    return lines;
}

Deckungsauswahl PB_Deckungsbeitrag::choice() {
    const int animals = std::max(optitieraus.selected(), 0);
    Deckungsauswahl choice{.animals = animals == AllAnimals ? QString() : condition(optitieraus[animals].caption()),
                           .words = optitieraus[animals].caption(),
                           .strays = animals == AllAnimals || animals == AllSows,
                           .from = year(t[0].text()),
                           .to = year(t[1].text())};
    for (int i = 0; i < konkost.count(); ++i) choice.chosen[static_cast<size_t>(i)] = konkost[i].checked();
    for (int i = 0; i < tzahl.count(); ++i)
        choice.feed[static_cast<size_t>(i)] = Zahl_aus_Text(QString(tzahl[i].text()));
    return choice;
}

void PB_Deckungsbeitrag::ok_Click() {
    const QStringList lines = findings();
    if (!lines.isEmpty())
        return koben.message("Die Daten können nicht gelistet werden, weil..." + Crlf + Crlf + lines.join(Crlf));
    const bool years = optiauswertung.selected() != 1;
    const Deckungsauswahl chosen = choice();
    gridli.clear();
    const bool whole = run("Die Deckungsbeiträge werden berechnet ...", 2 * Percent, &meter, [&](Progress& progress) {
        const auto go = [&](int percent) { return progress.step(percent); };
        const Deckungsbeitrag margin(m_db, chosen, go);
        if (!margin.whole()) return;
        auto rows = years ? margin.perYear(go) : margin.perAnimal(go);
        if (rows) fill(margin, std::move(*rows), chosen, years, progress);
    });
    if (whole) Liste_ausgeben(koben, gridli);
}

void PB_Deckungsbeitrag::addColumns(bool years) {
    if (years) gridli.addColumn({.key = "Jahr", .title = "Jahr", .sort = Sort::Number});
    for (int i = 0; !years && i < kontier.count(); ++i) {
        const QString name = QString::fromUtf8(NameFields[static_cast<size_t>(i)]);
        if (kontier[i].checked()) gridli.addColumn({.key = name, .title = name});
    }
    const auto amount = [&](const char* title) {
        const QString name = QString::fromUtf8(title);
        gridli.addColumn({.key = name, .title = name, .align = Align::Right, .sort = Sort::Number});
    };
    for (int i = 0; i < konkost.count(); ++i)
        if (konkost[i].checked()) amount(Postenliste[static_cast<size_t>(i)].column);
    amount("Summe");
}

void PB_Deckungsbeitrag::fill(const Deckungsbeitrag& margin, std::vector<Deckungsbeitrag::Zeile> rows,
                              const Deckungsauswahl& chosen, bool years, Progress& progress) {
    addColumns(years);
    std::vector<int> items;
    for (int i = 0; i < konkost.count(); ++i)
        if (konkost[i].checked()) items.push_back(i);
    items.push_back(Endposten);
    const auto append = [&](Grid::Row& cells, const Betraege& amounts) {
        for (const int item : items) cells.append(Betrag_mit_Waehrung(amounts[static_cast<size_t>(item)]));
    };
    Betraege totals{};
    for (size_t at = 0; at < rows.size(); ++at) {
        if (!progress.step(Percent + static_cast<qint64>(at * Percent / rows.size()))) return;
        const int row = static_cast<int>(at);
        Grid::Row cells;
        if (years) cells.append(rows[at].year);
        for (int i = 0; !years && i < kontier.count(); ++i)
            if (kontier[i].checked()) cells.append(Hochkomma_ersetzen(margin.animals().text(row, i)));
        append(cells, rows[at].amounts);
        gridli.addValues(std::move(cells), years ? 0 : margin.id(row));
        for (size_t i = 0; i < totals.size(); ++i) totals[i] += rows[at].amounts[i];
    }
    const int names = gridli.columnCount() - static_cast<int>(items.size());
    gridli.explain = Deckungsbeitrag_herleiten({m_db, chosen, std::move(rows), totals, names, items, years});
    if (totals[Endposten] == 0) return;
    Grid::Row closing;
    append(closing, totals);
    if (names == 0) closing[0] = "SUMME" + closing[0].toText();  // no column is left for the word
    for (int i = names; i-- > 0;) closing.prepend(i == 0 ? Value(QStringLiteral("SUMME")) : Value());
    gridli.addValues(std::move(closing));
}

}  // namespace koben

#include "figures/PA_Tagesblick.h"

#include <QLocale>
#include <QSet>
#include <algorithm>

#include "core/PZ_Koben_Subs.h"
#include "core/Wartezeit.h"
#include "core/Zyklusdaten.h"
#include "figures/Herleitung_Kennzahl.h"
#include "forms/Startseite.h"
#include "output/Arbeitsplanliste.h"

namespace koben {

namespace {

constexpr int TargetColumn = 4;

/// In the order of the cycle; "" last.
constexpr Zyklusstatus States[] = {Zyklusstatus::Belegt,   Zyklusstatus::Tragend, Zyklusstatus::NichtTragend,
                                   Zyklusstatus::Saeugend, Zyklusstatus::Guest,   Zyklusstatus::Ohne};

Column numbers(const char* key, const char* title) {
    return {
        .key = QString::fromUtf8(key), .title = QString::fromUtf8(title), .align = Align::Right, .sort = Sort::Number};
}

Column words(const char* key, const char* title) {
    return {.key = QString::fromUtf8(key), .title = QString::fromUtf8(title)};
}

/// The kind of booking by which work is done; of work that none ends, a treatment.
Buchungsart kindOf(const QString& doneBy) {
    for (const auto kind :
         {Buchungsart::Belegung, Buchungsart::Trächtigkeit, Buchungsart::Ferkelung, Buchungsart::Absetzung})
        if (doneBy == QStringLiteral("L_") + QString::fromUtf8(angaben(kind).table)) return kind;
    return Buchungsart::Behandlung;
}

/// Fills a list anew; the row that was current is current again where it still is.
template <class Fill>
void refill(Grid& list, const Fill& fill) {
    const int row = list.row();
    list.clearRows();
    fill();
    list.setRow(std::min(row, list.rowCount()));
}

}  // namespace

PA_Tagesblick::PA_Tagesblick(Koben& koben_) : Bericht(koben_, "PA_Tagesblick", "Tagesblick") {
    addColumns();
    liarbeit.setHint(QStringLiteral("Arbeit von heute"));
    listatus.setHint(QStringLiteral("Sauen nach Zustand"));
    lisperren.setHint(QStringLiteral("Wartezeiten, die diese Woche enden"));
    kacheln.setHint(QStringLiteral("Kennzahlen der letzten zwölf Monate"));
    likacheln.setHint(QStringLiteral("Kennzahlen und Ziele"));
    gridli.setVisible(false);
    optistart.frame = QStringLiteral("Beim Start von KOBEN öffnen");
    liarbeit.onClick = liarbeit.onDoubleClick = ok.onClick = [this] { liarbeit_Click(); };
    listatus.onDoubleClick = [this] { listatus_DoubleClick(); };
    lisperren.onDoubleClick = [this] { lisperren_DoubleClick(); };
    likacheln.rowTitle = [this](int row) {
        return QString::fromUtf8(kennzahl(m_tiles.at(static_cast<size_t>(row - 1)).figure).name);
    };
    likacheln.canEdit = [](int, int column) { return column == TargetColumn; };
    likacheln.onEdited = [this](int row, int, const QString& text) { likacheln_Edited(row, text); };
    kacheln.onClick = [this](const QString& figure) { kacheln_Click(figure); };
    optistart.onClick = [this](int choice) { keepStartseite(koben.platform, static_cast<Startseite>(choice)); };
    bindButtons(ok, beenden, &hilfe);
}

void PA_Tagesblick::addColumns() {
    liarbeit.addColumn(words("arbeit", "Arbeit"));
    liarbeit.addColumn(numbers("heute", "Heute"));
    liarbeit.addColumn(numbers("überfällig", "Überfällig"));
    listatus.addColumn(words("zustand", "Zustand"));
    listatus.addColumn(numbers("sauen", "Sauen"));
    lisperren.addColumn(words("nummer", "Nummer"));
    lisperren.addColumn({.key = "bis", .title = "Bis", .sort = Sort::Date});
    likacheln.addColumn({.key = "kennzahl", .title = "Kennzahl", .technical = true});
    likacheln.addColumn(numbers("wert", "Wert"));
    likacheln.addColumn(numbers("vorjahr", "Vorjahr"));
    likacheln.addColumn(numbers("ziel", "Ziel"));
}

void PA_Tagesblick::Load() {
    Bericht::Load();
    optistart.select(static_cast<int>(readStartseite(koben.platform)));
    const QDate today = Datum_aus_Text(koben.Heute);
    Label1.setText(QLocale(QLocale::German).toString(today, QStringLiteral("dddd, dd.MM.yyyy")));
    m_targets = Zielwerte(koben.Datenordner);
}

/// Anew whenever the page comes to the front: the bookings may have changed.
void PA_Tagesblick::Activate() {
    showWork();
    showStates();
    showBlocks();
    showFigures();
}

// ----------------------------------------------------------------------------------------------------------- the lists

void PA_Tagesblick::showWork() {
    const Table options = m_db.table("select * from Arbeitsplanoptionen");
    QStringList names;
    for (int row = 0; row < options.rowCount(); ++row)
        names.append(Hochkomma_ersetzen(options.text(row, options.columnOf(u"Arbeitsart"))));
    m_works = Arbeiten_lesen(options, names);
    m_work = computeTagesarbeit(m_db, m_works, Tag_aus_Text(koben.Heute));
    std::vector<int> due(m_works.size()), overdue(m_works.size());
    for (const Faelligkeit& row : m_work.due) ++due[static_cast<size_t>(row.work)];
    for (const Faelligkeit& row : m_work.overdue) ++overdue[static_cast<size_t>(row.work)];
    refill(liarbeit, [&] {
        for (size_t w = 0; w < m_works.size(); ++w) liarbeit.addValues({m_works[w].name, due[w], overdue[w]});
    });
}

/// Sows in stock by their state. Where bookings were made since the states were stored, as they will be stored.
std::vector<std::vector<qint64>> PA_Tagesblick::sowsByState() const {
    QHash<qint64, Zyklusstatus> changed;
    if (koben.Status_neu_berechnen)
        for (const StoredStatus& sow : readStatus(m_db, Umfang())) changed.insert(sow.tier, status(sow.lage));
    std::vector<std::vector<qint64>> sows(std::size(States));
    const Table stored = m_db.table("select ID, Status from Sauen where Art = 'Sau' and Abgangsdatum IS NULL");
    for (int row = 0; row < stored.rowCount(); ++row) {
        const qint64 id = stored.integer(row, 0);
        const Zyklusstatus state = changed.value(id, statusOf(stored.text(row, 1)));
        const auto place = std::find(std::begin(States), std::end(States) - 1, state) - std::begin(States);
        sows[static_cast<size_t>(place)].push_back(id);
    }
    return sows;
}

void PA_Tagesblick::showStates() {
    m_sows = sowsByState();
    refill(listatus, [&] {
        for (size_t i = 0; i < m_sows.size(); ++i) {
            const QString state = Statuswort(States[i]);
            listatus.addValues(
                {state.isEmpty() ? QStringLiteral("Ohne Zustand") : state, static_cast<qint64>(m_sows[i].size())});
        }
    });
}

/// Of the animals in stock, until Sunday; the first to end stands first.
void PA_Tagesblick::showBlocks() {
    const QDate today = Datum_aus_Text(koben.Heute), sunday = today.addDays(7 - today.dayOfWeek());
    const Table animals = readWartezeittiere(m_db, koben.Heute);
    std::vector<std::pair<QDate, int>> ending;
    for (int row = 0; row < animals.rowCount(); ++row) {
        const QDate until = animals.value(row, 4).toDate();
        if (until <= sunday && animals.isNull(row, 6)) ending.push_back({until, row});
    }
    std::sort(ending.begin(), ending.end());
    refill(lisperren, [&] {
        for (const auto& [until, row] : ending)
            lisperren.addValues({Hochkomma_ersetzen(animals.text(row, 0)), until}, animals.integer(row, 5));
    });
}

void PA_Tagesblick::showFigures() {
    const qint32 today = Tag_aus_Text(koben.Heute);
    const std::vector<Zeitraum> years = Kacheljahre(today);
    m_book = Sauenbuch_holen(m_db, today, years.front().von);
    m_tiles = computeKacheln(*m_book, m_targets);
    const bool none = std::all_of(m_tiles.begin(), m_tiles.end(),
                                  [](const Kachel& tile) { return tile.jetzt().empty() && tile.vorher().empty(); });
    Label2.setText(
        (none ? QStringLiteral("Vom %1 bis %2 und im Jahr davor gibt es keine Belegungen und Würfe von Sauen, "
                               "deshalb noch keine Kennzahlen.")
              : QStringLiteral("Kennzahlen vom %1 bis %2, daneben das Jahr davor"))
            .arg(Tag_als_Text(years.back().von), Tag_als_Text(years.back().bis)));
    refill(likacheln, [&] {
        for (const Kachel& tile : m_tiles)
            likacheln.addValues(
                {QString::fromUtf8(kennzahl(tile.figure).id), tile.jetzt().text(), tile.vorher().text(), tile.ziel});
    });
    likacheln.explain = [this](int row, int column) { return explain(row, column); };
    kacheln.setDraw([tiles = m_tiles](QSizeF room) { return drawKacheln(tiles, room); });
}

std::optional<Explanation> PA_Tagesblick::explain(int row, int column) const {
    const std::vector<Zeitraum> years = Kacheljahre(m_book->heute());
    const Kz figure = m_tiles.at(static_cast<size_t>(row - 1)).figure;
    if (column == TargetColumn - 2) return Kennzahl_herleiten(*m_book, figure, years.back());
    if (column == TargetColumn - 1) return Kennzahl_herleiten(*m_book, figure, years.front());
    return {};
}

// ------------------------------------------------------------------------------------------------------- ways onward

/// The rows of the work plan behind the current kind of work: what is overdue and what is due today.
void PA_Tagesblick::liarbeit_Click() {
    if (liarbeit.row() == 0) return koben.message("Bitte wählen Sie zuerst die Arbeit, die Sie sehen möchten.");
    const int work = liarbeit.row() - 1;
    std::vector<Faelligkeit> rows;
    for (const auto* part : {&m_work.overdue, &m_work.due})
        std::copy_if(part->begin(), part->end(), std::back_inserter(rows),
                     [work](const Faelligkeit& row) { return row.work == work; });
    QStringList names;
    for (const Arbeit& each : m_works) names += each.name;
    const qint32 today = Tag_aus_Text(koben.Heute);
    Arbeitsplan_ausgeben(gridli, m_work.animals, std::move(rows), names, {today, today},
                         {.fields = {true, true, true, true}, .due = {}, .free = {}});
    showList(kindOf(m_works[static_cast<size_t>(work)].doneLater),
             QStringLiteral("Für „%1“ ist heute nichts zu tun, und es ist nichts überfällig.")
                 .arg(m_works[static_cast<size_t>(work)].name));
}

/// The sows in the current state.
void PA_Tagesblick::listatus_DoubleClick() {
    if (listatus.row() == 0) return;
    const auto& ids = m_sows[static_cast<size_t>(listatus.row() - 1)];
    const QSet<qint64> wanted(ids.begin(), ids.end());
    gridli.clear();
    for (const char* title : {"Nummer", "Stallnr", "Gruppe", "L_Belegung", "L_Ferkelung", "L_Absetzung"}) {
        const QString name = QString::fromUtf8(title);
        gridli.addColumn(
            {.key = name.toLower(), .title = name, .sort = name.startsWith(u"L_") ? Sort::Date : Sort::Text});
    }
    const Table sows = m_db.table(
        "select Nummer, Stallnr, Gruppe, L_Belegung, L_Ferkelung, L_Absetzung, ID from Sauen where Art = 'Sau' and "
        "Abgangsdatum IS NULL order by Nummer");
    for (int row = 0; row < sows.rowCount(); ++row) {
        if (!wanted.contains(sows.integer(row, 6))) continue;
        Grid::Row cells;
        for (int column = 0; column < 6; ++column) cells.append(sows.value(row, column));
        gridli.addValues(std::move(cells), sows.integer(row, 6));
    }
    showList(Buchungsart::Belegung, QStringLiteral("Keine Sau steht in diesem Zustand."));
}

/// Hands over what stands in gridli; from its rows it goes on to the bookings of a kind.
void PA_Tagesblick::showList(Buchungsart kind, const QString& empty) {
    gridli.lead = [this, kind](int row, int) { openBookings(gridli.animal(row), kind); };
    gridli.setRow(std::min(1, gridli.rowCount()));
    Liste_ausgeben(koben, gridli, empty);
}

void PA_Tagesblick::lisperren_DoubleClick() {
    openBookings(lisperren.animal(lisperren.row()), Buchungsart::Behandlung);
}

void PA_Tagesblick::openBookings(qint64 animal, Buchungsart kind) {
    if (!chooseAnimal(koben, animal)) return;
    koben.Buchungsart_Nr = static_cast<int>(kind);
    koben.open(QStringLiteral("PE_Bewegungsdaten"));
}

// ----------------------------------------------------------------------------------------------------------- targets

void PA_Tagesblick::likacheln_Edited(int row, const QString& text) {
    setTarget(m_tiles.at(static_cast<size_t>(row - 1)).figure, text.trimmed());
}

void PA_Tagesblick::kacheln_Click(const QString& id) {
    const Kennzahl* figure = kennzahl(QStringView(id));
    if (!figure) return;
    const QString text = koben.screens.input(
        QStringLiteral("Welches Ziel haben Sie für „%1“? 0 heißt: kein Ziel.").arg(QString::fromUtf8(figure->name)),
        m_targets.text(*figure));
    if (!text.trimmed().isEmpty()) setTarget(figure->nr, text.trimmed());
}

void PA_Tagesblick::setTarget(Kz figure, const QString& text) {
    if (koben.nurAnsehen_melden()) return showFigures();
    const auto target = Zielwerte::read(text);
    if (!target && !text.isEmpty() && text != u"0")
        koben.message(QStringLiteral("Das Ziel kann nicht übernommen werden, weil „%1“ keine Zahl über 0 ist. Bitte "
                                     "geben Sie eine Zahl wie 28,5 ein.")
                          .arg(text));
    else if (!m_targets.set(koben.Datenordner, kennzahl(figure), target))
        koben.message(
            QStringLiteral("Das Ziel kann nicht gespeichert werden und bleibt, wie es war. Bitte prüfen Sie, ob im "
                           "Datenordner genügend Platz und das Schreiben erlaubt ist."));
    showFigures();
}

}  // namespace koben

#include "plans/PB_Statusplan.h"

#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Page { Belegt, Tragend, NichtTragend, Saeugend, Guest };

constexpr std::array Explanations{
    "Alle Sauen mit erstmaliger Belegung oder bei denen die letzte Belegung aktueller ist als die letzte Ferkelung "
    "(unabhängig der Trächtigkeitskontrolle)",
    "Alle belegten Sauen mit erfolgreicher Trächtigkeitsuntersuchung",
    "Alle belegten Sauen mit NICHT erfolgreicher Trächtigkeitsuntersuchung",
    "Alle Sauen bei denen die letzte Ferkelung neuer ist als die letzte Belegung und die letzte Absetzung",
    "Alle Sauen bei denen die letzte Absetzung aktueller ist als die letzte Belegung sowie Sauen mit negativer "
    "Trächtigkeitskontrolle"};

/// The sows in stock, each with the boar of her latest service.
const QString SowQuery = QStringLiteral(
    "select Status, Nummer, Gruppe, Stallnr, Anz_Ferkelungen, Anz_Belegungen, L_Trächtigkeit, L_Belegung, "
    "L_Ferkelung, L_Absetzung, iif(Status like 'B*', (select Ebernr from Belegung where Kennung = Sauen.ID order by "
    "Datum DESC), '') as Eber, ID from Sauen where Art = 'Sau' and Abgangsdatum is null order by Nummer");
enum SowField {
    Status,
    Nummer,
    Gruppe,
    Stallnr,
    Ferkelungen,
    Belegungen,
    LKontrolle,
    LBelegung,
    LFerkelung,
    LAbsetzung,
    Eber,
    Id
};

Column column(const char* key, const char* title, Sort sort = Sort::Text) {
    return {.key = QString::fromUtf8(key),
            .title = QString::fromUtf8(title),
            .align = sort == Sort::Number ? Align::Right : Align::Left,
            .sort = sort};
}

void addColumns(Grid& list, const std::vector<Column>& own) {
    for (const Column& common : {column("nummer", "Nummer"), column("gruppe", "Gruppe"), column("stallnr", "Stallnr"),
                                 column("wurfnr", "Wurfnr", Sort::Number)})
        list.addColumn(common);
    for (const Column& further : own) list.addColumn(further);
}

/// The cells of one sow's row in any of the lists.
class Sow {
public:
    Sow(const Table& sows, int row, const Variablen& v)
        : m_sows(sows), m_row(row), m_v(v), m_today(Datum_aus_Text(v.Heute)) {}

    QString text(SowField field) const { return Hochkomma_ersetzen(m_sows.text(m_row, field)); }

    Grid::Row servedRow() const {
        const bool tested = m_sows.integer(m_row, LKontrolle) > m_sows.integer(m_row, LBelegung);
        const QDate due = after(LBelegung, m_v.Konfig_Zahl[Zahl::TageBelegungFerkelung]);
        return line({m_sows.integer(m_row, Ferkelungen) + 1, QString(tested ? u'J' : u'N'), value(LBelegung),
                     text(Eber), value(Belegungen), since(LBelegung), day(due), until(due)});
    }
    Grid::Row sucklingRow() const {
        const QDate due = after(LFerkelung, m_v.Konfig_Zahl[Zahl::TageFerkelungAbsetzung]);
        return line({value(Ferkelungen), value(LFerkelung), since(LFerkelung), day(due), until(due)});
    }
    Grid::Row openRow() const {
        const int days = m_v.Konfig_Zahl[Zahl::TageFerkelungBelegung] - m_v.Konfig_Zahl[Zahl::TageFerkelungAbsetzung];
        const QDate due = after(LFerkelung, days);
        return line({value(Ferkelungen), value(LAbsetzung), since(LAbsetzung), day(due), until(due)});
    }

private:
    Value value(SowField field) const { return m_sows.value(m_row, field); }
    static Value day(QDate date) { return date.isValid() ? Value(date) : Value(); }
    QDate date(SowField field) const { return value(field).toDate(); }
    QDate after(SowField field, int days) const {
        const QDate from = date(field);
        return from.isValid() ? from.addDays(days) : from;
    }
    Value since(SowField field) const {
        const QDate from = date(field);
        return from.isValid() ? Value(qint64(from.daysTo(m_today))) : Value();
    }
    Value until(QDate due) const { return due.isValid() ? Value(qint64(m_today.daysTo(due))) : Value(); }
    Grid::Row line(const Grid::Row& cells) const {
        return Grid::Row{text(Nummer), text(Gruppe), text(Stallnr)} + cells;
    }

    const Table& m_sows;
    const int m_row;
    const Variablen& m_v;
    const QDate m_today;
};

}  // namespace

PB_Statusplan::PB_Statusplan(Koben& koben_) : Bericht(koben_, "PB_Statusplan", "Statusplan (Sauen)") {
    for (size_t page = 0; page < listen.size(); ++page) {
        listen[page]->setPage(sstab, static_cast<int>(page));
        listen[page]->setHint(sstab.captions().at(static_cast<qsizetype>(page)));
    }
    sstab.onClick = [this](int page) { showPage(page); };
    ok.onClick = [this] { Liste_ausgeben(koben, *listen[static_cast<size_t>(sstab.front())]); };
    bindButtons(ok, beenden, &hilfe);
    defineColumns();
    for (size_t page = 0; page < listen.size(); ++page)
        bindWidths(*listen[page], QStringLiteral("pb_statusplan_%1").arg(page));
}

void PB_Statusplan::showPage(int page) { Label1.setText(QString::fromUtf8(Explanations[static_cast<size_t>(page)])); }

void PB_Statusplan::Load() {
    Bericht::Load();
    readAnew();
    sstab.setFront(Belegt);
    showPage(Belegt);
}

void PB_Statusplan::readAnew() {
    for (Grid* list : listen) list->clearRows();
    const Table sows = m_db.table(SowQuery);
    for (int row = 0; row < sows.rowCount(); ++row) addSow(sows, row);
}

void PB_Statusplan::defineColumns() {
    for (Grid* list : {&libelegt, &litragend, &linichttragend})
        addColumns(*list, {{.key = "trächtig", .title = "Trächtig", .align = Align::Right},
                           column("lbelegung", "L_Belegung", Sort::Date),
                           column("ebernr", "Ebernr"),
                           column("anz_bel", "Anz_Bel", Sort::Number),
                           column("tragtag", "TragTag", Sort::Number),
                           column("ferkel_termin", "Ferkel_Termin", Sort::Date),
                           column("ferkel_tage", "Ferkel_Tage", Sort::Number)});
    addColumns(
        lisäugend,
        {column("lferkelung", "L_Ferkelung", Sort::Date), column("säugetag", "SäugeTag", Sort::Number),
         column("absetz_termin", "Absetz_Termin", Sort::Date), column("absetz_tage", "Absetz_Tage", Sort::Number)});
    addColumns(ligüst, {column("labsetzung", "L_Absetzung", Sort::Date), column("güsttag", "GüstTag", Sort::Number),
                        column("belege_termin", "Belege_Termin", Sort::Date),
                        column("belege_tage", "Belege_Tage", Sort::Number)});
}

/// A served sow with a result of her pregnancy check stands in more than one list.
void PB_Statusplan::addSow(const Table& sows, int row) {
    const Sow sow(sows, row, koben);
    const QString status = sow.text(Status);
    const qint64 id = sows.integer(row, Id);
    if (status.startsWith(u'B')) {
        const Grid::Row cells = sow.servedRow();
        libelegt.addValues(cells, id);
        if (status.startsWith(u"B_T")) litragend.addValues(cells, id);
        if (status.startsWith(u"B_NT")) linichttragend.addValues(cells, id);
    }
    if (status == u"S") lisäugend.addValues(sow.sucklingRow(), id);
    if (status.contains(u'G')) ligüst.addValues(sow.openRow(), id);
}

void PB_Statusplan::FirstShown() {
    if (litragend.rowCount() + lisäugend.rowCount() + ligüst.rowCount() > 0) return;
    koben.message(
        "Es wurden keine tragenden, säugenden oder güste Sauen gefunden. Das Modul wird deshalb wieder geschlossen!");
    close();
}

bool PB_Statusplan::isOverdue(const Grid& list, int row) { return list.cell(row, list.columnCount()).startsWith(u'-'); }

}  // namespace koben

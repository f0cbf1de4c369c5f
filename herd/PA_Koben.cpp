// The herd list: query, filters, counters, search, and the state of the menus.
#include "herd/PA_Koben.h"

#include <exception>

#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "forms/RunState.h"

namespace koben {

namespace {

const QString ListFields = QStringLiteral(
    "select Art, Nummer, Gruppe, Stallnr, BoxDatum, Selektiert, Ohrmarke, Tätowierung, Geburtsdatum, Anz_Belegungen, "
    "Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, Status, Statusabfrage, Rasse, Belegungsart, N_Belegung, "
    "N_Ferkelung, L_Belegung, L_Ferkelung, L_Trächtigkeit, L_Absetzung, Mechanische_Amme, Zugangsdatum, "
    "Zugangsgewicht_kg, Einkaufspreis, Zugangsgrund, Lieferant, Abgangsdatum, Abgangsgewicht_kg, Verkaufspreis, "
    "Abgangsgrund, Abnehmer, Infos, Aenderung, ID from Sauen");

/// More changed animals than this and the list is read whole, which is then quicker.
constexpr size_t HoechstensEinzeln = 1000;

/// What the window writes above a column where the field's name is no good German.
struct Caption {
    const char* key;
    const char* caption;
};
const Caption Captions[] = {{"Stallnr", "Stall"},
                            {"BoxDatum", "Box seit"},
                            {"Selektiert", "Sel."},
                            {"Geburtsdatum", "Geboren"},
                            {"Anz_Belegungen", "Beleg."},
                            {"Anz_Ferkelungen", "Würfe"},
                            {"Anz_Ferkel_Gesamt", "Ferkel ges."},
                            {"Anz_Ferkel_Lebend", "lebend"},
                            {"Statusabfrage", "Status ign."},
                            {"Belegungsart", "Bel.-Art"},
                            {"N_Belegung", "Nächste Belegung"},
                            {"N_Ferkelung", "Nächste Ferkelung"},
                            {"L_Belegung", "Letzte Belegung"},
                            {"L_Ferkelung", "Letzte Ferkelung"},
                            {"L_Trächtigkeit", "Letzte Trächtigkeit"},
                            {"L_Absetzung", "Letzte Absetzung"},
                            {"Mechanische_Amme", "Mech. Amme"},
                            {"Zugangsdatum", "Zugang"},
                            {"Zugangsgewicht_kg", "Zugang kg"},
                            {"Abgangsdatum", "Abgang"},
                            {"Abgangsgewicht_kg", "Abgang kg"},
                            {"Aenderung", "Geändert"}};

}  // namespace

PA_Koben::PA_Koben(Koben& context) : Form(context, QStringLiteral("PA_Koben"), QStringLiteral("KOBEN")) {
    optianzeige.frame = QStringLiteral("Anzeige Bestand---");
    optisauen.frame = QStringLiteral("Anzeige Sauen---");
    optianzeige.onClick = optiverkauft.onClick = optisauen.onClick = [this](int) { datenschweinelesen(); };
    t.onChange = [this] { t_Change(); };
    t.enterIsTab = false;
    t.setHint(QStringLiteral("Saunummer suchen"));
    datali.onRowChange = [this] { Menue_Zustand_setzen(); };
    datali.onDoubleClick = cmdok.onClick = [this] { Tierdaten_ausgeben(); };
    datali.onDelete = [this] { run(QStringLiteral("XB_schweinlöschen")); };
    datali.onSorted = [this](int column) {
        koben.Konfig_Zahl[Zahl::ListeSortSpalte] = static_cast<qint16>(column);
        koben.Konfig_Zahl[Zahl::ListeSortRichtung] = static_cast<qint16>(datali.sortDirection());
    };
    datali.onResized = [this](int) { koben.saveWidths(datali, QStringLiteral("datali")); };
    datali.rowTitle = [this](int row) {
        return koben.Konfig_Zahl[Zahl::LaufendeNummer] == 1 ? QString::number(row) : datali.cell(row, u"Nummer");
    };
    Text1.multiLine = Text1.fixedPitch = Text1.readOnly = true;
    Text1.enterIsTab = Text1.marksAllOnFocus = false;
    Text1.onKeyPress = [](int) { return 0; };
    for (int i = 0; i < abwaerts.count(); ++i) abwaerts[i].onClick = [this, i] { abwaerts_Click(i); };
    comlebenslauf.onClick = [this] { run(QStringLiteral("A_awlebenslauf")); };
    comdrucken.onClick = [this] { comdrucken_Click(); };
    comstand.setHint(QStringLiteral("Die Herde an einem anderen Tag ansehen"));
    comstand.onClick = [this] { Stand_erfragen(); };
    comheute.onClick = [this] { Zu_heute(); };
    Stand_kennzeichnen();
    loeschhinweis.setVisible(false);
    hinweis.setVisible(false);
    schnell.enterIsTab = false;
    schnell.setHint(QStringLiteral("Schnelleingabe"));
    schnell.onChange = [this] { schnellsatz.setText(Schnellzeile_deuten().sentence()); };
    schnell.onEnter = [this] { schnell_Enter(); };
    linksrechts.onClick = [this] { linksrechts_Click(); };
    buildMenu();
    buildToolBar();
    buildContextMenu();
}

PA_Koben::~PA_Koben() {
    if (koben.herdList == this) koben.herdList = nullptr;
    // a failure that takes the program down leaves the mark for the next start
    if (m_started && std::uncaught_exceptions() == 0) RunState(koben.platform, koben.Datenordner).setRunning(false);
}

void PA_Koben::verbinden() {
    m_db = koben.connect();
    m_watch = Watch(m_db, QStringLiteral("Sauen"));
    m_gelesen.clear();
}

/// `only` narrows it to some animals.
QString PA_Koben::listQuery(const std::vector<qint64>& only) const {
    QString sql = ListFields;
    const auto condition = [&sql] {
        return sql.contains(QStringLiteral("where")) ? QStringLiteral(" and") : QStringLiteral(" where");
    };
    if (optiverkauft.selected() == 0) sql += QStringLiteral(" where Abgangsdatum IS NULL");
    if (optiverkauft.selected() == 1) sql += QStringLiteral(" where Abgangsdatum IS NOT NULL");
    static const char* const kinds[] = {"Sau", "Eber", "Mast", "Ferkel"};
    if (const int kind = optianzeige.selected(); kind > 0)
        sql += condition() + QStringLiteral(" Art = '%1'").arg(QString::fromUtf8(kinds[kind - 1]));
    static const char* const states[] = {"",
                                         " and Status like 'B*'",
                                         " and Status = 'B_T'",
                                         " and Status = 'S'",
                                         " and Status like '*G'",
                                         " and Status like 'B_NT*'"};
    if (optianzeige.selected() == 1 && optisauen.selected() > 0) sql += QString::fromUtf8(states[optisauen.selected()]);
    if (!only.empty()) {
        QStringList ids;
        for (const qint64 id : only) ids.append(QString::number(id));
        sql += condition() + QStringLiteral(" ID in (%1)").arg(ids.join(u','));
    }
    const QString& first = koben.Konfig_Text[Text::Sortierung1];
    const QString& second = koben.Konfig_Text[Text::Sortierung2];
    if (!first.isEmpty()) {
        sql += QStringLiteral(" order by ") + first;
        if (!second.isEmpty()) sql += QStringLiteral(" ,") + second;
    }
    return sql;
}

/// The result is that of reading all; where only some animals have changed since, only those are read. Where it fails
/// or the user cancels, the list stays as it is and usable.
void PA_Koben::datenschweinelesen() {
    const auto changed = m_watch.take(HoechstensEinzeln);
    const QString sql = listQuery();
    // Until it is read, nothing is known of the list: what was taken from the watch would be missed the next time.
    const bool same = std::exchange(m_gelesen, QString()) == sql;
    std::optional<Table> table;
    if (!changed || !same || !Liste_auffrischen(*changed)) {
        table = Liste_lesen(sql);
        if (!table) return Filter_zuruecknehmen();
    }
    m_gelesen = sql;
    if (schnell.text().isEmpty()) schnellsatz.setText({});  // what was booked may have been taken back
    Menues_sperren(false);
    const bool sows = optianzeige.selected() == 1;
    Label2.setVisible(sows);
    optisauen.setVisible(sows);
    if (table) Liste_zeigen(*table);
    if (datali.rowCount() > 0) datali.setRow(1);
    Menue_Zustand_setzen();
    zaehlen();
    Menues_sperren(true);
    koben.Liste_neu_laden = 0;
    if (datali.rowCount() == 0 && (optianzeige.selected() != 0 || optiverkauft.selected() != 0)) Filter_korrigieren();
}

/// The order that the list has after loading: the SQL's by the settings, else the column last clicked on.
std::vector<Grid::Order> PA_Koben::Listenordnung() const {
    if (const QString& first = koben.Konfig_Text[Text::Sortierung1]; !first.isEmpty()) {
        std::vector<Grid::Order> order = {{datali.columnOf(first)}};
        const QString& second = koben.Konfig_Text[Text::Sortierung2];
        if (!second.isEmpty()) order.push_back({datali.columnOf(second)});
        return order;
    }
    const qint16 direction = koben.Konfig_Zahl[Zahl::ListeSortRichtung];
    if (direction != 1 && direction != 2) return {};
    return {{koben.Konfig_Zahl[Zahl::ListeSortSpalte], direction == 2}};
}

/// Brings these animals of the list up to date; false where it must be read whole.
bool PA_Koben::Liste_auffrischen(const std::vector<qint64>& ids) {
    const std::vector<Grid::Order> order = Listenordnung();
    const bool byClick = !order.empty() && koben.Konfig_Text[Text::Sortierung1].isEmpty();
    if (datali.sortColumn() != (byClick ? order.front().column : 0)) return false;
    if (byClick && datali.sortDirection() != (order.front().down ? 2 : 1)) return false;
    for (const Grid::Order& o : order)
        if (o.column < 1 || o.column > datali.columnCount()) return false;
    // Without animals the query would be that of all.
    return datali.refresh(m_db.table(listQuery(ids.empty() ? std::vector<qint64>{0} : ids)), ids, u"ID", order);
}

/// Nothing where the user cancels.
std::optional<Table> PA_Koben::Liste_lesen(const QString& sql) {
    const qint64 most = m_db.table(QStringLiteral("select max(ID) as hoechste from Sauen")).integer(0, 0);
    Progress progress(koben, QStringLiteral("Die Liste wird gelesen ..."), most);
    auto table = m_db.table(sql, [&](qint64 rows) { return progress.step(rows); });
    if (table) m_filter = {optianzeige.selected(), optiverkauft.selected(), optisauen.selected()};
    return table;
}

bool PA_Koben::Bestand_leer() const {
    return !m_heutiges && !m_gelesen.isEmpty() && datali.rowCount() == 0 &&
           m_db.table(QStringLiteral("select max(ID) as hoechste from Sauen")).integer(0, 0) == 0;
}

void PA_Koben::Filter_zuruecknehmen() {
    optianzeige.select(m_filter[0]);
    optiverkauft.select(m_filter[1]);
    optisauen.select(m_filter[2]);
}

void PA_Koben::Liste_zeigen(const Table& table) {
    datali.clear();
    datali.bind(table);
    for (const Caption& c : Captions)
        if (const int column = datali.columnOf(QString::fromUtf8(c.key)))
            datali.column(column).caption = QString::fromUtf8(c.caption);
    if (const int id = datali.columnOf(u"ID")) datali.column(id).technical = true;
    koben.restoreWidths(datali, QStringLiteral("datali"));
    qint16& column = koben.Konfig_Zahl[Zahl::ListeSortSpalte];
    qint16& direction = koben.Konfig_Zahl[Zahl::ListeSortRichtung];
    if (column < 1 || column > datali.columnCount()) column = 1;
    if (direction != 1 && direction != 2) direction = 0;
    if (koben.Konfig_Text[Text::Sortierung1].isEmpty()) datali.sort(column, direction);
}

/// The counters line: numbers of the rows shown.
void PA_Koben::zaehlen() {
    qint64 sows = 0, boars = 0, fattening = 0, services = 0, litters = 0, piglets = 0, alive = 0, selected = 0;
    const int art = datali.columnOf(u"Art"), mark = datali.columnOf(u"Selektiert"),
              service = datali.columnOf(u"Anz_Belegungen"), litter = datali.columnOf(u"Anz_Ferkelungen"),
              total = datali.columnOf(u"Anz_Ferkel_Gesamt"), live = datali.columnOf(u"Anz_Ferkel_Lebend");
    for (int row = 1; row <= datali.rowCount(); ++row) {
        const QString kind = datali.cell(row, art);
        sows += kind == u"Sau";
        boars += kind == u"Eber";
        fattening += kind == u"Mast";
        services += datali.integer(row, service);
        litters += datali.integer(row, litter);
        piglets += datali.integer(row, total);
        alive += datali.integer(row, live);
        selected += datali.cell(row, mark) == u"X";
    }
    bezstati.setText(QStringLiteral("Statistik:   Sauen=%1   Eber=%2   Mast=%3   Belegungen=%4   Ferkelungen=%5   "
                                    "Ferkel-Gesamt=%6   Ferkel-Lebend=%7   Ferkel-Tot=%8   Selektiert=%9")
                         .arg(sows)
                         .arg(boars)
                         .arg(fattening)
                         .arg(services)
                         .arg(litters)
                         .arg(piglets)
                         .arg(alive)
                         .arg(piglets - alive)
                         .arg(selected));
}

/// Nothing to show: widens one filter and loads again, until animals show or every group stands at its first entry.
void PA_Koben::Filter_korrigieren() {
    koben.message(QStringLiteral("In der aktuellen Einstellung können keine Tiere angezeigt werden.") + Crlf + Crlf +
                  QStringLiteral("Die Anzeige wird korrigiert."));
    OptionGroup& group = optiverkauft.selected() != 0 ? optiverkauft
                         : optisauen.selected() != 0  ? optisauen
                                                      : optianzeige;
    group.select(0);
    datenschweinelesen();
}

void PA_Koben::Menue_Zustand_setzen() {
    const bool current = datali.row() > 0;
    const bool rows = datali.rowCount() > 0;
    allow({"XB_schweinändern", "XB_schweinlöschen", "btn_beweg_belegung", "btn_beweg_trächtig", "btn_beweg_ferkelung",
           "btn_beweg_absetzung", "btn_beweg_verschiebung", "btn_beweg_verluste", "btn_beweg_behandlung"},
          current);
    allow(
        {"btn_beweg_ferkelverkauf", "XE_Eingabe", "XB_verkaufschweine", "XB_ferkeleinverkauf", "XB_schweineselektieren",
         "XB_selektiertetieremarkieren", "XB_markierteschweineselektieren", "A_Auswertungen", "btn_auswert_schweine",
         "btn_auswert_buchungen", "btn_auswert_arbeitspläne", "btn_auswert_bestandsberichte",
         "btn_auswert_deckungsbeitrag", "btn_auswert_Statusplan", "btn_auswert_statistiken"},
        rows);
    showStates();
}

void PA_Koben::t_Change() {
    const QString text = t.text().trimmed();
    if (text.isEmpty()) return;
    if (const int row = datali.findLike(u"Nummer", text + u'*')) {
        datali.setRow(row);
        Menue_Zustand_setzen();
    }
}

void PA_Koben::abwaerts_Click(int index) {
    koben.Tier_weiterschalten(index == 1 ? 0 : 1);
    Menue_Zustand_setzen();
    Tierdaten_ausgeben();
}

void PA_Koben::linksrechts_Click() {
    qint16& wide = koben.Konfig_Zahl[Zahl::ListeBreit];
    wide = wide == 1 ? 0 : 1;
    if (layoutChanged) layoutChanged();
}

}  // namespace koben

#include "bookings/PE_Bewegungsdaten_Absetzung.h"

#include "core/FreieNummer.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Input { Anzahl, Gewicht, Verlust };
enum List { Kommentar, Bemerkung, Box, Grund, Gruppe };

/// Fields of a piglet's row in the order of writing; those behind the values are the same for every piglet.
const QString NeuesTier = QStringLiteral(
    "insert into Sauen (Art, Nummer, Gruppe, Stallnr, Boxdatum, Tätowierung, Geburtsdatum, Zugangsdatum, "
    "Zugangsgewicht_kg, Ohrmarke, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, Rasse, "
    "Belegungsart, Status, Statusabfrage, Infos, Selektiert, Mechanische_Amme, Einkaufspreis, Zugangsgrund, Lieferant, "
    "Abgangsgewicht_kg, Verkaufspreis, Abgangsgrund, Abnehmer) "
    "values (?, ?, ?, ?, ?, ?, ?, ?, ?, '', 0, 0, 0, 0, '', '', '', '', '', '', 'N', 0, 'Eigene Zucht', '', 0, 0, '', "
    "'')");

}  // namespace

PE_Bewegungsdaten_Absetzung::PE_Bewegungsdaten_Absetzung(Koben& context)
    : Buchungseingabe(context, QStringLiteral("PE_Bewegungsdaten_Absetzung"), QStringLiteral("Absetzung eingeben"), 3,
                      QStringLiteral("Dateneingabe Absetzung")) {
    anzahl("Anzahl Ferkel:", tz[Anzahl], "Anzahl_Ferkel", {}, UpDown, 0);
    gewicht("Gewicht je Stück (kg):", tz[Gewicht], "Stück_Gewicht_kg");
    text("Kommentar:", kom[Kommentar], "Kommentar", 20, Werte("Kommentar"));
    text("Bemerkung:", kom[Bemerkung], "Bemerkung", 20, Bemerkungen());
    anzahl("Als Verlust verbuchen:", tz[Verlust], nullptr, {}, UpDown2, 0);
    text("Grund des Verlustes:", kom[Grund], nullptr, 20, Verlustgruende());
    text("Einbuchen in Box/Gruppe:", kom[Box], nullptr, 20,
         Stichworte("Stammdaten_Stallnummer", "select * from Stammdaten_Stallnummer order by Inhalt"));
    text("", kom[Gruppe], nullptr, 20, {.sql = QStringLiteral("select * from Stammdaten_Gruppe order by Inhalt")});
    kom[Gruppe].setHint(QStringLiteral("Gruppe"));
    zeile("", kon);
    tz[Anzahl].onLostFocus = [this] { tz_LostFocus(Anzahl); };
    tz[Verlust].onLostFocus = [this] { tz_LostFocus(Verlust); };
    tz[Verlust].setText(QStringLiteral("0"));
}

PE_Bewegungsdaten_Absetzung::~PE_Bewegungsdaten_Absetzung() = default;

void PE_Bewegungsdaten_Absetzung::Activate() {
    Buchungseingabe::Activate();
    Anzahl_uebernehmen(tz[Anzahl]);
    for (Control* control : std::initializer_list<Control*>{&tz[Verlust], &UpDown2, &kom[Grund], &kom[Box],
                                                            &kom[Gruppe], &kon, &Label2, &Label3})
        control->setVisible(adding());
}

void PE_Bewegungsdaten_Absetzung::vorgeben() {
    Buchungseingabe::vorgeben();
    Restferkel = std::max(rest(frame().currentAnimal(), {"Verluste", "Verschiebung"}), qint64(0));
    tz[Anzahl].setText(QString::number(Restferkel));
}

/// Fewer piglets than the sow should have: the difference is proposed as a loss.
void PE_Bewegungsdaten_Absetzung::tz_LostFocus(int index) {
    if (koben::Wert(tz[index].text()) < 0) tz[index].setText(QStringLiteral("0"));
    if (index != Anzahl) return;
    const auto loss = Restferkel - static_cast<qint64>(koben::Wert(tz[Anzahl].text()));
    tz[Verlust].setText(QString::number(std::max(loss, qint64(0))));
}

PE_Bewegungsdaten_Absetzung::Wurf PE_Bewegungsdaten_Absetzung::letzterWurf(qint64 sow) const {
    const Table litter = m_db.table(
        QStringLiteral("select top 1 Datum, Ferkel_Lebendig from Ferkelung where Kennung = %1 order by Datum DESC")
            .arg(sow));
    return litter.rowCount() == 0 ? Wurf() : Wurf{litter.value(0, 0).toDate(), litter.integer(0, 1)};
}

qint64 PE_Bewegungsdaten_Absetzung::rest(qint64 sow, std::initializer_list<const char*> tables) const {
    const Wurf litter = letzterWurf(sow);
    qint64 piglets = litter.lebend;
    if (!litter.tag.isValid()) return piglets;
    for (const char* table : tables)
        piglets -= m_db.table(QStringLiteral(
                                  "select sum(Anzahl_Ferkel) as summeferkel from %1 where Kennung = %2 and Datum >= %3")
                                  .arg(QString::fromUtf8(table))
                                  .arg(sow)
                                  .arg(Sql_Datum(Datum_als_Anzeige(litter.tag))))
                       .integer(0, 0);
    return piglets;
}

/// More piglets than the sow can have are saved only if the user insists.
bool PE_Bewegungsdaten_Absetzung::balanceAccepted() const {
    qint64 left = rest(frame().currentAnimal(), {"Verluste", "Verschiebung", "Absetzung"});
    const Grid& li = frame().li;
    if (!adding()) left += static_cast<qint64>(koben::Wert(li.cell(li.row(), u"Anzahl_Ferkel")));
    left -= static_cast<qint64>(koben::Wert(tz[Anzahl].text()));
    return left >= 0 ||
           koben.yesNo(QStringLiteral("Lt. den aktuellen Dateneingaben ist die Summe der Ferkel seit der letzten "
                                      "Ferkelung (Lebendzugang - Verluste - Verschiebung - Absetzung) bei der Sau ") +
                       kom[Bemerkung].text() + QStringLiteral(" auf ") + QString::number(left) +
                       QStringLiteral(" (also unter 0).") + Crlf + Crlf +
                       QStringLiteral("Soll die Buchung trotzdem gespeichert werden?"));
}

std::optional<std::vector<int>> PE_Bewegungsdaten_Absetzung::tiere() {
    if (frame().schweinli.markedCount() == 1 && !balanceAccepted()) return std::nullopt;
    return Buchungseingabe::tiere();
}

QString PE_Bewegungsdaten_Absetzung::Sammelhinweis() const {
    return Crlf + Crlf +
           QStringLiteral("Bei mehreren Schweinen findet keine Prüfung bezüglich der vorhandenen Ferkel statt.");
}

QString PE_Bewegungsdaten_Absetzung::box() const { return Hochkomma_ersetzen(kom[Box].text()); }

void PE_Bewegungsdaten_Absetzung::vorbereiten(const std::vector<int>& rows) {
    m_plan.clear();
    m_numbers.reset();
    if (!adding()) return;
    const Grid& animals = frame().schweinli;
    for (int row : rows) {
        Vorhaben& plan = m_plan[row];
        plan.verlust = koben::Wert(tz[Verlust].text()) > 0 &&
                       koben.yesNo(QStringLiteral("Es ist ein Verlust von ") + tz[Verlust].text() +
                                   QStringLiteral(" Ferkel als Verlust eingetragen. Soll dieser Verlust jetzt gebucht "
                                                  "werden?"));
        if (box().isEmpty()) continue;
        plan.geburt = letzterWurf(animals.value(row, u"ID").toInt()).tag;
        if (!plan.geburt.isValid())
            koben.message(QStringLiteral("Von der Sau ") + animals.cell(row, u"Nummer") +
                          QStringLiteral(" können die Ferkel nicht in den Bestand übernommen werden, weil keine "
                                         "Ferkelung gefunden wurde."));
    }
}

void PE_Bewegungsdaten_Absetzung::gespeichert(Recordset&, int row) {
    const auto plan = m_plan.find(row);
    if (plan == m_plan.end()) return;
    if (plan->second.verlust) Verlust_buchen(row);
    if (plan->second.geburt.isValid()) Ferkel_einbuchen(row, plan->second.geburt);
}

void PE_Bewegungsdaten_Absetzung::Verlust_buchen(int row) {
    const Grid& animals = frame().schweinli;
    Recordset losses = m_db.open(QStringLiteral("select * from Verluste where ID = 0"));
    losses.addNew();
    losses.set(u"Datum", Datum_aus_Text(tdat.text()));
    losses.set(u"Anzahl_Ferkel", koben::Wert(tz[Verlust].text()));
    losses.set(u"Grund", Hochkomma_ersetzen(kom[Grund].text()));
    losses.set(u"Kosten", Money());
    losses.set(u"Kommentar", QString());
    losses.set(u"Bemerkung", QString());
    losses.set(u"Kennung", animals.value(row, u"ID"));
    losses.set(u"Muttersau", Hochkomma_ersetzen(animals.cell(row, u"Nummer")));
    losses.update();
}

void PE_Bewegungsdaten_Absetzung::Ferkel_einbuchen(int row, QDate birth) {
    koben.Liste_neu_laden = 1;
    if (!m_numbers) m_numbers = std::make_unique<FreieNummern>(m_db, box());
    Statement insert = m_db.prepare(NeuesTier);
    const QString sort = kon.checked() ? QStringLiteral("Mast") : QStringLiteral("Ferkel");
    const QString mother = Hochkomma_ersetzen(frame().schweinli.cell(row, u"Nummer"));
    const QString group = Hochkomma_ersetzen(kom[Gruppe].text());
    const QDate today = Datum_aus_Text(tdat.text());
    const float weight = Zahl_aus_Text(QString(tz[Gewicht].text()));
    const auto count = static_cast<qint64>(koben::Wert(tz[Anzahl].text()));
    for (qint64 i = 1; i <= count; ++i)
        insert.run({sort, m_numbers->naechste(), group, box(), today, mother + u'-' + QString::number(i), birth, today,
                    weight});
}

}  // namespace koben

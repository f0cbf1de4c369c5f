#include "bookings/PB_Verkauf_Schweine.h"

#include "core/Aktionsnamen.h"
#include "core/PZ_Koben_Subs.h"
#include "core/Wartezeit.h"

namespace koben {

namespace {

enum Input { Gewicht, Preis };
enum List { Grund, Abnehmer };

constexpr int ArtWidth = 5, NummerWidth = 16, StallWidth = 11;
constexpr int IdAt = ArtWidth + NummerWidth + StallWidth;  // where the ID begins in a row of the list
constexpr int TextWidth = 20;

}  // namespace

PB_Verkauf_Schweine::PB_Verkauf_Schweine(Koben& koben_)
    : Eingabe(koben_, "PB_Verkauf_Schweine", "Verkauf Sauen/Eber/Masttiere") {
    li.setHint(Label1.text());
    shareCalendar(calend);
    tdat.onKeyPress = [this](int key) {
        calend.setVisible(false);
        return Nur_Zahlzeichen(key);
    };
    date(bez[0].text(), tdat, calender, "Abgangsdatum");
    weight(bez[1].text(), tz[Gewicht], "Abgangsgewicht_kg");
    amount(bez[2].text(), tz[Preis], "Verkaufspreis");
    text(bez[3].text(), kom[Grund], "Abgangsgrund", TextWidth,
         {.sql = "select Inhalt from Stammdaten_Abgangsgrund", .keywords = "Stammdaten_Abgangsgrund"});
    text(bez[4].text(), kom[Abnehmer], "Abnehmer", TextWidth,
         {.sql = "select Inhalt from Stammdaten_Kunde", .keywords = "Stammdaten_Kunde"});
    neu.onClick = [this] { save(0); };
    cmdschließen.onClick = [this] { cancel(); };
    helpTopic = name();
    cancelButton = &cmdschließen;
}

void PB_Verkauf_Schweine::Load() {
    Eingabe::Load();
    showPresets();
    fillAnimals();
}

void PB_Verkauf_Schweine::fillAnimals() {
    const Table stock = m_db.table(
        QStringLiteral("select Art, Nummer, Stallnr, ID from Sauen where Abgangsdatum IS NULL order by Art, Nummer"));
    QStringList rows;
    rows.reserve(stock.rowCount());
    for (int row = 0; row < stock.rowCount(); ++row)
        rows.append(Text_links(stock.text(row, 0), ArtWidth) + Text_links(stock.text(row, 1), NummerWidth) +
                    Text_links(stock.text(row, 2), StallWidth) + QString::number(stock.integer(row, 3)));
    li.setItems(rows);
}

/// In the order of entry into the stock.
std::vector<qint64> PB_Verkauf_Schweine::markedAnimals() const {
    std::vector<qint64> animals;
    const QStringList& rows = li.items();
    for (int row = 0; row < rows.size(); ++row)
        if (li.marked(row)) animals.push_back(rows[row].mid(IdAt).trimmed().toLongLong());
    std::sort(animals.begin(), animals.end());
    return animals;
}

void PB_Verkauf_Schweine::check(Findings& found) {
    if (!Ist_Datum(tdat.text())) found.add(tdat, "...das Abgangsdatum nicht korrekt ist.");
    if (markedAnimals().empty()) found.add(li, "...kein Tier zum Verkauf markiert wurde.");
}

bool PB_Verkauf_Schweine::agreed() {
    return koben.yesNo(QStringLiteral("Sollen die %1 markierten Tiere wirklich als 'verkauft' gebucht werden?")
                           .arg(markedAnimals().size()),
                       true);
}

QString PB_Verkauf_Schweine::actionName() const {
    return QStringLiteral("Verkauf von %1, %2")
        .arg(counted(static_cast<qint64>(markedAnimals().size()), "Tier", "Tieren"), tdat.text());
}

/// All or none, and the warnings of those within a waiting time. An animal that is gone by now is passed over.
void PB_Verkauf_Schweine::write(const Action& action) {
    const WaitCursor wait(koben);
    const Database& db = action.database();
    m_warnings.clear();
    QStringList fields;
    std::vector<Value> sold;
    for (const auto& [field, value] : values()) {
        fields.append(field + QStringLiteral(" = ?"));
        sold.push_back(value);
    }
    Statement animal = db.prepare(QStringLiteral("select Nummer from Sauen where ID = ?"));
    Statement sale = db.prepare(QStringLiteral("update Sauen set %1 where ID = ?").arg(fields.join(u',')));
    for (const qint64 id : markedAnimals()) {
        animal.bind({id});
        if (!animal.next()) continue;
        m_warnings.append(Wartezeit_pruefen(db, id, Hochkomma_ersetzen(animal.text(0)), tdat.text()));
        std::vector<Value> row = sold;
        row.emplace_back(id);
        sale.run(row);
    }
    m_warnings.removeAll(QString());
}

void PB_Verkauf_Schweine::refresh() {
    koben.Liste_neu_laden = 1;
    fillAnimals();
}

}  // namespace koben

#include "bookings/PB_Verkauf_Schweine.h"

#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "core/Wartezeit.h"
#include "forms/Eingabe.h"

namespace koben {

namespace {

enum Input { Gewicht, Preis };
enum List { Grund, Abnehmer };

constexpr int ArtWidth = 5, NummerWidth = 16, StallWidth = 11;
constexpr int IdAt = ArtWidth + NummerWidth + StallWidth;  // where the ID begins in a row of the list
constexpr int TextWidth = 20;

const char* const Keywords[] = {"Stammdaten_Abgangsgrund", "Stammdaten_Kunde"};  // of kom

}  // namespace

PB_Verkauf_Schweine::PB_Verkauf_Schweine(Koben& koben_)
    : Form(koben_, "PB_Verkauf_Schweine", "Verkauf Sauen/Eber/Masttiere") {
    li.setHint(Label1.text());
    connectInputs();
    neu.onClick = [this] { neu_Click(); };
    cmdschließen.onClick = [this] {
        m_db.close();
        close();
    };
    helpTopic = name();
    cancelButton = &cmdschließen;
}

void PB_Verkauf_Schweine::connectInputs() {
    tdat.onKeyPress = [this](int key) {
        calend.setVisible(false);
        return Nur_Zahlzeichen(key);
    };
    Datumsfeld_verbinden(koben, tdat, calender, calend);
    for (auto& field : tz) {
        TextBox* const box = field.get();
        box->setText(QStringLiteral("0,00"));
        box->onKeyPress = Nur_Zahlzeichen;
        box->onLostFocus = [box] { box->setText(Zahl_formatieren(QString(box->text()), 2)); };
    }
    for (auto& list : kom) {
        ComboBox* const box = list.get();
        box->onLostFocus = [box] { box->setText(box->text().left(TextWidth).trimmed()); };
    }
    Control* const inOrder[] = {&tdat, &tz[Gewicht], &tz[Preis], &kom[Grund], &kom[Abnehmer]};
    for (int i = 0; i < bez.count(); ++i) inOrder[i]->setHint(bez[i].text());
}

void PB_Verkauf_Schweine::Load() {
    m_db = koben.connect();
    for (int i = 0; i < kom.count(); ++i) {
        const Table values = m_db.table(QStringLiteral("select * from ") + QString::fromUtf8(Keywords[i]));
        QStringList items;
        for (int row = 0; row < values.rowCount(); ++row)
            items.append(Hochkomma_ersetzen(values.text(row, values.columnOf(u"Inhalt"))));
        kom[i].setItems(items);
    }
    calend.setDate(Datum_aus_Text(koben.Heute));
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

void PB_Verkauf_Schweine::neu_Click() {
    const std::vector<qint64> animals = markedAnimals();
    const bool dated = Ist_Datum(tdat.text());
    tdat.setWrong(!dated);
    li.setWrong(animals.empty());
    QStringList lines;
    if (!dated) lines.append(QStringLiteral("...das Abgangsdatum nicht korrekt ist."));
    if (animals.empty()) lines.append(QStringLiteral("...kein Tier zum Verkauf markiert wurde."));
    if (!lines.isEmpty()) {
        koben.message(QStringLiteral("Die Verkäufe können nicht gebucht werden, weil...") + Crlf + Crlf +
                      lines.join(Crlf));
        return dated ? li.setFocus() : tdat.setFocus();
    }
    if (!koben.yesNo(QStringLiteral("Sollen die %1 markierten Tiere wirklich als 'verkauft' gebucht werden?")
                         .arg(animals.size()),
                     true))
        return;
    koben.Liste_neu_laden = 1;
    const QStringList warnings = book(animals);
    fillAnimals();
    for (const QString& warning : warnings) koben.message(warning);
}

/// Books all or none; the warnings of those within a waiting time. An animal that is gone by now is passed over.
QStringList PB_Verkauf_Schweine::book(const std::vector<qint64>& animals) {
    const WaitCursor wait(koben);
    const QDate day = Datum_aus_Text(tdat.text());
    const float weight = Zahl_aus_Text(QString(tz[Gewicht].text()));
    const Money price = Betrag_aus_Text(QString(tz[Preis].text()));
    const QString reason = Hochkomma_ersetzen(kom[Grund].text().left(TextWidth));
    const QString buyer = Hochkomma_ersetzen(kom[Abnehmer].text().left(TextWidth));
    QStringList warnings;
    Transaction action(m_db);
    Statement animal = m_db.prepare(QStringLiteral("select Nummer from Sauen where ID = ?"));
    Statement sale =
        m_db.prepare(QStringLiteral("update Sauen set Abgangsdatum = ?, Abgangsgewicht_kg = ?, Verkaufspreis = ?, "
                                    "Abgangsgrund = ?, Abnehmer = ? where ID = ?"));
    for (const qint64 id : animals) {
        animal.bind({id});
        if (!animal.next()) continue;
        warnings.append(Wartezeit_pruefen(m_db, id, Hochkomma_ersetzen(animal.text(0)), tdat.text()));
        sale.run({day, weight, price, reason, buyer, id});
    }
    enterKeywords();
    action.commit();
    warnings.removeAll(QString());
    return warnings;
}

void PB_Verkauf_Schweine::enterKeywords() {
    for (int i = 0; i < kom.count(); ++i) {
        const QString entered = kom[i].text().left(TextWidth);
        if (Stichwort_eintragen(m_db, entered, QString::fromUtf8(Keywords[i]))) kom[i].addItem(entered);
    }
}

}  // namespace koben

#include "bookings/PE_Bewegungsdaten_Absetzung.h"

#include <algorithm>

#include "core/FreieNummer.h"
#include "core/NeuesTier.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Input { Anzahl, Gewicht, Verlust };
enum List { Kommentar, Bemerkung, Box, Grund, Gruppe };

}  // namespace

PE_Bewegungsdaten_Absetzung::PE_Bewegungsdaten_Absetzung(Koben& context)
    : Buchungseingabe(context, QStringLiteral("PE_Bewegungsdaten_Absetzung"), QStringLiteral("Absetzung eingeben"),
                      Buchungsart::Absetzung, QStringLiteral("Dateneingabe Absetzung")) {
    count("Anzahl Ferkel:", tz[Anzahl], "Anzahl_Ferkel", {}, UpDown, 0, MostByArrows);
    weight("Gewicht je Stück (kg):", tz[Gewicht], "Stück_Gewicht_kg");
    text("Kommentar:", kom[Kommentar], "Kommentar", 20, valuesOf("Kommentar"));
    text("Bemerkung:", kom[Bemerkung], "Bemerkung", 20, remarks());
    count("Als Verlust verbuchen:", tz[Verlust], {}, {}, UpDown2, 0, MostByArrows);
    text("Grund des Verlustes:", kom[Grund], {}, 20, lossReasons());
    text("Einbuchen in Box/Gruppe:", kom[Box], {}, 20,
         keywords("Stammdaten_Stallnummer", "select * from Stammdaten_Stallnummer order by Inhalt"));
    text("", kom[Gruppe], {}, 20, {.sql = QStringLiteral("select * from Stammdaten_Gruppe order by Inhalt")});
    kom[Gruppe].setHint(QStringLiteral("Gruppe"));
    line({}, kon);
    tz[Anzahl].onLostFocus = [this] { tz_LostFocus(Anzahl); };
    tz[Verlust].onLostFocus = [this] { tz_LostFocus(Verlust); };
    tz[Verlust].setText(QStringLiteral("0"));
}

void PE_Bewegungsdaten_Absetzung::Activate() {
    Buchungseingabe::Activate();
    takeCount(tz[Anzahl]);
    for (Control* control : std::initializer_list<Control*>{&tz[Verlust], &UpDown2, &kom[Grund], &kom[Box],
                                                            &kom[Gruppe], &kon, &Label2, &Label3})
        control->setVisible(adding());
}

void PE_Bewegungsdaten_Absetzung::preset() {
    Buchungseingabe::preset();
    Restferkel = std::max(rest(frame().currentAnimal(), {"Verluste", "Verschiebung"}), qint64(0));
    tz[Anzahl].setText(QString::number(Restferkel));
}

/// Fewer piglets than the sow should have: the difference is proposed as a loss.
void PE_Bewegungsdaten_Absetzung::tz_LostFocus(int index) {
    if (Wert(tz[index].text()) < 0) tz[index].setText(QStringLiteral("0"));
    if (index != Anzahl) return;
    const auto loss = Restferkel - static_cast<qint64>(Wert(tz[Anzahl].text()));
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
    left += static_cast<qint64>(storedNumber(QStringLiteral("Anzahl_Ferkel")));
    left -= static_cast<qint64>(Wert(tz[Anzahl].text()));
    return left >= 0 ||
           koben.yesNo(QStringLiteral("Lt. den aktuellen Dateneingaben ist die Summe der Ferkel seit der letzten "
                                      "Ferkelung (Lebendzugang - Verluste - Verschiebung - Absetzung) bei der Sau ") +
                       kom[Bemerkung].text() + QStringLiteral(" auf ") + QString::number(left) +
                       QStringLiteral(" (also unter 0).") + Crlf + Crlf +
                       QStringLiteral("Soll die Buchung trotzdem gespeichert werden?"));
}

std::optional<std::vector<int>> PE_Bewegungsdaten_Absetzung::animals() {
    if (frame().schweinli.markedCount() == 1 && !balanceAccepted()) return std::nullopt;
    return Buchungseingabe::animals();
}

QString PE_Bewegungsdaten_Absetzung::hintOnSeveral() const {
    return Crlf + Crlf +
           QStringLiteral("Bei mehreren Schweinen findet keine Prüfung bezüglich der vorhandenen Ferkel statt.");
}

QString PE_Bewegungsdaten_Absetzung::box() const { return Hochkomma_ersetzen(kom[Box].text()); }

void PE_Bewegungsdaten_Absetzung::prepare(const std::vector<int>& rows) {
    m_plan.clear();
    if (!adding()) return;
    for (int row : rows) {
        Vorhaben& plan = m_plan[row];
        plan.verlust = Wert(tz[Verlust].text()) > 0 &&
                       koben.yesNo(QStringLiteral("Es ist ein Verlust von ") + tz[Verlust].text() +
                                   QStringLiteral(" Ferkel als Verlust eingetragen. Soll dieser Verlust jetzt gebucht "
                                                  "werden?"));
        if (box().isEmpty()) continue;
        plan.geburt = letzterWurf(animalOf(row)).tag;
        if (!plan.geburt.isValid())
            koben.message(QStringLiteral("Von der Sau ") + frame().schweinli.cell(row, u"Nummer") +
                          QStringLiteral(" können die Ferkel nicht in den Bestand übernommen werden, weil keine "
                                         "Ferkelung gefunden wurde."));
    }
}

void PE_Bewegungsdaten_Absetzung::finish(const Action& action) {
    if (!adding()) return;
    Verluste_buchen(action);
    Ferkel_einbuchen(action);
}

void PE_Bewegungsdaten_Absetzung::Verluste_buchen(const Action& action) {
    std::optional<Buchungen> losses;
    for (int row : rows()) {
        if (!m_plan[row].verlust) continue;
        if (!losses)
            losses.emplace(Absetzverluste(action, Datum_aus_Text(tdat.text()), Wert(tz[Verlust].text()),
                                          Hochkomma_ersetzen(kom[Grund].text())));
        losses->book(animalOf(row), {numberOf(row)});
    }
}

void PE_Bewegungsdaten_Absetzung::Ferkel_einbuchen(const Action& action) {
    if (std::none_of(m_plan.begin(), m_plan.end(), [](const auto& plan) { return plan.second.geburt.isValid(); }))
        return;
    koben.Liste_neu_laden = 1;
    FreieNummern numbers(action.database(), box());
    const QDate today = Datum_aus_Text(tdat.text());
    NeueTiere piglets(action, {"Nummer", "Tätowierung", "Geburtsdatum"},
                      {{"Art", kon.checked() ? QStringLiteral("Mast") : QStringLiteral("Ferkel")},
                       {"Gruppe", Hochkomma_ersetzen(kom[Gruppe].text())},
                       {"Stallnr", box()},
                       {"Boxdatum", today},
                       {"Zugangsdatum", today},
                       {"Zugangsgewicht_kg", Zahl_aus_Text(QString(tz[Gewicht].text()))},
                       {"Zugangsgrund", QStringLiteral("Eigene Zucht")}});
    const auto count = static_cast<qint64>(Wert(tz[Anzahl].text()));
    for (int row : rows())
        for (qint64 i = 1; m_plan[row].geburt.isValid() && i <= count; ++i)
            piglets.add({numbers.naechste(), numberOf(row) + u'-' + QString::number(i), m_plan[row].geburt});
}

}  // namespace koben

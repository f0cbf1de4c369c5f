#include "bookings/PE_Bewegungsdaten_Ferkelung.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Count { Gesamt, Lebend, Tot };

QString number(double value) { return QString::number(static_cast<qint64>(value)); }

}  // namespace

PE_Bewegungsdaten_Ferkelung::PE_Bewegungsdaten_Ferkelung(Koben& context)
    : Buchungseingabe(context, QStringLiteral("PE_Bewegungsdaten_Ferkelung"), QStringLiteral("Ferkelung eingeben"),
                      Buchungsart::Ferkelung, QStringLiteral("Dateneingabe Ferkelung")) {
    count("Anzahl Ferkel (Gesamt):", tz[Gesamt], "Ferkel_Gesamt", QStringLiteral("1"), UpDown[0], 1, MostByArrows);
    count("Davon Lebend geboren:", tz[Lebend], "Ferkel_Lebendig", QStringLiteral("1"), UpDown[1], 1, MostByArrows);
    count("Davon Tot geboren:", tz[Tot], "Ferkel_Tot", QStringLiteral("0"), UpDown[2], 0, MostByArrows);
    for (int i = Gesamt; i <= Tot; ++i) tz[i].onLostFocus = [this, i] { tz_LostFocus(i); };
    weight("Gewicht je Stück (kg):", tz[3], "Stück_Gewicht_kg");
    amount("Kosten:", tz[4], "Kosten");
    text("Kommentar:", kom[0], "Kommentar", 20, valuesOf("Kommentar"));
    text("Bemerkung:", kom[1], "Bemerkung", 20, remarks());
    ok_Verschiebung.setEnabled(koben.catalogue.has(QStringLiteral("PE_Bewegungsdaten_Verschiebung")));
    roCommand1.setEnabled(koben.catalogue.has(QStringLiteral("PE_Bewegungsdaten_Absetzung")));
    ok_Verschiebung.onClick = [this] { weiter("PE_Bewegungsdaten_Verschiebung"); };
    roCommand1.onClick = [this] { weiter("PE_Bewegungsdaten_Absetzung"); };
}

/// Coming back from a screen that was handed the live count, what was typed here stays.
void PE_Bewegungsdaten_Ferkelung::Activate() {
    if (koben.Uebergabe_Marke != u"x") Buchungseingabe::Activate();
    koben.Uebergabe_Marke.clear();
}

/// The total is the anchor: only a change of the live count moves it.
void PE_Bewegungsdaten_Ferkelung::tz_LostFocus(int index) {
    const auto count = [this](int i) { return Wert(tz[i].text()); };
    if (index == Lebend) {
        tz[Gesamt].setText(number(count(Lebend) + count(Tot)));
        return;
    }
    if (index == Gesamt && count(Gesamt) < 1) tz[Gesamt].setText(QStringLiteral("1"));
    tz[Lebend].setText(number(std::max(count(Gesamt) - count(Tot), 0.0)));
}

void PE_Bewegungsdaten_Ferkelung::check(Findings& found) {
    if (!dateEntered()) found.add(tdat, QStringLiteral("...das Datum muß eingegeben werden!"));
    if (Wert(tz[Lebend].text()) + Wert(tz[Tot].text()) != Wert(tz[Gesamt].text()))
        found.add(tz[Gesamt],
                  QStringLiteral("...die Summe der lebendig und toten Ferkel gleich sein muß wie die Gesamtzahl."));
}

QString PE_Bewegungsdaten_Ferkelung::heading() const {
    return QStringLiteral("Die Eingabe kann nicht übernommen werden, weil...");
}

void PE_Bewegungsdaten_Ferkelung::weiter(const char* screen) {
    koben.Uebergabe_Marke = QStringLiteral("x");
    koben.Uebergabe_Anzahl = tz[Lebend].text();
    koben.open(QString::fromUtf8(screen));
}

}  // namespace koben

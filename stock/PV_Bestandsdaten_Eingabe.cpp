#include "stock/PV_Bestandsdaten_Eingabe.h"

#include <array>

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Input { AlterVon, AlterBis, Geldwert, Ferkelungen };
enum List { Zeit, Geschlecht, Belegt, Tierart };

constexpr int Most = 99;  // by the arrows
constexpr std::array Numbers{AlterVon, AlterBis, Ferkelungen};
constexpr std::array NumberFields{u"Alter_von", u"Alter_bis", u"Mindestferkelung"};
constexpr std::array ListFields{u"Zeit", u"Geschlecht", u"Belegt", u"Tierart"};

/// Sex and service are stored by their first letter.
bool byLetter(int list) { return list == Geschlecht || list == Belegt; }

}  // namespace

PV_Bestandsdaten_Eingabe::PV_Bestandsdaten_Eingabe(Koben& koben_)
    : Stammdateneingabe(koben_, "PV_Bestandsdaten_Eingabe", "Bestandsdaten eingeben/ändern", "Tiergruppe:") {
    for (size_t i = 0; i < Numbers.size(); ++i) {
        TextBox& field = tz[Numbers[i]];
        SpinButton& arrows = UpDown[static_cast<int>(i)];
        field.maxLength = 4;
        field.onKeyPress = Nur_Ziffern;
        arrows.onUp = [&field] { stepField(field, 1, 0, Most); };
        arrows.onDown = [&field] { stepField(field, -1, 0, Most); };
    }
    tz[AlterBis].onLostFocus = [this] {
        if (Wert(tz[AlterBis].text()) < 1) tz[AlterBis].setText(QStringLiteral("1"));
    };
    tz[Geldwert].onKeyPress = Nur_Zahlzeichen;
    tz[Geldwert].onLostFocus = [this] {
        tz[Geldwert].setText(Betrag_als_Punkttext(Betrag_aus_Text(QString(tz[Geldwert].text()))));
    };
    for (auto& box : kom) box->fixed = true;
    Control* const inOrder[] = {&tz[AlterVon], &tz[AlterBis],    &kom[Zeit],   &kom[Geschlecht],
                                &tz[Geldwert], &tz[Ferkelungen], &kom[Belegt], &kom[Tierart]};
    for (int i = 0; i < bez.count(); ++i) inOrder[i]->setHint(bez[i].text());
}

void PV_Bestandsdaten_Eingabe::prepare() {
    kom[Zeit].setItems({"Tage", "Wochen", "Monate", "Jahre"});
    kom[Geschlecht].setItems({"Weiblich", "Männlich", "Egal"});
    kom[Belegt].setItems({"Nein", "Ja"});
    kom[Tierart].setItems({"Alle", "Sau", "Eber", "Mast", "Ferkel"});
}

void PV_Bestandsdaten_Eingabe::showDefaults() {
    t.setText(QString());
    tz[AlterVon].setText(QStringLiteral("0"));
    tz[AlterBis].setText(QStringLiteral("1"));
    tz[Geldwert].setText(QStringLiteral("0,00"));
    tz[Ferkelungen].setText(QStringLiteral("0"));
    for (auto& box : kom) box->setCurrent(0);
}

void PV_Bestandsdaten_Eingabe::showRow() {
    t.setText(rowText(u"Tiergruppe"));
    for (size_t i = 0; i < Numbers.size(); ++i) tz[Numbers[i]].setText(rowText(NumberFields[i]));
    tz[Geldwert].setText(Zahl_formatieren(rowText(u"Wert"), 2));
    for (int i = 0; i < kom.count(); ++i) {
        const QString kept = rowText(ListFields[static_cast<size_t>(i)]);
        const QStringList& items = kom[i].items();
        qsizetype hit = items.indexOf(kept);
        for (qsizetype k = 0; byLetter(i) && !kept.isEmpty() && k < items.size(); ++k)
            if (items[k].front() == kept.front()) hit = k;
        kom[i].setCurrent(static_cast<int>(hit));
    }
}

void PV_Bestandsdaten_Eingabe::check(Findings& findings) {
    const QString group = Hochkomma_ersetzen(t.text());
    if (group.isEmpty()) findings.add(t, "...die Tiergruppe eingegeben werden muß.");
    if (exists(QStringLiteral("select Tiergruppe from Bestandsoptionen where Tiergruppe = '%1'").arg(group) +
               exceptThisRow()))
        findings.add(t, "...die Tiergruppe bereits existiert.");
    if (Wert(tz[AlterVon].text()) > Wert(tz[AlterBis].text()))
        findings.add(tz[AlterVon], "...das 'Alter von' nicht höher sein darf als das 'Alter bis'.");
    if (kom[Zeit].text().isEmpty()) findings.add(kom[Zeit], "...die Zeiteinheit fehlt.");
    if (kom[Geschlecht].text().isEmpty()) findings.add(kom[Geschlecht], "...das Geschlecht fehlt.");
    if (kom[Tierart].text().isEmpty()) findings.add(kom[Tierart], "...die Tierart fehlt.");
}

void PV_Bestandsdaten_Eingabe::write(Recordset& row) {
    row.set(u"Tiergruppe", Hochkomma_ersetzen(t.text()));
    for (size_t i = 0; i < Numbers.size(); ++i) row.set(NumberFields[i], static_cast<int>(Wert(tz[Numbers[i]].text())));
    row.set(u"Wert", Betrag_aus_Text(QString(tz[Geldwert].text())));
    for (int i = 0; i < kom.count(); ++i) {
        const QString entry = kom[i].text();
        row.set(ListFields[static_cast<size_t>(i)], byLetter(i) ? entry.left(1) : entry);
    }
}

}  // namespace koben

#include "bookings/PV_Medizin_Eingabe.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Input { Menge, Tage, Kosten };
enum List { Einheit, Behandlungsart, Verabreichungsart };

constexpr int MostDays = 999;  // by the arrows
constexpr int TextWidth = 20;
constexpr List FreeTexts[] = {Behandlungsart, Verabreichungsart};
constexpr QStringView Fields[] = {u"Einheit", u"Behandlungsart", u"Verabreichungsart"};  // of kom

}  // namespace

PV_Medizin_Eingabe::PV_Medizin_Eingabe(Koben& koben_)
    : Stammdateneingabe(koben_, "PV_Medizin_Eingabe", "Medikamente eingeben/ändern", "Medikament:") {
    for (Input input : {Menge, Kosten}) {
        TextBox& field = tz[input];
        field.onKeyPress = Nur_Zahlzeichen;
        field.onLostFocus = [&field] { field.setText(Zahl_formatieren(QString(field.text()), 2)); };
    }
    tz[Tage].onKeyPress = Nur_Ziffern;
    UpDown.onUp = [this] { stepField(tz[Tage], 1, 1, MostDays); };
    UpDown.onDown = [this] { stepField(tz[Tage], -1, 1, MostDays); };
    kom[Einheit].fixed = true;
    kom[Einheit].setItems({"", "kg", "g", "mg", "l", "dl", "ml", "St"});
    for (List list : FreeTexts) {
        ComboBox& box = kom[list];
        box.maxLength = TextWidth;
        box.onLostFocus = [&box] { box.setText(box.text().left(TextWidth).trimmed()); };
    }
    Control* const inOrder[] = {&tz[Menge], &kom[Einheit], &tz[Tage], &tz[Kosten], &kom[1], &kom[2]};
    for (int i = 0; i < bez.count(); ++i) inOrder[i]->setHint(bez[i].text());
}

void PV_Medizin_Eingabe::prepare() {
    for (List list : FreeTexts) {
        const Table values =
            database().table(QStringLiteral("select DISTINCT %1 from Medikamente").arg(Fields[list].toString()));
        QStringList items;
        for (int row = 0; row < values.rowCount(); ++row) items.append(Hochkomma_ersetzen(values.text(row, 0)));
        items.removeAll(QString());
        kom[list].setItems(items);
    }
}

void PV_Medizin_Eingabe::showDefaults() {
    ok[2].setVisible(true);  // stores and stays for the next one
    t.setText(QString());
    tz[Menge].setText(QStringLiteral("0,00"));
    tz[Tage].setText(QStringLiteral("0"));
    tz[Kosten].setText(QStringLiteral("0,00"));
    kom[Einheit].setCurrent(0);
    for (List list : FreeTexts) kom[list].setText(QString());
}

void PV_Medizin_Eingabe::showRow() {
    t.setText(rowText(u"Medikament"));
    tz[Menge].setText(Zahl_formatieren(rowText(u"Menge"), 2));
    tz[Tage].setText(rowText(u"Wartezeit_Tage"));
    tz[Kosten].setText(Zahl_formatieren(rowText(u"Kosten_je_Gabe"), 2));
    kom[Einheit].setCurrent(static_cast<int>(kom[Einheit].items().indexOf(rowText(u"Einheit"))));
    for (List list : FreeTexts) kom[list].setText(rowText(Fields[list]));
}

void PV_Medizin_Eingabe::check(Findings& findings) {
    const QString medicine = Hochkomma_ersetzen(t.text());
    if (medicine.isEmpty())
        findings.add(t, "...das Medikament eingegeben werden muß.");
    else if (exists(QStringLiteral("select Medikament from Medikamente where Medikament = '%1'").arg(medicine) +
                    exceptThisRow()))
        findings.add(t, "...das Medikament bereits existiert.");
    if (Zahl_aus_Text(QString(tz[Menge].text())) == 0)
        findings.add(tz[Menge], "...die Menge je Verabreichung eingegen werden muß.");
}

void PV_Medizin_Eingabe::write(Recordset& row) {
    row.set(u"Medikament", Hochkomma_ersetzen(t.text()));
    row.set(u"Menge", Zahl_aus_Text(QString(tz[Menge].text())));
    row.set(u"Einheit", kom[Einheit].text());
    row.set(u"Wartezeit_Tage", Wert(tz[Tage].text()));
    row.set(u"Kosten_je_Gabe", Betrag_aus_Text(QString(tz[Kosten].text())));
    for (List list : FreeTexts) row.set(Fields[list], Hochkomma_ersetzen(kom[list].text().left(TextWidth)));
}

void PV_Medizin_Eingabe::stored() {
    for (List list : FreeTexts) {
        const QString entered = kom[list].text();
        if (!entered.isEmpty() && !kom[list].items().contains(entered)) kom[list].addItem(entered);
    }
}

}  // namespace koben

// The entry screen behind the lists of losses and trade.
#include "bookings/Ferkelliste.h"
#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "forms/Eingabe.h"

namespace koben {

namespace {

constexpr int Most = 999;  // of a count by its arrows

void show(TextBox& control, const QString& text) {
    if (auto* list = dynamic_cast<ComboBox*>(&control))
        list->setText(text);  // keeps its list in step
    else
        control.setText(text);
}

void step(TextBox& field, int by) {
    field.edited(QString::number(static_cast<int>(std::clamp(Wert(field.text()) + by, 0.0, double(Most)))));
    if (field.onLostFocus) field.onLostFocus();
}

}  // namespace

Ferkeleingabe::Ferkeleingabe(Koben& context, const QString& name, const QString& caption)
    : Form(context, name, caption) {
    tdat.setHint(QStringLiteral("Datum"));
    tdat.onKeyPress = [this](int key) {
        calend.setVisible(false);
        return Nur_Zahlzeichen(key);
    };
    Datumsfeld_verbinden(koben, tdat, calender, calend);
    for (int i = 0; i < ok.count(); ++i) ok[i].onClick = [this, i] { ok_Click(i); };
    abbrechen.onClick = [this] { abbrechen_Click(); };
    acceptButton = &ok[0];
    cancelButton = &abbrechen;
    m_zeilen.push_back({QStringLiteral("Datum:"), &tdat});
}

void Ferkeleingabe::add(Art art, const char* label, TextBox& control, const char* field, SpinButton* spin) {
    m_felder.push_back({art, &control, QString::fromUtf8(field)});
    m_zeilen.push_back({QString::fromUtf8(label), &control, spin});
}

void Ferkeleingabe::anzahl(const char* label, TextBox& control, const char* field, SpinButton& spin) {
    control.onKeyPress = Nur_Ziffern;
    spin.onUp = [&control] { step(control, 1); };
    spin.onDown = [&control] { step(control, -1); };
    add(Art::Anzahl, label, control, field, &spin);
}

void Ferkeleingabe::betrag(const char* label, TextBox& control, const char* field) {
    control.onKeyPress = Nur_Zahlzeichen;
    control.onLostFocus = [&control] { control.setText(Zahl_formatieren(QString(control.text()), 2)); };
    add(Art::Betrag, label, control, field);
}

void Ferkeleingabe::gewicht(const char* label, TextBox& control, const char* field) {
    betrag(label, control, field);
    m_felder.back().art = Art::Gewicht;
}

void Ferkeleingabe::text(const char* label, ComboBox& control, const char* field, int width, const char* list,
                         const char* keywords) {
    control.onLostFocus = [&control, width] { control.setText(control.text().left(width).trimmed()); };
    add(Art::Text, label, control, field);
    m_auswahlen.push_back({&control, QString::fromUtf8(list), QString::fromUtf8(keywords)});
}

void Ferkeleingabe::Maengel::add(Control& field, const QString& line) {
    lines.append(line);
    field.setWrong(true);
    if (!first) first = &field;
}

double Ferkeleingabe::bisher(QStringView field) const {
    return adding() ? 0 : m_liste->li.value(m_liste->li.row(), field).toDouble();
}

void Ferkeleingabe::Load() {
    const auto& open = koben.stack();
    if (open.size() > 1) m_liste = dynamic_cast<Ferkelliste*>(open[open.size() - 2]);
    if (!m_liste) return close();
    m_db = koben.connect();
    for (const Auswahl& choice : m_auswahlen) {
        const Table values = m_db.table(choice.list);
        QStringList items;
        for (int row = 0; row < values.rowCount(); ++row) items.append(Hochkomma_ersetzen(values.text(row, 0)));
        items.removeAll(QString());
        choice.control->setItems(items);
    }
    calend.setDate(Datum_aus_Text(koben.Heute));
}

void Ferkeleingabe::Activate() {
    ok[1].setVisible(!adding());
    if (adding()) {
        if (tdat.text().isEmpty()) tdat.setText(koben.Heute);
        vorgeben();
    } else {
        fuellen();
        for (auto& button : ok) button->setEnabled(m_liste->li.row() > 0);
    }
    tdat.setFocus();
}

void Ferkeleingabe::vorgeben() {
    for (const Feld& field : m_felder) {
        if (field.field.isEmpty()) continue;
        show(*field.control, field.art == Art::Text     ? QString()
                             : field.art == Art::Anzahl ? QStringLiteral("0")
                                                        : QStringLiteral("0,00"));
    }
}

void Ferkeleingabe::fuellen() {
    const Grid& li = m_liste->li;
    tdat.setText(Datum_ergaenzen(li.cell(li.row(), u"Datum"), koben.Heute));
    for (const Feld& field : m_felder) {
        if (field.field.isEmpty()) continue;
        QString stored = li.cell(li.row(), field.field);
        if (field.art == Art::Betrag || field.art == Art::Gewicht) stored = Zahl_formatieren(stored, 2);
        show(*field.control, stored);
    }
}

void Ferkeleingabe::ok_Click(int index) {
    for (Control* control : controls()) control->setWrong(false);
    Maengel found;
    pruefen(found);
    if (found.first) {
        koben.message(QStringLiteral("Die Eingabe kann nicht übernommen werden, weil...") + Crlf + Crlf +
                      found.lines.join(Crlf));
        return found.first->setFocus();
    }
    const auto sow = einverstanden();
    if (!sow || !speichern(*sow)) return;
    if (!adding()) m_liste->blaettern(index);
    if (index == 0)
        abbrechen_Click();
    else
        Activate();
    koben.Quittungston();
}

/// Writes the row and all that goes with it, whole or not at all. False where a value does not fit its field.
bool Ferkeleingabe::speichern(qint64 sow) {
    const bool saved = Speichern_oder_melden(koben, QStringLiteral("Die Eingabe kann nicht übernommen werden"), [&] {
        Transaction action(m_db);
        schreiben(sow);
        gespeichert();
        for (const Auswahl& choice : m_auswahlen)
            if (!choice.keywords.isEmpty()) Stichwort_eintragen(m_db, choice.control->text(), choice.keywords);
        action.commit();
    });
    if (!saved) return false;
    for (const Auswahl& choice : m_auswahlen) {
        const QString entered = choice.control->text();
        // a keyword counts as known whatever its case
        const auto heedCase = choice.keywords.isEmpty() ? Qt::CaseSensitive : Qt::CaseInsensitive;
        if (!entered.isEmpty() && !choice.control->items().contains(entered, heedCase))
            choice.control->addItem(entered);
    }
    if (!adding()) m_liste->Zeile_auffrischen();
    return true;
}

void Ferkeleingabe::schreiben(qint64 sow) {
    Recordset rows = m_db.open(
        QStringLiteral("select * from %1 where ID = %2").arg(m_liste->table).arg(adding() ? 0 : m_liste->currentRow()));
    if (adding())
        rows.addNew();
    else if (rows.recordCount() == 0)
        throw DatabaseError(DatabaseError::Kind::State,
                            QStringLiteral("Die Buchung, die geändert werden soll, gibt es nicht mehr. Bitte "
                                           "schließen Sie das Eingabefenster und öffnen Sie es neu."));
    else
        rows.edit();
    rows.set(u"Datum", Datum_aus_Text(tdat.text()));
    for (const Feld& field : m_felder) {
        if (field.field.isEmpty()) continue;
        const QString entered = field.control->text();
        rows.set(field.field, field.art == Art::Text      ? Value(Hochkomma_ersetzen(entered))
                              : field.art == Art::Anzahl  ? Value(Wert(entered))
                              : field.art == Art::Gewicht ? Value(Zahl_aus_Text(QString(entered)))
                                                          : Value(Betrag_aus_Text(QString(entered))));
    }
    rows.set(u"Kennung", sow);
    rows.update();
}

void Ferkeleingabe::abbrechen_Click() {
    m_db.close();
    close();
}

}  // namespace koben

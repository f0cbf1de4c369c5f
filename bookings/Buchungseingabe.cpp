#include "bookings/Buchungseingabe.h"

#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "forms/Eingabe.h"

namespace koben {

namespace {

/// Facts of the animal, in the order of bezschwein.
const char* const Fakten[] = {"Art",
                              "Nummer",
                              "Gruppe",
                              "Stallnr",
                              "Anz_Belegungen",
                              "Anz_Ferkelungen",
                              "Anz_Ferkel_Gesamt",
                              "Anz_Ferkel_Lebend",
                              "L_Belegung",
                              "L_Ferkelung",
                              "N_Belegung",
                              "N_Ferkelung"};

/// The latest dates that the check of cycle dates takes, in its order; the index is the kind of booking.
const char* const Zyklusdaten[] = {"L_Belegung", "L_Trächtigkeit", "L_Ferkelung", "L_Absetzung"};
constexpr int Zyklusarten = 4;

}  // namespace

Buchungseingabe::Buchungseingabe(Koben& context, const QString& name, const QString& caption, int art,
                                 const QString& inputs)
    : Form(context, name, caption), kind(art), m_rahmen(inputs) {
    connectDate(tdat, calender);
    tdat.setHint(QStringLiteral("Datum"));
    calend.onPick = [this](QDate date) {
        m_calendarFor->setText(Datum_als_Anzeige(date));
        calend.setVisible(false);
        m_calendarFor->onLostFocus();  // what hangs on the date follows it
    };
    for (int i = 0; i < ok.count(); ++i) ok[i].onClick = [this, i] { ok_Click(i); };
    for (int i = 0; i < nextschwein.count(); ++i) nextschwein[i].onClick = [this, i] { nextschwein_Click(i); };
    abbrechen.onClick = [this] { abbrechen_Click(); };
    acceptButton = &ok[0];
    cancelButton = &abbrechen;
    m_zeilen.push_back({QStringLiteral("Datum:"), &tdat, nullptr, &calender});
}

Buchungseingabe::~Buchungseingabe() = default;

/// Short input, and a button that opens and shuts the calendar for this field.
void Buchungseingabe::connectDate(TextBox& field, Button& button) {
    field.onKeyPress = [this](int key) {
        calend.setVisible(false);
        return Nur_Zahlzeichen(key);
    };
    field.onLostFocus = [this, &field] { field.setText(Datum_ergaenzen(field.text().trimmed(), koben.Heute)); };
    button.icon = QStringLiteral("kalender");
    button.onClick = [this, &field] {
        const bool open = !calend.visible() || m_calendarFor != &field;
        m_calendarFor = &field;
        calend.setVisible(open);
    };
}

Buchungseingabe::Quelle Buchungseingabe::Werte(const char* field) const {
    return {.sql = QStringLiteral("select DISTINCT %1 from %2")
                       .arg(QString::fromUtf8(field), QString::fromUtf8(Buchungsarten[kind].table)),
            .grows = true};
}

Buchungseingabe::Quelle Buchungseingabe::Stichworte(const char* table, const char* sql) {
    return {.sql = QString::fromUtf8(sql), .keywords = QString::fromUtf8(table)};
}

Buchungseingabe::Quelle Buchungseingabe::Bemerkungen() {
    return Stichworte("Stammdaten_Bemerkung", "select Inhalt from Stammdaten_Bemerkung");
}

Buchungseingabe::Quelle Buchungseingabe::Verlustgruende() {
    return {.sql = QStringLiteral("select DISTINCT Grund from Verluste where Grund <> 'Verhungert' and Grund <> "
                                  "'Totgelegen' and Grund <> 'Sonstiges' and Grund <> 'Grätscher' order by Grund"),
            .before = {QStringLiteral("Verhungert"), QStringLiteral("Totgelegen"), QStringLiteral("Grätscher"),
                       QStringLiteral("Sonstiges")}};
}

void Buchungseingabe::zeile(const char* label, Control& control, SpinButton* spin) {
    m_zeilen.push_back({QString::fromUtf8(label), &control, spin});
}

void Buchungseingabe::bind(Art art, TextBox& control, const char* field, const QString& preset) {
    if (field) m_felder.push_back({art, &control, QString::fromUtf8(field), preset});
}

void Buchungseingabe::text(const char* label, ComboBox& control, const char* field, int width, const Quelle& source) {
    control.onLostFocus = [&control, width] { control.setText(control.text().left(width).trimmed()); };
    bind(Art::Text, control, field, {});
    m_listen.push_back({&control, source});
    zeile(label, control);
}

void Buchungseingabe::auswahl(const char* label, ComboBox& control, const char* field, const QStringList& items) {
    control.fixed = true;
    control.setItems(items);
    bind(Art::Text, control, field, items.first());
    zeile(label, control);
}

void Buchungseingabe::freitext(const char* label, TextBox& control, const char* field, int width) {
    control.maxLength = width;
    bind(Art::Text, control, field, {});
    zeile(label, control);
}

void Buchungseingabe::datum(const char* label, TextBox& control, Button& button, const char* field) {
    connectDate(control, button);
    bind(Art::Datum, control, field, {});
    m_zeilen.push_back({QString::fromUtf8(label), &control, nullptr, &button});
}

void Buchungseingabe::anzahl(const char* label, TextBox& control, const char* field, const QString& preset,
                             SpinButton& spin, int least, int most) {
    control.onKeyPress = Nur_Ziffern;
    spin.onUp = [&control, least, most] { step(control, 1, least, most); };
    spin.onDown = [&control, least, most] { step(control, -1, least, most); };
    bind(Art::Anzahl, control, field, preset);
    zeile(label, control, &spin);
}

void Buchungseingabe::betrag(const char* label, TextBox& control, const char* field) {
    control.onKeyPress = Nur_Zahlzeichen;
    control.onLostFocus = [&control] { control.setText(Zahl_formatieren(QString(control.text()), 2)); };
    bind(Art::Betrag, control, field, QStringLiteral("0,00"));
    zeile(label, control);
}

void Buchungseingabe::gewicht(const char* label, TextBox& control, const char* field) {
    betrag(label, control, field);
    m_felder.back().art = Art::Gewicht;
}

void Buchungseingabe::step(TextBox& field, int by, int least, int most) {
    const int value = static_cast<int>(std::clamp(koben::Wert(field.text()) + by, double(least), double(most)));
    field.setText(QString::number(value));
    if (field.onLostFocus) field.onLostFocus();
}

bool Buchungseingabe::adding() const { return koben.Buchungsmodus == u"Neu"; }

bool Buchungseingabe::dateEntered() const { return Ist_Datum(tdat.text()); }

void Buchungseingabe::Load() {
    m_db = koben.connect();
    for (const Liste& list : m_listen) {
        const Table values = m_db.table(list.source.sql);
        QStringList items = list.source.before;
        for (int row = 0; row < values.rowCount(); ++row) items.append(Hochkomma_ersetzen(values.text(row, 0)));
        items.removeAll(QString());
        list.control->setItems(items);
    }
    calend.setDate(Datum_aus_Text(koben.Heute));
}

void Buchungseingabe::Activate() {
    const Grid& animals = frame().schweinli;
    for (int i = 0; i < bezschwein.count(); ++i)
        bezschwein[i].setText(animals.cell(animals.row(), QString::fromUtf8(Fakten[i])));
    ok[1].setVisible(!adding());
    if (adding()) {
        if (tdat.text().isEmpty()) tdat.setText(koben.Heute);
        vorgeben();
    } else {
        fuellen();
        for (auto& button : ok) button->setEnabled(frame().li.row() > 0);
    }
    tdat.setFocus();
}

namespace {

/// A combo box keeps its list in step with its text.
void show(TextBox& control, const QString& text) {
    if (auto* list = dynamic_cast<ComboBox*>(&control))
        list->setText(text);
    else
        control.setText(text);
}

}  // namespace

void Buchungseingabe::vorgeben() {
    for (const Feld& field : m_felder) show(*field.control, field.preset);
}

void Buchungseingabe::fuellen() {
    const Grid& li = frame().li;
    tdat.setText(Datum_ergaenzen(li.cell(li.row(), u"Datum"), koben.Heute));
    for (const Feld& field : m_felder) {
        QString stored = li.cell(li.row(), field.field);
        if (field.art == Art::Betrag || field.art == Art::Gewicht) stored = Zahl_formatieren(stored, 2);
        if (field.art == Art::Datum) stored = Datum_ergaenzen(stored, koben.Heute);
        show(*field.control, stored);
    }
}

void Buchungseingabe::Anzahl_uebernehmen(TextBox& count) const {
    if (!koben.Uebergabe_Anzahl.isEmpty()) count.setText(koben.Uebergabe_Anzahl);
}

QStringList Buchungseingabe::pruefen() const {
    return dateEntered() ? QStringList() : QStringList{QStringLiteral("Das Datum muß eingegeben werden!")};
}

QString Buchungseingabe::kopf() const { return {}; }

QString Buchungseingabe::Sammelhinweis() const { return {}; }

void Buchungseingabe::vorbereiten(const std::vector<int>&) {}

void Buchungseingabe::ergaenzen(Recordset&, int) const {}

void Buchungseingabe::gespeichert(Recordset&, int) {}

void Buchungseingabe::abschließen() {}

bool Buchungseingabe::askWhetherAll() const {
    return koben.yesNo(QStringLiteral("Es sind mehere Schweine ausgewählt. Soll die Buchung bei allen %1 Schweinen "
                                      "vorgenommen werden?")
                           .arg(frame().schweinli.markedCount()) +
                       Sammelhinweis());
}

/// All marked animals or the current one; the current one counts only if it is marked too.
std::optional<std::vector<int>> Buchungseingabe::tiere() {
    const Grid& animals = frame().schweinli;
    if (animals.markedCount() > 1 && askWhetherAll()) return animals.markedRows();
    if (animals.marked(animals.row())) return std::vector<int>{animals.row()};
    return std::vector<int>();
}

void Buchungseingabe::ok_Click(int index) {
    tdat.setWrong(!dateEntered());
    if (const QStringList lines = pruefen(); !lines.isEmpty()) {
        const QString heading = kopf().isEmpty() ? QString() : kopf() + Crlf + Crlf;
        return koben.message(heading + lines.join(Crlf));
    }
    if (!adding() && koben.Buchungsart_Nr != kind)  // opened from the entry screen of another kind
        return koben.message(QStringLiteral("Die Buchung kann nicht vorgenommen werden, weil...") + Crlf + Crlf +
                             QStringLiteral("...in der Liste der Bewegungsdaten keine Buchung dieser Art steht, die "
                                            "geändert werden kann."));
    const auto rows = tiere();
    if (!rows) return;
    vorbereiten(*rows);
    if (!speichern(*rows)) return;
    if (!adding()) blaettern(index);
    if (index == 0)
        abbrechen_Click();
    else
        Activate();
    koben.Quittungston();
}

/// Writes the booking for these animals, whole or not at all. False where a value does not fit its field.
bool Buchungseingabe::speichern(const std::vector<int>& rows) {
    const bool saved = Speichern_oder_melden(koben, QStringLiteral("Die Buchung kann nicht vorgenommen werden"), [&] {
        Transaction transaction(m_db);
        Recordset bookings = m_db.open(QStringLiteral("select * from %1 where Kennung = %2")
                                           .arg(QString::fromUtf8(Buchungsarten[kind].table))
                                           .arg(frame().currentAnimal()));
        for (int row : rows) {
            schreiben(bookings, row);
            gespeichert(bookings, row);
        }
        Stichworte_eintragen();
        abschließen();
        if (kind < Zyklusarten) Werte_vormerken(m_db);
        transaction.commit();
    });
    if (!saved) return false;
    if (!adding()) frame().Zeile_auffrischen(frame().li.row());
    for (const QString& hint : hinweise(rows)) koben.message(hint);
    return true;
}

void Buchungseingabe::schreiben(Recordset& bookings, int row) {
    if (adding()) {
        bookings.addNew();
    } else {
        bookings.findFirst(QStringLiteral("ID = %1").arg(frame().currentBooking()));
        if (bookings.noMatch())
            throw DatabaseError(DatabaseError::Kind::State,
                                QStringLiteral("Die Buchung, die geändert werden soll, gibt es nicht mehr. Bitte "
                                               "schließen Sie das Eingabefenster und öffnen Sie es neu."));
        bookings.edit();
    }
    eintragen(bookings, frame().schweinli.value(row, u"ID"));
    ergaenzen(bookings, row);
    bookings.update();
}

void Buchungseingabe::eintragen(Recordset& bookings, const Value& animal) const {
    bookings.set(u"Datum", Datum_aus_Text(tdat.text()));
    for (const Feld& field : m_felder) {
        const QString entered = field.control->text();
        switch (field.art) {
            case Art::Text:
                bookings.set(field.field, Hochkomma_ersetzen(entered));
                break;
            case Art::Anzahl:
                bookings.set(field.field, koben::Wert(entered));
                break;
            case Art::Betrag:
                bookings.set(field.field, Betrag_aus_Text(QString(entered)));
                break;
            case Art::Gewicht:
                bookings.set(field.field, Zahl_aus_Text(QString(entered)));
                break;
            case Art::Datum:
                bookings.set(field.field, Ist_Datum(entered) ? Value(Datum_aus_Text(entered)) : Value());
                break;
        }
    }
    bookings.set(u"Kennung", animal);
}

/// The hints of the check of cycle dates; only services, checks, farrowings and weanings have them.
QStringList Buchungseingabe::hinweise(const std::vector<int>& rows) const {
    QStringList hints;
    if (kind >= Zyklusarten) return hints;
    const Grid& animals = frame().schweinli;
    for (int row : rows) {
        QString dates[Zyklusarten];
        for (int i = 0; i < Zyklusarten; ++i) dates[i] = animals.cell(row, QString::fromUtf8(Zyklusdaten[i]));
        dates[kind] = tdat.text();
        hints.append(Datumsabstaende_pruefen(koben, QString::fromUtf8(Buchungsarten[kind].caption),
                                             animals.cell(row, u"Nummer"), dates[0], dates[1], dates[2], dates[3],
                                             animals.cell(row, u"Geburtsdatum")));
    }
    hints.removeAll(QString());
    return hints;
}

void Buchungseingabe::Stichworte_eintragen() {
    for (const Liste& list : m_listen) {
        const QString entered = list.control->text();
        const Quelle& source = list.source;
        if (!source.keywords.isEmpty()) {
            if (Stichwort_eintragen(m_db, entered, source.keywords)) list.control->addItem(entered);
        } else if (source.grows && !entered.isEmpty() && !list.control->items().contains(entered)) {
            list.control->addItem(entered);
        }
    }
}

/// Walks the bookings of the one animal: 2 forward, 1 back, wrapping at the ends.
void Buchungseingabe::blaettern(int index) {
    Grid& li = frame().li;
    if (index == 2) li.setRow(li.row() < li.rowCount() ? li.row() + 1 : 1);
    if (index == 1) li.setRow(li.row() > 1 ? li.row() - 1 : li.rowCount());
}

void Buchungseingabe::abbrechen_Click() {
    m_db.close();
    close();
}

void Buchungseingabe::nextschwein_Click(int direction) {
    m_db.close();
    frame().Tier_wechseln(direction);
    Load();
    Activate();
}

}  // namespace koben

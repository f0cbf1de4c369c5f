#include "forms/Eingabe.h"

#include <algorithm>
#include <limits>

#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"

namespace koben {

void Findings::add(Control& field, const QString& line) {
    field.setWrong(true);
    m_lines.append(line);
    if (!m_first) m_first = &field;
}

// ------------------------------------------------------------------------------------------------------------- fields

Eingabe::Bound& Eingabe::bind(Kind kind, const QString& label, Control& control, const QString& column) {
    if (control.hint().isEmpty() && !label.isEmpty()) control.setHint(label);
    if (kind != Kind::Check) m_zeilen.push_back({label, &control});
    return m_fields.emplace_back(Bound{kind, &control, label, column});
}

void Eingabe::text(const QString& label, ComboBox& control, const QString& column, int width, const Source& source) {
    control.onLostFocus = [&control, width] { control.setText(control.text().left(width).trimmed()); };
    bind(Kind::Text, label, control, column).source = source;
}

void Eingabe::freeText(const QString& label, TextBox& control, const QString& column, int width, const Source& source) {
    control.maxLength = width;
    bind(Kind::Text, label, control, column).source = source;
}

void Eingabe::choice(const QString& label, ComboBox& control, const QString& column, const QStringList& items) {
    control.fixed = true;
    control.setItems(items);
    bind(Kind::Choice, label, control, column);
}

void Eingabe::tick(CheckBox& control, const QString& column, const QString& on, const QString& off) {
    Bound& field = bind(Kind::Check, {}, control, column);
    field.preset = on;
    field.off = off;
}

void Eingabe::count(const QString& label, TextBox& control, const QString& column, const QString& preset,
                    SpinButton& spin, int least, int most) {
    control.onKeyPress = Nur_Ziffern;
    spin.onUp = [&control, least, most] { step(control, 1, least, most); };
    spin.onDown = [&control, least, most] { step(control, -1, least, most); };
    bind(Kind::Count, label, control, column).preset = preset;
    m_zeilen.back().spin = &spin;
}

void Eingabe::decimal(Kind kind, const QString& label, TextBox& control, const QString& column) {
    control.onKeyPress = Nur_Zahlzeichen;
    control.readable = [](const QString& typed) { return !severalSeparators(typed); };
    control.onLostFocus = [&control] { control.setText(Zahl_formatieren(QString(control.text()), 2)); };
    bind(kind, label, control, column).preset = QStringLiteral("0,00");
}

void Eingabe::amount(const QString& label, TextBox& control, const QString& column) {
    decimal(Kind::Amount, label, control, column);
}

void Eingabe::weight(const QString& label, TextBox& control, const QString& column) {
    decimal(Kind::Weight, label, control, column);
}

void Eingabe::date(const QString& label, TextBox& control, Button& button, const QString& column) {
    control.onLostFocus = [this, &control] { control.setText(Datum_ergaenzen(control.text().trimmed(), koben.Heute)); };
    button.icon = QStringLiteral("kalender");
    button.onClick = [this, &control] {
        const bool open = !m_calendar->visible() || m_calendarFor != &control;
        m_calendarFor = &control;
        calendarOpens(control);
        m_calendar->setVisible(open);
    };
    m_calendar->onPick = [this](QDate day) {
        m_calendarFor->setText(Datum_als_Anzeige(day));
        m_calendar->setVisible(false);
        m_calendarFor->onLostFocus();  // what hangs on the date follows it
    };
    if (!m_calendarFor) m_calendarFor = &control;
    bind(Kind::Date, label, control, column);
    m_zeilen.back().calender = &button;
}

void Eingabe::step(TextBox& field, int by, int least, int most) {
    const double value = std::clamp(Wert(field.text()) + by, double(least), double(most));
    field.edited(QString::number(static_cast<int>(value)));
    if (field.onLostFocus) field.onLostFocus();
}

void Eingabe::connectButtons(ControlArray<Button>& ok, Button& cancelled) {
    for (int i = 0; i < ok.count(); ++i) ok[i].onClick = [this, i] { save(i); };
    cancelled.onClick = [this] { cancel(); };
    acceptButton = &ok[0];
    cancelButton = &cancelled;
}

// ------------------------------------------------------------------------------------------------------------ showing

void Eingabe::Load() {
    m_db = koben.connect();
    readLists();
    if (m_calendar) m_calendar->setDate(Datum_aus_Text(koben.Heute));
}

void Eingabe::readLists() {
    for (const Bound& field : m_fields) {
        if (field.source.sql.isEmpty()) continue;
        const Table rows = m_db.table(field.source.sql);
        QStringList items = field.source.before;
        for (int row = 0; row < rows.rowCount(); ++row) items.append(Hochkomma_ersetzen(rows.text(row, 0)));
        items.removeAll(QString());
        field.list().setItems(items);
    }
}

/// A combo box keeps its list in step with its text.
void Eingabe::show(const Bound& field, const QString& text) {
    if (field.kind == Kind::Check)
        static_cast<CheckBox*>(field.control)->setChecked(text == field.preset);
    else if (field.kind == Kind::Choice)
        field.list().setCurrent(static_cast<int>(field.list().items().indexOf(text)));
    else if (auto* list = dynamic_cast<ComboBox*>(field.control))
        list->setText(text);
    else
        field.box().setText(text);
}

void Eingabe::showPresets() {
    for (const Bound& field : m_fields) {
        if (field.column.isEmpty()) continue;
        show(field, field.kind == Kind::Check    ? field.off
                    : field.kind == Kind::Choice ? field.list().items().value(0)
                                                 : field.preset);
    }
}

void Eingabe::showStored() {
    for (const Bound& field : m_fields) {
        if (field.column.isEmpty()) continue;
        QString text = stored(field.column);
        if (field.kind == Kind::Amount || field.kind == Kind::Weight) text = Zahl_formatieren(text, 2);
        if (field.kind == Kind::Date) text = Datum_ergaenzen(text, koben.Heute);
        show(field, text);
    }
}

// ------------------------------------------------------------------------------------------------------------- values

Value Eingabe::valueOf(const Bound& field) {
    if (field.kind == Kind::Check)
        return static_cast<const CheckBox*>(field.control)->checked() ? field.preset : field.off;
    const QString& entered = field.box().text();
    switch (field.kind) {
        case Kind::Count:
            return Wert(entered);
        case Kind::Amount:
            return Betrag_aus_Text(QString(entered));
        case Kind::Weight:
            return Zahl_aus_Text(QString(entered));
        case Kind::Date:
            return Ist_Datum(entered) ? Value(Datum_aus_Text(entered)) : Value();
        default:
            return Hochkomma_ersetzen(entered);
    }
}

std::vector<std::pair<QString, Value>> Eingabe::values() const {
    std::vector<std::pair<QString, Value>> all;
    for (const Bound& field : m_fields)
        if (!field.column.isEmpty()) all.emplace_back(field.column, valueOf(field));
    return all;
}

void Eingabe::writeFields(Recordset& row) const {
    for (const auto& [column, value] : values()) row.set(column, value);
}

namespace {

/// What a count may be at most; one without a column becomes a row's count elsewhere.
double mostOf(const std::vector<Field>& columns, const QString& column) {
    for (const Field& field : columns)
        if (field.name.compare(column, Qt::CaseInsensitive) == 0 && field.type == Type::Long)
            return std::numeric_limits<qint32>::max();
    return std::numeric_limits<qint16>::max();
}

QString tooLarge(const QString& name, const QString& most) {
    return QStringLiteral("...die Angabe bei \"%1\" zu groß ist. Möglich ist höchstens %2.").arg(name, most);
}

}  // namespace

/// Why a number cannot be written; "" where it can.
QString Eingabe::misfit(const Bound& field, const std::vector<Field>& columns) const {
    QString name = field.label.isEmpty() ? field.control->hint() : field.label;
    if (name.endsWith(u':')) name.chop(1);
    if (field.kind == Kind::Count) {
        const double most = mostOf(columns, field.column);
        const bool fits = std::abs(Wert(field.box().text())) <= most;
        return fits ? QString() : tooLarge(name, QString::number(most, 'f', 0));
    }
    if (field.kind != Kind::Amount && field.kind != Kind::Weight) return {};
    const bool money = field.kind == Kind::Amount;
    switch (money ? readAmount(field.box().text()) : readWeight(field.box().text())) {
        case Reading::Fits:
            return {};
        case Reading::TooLarge:
            return tooLarge(name, money ? QStringLiteral("922337203685477,58")
                                        : QStringLiteral("eine Zahl mit 38 Stellen vor dem Komma"));
        case Reading::Unreadable:
            break;
    }
    return QStringLiteral(
               "...die Zahl bei \"%1\" nicht gelesen werden kann. Bitte geben Sie sie mit einem Komma und ohne "
               "Tausenderpunkte ein, zum Beispiel 1234,56.")
        .arg(name);
}

void Eingabe::checkValues(Findings& found) const {
    const std::vector<Field> columns = m_db.fields(table());
    for (const Bound& field : m_fields)
        if (const QString line = field.control->visible() ? misfit(field, columns) : QString(); !line.isEmpty())
            found.add(*field.control, line);
}

// -------------------------------------------------------------------------------------------------------------- saving

void Eingabe::save(int index) {
    for (Control* control : controls()) control->setWrong(false);
    Findings found;
    check(found);
    if (found.needsHeading()) checkValues(found);
    if (!found.empty()) {
        koben.message((found.needsHeading() ? heading() + Crlf + Crlf : QString()) + found.lines().join(Crlf));
        return found.first()->setFocus();
    }
    if (!agreed() || !store()) return;
    growLists();
    refresh();
    for (const QString& hint : hints()) koben.message(hint);
    goOn(index);
}

/// Writes the row and all that goes with it, whole or not at all. False where a value does not fit its field.
bool Eingabe::store() {
    try {
        Action action(m_db, actionName());
        write(action);
        for (Bound& field : m_fields)
            field.fresh = !field.source.keywords.isEmpty() &&
                          Stichwort_eintragen(action.database(), field.box().text(), field.source.keywords);
        action.commit();
        return true;
    } catch (const DatabaseError& error) {
        if (error.kind != DatabaseError::Kind::Type && error.kind != DatabaseError::Kind::TooLong) throw;
        koben.message(refusal() +
                      QStringLiteral(", weil ein Wert nicht in sein Feld passt. Es wurde nichts gespeichert.") + Crlf +
                      Crlf + error.message());
        return false;
    }
}

void Eingabe::growLists() {
    for (const Bound& field : m_fields) {
        const Source& source = field.source;
        if (source.sql.isEmpty()) continue;
        const QString entered = field.box().text();
        const bool unknown = source.grows && !entered.isEmpty() && !field.list().items().contains(entered);
        if (source.keywords.isEmpty() ? unknown : field.fresh) field.list().addItem(entered);
    }
}

void Eingabe::goOn(int index) {
    if (!adding()) move(index);
    if (index == 0)
        cancel();
    else
        Activate();
    koben.Quittungston();
}

void Eingabe::cancel() {
    m_db.close();
    close();
}

}  // namespace koben

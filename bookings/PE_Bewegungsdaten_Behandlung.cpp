#include "bookings/PE_Bewegungsdaten_Behandlung.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum List { Medikament, Einheit, Verabreichungsart, Tierarzt, Kommentar, Bemerkung, Behandlungsart };
enum Input { Menge, Tage, Kosten };

constexpr int MostDays = 999;  // by the arrows

/// The number of an amount field, digit by digit as it stands there.
double number(QString text) { return Wert(text.replace(u',', u'.')); }

/// cost * part / whole for an amount field. 15 digits: what is half a cent by decimal reckoning is rounded as such.
QString share(const QString& cost, const QString& part, const QString& whole) {
    return Zahl_formatieren(QString::number(number(cost) * number(part) / number(whole), 'g', 15), 2);
}

}  // namespace

PE_Bewegungsdaten_Behandlung::PE_Bewegungsdaten_Behandlung(Koben& context)
    : Buchungseingabe(context, QStringLiteral("PE_Bewegungsdaten_Behandlung"), QStringLiteral("Behandlung eingeben"),
                      Buchungsart::Behandlung, QStringLiteral("Dateneingabe Behandlungen")) {
    text("Art der Behandlung:", kom[Behandlungsart], "Behandlungsart", 20, valuesOf("Behandlungsart"));
    text("Medikament:", kom[Medikament], "Medikament", 20,
         {.sql = QStringLiteral("select Medikament from Medikamente"), .grows = true});
    weight("Menge und Einheit:", tz[Menge], "Menge");
    choice("Einheit (ml, mg, g, St):", kom[Einheit], "Einheit", {"", "l", "ml", "kg", "g", "mg", "St"});
    text("Verabreichungsart:", kom[Verabreichungsart], "Verabreichungsart", 20,
         {.sql = QStringLiteral("select DISTINCT Verabreichungsart from Behandlung")});
    count("Wartezeit (Tage):", tz[Tage], "Wartezeit_Tage", QStringLiteral("0"), UpDown, 1, MostDays);
    bookingDate("Wartezeit (Datum):", tdat1, calender1, "Wartezeit_Datum");
    text("Tierarzt:", kom[Tierarzt], "Tierarzt", 20, valuesOf("Tierarzt"));
    freeText("Beleg-Nummer:", t, "Beleg_Nr", 20);
    amount("Kosten:", tz[Kosten], "Kosten");
    text("Kommentar:", kom[Kommentar], "Kommentar", 20, valuesOf("Kommentar"));
    text("Bemerkung:", kom[Bemerkung], "Bemerkung", 20, remarks());

    const auto then = [](TextBox& field, const std::function<void()>& rule) {
        field.onLostFocus = [first = field.onLostFocus, rule] {
            first();
            rule();
        };
    };
    then(tdat, [this] { tz1_LostFocus(); });
    then(tdat1, [this] { tdat1_LostFocus(); });
    then(tz[Menge], [this] { tz0_LostFocus(); });
    tz[Menge].onGotFocus = [this] { Menge_alt = tz[Menge].text(); };
    tz[Tage].onLostFocus = [this] { tz1_LostFocus(); };
    onNewText(kom[Medikament], [this] { kom0_LostFocus(); });
    onNewText(kom[Behandlungsart], [this] { kom6_LostFocus(); });
}

void PE_Bewegungsdaten_Behandlung::onNewText(ComboBox& box, const std::function<void()>& rule) {
    const auto before = std::make_shared<QString>();
    box.onGotFocus = [&box, before] { *before = box.text(); };
    box.onLostFocus = [&box, before, rule, cut = box.onLostFocus] {
        cut();
        if (box.text() == *before) return;
        *before = box.text();
        if (!box.text().isEmpty()) rule();
    };
}

/// The kinds of treatment come from the bookings and, behind those, from the list of medicines.
void PE_Bewegungsdaten_Behandlung::Load() {
    Buchungseingabe::Load();
    const Table kinds = m_db.table(QStringLiteral("select DISTINCT Behandlungsart from Medikamente"));
    QStringList items = kom[Behandlungsart].items();
    for (int row = 0; row < kinds.rowCount(); ++row) items.append(Hochkomma_ersetzen(kinds.text(row, 0)));
    items.removeAll(QString());
    items.removeDuplicates();
    kom[Behandlungsart].setItems(items);
}

/// A booking that came from elsewhere may hold the date alone, or other days than its date says. The date is what
/// counts; without its days the next leaving of a field would shorten it.
void PE_Bewegungsdaten_Behandlung::showBooking() {
    Buchungseingabe::showBooking();
    const QDate from = Datum_aus_Text(tdat.text()), until = Datum_aus_Text(tdat1.text());
    if (from.isValid() && until > from) tz[Tage].setText(QString::number(from.daysTo(until)));
}

// ------------------------------------------------------------------------------------------------- the waiting time

/// The days give the date; a date of treatment that is none counts as today.
void PE_Bewegungsdaten_Behandlung::tz1_LostFocus() {
    const QDate from = Datum_aus_Text(dateEntered() ? tdat.text() : koben.Heute);
    const double days = std::min(Wert(tz[Tage].text()), double(from.daysTo(QDate(9999, 12, 31))));
    tdat1.setText(days < 1 ? QString() : Datum_als_Anzeige(from.addDays(static_cast<qint64>(days))));
}

/// The date gives the days.
void PE_Bewegungsdaten_Behandlung::tdat1_LostFocus() {
    if (!dateEntered() || !Ist_Datum(tdat1.text())) return;
    const qint64 days = Datum_aus_Text(tdat.text()).daysTo(Datum_aus_Text(tdat1.text()));
    tz[Tage].setText(QString::number(std::max(days, qint64(0))));
    if (days <= 0) tdat1.setText(QString());
}

// -------------------------------------------------------------------------------------------- medicine, dose and cost

Table PE_Bewegungsdaten_Behandlung::medicines(const char* field, const QString& text) const {
    return m_db.table(QStringLiteral("select * from Medikamente where %1 = '%2'")
                          .arg(QString::fromUtf8(field), Hochkomma_ersetzen(text)));
}

void PE_Bewegungsdaten_Behandlung::kom0_LostFocus() {
    const Table found = medicines("Medikament", kom[Medikament].text());
    if (found.rowCount() > 0) propose(found);
}

/// A kind of treatment with one known remedy fills itself.
void PE_Bewegungsdaten_Behandlung::kom6_LostFocus() {
    const Table found = medicines("Behandlungsart", kom[Behandlungsart].text());
    if (found.rowCount() != 1) return;
    kom[Medikament].setText(found.text(0, found.columnOf(u"Medikament")));
    propose(found);
}

/// Fills the inputs from the first row. A unit that this screen does not offer leaves the chosen one.
void PE_Bewegungsdaten_Behandlung::propose(const Table& medicine) {
    const auto field = [&medicine](QStringView name) { return medicine.value(0, medicine.columnOf(name)); };
    const QString dose = field(u"Menge").toText();
    tz[Menge].setText(Zahl_formatieren(QString(dose), 2));
    kom[Einheit].setText(Hochkomma_ersetzen(field(u"Einheit")));
    kom[Verabreichungsart].setText(Hochkomma_ersetzen(field(u"Verabreichungsart")));
    tz[Kosten].setText(number(dose) == 0 ? QStringLiteral("0,00")
                                         : share(field(u"Kosten_je_Gabe").toText(), tz[Menge].text(), dose));
    tz[Tage].setText(QString::number(field(u"Wartezeit_Tage").toInt()));
    tz1_LostFocus();
}

/// The cost follows the dose.
void PE_Bewegungsdaten_Behandlung::tz0_LostFocus() {
    const QString dose = tz[Menge].text();
    if (number(Menge_alt) != 0 && number(dose) != number(Menge_alt))
        tz[Kosten].setText(share(tz[Kosten].text(), dose, Menge_alt));
    Menge_alt = dose;
}

// ------------------------------------------------------------------------------------------------------------ saving

bool PE_Bewegungsdaten_Behandlung::nothingToChange() const { return !adding() && frame().li.rowCount() == 0; }

void PE_Bewegungsdaten_Behandlung::check(Findings& found) {
    if (nothingToChange())
        return found.add(tdat, QStringLiteral("Änderungen sind nur möglich, wenn ein Datensatz ausgewählt wurde!"));
    if (!dateEntered()) found.add(tdat, QStringLiteral("...das Datum muß eingegeben werden!"));
    if (kom[Behandlungsart].text().trimmed().isEmpty())
        found.add(kom[Behandlungsart], QStringLiteral("...die Behandlungsart eingetragen werden muß!"));
    if (!kom[Medikament].text().trimmed().isEmpty() && Zahl_aus_Text(QString(tz[Menge].text())) == 0)
        found.add(tz[Menge],
                  QStringLiteral("...wenn ein Medikament eingetragen ist, muß auch die Menge eingetragen werden."));
}

QString PE_Bewegungsdaten_Behandlung::heading() const {
    return QStringLiteral("Die Eingabe kann nicht übernommen werden, weil...");
}

/// Asked once, however many animals the booking is for.
void PE_Bewegungsdaten_Behandlung::prepare(const std::vector<int>&) {
    const QString medicine = kom[Medikament].text();
    m_neuesMedikament =
        !medicine.trimmed().isEmpty() && medicines("Medikament", medicine).rowCount() == 0 &&
        koben.yesNo(QStringLiteral("Das Medikament ") + medicine +
                    QStringLiteral(" ist noch nicht in der Medikamentenliste eingetragen. Soll dieses auch in die "
                                   "Medikamentenliste aufgenommen werden?"));
}

void PE_Bewegungsdaten_Behandlung::finish(const Action& action) {
    if (!m_neuesMedikament) return;
    Recordset list = action.database().open(QStringLiteral("select * from Medikamente where ID = 0"));
    list.addNew();
    list.set(u"Medikament", Hochkomma_ersetzen(kom[Medikament].text()));
    list.set(u"Einheit", Hochkomma_ersetzen(kom[Einheit].text()));
    list.set(u"Wartezeit_Tage", Wert(tz[Tage].text()));
    list.set(u"Menge", Zahl_aus_Text(QString(tz[Menge].text())));
    list.set(u"Kosten_je_Gabe", Betrag_aus_Text(QString(tz[Kosten].text())));
    list.set(u"Behandlungsart", Hochkomma_ersetzen(kom[Behandlungsart].text()));
    list.set(u"Verabreichungsart", Hochkomma_ersetzen(kom[Verabreichungsart].text()));
    list.update();
}

}  // namespace koben

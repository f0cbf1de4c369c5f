#include "bookings/Buchungseingabe.h"

#include "core/Aktionsnamen.h"
#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"

namespace koben {

namespace {

/// Facts of the animal, in the order of bezschwein.
const char* const Facts[] = {"Art",
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
const char* const CycleDates[] = {"L_Belegung", "L_Trächtigkeit", "L_Ferkelung", "L_Absetzung"};
constexpr int CycleKinds = 4;

constexpr size_t NamedAnimals = 3;  // in the name of an action

}  // namespace

Buchungseingabe::Buchungseingabe(Koben& context, const QString& name, const QString& caption, Buchungsart art,
                                 const QString& inputs)
    : Bewegungseingabe(context, name, caption, art), m_rahmen(inputs) {
    for (int i = 0; i < nextschwein.count(); ++i) nextschwein[i].onClick = [this, i] { nextschwein_Click(i); };
}

ListSource Buchungseingabe::valuesOf(const char* field) const {
    return {.sql = QStringLiteral("select DISTINCT %1 from %2").arg(QString::fromUtf8(field), table()), .grows = true};
}

ListSource Buchungseingabe::keywords(const char* table, const char* sql) {
    return {.sql = QString::fromUtf8(sql), .keywords = QString::fromUtf8(table)};
}

ListSource Buchungseingabe::remarks() {
    return keywords("Stammdaten_Bemerkung", "select Inhalt from Stammdaten_Bemerkung");
}

ListSource Buchungseingabe::lossReasons() {
    return {.sql = QStringLiteral("select DISTINCT Grund from Verluste where Grund <> 'Verhungert' and Grund <> "
                                  "'Totgelegen' and Grund <> 'Sonstiges' and Grund <> 'Grätscher' order by Grund"),
            .before = {QStringLiteral("Verhungert"), QStringLiteral("Totgelegen"), QStringLiteral("Grätscher"),
                       QStringLiteral("Sonstiges")}};
}

void Buchungseingabe::Activate() {
    const Grid& herd = frame().schweinli;
    for (int i = 0; i < bezschwein.count(); ++i)
        bezschwein[i].setText(herd.cell(herd.row(), QString::fromUtf8(Facts[i])));
    Bewegungseingabe::Activate();
}

void Buchungseingabe::takeCount(TextBox& count) const {
    if (!koben.Uebergabe_Anzahl.isEmpty()) count.setText(koben.Uebergabe_Anzahl);
}

QString Buchungseingabe::numberOf(int row) const { return Hochkomma_ersetzen(frame().schweinli.cell(row, u"Nummer")); }

void Buchungseingabe::check(Findings& found) {
    if (!dateEntered()) found.add(tdat, QStringLiteral("Das Datum muß eingegeben werden!"));
}

bool Buchungseingabe::askWhetherAll() const {
    return koben.yesNo(QStringLiteral("Es sind mehere Schweine ausgewählt. Soll die Buchung bei allen %1 Schweinen "
                                      "vorgenommen werden?")
                           .arg(frame().schweinli.markedCount()) +
                       hintOnSeveral());
}

/// All marked animals or the current one; the current one counts only if it is marked too.
std::optional<std::vector<int>> Buchungseingabe::animals() {
    const Grid& herd = frame().schweinli;
    if (herd.markedCount() > 1 && askWhetherAll()) return herd.markedRows();
    if (herd.marked(herd.row())) return std::vector<int>{herd.row()};
    return std::vector<int>();
}

bool Buchungseingabe::agreed() {
    if (!adding() && frame().currentKind() != kind) {  // opened from the entry screen of another kind
        koben.message(refusal() + QStringLiteral(", weil...") + Crlf + Crlf +
                      QStringLiteral("...in der Liste der Bewegungsdaten keine Buchung dieser Art steht, die geändert "
                                     "werden kann."));
        return false;
    }
    const auto chosen = animals();
    if (!chosen) return false;
    m_rows = *chosen;
    prepare(m_rows);
    return true;
}

/// "Belegung 40, 41, 43 und 12 weitere, 17.07.2026"
QString Buchungseingabe::actionName() const {
    QStringList numbers;
    for (size_t i = 0; i < m_rows.size() && i < NamedAnimals; ++i) numbers.append(numberOf(m_rows[i]));
    QString named = numbers.join(QStringLiteral(", "));
    if (m_rows.size() > NamedAnimals) named += QStringLiteral(" und %1 weitere").arg(m_rows.size() - NamedAnimals);
    return adding() ? Buchungsname(kind, named, tdat.text())
                    : Buchungsname(kind, named, tdat.text(), QStringLiteral("geändert"));
}

void Buchungseingabe::write(const Action& action) {
    const QString mother = QStringLiteral("Muttersau");
    const bool named = adding() && QString::fromUtf8(angaben(kind).texts).contains(mother);
    Buchungen bookings(action, kind, named ? QStringList(mother) : QStringList(), values());
    for (int row : m_rows) {
        if (!adding())
            bookings.change(frame().currentBooking(), animalOf(row));
        else if (named)
            bookings.book(animalOf(row), {numberOf(row)});
        else
            bookings.book(animalOf(row));
    }
    finish(action);
}

void Buchungseingabe::refresh() {
    if (!adding()) frame().Zeile_auffrischen(frame().li.row());
}

QStringList Buchungseingabe::hints() const {
    QStringList hints;
    const int booked = static_cast<int>(kind);
    if (booked >= CycleKinds) return hints;
    const Grid& herd = frame().schweinli;
    for (int row : m_rows) {
        QString dates[CycleKinds];
        for (int i = 0; i < CycleKinds; ++i) dates[i] = herd.cell(row, QString::fromUtf8(CycleDates[i]));
        dates[booked] = tdat.text();
        hints.append(Datumsabstaende_pruefen(koben, QString::fromUtf8(angaben(kind).caption), herd.cell(row, u"Nummer"),
                                             dates[0], dates[1], dates[2], dates[3], herd.cell(row, u"Geburtsdatum")));
    }
    hints.removeAll(QString());
    return hints;
}

void Buchungseingabe::nextschwein_Click(int direction) {
    m_db.close();
    frame().Tier_wechseln(direction);
    Load();
    Activate();
}

}  // namespace koben

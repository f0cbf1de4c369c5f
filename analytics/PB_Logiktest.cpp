#include "analytics/PB_Logiktest.h"

#include <algorithm>

#include "core/Buchungen.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

constexpr int LastOnly = 3, Week = 7;

struct Spalten {
    const char* day;
    const char* days;
    Buchungsart kind;
};
constexpr std::array<Spalten, Termine> Tests{{
    {"Beleg_Datum", "Beleg_Tage", Buchungsart::Belegung},
    {"Trächt_Datum", "Trächt_Tage", Buchungsart::Trächtigkeit},
    {"Absetz_Datum", "Absetz_Tage", Buchungsart::Absetzung},
}};

const char* const Notice =
    "Hinweis: Die Ferkelungen werden nicht geprüft, weil alle anderen Bewegungen ab den Ferkelungsterminen geprüft "
    "werden. Alle Termine werden nur für abgeschlossene Ferkelungen geprüft. Ferkelungen, bei denen alle Ferkel tot "
    "geboren wurden, werden auch nicht berücksichtigt, weil hier von einer Fehlgeburt ausgeht, was die gesamte "
    "Zyklusreihe durcheinander bringt.";

}  // namespace

PB_Logiktest::PB_Logiktest(Koben& koben_) : Bericht(koben_, "PB_Logiktest", "Logikprüfung der Eingaben bei den Sauen") {
    Label1.setText(QString::fromUtf8(Notice));
    optiwoche.frame = QStringLiteral("Toleranzzeit + - bezogen auf die Terminvorgabe");
    for (int i = 0; i < Termine; ++i) kon[i].setChecked(true);
    optiwoche.select(0);
    gridli.setVisible(false);
    ok.onClick = [this] { ok_Click(); };
    bindButtons(ok, beenden, &hilfe);
}

void PB_Logiktest::Load() {
    Bericht::Load();
    const auto& expected = choice().expected;
    Label2[0].setText(QStringLiteral("%1 Tage vor den Ferkelungen.").arg(expected[0]));
    Label2[1].setText(
        QStringLiteral("%1 Tage vor den Ferkelungen (entspricht %2 Tage nach den Belegungen). Es werden nur "
                       "erfolgreiche Trächtigkeitsprüfungen berücksichtigt.")
            .arg(expected[1])
            .arg(koben.Konfig_Zahl[Zahl::TageBelegungKontrolle]));
    Label2[2].setText(QStringLiteral("%1 Tage nach Ferkelung.").arg(expected[2]));
}

Logikauswahl PB_Logiktest::choice() const {
    const auto& days = koben.Konfig_Zahl;
    Logikauswahl choice{.expected = {days[Zahl::TageBelegungFerkelung],
                                     days[Zahl::TageBelegungFerkelung] - days[Zahl::TageBelegungKontrolle],
                                     days[Zahl::TageFerkelungAbsetzung]},
                        .tolerance = (std::max(optiwoche.selected(), 0) + 1) * Week,
                        .lastOnly = kon[LastOnly].checked(),
                        .today = Datum_aus_Text(koben.Heute)};
    for (int i = 0; i < Termine; ++i) choice.tested[static_cast<size_t>(i)] = kon[i].checked();
    return choice;
}

void PB_Logiktest::ok_Click() {
    gridli.clear();
    m_rows.clear();
    addColumns();
    const bool whole = run("Die Eingaben werden geprüft ...", 100, &meter, [&](Progress& progress) {
        const Logikauswahl chosen = choice();
        const Logikpruefung test(m_db, chosen);
        bool separate = false;
        for (int sow = 0; sow < test.sows() && progress.step(sow * qint64(100) / test.sows()); ++sow) {
            if (separate && !chosen.lastOnly) m_rows.emplace_back(), gridli.addRow({});
            const auto lines = test.test(sow);
            separate = !lines.empty();
            for (const Logikzeile& line : lines) add(line);
        }
    });
    if (!whole) return;
    gridli.lead = [this](int row, int column) { lead(row, column); };
    standWhereLeft();
    Liste_ausgeben(koben, gridli);
}

void PB_Logiktest::addColumns() {
    const auto column = [this](const char* title, Sort sort = Sort::Text) {
        const QString name = QString::fromUtf8(title);
        gridli.addColumn(
            {.key = name, .title = name, .align = sort == Sort::Number ? Align::Right : Align::Left, .sort = sort});
    };
    for (const char* title : {"Saunr", "Stallnr", "Gruppe"}) column(title);
    column("Ferk_Nr", Sort::Number);
    column("Ferkeldatum", Sort::Date);
    for (int i = 0; i < Termine; ++i) {
        if (!kon[i].checked()) continue;
        column(Tests[static_cast<size_t>(i)].day, Sort::Date);
        column(Tests[static_cast<size_t>(i)].days, Sort::Number);
    }
}

void PB_Logiktest::add(const Logikzeile& line) {
    Grid::Row cells{line.number, line.stall, line.group};
    if (!line.first) cells = {Value(), Value(), Value()};
    cells << line.litter << line.day;
    for (int i = 0; i < Termine; ++i) {
        if (!kon[i].checked()) continue;
        const Befund& found = line.found[static_cast<size_t>(i)];
        if (!found.wrong)
            cells << Value() << Value();
        else if (found.booking == 0)
            cells << Value(QStringLiteral("fehlt")) << Value(QStringLiteral("?"));
        else
            cells << Value(found.day) << Value(found.days);
    }
    gridli.addValues(std::move(cells), line.sow);
    m_rows.push_back({line.sow, line.litter, line.found});
}

/// At the finding from which the user went to the bookings; where it is gone, at the next one of the same sow, else at
/// what has come in its place.
void PB_Logiktest::standWhereLeft() {
    if (m_left.sow == 0) return;
    int row = 0;
    for (size_t i = 0; i < m_rows.size(); ++i) {
        const bool same = m_rows[i].sow == m_left.sow;
        if (same && (row == 0 || m_rows[static_cast<size_t>(row - 1)].litter < m_left.litter))
            row = static_cast<int>(i) + 1;
    }
    gridli.setRow(row > 0 ? row : std::min(m_leftRow, gridli.rowCount()));
}

/// The sow's bookings of the kind that the cell is about (elsewhere in the row: of its first finding), with the booking
/// found as the current one.
void PB_Logiktest::lead(int row, int column) {
    if (row < 1 || row > static_cast<int>(m_rows.size())) return;
    const Zeile& line = m_rows[static_cast<size_t>(row - 1)];
    if (line.sow == 0) return;
    size_t test = Termine;
    for (size_t i = Termine; i-- > 0;) {
        if (!line.found[i].wrong) continue;
        const bool hit = column > 0 && column <= gridli.columnCount() &&
                         (gridli.column(column).key == QString::fromUtf8(Tests[i].day) ||
                          gridli.column(column).key == QString::fromUtf8(Tests[i].days));
        test = i;
        if (hit) break;
    }
    if (test == Termine) return;
    if (!chooseAnimal(koben, line.sow, QStringLiteral("Die Sau"))) return;
    m_left = line;
    m_leftRow = row;
    koben.Buchungsart_Nr = static_cast<int>(Tests[test].kind);
    koben.shownBooking = line.found[test].booking;
    koben.open(QStringLiteral("PE_Bewegungsdaten"));
}

}  // namespace koben

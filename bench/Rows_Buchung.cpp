// The booking frame and its eight entry screens: opened, and saved for one animal and for many.
#include "bench/Floor.h"
#include "bench/Program.h"
#include "core/Buchungen.h"

namespace koben {
namespace {

/// An input that the user fills, and its text; the rest keeps its defaults.
struct Input {
    const char* control;
    int index;
    const char* text;
};

/// A kind of booking as the floor writes it: fields and values beside the date and the animal, which is ?1.
struct Kind {
    const char* name;
    Buchungsart kind;
    std::vector<Input> inputs;
    const char* fields;
    const char* values;
    std::vector<std::pair<const char*, const char*>> choices;  ///< lists of choice, as table and field
};

const std::vector<Kind>& kinds() {
    static const std::vector<Kind> result = {
        {"service",
         Buchungsart::Belegung,
         {{"kom", 0, "Pi 4711"}},
         "Ebernr, Deckanzahl, Belegungart, Belegungsstation, Kosten, Kommentar, Bemerkung",
         "'Pi 4711', 1, 'K', '', 0, '', ''",
         {{"Belegung", "Ebernr"}, {"Belegung", "Belegungsstation"}, {"Belegung", "Kommentar"}}},
        {"check",
         Buchungsart::Trächtigkeit,
         {},
         "Trächtig, Kosten, Kommentar, Bemerkung",
         "'J', 0, '', ''",
         {{"Trächtigkeit", "Kommentar"}}},
        {"farrowing",
         Buchungsart::Ferkelung,
         {{"tz", 0, "12"}, {"tz", 1, "11"}, {"tz", 2, "1"}},
         "LNr, LNrJahr, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot, Stück_Gewicht_kg, Kosten, Kommentar, Bemerkung",
         "(SELECT count(*) + 1 FROM Ferkelung WHERE Kennung = ?1), (SELECT count(*) + 1 FROM Ferkelung WHERE Kennung = "
         "?1 AND Datum >= '2026-01-01'), 12, 11, 1, 0, 0, '', ''",
         {{"Ferkelung", "Kommentar"}}},
        {"weaning",
         Buchungsart::Absetzung,
         {{"tz", 0, "10"}, {"tz", 1, "8,20"}},
         "Anzahl_Ferkel, Stück_Gewicht_kg, Kommentar, Bemerkung",
         "10, 8.2, '', ''",
         {{"Absetzung", "Kommentar"}, {"Verluste", "Grund"}}},
        {"cross-fostering",
         Buchungsart::Verschiebung,
         {{"tz", 0, "2"}, {"kom", 0, ""}},
         "Anzahl_Ferkel, Zu_Saunr, Kommentar, Bemerkung",
         "2, '', '', ''",
         {{"Verschiebung", "Kommentar"}}},
        {"loss",
         Buchungsart::Verluste,
         {{"tz", 0, "1"}, {"kom", 0, "Totgelegen"}},
         "Anzahl_Ferkel, Grund, Kosten, Muttersau, Kommentar, Bemerkung",
         "1, 'Totgelegen', 0, (SELECT Nummer FROM Sauen WHERE ID = ?1), '', ''",
         {{"Verluste", "Grund"}, {"Verluste", "Kommentar"}}},
        {"piglet sale",
         Buchungsart::Ferkelverkauf,
         {{"tz", 0, "10"}, {"tz", 1, "50,00"}, {"tz", 2, "500,00"}, {"kom", 0, "Viehhandel Höfer"}},
         "Anzahl_Einkauf, Anzahl_Verkauf, Preis_je_Stück, Einnahmen, Ausgaben, Stück_Gewicht_kg, Gesamtgewicht_kg, "
         "Kunde, Muttersau, Kommentar",
         "0, 10, 500000, 5000000, 0, 0, 0, 'Viehhandel Höfer', (SELECT Nummer FROM Sauen WHERE ID = ?1), ''",
         {{"Ferkelverkauf", "Kommentar"}}},
        {"treatment",
         Buchungsart::Behandlung,
         {{"kom", 6, "Impfung"}, {"kom", 0, "Parvo-Rotlauf"}, {"tz", 0, "2,00"}},
         "Behandlungsart, Medikament, Menge, Einheit, Verabreichungsart, Wartezeit_Tage, Tierarzt, Beleg_Nr, Kosten, "
         "Kommentar, Bemerkung",
         "'Impfung', 'Parvo-Rotlauf', 2, '', '', 0, '', '', 0, '', ''",
         {{"Behandlung", "Behandlungsart"},
          {"Behandlung", "Verabreichungsart"},
          {"Behandlung", "Tierarzt"},
          {"Behandlung", "Kommentar"}}}};
    return result;
}

const char* const sauen = "SELECT ID FROM Sauen INDEXED BY boden_bestand WHERE Abgangsdatum IS NULL AND Art = 'Sau'";

/// Makes the trial sow current, and marks as many sows as wanted beside her.
void markSows(Program& p, qint64 sow, int count) {
    p.choose(sow);
    Grid& list = p.list();
    std::vector<int> rows = list.markedRows();
    const int kind = list.columnOf(u"Art");
    for (int row = 1; row <= list.rowCount() && static_cast<int>(rows.size()) < count; ++row)
        if (row != list.row() && list.cell(row, kind) == u"Sau") rows.push_back(row);
    list.mark(rows);
}

std::string bookingsOf(const Kind& kind, qint64 sow) {
    return std::string("SELECT * FROM ") + angaben(kind.kind).table + " WHERE Kennung = " + std::to_string(sow) +
           " ORDER BY Datum";
}

Row openFrame(const Sample& sample, int count) {
    return {QStringLiteral("booking frame opens, %1 marked").arg(count), daily,
            [sow = sample.sau, count](Program& p, Stopwatch& watch) {
                markSows(p, sow, count);
                p.koben().Buchungsart_Nr = 0;
                qint64 rows = 0;
                watch.start();
                p.open("PE_Bewegungsdaten", [&](Form& frame) {
                    look(control<Grid>(frame, "schweinli"));
                    look(control<Grid>(frame, "li"));
                    watch.stop();
                    rows = control<Grid>(frame, "li").rowCount();
                });
                return rows;
            },
            [sow = sample.sau](SqliteFile& file, Stopwatch& watch) {
                qint64 rows = 0;
                watch.measure([&] {
                    rows = file.read(bookingsOf(kinds().front(), sow));
                    file.read("SELECT * FROM Stammdaten_Stallnummer ORDER BY Inhalt");
                });
                return rows;
            }};
}

void fillIn(Form& entry, const Kind& kind, const QString& partner) {
    for (const Input& input : kind.inputs) {
        const QString text = *input.text ? QString::fromUtf8(input.text) : partner;
        TextBox& box = control<TextBox>(entry, input.control, input.index);
        if (auto* list = dynamic_cast<ComboBox*>(&box))
            list->setText(text);
        else
            box.setText(text);
    }
}

Row openEntry(const Sample& sample, int number) {
    const Kind& booked = kinds()[static_cast<size_t>(number)];
    return {QStringLiteral("entry screen opens: %1").arg(QString::fromUtf8(booked.name)), daily,
            [&booked, sample, number](Program& p, Stopwatch& watch) {
                markSows(p, sample.sau, 1);
                p.koben().Buchungsart_Nr = number;
                p.when(angaben(booked.kind).screen, [&](Form&) { watch.stop(); });
                p.open("PE_Bewegungsdaten", [&](Form& frame) {
                    watch.start();
                    control<Button>(frame, "neu").click();
                });
                return 1;
            },
            [&booked](SqliteFile& file, Stopwatch& watch) {
                watch.measure([&] {
                    for (const auto& [table, field] : booked.choices) file.read(sqlfloor::distinctValues(table, field));
                    file.read("SELECT Inhalt FROM Stammdaten_Bemerkung");
                    if (booked.kind == Buchungsart::Verschiebung)
                        file.read("SELECT DISTINCT Nummer FROM Sauen WHERE Art = 'Sau'");
                    if (booked.kind == Buchungsart::Absetzung)
                        file.read("SELECT * FROM Stammdaten_Stallnummer ORDER BY Inhalt");
                    if (booked.kind == Buchungsart::Verluste || booked.kind == Buchungsart::Ferkelverkauf)
                        file.read(std::string("SELECT Nummer, Stallnr, Tätowierung, Geburtsdatum, ID FROM Sauen WHERE "
                                              "Abgangsdatum IS NULL AND Art = 'Ferkel' ORDER BY ") +
                                  (booked.kind == Buchungsart::Verluste ? "Stallnr, Nummer"
                                                                        : "Geburtsdatum, Stallnr, Nummer"));
                });
                return 1;
            }};
}

Row save(const Sample& sample, int number, int count) {
    const Kind& booked = kinds()[static_cast<size_t>(number)];
    return {QStringLiteral("%1 saved for %2").arg(QString::fromUtf8(booked.name)).arg(count), daily,
            [&booked, sample, number, count](Program& p, Stopwatch& watch) {
                markSows(p, sample.sau, count);
                p.koben().Buchungsart_Nr = number;
                p.when(angaben(booked.kind).screen, [&](Form& entry) {
                    fillIn(entry, booked, sample.partner);
                    watch.start();
                    control<Button>(entry, "ok", 0).click();
                });
                qint64 rows = 0;
                p.open("PE_Bewegungsdaten", [&](Form& frame) {
                    const Grid& bookings = control<Grid>(frame, "li");
                    control<Button>(frame, "neu").click();
                    look(bookings);
                    watch.stop();
                    rows = bookings.rowCount();
                    control<Button>(frame, "cmdschließen").click();
                });
                return rows;
            },
            [&booked, sample, count](SqliteFile& file, Stopwatch& watch) {
                std::vector<qint64> ids = {sample.sau};
                if (count > 1)
                    for (const qint64 id : file.numbers(sauen))
                        if (id != sample.sau && static_cast<int>(ids.size()) < count) ids.push_back(id);
                if (booked.kind == Buchungsart::Verschiebung)
                    ids.push_back(file.numbers("SELECT ID FROM Sauen WHERE Abgangsdatum IS NULL AND Nummer = '" +
                                               sample.partner.toStdString() + "'")
                                      .front());
                qint64 rows = 0;
                watch.measure([&] {
                    file.execute("BEGIN IMMEDIATE");
                    file.each(std::string("INSERT INTO ") + angaben(booked.kind).table + " (Datum, Kennung, " +
                                  booked.fields + ") VALUES (" + sqlfloor::iso(sample.today) + ", ?1, " +
                                  booked.values + ")",
                              ids);
                    file.execute("COMMIT");
                    rows = file.read(bookingsOf(booked, sample.sau));
                });
                return rows;
            }};
}

}  // namespace

std::vector<Row> Rows_Buchung(const Sample& sample) {
    std::vector<Row> rows = {openFrame(sample, 1), openFrame(sample, Together)};
    const int last = static_cast<int>(kinds().size());
    for (int kind = 0; kind < last; ++kind) rows.push_back(openEntry(sample, kind));
    for (const int count : {1, Together})
        for (int kind = 0; kind < last; ++kind)
            if (count == 1 || kinds()[static_cast<size_t>(kind)].kind != Buchungsart::Verschiebung)
                rows.push_back(save(sample, kind, count));
    for (const int count : {1, Together}) rows.push_back(withoutJournal(save(sample, 0, count)));
    return rows;
}

}  // namespace koben

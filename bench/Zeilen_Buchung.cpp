// The booking frame and its eight entry screens: opened, and saved for one animal and for many.
#include "bench/Boden.h"
#include "bench/Programm.h"
#include "core/Buchungen.h"

namespace koben {
namespace {

/// An input that the user fills, and its text; the rest keeps its defaults.
struct Eingabe {
    const char* control;
    int index;
    const char* text;
};

/// A kind of booking as the floor writes it: fields and values beside the date and the animal, which is ?1.
struct Art {
    const char* name;
    Buchungsart kind;
    std::vector<Eingabe> inputs;
    const char* fields;
    const char* values;
    std::vector<std::pair<const char*, const char*>> choices;  ///< lists of choice, as table and field
};

const std::vector<Art>& arten() {
    static const std::vector<Art> result = {
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
void markieren(Programm& p, qint64 sow, int count) {
    p.waehlen(sow);
    Grid& list = p.liste();
    std::vector<int> rows = list.markedRows();
    const int kind = list.columnOf(u"Art");
    for (int row = 1; row <= list.rowCount() && static_cast<int>(rows.size()) < count; ++row)
        if (row != list.row() && list.cell(row, kind) == u"Sau") rows.push_back(row);
    list.mark(rows);
}

std::string bookingsOf(const Art& art, qint64 sow) {
    return std::string("SELECT * FROM ") + angaben(art.kind).table + " WHERE Kennung = " + std::to_string(sow) +
           " ORDER BY Datum";
}

Zeile Rahmen_oeffnen(const Probe& probe, int count) {
    return {QStringLiteral("booking frame opens, %1 marked").arg(count), taeglich,
            [sow = probe.sau, count](Programm& p, Uhr& uhr) {
                markieren(p, sow, count);
                p.koben().Buchungsart_Nr = 0;
                qint64 rows = 0;
                uhr.los();
                p.oeffnen("PE_Bewegungsdaten", [&](Form& frame) {
                    anschauen(steuer<Grid>(frame, "schweinli"));
                    anschauen(steuer<Grid>(frame, "li"));
                    uhr.halt();
                    rows = steuer<Grid>(frame, "li").rowCount();
                });
                return rows;
            },
            [sow = probe.sau](Datei& datei, Uhr& uhr) {
                qint64 rows = 0;
                uhr.messen([&] {
                    rows = datei.lesen(bookingsOf(arten().front(), sow));
                    datei.lesen("SELECT * FROM Stammdaten_Stallnummer ORDER BY Inhalt");
                });
                return rows;
            }};
}

void ausfuellen(Form& entry, const Art& art, const QString& partner) {
    for (const Eingabe& input : art.inputs) {
        const QString text = *input.text ? QString::fromUtf8(input.text) : partner;
        TextBox& box = steuer<TextBox>(entry, input.control, input.index);
        if (auto* list = dynamic_cast<ComboBox*>(&box))
            list->setText(text);
        else
            box.setText(text);
    }
}

Zeile Maske_oeffnen(const Probe& probe, int kind) {
    const Art& art = arten()[static_cast<size_t>(kind)];
    return {QStringLiteral("entry screen opens: %1").arg(QString::fromUtf8(art.name)), taeglich,
            [&art, probe, kind](Programm& p, Uhr& uhr) {
                markieren(p, probe.sau, 1);
                p.koben().Buchungsart_Nr = kind;
                p.wenn(angaben(art.kind).screen, [&](Form&) { uhr.halt(); });
                p.oeffnen("PE_Bewegungsdaten", [&](Form& frame) {
                    uhr.los();
                    steuer<Button>(frame, "neu").click();
                });
                return 1;
            },
            [&art](Datei& datei, Uhr& uhr) {
                uhr.messen([&] {
                    for (const auto& [table, field] : art.choices) datei.lesen(boden::verschiedene(table, field));
                    datei.lesen("SELECT Inhalt FROM Stammdaten_Bemerkung");
                    if (art.kind == Buchungsart::Verschiebung)
                        datei.lesen("SELECT DISTINCT Nummer FROM Sauen WHERE Art = 'Sau'");
                    if (art.kind == Buchungsart::Absetzung)
                        datei.lesen("SELECT * FROM Stammdaten_Stallnummer ORDER BY Inhalt");
                    if (art.kind == Buchungsart::Verluste || art.kind == Buchungsart::Ferkelverkauf)
                        datei.lesen(
                            std::string("SELECT Nummer, Stallnr, Tätowierung, Geburtsdatum, ID FROM Sauen WHERE "
                                        "Abgangsdatum IS NULL AND Art = 'Ferkel' ORDER BY ") +
                            (art.kind == Buchungsart::Verluste ? "Stallnr, Nummer" : "Geburtsdatum, Stallnr, Nummer"));
                });
                return 1;
            }};
}

Zeile speichern(const Probe& probe, int kind, int count) {
    const Art& art = arten()[static_cast<size_t>(kind)];
    return {QStringLiteral("%1 saved for %2").arg(QString::fromUtf8(art.name)).arg(count), taeglich,
            [&art, probe, kind, count](Programm& p, Uhr& uhr) {
                markieren(p, probe.sau, count);
                p.koben().Buchungsart_Nr = kind;
                p.wenn(angaben(art.kind).screen, [&](Form& entry) {
                    ausfuellen(entry, art, probe.partner);
                    uhr.los();
                    steuer<Button>(entry, "ok", 0).click();
                });
                qint64 rows = 0;
                p.oeffnen("PE_Bewegungsdaten", [&](Form& frame) {
                    const Grid& bookings = steuer<Grid>(frame, "li");
                    steuer<Button>(frame, "neu").click();
                    anschauen(bookings);
                    uhr.halt();
                    rows = bookings.rowCount();
                    steuer<Button>(frame, "cmdschließen").click();
                });
                return rows;
            },
            [&art, probe, count](Datei& datei, Uhr& uhr) {
                std::vector<qint64> ids = {probe.sau};
                if (count > 1)
                    for (const qint64 id : datei.zahlen(sauen))
                        if (id != probe.sau && static_cast<int>(ids.size()) < count) ids.push_back(id);
                if (art.kind == Buchungsart::Verschiebung)
                    ids.push_back(datei
                                      .zahlen("SELECT ID FROM Sauen WHERE Abgangsdatum IS NULL AND Nummer = '" +
                                              probe.partner.toStdString() + "'")
                                      .front());
                qint64 rows = 0;
                uhr.messen([&] {
                    datei.ausfuehren("BEGIN IMMEDIATE");
                    datei.jede(std::string("INSERT INTO ") + angaben(art.kind).table + " (Datum, Kennung, " +
                                   art.fields + ") VALUES (" + boden::iso(probe.heute) + ", ?1, " + art.values + ")",
                               ids);
                    datei.ausfuehren("COMMIT");
                    rows = datei.lesen(bookingsOf(art, probe.sau));
                });
                return rows;
            }};
}

}  // namespace

std::vector<Zeile> Zeilen_Buchung(const Probe& probe) {
    std::vector<Zeile> rows = {Rahmen_oeffnen(probe, 1), Rahmen_oeffnen(probe, Sammelzahl)};
    const int kinds = static_cast<int>(arten().size());
    for (int kind = 0; kind < kinds; ++kind) rows.push_back(Maske_oeffnen(probe, kind));
    for (const int count : {1, Sammelzahl})
        for (int kind = 0; kind < kinds; ++kind)
            if (count == 1 || arten()[static_cast<size_t>(kind)].kind != Buchungsart::Verschiebung)
                rows.push_back(speichern(probe, kind, count));
    return rows;
}

}  // namespace koben

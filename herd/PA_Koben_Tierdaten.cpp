// The panel: all data and bookings of the selected animal as text.
#include <QDir>

#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"
#include "herd/PA_Koben.h"

namespace koben {

namespace {

/// Line label and list column; amounts and weights have two decimals.
struct Fact {
    const char* label;
    const char* field;
    bool amount = false;
};
const Fact Facts[] = {{"Art:                 ", "Art"},
                      {"Nummer:              ", "Nummer"},
                      {"Gruppe:              ", "Gruppe"},
                      {"Stallnr:             ", "Stallnr"},
                      {"Boxdatum:            ", "BoxDatum"},
                      {"Ohrmarke:            ", "Ohrmarke"},
                      {"Tätowierung:         ", "Tätowierung"},
                      {"Geburtsdatum:        ", "Geburtsdatum"},
                      {"Anz. Belegungen:     ", "Anz_Belegungen"},
                      {"Anz. Ferkelungen:    ", "Anz_Ferkelungen"},
                      {"Anz. Ferkel Gesamt:  ", "Anz_Ferkel_Gesamt"},
                      {"Anz. Ferkel Lebend:  ", "Anz_Ferkel_Lebend"},
                      {"Rasse:               ", "Rasse"},
                      {"Belegungsart:        ", "Belegungsart"},
                      {"Infos:               ", "Infos"},
                      {"Nächste Belegung:    ", "N_Belegung"},
                      {"Nächste Ferkelung:   ", "N_Ferkelung"},
                      {"Letzte Belegung:     ", "L_Belegung"},
                      {"Letzte Ferkelung:    ", "L_Ferkelung"},
                      {"Letzte Trächtigkeit: ", "L_Trächtigkeit"},
                      {"Letzte Absetzung:    ", "L_Absetzung"},
                      {"Mechanische Amme:    ", "Mechanische_Amme"},
                      {"Zugangsdatum:        ", "Zugangsdatum"},
                      {"Zugangsgewicht (kg): ", "Zugangsgewicht_kg", true},
                      {"Einkaufspreis:       ", "Einkaufspreis", true},
                      {"Zugangsgrund:        ", "Zugangsgrund"},
                      {"Lieferant:           ", "Lieferant"},
                      {"Abgangsdatum:        ", "Abgangsdatum"},
                      {"Abgangsgewicht (kg): ", "Abgangsgewicht_kg", true},
                      {"Verkaufspreis:       ", "Verkaufspreis", true},
                      {"Abgangsgrund:        ", "Abgangsgrund"},
                      {"Abnehmer:            ", "Abnehmer"}};

/// A section of bookings: the header tells the columns' places, `fields` what stands under each word of it.
/// A field "Kommentar/Bemerkung" joins both; one with "*" is an amount or weight with two decimals.
struct Section {
    const char* title;
    const char* query;
    const char* header;
    std::vector<const char*> fields;
};
const Section Sections[] = {{"Belegungen",
                             "select * from Belegung where Kennung = ",
                             "DATUM      EBERNR          DECKANZ ART BELEGUNGSSTATION      KOSTEN  KOMMENTAR/BEMERKUNG",
                             {"Datum", "Ebernr", "Deckanzahl", "Belegungart", "Belegungsstation", "*Kosten", "/"}},
                            {"Trächtigkeitsprüfungen",
                             "select * from Trächtigkeit where Kennung = ",
                             "DATUM      TRÄCHTIG  KOSTEN  KOMMENTAR/BEMERKUNG",
                             {"Datum", "Trächtig", "*Kosten", "/"}},
                            {"Ferkelungen",
                             "select * from Ferkelung where Kennung = ",
                             "DATUM      LNr LNrJ GESAMT LEBENDIG TOT GEWICHT  KOSTEN  KOMMENTAR/BEMERKUNG",
                             {"Datum", "LNr", "LNrJahr", "Ferkel_Gesamt", "Ferkel_Lebendig", "Ferkel_Tot",
                              "*Stück_Gewicht_kg", "*Kosten", "/"}},
                            {"Verluste",
                             "select * from Verluste where Kennung = ",
                             "DATUM      ANZAHL GRUND                 KOSTEN  KOMMENTAR/BEMERKUNG",
                             {"Datum", "Anzahl_Ferkel", "Grund", "*Kosten", "/"}},
                            {"Verschiebung",
                             "select * from Verschiebung where Kennung = ",
                             "DATUM      ANZAHL ZU-SAUNR        KOMMENTAR/BEMERKUNG",
                             {"Datum", "Anzahl_Ferkel", "Zu_Saunr", "/"}},
                            {"Absetzung",
                             "select * from Absetzung where Kennung = ",
                             "DATUM      ANZAHL GEWICHT  KOMMENTAR/BEMERKUNG",
                             {"Datum", "Anzahl_Ferkel", "*Stück_Gewicht_kg", "/"}},
                            {"Behandlung",
                             "select * from Behandlung where Kennung = ",
                             "DATUM      BEHANDLUNGSART       MEDIKAMENT             MENGE EH VERABREICHUNGSART    WTG "
                             "W-DATUM    TIERARZT      "
                             "       BELEG-NR              KOSTEN  KOMMENTAR/BEMERKUNG",
                             {"Datum", "Behandlungsart", "Medikament", "*Menge", "Einheit", "Verabreichungsart",
                              "Wartezeit_Tage", "Wartezeit_Datum", "Tierarzt", "Beleg_Nr", "*Kosten", "/"}}};

/// Where the words of a header begin.
std::vector<qsizetype> columnStarts(const QString& header) {
    std::vector<qsizetype> starts;
    for (qsizetype i = 0; i < header.size(); ++i)
        if (header[i] != u' ' && (i == 0 || header[i - 1] == u' ')) starts.push_back(i);
    return starts;
}

QString bookingCell(const Table& bookings, int row, QString field) {
    if (field == u"/") {
        const QString comment = Hochkomma_ersetzen(bookings.value(row, bookings.columnOf(u"Kommentar")));
        const QString remark = Hochkomma_ersetzen(bookings.value(row, bookings.columnOf(u"Bemerkung")));
        return comment.isEmpty() || remark.isEmpty() ? comment + remark : comment + u'/' + remark;
    }
    const bool amount = field.startsWith(u'*');
    if (amount) field.remove(0, 1);
    const QString text = bookings.text(row, bookings.columnOf(field));
    return amount ? Zahl_formatieren(QString(text), 2) : text;
}

}  // namespace

void PA_Koben::Tierdaten_ausgeben() {
    if (datali.row() == 0) {
        koben.message(
            QStringLiteral("Bitte markieren Sie erst das Tier, von dem Sie die verschiedenen Daten anzeigen "
                           "möchten oder machen Sie einen Doppelklick auf das entsprechende Tier."));
        return;
    }
    Text1.setText(Tierdaten_text());
}

QString PA_Koben::Tierdaten_text() {
    const int row = datali.row();
    QString text = QStringLiteral("TIERDATEN") + Crlf;
    for (const Fact& fact : Facts) {
        const QString value = datali.cell(row, QString::fromUtf8(fact.field));
        text += QString::fromUtf8(fact.label) + (fact.amount ? Zahl_formatieren(QString(value), 2) : value) + Crlf;
    }
    return text + Buchungen_text(datali.value(row, u"ID").toInt());
}

QString PA_Koben::Buchungen_text(qint64 id) {
    QString text;
    for (const Section& section : Sections) {
        const Table bookings =
            m_db.table(QString::fromUtf8(section.query) + QString::number(id) + QStringLiteral(" order by Datum DESC"));
        if (bookings.rowCount() == 0) continue;
        const QString title = QString::fromUtf8(section.title), header = QString::fromUtf8(section.header);
        text += Crlf + title + Crlf + QString(title.size(), u'=') + Crlf + header + Crlf;
        const auto starts = columnStarts(header);
        for (int row = 0; row < bookings.rowCount(); ++row) {
            QString line;
            for (size_t c = 0; c < section.fields.size(); ++c) {
                if (c > 0) line = line.leftJustified(starts[c]);
                if (c > 0 && !line.endsWith(u' ')) line += u' ';
                line += bookingCell(bookings, row, QString::fromUtf8(section.fields[c]));
            }
            while (line.endsWith(u' ')) line.chop(1);
            text += line + Crlf;
        }
    }
    return text;
}

void PA_Koben::comdrucken_Click() {
    if (datali.row() == 0) {
        koben.message(
            QStringLiteral("Sie müssen zuerst ein Tier auswählen, bevor Sie die Daten listen/drucken können."));
        return;
    }
    Tierdaten_ausgeben();
    koben.Ausgabedatei = koben.Datenordner + QStringLiteral("LISTE.TXT");
    if (!Textdatei_schreiben(koben.Ausgabedatei, Text1.text())) {
        koben.message(QStringLiteral("Die Datei \"%1\" kann nicht geschrieben werden. Bitte prüfen Sie, ob auf dem "
                                     "Datenträger noch Platz ist und ob Sie im Datenordner schreiben dürfen.")
                          .arg(QDir::toNativeSeparators(koben.Ausgabedatei)));
        return;
    }
    koben.open(QStringLiteral("PA_Textausgabe"));
}

}  // namespace koben

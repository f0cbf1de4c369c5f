// Writes a herd into a database file: animals and bookings by prepared inserts in the order of their days, then the
// derived data by the program's own routines.
#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include "core/Buchungen.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "tools/herdengenerator/Output.h"
#include "tools/herdengenerator/Words.h"

namespace koben {
namespace {

constexpr int rowsPerTransaction = 200000;

Value tag(int julianDay) { return julianDay == 0 ? Value::null() : Value(DateTime{julianDay, 0}); }
Value cent(qint64 amount) { return Money{amount * 100}; }
Value kilo(int tenths) { return static_cast<float>(tenths) / 10.0F; }
Value text(const char* word) { return QString::fromUtf8(word); }

/// Inserts rows of one table, a transaction for every so many.
class Inserter {
public:
    Inserter(const Database& db, const QString& table, const QString& fields) : m_db(db) {
        QStringList marks(fields.split(u',').size(), QStringLiteral("?"));
        m_statement =
            db.prepare(QStringLiteral("insert into %1 (%2) values (%3)").arg(table, fields, marks.join(u',')));
        m_transaction.emplace(m_db);
    }
    Inserter(const Database& db, Buchungsart art, const QString& fields)
        : Inserter(db, QString::fromUtf8(angaben(art).table), fields) {}
    void row(std::vector<Value> values) {
        m_statement->run(values);
        if (++m_rows % rowsPerTransaction != 0) return;
        m_transaction->commit();
        m_transaction.emplace(m_db);
    }
    void finish() { m_transaction->commit(); }

private:
    const Database& m_db;
    std::optional<Statement> m_statement;
    std::optional<Transaction> m_transaction;
    int m_rows = 0;
};

class Output {
public:
    Output(const Herde& herde, const Database& db) : m_herde(herde), m_db(db) {}
    void write() {
        stammdaten();
        sauen();
        belegungen();
        kontrollen();
        wuerfe();
        verluste();
        verschiebungen();
        behandlungen();
        verkaeufe();
        termine();
    }

private:
    qint64 id(const Buchung& b) const { return m_ids[static_cast<size_t>(b.sau)]; }
    const QString& nummer(int sau) const { return m_herde.tiere[static_cast<size_t>(sau)].nummer; }

    void stammdaten() {
        Transaction transaction(m_db);
        const auto enter = [&](const char* table, const auto& words) {
            for (const char* word : words) Stichwort_eintragen(m_db, QString::fromUtf8(word), QString::fromUtf8(table));
        };
        enter("Stammdaten_Rasse", rassen);
        enter("Stammdaten_Rasse", eberrassen);
        enter("Stammdaten_Kunde", abnehmer);
        enter("Stammdaten_Kunde", lieferanten);
        enter("Stammdaten_Abgangsgrund", abgangsgruende);
        enter("Stammdaten_Zugangsgrund", std::array{"Zukauf", "Eigene Zucht"});
        for (const char* word : bemerkungen)
            if (*word) Stichwort_eintragen(m_db, QString::fromUtf8(word), QStringLiteral("Stammdaten_Bemerkung"));
        for (int stall = 1; stall <= 24; ++stall)
            Stichwort_eintragen(m_db, QStringLiteral("W%1").arg(stall, 2, 10, QChar(u'0')),
                                QStringLiteral("Stammdaten_Stallnummer"));
        Statement medikament = m_db.prepare(QStringLiteral(
            "insert into Medikamente (Medikament, Menge, Einheit, Wartezeit_Tage, Kosten_je_Gabe, Behandlungsart, "
            "Verabreichungsart) values (?, ?, ?, ?, ?, ?, ?)"));
        for (const Mittel& m : mittel)
            medikament.run({text(m.name), static_cast<float>(m.menge), text(m.einheit), m.wartezeit, cent(m.cent),
                            text(m.behandlung), text(m.weg)});
        transaction.commit();
    }

    /// Sows, boars and piglets in order of arrival, so that their IDs grow with the years.
    void sauen() {
        Inserter ein(
            m_db, QStringLiteral("Sauen"),
            QStringLiteral("Art,Nummer,Gruppe,Stallnr,BoxDatum,Ohrmarke,Tätowierung,Geburtsdatum,Anz_Belegungen,"
                           "Anz_Ferkelungen,Anz_Ferkel_Gesamt,Anz_Ferkel_Lebend,Rasse,Status,Statusabfrage,"
                           "Belegungsart,Mechanische_Amme,Zugangsdatum,Zugangsgewicht_kg,Einkaufspreis,Zugangsgrund,"
                           "Lieferant,Abgangsdatum,Abgangsgewicht_kg,Verkaufspreis,Abgangsgrund,Abnehmer,"
                           "Selektiert,Infos,Aenderung"));
        m_ids.resize(m_herde.tiere.size());
        qint64 naechste = 0;
        size_t naechstesTier = 0;
        const auto tiereBis = [&](int zugang) {
            while (naechstesTier < m_herde.tiere.size() && m_herde.tiere[naechstesTier].zugang <= zugang) {
                m_ids[naechstesTier] = ++naechste;
                tier(ein, m_herde.tiere[naechstesTier++]);
            }
        };
        for (const Ferkel& ferkel : m_herde.ferkel) {
            tiereBis(m_herde.wuerfe[static_cast<size_t>(ferkel.wurf)].absetzung);
            ++naechste;
            tier(ein, m_herde.alsTier(ferkel));
        }
        tiereBis(std::numeric_limits<int>::max());
        ein.finish();
        const qint64 letzte = m_db.table(QStringLiteral("select max(ID) as letzte from Sauen")).integer(0, 0);
        if (letzte != naechste)
            throw DatabaseError(DatabaseError::Kind::State, QStringLiteral("Die Zählung der Tiere stimmt nicht."));
    }

    /// Derived fields are those of an animal without bookings, so that the recomputation touches the others only.
    static void tier(Inserter& ein, const Tier& t) {
        static const QString leer = QStringLiteral("");
        static const QString nein = QStringLiteral("N");
        ein.row({text(t.art),
                 t.nummer,
                 t.gruppe,
                 t.stallnr,
                 tag(t.boxdatum),
                 t.ohrmarke,
                 t.taetowierung,
                 tag(t.geburt),
                 0,
                 0,
                 Value::null(),
                 Value::null(),
                 t.rasse,
                 leer,
                 t.statusabfrage,
                 t.art[0] == 'S' ? QStringLiteral("K") : leer,
                 nein,
                 tag(t.zugang),
                 kilo(t.zugangsgewicht),
                 cent(t.einkauf),
                 t.zugangsgrund,
                 t.lieferant,
                 tag(t.abgang),
                 kilo(t.abgangsgewicht),
                 cent(t.verkauf),
                 t.abgangsgrund,
                 t.abnehmer,
                 leer,
                 t.infos,
                 leer});
    }

    void belegungen() {
        Inserter ein(
            m_db, Buchungsart::Belegung,
            QStringLiteral("Datum,Ebernr,Deckanzahl,Belegungart,Belegungsstation,Kosten,Kommentar,Bemerkung,Kennung"));
        for (const Belegung& b : m_herde.belegungen) {
            const bool eigener = b.eber >= 0;
            ein.row({tag(b.tag), eigener ? Value(nummer(b.eber)) : text(stationseber[-1 - b.eber]), int{b.anzahl},
                     text(eigener ? "N" : "K"), text(stationen[b.station]), cent(eigener ? 0 : 480),
                     text(kommentare[b.kommentar]), text(bemerkungen[b.bemerkung]), id(b)});
        }
        ein.finish();
    }

    void kontrollen() {
        Inserter ein(m_db, Buchungsart::Trächtigkeit,
                     QStringLiteral("Datum,Trächtig,Kosten,Kommentar,Bemerkung,Kennung"));
        for (const Kontrolle& k : m_herde.kontrollen)
            ein.row(
                {tag(k.tag), text(k.traechtig ? "J" : "N"), cent(0), text(kommentare[k.kommentar]), text(""), id(k)});
        ein.finish();
    }

    void wuerfe() {
        Inserter ein(
            m_db, Buchungsart::Ferkelung,
            QStringLiteral("Datum,LNr,LNrJahr,Ferkel_Gesamt,Ferkel_Lebendig,Ferkel_Tot,Stück_Gewicht_kg,Kosten,"
                           "Kommentar,Bemerkung,Kennung"));
        for (const Wurfbuchung& w : m_herde.wuerfe)
            ein.row({tag(w.tag), int{w.nummer}, int{w.imJahr}, w.lebend + w.tot, int{w.lebend}, int{w.tot},
                     kilo(w.gewicht), cent(0), text(""), text(bemerkungen[w.bemerkung]), id(w)});
        ein.finish();
        std::vector<const Wurfbuchung*> abgesetzt;
        for (const Wurfbuchung& w : m_herde.wuerfe)
            if (w.absetzung > 0 && !w.absetzungFehlt) abgesetzt.push_back(&w);
        std::stable_sort(abgesetzt.begin(), abgesetzt.end(),
                         [](const Wurfbuchung* a, const Wurfbuchung* b) { return a->absetzung < b->absetzung; });
        Inserter absetzung(m_db, Buchungsart::Absetzung,
                           QStringLiteral("Datum,Anzahl_Ferkel,Stück_Gewicht_kg,Kommentar,Bemerkung,Kennung"));
        for (const Wurfbuchung* w : abgesetzt)
            absetzung.row({tag(w->absetzung), int{w->abgesetzt}, kilo(w->absetzgewicht), text(""), text(""), id(*w)});
        absetzung.finish();
    }

    void verluste() {
        Inserter ein(m_db, Buchungsart::Verluste,
                     QStringLiteral("Datum,Anzahl_Ferkel,Grund,Kosten,Muttersau,Kommentar,Bemerkung,Kennung"));
        for (const Verlust& v : m_herde.verluste)
            ein.row({tag(v.tag), int{v.anzahl}, text(verlustgruende[v.grund]), cent(0), nummer(v.sau), text(""),
                     text(""), id(v)});
        ein.finish();
    }

    void verschiebungen() {
        Inserter ein(m_db, Buchungsart::Verschiebung,
                     QStringLiteral("Datum,Anzahl_Ferkel,Zu_Saunr,Kommentar,Bemerkung,Kennung"));
        for (const Verschiebung& v : m_herde.verschiebungen)
            ein.row({tag(v.tag), int{v.anzahl}, nummer(v.zu), text(""), text(""), id(v)});
        ein.finish();
    }

    void behandlungen() {
        Inserter ein(m_db, Buchungsart::Behandlung,
                     QStringLiteral("Datum,Behandlungsart,Medikament,Menge,Einheit,Verabreichungsart,Wartezeit_Tage,"
                                    "Wartezeit_Datum,Tierarzt,Beleg_Nr,Kosten,Kommentar,Bemerkung,Kennung"));
        for (const Behandlung& b : m_herde.behandlungen) {
            const Mittel& m = mittel[b.mittel];
            ein.row({tag(b.tag), text(m.behandlung), text(m.name), static_cast<float>(m.menge), text(m.einheit),
                     text(m.weg), m.wartezeit, tag(m.wartezeit > 0 ? b.tag + m.wartezeit : 0),
                     text(tieraerzte[b.tierarzt]), QString::number(b.beleg), cent(m.cent), text(""), text(""), id(b)});
        }
        ein.finish();
    }

    void verkaeufe() {
        Inserter ein(
            m_db, Buchungsart::Ferkelverkauf,
            QStringLiteral("Datum,Anzahl_Einkauf,Anzahl_Verkauf,Preis_je_Stück,Einnahmen,Ausgaben,Stück_Gewicht_kg,"
                           "Gesamtgewicht_kg,Kunde,Muttersau,Kommentar,Kennung"));
        for (const Verkauf& v : m_herde.verkaeufe)
            ein.row({tag(v.tag), 0, int{v.anzahl}, cent(v.preis), cent(qint64{v.preis} * v.anzahl), cent(0),
                     kilo(v.gewicht), kilo(v.gewicht * v.anzahl), text(abnehmer[v.kunde]), nummer(v.sau), text(""),
                     id(v)});
        ein.finish();
    }

    void termine() {
        Inserter ein(m_db, QStringLiteral("Termine"), QStringLiteral("Terminart,Datum,Wiederholung"));
        const int today = static_cast<int>(m_herde.vorgaben.ende.toJulianDay());
        ein.row({text("QS-Audit"), tag(today + 9), text("")});
        ein.row({text("Tierarzt Bestand"), tag(today + 3), text("")});
        ein.row({text("Futterlieferung"), tag(today + 6), text("")});
        ein.finish();
    }

    const Herde& m_herde;
    const Database& m_db;
    std::vector<qint64> m_ids;  // of Herde::tiere
};

}  // namespace

void writeDatabase(const Herde& herde, const QString& path) {
    Workspace workspace;
    Datenbank_anlegen(workspace, path);
    Database db = workspace.open(path);
    Output(herde, db).write();
    Variablen v;
    v.Konfig_Zahl[Zahl::TageBelegungFerkelung] = 116;
    v.Konfig_Zahl[Zahl::TageFerkelungBelegung] = 36;
    Werte_berechnen(db, v);
    statussetzen(db);
}

}  // namespace koben

#include "exchange/S_Importtabelle.h"

#include <QSet>
#include <optional>

#include "core/PZ_Koben_Subs.h"
#include "store/Collation.h"

namespace koben {
namespace {

enum Seite { Vorbereitung, Datei, Zuordnung, Import };
enum Ziel { Saunummer = 1, Ohrmarke = 4 };
enum class Inhalt { Art, Text, Datum };

struct Zielfeld {
    Inhalt inhalt;
    int breite = 0;  // characters
};

/// In the order of Text2 and kom.
constexpr Zielfeld zielfelder[Importdatei::spalten] = {
    {Inhalt::Art},      {Inhalt::Text, 15}, {Inhalt::Text, 20}, {Inhalt::Text, 10}, {Inhalt::Text, 20},
    {Inhalt::Text, 20}, {Inhalt::Datum},    {Inhalt::Text, 20}, {Inhalt::Datum},    {Inhalt::Text, 20},
    {Inhalt::Datum},    {Inhalt::Text, 20}, {Inhalt::Text, 20}};

/// The 13 fields as parameters, then the fixed values; the dates that are not named stay without a value.
const QString einfuegen = QStringLiteral(
    "insert into Sauen (Art, Nummer, Gruppe, Stallnr, Ohrmarke, Tätowierung, Geburtsdatum, Rasse, Zugangsdatum, "
    "Lieferant, Abgangsdatum, Abgangsgrund, Abnehmer, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, "
    "Anz_Ferkel_Lebend, Status, Statusabfrage, Belegungsart, Mechanische_Amme, Zugangsgewicht_kg, Einkaufspreis, "
    "Zugangsgrund, Abgangsgewicht_kg, Verkaufspreis, Selektiert, Infos, Aenderung) "
    "values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, 0, 0, 0, '', 'N', '', 'N', 0, 0, '', 0, 0, '', '', '')");

constexpr int vorschauZeichen = 32000;
constexpr int zeilenJeAnzeige = 200;

const char* const vorbereitungen =
    "Folgende Vorbereitungen sind notwendig, um den Datemimport auszuführen:\r\n\r\n"
    "1. Stellen Sie Ihre Tiere in einer Tabellenkalkulation oder Datenbank als Tabelle zusammen: in der ersten Zeile "
    "die Überschriften, ab der zweiten Zeile je Zeile ein Tier. Es werden bis zu 13 Spalten übernommen.\r\n"
    "2. Speichern Sie die Tabelle als CSV-Datei, in der die Spalten mit Semikolon ; getrennt sind. Die Datei sieht "
    "dann zum Beispiel so aus:\r\n\r\n"
    "Art;Saunummer;Stallnummer;Ohrmarke;Geburtsdatum; ...\r\n"
    "Sau;123456789;Stall23;DE123457;18.04.2019; ...\r\n\r\n"
    "3. Schreiben Sie Datumsangaben mit Tag, Monat und Jahr, zum Beispiel 18.04.2019. Andere Angaben werden nicht als "
    "Datum erkannt und bleiben leer.\r\n"
    "4. Erstellen Sie zuerst eine Datensicherung, wenn bereits Tiere eingetragen sind.";

const char* const seitentexte[] = {
    "",
    "Öffnen Sie hier die CSV-Datei. Unten sehen Sie ihre ersten Zeilen und können prüfen, ob die Datei die richtige "
    "ist und die Umlaute stimmen. Beim Öffnen wird noch nichts gespeichert.",
    "Wählen Sie zu jedem Datenfeld die Überschrift der Spalte, aus der es gelesen werden soll. Gleichlautende "
    "Überschriften sind schon zugeordnet. Felder ohne Zuordnung bleiben leer; Pflicht ist nur die Saunummer. Ordnen "
    "Sie möglichst auch die Art zu, sonst gehören die Tiere zu keiner Tierart.",
    "Mit \"Daten jetzt importieren\" werden alle Zeilen der Datei als Tiere eingetragen, entweder vollständig oder "
    "gar nicht. Leere Zeilen werden übergangen. Danach wird KOBEN 2.0 beendet."};

QString gekuerzt(const QString& text, int breite) {
    QString teil = text.left(breite);
    if (!teil.isEmpty() && teil.back().isHighSurrogate()) teil.chop(1);
    return teil;
}

Value alsFeld(const Zielfeld& ziel, const QString& text) {
    switch (ziel.inhalt) {
        case Inhalt::Art:
            return text == u"Mast" || text == u"Eber" || text == u"Ferkel" ? Value(text) : Value(u"Sau");
        case Inhalt::Datum:
            return Ist_Datum(text) ? Value(Datum_aus_Text(text)) : Value::null();
        case Inhalt::Text:
            break;
    }
    return gekuerzt(text, ziel.breite);
}

}  // namespace

/// The ear tags of the herd, equal as the database finds texts equal.
class S_Importtabelle::Ohrmarken {
public:
    explicit Ohrmarken(const Database& db) {
        Statement alle = db.prepare(QStringLiteral("select Ohrmarke from Sauen where Ohrmarke <> ''"));
        alle.bind({});
        while (alle.next()) eintragen(Hochkomma_ersetzen(alle.text(0)));
    }
    bool enthaelt(const QString& marke) const { return m_keys.contains(sortKey(marke)); }
    void eintragen(const QString& marke) { m_keys.insert(sortKey(marke)); }

private:
    QSet<QByteArray> m_keys;
};

/// While it lives the import runs: nothing but the cancel button can be worked.
class S_Importtabelle::Sperre {
public:
    explicit Sperre(S_Importtabelle& form) : m_form(form) { m_form.Bedienung_sperren(true); }
    ~Sperre() { m_form.Bedienung_sperren(false); }
    Sperre(const Sperre&) = delete;
    Sperre& operator=(const Sperre&) = delete;

private:
    S_Importtabelle& m_form;
};

S_Importtabelle::S_Importtabelle(Koben& koben_)
    : Form(koben_, QStringLiteral("S_Importtabelle"),
           QStringLiteral("Datenimport aus Datenbanken und Tabellenkalkulationen")),
      SSTab1(*this, QStringLiteral("SSTab1"),
             {QStringLiteral("1. Vorbereitung"), QStringLiteral("2. Datei"), QStringLiteral("3. Zuordnung"),
              QStringLiteral("4. Import")}),
      Text2(*this, QStringLiteral("Text2"),
            {"Art (Sau, Eber, Mast, Ferkel)", "Saunummer", "Gruppe", "Stallnummer", "Ohrmarke", "Tätowierung",
             "Geburtsdatum", "Rasse", "Zugangsdatum", "Lieferant", "Abgangsdatum", "Abgangsgrund", "Abnehmer"}) {
    Text1.multiLine = Text1.readOnly = Text1.fixedPitch = true;
    Text1.setHint(QStringLiteral("Vorschau der Datei"));
    for (int i = 0; i < kom.count(); ++i) {
        kom[i].fixed = true;
        kom[i].setHint(QStringLiteral("Spalte für ") + Text2[i].text());
    }
    comöffnen.onClick = [this] { comöffnen_Click(); };
    comnächster2.onClick = [this] { blaettern(1); };
    comvorheriger2.onClick = [this] { blaettern(-1); };
    ok.onClick = [this] { ok_Click(); };
    abbv.onClick = [this] { abbv_Click(); };
    cancelButton = &abbv;
    helpTopic = QStringLiteral("datenimport");
}

void S_Importtabelle::Load() {
    m_db = koben.connect();
    Label1[Vorbereitung].setText(QString::fromUtf8(vorbereitungen));
    for (int seite = Datei; seite <= Import; ++seite) Label1[seite].setText(QString::fromUtf8(seitentexte[seite]));
}

void S_Importtabelle::blaettern(int richtung) { SSTab1.setFront(SSTab1.front() + richtung); }

void S_Importtabelle::comöffnen_Click() {
    const QString path = koben.screens.openFile(QStringLiteral("CSV-Dateien|*.CSV|TXT-Dateien|*.TXT|Alle Dateien|*.*"));
    if (!path.isEmpty()) DateiZeigen(path);
}

void S_Importtabelle::DateiZeigen(const QString& path) {
    koben.message(QStringLiteral(
        "Es werden jetzt einige Zeilen (max 32 kB) aus der CSV eingelesen, damit Sie überprüfen können, ob die "
        "CSV-Datei "
        "korrekt ist. In der ersten Zeile sollte die Überschrift stehen und ab der zweiten Zeile die Daten. Falls in "
        "der "
        "Datei Steuerzeichen enthalten sind, könnte dies zu einem Abbruch von KOBEN führen! Außerdem sollten Sie die "
        "folgenden Schritte nur dann ausführen, wenn es sich um eine korrekte CSV-Datei handelt (Daten mit Semikolon ; "
        "getrennt, erste Zeile Überschrift, Rest Daten)!"));
    const QChar trenner = trennerWaehlen ? trennerWaehlen(path) : QChar(u';');
    const Importdatei datei = Importdatei::lesen(path, trenner);
    if (!datei.fehler().isEmpty()) return koben.message(datei.fehler());
    m_datei = path;
    m_trenner = trenner;
    m_kopf = datei.kopf();
    Text1.setText(datei.vorschau(vorschauZeichen));
    bez.setText({});
    Spalten_zuordnen(m_kopf);
    SSTab1.setFront(Datei);
}

void S_Importtabelle::Spalten_zuordnen(const QStringList& kopf) {
    const QStringList auswahl = QStringList{QString()} + kopf;
    for (int i = 0; i < kom.count(); ++i) {
        kom[i].setItems(auswahl);
        kom[i].setCurrent(static_cast<int>(std::max<qsizetype>(auswahl.lastIndexOf(Text2[i].text()), 0)));
    }
}

/// The text for a target field, trimmed; "" where no column is assigned.
QString S_Importtabelle::Feldwert(const QStringList& felder, int ziel) const {
    const int spalte = kom[ziel].current();
    return spalte > 0 ? Hochkomma_ersetzen(felder[spalte - 1]) : QString();
}

/// What is stored in a target field; a field without a column stays empty.
Value S_Importtabelle::Zielwert(const QStringList& felder, int ziel) const {
    if (kom[ziel].current() > 0) return alsFeld(zielfelder[ziel], Feldwert(felder, ziel));
    return zielfelder[ziel].inhalt == Inhalt::Datum ? Value::null() : Value(u"");
}

void S_Importtabelle::ok_Click() {
    if (m_lauf != Lauf::Ruht) return;
    if (m_datei.isEmpty())
        return koben.message(
            QStringLiteral("Bitte wählen Sie zuerst die Datei aus, aus der Sie die Daten importieren möchten."));
    if (kom[Saunummer].current() <= 0)
        return koben.message(QStringLiteral("Die Saunummer muss zugeordnet sein. Sonst ist ein Import nicht möglich."));
    bool zusatz = false;
    if (!Zusatzimport_klaeren(zusatz)) return;
    if (!koben.yesNo(
            QStringLiteral("Sollen die Daten auf der Import-Datei %1 wirklich eingelesen werden?").arg(m_datei), true))
        return;
    Importdatei datei = Importdatei::lesen(m_datei, m_trenner);
    if (!Datei_unveraendert(datei)) return;
    const Ergebnis ergebnis = Zeilen_einlesen(datei, zusatz);
    if (ergebnis.abgebrochen) {
        bez.setText(QStringLiteral("Der Import wurde abgebrochen."));
        return koben.message(
            QStringLiteral("Der Import wurde abgebrochen. Es wurden keine Tiere in die Datenbasis übernommen."));
    }
    Abschluss(ergebnis);
}

/// False where the user or a missing ear tag ends the run; `zusatz` is set where the herd holds rows already.
bool S_Importtabelle::Zusatzimport_klaeren(bool& zusatz) {
    if (m_db.open(QStringLiteral("select top 1 ID from Sauen")).recordCount() == 0) return true;
    const QStringList frage = {
        QStringLiteral("ACHTUNG!!!"),
        QStringLiteral("Es sind bereits Sauen eingetragen. Beachten Sie bitte deshalb folgendes:"),
        QStringLiteral("Wählen Sie 'Nein' wenn der Import nicht ausgefürht werden soll."),
        QStringLiteral("Wählen Sie 'Ja' wenn der Import trotzdem ausgeführt werden soll."),
        QStringLiteral("Wenn Sie Ja auswählen, dann wird der Import nur ausgeführt, wenn in den Daten die Ohrmarke "
                       "vorhanden ist. Doppelte Ohrmarken werden dann aber ignoriert.")};
    if (!koben.yesNo(frage.join(Crlf), true)) return false;
    zusatz = true;
    if (kom[Ohrmarke].current() > 0) return true;
    koben.message(
        QStringLiteral("Die Ohrtmarke wurde nicht als einzulesendes Datenfeld ausgewählt. Dies ist bei einem "
                       "zusätzlichen Import zwingend vorgeschrieben. Der Import wird deshalb nicht ausgeführt."));
    return false;
}

/// The columns were chosen by the heads that were shown: a file that changed since then is not read.
bool S_Importtabelle::Datei_unveraendert(Importdatei& datei) {
    if (!datei.fehler().isEmpty()) {
        koben.message(datei.fehler());
        return false;
    }
    if (datei.kopf() == m_kopf) return true;
    koben.message(
        QStringLiteral("Die Überschriften der Datei haben sich geändert, seit sie geöffnet wurde. Bitte öffnen "
                       "Sie die Datei noch einmal. Es wurden keine Tiere in die Datenbasis übernommen."));
    return false;
}

/// Adds the animal of a line, unless `marken` holds its ear tag or it has none; `werte` are then what was written.
bool S_Importtabelle::Tier_eintragen(const QStringList& felder, Statement& zeile, Ohrmarken* marken,
                                     std::vector<Value>& werte) const {
    const QString marke = Feldwert(felder, Ohrmarke);
    if (marken && (marke.isEmpty() || marken->enthaelt(marke))) return false;
    for (int i = 0; i < Importdatei::spalten; ++i) werte[static_cast<size_t>(i)] = Zielwert(felder, i);
    zeile.run(werte);
    if (marken) {
        marken->eintragen(marke);
        marken->eintragen(werte[Ohrmarke].toText());
    }
    return true;
}

/// One transaction: left without its commit, by the user's cancel or by an error, nothing of it stays.
S_Importtabelle::Ergebnis S_Importtabelle::Zeilen_einlesen(Importdatei& datei, bool zusatz) {
    const WaitCursor wait(koben);
    const Sperre sperre(*this);
    Transaction transaction(m_db);
    Statement zeile = m_db.prepare(einfuegen);
    std::optional<Ohrmarken> marken;
    if (zusatz) marken.emplace(m_db);

    Ergebnis ergebnis;
    QStringList felder;
    std::vector<Value> werte(Importdatei::spalten);
    const auto anzeigen = [&] {
        bez.setText(
            QStringLiteral("%1 Datensätze erledigt (%2)").arg(ergebnis.importiert).arg(werte[Saunummer].toText()));
        koben.screens.breathe();
    };
    for (int gelesen = 1; m_lauf == Lauf::Aktiv && datei.naechste(felder); ++gelesen) {
        ++(Tier_eintragen(felder, zeile, marken ? &*marken : nullptr, werte) ? ergebnis.importiert
                                                                             : ergebnis.ignoriert);
        if (gelesen % zeilenJeAnzeige == 0) anzeigen();
    }
    if (m_lauf == Lauf::Aktiv) anzeigen();
    ergebnis.abgebrochen = m_lauf == Lauf::Abbruch;
    if (!ergebnis.abgebrochen) transaction.commit();
    return ergebnis;
}

void S_Importtabelle::Bedienung_sperren(bool gesperrt) {
    m_lauf = gesperrt ? Lauf::Aktiv : Lauf::Ruht;
    for (Control* control : controls())
        if (control != &abbv && control != &bez) control->setEnabled(!gesperrt);
}

void S_Importtabelle::Abschluss(const Ergebnis& ergebnis) {
    QStringList text = {QStringLiteral("Die Daten wurden in der Datenbasis gespeichert und werden beim nächsten "
                                       "Programmstart eingelesen."),
                        QStringLiteral("Insgesmat wurden %1 Tiere importiert").arg(ergebnis.importiert)};
    if (ergebnis.ignoriert > 0)
        text += QStringLiteral(
                    "Es konnten %1 Tiere nicht importiert werden, weil die Tiere zu einem bereits vorhandenen "
                    "Bestand dazu importiert wurden und von den Tieren keine Ohrmarke gefunden wurde oder "
                    "diese bereits im Bestand vorhanden war.")
                    .arg(ergebnis.ignoriert);
    text += QStringLiteral("KOBEN 2.0 wird nun beendet. Bitte starten Sie KOBEN 2.0 danach wieder.");
    koben.message(text.join(Crlf));
    m_db.close();
    koben.end();
}

void S_Importtabelle::abbv_Click() {
    if (m_lauf != Lauf::Ruht) {
        m_lauf = Lauf::Abbruch;
        return;
    }
    m_db.close();
    close();
}

}  // namespace koben

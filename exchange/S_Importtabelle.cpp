#include "exchange/S_Importtabelle.h"

#include <QFileInfo>
#include <QSet>
#include <optional>

#include "core/Aktionsnamen.h"
#include "core/NeuesTier.h"
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

/// The fields of an animal in the order of Text2 and kom.
const QStringList Fields = {
    QStringLiteral("Art"),          QStringLiteral("Nummer"),       QStringLiteral("Gruppe"),
    QStringLiteral("Stallnr"),      QStringLiteral("Ohrmarke"),     QStringLiteral("Tätowierung"),
    QStringLiteral("Geburtsdatum"), QStringLiteral("Rasse"),        QStringLiteral("Zugangsdatum"),
    QStringLiteral("Lieferant"),    QStringLiteral("Abgangsdatum"), QStringLiteral("Abgangsgrund"),
    QStringLiteral("Abnehmer")};

constexpr size_t MostNamed = 20;  // stretches of lines that a message names

/// "Zeile 3", "Zeilen 3, 5 bis 9 und 12"; far too many are counted instead of named. The numbers ascend.
QString lineList(const std::vector<int>& lines) {
    QStringList stretches;
    for (size_t i = 0; i < lines.size();) {
        size_t end = i;
        while (end + 1 < lines.size() && lines[end + 1] == lines[end] + 1) ++end;
        if (stretches.size() == MostNamed) {
            stretches += counted(static_cast<qint64>(lines.size() - i), "weitere", "weitere");
            break;
        }
        stretches += QString::number(lines[i]);
        if (end > i) stretches.last() += QStringLiteral(" bis %1").arg(lines[end]);
        i = end + 1;
    }
    QString text = lines.size() == 1 ? QStringLiteral("Zeile ") : QStringLiteral("Zeilen ");
    if (stretches.size() > 1) {
        const QString last = stretches.takeLast();
        return text + stretches.join(QStringLiteral(", ")) + QStringLiteral(" und ") + last;
    }
    return text + stretches.first();
}

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
    helpTopic = name();
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

/// Adds the animal of a line, unless `marken` holds its ear tag or it has none, or it has no number; `werte` are then
/// what was written.
S_Importtabelle::Zeile S_Importtabelle::Tier_eintragen(const QStringList& felder, NeueTiere& tiere, Ohrmarken* marken,
                                                       std::vector<Value>& werte) const {
    const QString marke = Feldwert(felder, Ohrmarke);
    if (marken && (marke.isEmpty() || marken->enthaelt(marke))) return Zeile::Doppelt;
    if (Feldwert(felder, Saunummer).isEmpty()) return Zeile::Namenlos;
    for (int i = 0; i < Importdatei::spalten; ++i) werte[static_cast<size_t>(i)] = Zielwert(felder, i);
    tiere.add(werte);
    if (marken) {
        marken->eintragen(marke);
        marken->eintragen(werte[Ohrmarke].toText());
    }
    return Zeile::Importiert;
}

/// One action: left without its commit, by the user's cancel or by an error, nothing of it stays.
S_Importtabelle::Ergebnis S_Importtabelle::Zeilen_einlesen(Importdatei& datei, bool zusatz) {
    const WaitCursor wait(koben);
    const Sperre sperre(*this);
    Action action(m_db, {});
    NeueTiere tiere(action, Fields,
                    {{QStringLiteral("Statusabfrage"), QStringLiteral("N")}, {QStringLiteral("Aenderung"), QString()}});
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
        const Zeile zeile = Tier_eintragen(felder, tiere, marken ? &*marken : nullptr, werte);
        if (zeile == Zeile::Namenlos) ergebnis.namenlos.push_back(datei.line());
        ergebnis.importiert += zeile == Zeile::Importiert;
        ergebnis.ignoriert += zeile == Zeile::Doppelt;
        if (gelesen % zeilenJeAnzeige == 0) anzeigen();
    }
    if (m_lauf == Lauf::Aktiv) anzeigen();
    ergebnis.controls = datei.controlsReplaced();
    ergebnis.abgebrochen = m_lauf == Lauf::Abbruch;
    if (ergebnis.abgebrochen) return ergebnis;
    action.setName(QStringLiteral("Import von %1 aus %2")
                       .arg(counted(ergebnis.importiert, "Tier", "Tieren"), QFileInfo(m_datei).fileName()));
    action.commit();
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
    if (!ergebnis.namenlos.empty())
        text +=
            lineList(ergebnis.namenlos) +
            (ergebnis.namenlos.size() == 1 ? QStringLiteral(" der Datei wurde") : QStringLiteral(" der Datei wurden")) +
            QStringLiteral(" nicht importiert, weil die Saunummer fehlt.");
    if (ergebnis.controls)
        text += QStringLiteral(
            "In der Datei standen Steuerzeichen, zum Beispiel Tabulatoren. Sie wurden durch "
            "Leerzeichen ersetzt.");
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

#include "cycle/PO_Einstellungen.h"

#include <algorithm>
#include <limits>

#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "forms/Eingabe.h"
#include "forms/SettingsGuard.h"

namespace koben {

namespace {

/// A number by its index in tzahl: label, slot, standard value.
struct NumberRow {
    const char* label;
    int slot;
    int standard;
};
const NumberRow Numbers[] = {
    {"Anzahl Tage zwischen Absetzung nach Ferkelung:", Zahl::TageFerkelungAbsetzung, 30},
    {"Anzahl Tage zwischen Belegung nach Absetzung:", Zahl::TageAbsetzungBelegung, 6},
    {"Anzahl Tage zwischen Ferkelung nach Belegung:", Zahl::TageBelegungFerkelung, 116},
    {"Anzahl Tage zwischen Belegung nach Ferkelung:", Zahl::TageFerkelungBelegung, 36},
    {"Anzahl Tage zwischen Trächtigkeitskontrolle nach Belegung:", Zahl::TageBelegungKontrolle, 22},
    {"Anzahl Tage zwischen dem Geburtsdatum und der ersten Belegung:", Zahl::TageGeburtBelegung, 365},
    {"Anzahl der Toleranztage für die Zyklusdatenprüfung:", Zahl::ToleranzTage, 14},
    {"Anzahl Datenzeile, die max. auf eine Bericht-/Listenseite ausgegeben werden (gilt nur für den "
     "Internet-Explorer und Standard-Explorer):",
     Zahl::BerichtZeilen, 60},
    {"Anzahl Tage zwischen den Erinnerungen an die Datensicherung:", Zahl::SicherungTage, 14},
    {"Durchschnittliches Geburtsgewicht je Ferkel in Gramm:", Zahl::Geburtsgewicht, 1000}};
enum NumberIndex { Suckling = 0, WeaningToService = 1, FarrowingToService = 3 };

/// The slots of kon, by index.
const int Switches[] = {Zahl::ZyklusPruefen,
                        Zahl::GeburtPruefen,
                        Zahl::BerichtDatum,
                        Zahl::BerichtSeiten,
                        Zahl::BerichtAnzahl,
                        Zahl::LaufendeNummer,
                        Zahl::OptimaleSpaltenbreite,
                        Zahl::LoeschenBestaetigen,
                        Zahl::NummerErhoehen,
                        Zahl::TaetowierungDoppelt,
                        Zahl::TonAus};
constexpr int StandardSwitches = 9;  // the first ones, which the standard values clear

const int Sorts[] = {Text::Sortierung1, Text::Sortierung2};

/// A distance outside of these days is unusual.
struct Usual {
    int slot, least, most;
    const char* line;
};
const Usual Distances[] = {
    {Zahl::TageFerkelungAbsetzung, 20, 40, "...der Abstand Ferkelung-Absetzung = 30 Tage"},
    {Zahl::TageAbsetzungBelegung, 3, 14, "...der Abstand Absetzung-Belegung = 6 Tage"},
    {Zahl::TageBelegungFerkelung, 102, 130, "...der Abstand Belegung-Ferkelung = 116 Tage"},
    {Zahl::TageBelegungKontrolle, 10, 34, "...der Abstand Belegung-Trächtigkeitskontrolle = 22 Tage"}};

constexpr double MostInSlot = std::numeric_limits<qint16>::max();

/// As a slot holds it.
qint16 wholeNumber(const QString& text) { return static_cast<qint16>(std::min(Wert(text), MostInSlot)); }

}  // namespace

PO_Einstellungen::PO_Einstellungen(Koben& context) : Form(context, "PO_Einstellungen", "Einstellungen") {
    opti.frame = "Listen darstellen in...";
    for (auto& field : tzahl) {
        field->onKeyPress = Nur_Ziffern;
        field->onLostFocus = [this] { tzahl_LostFocus(); };
        field->maxLength = 5;
        field->setHint(label(*field));
    }
    tsonst[0].setHint(label(tsonst[0]));
    for (auto& list : kom) {
        list->fixed = true;
        list->setHint(label(*list));
    }
    ok.onClick = [this] { ok_Click(); };
    standard.onClick = [this] { standard_Click(); };
    comhilfe.onClick = [this] { koben.open("PH_Hilfe"); };
    abbrechen.onClick = [this] { close(); };
    zurueckholen.onClick = [this] { zurueckholen_Click(); };
    helpTopic = name();
    acceptButton = &ok;
    cancelButton = &abbrechen;
}

QString PO_Einstellungen::label(const Control& input) {
    if (input.name() == u"tzahl") return QString::fromUtf8(Numbers[input.index()].label);
    if (input.name() == u"tsonst") return "Zusätzlich folgenden Text im Berichtskopf schreiben";
    if (input.name() == u"kom") return QString::number(input.index() + 1) + ". Sortierung im Hauptmodul";
    return {};
}

void PO_Einstellungen::Load() {
    zurueckholen.setVisible(!SettingsGuard(koben).lastGood().isEmpty());
    for (int i = 0; i < tzahl.count(); ++i) tzahl[i].setText(QString::number(koben.Konfig_Zahl[Numbers[i].slot]));
    for (int i = 0; i < kon.count(); ++i) kon[i].setChecked(koben.Konfig_Zahl[Switches[i]] == 1);
    opti.select(std::clamp<int>(koben.Konfig_Zahl[Zahl::ListenDarstellung], 0, opti.count() - 1));
    tsonst[0].setText(koben.Konfig_Text[Text::Berichtskopf]);
    QStringList fields{QString()};
    const Database db = koben.connect();
    const Recordset none = db.open("select * from Sauen where ID = 0");
    for (int i = 0; i < none.fieldCount(); ++i) fields += none.field(i).name;
    for (int i = 0; i < kom.count(); ++i) {
        kom[i].setItems(fields);
        kom[i].setCurrent(std::max(0, static_cast<int>(fields.indexOf(koben.Konfig_Text[Sorts[i]]))));
        m_sortBefore[i] = koben.Konfig_Text[Sorts[i]];
    }
    m_numberBefore = koben.Konfig_Zahl[Zahl::LaufendeNummer];
}

/// From farrowing to the next service: the suckling period and the days from weaning to service.
void PO_Einstellungen::tzahl_LostFocus() {
    const int days = wholeNumber(tzahl[Suckling].text()) + wholeNumber(tzahl[WeaningToService].text());
    tzahl[FarrowingToService].setText(QString::number(days));
}

void PO_Einstellungen::store() {
    for (int i = 0; i < tzahl.count(); ++i) koben.Konfig_Zahl[Numbers[i].slot] = wholeNumber(tzahl[i].text());
    for (int i = 0; i < kon.count(); ++i) koben.Konfig_Zahl[Switches[i]] = kon[i].checked() ? 1 : 0;
    koben.Konfig_Zahl[Zahl::ListenDarstellung] = static_cast<qint16>(opti.selected());
    koben.Konfig_Text[Text::Berichtskopf] = tsonst[0].text();
    for (int i = 0; i < kom.count(); ++i) koben.Konfig_Text[Sorts[i]] = kom[i].text();
    QString& second = koben.Konfig_Text[Text::Sortierung2];
    if (koben.Konfig_Text[Text::Sortierung1].isEmpty() || second == koben.Konfig_Text[Text::Sortierung1])
        second.clear();
}

/// "" where all stored distances are usual.
QString PO_Einstellungen::Hinweis_auf_Abstaende() const {
    QStringList lines;
    for (const Usual& distance : Distances)
        if (const int days = koben.Konfig_Zahl[distance.slot]; days < distance.least || days > distance.most)
            lines += QString::fromUtf8(distance.line);
    if (lines.isEmpty()) return {};
    return "Bitte beachten Sie folgende durchschnittliche Abstände:" + Crlf + Crlf + lines.join(Crlf) + Crlf + Crlf +
           "Sie haben (zum Teil) diese Abstände wesentlich überschritten. Dies ist unlogisch und sollte korrigiert "
           "werden. Trotzdem wird Ihre Eingabe jetzt akzeptiert.";
}

/// A number that no slot holds stays to be corrected; it is not cut to the largest one.
bool PO_Einstellungen::fits() {
    Findings found;
    for (auto& field : tzahl) {
        field->setWrong(false);
        if (Wert(field->text()) > MostInSlot)
            found.add(*field, QStringLiteral("...die Angabe bei \"%1\" zu groß ist. Möglich ist höchstens %2.")
                                  .arg(label(*field).chopped(1))
                                  .arg(MostInSlot));
    }
    if (found.empty()) return true;
    koben.message("Die Einstellungen können nicht übernommen werden, weil..." + Crlf + Crlf + found.lines().join(Crlf));
    found.first()->setFocus();
    return false;
}

void PO_Einstellungen::ok_Click() {
    if (!fits()) return;
    store();
    if (const QString hint = Hinweis_auf_Abstaende(); !hint.isEmpty()) koben.message(hint);
    if (const QString reason = SettingsGuard(koben).save(true); !reason.isEmpty()) koben.message(reason);
    const bool sorted = koben.Konfig_Text[Text::Sortierung1] != m_sortBefore[0] ||
                        koben.Konfig_Text[Text::Sortierung2] != m_sortBefore[1];
    if (koben.Konfig_Zahl[Zahl::LaufendeNummer] != m_numberBefore || sorted) koben.Liste_neu_laden = 1;
    close();
}

void PO_Einstellungen::zurueckholen_Click() {
    SettingsGuard guard(koben);
    const QString day = guard.lastGood();
    if (const QString reason = guard.takeBack(); !reason.isEmpty()) return koben.message(reason);
    koben.Liste_neu_laden = 1;
    Load();
    koben.message("Die Einstellungen vom " + day +
                  " gelten wieder. Die Termine werden neu berechnet, wenn Sie das "
                  "nächste Mal die Bewegungsdaten schließen.");
}

/// Shows the standard values; text, sorts, tone and the warning about tattoos stay as they are.
void PO_Einstellungen::standard_Click() {
    if (!koben.yesNo("Sollen die aktuellen Werte wirklich mit den Standard-Werten überschrieben werden?")) return;
    opti.select(0);
    for (int i = 0; i < StandardSwitches; ++i) kon[i].setChecked(false);
    for (int i = 0; i < tzahl.count(); ++i) tzahl[i].setText(QString::number(Numbers[i].standard));
}

}  // namespace koben

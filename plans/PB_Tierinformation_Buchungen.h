#pragma once
// The bookings of chosen animals: table by table with the fields that the farmer picks, or as one list of events.
#include <array>

#include "output/Tierbericht.h"
#include "plans/Buchungsbericht.h"

namespace koben {

class PB_Tierinformation_Buchungen final : public Tierbericht {
public:
    explicit PB_Tierinformation_Buchungen(Koben& koben);

    /// A list whose entries are marked for a report.
    struct Feldliste : ListBox {
        Feldliste(ControlHost& form, const QString& name, int index) : ListBox(form, name, true, index) {}
    };

    OptionGroup optitieraus{*this,
                            "optitieraus",
                            {"Aktuelles Schwein", "Alle Masttiere", "Alle Eber", "Alle Sauen", "Selektierte Schweine",
                             "Alle Schweine (aktueller Bestand)"}};
    ControlArray<Frame> rahmen{
        *this, "rahmen", {"Zu listende Datenfelder (Schweine)", "Zu listende Datenfelder (Buchungen)"}};
    ControlArray<CheckBox> kontier{*this, "kontier", {"Art", "Nummer", "Gruppe", "Stallnummer"}};
    ControlArray<Label> bez{*this,
                            "bez",
                            {"Belegungen", "Ferkelungen", "Absetzungen", "Trächtigkeiten", "Verluste", "Verschiebungen",
                             "Behandlungen", "Ferkelverkäufe"}};
    ControlArray<Feldliste> li{*this, "li", 8};  ///< fields of the tables, as `bez` names them
    ControlArray<Button> alletier{*this, "alletier", {"&Alle", "&Keine"}};
    OptionGroup optibuch{
        *this, "optibuch", {"Alle Buchungen", "Datum von", "Nur die letzte (aktuellste) Buchung je Schwein"}};
    ControlArray<TextBox> tdat{*this, "tdat", 2};
    ControlArray<Button> calender{*this, "calender", {"", ""}};
    Calendar calend{*this, "calend"};
    CheckBox tierleer{*this, "tierleer", "Zwischen den Tieren eine Leerzeile einfügen"};
    CheckBox konereignis{
        *this, "konereignis",
        "Die Auswertung in Form eines Ereignisberichts darstellen (es werden nur bestimmte Datenfelder je Tier "
        "gelistet "
        "und für jedes Tier, sortiert nach dem Datum, aufbereitet). Die Liste ist unabgängig von der Auswahl auf der "
        "rechten Seite!!!"};
    CheckBox kontiergruppe{*this, "kontiergruppe", "Die Daten beim Ereingisbericht nach Tieren gruppieren"};

private:
    void fillChoices() override;
    void bindFlags(std::vector<CheckBox*> boxes, int slot);
    void ok_Click();
    bool choicesStand();
    bool anyField() const;
    Buchungswahl choice();
};

}  // namespace koben

#pragma once
// The settings that the user sets. Nothing is stored before OK.
#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

class PO_Einstellungen final : public Form {
public:
    explicit PO_Einstellungen(Koben& koben);
    bool onlyToday() const override { return true; }

    ControlArray<TextBox> tzahl{*this, "tzahl", 10};
    Label hinweis{*this, "hinweis",
                  "Wichtiger Hinweis: Wenn Sie in die Bewegungsdaten gehen (z.B. Eingabe / Belegung), und dann das "
                  "Modul wieder schließen, werden die Termine für sämtliche Bewegungsdaten und künftigen Termine "
                  "automatisch neu berechnet."};
    ControlArray<CheckBox> kon{
        *this,
        "kon",
        {"Bei Zyklusdateneingaben die Zyklusabstände gegenseitig prüfen",
         "Bei Zyklusdateneingaben die Abstände zum Geburtsdatum prüfen", "Datum in Berichtskopf schreiben",
         "Seite x von x in den Berichten ausgeben (nur Explorer)",
         "Anzahl Datensätze auf der letzten Berichtseite mit ausgeben (nur Explorer)",
         "Im Hauptmodul in der ersten Zeile statt der Saunummer die laufende Nummer (Datensatznummer) anzeigen",
         "Die Spaltenbreite in der Zwischenliste immer auf die optimale Spaltenbreite anpassen",
         "Das Löschen von Daten (egal welcher Art) nur nach Sicherheitsabfragen erlauben",
         "Die Saunummer bei der Tiereingabe automatisch um eins erhöhen, sofern es sich um eine Zahl handelt",
         "Keine Warnmeldung ausgeben bei doppelten Tätowierungsnummern (Neueingabe Schweine)",
         "Quittungston bei Dateneingaben ausschalten"}};
    OptionGroup opti{*this,
                     "opti",
                     {"Zwischenliste um dann die Liste wahlweise im Standard-Explorer, im Internet-Explorer, im "
                      "Texteditor oder in Excel anzuzeigen",
                      "Standard-Explorer", "Texteditor"}};
    ControlArray<TextBox> tsonst{*this, "tsonst", 1};
    Frame sortierung{*this, "sortierung", "Standard-Sortierung beim Programmstart"};
    ControlArray<ComboBox> kom{*this, "kom", 2};
    Button ok{*this, "ok", "&OK"};
    Button standard{*this, "standard", "&Standardwerte"};
    Button comhilfe{*this, "comhilfe", "&Hilfe"};
    Button abbrechen{*this, "abbrechen", "&Abbrechen"};
    /// Shown where the settings file was damaged, missing or changed from outside.
    Button zurueckholen{*this, "zurueckholen", "&Letzte gute Einstellungen zurückholen"};

    /// What stands before an input.
    static QString label(const Control& input);

private:
    void Load() override;
    void tzahl_LostFocus();
    bool fits();
    void ok_Click();
    void standard_Click();
    void zurueckholen_Click();
    void store();
    QString Hinweis_auf_Abstaende() const;

    qint16 m_numberBefore = 0;
    QString m_sortBefore[2];
};

}  // namespace koben

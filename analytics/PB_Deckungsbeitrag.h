#pragma once
// The contribution margin's screen: which kinds of income and cost, which animals, which years, by year or by animal.
#include "analytics/Deckungsbeitrag.h"
#include "output/Tierbericht.h"

namespace koben {

class PB_Deckungsbeitrag final : public Tierbericht {
public:
    explicit PB_Deckungsbeitrag(Koben& koben);

    ControlArray<Frame> rahmen{*this,
                               "rahmen",
                               {"Berechnungszeitraum in Wirtschaftsjahren", "Zu berechnende Einnahmen und Kosten",
                                "Zu listende Datenfelder (Schweine)"}};
    ControlArray<Label> bez{
        *this, "bez", {"Wirtschaftsjahr von", "bis", "Sau / Jahr", "Eber / Jahr", "Mastschwein / Jahr"}};
    ControlArray<TextBox> t{*this, "t", 2};
    ControlArray<CheckBox> konkost{
        *this,
        "konkost",
        {Postenliste[0].caption, Postenliste[1].caption, Postenliste[2].caption, Postenliste[3].caption,
         Postenliste[4].caption, Postenliste[5].caption, Postenliste[6].caption, Postenliste[7].caption,
         Postenliste[8].caption, Postenliste[9].caption}};
    ControlArray<TextBox> tzahl{*this, "tzahl", 3};
    ControlArray<Button> alletier{*this, "alletier", {"&Alle", "&Keine"}};
    OptionGroup optiauswertung{
        *this, "optiauswertung", {"Wirtschaftsjahren", "Schweinen (zu listende Datenfelder siehe oben)"}};
    ControlArray<CheckBox> kontier{*this, "kontier", {"Art", "Nummer", "Gruppe", "Stallnummer"}};
    OptionGroup optitieraus{*this,
                            "optitieraus",
                            {"Alle Schweine (aktueller Bestand)", "Selektierte Schweine", "Alle Sauen", "Alle Eber",
                             "Alle Masttiere", "Aktuelles Schwein"}};

private:
    void showCurrent();
    void ok_Click();
    QStringList findings();
    Deckungsauswahl choice();
    void addColumns(bool years);
    void fill(const Deckungsbeitrag& margin, std::vector<Deckungsbeitrag::Zeile> rows, const Deckungsauswahl& chosen,
              bool years, Progress& progress);
};

}  // namespace koben

#pragma once
// How many animals of a kind the farm held on a day, and what they are worth: by the farmer's own groups or by fixed
// special reports, as lists of the animals or as counts alone.
#include "output/Bericht.h"
#include "output/Tabellenfelder.h"
#include "stock/Bestand.h"

namespace koben {

class PB_Bestand final : public Bericht {
public:
    explicit PB_Bestand(Koben& koben);

    ControlArray<Frame> rahmen{*this,
                               "rahmen",
                               {"Zu listende Tierbestände lt. Optionen", "Zu listende Datenfelder",
                                "Zu listende Tierbestände (Spezielle Berichte)"}};
    ListBox libestand{*this, "libestand", true};
    Button bestandsoptionen{*this, "bestandsoptionen", "Bestands-Optionen"};
    ListBox litiere{*this, "litiere", true};
    ControlArray<Button> alletiere{*this, "alletiere", {"&Alle", "&Keine"}};
    OptionGroup optibest{*this,
                         "optibest",
                         {"Alle Tiere", "Alle Sauen", "Alle Eber", "Alle Masttiere", "Alle mechanischen Ammen",
                          "Alle Sauen, die belegt sind", "Alle Sauen, die trächtig sind",
                          "Alle Sauen, die säugend sind", "Alle Sauen mit mindestens einer Ferkelung",
                          "Alle Sauen, die belegt sind und die Trächtigkeitsfeststellung noch aussteht",
                          "Alle Sauen, die trächtig sind und die Ferkelung noch aussteht",
                          "Alle Sauen, die geferkelt haben und die Absetzung noch aussteht",
                          "Alle Sauen, die abgesetzt haben und die Belegung noch aussteht",
                          "Alle Sauen, die belegt sind und die Ferkelung noch aussteht",
                          "Alle Sauen, die geferkelt haben und die Belegung noch ausseht"}};
    Label Label1{*this, "Label1",
                 "Bei den speziellen Berichten wird, falls sich der Bestand auf einen bestimmten Termin bezieht, nur "
                 "das Abgangsdatum (nicht das Geburtsdatum) ausgewertet."};
    CheckBox konalter{*this, "konalter", "Das Alter der Tiere mit in die Liste aufnehmen (in Jahren)"};
    CheckBox konbestand{*this, "konbestand", "Nur Bestände listen, die am Bezugsdatum im Betrieb waren."};
    Label bez{*this, "bez", "Bezugsdatum der Bestandsliste:"};
    TextBox tdat{*this, "tdat"};
    Button calender{*this, "calender", ""};
    Calendar calend{*this, "calend"};
    OptionGroup optisort{*this, "optisort", {"Nummer", "Art", "Stallnr", "Ohrmarke", "Alter"}};
    ProgressBar meter{*this, "meter"};
    /// List of the groups, list of the special report, counts of the groups, counts of all special reports.
    ControlArray<Button> ok{
        *this, "ok", {"Listen", "Listen", "Gesamtübersicht Stückzahlen", "Gesamtübersicht Stückzahlen"}};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};
    Grid gridli{*this, "gridli"};

private:
    void Load() override;
    void fillChoices() override;
    void bestandsoptionen_Click();
    void ok_Click(int index);

    // the four runs; false where there is nothing to hand over
    bool listGroups();
    bool listSpecial();
    bool countGroups();
    bool countSpecial();

    std::optional<Table> animals(const QStringList& conditions, Progress& progress);
    std::optional<std::vector<qint64>> counts(const QStringList& conditions);
    void passDone();
    void addAnimals(const Table& animals, Progress& progress);
    void addColumns(const Tabellenfelder& fields, const char* age);
    bool addGroup(const Bestandsgruppe& group, const Tabellenfelder& fields, const Table& animals, int member,
                  const std::function<bool()>& rowDone);
    void addOverviewColumns(int width);
    QDate day() const;
    QDate onlyInHerd() const;

    QStringList m_fields;  // of a run
};

}  // namespace koben

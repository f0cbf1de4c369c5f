#pragma once
// The free report over animals: which animals, which fields, present on which day, sorted by which field.
#include "output/Tierbericht.h"

namespace koben {

class PB_Tierinformation_Schweine final : public Tierbericht {
public:
    explicit PB_Tierinformation_Schweine(Koben& koben);

    OptionGroup optitieraus{
        *this,
        "optitieraus",
        {"Alle Schweine", "Selektierte Schweine", "Alle Sauen", "Alle Eber", "Alle Masttiere", "Aktuelles Schwein"}};
    Frame rahmen{*this, "rahmen", "Zu listende Datenfelder"};
    ListBox liste{*this, "liste", true};
    ControlArray<Button> alletier{*this, "alletier", {"&Alle", "&Keine"}};
    TextBox tdat{*this, "tdat"};
    Button calender{*this, "calender", ""};
    Calendar calend{*this, "calend"};
    OptionGroup optibetrieb{*this, "optibetrieb", {"im Betrieb waren", "nicht im Betrieb waren"}};
    Label bez{*this, "bez", "Sortiert nach:"};
    ComboBox komsort{*this, "komsort"};

private:
    void Load() override;
    void fillChoices() override;
    void ok_Click();
    QString query(const QStringList& fields);
    QString presence() const;
    void fill(const Table& animals, const QStringList& fields, Progress& progress);
};

}  // namespace koben

#pragma once
// Sale of many animals in one step: those marked in the list of the stock leave it with the same facts, in one
// action. Whoever is still within a waiting time is named in a warning.
#include "forms/Eingabe.h"

namespace koben {

class PB_Verkauf_Schweine final : public Eingabe {
public:
    explicit PB_Verkauf_Schweine(Koben& koben);

    Label Label1{*this, "Label1", "Verkaufs-Auswahlliste der im Bestand befindlichen Schweine"};
    Label Label2{*this, "Label2", "Art  Nummer          Stallnr    ID"};
    ListBox li{*this, "li", true};
    Label Label3{*this, "Label3",
                 "Bitte wählen Sie in der obigen Liste alle Tiere aus, die verkauft wurden und tragen Sie in den "
                 "Verkaufsinformationen die entsprechenden Abgangsdaten ein."};
    Frame rahmen{*this, "rahmen", "Verkaufsinformationen"};
    ControlArray<Label> bez{
        *this, "bez", {"Abgangsdatum:", "Abgangsgewicht (kg):", "Verkaufspreis:", "Abgangsgrund:", "Abnehmer:"}};
    TextBox tdat{*this, "tdat"};
    Button calender{*this, "calender", "Kalender"};
    Calendar calend{*this, "calend"};
    ControlArray<TextBox> tz{*this, "tz", 2};     ///< weight, price; of each single animal
    ControlArray<ComboBox> kom{*this, "kom", 2};  ///< reason, buyer
    Button neu{*this, "neu", "&Verkauf buchen"};
    Button cmdschließen{*this, "cmdschließen", "&Schließen"};

private:
    void Load() override;
    void fillAnimals();
    std::vector<qint64> markedAnimals() const;
    QString table() const override { return QStringLiteral("Sauen"); }
    QString stored(const QString&) const override { return {}; }  // nothing is changed here
    QString refusal() const override { return QStringLiteral("Die Verkäufe können nicht gebucht werden"); }
    void check(Findings& found) override;
    bool agreed() override;
    QString actionName() const override;
    void write(const Action& action) override;
    void refresh() override;
    QStringList hints() const override { return m_warnings; }
    void goOn(int) override {}

    QStringList m_warnings;  // of the last save
};

}  // namespace koben

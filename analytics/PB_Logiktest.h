#pragma once
// The logic test's screen: what is tested, how far dates may lie off, and the list of findings, from which a double
// click leads to the bookings.
#include "analytics/Logikpruefung.h"
#include "output/Bericht.h"

namespace koben {

class PB_Logiktest final : public Bericht {
public:
    explicit PB_Logiktest(Koben& koben);

    Frame rahmen{*this, "rahmen", "Umfang für die Logikprüfung"};
    ControlArray<CheckBox> kon{
        *this,
        "kon",
        {"Belegung", "Trächtigkeitsprüfung", "Absetzung", "Nur die Termine bezogen auf die letzte Ferkelung prüfen"}};
    /// Where the dates are expected, one for each of the first three boxes.
    ControlArray<Label> Label2{*this, "Label2", {"", "", ""}};
    OptionGroup optiwoche{*this, "optiwoche", {"7 Tage", "14 Tage", "21 Tage", "28 Tage"}};
    Label Label1{*this, "Label1"};
    ProgressBar meter{*this, "meter"};
    Grid gridli{*this, "gridli"};
    Button ok{*this, "ok", "&Listen"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};

private:
    /// What a row of the list is about.
    struct Zeile {
        qint64 sow = 0;  ///< 0 for the empty row between two sows
        int litter = 0;
        std::array<Befund, Termine> found{};
    };

    void Load() override;
    void ok_Click();
    Logikauswahl choice() const;
    void addColumns();
    void add(const Logikzeile& line);
    void standWhereLeft();
    void lead(int row, int column);

    std::vector<Zeile> m_rows;  // of gridli
    Zeile m_left;               // from which the user went on to the bookings
    int m_leftRow = 0;
};

}  // namespace koben

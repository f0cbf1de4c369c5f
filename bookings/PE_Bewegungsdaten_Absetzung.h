#pragma once
// Entry of weanings: what the sow should still have, the balance, the difference booked as losses, and the piglets
// taken into the stock as animals of their own.
#include <map>

#include "bookings/Buchungseingabe.h"

namespace koben {

class PE_Bewegungsdaten_Absetzung final : public Buchungseingabe {
public:
    explicit PE_Bewegungsdaten_Absetzung(Koben& koben);

    ControlArray<TextBox> tz{*this, "tz", 3};
    SpinButton UpDown{*this, "UpDown", 0};
    ControlArray<ComboBox> kom{*this, "kom", 5};
    SpinButton UpDown2{*this, "UpDown", 2};
    CheckBox kon{*this, "kon", "Die abgesetzen Ferkel gleich als Masttiere einbuchen"};
    Label Label1{*this, "Label1", "(ermittelt aus letzter Ferkelung abzüglich Verluste/Verschiebungen)"};
    Label Label2{*this, "Label2", "Ferkeldatum = Geburtsdatum"};
    Label Label3{*this, "Label3",
                 "Die Anzahl Verluste werden automatisch berechnet und können auch händisch korrigiert werden. Falls "
                 "der Verlust > 0 ist, können die Verluste nach einer Sicherheitsabfrage automatisch gebucht werden."};

private:
    /// The newest farrowing of a sow; without one no day and no piglets.
    struct Wurf {
        QDate tag;
        qint64 lebend = 0;
    };
    /// What the save does for a sow beside her weaning, as settled before anything is written.
    struct Vorhaben {
        bool verlust = false;
        QDate geburt;  ///< of the piglets taken into the stock; invalid where none are
    };

    void Activate() override;
    void preset() override;
    std::optional<std::vector<int>> animals() override;
    QString hintOnSeveral() const override;
    void prepare(const std::vector<int>& rows) override;
    void finish(const Action& action) override;
    void tz_LostFocus(int index);

    Wurf letzterWurf(qint64 sow) const;
    /// The piglets of her newest litter less what these tables took from it since.
    qint64 rest(qint64 sow, std::initializer_list<const char*> tables) const;
    bool balanceAccepted() const;
    QString box() const;
    void Verluste_buchen(const Action& action);
    void Ferkel_einbuchen(const Action& action);

    qint64 Restferkel = 0;
    std::map<int, Vorhaben> m_plan;  // by row of the animal list
};

}  // namespace koben

#pragma once
// The booking frame: the animals on the left, the bookings of one of them on the right, in one of eight kinds.
#include "core/Buchungen.h"
#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

class PE_Bewegungsdaten final : public Form {
public:
    explicit PE_Bewegungsdaten(Koben& koben);

    OptionGroup opti{*this,
                     "opti",
                     {"Belegung", "Trächtigkeit", "Ferkelung", "Absetzung", "Verschiebung", "Verluste", "Ferkelverkauf",
                      "Behandlung"}};
    Label Label1{*this, "Label1", "Auswahlliste Schweine"};
    Grid schweinli{*this, "schweinli", true};
    Label Label2{*this, "Label2",
                 "Bei gedrückter STRG-Taste ist eine Mehrfachauswahl mit der Maus möglich (z.B. für Sammeleingaben)."};
    ComboBox kom{*this, "kom"};
    Label Label3{*this, "Label3", "= Auswahl nach Stallnr"};
    CheckBox konalt{*this, "konalt", "Vorherige Auswahl belassen"};
    ControlArray<Button> nextschwein1{*this, "nextschwein1", {"Voriges Tier", "Nächstes Tier"}};
    Grid li{*this, "li"};
    Button neu{*this, "neu", "&Neu"};
    Button ändern{*this, "ändern", "&Ändern"};
    Button löschen{*this, "löschen", "&Löschen"};
    Button kopieren{*this, "kopieren", "&Kopieren"};
    Button comhilfe{*this, "comhilfe", "&Hilfe"};
    Button cmdschließen{*this, "cmdschließen", "&Schließen"};
    MenuEntry popupliste{*this, "popupliste", "Buchung"};
    ControlArray<MenuEntry> popzeile{*this, "popzeile", {"&Neu", "&Ändern", "-", "&Löschen", "-", "&Kopieren"}};

    /// The frame that an entry screen works for: the one behind it.
    static PE_Bewegungsdaten& behind(const Koben& koben);

    Buchungsart currentKind() const { return static_cast<Buchungsart>(koben.Buchungsart_Nr); }
    QString currentTable() const;
    qint64 currentAnimal() const;  ///< ID of the current row of schweinli, 0 for none
    qint64 currentBooking() const;
    /// Shows the bookings of the current animal and kind anew.
    void Liste_aufbauen();
    /// Reads one booking of the list again, in its place.
    void Zeile_auffrischen(int row);
    /// Moves to the animal before (0) or behind (1), wrapping at the ends, and shows its bookings.
    void Tier_wechseln(int direction);

private:
    void Load() override;
    void Activate() override;
    void neu_Click();
    void ändern_Click();
    void löschen_Click();
    void kopieren_Click();
    void kom_Click();
    void cmdschließen_Click();
    bool closesUnderived();
    void popzeile_Click(int index);
    bool mixedKinds() const;
    /// Number of the current animal and day of the current booking, for the names of actions.
    QString bookingName(const QString& done) const;
    QString screen() const;

    Database m_db;
};

}  // namespace koben

#pragma once
// Prints sow cards, one a page, straight to the printer.
#include "output/Bericht.h"
#include "plans/Sauenkarte.h"

namespace koben {

class PB_Sauenkarte final : public Bericht {
public:
    explicit PB_Sauenkarte(Koben& koben);

    Grid datali{*this, "datali", true};
    Label Label1{*this, "Label1",
                 "Bei gedrückter STRG-Taste können mit der Maus auch beliebige Sauen für den Ausdruck der Sauenkarten "
                 "markiert werden."};
    ControlArray<Button> alletier{
        *this, "alletier", {"&Alle", "&Keine", "Nur Sauen mit aktualisierten Daten", "Selektierte Sauen"}};
    Label Label2{*this, "Label2", "Drucker:"};
    ComboBox komdrucker{*this, "komdrucker"};
    Button ok{*this, "ok", "&Drucken"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};

    /// Draws the card of one row, for a look at it; nothing is noted as printed.
    void draw(PrintJob& job, int row) const;

private:
    void fillChoices() override;
    void alletier_Click(int index);
    void ok_Click();
    bool print(const std::vector<int>& rows);
    bool drawAll(PrintJob& job, const std::vector<int>& rows, Progress& progress) const;
    Kartensau sow(int row) const;
    void notePrinted(const std::vector<int>& rows);
};

}  // namespace koben

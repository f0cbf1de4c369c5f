#pragma once
// What the screens that print sow cards share: the list of sows with its marks, the printer, a print whole or not at
// all.
#include "output/Bericht.h"

namespace koben {

class Sauenkartendruck : public Bericht {
public:
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

    /// Draws the cards of these rows, for a look at them; nothing is noted as printed.
    void look(PrintJob& job, const std::vector<int>& rows);

protected:
    Sauenkartendruck(Koben& koben, const QString& name, const QString& caption);

    /// Draws the cards of these rows; `go` is asked with 0 to 100 percent. False where it said no.
    virtual bool draw(PrintJob& job, const std::vector<int>& rows, const PrintJob::Go& go) const = 0;
    /// The marked rows; where there is none the user is told.
    std::vector<int> rowsToPrint();
    /// All cards as one document, whole or not at all. False where nothing was printed.
    bool print(const std::vector<int>& rows);
    std::vector<qint64> sowsOf(const std::vector<int>& rows) const;

private:
    void fillChoices() override;
    void alletier_Click(int index);
};

}  // namespace koben

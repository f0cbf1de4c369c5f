#pragma once
// Prints sow cards, one a page, straight to the printer.
#include "plans/Sauenkarte.h"
#include "plans/Sauenkartendruck.h"

namespace koben {

class PB_Sauenkarte final : public Sauenkartendruck {
public:
    explicit PB_Sauenkarte(Koben& koben);

private:
    bool draw(PrintJob& job, const std::vector<int>& rows, const PrintJob::Go& go) const override;
    void ok_Click();
    Kartensau sow(int row) const;
    void notePrinted(const std::vector<int>& rows);
};

}  // namespace koben

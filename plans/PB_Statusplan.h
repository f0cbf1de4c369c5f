#pragma once
// Where every sow in stock stands in her cycle: five lists with day counters and the next day due.
#include <array>

#include "forms/Zurueck.h"
#include "output/Bericht.h"

namespace koben {

class PB_Statusplan final : public Bericht, public ReadsAnew {
public:
    explicit PB_Statusplan(Koben& koben);

    Tabs sstab{*this, "sstab", {"BELEGT", "TRAGEND", "NICHT TRAGEND", "SÄUGEND", "GÜST"}};
    Label Label1{*this, "Label1"};  ///< what the page in front lists
    Grid libelegt{*this, "libelegt"};
    Grid litragend{*this, "litragend"};
    Grid linichttragend{*this, "linichttragend"};
    Grid lisäugend{*this, "lisäugend"};
    Grid ligüst{*this, "ligüst"};
    Button ok{*this, "ok", "&Listen"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};

    /// The lists in the order of their pages.
    const std::array<Grid*, 5> listen{&libelegt, &litragend, &linichttragend, &lisäugend, &ligüst};
    /// Whether the row's next day due has passed.
    static bool isOverdue(const Grid& list, int row);

private:
    void Load() override;
    void FirstShown() override;
    void readAnew() override;
    void showPage(int page);
    void defineColumns();
    void addSow(const Table& sows, int row);
};

}  // namespace koben

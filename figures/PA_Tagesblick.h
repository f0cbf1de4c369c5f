#pragma once
// Today's page: the work of the day, where the sows stand, withdrawal periods that end this week, and six figures of
// the latest twelve months. Reads only; what it keeps are the farm's targets and whether it comes up with the program.
#include "core/Arbeitsplan.h"
#include "core/Buchungen.h"
#include "figures/Kacheln.h"
#include "forms/DrawingBox.h"
#include "output/Bericht.h"

namespace koben {

class PA_Tagesblick final : public Bericht {
public:
    explicit PA_Tagesblick(Koben& koben);

    Label Label1{*this, "Label1"};  ///< the day
    Grid liarbeit{*this, "liarbeit"};
    Grid listatus{*this, "listatus"};
    Grid lisperren{*this, "lisperren"};
    Label Label2{*this, "Label2"};  ///< the twelve months of the figures
    DrawingBox kacheln{*this, "kacheln", {186, 66}};
    Grid likacheln{*this, "likacheln"};
    OptionGroup optistart{*this, "optistart", {"Nein", "Neben der Liste", "Statt der Liste"}};
    Button ok{*this, "ok", "&Arbeit zeigen"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};
    Grid gridli{*this, "gridli"};  ///< what is handed to the list screen

private:
    void Load() override;
    void Activate() override;
    void addColumns();
    void showWork();
    void showStates();
    void showBlocks();
    void showFigures();
    std::vector<std::vector<qint64>> sowsByState() const;

    void liarbeit_Click();
    void listatus_DoubleClick();
    void showList(Buchungsart kind, const QString& empty);
    void lisperren_DoubleClick();
    void openBookings(qint64 animal, Buchungsart kind);
    void setTarget(Kz figure, const QString& text);
    void likacheln_Edited(int row, const QString& text);
    void kacheln_Click(const QString& figure);
    std::optional<Explanation> explain(int row, int column) const;

    std::vector<Arbeit> m_works;
    Tagesarbeit m_work;
    std::vector<std::vector<qint64>> m_sows;  ///< IDs, by row of listatus
    Zielwerte m_targets;
    std::shared_ptr<const Sauenbuch> m_book;
    std::vector<Kachel> m_tiles;
};

}  // namespace koben

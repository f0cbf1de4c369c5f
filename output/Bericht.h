#pragma once
// The shape of a report: choices that are remembered, a run with progress and cancel, one hand-over to list or text. A
// report says only what is its own: its controls, where their choices are kept, and what a run puts into the grid.
#include "core/Konfig.h"
#include "forms/Form.h"
#include "forms/Liste.h"

namespace koben {

class Bericht : public Form {
protected:
    Bericht(Koben& koben, const QString& name, const QString& caption) : Form(koben, name, caption) {
        helpTopic = name;
    }

    // ------------------------------------------------------------------------------------------------- the buttons

    /// The button that runs the report, the one that closes it, and its help.
    void bindButtons(Button& accept, Button& close, Button* help = nullptr);

    // ------------------------------------------------------- choices, each bound once, in the constructor of a form
    // They come back as the form loads and are kept as its closing button (or Escape, or the close box) closes it.

    void bind(CheckBox& box, int slot);                   ///< 1 for ticked; of Konfig_Zahl; above 1 the preset stays
    void bind(ControlArray<CheckBox>& boxes, int first);  ///< in slots that follow each other
    void bind(OptionGroup& options, int slot);            ///< the first where the slot holds none of them
    void bindNumber(TextBox& box, int slot);              ///< a whole number, of Konfig_Zahl
    void bindText(TextBox& box, int slot);                ///< of Konfig_Text
    enum class Marks { Restored, Forgotten };
    /// The marked entries by their texts, ";a;b;", of Konfig_Text. `Forgotten` ones are kept but not marked again.
    void bindMarks(ListBox& list, int slot, Marks marks = Marks::Restored);
    /// Anything else that is remembered.
    void bind(std::function<void()> restore, std::function<void()> keep);

    /// "Alle" and "Keine" for a list; the list is asked for at each click, since it may be that of the front page.
    void bindAllAndNone(ControlArray<Button>& buttons, std::function<ListBox&()> list);
    /// A date: short input is completed, a button opens and shuts the calendar. Several dates share one calendar.
    void bindDate(TextBox& field, Button& opens, Calendar& calendar);
    /// A date has been typed or picked.
    virtual void dateChanged(TextBox& field) { Q_UNUSED(field) }
    /// Keeps the widths that the user gives a list that stays in view.
    void bindWidths(Grid& list, const QString& section);

    // ------------------------------------------------------------------------------------------------------ its life

    /// Connects, lets fillChoices() fill the lists of choice, and restores what was chosen last.
    void Load() override;
    virtual void fillChoices() {}
    /// What the closing button does.
    virtual void leave();

    // --------------------------------------------------------------------------------------------------------- a run

    static void markAll(ListBox& list, bool on);
    static QStringList marked(const ListBox& list);
    /// The marked entries; where there is none, all are marked first.
    static QStringList markedOrAll(ListBox& list);

    /// Works with wait cursor and progress, on the form's own `meter` too. False where the user has cancelled: then the
    /// run ends without a word.
    bool run(const QString& what, qint64 steps, ProgressBar* meter, const std::function<void(Progress&)>& work);

    /// The two rows under a statistic, the means above the sums, over the shown numbers of the columns from `first` on
    /// whose `sort` says that they hold numbers. A cell that is empty or 0 does not count for the mean.
    static void addMeansAndSums(Grid& grid, int first = 2);
    /// Where a cell of those two rows, the last of the grid, comes from: which cells it is made of and which are left
    /// out. Nothing for any other cell.
    static std::optional<Explanation> explainMeansAndSums(const Grid& grid, int row, int column, int first = 2);

    Database m_db;

private:
    struct Choice {
        std::function<void()> restore, keep;
    };
    std::vector<Choice> m_choices;
    TextBox* m_calendarFor = nullptr;
};

}  // namespace koben

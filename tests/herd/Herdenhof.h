#pragma once
// A farm whose main form runs without a window; each test works it in a few lines.
#include "herd/PA_Koben.h"
#include "herd/PB_Neues_Schwein.h"
#include "herd/PB_Selektieren.h"
#include "tests/support/Hof.h"

namespace koben {

class Herdenhof : public Hof {
public:
    explicit Herdenhof(const QString& existingFolder = {}) : Hof(existingFolder) {
        catalogue.add<PA_Koben>("PA_Koben");
        catalogue.add<PB_Neues_Schwein>("PB_Neues_Schwein");
        catalogue.add<PB_Selektieren>("PB_Selektieren");
    }
    /// Starts the program, lets the script work the main form, and ends without the steps of closing.
    void start(std::function<void(PA_Koben&)> script) {
        in<PA_Koben>("PA_Koben", std::move(script));
        koben.ended = false;
    }
    /// A menu entry, with what the user does in the form that it opens.
    template <class F>
    void menue(PA_Koben& main, const char* entry, std::function<void(F&)> script) {
        screens.workIn<F>(std::move(script));
        menue(main, entry);
    }
    static void menue(PA_Koben& main, const char* entry) {
        auto* found = controlAt<MenuEntry>(main, QString::fromUtf8(entry));
        ASSERT_NE(found, nullptr) << entry;
        ASSERT_TRUE(found->reachable()) << entry;
        found->click();
    }
};

/// The numbers that the list shows, in its order; or those of some rows.
inline QString nummern(const Grid& list, const std::vector<int>& rows) {
    QStringList numbers;
    for (int row : rows) numbers += list.cell(row, u"Nummer");
    return numbers.join(u' ');
}
inline QString nummern(const Grid& list) {
    std::vector<int> rows;
    for (int row = 1; row <= list.rowCount(); ++row) rows.push_back(row);
    return nummern(list, rows);
}

}  // namespace koben

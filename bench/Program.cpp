#include "bench/Program.h"

#include "app/Katalog.h"
#include "core/Konfig.h"
#include "store/Journal.h"

namespace koben {

qint64 look(const Grid& grid) {
    constexpr int rowsInWindow = 40;
    const int first = std::max(1, std::min(grid.row(), grid.rowCount() - rowsInWindow + 1));
    qint64 characters = 0;
    for (int row = first; row < first + rowsInWindow && row <= grid.rowCount(); ++row)
        for (int column = 1; column <= grid.columnCount(); ++column) characters += grid.cell(row, column).size();
    return characters;
}

void Program::run(const std::function<void()>& work) {
    m_start.start();
    Koben koben(m_screens, m_platform, katalog());
    m_koben = &koben;
    const auto form = katalog().make(QStringLiteral("PA_Koben"), koben);
    when("PA_Koben", [&](Form&) { work(); });
    koben.run(*form);
    m_screens.script.clear();
    m_koben = nullptr;
}

void Program::when(const char* form, const std::function<void(Form&)>& work) {
    m_screens.script[QString::fromUtf8(form)] = work;
}

void Program::open(const char* form, const std::function<void(Form&)>& work) {
    when(form, work);
    koben().open(QString::fromUtf8(form));
    mainForm().settle();
}

void Program::showList() {
    koben().Konfig_Zahl[Zahl::ListeSortRichtung] = 0;
    koben().herdList->datenschweinelesen();
}

void Program::show(int stock) {
    if (auto& option = control<Option>(mainForm(), "optiverkauft", stock); !option.selected()) option.click();
}

void Program::choose(qint64 id) {
    Grid& animals = list();
    const int column = animals.columnOf(u"ID");
    for (int row = 1; row <= animals.rowCount(); ++row)
        if (animals.integer(row, column) == id) return animals.choose(row);
    throw std::runtime_error("an animal of the trial is not in the list");
}

qint64 runReport(Program& p, Stopwatch& watch, const char* form, int button, const std::function<void(Form&)>& choose) {
    qint64 rows = 0;
    p.open(form, [&](Form& report) {
        choose(report);
        p.when("PA_Zwischenliste", [&](Form& list) {
            const Grid& grid = control<Grid>(list, "gridli");
            look(grid);
            rows = grid.rowCount();
        });
        watch.measure([&] { control<Button>(report, "ok", button).click(); });
    });
    return rows;
}

Row withoutJournal(Row row) {
    row.name += QStringLiteral(", no journal");
    row.program = [work = std::move(row.program)](Program& p, Stopwatch& watch) {
        const Journal journal(p.koben().Hauptdatenbank);
        journal.setOn(false);
        const qint64 rows = work(p, watch);
        journal.setOn(true);
        return rows;
    };
    return row;
}

}  // namespace koben

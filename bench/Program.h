#pragma once
// The program's side: the forms, worked as a user's hand works them.
#include <stdexcept>

#include "bench/Measurement.h"
#include "bench/Quiet.h"
#include "forms/Grid.h"

namespace koben {

/// A control of a form by its name.
template <class C>
C& control(Form& form, const char* name, int index = -1) {
    auto* control = dynamic_cast<C*>(form.find(QString::fromUtf8(name), index));
    if (!control) throw std::runtime_error(form.name().toStdString() + " has no control " + name);
    return *control;
}

/// What a window asks of a grid to paint it: the cells in sight around the current row.
qint64 look(const Grid& grid);

/// Works on the database koben2.mdb in its folder, and changes it.
class Program {
public:
    Program(const QString& folder, QDate today) : m_folder(folder), m_platform(folder, today) {}

    /// Starts the program, does the work in front of the main form, and ends the program.
    void run(const std::function<void()>& work);
    /// Runs since the start of the program.
    const Stopwatch& sinceStart() const { return m_start; }

    Koben& koben() { return *m_koben; }
    Form& mainForm() { return *koben().stack().front(); }
    Grid& list() { return control<Grid>(mainForm(), "datali"); }
    const QString& folder() const { return m_folder; }

    /// Opens a form, does the work while it is in front, and lets the main form settle.
    void open(const char* form, const std::function<void(Form&)>& work);
    /// What is done in the forms of this name that open from now on.
    void when(const char* form, const std::function<void(Form&)>& work);
    /// The file that the next file dialogs give.
    void file(const QString& path) { m_screens.picked = path; }
    /// What the next input boxes give.
    void input(const QString& text) { m_screens.typed = text; }

    /// The list anew as the filters stand (at the start all animals in stock), unsorted.
    void showList();
    /// Animals in stock, gone ones, or all, by the number of the choice.
    void show(int stock);
    /// Makes an animal of the list the current row.
    void choose(qint64 id);

private:
    const QString m_folder;
    QuietScreens m_screens;
    QuietPlatform m_platform;
    Koben* m_koben = nullptr;
    Stopwatch m_start;
};

/// The rows that a report hands over, with what it takes from its button "ok" until the list screen shows them.
qint64 runReport(Program& p, Stopwatch& watch, const char* form, int button, const std::function<void(Form&)>& choose);

/// The same row on a file of which no journal of actions is kept.
Row withoutJournal(Row row);

}  // namespace koben

#pragma once
// The program's side: the forms, worked as a user's hand works them.
#include <stdexcept>

#include "bench/Messung.h"
#include "bench/Stille.h"
#include "forms/Grid.h"

namespace koben {

/// A control of a form by its name.
template <class C>
C& steuer(Form& form, const char* name, int index = -1) {
    auto* control = dynamic_cast<C*>(form.find(QString::fromUtf8(name), index));
    if (!control) throw std::runtime_error(form.name().toStdString() + " has no control " + name);
    return *control;
}

/// What a window asks of a grid to paint it: the cells in sight around the current row.
qint64 anschauen(const Grid& grid);

/// Works on the database koben2.mdb in its folder, and changes it.
class Programm {
public:
    Programm(const QString& ordner, QDate heute) : m_ordner(ordner), m_platform(ordner, heute) {}

    /// Starts the program, does the work in front of the main form, and ends the program.
    void lauf(const std::function<void()>& work);
    /// Runs since the start of the program.
    const Uhr& seitStart() const { return m_start; }

    Koben& koben() { return *m_koben; }
    Form& haupt() { return *koben().stack().front(); }
    Grid& liste() { return steuer<Grid>(haupt(), "datali"); }
    const QString& ordner() const { return m_ordner; }

    /// Opens a form, does the work while it is in front, and lets the main form settle.
    void oeffnen(const char* form, const std::function<void(Form&)>& work);
    /// What is done in the forms of this name that open from now on.
    void wenn(const char* form, const std::function<void(Form&)>& work);
    /// The file that the next file dialogs give.
    void datei(const QString& path) { m_screens.datei = path; }
    /// What the next input boxes give.
    void eingabe(const QString& text) { m_screens.eingabe = text; }

    /// The list anew as the filters stand (at the start all animals in stock), unsorted.
    void Liste_zeigen();
    /// Animals in stock, gone ones, or all, by the number of the choice.
    void zeigen(int verkauft);
    /// Makes an animal of the list the current row.
    void waehlen(qint64 id);

private:
    const QString m_ordner;
    StilleScreens m_screens;
    StillePlatform m_platform;
    Koben* m_koben = nullptr;
    Uhr m_start;
};

}  // namespace koben

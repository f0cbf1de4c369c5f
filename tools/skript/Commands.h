#pragma once
// The commands by name.
#include "tools/skript/Interpreter.h"

namespace koben::skript {

/// What each command does; access to the interpreter's parts.
struct Commands {
    using Handler = void (*)(Interpreter&, const Command&);
    /// Null for a word that is no command.
    static Handler find(const QString& word);

    static void heute(Interpreter& run, const Command& command);
    static void ordner(Interpreter& run, const Command& command);
    static void start(Interpreter& run, const Command& command);
    static void ende(Interpreter& run, const Command& command);
    static void neustart(Interpreter& run, const Command& command);
    static void menue(Interpreter& run, const Command& command);
    static void klick(Interpreter& run, const Command& command);
    static void doppelklick(Interpreter& run, const Command& command);
    static void text(Interpreter& run, const Command& command);
    static void tippe(Interpreter& run, const Command& command);
    static void verlasse(Interpreter& run, const Command& command);
    static void wahl(Interpreter& run, const Command& command);
    static void haken(Interpreter& run, const Command& command);
    static void auf(Interpreter& run, const Command& command);
    static void ab(Interpreter& run, const Command& command);
    static void zeile(Interpreter& run, const Command& command);
    static void markiere(Interpreter& run, const Command& command);
    static void zelle(Interpreter& run, const Command& command);
    static void sortiere(Interpreter& run, const Command& command);
    static void breite(Interpreter& run, const Command& command);
    static void taste(Interpreter& run, const Command& command);
    static void schliesse(Interpreter& run, const Command& command);
    static void antwort(Interpreter& run, const Command& command);
    static void zeige(Interpreter& run, const Command& command);
    static void pruefe(Interpreter& run, const Command& command);
    static void titel(Interpreter& run, const Command& command);
    static void variable(Interpreter& run, const Command& command);
    static void setze(Interpreter& run, const Command& command);
    static void sql(Interpreter& run, const Command& command);
    static void datei(Interpreter& run, const Command& command);
    static void schreibe(Interpreter& run, const Command& command);
    static void loesche(Interpreter& run, const Command& command);
    static void druck(Interpreter& run, const Command& command);
    static void netz(Interpreter& run, const Command& command);

private:
    static Target front(Interpreter& run, const QString& address) { return inFront(run.program(), address); }
    static Form& frontForm(Interpreter& run);
    static QString file(Interpreter& run, const QString& name) { return run.m_platform.dataFolder() + name; }
};

}  // namespace koben::skript

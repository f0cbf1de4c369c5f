#pragma once
// Runs a script: reads its commands, works the front form, and starts and ends the program.
#include <QElapsedTimer>

#include "tools/skript/Answers.h"
#include "tools/skript/Hand.h"
#include "tools/skript/ScriptPlatform.h"
#include "tools/skript/ScriptScreens.h"

namespace koben::skript {

/// Status 0 the script ran to its end; 1 it is wrong or the program refused; 2 the program failed.
struct Result {
    int status = 0;
    int line = 0;
    QString reason;
};

class Interpreter {
public:
    /// `catalogue` must hold the main form PA_Koben. `times` gets the milliseconds of each command, where given.
    Interpreter(const Catalogue& catalogue, const QString& script, Transcript& transcript,
                std::function<void(const Command&, qint64)> times = {});
    ~Interpreter();
    Interpreter(const Interpreter&) = delete;
    Interpreter& operator=(const Interpreter&) = delete;

    Result run();

private:
    friend struct Commands;
    struct Program;

    std::optional<Command> fetch();
    void reportTime();
    void execute(const Command& command);
    /// Commands until the form is closed; without a form until the script's end.
    void loop(Form* form);
    void runScript();

    void start();
    void endProgram();
    Koben& program() const;
    Database& database() const;
    void sql(const QString& statement);
    void closeBatch();

    const Catalogue& m_catalogue;
    Script m_script;
    Transcript& m_transcript;
    std::function<void(const Command&, qint64)> m_times;
    Answers m_answers;
    ScriptScreens m_screens;
    ScriptPlatform m_platform;
    Hand m_hand;
    Program* m_program = nullptr;        ///< while it runs
    bool m_restart = false;              ///< the ending program is to be started again
    std::optional<Transaction> m_batch;  ///< writing `sql` commands that follow each other
    std::optional<Failure> m_failure;    ///< once set, no command follows
    std::optional<Command> m_current;
    QElapsedTimer m_timer;
};

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
    static void erklaere(Interpreter& run, const Command& command);
    static void pruefe(Interpreter& run, const Command& command);
    static void titel(Interpreter& run, const Command& command);
    static void variable(Interpreter& run, const Command& command);
    static void setze(Interpreter& run, const Command& command);
    static void stand(Interpreter& run, const Command& command);
    static void schnell(Interpreter& run, const Command& command);
    static void sql(Interpreter& run, const Command& command);
    static void datei(Interpreter& run, const Command& command);
    static void schreibe(Interpreter& run, const Command& command);
    static void loesche(Interpreter& run, const Command& command);
    static void druck(Interpreter& run, const Command& command);
    static void netz(Interpreter& run, const Command& command);
    static void laufwerk(Interpreter& run, const Command& command);
    static void zurueck(Interpreter& run, const Command& command);
    static void wieder(Interpreter& run, const Command& command);

private:
    static Target front(Interpreter& run, const QString& address) { return inFront(run.program(), address); }
    static Form& frontForm(Interpreter& run);
    static QString file(Interpreter& run, const QString& name) { return run.m_platform.dataFolder() + name; }
};

}  // namespace koben::skript

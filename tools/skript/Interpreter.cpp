#include "tools/skript/Interpreter.h"

#include <QCoreApplication>

namespace koben::skript {

/// One life of the program: its context and its main form.
struct Interpreter::Program {
    Interpreter& run;
    Koben koben;
    std::unique_ptr<Form> main;

    explicit Program(Interpreter& interpreter)
        : run(interpreter), koben(interpreter.m_screens, interpreter.m_platform, interpreter.m_catalogue) {
        run.m_program = this;
    }
    ~Program() {
        main.reset();
        run.m_program = nullptr;
        run.m_platform.releaseDataFolder();
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
};

Interpreter::Interpreter(const Catalogue& catalogue, const QString& script, Transcript& transcript,
                         std::function<void(const Command&, qint64)> times)
    : m_catalogue(catalogue),
      m_script(script),
      m_transcript(transcript),
      m_times(std::move(times)),
      m_screens(transcript, m_answers),
      m_platform(transcript) {
    m_screens.onRun = [this](Form& form) { loop(&form); };
    m_screens.onClosed = [this](Form& form) { m_hand.forget(form); };
    m_screens.pathOf = [this](const QString& name) { return m_platform.pathOf(name); };
}

Interpreter::~Interpreter() = default;

Result Interpreter::run() {
    Result result;
    try {
        runScript();
    } catch (const Failure& failure) {
        result = {1, m_script.line(), failure.reason};
    } catch (const std::exception& error) {
        result = {2, m_script.line(), QString::fromUtf8(error.what())};
    }
    m_transcript.flush();
    return result;
}

void Interpreter::runScript() {
    try {
        loop(nullptr);
    } catch (const EndOfScript&) {
        // forms were still open: they are gone now, and nothing of the program runs on
    }
    reportTime();
    if (const int line = m_answers.leftOver())
        throw Failure{QStringLiteral("nichts fragte nach der Antwort aus Zeile %1").arg(line)};
}

void Interpreter::reportTime() {
    if (m_times && m_current) m_times(*m_current, m_timer.elapsed());
    m_current.reset();
}

std::optional<Command> Interpreter::fetch() {
    reportTime();
    if (m_failure) throw Failure(*m_failure);  // a form caught it; the run ends all the same
    auto command = m_script.next();
    if (m_batch && (!command || command->word != u"sql")) closeBatch();
    if (m_times && command) {
        m_current = command;
        m_timer.start();
    }
    return command;
}

void Interpreter::loop(Form* form) {
    while (!form || (!form->closed() && !form->koben.ended)) {
        const auto command = fetch();
        if (command)
            execute(*command);
        else if (form)
            throw EndOfScript{};
        else
            return;
    }
}

void Interpreter::execute(const Command& command) {
    QCoreApplication::sendPostedEvents();  // what threads have told the forms meanwhile
    if (command.word != u"antwort") m_transcript.line(">", command.text);
    const auto handler = Commands::find(command.word);
    try {
        if (!handler) throw Failure{QStringLiteral("unbekannter Befehl %1").arg(command.word)};
        handler(*this, command);
    } catch (const Failure& failure) {
        if (!m_failure) m_failure = failure;
        throw;
    }
}

void Interpreter::start() {
    if (m_program) throw Failure{QStringLiteral("das Programm läuft schon")};
    do {
        m_restart = false;
        {
            Program life(*this);
            life.main = m_catalogue.make(QStringLiteral("PA_Koben"), life.koben);
            if (!life.main) throw Failure{QStringLiteral("die Hauptmaske PA_Koben fehlt")};
            life.koben.run(*life.main);
        }
        m_transcript.line("@", QStringLiteral("ende"));
    } while (m_restart);
}

void Interpreter::endProgram() {
    Koben& koben = program();
    if (koben.front() != m_program->main.get())
        throw Failure{QStringLiteral("%1 ist noch offen").arg(koben.front()->name())};
    m_hand.close(*m_program->main);
}

Koben& Interpreter::program() const {
    if (m_program) return m_program->koben;
    throw Failure{QStringLiteral("das Programm läuft nicht")};
}

Database& Interpreter::database() const {
    Database& main = program().Hauptdatenbank;
    if (!main.isOpen()) throw Failure{QStringLiteral("die Datenbank ist nicht offen")};
    return main;
}

void Interpreter::sql(const QString& statement) {
    Database& main = database();
    const QStringView text = QStringView(statement).trimmed();
    const auto begins = [&](QStringView word) { return text.startsWith(word, Qt::CaseInsensitive); };
    if (!begins(u"select") && !begins(u"transform")) {
        if (!m_batch) m_batch.emplace(main);
        try {
            main.execute(statement);
        } catch (...) {
            closeBatch();  // what ran before stands, as each statement stands alone
            throw;
        }
        return;
    }
    const Table table = main.table(statement);
    QStringList cells;
    for (int column = 0; column < table.columnCount(); ++column) cells += table.field(column).name;
    m_transcript.printed(cells.join(u'\t'));
    for (int row = 0; row < table.rowCount(); ++row) {
        cells.clear();
        for (int column = 0; column < table.columnCount(); ++column)
            cells += table.isNull(row, column) ? QStringLiteral("<Null>") : table.text(row, column);
        m_transcript.printed(cells.join(u'\t'));
    }
}

void Interpreter::closeBatch() {
    m_batch->commit();
    m_batch.reset();
}

}  // namespace koben::skript

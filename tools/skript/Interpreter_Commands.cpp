// The commands of scripts, each in its own function.
#include "tools/skript/Interpreter.h"

#include <QDir>
#include <QFile>
#include <QHash>

#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"
#include "forms/Zurueck.h"
#include "tools/skript/Show.h"

namespace koben::skript {

namespace {

/// True for the first of two words, false for the second; a Failure for any other.
bool either(const QString& word, const char* first, const char* second) {
    if (word == QLatin1String(first)) return true;
    if (word == QLatin1String(second)) return false;
    throw Failure{QStringLiteral("%1: verlangt %2 oder %3").arg(word, QLatin1String(first), QLatin1String(second))};
}

}  // namespace

Commands::Handler Commands::find(const QString& word) {
    static const QHash<QString, Handler> table{
        {QStringLiteral("heute"), heute},
        {QStringLiteral("ordner"), ordner},
        {QStringLiteral("start"), start},
        {QStringLiteral("ende"), ende},
        {QStringLiteral("neustart"), neustart},
        {QStringLiteral("menue"), menue},
        {QStringLiteral("klick"), klick},
        {QStringLiteral("doppelklick"), doppelklick},
        {QStringLiteral("text"), text},
        {QStringLiteral("tippe"), tippe},
        {QStringLiteral("verlasse"), verlasse},
        {QStringLiteral("wahl"), wahl},
        {QStringLiteral("haken"), haken},
        {QStringLiteral("auf"), auf},
        {QStringLiteral("ab"), ab},
        {QStringLiteral("zeile"), zeile},
        {QStringLiteral("markiere"), markiere},
        {QStringLiteral("zelle"), zelle},
        {QStringLiteral("sortiere"), sortiere},
        {QStringLiteral("breite"), breite},
        {QStringLiteral("taste"), taste},
        {QStringLiteral("schliesse"), schliesse},
        {QStringLiteral("antwort"), antwort},
        {QStringLiteral("zeige"), zeige},
        {QStringLiteral("erklaere"), erklaere},
        {QStringLiteral("pruefe"), pruefe},
        {QStringLiteral("titel"), titel},
        {QStringLiteral("variable"), variable},
        {QStringLiteral("setze"), setze},
        {QStringLiteral("stand"), stand},
        {QStringLiteral("schnell"), schnell},
        {QStringLiteral("sql"), sql},
        {QStringLiteral("datei"), datei},
        {QStringLiteral("schreibe"), schreibe},
        {QStringLiteral("loesche"), loesche},
        {QStringLiteral("druck"), druck},
        {QStringLiteral("netz"), netz},
        {QStringLiteral("laufwerk"), laufwerk},
        {QStringLiteral("zurueck"), zurueck},
        {QStringLiteral("wieder"), wieder},
    };
    return table.value(word, nullptr);
}

Form& Commands::frontForm(Interpreter& run) {
    if (Form* form = run.program().front()) return *form;
    throw Failure{QStringLiteral("keine Maske ist offen")};
}

// the run

void Commands::heute(Interpreter& run, const Command& command) {
    const QDate day = Datum_aus_Text(command.arguments);
    if (!day.isValid()) throw Failure{QStringLiteral("%1 ist kein Datum").arg(command.arguments)};
    if (run.m_program) throw Failure{QStringLiteral("heute steht vor start")};
    run.m_platform.fixClock(day);
}

void Commands::ordner(Interpreter& run, const Command& command) {
    if (run.m_program) throw Failure{QStringLiteral("ordner steht vor start")};
    if (command.arguments.isEmpty()) throw Failure{QStringLiteral("ordner verlangt einen Pfad")};
    run.m_platform.useFolder(command.arguments);
}

void Commands::start(Interpreter& run, const Command&) { run.start(); }

void Commands::ende(Interpreter& run, const Command&) { run.endProgram(); }

void Commands::neustart(Interpreter& run, const Command&) {
    if (!run.m_program) return run.start();
    run.endProgram();
    Koben& koben = run.program();
    if (!koben.ended && !frontForm(run).closed()) throw Failure{QStringLiteral("das Programm endete nicht")};
    run.m_restart = true;
}

void Commands::menue(Interpreter& run, const Command& command) {
    const Target entry = front(run, command.arguments);
    if (entry.form != run.program().stack().front())
        throw Failure{QStringLiteral("%1 ist noch offen").arg(entry.form->name())};
    run.m_hand.menu(entry);
}

// the hand

void Commands::klick(Interpreter& run, const Command& command) { run.m_hand.click(front(run, command.arguments)); }

void Commands::doppelklick(Interpreter& run, const Command& command) {
    run.m_hand.doubleClick(front(run, command.arguments));
}

void Commands::text(Interpreter& run, const Command& command) {
    const auto [control, value] = command.assignment();
    run.m_hand.text(front(run, control), value);
}

void Commands::tippe(Interpreter& run, const Command& command) {
    const auto [control, value] = command.assignment();
    run.m_hand.type(front(run, control), value);
}

void Commands::verlasse(Interpreter& run, const Command& command) { run.m_hand.leave(front(run, command.arguments)); }

void Commands::wahl(Interpreter& run, const Command& command) {
    const auto [control, value] = command.assignment();
    run.m_hand.pick(front(run, control), value);
}

void Commands::haken(Interpreter& run, const Command& command) {
    const QStringList words = command.words(2);
    run.m_hand.check(front(run, words[0]), either(words[1], "an", "aus"));
}

void Commands::auf(Interpreter& run, const Command& command) { run.m_hand.spin(front(run, command.arguments), true); }

void Commands::ab(Interpreter& run, const Command& command) { run.m_hand.spin(front(run, command.arguments), false); }

void Commands::zeile(Interpreter& run, const Command& command) {
    const QStringList words = command.words(2);
    run.m_hand.row(front(run, words[0]), words[1]);
}

void Commands::markiere(Interpreter& run, const Command& command) {
    const QStringList words = command.words(2, 1);
    run.m_hand.mark(front(run, words[0]), words[1]);
}

void Commands::zelle(Interpreter& run, const Command& command) {
    const auto [cell, value] = command.assignment();
    const QStringList words = command.words(cell, 3, 2);
    run.m_hand.edit(front(run, words[0]), words[1], words[2], value);
}

void Commands::sortiere(Interpreter& run, const Command& command) {
    const QStringList words = command.words(3, 1);
    run.m_hand.sort(front(run, words[0]), words[1], either(words[2], "auf", "ab"));
}

void Commands::breite(Interpreter& run, const Command& command) {
    const QStringList words = command.words(3, 1);
    run.m_hand.resize(front(run, words[0]), words[1], words[2]);
}

void Commands::taste(Interpreter& run, const Command& command) {
    const QStringList words = command.words(2);
    run.m_hand.key(front(run, words[0]), words[1]);
}

void Commands::schliesse(Interpreter& run, const Command&) { run.m_hand.close(frontForm(run)); }

void Commands::antwort(Interpreter& run, const Command& command) { run.m_answers.add(command); }

// reading and setting

void Commands::zeige(Interpreter& run, const Command& command) {
    show(toRead(run.program(), command.arguments), run.m_transcript);
}

void Commands::erklaere(Interpreter& run, const Command& command) {
    const QStringList words = command.words(3, 2);
    const Target target = toRead(run.program(), words[0]);
    auto& grid = as<Grid>(target, "keine Tabelle");
    const auto told = grid.explanation(rowOf(words[1], grid.rowCount()), columnOf(grid, words[2]));
    if (!told) throw Failure{QStringLiteral("%1 erklärt diese Zelle nicht").arg(target.name())};
    show(*told, run.program(), run.m_transcript);
}

void Commands::pruefe(Interpreter& run, const Command& command) {
    const QStringList words = command.words(2);
    if (holds(toRead(run.program(), words[0]), words[1])) return;
    throw Failure{QStringLiteral("%1 ist nicht %2").arg(words[0], words[1])};
}

void Commands::titel(Interpreter& run, const Command&) { run.m_transcript.printed(frontForm(run).caption()); }

void Commands::variable(Interpreter& run, const Command& command) {
    const auto value = run.program().read(command.arguments);
    if (!value) throw Failure{QStringLiteral("unbekannte Variable %1").arg(command.arguments)};
    run.m_transcript.printed(*value);
}

void Commands::setze(Interpreter& run, const Command& command) {
    const auto [name, value] = command.assignment();
    if (!run.program().set(name, value))
        throw Failure{QStringLiteral("%1 lässt sich nicht auf \"%2\" setzen").arg(name, value)};
}

void Commands::stand(Interpreter& run, const Command& command) {
    Koben& koben = run.program();
    Form& main = *koben.stack().front();
    if (koben.front() != &main) throw Failure{QStringLiteral("%1 ist noch offen").arg(koben.front()->name())};
    if (command.arguments.isEmpty()) throw Failure{QStringLiteral("stand verlangt einen Tag oder heute")};
    main.act([&] {
        if (koben.herdList) koben.herdList->Stand_zeigen(command.arguments);
    });
}

void Commands::schnell(Interpreter& run, const Command& command) {
    const Form& main = *run.program().stack().front();
    if (&frontForm(run) != &main) throw Failure{QStringLiteral("%1 ist noch offen").arg(frontForm(run).name())};
    const Target field = front(run, QStringLiteral("schnell"));
    run.m_hand.type(field, command.arguments);
    run.m_transcript.lines(as<Label>(front(run, QStringLiteral("schnellsatz")), "kein Text").text());
    run.m_hand.key(field, QStringLiteral("Enter"));
}

void Commands::sql(Interpreter& run, const Command& command) { run.sql(command.arguments); }

// files, printer, network

void Commands::datei(Interpreter& run, const Command& command) {
    QFile in(file(run, command.arguments));
    if (!in.open(QIODevice::ReadOnly)) throw Failure{QStringLiteral("die Datei %1 fehlt").arg(command.arguments)};
    const QString text = ausWindows1252(in.readAll());
    if (!text.isEmpty()) run.m_transcript.lines(text);
}

void Commands::schreibe(Interpreter& run, const Command& command) {
    const auto [name, value] = command.assignment();
    if (name.isEmpty() || !Textdatei_schreiben(file(run, name), value))
        throw Failure{QStringLiteral("die Datei %1 lässt sich nicht schreiben").arg(name)};
}

void Commands::loesche(Interpreter& run, const Command& command) {
    const QString path = file(run, command.arguments);
    if (QFile::exists(path) && !QFile::remove(path))
        throw Failure{QStringLiteral("die Datei %1 lässt sich nicht löschen").arg(command.arguments)};
}

void Commands::druck(Interpreter& run, const Command&) {
    const auto& job = run.m_platform.lastJob();
    if (!job) throw Failure{QStringLiteral("noch nichts wurde gedruckt")};
    for (const QString& line : job->lines) run.m_transcript.printed(line);
}

void Commands::netz(Interpreter& run, const Command& command) {
    if (command.arguments == u"aus") return run.m_platform.disconnect();
    const auto [path, file] = command.assignment();
    if (path.isEmpty() || file.isEmpty()) throw Failure{QStringLiteral("netz verlangt PFAD = DATEI oder aus")};
    run.m_platform.answerFrom(path, file);
}

void Commands::laufwerk(Interpreter& run, const Command& command) {
    const auto [name, folder] = command.assignment();
    if (name.isEmpty()) throw Failure{QStringLiteral("laufwerk verlangt NAME = ORDNER")};
    run.m_platform.plugIn(name, folder);
}

// undo and redo

namespace {

void takeBack(Koben& koben, Form& form, Transcript& transcript, Ruecknahmerichtung richtung) {
    form.act([&] {
        const Rueckmeldung result = zuruecknehmen(koben, richtung);
        if (!result.done()) return;
        const QString word =
            richtung == Ruecknahmerichtung::Zurueck ? QStringLiteral("zurück ") : QStringLiteral("wieder ");
        transcript.line("@", word + result.name);
        showAgain(koben, result);
    });
}

}  // namespace

void Commands::zurueck(Interpreter& run, const Command&) {
    takeBack(run.program(), frontForm(run), run.m_transcript, Ruecknahmerichtung::Zurueck);
}

void Commands::wieder(Interpreter& run, const Command&) {
    takeBack(run.program(), frontForm(run), run.m_transcript, Ruecknahmerichtung::Wieder);
}

}  // namespace koben::skript

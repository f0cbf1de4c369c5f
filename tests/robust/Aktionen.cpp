#include "tests/robust/Aktionen.h"

#include <QElapsedTimer>
#include <algorithm>
#include <numeric>
#include <optional>

#include "cycle/PV_Stichworte.h"
#include "exchange/PO_Pocketimport.h"
#include "exchange/S_Datensicherung_neu.h"
#include "exchange/S_Importtabelle.h"
#include "tests/support/Hand.h"
#include "tools/altdatei/OldFileWriter.h"

namespace koben::robust {

namespace {

using Work = std::function<void(Session&)>;

const QString Keyword = "neues Stichwort";

/// Marks rows of the main form, all where none are named, gives answers and works a menu entry.
Work onMain(const char* entry, const std::vector<int>& marks, const std::deque<bool>& answers,
            const std::deque<QString>& inputs = {}) {
    return [=](Session& s) {
        s.start([&](PA_Koben& main) {
            const std::vector<int> chosen = marks.empty() ? rows(main.datali.rowCount()) : marks;
            main.datali.choose(chosen.front());
            main.datali.mark(chosen);
            s.screens.answers = answers;
            s.screens.inputs = inputs;
            s.task([&] { Session::menu(main, entry); });
        });
    };
}

/// Fills a form in, gives the answers and does the deed.
void fillAndDo(Session& s, Form& form, const QString& fields, const std::function<void(Form&)>& deed,
               const std::deque<bool>& answers = {}, const std::deque<QString>& inputs = {}) {
    if (!fields.isEmpty()) play(form, fields);
    s.screens.answers = answers;
    s.screens.inputs = inputs;
    s.task([&] { deed(form); });
}

std::function<void(Form&)> clicks(const char* steps) {
    return [=](Form& form) { play(form, steps); };
}

/// Works a form of the menu.
Work onForm(const char* entry, const QString& fields, const std::function<void(Form&)>& deed,
            const std::deque<bool>& answers = {}, const std::deque<QString>& inputs = {}) {
    return [=](Session& s) {
        s.form<Form>(entry, [&](Form& form) { fillAndDo(s, form, fields, deed, answers, inputs); });
    };
}

/// A list and its entry screen: opens that by `button` and saves what is filled in.
Work inList(const char* entry, const char* button, const QString& fields) {
    return [=](Session& s) {
        s.form<Form>(entry, [&](Form& list) {
            s.screens.work([&](Form& form) { fillAndDo(s, form, fields, clicks("ok(0)")); });
            play(list, "li:1; " + QString::fromUtf8(button));
        });
    };
}

/// A new booking for the first animals, or a changed one.
Work booking(const char* entry, int animals, const QString& fields, const std::deque<bool>& answers = {},
             const char* button = "neu") {
    return [=](Session& s) {
        s.frame(entry, rows(animals), [&](PE_Bewegungsdaten& frame) {
            s.screens.work([&](Form& form) { fillAndDo(s, form, fields, clicks("ok(0)"), answers); });
            play(frame, button);
        });
    };
}

/// Works the frame of farrowings for the first sow.
Work inFrame(const char* steps, const std::deque<QString>& inputs = {}) {
    return [=](Session& s) {
        s.frame("XE_ferkelung", {1},
                [&](PE_Bewegungsdaten& frame) { fillAndDo(s, frame, {}, clicks(steps), {}, inputs); });
    };
}

/// The list of the work plan, and what is made of it there.
Work plan(const char* button = nullptr) {
    return [=](Session& s) {
        s.form<Form>("A_awarbeitspläne", [&](Form& form) {
            play(form, "woche(3)");
            if (!button) return s.task([&] { play(form, "ok(0)"); });
            s.screens.work([&](Form& list) { s.task([&] { play(list, button); }); });
            play(form, "ok(0)");
        });
    };
}

void importList(Session& s) {
    s.form<S_Importtabelle>("O_ImportExcelCSV", [&](S_Importtabelle& form) {
        s.screens.inputs = {QStringLiteral(KOBEN_SOURCE_DIR "/beispiel/herde.csv")};
        form.comöffnen.click();
        s.screens.answers = {true};
        s.task([&] { form.ok.click(); });
    });
}

/// Two services, a weaning into a pen, a treatment with a new medicine, a sow whom nobody knows. The booking frame
/// opens by itself at the end.
void importFromDevice(Session& s) {
    s.start([&](PA_Koben& main) {
        s.screens.workIn<PO_Pocketimport>([&](PO_Pocketimport& form) {
            setBytes(s.koben.Datenordner + "KOBEN2_DATEN_VON_POCKET.KO2",
                     "2\r\n1\t01.07.2026\tE7\t1\tK\t\t0\t\t\tN\r\nneu\t02.07.2026\tE7\t1\tK\t\t0\t\t\tN\r\n0\r\n"
                     "1\r\n2\t03.07.2026\t5\t7,5\t\t\tB7\tN\r\n0\r\n0\r\n0\r\n"
                     "1\r\n3\t04.07.2026\tImpfung\tNeumittel\t2\tml\t\t9\t\t\t\t1\t\t\tN\r\n0\r\n");
            s.screens.answers = {true};
            s.screens.work([](Form&) {});  // the list of what was imported
            s.screens.workIn<PE_Bewegungsdaten>([&](PE_Bewegungsdaten& frame) {
                if (s.toMainForm) frame.cmdschließen.click();
            });
            s.task([&] { form.ok[1].click(); });
        });
        Session::menu(main, "O_Importpocketpc");
        if (!s.toMainForm) return;
        if (s.done) s.done();
        throw StopHere{};
    });
}

/// The backup's wizard up to the page that makes it, and the backup.
Work backUp(bool overwrites) {
    return [=](Session& s) {
        s.form<Form>("O_Datensicherung", [&](Form& form) {
            s.screens.answers = {true, true};
            play(form, "start_sicherung; weiter_laufwerkwahl");
            fillAndDo(s, form, {}, clicks("weiter_backuperstellen"), std::deque<bool>(overwrites ? 1 : 0, true));
        });
    };
}

/// The same up to the list of backups, and the first of them read back.
void readBack(Session& s) {
    s.form<S_Datensicherung_neu>("O_Datensicherung", [&](S_Datensicherung_neu& form) {
        form.start_rettung.click();
        form.backups.choose(0);
        fillAndDo(s, form, {}, clicks("weiter_backuprettung"), {true});
    });
}

/// The sample farm with a backup of today.
const DataFolder& savedFarm() {
    static const DataFolder folder;
    if (QFile::exists(folder.database())) return folder;
    folder.copyFrom(sampleFarm());
    Session first(folder);
    perform({"", nullptr, backUp(false)}, first);
    return folder;
}

void startOnly(Session& s) {
    s.task([&] { s.start(); });
}

void closeAtEnd(Session& s) {
    s.start([&](PA_Koben& main) {
        main.linksrechts.click();
        s.task([&] { main.closeBox(); });
    });
}

/// The sample farm with the predecessor's files beside it, a small herd of a few litters.
const DataFolder& farmWithPredecessor() {
    static const DataFolder folder;
    if (QFile::exists(folder.database())) return folder;
    folder.copyFrom(sampleFarm());
    OldFileWriter old(4);
    old.program("SHORT");
    for (int i = 1; i <= 9; ++i) {
        old.row("Sauen", {{"Art", "Sau"}, {"Nummer", QString::number(500 + i)}});
        for (int litter = 1; litter <= 3; ++litter)
            old.row("Ferkelung", {{"Kennung", i}, {"Datum", QDate(2025, litter, i)}, {"Ferkel_Gesamt", 12}});
    }
    for (int i = 0; i < 40; ++i) old.row("Ferkelverkauf", {{"Kennung", i % 10}, {"Anzahl_Verkauf", i}});
    setBytes(folder.data() + "koben.mdb", old.bytes());
    setBytes(folder.data() + "koben.exe", "x");
    return folder;
}

/// The sample farm after a weaning with losses and piglets taken in.
const DataFolder& weanedFarm() {
    static const DataFolder folder;
    if (QFile::exists(folder.database())) return folder;
    folder.copyFrom(sampleFarm());
    Session first(folder);
    perform(taskNamed("absetzungMitEinbuchen"), first);
    return folder;
}

std::vector<Task> onHerd() {
    return {{"ersterStart", nullptr, startOnly},
            {"import", emptyFarm, importList, "! Die Daten wurden in der Datenbasis gespeichert"},
            {"geraetImport", sampleFarm, importFromDevice, "! Der Import wurde abgeschlossen", "", true, true, true},
            {"geraetExport", sampleFarm, onForm("O_Exportpocketpc", "tdat=01.01.2020", clicks("ok(0)")),
             "! Die Exportdatei wurde im Ordner", "", true, false},
            {"statusBeimStart", sampleFarm, startOnly, "", "update Sauen set Status = 'B'"},
            {"tierLoeschen", sampleFarm, onMain("XB_schweinlöschen", {1}, {true})},
            {"stallnummern", sampleFarm, onMain("XB_Stallnrneuzuordnen", rows(40), {true}, {"S9"})},
            {"ferkelInMast", sampleFarm, onMain("XB_Markierte_Ferkel_in_Mast", {42, 43, 44, 45}, {true, true})},
            {"markierteSelektieren", sampleFarm, onMain("XB_markierteschweineselektieren", {}, {})},
            {"festeSaunummer", sampleFarm, onMain("XB_Feste_Saunummer_zuordnen", {1}, {true}, {"6"})},
            {"datenuebernahme", farmWithPredecessor, onForm("O_Datenauskoben1", {}, clicks("start"), {true}),
             "! Die Daten wurden erforgreich"},
            {"ruecknahme", weanedFarm, onForm("V_verlauf", {}, clicks("ruecknahme"))},
            {"komprimieren", sampleFarm, onMain("O_Datenbankkomprimieren", {1}, {true}),
             "! Die Komprimierung wurde erfolgreich", "", false, false},
            {"datensicherung", sampleFarm, backUp(false), "! Die Datensicherung wurde erstellt", "", true, false},
            {"datensicherungUeberschreiben", savedFarm, backUp(true), "! Die Datensicherung wurde erstellt",
             "delete from Sauen where ID > 9", false, false},
            {"rueckholung", savedFarm, readBack, "! Die Daten wurden eingelesen",
             "delete from Sauen where ID > 9;insert into Termine (Terminart) values ('neu')", true, false},
            {"einstellungenAmEnde", sampleFarm, closeAtEnd, "", "", true, false}};
}

std::vector<Task> bookings() {
    const QString service = "kom(0)=E7; kom(4)=" + Keyword, litter = "tdat=01.03.2026; tz(0)=12; kom(1)=" + Keyword;
    const QString weaning = "tz(0)=8; kom(1)=" + Keyword + "; kom(2)=B1", check = "kom(0)=J; kom(2)=" + Keyword;
    const QString move = "tz=3; kom(0)=2; kom(2)=" + Keyword, loss = "gridli*1,3; optiverkauf(%1); kom(2)=" + Keyword;
    const QString sale = "tz(0)=3; tz(1)=12,50; optiverkauf(%1); kom(0)=" + Keyword;
    const QString treatment = "kom(6)=Impfung; kom(0)=Neumittel; tz(0)=2; tz(1)=10; kom(5)=" + Keyword;
    std::vector<Task> table = {
        {"belegung", sampleFarm, booking("XE_belegung", 1, service), ToneLine},
        {"belegungVonVierzig", sampleFarm, booking("XE_belegung", 40, service, {true}), ToneLine},
        {"traechtigkeit", sampleFarm, booking("XE_trächtigkeit", 1, check), ToneLine},
        {"ferkelung", sampleFarm, booking("XE_ferkelung", 1, litter), ToneLine},
        {"absetzungMitEinbuchen", sampleFarm, booking("XE_absetzung", 2, weaning, {true, true, true}), ToneLine},
        {"buchungAendern", sampleFarm, booking("XE_ferkelung", 1, "tdat=01.12.2025", {}, "ändern"), ToneLine},
        {"buchungLoeschen", sampleFarm, inFrame("li:1; löschen")},
        {"buchungKopieren", sampleFarm, inFrame("kopieren", {"01.03.2026"}),
         "! Die markierte Buchung wurde auf das Datum"}};
    for (Task& cycle : table) cycle.derives = true;
    table.insert(
        table.end(),
        {{"rahmenSchliessen", sampleFarm, inFrame("cmdschließen"), "", "update Belegung set Datum = #07/01/2026#"},
         {"verschiebung", sampleFarm, booking("XE_Verschiebung", 1, move), ToneLine},
         {"verlustMitLoeschen", sampleFarm, booking("XE_verluste", 1, loss.arg(Delete)), ToneLine},
         {"verlustVonDreienMitAbgang", sampleFarm, booking("XE_verluste", 3, loss.arg(Leave), {true}), ToneLine},
         {"ferkelverkaufMitLoeschen", sampleFarm, booking("XE_Ferkelverkauf", 1, sale.arg(Delete)), ToneLine},
         {"ferkelverkaufMitAbgang", sampleFarm, booking("XE_Ferkelverkauf", 1, sale.arg(Leave)), ToneLine},
         {"behandlung", sampleFarm, booking("XE_behandlung", 1, treatment, {true}), ToneLine},
         {"behandlungVonVierzig", sampleFarm, booking("XE_behandlung", 40, treatment, {true, true}), ToneLine}});
    return table;
}

/// The farm's losses and trade, and the herd.
std::vector<Task> administration() {
    const char *const losses = "XB_VerlusteFerkel", *const trade = "XB_ferkeleinverkauf";
    const char* const oneLoss = "insert into Verluste (Datum, Anzahl_Ferkel, Kennung) values (#06/20/2026#, 2, 1)";
    const char* const oneSale =
        "insert into Ferkelverkauf (Datum, Anzahl_Verkauf, Kennung) values (#06/20/2026#, 2, 1)";
    const QString sale = "tz(1)=3; optiverkauf(%1); kom(0)=" + Keyword;
    const QString animal = "t(0)=777; kom(1)=" + Keyword + "; kom(2)=Z1; kom(3)=" + Keyword;
    return {
        {"betriebsverlust", sampleFarm, inList(losses, "neu", "gridli*1,3; optiverkauf(2); tz(1)=20; kom(1)=1"),
         ToneLine},
        {"betriebsverlustLoeschen", sampleFarm, onForm(losses, {}, clicks("löschen")), "", oneLoss},
        {"ferkeleinkauf", sampleFarm, inList(trade, "neu", "tz(0)=20; kom(0)=" + Keyword + "; kom(3)=FB"), ToneLine},
        {"betriebsverkaufMitAbgang", sampleFarm, inList(trade, "neu", sale.arg(Leave)), ToneLine},
        {"betriebsverkaufAendern", sampleFarm, inList(trade, "ändern", sale.arg(Delete)), ToneLine, oneSale},
        {"betriebsverkaufKopieren", sampleFarm, onForm(trade, {}, clicks("kopieren"), {}, {"01.07.2026"}), "", oneSale},
        {"schweineVerkaufen", sampleFarm,
         onForm("XB_verkaufschweine", "li*0,1,2,10,20; tdat=14.07.2026; kom(0)=" + Keyword + "; kom(1)=neuer Abnehmer",
                clicks("neu"), {true}),
         "! ACHTUNG!!!",
         "insert into Behandlung (Datum, Wartezeit_Datum, Kennung) values (#07/10/2026#, #07/30/2026#, 2)"},
        {"tierNeu", sampleFarm, onForm("XB_neueschweine", animal, clicks("ok")), ToneLine},
        {"tierAendern", sampleFarm, onForm("XB_schweinändern", animal, clicks("ok")), ToneLine,
         "insert into Verluste (Datum, Muttersau) values (#06/20/2026#, '1');"
         "insert into Ferkelverkauf (Datum, Muttersau) values (#06/20/2026#, '1')"},
        {"selektierenNachRegel", sampleFarm, onForm("XB_schweineselektieren", "kon", clicks("entselekt(1)")), "",
         "update Sauen set Selektiert = 'X' where Art = 'Eber'", true},
        {"standardwerte", sampleFarm, onForm("XB_neueschweine", {}, clicks("standard")),
         "! Die Standardwerte wurden gesichert", "", true, false}};
}

/// Master data, settings, and the files that the work plan writes.
std::vector<Task> masterDataAndOutput() {
    const char *const plans = "V_Arbeitspläne", *const medicines = "V_Medizinundwartezeiten";
    const auto keyword = [](Form& form) { static_cast<PV_Stichworte&>(form).li.editByUser(1, 1, Keyword); };
    const char* const due =
        "insert into Sauen (Art, Nummer) select 'Sau', a.Nummer & '/' & b.ID from Sauen a, Sauen b where b.ID < 4;"
        "update Sauen set L_Ferkelung = #06/20/2026#";
    return {{"medizin", sampleFarm, inList(medicines, "neu", "t=Neumittel; tz(0)=2"), ToneLine},
            {"arbeitsplandatenAendern", sampleFarm, inList(plans, "ändern", "t=" + Keyword), ToneLine},
            {"arbeitsplandatenLoeschen", sampleFarm, onForm(plans, "li:1", clicks("löschen"))},
            {"termin", sampleFarm, inList("V_Terminverwaltung", "neu", "t=Stallputz; tdat=01.08.2026"), ToneLine},
            {"stichwortAendern", sampleFarm, onForm("V_Stichwortverwaltung", {}, keyword)},
            {"einstellungen", sampleFarm, onForm("O_Einstellungen", "tzahl(2)=115", clicks("ok")), "", "", true, false},
            {"arbeitsplan", sampleFarm, plan(), ListLine, due, true, false},
            {"arbeitsplanAlsText", sampleFarm, plan("comtext"), "+ PA_Textausgabe", due, true, false},
            {"arbeitsplanAlsTabelle", sampleFarm, plan("comexcel"), "", due, true, false},
            {"arbeitsplanAlsBericht", sampleFarm, plan("roexplorer(0)"), "", due, true, false}};
}

std::vector<Task> all() {
    std::vector<Task> table = onHerd();
    for (const auto& part : {bookings(), administration(), masterDataAndOutput()})
        table.insert(table.end(), part.begin(), part.end());
    return table;
}

}  // namespace

std::vector<int> rows(int count) {
    std::vector<int> all(static_cast<size_t>(count));
    std::iota(all.begin(), all.end(), 1);
    return all;
}

const std::vector<Task>& tasks() {
    static const std::vector<Task> table = all();
    return table;
}

const Task& taskNamed(const std::string& name) {
    const auto found = std::find_if(tasks().begin(), tasks().end(), [&](const Task& a) { return a.name == name; });
    return found == tasks().end() ? throw std::out_of_range(name) : *found;
}

std::unique_ptr<DataFolder> prepared(const Task& task) {
    auto folder = std::make_unique<DataFolder>();
    if (task.farm) folder->copyFrom(task.farm());
    const QStringList statements = QString::fromUtf8(task.prepare).split(u';', Qt::SkipEmptyParts);
    if (!statements.isEmpty())
        folder->edit([&](Database& db) {
            for (const QString& statement : statements) db.execute(statement);
        });
    return folder;
}

void perform(const Task& task, Session& run) {
    try {
        task.run(run);
    } catch (const StopHere&) {
        return;
    }
    ADD_FAILURE() << task.name << " was not reached: " << run.screens.log.join(u'\n').toStdString();
}

QString complaints(const Task& task, Session& run) {
    QString said;
    try {
        task.run(run);
    } catch (const DatabaseError& error) {
        said = error.message();
    } catch (const StopHere&) {
    }
    const QString confirmed = QString::fromUtf8(task.confirmed);
    for (const QString& line : run.screens.log.filter("! "))
        if (confirmed.isEmpty() || !line.startsWith(confirmed)) said += line.mid(2);
    return said;
}

QString disturbed(const std::string& what, const Task& task, const DataFolder& folder,
                  const std::function<void(Session&)>& on, const std::function<void(Session*)>& over) {
    const QString file = folder.root() + QStringLiteral("/gesagt");
    setBytes(file, {});
    shielded(what, [&] {
        QString said;
        {
            Session run(folder);
            run.begins = [&] {
                run.screens.takeLog();
                on(run);
            };
            said = complaints(task, run);
            if (over) over(&run);
        }
        if (over) over(nullptr);
        setBytes(file, said.toUtf8());
        if (!said.isEmpty()) expectMessage(said);
        if (longRun()) printf("%s: %s\n", what.c_str(), said.toUtf8().constData());
    });
    return QString::fromUtf8(bytesOf(file));
}

void atEachReport(Session& run, const std::function<bool()>& goOn) {
    run.screens.onProgress = [goOn](const QString&, int) { return goOn(); };
    run.screens.onBreathe = [&run, goOn] {
        if (!goOn()) run.koben.front()->closeBox();
    };
}

Comparison undisturbed(const Task& task, bool toMainForm) {
    static std::map<std::tuple<std::string, bool, const DataFolder& (*)()>, Comparison> known;
    const auto [place, isNew] = known.try_emplace({task.name, toMainForm, task.farm});
    Comparison& found = place->second;
    if (!isNew) return found;
    const auto folder = prepared(task);
    {
        Session run(*folder);
        run.begins = [] { throw StopHere{}; };
        perform(task, run);
    }
    found.before = stateOf(*folder);
    {
        Session run(*folder);
        run.toMainForm = toMainForm;
        QElapsedTimer clock;
        run.begins = [&] {
            Workspace::setFaultHook([&](const QString&) { ++found.statements; });
            atEachReport(run, [&] { return ++found.reports > 0; });
            clock.start();
        };
        run.done = [&] { found.microseconds = static_cast<int>(clock.nsecsElapsed() / 1000); };
        perform(task, run);
        EXPECT_TRUE(run.screens.answers.empty() && run.screens.inputs.empty()) << task.name;
    }
    found.after = stateOf(*folder);
    EXPECT_EQ(found.statements > 0, task.writesDatabase) << task.name;
    return found;
}

void expectRest(const State& left, const Comparison& whole, bool done) {
    EXPECT_TRUE(left.data == whole.after.data || (!done && left.data == whole.before.data))
        << "half an action, or a confirmed one lost:\n"
        << left.data.toStdString();
    const auto in = [](const State& stand, const QString& name) {
        const auto found = stand.files.find(name);
        return found == stand.files.end() ? std::nullopt : std::optional(found->second);
    };
    for (const State* side : {&whole.before, &whole.after})
        for (const auto& [name, bytes] : side->files)
            EXPECT_TRUE(in(left, name) == in(whole.after, name) || (!done && in(left, name) == in(whole.before, name)))
                << "half a file, or a confirmed one lost: " << name.toStdString();
}

}  // namespace koben::robust

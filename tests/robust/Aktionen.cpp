#include "tests/robust/Aktionen.h"

#include <QElapsedTimer>
#include <algorithm>
#include <numeric>
#include <optional>

#include "exchange/S_Importtabelle.h"

namespace koben::robust {

namespace {

void importieren(Sitzung& s) {
    s.formular<S_Importtabelle>("O_ImportExcelCSV", [&](S_Importtabelle& form) {
        s.screens.inputs = {QStringLiteral(KOBEN_SOURCE_DIR "/beispiel/herde.csv")};
        form.comöffnen.click();
        s.screens.answers = {true};
        s.aktion([&] { form.ok.click(); });
    });
}

/// Marks rows of the main form, all where none are named, gives answers and works a menu entry.
std::function<void(Sitzung&)> imMenue(const char* entry, const std::vector<int>& marks, const std::deque<bool>& answers,
                                      const std::deque<QString>& inputs = {}) {
    return [=](Sitzung& s) {
        s.start([&](PA_Koben& main) {
            const std::vector<int> chosen = marks.empty() ? rows(main.datali.rowCount()) : marks;
            main.datali.choose(chosen.front());
            main.datali.mark(chosen);
            s.screens.answers = answers;
            s.screens.inputs = inputs;
            s.aktion([&] { Sitzung::menue(main, entry); });
        });
    };
}

void starten(Sitzung& s) {
    s.aktion([&] { s.start(); });
}

void beenden(Sitzung& s) {
    s.start([&](PA_Koben& main) {
        main.linksrechts.click();
        s.aktion([&] { main.closeBox(); });
    });
}

std::vector<Aktion> hauptform() {
    return {{"ersterStart", nullptr, starten},
            {"import", leereVorlage, importieren, "! Die Daten wurden in der Datenbasis gespeichert"},
            {"statusBeimStart", vorlage, starten, "", "update Sauen set Status = 'B'"},
            {"tierLoeschen", vorlage, imMenue("XB_schweinlöschen", {1}, {true})},
            {"stallnummern", vorlage, imMenue("XB_Stallnrneuzuordnen", rows(40), {true}, {QStringLiteral("S9")})},
            {"ferkelInMast", vorlage, imMenue("XB_Markierte_Ferkel_in_Mast", {42, 43, 44, 45}, {true, true})},
            {"markierteSelektieren", vorlage, imMenue("XB_markierteschweineselektieren", {}, {})},
            {"festeSaunummer", vorlage, imMenue("XB_Feste_Saunummer_zuordnen", {1}, {true}, {QStringLiteral("6")})},
            {"komprimieren", vorlage, imMenue("O_Datenbankkomprimieren", {1}, {true}),
             "! Die Komprimierung wurde erfolgreich", "", false, false},
            {"einstellungenAmEnde", vorlage, beenden, "", "", true, false}};
}

std::vector<Aktion> alle() {
    std::vector<Aktion> table = hauptform();
    for (const auto& part : {buchungen(), verwaltung()}) table.insert(table.end(), part.begin(), part.end());
    return table;
}

}  // namespace

std::vector<int> rows(int count) {
    std::vector<int> all(static_cast<size_t>(count));
    std::iota(all.begin(), all.end(), 1);
    return all;
}

const std::vector<Aktion>& aktionen() {
    static const std::vector<Aktion> table = alle();
    return table;
}

const Aktion& finde(const std::string& name) {
    const auto found =
        std::find_if(aktionen().begin(), aktionen().end(), [&](const Aktion& a) { return a.name == name; });
    return found == aktionen().end() ? throw std::out_of_range(name) : *found;
}

std::unique_ptr<Ordner> angerichtet(const Aktion& aktion) {
    auto folder = std::make_unique<Ordner>();
    if (aktion.hof) folder->copyFrom(aktion.hof());
    const QStringList statements = QString::fromUtf8(aktion.anrichten).split(u';', Qt::SkipEmptyParts);
    if (!statements.isEmpty())
        folder->edit([&](Database& db) {
            for (const QString& statement : statements) db.execute(statement);
        });
    return folder;
}

void spielen(const Aktion& aktion, Sitzung& run) {
    try {
        aktion.lauf(run);
    } catch (const HierHalt&) {
        return;
    }
    ADD_FAILURE() << aktion.name << " was not reached: " << run.screens.log.join(u'\n').toStdString();
}

QString klagen(const Aktion& aktion, Sitzung& run) {
    QString said;
    try {
        aktion.lauf(run);
    } catch (const DatabaseError& error) {
        said = error.message();
    } catch (const HierHalt&) {
    }
    const QString confirmed = QString::fromUtf8(aktion.bestaetigt);
    for (const QString& line : run.screens.log.filter(QStringLiteral("! ")))
        if (confirmed.isEmpty() || !line.startsWith(confirmed)) said += line.mid(2);
    return said;
}

QString gestoert(const std::string& what, const Aktion& aktion, const Ordner& folder,
                 const std::function<void(Sitzung&)>& an, const std::function<void(Sitzung*)>& ab) {
    const QString file = folder.root() + QStringLiteral("/gesagt");
    setBytes(file, {});
    abgeschirmt(what, [&] {
        QString said;
        {
            Sitzung run(folder);
            run.beginnt = [&] {
                run.screens.takeLog();
                an(run);
            };
            said = klagen(aktion, run);
            if (ab) ab(&run);
        }
        if (ab) ab(nullptr);
        setBytes(file, said.toUtf8());
        if (!said.isEmpty()) pruefeMeldung(said);
        if (longRun()) printf("%s: %s\n", what.c_str(), said.toUtf8().constData());
    });
    return QString::fromUtf8(bytesOf(file));
}

void beiMeldung(Sitzung& run, const std::function<bool()>& weiter) {
    run.screens.onProgress = [weiter](const QString&, int) { return weiter(); };
    run.screens.onBreathe = [&run, weiter] {
        if (!weiter()) run.koben.front()->closeBox();
    };
}

Vergleich ungestoert(const Aktion& aktion, bool bisHauptform) {
    static std::map<std::tuple<std::string, bool, const Ordner& (*)()>, Vergleich> known;
    const auto [place, isNew] = known.try_emplace({aktion.name, bisHauptform, aktion.hof});
    Vergleich& found = place->second;
    if (!isNew) return found;
    const auto folder = angerichtet(aktion);
    {
        Sitzung run(*folder);
        run.beginnt = [] { throw HierHalt{}; };
        spielen(aktion, run);
    }
    found.vorher = stand(*folder);
    {
        Sitzung run(*folder);
        run.bisHauptform = bisHauptform;
        QElapsedTimer clock;
        run.beginnt = [&] {
            Workspace::setFaultHook([&](const QString&) { ++found.anweisungen; });
            beiMeldung(run, [&] { return ++found.meldungen > 0; });
            clock.start();
        };
        run.fertig = [&] { found.mikrosekunden = static_cast<int>(clock.nsecsElapsed() / 1000); };
        spielen(aktion, run);
        EXPECT_TRUE(run.screens.answers.empty() && run.screens.inputs.empty()) << aktion.name;
    }
    found.nachher = stand(*folder);
    EXPECT_EQ(found.anweisungen > 0, aktion.schreibtDatenbank) << aktion.name;
    return found;
}

void pruefeRest(const Stand& left, const Vergleich& whole, bool fertig) {
    EXPECT_TRUE(left.daten == whole.nachher.daten || (!fertig && left.daten == whole.vorher.daten))
        << "half an action, or a confirmed one lost:\n"
        << left.daten.toStdString();
    const auto in = [](const Stand& stand, const QString& name) {
        const auto found = stand.dateien.find(name);
        return found == stand.dateien.end() ? std::nullopt : std::optional(found->second);
    };
    for (const Stand* side : {&whole.vorher, &whole.nachher})
        for (const auto& [name, bytes] : side->dateien)
            EXPECT_TRUE(in(left, name) == in(whole.nachher, name) ||
                        (!fertig && in(left, name) == in(whole.vorher, name)))
                << "half a file, or a confirmed one lost: " << name.toStdString();
}

}  // namespace koben::robust

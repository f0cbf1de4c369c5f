#include "tests/robust/Aktionen.h"

#include <QElapsedTimer>
#include <numeric>

#include "bookings/PE_Bewegungsdaten_Absetzung.h"
#include "bookings/PE_Bewegungsdaten_Belegung.h"
#include "bookings/PE_Bewegungsdaten_Ferkelung.h"
#include "exchange/S_Importtabelle.h"

namespace koben::robust {

namespace {

constexpr int Sauen = 40;
const char* const Ton = "~";

std::vector<int> rows(int count) {
    std::vector<int> all(static_cast<size_t>(count));
    std::iota(all.begin(), all.end(), 1);
    return all;
}

void importieren(Sitzung& s) {
    s.start([&](PA_Koben& main) {
        s.screens.workIn<S_Importtabelle>([&](S_Importtabelle& form) {
            s.screens.inputs = {QStringLiteral(KOBEN_SOURCE_DIR "/beispiel/herde.csv")};
            form.comöffnen.click();
            s.screens.answers = {true};
            s.aktion([&] { form.ok.click(); });
        });
        Sitzung::menue(main, "O_ImportExcelCSV");
    });
}

void belegen(Sitzung& s, int count) {
    s.neu<PE_Bewegungsdaten_Belegung>("XE_belegung", rows(count), [&](PE_Bewegungsdaten_Belegung& form) {
        eingeben(form.kom[0], QStringLiteral("E7"));
        eingeben(form.kom[4], QStringLiteral("neues Stichwort"));
        if (count > 1) s.screens.answers = {true};
        s.aktion([&] { form.ok[0].click(); });
    });
}

void abferkeln(Sitzung& s) {
    s.neu<PE_Bewegungsdaten_Ferkelung>("XE_ferkelung", {1}, [&](PE_Bewegungsdaten_Ferkelung& form) {
        eingeben(form.tdat, QStringLiteral("01.03.2026"));
        eingeben(form.tz[0], QStringLiteral("12"));
        eingeben(form.kom[1], QStringLiteral("neues Stichwort"));
        s.aktion([&] { form.ok[0].click(); });
    });
}

void absetzen(Sitzung& s) {
    s.neu<PE_Bewegungsdaten_Absetzung>("XE_absetzung", {1, 2}, [&](PE_Bewegungsdaten_Absetzung& form) {
        eingeben(form.tz[0], QStringLiteral("8"));
        eingeben(form.kom[1], QStringLiteral("neues Stichwort"));
        eingeben(form.kom[2], QStringLiteral("B1"));
        s.screens.answers = {true, true, true};
        s.aktion([&] { form.ok[0].click(); });
    });
}

void buchungAendern(Sitzung& s) {
    s.rahmen("XE_ferkelung", {1}, [&](PE_Bewegungsdaten& frame) {
        s.screens.workIn<PE_Bewegungsdaten_Ferkelung>([&](PE_Bewegungsdaten_Ferkelung& form) {
            eingeben(form.tdat, QStringLiteral("01.12.2025"));
            s.aktion([&] { form.ok[0].click(); });
        });
        frame.ändern.click();
    });
}

/// Works the frame of farrowings for the first sow.
std::function<void(Sitzung&)> imRahmen(const std::function<void(Sitzung&, PE_Bewegungsdaten&)>& tat) {
    return [tat](Sitzung& s) {
        s.rahmen("XE_ferkelung", {1}, [&](PE_Bewegungsdaten& frame) { s.aktion([&] { tat(s, frame); }); });
    };
}

/// Marks rows of the main form, gives answers and works a menu entry.
std::function<void(Sitzung&)> imMenue(const char* entry, const std::vector<int>& marks, const std::deque<bool>& answers,
                                      const std::deque<QString>& inputs = {}) {
    return [=](Sitzung& s) {
        s.start([&](PA_Koben& main) {
            main.datali.choose(marks.front());
            main.datali.mark(marks);
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

std::vector<Aktion> alle() {
    const auto ein = [](Sitzung& s) { belegen(s, 1); };
    const auto vierzig = [](Sitzung& s) { belegen(s, Sauen); };
    const auto schliessen = imRahmen([](Sitzung&, PE_Bewegungsdaten& frame) { frame.cmdschließen.click(); });
    const auto loeschen = imRahmen([](Sitzung&, PE_Bewegungsdaten& frame) {
        frame.li.choose(1);
        frame.löschen.click();
    });
    const auto kopieren = imRahmen([](Sitzung& s, PE_Bewegungsdaten& frame) {
        s.screens.inputs = {QStringLiteral("01.03.2026")};
        frame.kopieren.click();
    });
    return {{"ersterStart", nullptr, starten},
            {"import", leereVorlage, importieren, "! Die Daten wurden in der Datenbasis gespeichert"},
            {"belegung", vorlage, ein, Ton},
            {"belegungVonVierzig", vorlage, vierzig, Ton},
            {"ferkelung", vorlage, abferkeln, Ton},
            {"absetzungMitEinbuchen", vorlage, absetzen, Ton},
            {"buchungAendern", vorlage, buchungAendern, Ton},
            {"rahmenSchliessen", vorlage, schliessen, "", "update Belegung set Datum = #07/01/2026#"},
            {"statusBeimStart", vorlage, starten, "", "update Sauen set Status = 'B'"},
            {"tierLoeschen", vorlage, imMenue("XB_schweinlöschen", {1}, {true})},
            {"buchungLoeschen", vorlage, loeschen},
            {"buchungKopieren", vorlage, kopieren, "! Die markierte Buchung wurde auf das Datum"},
            {"stallnummern", vorlage, imMenue("XB_Stallnrneuzuordnen", rows(Sauen), {true}, {QStringLiteral("S9")})},
            {"ferkelInMast", vorlage, imMenue("XB_Markierte_Ferkel_in_Mast", {42, 43, 44, 45}, {true, true})},
            {"markierteSelektieren", vorlage, imMenue("XB_markierteschweineselektieren", rows(Sauen), {})},
            {"festeSaunummer", vorlage, imMenue("XB_Feste_Saunummer_zuordnen", {1}, {true}, {QStringLiteral("6")})},
            {"komprimieren", vorlage, imMenue("O_Datenbankkomprimieren", {1}, {true}),
             "! Die Komprimierung wurde erfolgreich", "", false, false},
            {"einstellungenAmEnde", vorlage, beenden, "", "", true, false}};
}

}  // namespace

const std::vector<Aktion>& aktionen() {
    static const std::vector<Aktion> table = alle();
    return table;
}

std::unique_ptr<Ordner> angerichtet(const Aktion& aktion) {
    auto folder = std::make_unique<Ordner>();
    if (aktion.hof) folder->copyFrom(aktion.hof());
    if (*aktion.anrichten) folder->edit([&](Database& db) { db.execute(QString::fromUtf8(aktion.anrichten)); });
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

Vergleich ungestoert(const Aktion& aktion) {
    Vergleich found;
    const auto folder = angerichtet(aktion);
    {
        Sitzung run(*folder);
        run.beginnt = [] { throw HierHalt{}; };
        spielen(aktion, run);
    }
    found.vorher = stand(*folder);
    {
        Sitzung run(*folder);
        QElapsedTimer clock;
        run.beginnt = [&] {
            Workspace::setFaultHook([&](const QString&) { ++found.anweisungen; });
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

}  // namespace koben::robust

// A farmer's day at the keyboard: what each errand costs in key strokes, played through the real windows.
#include <QAbstractButton>
#include <QTemporaryDir>

#include "app/Katalog.h"
#include "bookings/PE_Bewegungsdaten_Belegung.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "herd/PA_Koben.h"
#include "tests/ui/Tasten.h"
#include "ui/Application.h"

namespace koben::ui {
namespace {

/// What is typed into a window from its opening on; what it opens takes the next line.
struct Window {
    const char* form;
    const char* keys;
};

struct Errand {
    const char* name;
    int before;  ///< strokes that it took when Enter was Tab
    int now;     ///< and takes; an answered question counts as one
    std::vector<Window> windows;
    const char* sql;
    int expected;
};

const Window Frame{"PE_Bewegungsdaten", "<Return><Esc>"};

// `before`: the same errand when Enter was Tab and the bookings had to be reached through the menus, counted by this
// typist: every stroke from the main window until it is back in front.
const Errand Errands[] = {
    {"eine Jungsau vom Lieferschein",
     35,
     21,
     {{"PA_Koben", "<Ctrl+N>"}, {"PB_Neues_Schwein", "1101<Alt+M>47110<Alt+E>150126<Alt+D>t<Ctrl+Return>"}},
     "select count(*) from Sauen where Nummer = '1101' and Ohrmarke = '47110' and Geburtsdatum = #01/15/2026# and "
     "Zugangsdatum = #07/15/2026# and Rasse = 'DE'",
     1},
    {"eine Belegung",
     27,
     16,
     {{"PA_Koben", "<Ctrl+F>1023<Ctrl+1>"}, Frame, {"PE_Bewegungsdaten_Belegung", "1407<Return>E1<Ctrl+Return>"}},
     "select count(*) from Belegung where Ebernr = 'E1' and Datum = #07/14/2026#",
     1},
    {"drei verstreute Sauen",
     81,
     28,
     {{"PA_Koben", "<Ctrl+F>1023+1041+1077+<Ctrl+1>"},
      Frame,
      {"PE_Bewegungsdaten_Belegung", "1407<Return>E1<Ctrl+Return>"}},
     "select count(*) from Belegung where Ebernr = 'E1' and Datum = #07/14/2026#",
     3},
    {"eine Ferkelung mit zwei Verlusten",
     26,
     15,
     {{"PA_Koben", "<Ctrl+F>1023<Ctrl+3>"},
      Frame,
      {"PE_Bewegungsdaten_Ferkelung", "<Return>14<Return*2>2<Ctrl+Return>"}},
     "select count(*) from Ferkelung where Ferkel_Gesamt = 14 and Ferkel_Lebendig = 12 and Ferkel_Tot = 2",
     1},
    {"dieselbe in einer Zeile",
     26,
     13,
     {{"PA_Koben", "<Ctrl+K>1023 f 14/2<Return>"}},
     "select count(*) from Ferkelung where Ferkel_Gesamt = 14 and Ferkel_Lebendig = 12 and Ferkel_Tot = 2",
     1},
    {"eine Absetzung mit Einbuchen der Ferkel",
     28,
     17,
     {{"PA_Koben", "<Ctrl+F>1050<Ctrl+4>"},
      Frame,
      {"PE_Bewegungsdaten_Absetzung", "<Return*2>7,8<Alt+E>A1<Ctrl+Return>"}},
     "select count(*) from Sauen where Art = 'Ferkel' and Nummer like 'A1-*'",
     12},
    {"eine Behandlung",
     29,
     12,
     {{"PA_Koben", "<Ctrl+F>1023<Ctrl+8>"}, Frame, {"PE_Bewegungsdaten_Behandlung", "<Return>Wu<Ctrl+Return>"}},
     "select count(*) from Behandlung where Behandlungsart = 'Wurmkur' and Medikament = 'Ivomec' and Menge = 3",
     1},
};

struct Hof : testing::Test {
    QTemporaryDir data;
    TestScreens screens;
    TestPlatform platform;
    Koben koben{screens, platform, katalog()};

    Hof() {
        static_cast<Application*>(qApp)->onFailure = [](const QString& reason) {
            ADD_FAILURE() << reason.toStdString();
        };
        platform.folder = data.path() + u'/';
        Workspace workspace;
        Datenbank_anlegen(workspace, data.filePath("koben2.mdb"));
        Database db = workspace.open(data.filePath("koben2.mdb"));
        for (const char* number : {"1003", "1011", "1023", "1041", "1050", "1077"})
            db.execute(QStringLiteral("insert into Sauen (Art, Nummer, Stallnr) values ('Sau', '%1', 'D1')")
                           .arg(QString::fromUtf8(number)));
        db.execute("insert into Sauen (Art, Nummer) values ('Eber', 'E1')");
        db.execute(
            QStringLiteral("insert into Ferkelung (Kennung, Datum, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot) "
                           "select ID, #06/17/2026#, 12, 12, 0 from Sauen where Nummer = '1050'"));
        db.execute(
            QStringLiteral("insert into Medikamente (Medikament, Behandlungsart, Menge, Einheit, "
                           "Wartezeit_Tage, Kosten_je_Gabe) values ('Ivomec', 'Wurmkur', 3, 'ml', 28, 1.5)"));
        QFile mask(data.filePath("PB_Neues_Schwein.ko1"));
        if (mask.open(QIODevice::WriteOnly)) mask.write("Sau\r\nJung\r\nD1\r\n\r\n\r\nDE\r\n");
    }
};

struct TastenTest : Hof, testing::WithParamInterface<Errand> {};

TEST_P(TastenTest, EinGangOhneMaus) {
    const Errand& errand = GetParam();
    Typist typist(screens);
    size_t next = 0;
    screens.hand = [&](Form& form) {
        ASSERT_LT(next, errand.windows.size()) << form.name().toStdString();
        const Window& window = errand.windows[next++];
        ASSERT_EQ(form.name(), QString::fromUtf8(window.form));
        typist.play(QString::fromUtf8(window.keys));
        const FormWindow& shown = *screens.windowOf(form);
        EXPECT_TRUE(form.name() != u"PA_Koben" || quietLine(shown).startsWith(u"Gespeichert: ")) << errand.name;
    };
    const auto main = katalog().make(QStringLiteral("PA_Koben"), koben);
    koben.run(*main);
    EXPECT_EQ(koben.Hauptdatenbank.table(QString::fromUtf8(errand.sql)).integer(0, 0), errand.expected)
        << screens.told.join(u'|').toStdString();
    const auto questions = static_cast<int>(screens.told.size());  // each is answered by one stroke
    EXPECT_EQ(typist.strokes + questions, errand.now) << errand.name;
    EXPECT_LE(errand.now * 3, errand.before * 2) << errand.name;
}

/// Each number and Enter; before, marking in this list needed the mouse.
TEST_F(Hof, EinVerkaufVon40TierenNachNummern) {
    {
        Database db = koben.workspace.open(data.filePath(QStringLiteral("koben2.mdb")));
        for (int i = 0; i < 200; ++i)
            db.execute(QStringLiteral("insert into Sauen (Art, Nummer) values ('Mast', '%1')").arg(5001 + i));
    }
    Typist typist(screens);
    screens.hand = [&](Form& form) {
        if (form.name() == u"PA_Koben") return typist.play(QStringLiteral("<Alt+B>v"));
        typist.play(QStringLiteral("<Ctrl+F>"));
        for (int i = 0; i < 40; ++i) typist.play(QStringLiteral("%1<Return>").arg(5002 + 4 * i));
        typist.play(QStringLiteral("<Alt+A>t<Ctrl+Return><Esc>"));
        EXPECT_TRUE(form.closed());
    };
    const auto main = katalog().make(QStringLiteral("PA_Koben"), koben);
    koben.run(*main);
    const Table sold = koben.Hauptdatenbank.table(
        QStringLiteral("select count(*), min(Nummer), max(Nummer) from Sauen where Abgangsdatum = #07/15/2026#"));
    EXPECT_EQ(sold.integer(0, 0), 40) << screens.told.join(u'|').toStdString();
    EXPECT_EQ(sold.text(0, 1) + u'-' + sold.text(0, 2), QStringLiteral("5002-5158"));
    EXPECT_EQ(typist.strokes + static_cast<int>(screens.told.size()), 208);
}

/// An errand of the first days on an empty farm: the keys in the main window, and in what opens from there.
struct Schritt {
    const char* keys;
    std::vector<Window> windows;
    const char* sql;
    const char* result;
};
const Schritt Anfang[] = {
    {"<Ctrl+N>",
     {{"PB_Neues_Schwein", "<Return>1101<Ctrl+Return>s<Ctrl+Return>"}},  // the window asks for the kind
     "select Art, Nummer from Sauen",
     "Sau 1101"},
    {"<Ctrl+N>",
     {{"PB_Neues_Schwein", "e<Return>E1<Ctrl+Return>"}},
     "select Art, Nummer from Sauen where Nummer = 'E1'",
     "Eber E1"},
    {"<Ctrl+F>1101<Ctrl+1>",
     {Frame, {"PE_Bewegungsdaten_Belegung", "2003<Return>E1<Ctrl+Return>"}},
     "select L_Belegung, N_Ferkelung from Sauen where Nummer = '1101'",
     "20.03.2026 14.07.2026"},
    {"<Ctrl+F>1101<Ctrl+3>",
     {Frame, {"PE_Bewegungsdaten_Ferkelung", "-<Return>14<Return*2>2<Ctrl+Return>"}},
     "select L_Ferkelung, Anz_Ferkel_Lebend from Sauen where Nummer = '1101'",
     "14.07.2026 12"},
    {"<Ctrl+F>1101<Ctrl+4>",
     {Frame, {"PE_Bewegungsdaten_Absetzung", "<Return*2>7,8<Ctrl+Return>"}},
     "select L_Absetzung, Status from Sauen where Nummer = '1101'",
     "15.07.2026 G"},
    {"<Ctrl+F>1101<Ctrl+8>",
     {Frame, {"PE_Bewegungsdaten_Behandlung", "<Return>Wu<Ctrl+Return>"}},
     "select Medikament, Wartezeit_Datum from Behandlung",
     "Ivomec 12.08.2026"},
    {"<Alt+B>v",
     {{"PB_Verkauf_Schweine", "<Ctrl+F>1101<Return><Alt+A>t<Ctrl+Return><Esc>"}},
     "select Nummer, Abgangsdatum from Sauen where Abgangsdatum is not null",
     "1101 15.07.2026"}};

TEST_F(Hof, DieErstenTageAufLeeremHof) {
    QFile::remove(data.filePath(QStringLiteral("PB_Neues_Schwein.ko1")));
    {
        Database db = koben.workspace.open(data.filePath(QStringLiteral("koben2.mdb")));
        for (const char* table : {"Sauen", "Ferkelung"})
            db.execute(QStringLiteral("delete from ") + QString::fromUtf8(table));
    }
    Typist typist(screens);
    std::vector<Window> next;
    screens.hand = [&](Form& form) {
        if (form.name() != u"PA_Koben") {
            ASSERT_FALSE(next.empty()) << form.name().toStdString();
            const Window window = next.front();
            next.erase(next.begin());
            ASSERT_EQ(form.name(), QString::fromUtf8(window.form));
            return typist.play(QString::fromUtf8(window.keys));
        }
        for (const Schritt& step : Anfang) {
            SCOPED_TRACE(step.sql);
            next = step.windows;
            typist.play(QString::fromUtf8(step.keys));
            const Table found = koben.Hauptdatenbank.table(QString::fromUtf8(step.sql));
            ASSERT_EQ(found.rowCount(), 1) << screens.told.join(u'|').toStdString();
            EXPECT_EQ(found.text(0, 0) + u' ' + found.text(0, 1), QString::fromUtf8(step.result));
            EXPECT_EQ(static_cast<PA_Koben&>(form).datali.row() > 0, true) << "what was saved is seen";
        }
    };
    const auto main = katalog().make(QStringLiteral("PA_Koben"), koben);
    koben.run(*main);
    EXPECT_TRUE(screens.told.join(u'|').contains(u"noch nichts gewählt"));
}

/// The main window: Escape empties the search and never ends the program, the panel shows the current animal or none.
TEST_F(Hof, DasHauptfensterBleibt) {
    Typist typist(screens);
    screens.hand = [&](Form& form) {
        auto& herd = static_cast<PA_Koben&>(form);
        FormWindow& window = *screens.windowOf(form);
        typist.play(QStringLiteral("<Ctrl+F>1041"));
        EXPECT_EQ(herd.datali.cell(herd.datali.row(), u"Nummer"), "1041");
        typist.play(QStringLiteral("<Esc>"));
        EXPECT_EQ(herd.t.text(), QString());
        typist.play(QStringLiteral("<Esc><Esc>"));
        EXPECT_FALSE(form.closed());
        QWidget* panel = window.widgetOf(herd.Text1);
        herd.cmdok.click();
        EXPECT_TRUE(panel->isVisible());
        typist.play(QStringLiteral("1077"));
        EXPECT_FALSE(panel->isVisible()) << "another animal's data";
        QTest::qWait(400);
        EXPECT_TRUE(panel->isVisible() && herd.Text1.text().contains("1077"));
        typist.play(QStringLiteral("<Esc>1003+1011+"));
        EXPECT_EQ(quietLine(window), "2 Sauen markiert");
    };
    const auto main = katalog().make(QStringLiteral("PA_Koben"), koben);
    koben.run(*main);
}

/// Going on to another animal with something typed: by default nothing moves and nothing is lost.
TEST_F(Hof, EinWechselDesTieresFragt) {
    for (const int answer : {-1, 1, 0}) {
        screens.answer = answer;
        screens.told.clear();
        Typist typist(screens);
        QString boar, number;
        screens.hand = [&](Form& form) {
            if (form.name() == u"PA_Koben") return typist.play(QStringLiteral("<Ctrl+F>1023<Ctrl+1>"));
            if (form.name() == u"PE_Bewegungsdaten") return typist.play(QStringLiteral("<Return>"));
            auto& entry = static_cast<PE_Bewegungsdaten_Belegung&>(form);
            typist.play(QStringLiteral("<Return>E1"));
            static_cast<QAbstractButton*>(screens.windowOf(form)->widgetOf(entry.nextschwein[1]))->click();
            boar = entry.kom[0].text();
            number = entry.bezschwein[1].text();
        };
        const auto main = katalog().make(QStringLiteral("PA_Koben"), koben);
        koben.run(*main);
        EXPECT_EQ(screens.told.size(), 1) << screens.told.join(u'|').toStdString();
        EXPECT_EQ(boar, answer < 0 ? QStringLiteral("E1") : QString());
        EXPECT_EQ(number, answer < 0 ? QStringLiteral("1023") : QStringLiteral("1041"));
        const Table booked = koben.Hauptdatenbank.table("select count(*) as n from Belegung");
        EXPECT_EQ(booked.integer(0, 0), answer == 0 ? 1 : 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Gaenge, TastenTest, testing::ValuesIn(Errands));

}  // namespace
}  // namespace koben::ui

// The script runner on a small program of its own: addressing, events, answers, refusals, exit status.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include "tools/skript/Interpreter.h"

namespace koben::skript {
namespace {

/// A second form with a check on leaving its field.
struct PE_Eingabe : Form {
    explicit PE_Eingabe(Koben& run) : Form(run, QStringLiteral("PE_Eingabe"), QStringLiteral("Eingabe")) {
        tz.onGotFocus = [this] { koben.message("hinein"); };
        tz.onChange = [this] { koben.message("jetzt " + tz.text()); };
        tz.onLostFocus = [this] { koben.message("hinaus"); };
        tz.maxLength = 3;
        kom.setItems({"eins", "zwei"});
        kom.fixed = true;
        kom.onClick = [this] { koben.message("gewählt"); };
        tt.setPage(sstab, 1);
        ok.onClick = [this] {
            if (koben.yesNo("Sichern?\r\nJa oder nein")) close();
        };
        wo.onClick = [this] { tz.setText(koben.screens.openFile("Alle|*.*").section(u'/', -1)); };
        acceptButton = &ok;
    }
    TextBox tz{*this, "tz"};
    ComboBox kom{*this, "kom"};
    Tabs sstab{*this, "sstab", {"Erste", "Zweite"}};
    TextBox tt{*this, "tätowierung"};
    Calendar calend{*this, "calend"};
    Button ok{*this, "ok", "&OK"};
    Button wo{*this, "wo", "&Wo?"};
};

struct PA_Koben : Form {
    explicit PA_Koben(Koben& run) : Form(run, QStringLiteral("PA_Koben"), QStringLiteral("KOBEN")) {
        datali.addColumn({.key = "Nummer", .title = "Nr."});
        datali.addColumn({.key = "Art", .title = "Art"});
        for (const QStringList& row : {QStringList{"3", "Sau"}, {"1", "Eber"}, {"2", "Sau"}}) datali.addRow(row);
        datali.onRowChange = [this] { koben.message("Zeile " + datali.cell(datali.row(), 1)); };
        datali.onClick = [this] { koben.message("Klick"); };
        datali.canEdit = [](int, int column) { return column == 2; };
        eingabe.onClick = [this] { koben.open("PE_Eingabe"); };
        beenden.onClick = [this] { koben.end(); };
        li.setItems({"a", "b"});
        li.onClick = [this] { koben.message("Liste " + li.items().at(li.current())); };
        opti.select(0);
        aus.setEnabled(false);
        weg.setVisible(false);
        kaputt.onClick = [] { throw std::runtime_error("Platte voll"); };
        druck.onClick = [this] { print(); };
        daten.onClick = [this] {
            const QString path = koben.platform.dataFolder() + "probe.db";
            koben.Hauptdatenbank = QFile::exists(path) ? koben.workspace.open(path) : koben.workspace.create(path);
        };
        starte.onClick = [this] {
            koben.platform.open(koben.platform.dataFolder() + "report.htm");
            koben.platform.start("cecopy.exe \"" + koben.platform.dataFolder() + "x.ko2\"");
            koben.screens.tone(1000, 15);
            const WebAnswer answer = koben.platform.httpGet("/version", 1000, {});
            koben.message(answer.read() ? QString::fromUtf8(answer.bytes) : QStringLiteral("ohne Netz"));
        };
    }
    void Load() override {
        koben.Heute = koben.clockToday();
        koben.message(koben.platform.userSetting("Probe", "Merker"));
        koben.platform.setUserSetting("Probe", "Merker", "gemerkt");
    }
    void closeBox() override {
        if (koben.yesNo("Beenden?")) close();
    }
    void print() {
        const auto job = koben.platform.print({}, true);
        job->setFont("Courier New");
        job->setSize(10);
        job->line("eins");
        job->text("zwei ");
        job->setBold(true);
        job->line("drei");
        job->newPage();
        job->setSize(50);
        job->line("vier");
        job->setBold(false);
        job->line({});
        job->end();
    }
    Grid datali{*this, "datali", true};
    MenuEntry menue{*this, "menue", "&Menü"};
    MenuEntry eingabe{*this, "XE_eingabe", "&Eingabe", &menue};
    Button beenden{*this, "beenden", "&Ende"};
    Button aus{*this, "aus", "Aus"};
    Button weg{*this, "weg", "Weg"};
    Button kaputt{*this, "kaputt", "Kaputt"};
    Button druck{*this, "druck", "Drucken"};
    Button daten{*this, "daten", "Daten"};
    Button starte{*this, "starte", "Los"};
    SpinButton pfeil{*this, "pfeil"};
    CheckBox kon{*this, "kon", "Haken"};
    OptionGroup opti{*this, "opti", {"Alle", "Sauen"}};
    ListBox li{*this, "li"};
    Label bez{*this, "bez", "Zeile 1\r\nZeile 2"};
    TextBox text{*this, "Text1"};
};

struct Lauf {
    Result result;
    std::string out;
};

Lauf lauf(const char* script) {
    Catalogue catalogue;
    catalogue.add<PA_Koben>(QStringLiteral("PA_Koben"));
    catalogue.add<PE_Eingabe>(QStringLiteral("PE_Eingabe"));
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    Lauf lauf;
    {
        Transcript transcript(out);
        lauf.result = Interpreter(catalogue, QString::fromUtf8(script), transcript).run();
    }
    lauf.out = out.data().toStdString();
    return lauf;
}

/// The transcript of commands on the started main form, without the lines before and the end.
std::string nachStart(const QString& commands) {
    const Lauf run = lauf(("start\n" + commands).toUtf8().constData());
    EXPECT_EQ(run.result.status, 0) << run.result.line << ": " << run.result.reason.toStdString();
    const std::string head = "> start\n+ PA_Koben\n! \n";
    EXPECT_EQ(run.out.substr(0, head.size()), head);
    return run.out.substr(head.size());
}

TEST(Skript, AScriptThatStopsLeavesOpenFormsSilently) {
    EXPECT_EQ(nachStart("menue XE_eingabe"), "> menue XE_eingabe\n+ PE_Eingabe\n");
}

TEST(Skript, TheFocusMovesWithTheHand) {
    EXPECT_EQ(nachStart("menue XE_eingabe\ntext tz = 1\ntippe tz = 23\nklick sstab(1)\nverlasse tz\ntaste tz Enter\n"
                        "antwort nein\ntaste sstab(1) Enter"),
              "> menue XE_eingabe\n+ PE_Eingabe\n"
              "> text tz = 1\n! hinein\n! jetzt 1\n! hinaus\n"
              "> tippe tz = 23\n! hinein\n! jetzt 2\n! jetzt 23\n"
              "> klick sstab(1)\n! hinaus\n"
              "> verlasse tz\n! hinein\n! hinaus\n"
              "> taste tz Enter\n! hinein\n! hinaus\n"
              "> taste sstab(1) Enter\n? Sichern?\\nJa oder nein => nein\n");
}

TEST(Skript, MachineAndFiles) {
    EXPECT_EQ(nachStart("schreibe v.txt = Ä 1\\n2\\n\ndatei v.txt\nklick starte\nnetz version = v.txt\n"
                        "schreibe v.txt = neu\nklick starte\nnetz aus\nloesche v.txt\nklick druck\ndruck\n"
                        "menue XE_eingabe\nantwort = wahl.csv\nklick wo\nzeige tz"),
              "> schreibe v.txt = Ä 1\\n2\\n\n> datei v.txt\n= Ä 1\n= 2\n"
              "> klick starte\n@ oeffne report.htm\n@ starte cecopy.exe \"x.ko2\"\n~ 1000 15\n! ohne Netz\n"
              "> netz version = v.txt\n> schreibe v.txt = neu\n"
              "> klick starte\n@ oeffne report.htm\n@ starte cecopy.exe \"x.ko2\"\n~ 1000 15\n! neu\n"
              "> netz aus\n> loesche v.txt\n> klick druck\n@ drucke 2 Seiten\n"
              "> druck\n= {quer}{Courier New 10}eins\n= zwei {10 fett}drei\n= {Seite}\n= {50 fett}vier\n= {50}\n"
              "> menue XE_eingabe\n+ PE_Eingabe\n> klick wo\n?= Alle|*.* => wahl.csv\n> zeige tz\n= wahl.csv\n");
}

TEST(Skript, AFailingStatementEndsTheRunAndKeepsTheOnesBefore) {
    const QTemporaryDir folder;
    const QString begin = "ordner " + folder.path() + "\nstart\nklick daten\n";
    const Result failed =
        lauf((begin + "sql create table P (N TEXT(20))\nsql insert into P (N) values ('a')\nsql insert into Q (N) "
                      "values ('b')\nsql insert into P (N) values ('c')")
                 .toUtf8()
                 .constData())
            .result;
    EXPECT_EQ(failed.status, 2);
    EXPECT_EQ(failed.line, 6);
    EXPECT_TRUE(failed.reason.contains("Q")) << failed.reason.toStdString();
    const Lauf later = lauf((begin + "sql select N from P").toUtf8().constData());
    EXPECT_TRUE(later.out.ends_with("= N\n= a\n")) << later.out << later.result.reason.toStdString();
}

TEST(Skript, WrongScriptsAndRefusalsEndTheRun) {
    const struct {
        const char* script;
        int status, line;
        const char* reason;
    } cases[] = {
        {"tanze", 1, 1, "unbekannter Befehl tanze"},
        {"klick ok", 1, 1, "läuft nicht"},
        {"sql select 1", 1, 1, "läuft nicht"},
        {"start\nsql select 1", 1, 2, "nicht offen"},
        {"start\nstart", 1, 2, "läuft schon"},
        {"start\nheute 01.01.2026", 1, 2, "vor start"},
        {"heute 31.02.2026", 1, 1, "kein Datum"},
        {"start\n\n# leer\nklick nichts", 1, 4, "kein Steuerelement nichts"},
        {"start\nklick ok(x)", 1, 2, "kein Name"},
        {"start\nklick opti(", 1, 2, "kein Name"},
        {"start\nklick opti", 1, 2, "kein Steuerelement"},
        {"start\nklick aus", 1, 2, "gesperrt"},
        {"start\nklick weg", 1, 2, "unsichtbar"},
        {"start\nklick bez", 1, 2, "angeklickt"},
        {"start\nmenue beenden", 1, 2, "kein Menüeintrag"},
        {"start\ntext Text1", 1, 2, "verlangt"},
        {"start\ntext li = a", 1, 2, "kein Textfeld"},
        {"start\nhaken kon vielleicht", 1, 2, "verlangt an oder aus"},
        {"start\nzeile datali 4", 1, 2, "keine Zeile 4"},
        {"start\nzeile datali 0", 1, 2, "keine Zeile 0"},
        {"start\nmarkiere datali 2-9", 1, 2, "keine Zeile 9"},
        {"start\nmarkiere li 1", 1, 2, "keine markierten"},
        {"start\nzelle datali 1 Nummer = x", 1, 2, "nicht ändern"},
        {"start\nsortiere datali fehlt auf", 1, 2, "keine Spalte fehlt"},
        {"start\ntaste datali F13", 1, 2, "verlangt"},
        {"start\npruefe kon an", 1, 2, "ist nicht an"},
        {"start\npruefe beenden an", 1, 2, "prüfen"},
        {"start\nvariable Quatsch", 1, 2, "Quatsch"},
        {"start\nsetze Buchungsart_Nr = zwei", 1, 2, "setzen"},
        {"start\nzeige PE_Eingabe.tz", 1, 2, "nicht offen"},
        {"start\nmenue XE_eingabe\nklick PA_Koben.beenden", 1, 3, "nicht in der vordersten"},
        {"start\nmenue XE_eingabe\nende", 1, 3, "noch offen"},
        {"start\nmenue XE_eingabe\ntext tätowierung = x", 1, 3, "nicht vorn"},
        {"start\nmenue XE_eingabe\nwahl kom = Eins", 1, 3, "keinen solchen Eintrag"},
        {"start\nmenue XE_eingabe\ntext kom = ein", 1, 3, "keinen solchen Eintrag"},
        {"start\nmenue XE_eingabe\ntext calend = 01.02.2026", 1, 3, "unsichtbar"},
        {"start\nende", 1, 2, "keine Antwort wartet"},
        {"start\nantwort ok\nende", 1, 3, "passt nicht"},
        {"start\nantwort = ja\nende", 1, 3, "passt nicht"},
        {"start\nmenue XE_eingabe\nantwort ja\nklick wo", 1, 4, "kein Text"},
        {"antwort vielleicht", 1, 1, "verlangt ja"},
        {"antwort ja\nheute 01.01.2026", 1, 2, "Antwort aus Zeile 1"},
        {"druck", 1, 1, "nichts wurde gedruckt"},
        {"datei fehlt.txt", 1, 1, "fehlt"},
        {"start\nantwort nein\nneustart", 1, 3, "endete nicht"},
        {"start\nklick kaputt", 2, 2, "Platte voll"},
    };
    for (const auto& c : cases) {
        const Result result = lauf(c.script).result;
        EXPECT_EQ(result.status, c.status) << c.script;
        EXPECT_EQ(result.line, c.line) << c.script;
        EXPECT_TRUE(result.reason.contains(QString::fromUtf8(c.reason)))
            << c.script << ": " << result.reason.toStdString();
    }
}

}  // namespace
}  // namespace koben::skript

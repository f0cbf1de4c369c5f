// The takeover from the predecessor, against the plain walk that says what comes of it, and of a genuine koben2.mdb.
#include "exchange/PO_Update.h"

#include <random>

#include "store/OldFile.h"
#include "tests/support/Hof.h"
#include "tools/altdatei/OldFileWriter.h"

namespace koben {
namespace {

const char* const Kinds[] = {"Belegung", "Ferkelung",    "Absetzung",  "Trächtigkeit",
                             "Verluste", "Verschiebung", "Behandlung", "Ferkelverkauf"};

class Updatehof : public Hof {
public:
    Updatehof() {
        catalogue.add<PO_Update>("PO_Update");
        QDir().mkpath(path("alt/leer"));
        write("alt/KOBEN.EXE", "x");
    }
    void put(OldFileWriter& file, const QString& name = "alt/Koben.mdb") {
        QFile target(path(name));
        const QByteArray bytes = file.bytes();
        EXPECT_TRUE(target.open(QIODevice::WriteOnly) && target.write(bytes) == bytes.size());
    }
    /// Goes to the folder, answers the question, presses the button.
    void takeOver(bool answer = true, Button PO_Update::*button = &PO_Update::start) {
        in<PO_Update>("PO_Update", [&](PO_Update& form) {
            typeInto(form.pfad, "alt");
            found = gridText(form.lifund);
            screens.answers = {answer};
            (form.*button).click();
            log = form.t.text().split("\r\n");
            befund = form.befund.text();
        });
    }
    QStringList found, log;
    QString befund;
};

const QString Gefunden = "! KOBEN 1.0 wurde gefunden! Sie können die Datenübernahme jetzt mit [Start] starten!";
const QString Frage =
    "? ACHTUNG!!!\r\n\r\nDurch die Datenübernahme von KOBEN 1.0 wird die Datenbasis in KOBEN 2.0 "
    "vorher komplett gelöscht. Soll die Datenübernahme wirklich ausgeführt werden? => ";
const QString Fertig = "! Die Daten wurden erforgreich von KOBEN 1.0 nach KOBEN 2.0 übernommen.";

TEST(PO_Update, einKleinerBestandMitAllemDrumherum) {
    for (const int version : {3, 4}) {
        SCOPED_TRACE(version);
        Updatehof hof;
        hof.tier("neu");
        hof.sql("insert into Termine (Terminart) values ('weg')");
        OldFileWriter old(version);
        old.program("SHORT");
        old.table("Fremd", "X LONG");
        old.row("Sauen", {{"Art", "Sau"}, {"Nummer", "weg"}}, OldFileWriter::Fate::Deleted);
        old.row("Sauen", {{"Art", "Sau"},
                          {"Nummer", "12"},
                          {"Stallnr", "W1"},
                          {"Infos", ""},
                          {"Geburtsdatum", QDate(1899, 12, 1)},
                          {"Einkaufspreis", Money{1234567}}});
        old.row("Sauen", {{"Art", "Eber"}, {"Nummer", "E'1"}, {"Status", "B"}});
        old.row("Ferkelung", {{"Kennung", 2}, {"Datum", QDate(2021, 5, 1)}, {"LNr", 7}, {"Ferkel_Gesamt", 12}});
        old.row("Ferkelung", {{"Kennung", 2}, {"Datum", 43952.25}});
        old.row("Verluste", {{"Kennung", 2}, {"Muttersau", "falsch"}, {"Anzahl_Ferkel", 3}});
        old.row("Verluste", {{"Kennung", 99}});
        old.row("Ferkelverkauf", {{"Kennung", 0}, {"Kunde", "Hof"}});
        old.row("Ferkelverkauf", {{"Kennung", 3}, {"Kunde", "Müller"}});
        old.row("Bestandsoptionen", {{"Tiergruppe", "Alle"}, {"Tierart", "Sau"}, {"Alter_bis", 9}, {"ID", 5}});
        old.row("Stammdaten_Rasse", {{"Inhalt", "DL"}});
        old.row("Termine", {{"Terminart", "Impfen"}, {"Wiederholung", "nie"}});
        hof.put(old);
        hof.write("alt/einstellungen.KO1", " 120 \r\n");
        hof.takeOver();
        EXPECT_EQ(hof.texts(), (QStringList{Gefunden, Frage + "ja", Fertig}));
        EXPECT_EQ(hof.log.first(6).join('|') + "||" + hof.log.last(3).join('|'),
                  "Die Datenübernahme wurde angestartet.|Alle Tabelleninhalte in KOBEN 2.0 werden gelöscht|"
                  "Die Tabelleninhalte wurden gelöscht|Die Tiere werden eingelesen:|12 / W1|E'1 / ||"
                  "Die Tabelle Arbeitsplanoptionen wurde kopiert.|Die Tabelle Termine wurde kopiert.|"
                  "Die Übernahme wurde erfolgreich abgeschlossen.");
        EXPECT_EQ(hof.log.value(6), "Die Tabelle Bestandsoptionen wurde kopiert.");
        EXPECT_EQ(hof.show("select ID, Nummer, Infos, Geburtsdatum, Einkaufspreis, Status from Sauen"),
                  "2 12  01.12.1899 123,4567 - | 3 E'1 - - - B");
        EXPECT_EQ(hof.show("select ID, Kennung, Datum, LNr, LNrJahr, Ferkel_Gesamt from Ferkelung"),
                  "1 2 01.05.2021 2 1 12 | 2 2 01.05.2020 1 1 -");
        EXPECT_EQ(hof.show("select Kennung, Muttersau, Anzahl_Ferkel from Verluste"), "2 12 3");
        EXPECT_EQ(hof.show("select ID, Kennung, Kunde from Ferkelverkauf"), "1 3 Müller | 2 0 Hof");
        EXPECT_EQ(hof.show("select ID, Tiergruppe, Tierart, Alter_bis from Bestandsoptionen"), "5 Alle Alle 9");
        EXPECT_EQ(hof.show("select Terminart from Termine") + hof.show("select Inhalt from Stammdaten_Gruppe"),
                  "Impfen");
        EXPECT_EQ(hof.lines("Einstellungen.ko2").value(0), " 120 ");
        EXPECT_EQ(hof.koben.Liste_neu_laden, 1);
        EXPECT_EQ(hof.actions, QStringList("Datenübernahme aus KOBEN 1.0: 2 Tiere, 5 Buchungen"));
        EXPECT_EQ(hof.found.mid(1, 2), (QStringList{"Sauen|1|||", "Eber|1|||"}));
        EXPECT_TRUE(hof.found.contains("Ferkelungen|2|01.05.2020|01.05.2021|bei 1 Datum fällt die Uhrzeit weg"));
        EXPECT_TRUE(hof.found.contains("Verluste|2|||1 Buchung gehört zu keinem Tier und kommt nicht mit"));
        hof.takeOver();  // once more replaces it wholly; no ID comes back
        EXPECT_EQ(hof.show("select ID, Nummer from Sauen"), "4 12 | 5 E'1");
        EXPECT_EQ(hof.show("select Kennung from Ferkelung"), "4 | 4");
    }
}

/// Random herds, with bookings in any order, of no animal and of animals that are gone.
TEST(PO_Update, zufaelligeHerdenWieImEinfachenDurchgang) {
    for (unsigned seed = 1; seed <= 8; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto below = [&](unsigned n) { return static_cast<int>(random() % n); };
        Updatehof hof;
        OldFileWriter old(seed % 2 == 0 ? 3 : 4);
        old.program();
        std::vector<int> animals;
        for (int id = 1; id <= 40; ++id) {
            const auto fate = below(6) == 0   ? OldFileWriter::Fate::Deleted
                              : below(4) == 0 ? OldFileWriter::Fate::Moved
                                              : OldFileWriter::Fate::Lives;
            old.row("Sauen", {{"Nummer", QString::number(id * 7 % 31)}, {"ID", id}}, fate);
            if (fate != OldFileWriter::Fate::Deleted) animals.push_back(id);
        }
        struct Row {
            int animal, mark;
        };
        std::map<std::string, std::vector<Row>> rows;
        for (int i = 0; i < 400; ++i) {
            const char* kind = Kinds[below(8)];
            const Row row{below(44), i};
            rows[kind].push_back(row);
            OldFileWriter::Fields fields = {{"Kennung", row.animal}, {"Kommentar", QString::number(i)}};
            if (kind == std::string("Ferkelung")) fields.append({"Datum", QDate(2010 + below(15), 1 + below(12), 1)});
            old.row(kind, fields);
        }
        hof.put(old);
        hof.takeOver();
        for (const char* kind : Kinds) {
            QStringList expected;
            const auto add = [&](int animal, int newId) {
                for (const Row& row : rows[kind])
                    if (row.animal == animal)
                        expected += QString("%1 %2 %3").arg(expected.size() + 1).arg(newId).arg(row.mark);
            };
            for (size_t i = 0; i < animals.size(); ++i) add(animals[i], static_cast<int>(i) + 1);
            if (kind == std::string("Ferkelverkauf")) add(0, 0);
            EXPECT_EQ(hof.show(QString("select ID, Kennung, Kommentar from %1 order by ID").arg(kind)),
                      expected.join(" | "))
                << kind;
        }
        const QString litters = hof.show("select ID, LNr, LNrJahr from Ferkelung");
        for (size_t i = 1; i <= animals.size(); ++i) Wurfnummern_berechnen(hof.db, static_cast<qint64>(i));
        EXPECT_EQ(hof.show("select ID, LNr, LNrJahr from Ferkelung"), litters);
        EXPECT_FALSE(litters.contains('-'));
    }
}

TEST(PO_Update, nichtsGehtVerloren) {
    Updatehof hof;
    hof.tier("mein");
    const QString before = hof.everything();
    const auto refuses = [&](const char* what, const QString& said) {
        SCOPED_TRACE(what);
        hof.takeOver();
        EXPECT_TRUE(hof.texts().last().contains(said));
        EXPECT_EQ(hof.everything(), before);
        EXPECT_EQ(hof.log, QStringList("")) << "steps that have not happened";
        EXPECT_TRUE(hof.actions.isEmpty());
    };
    hof.write("alt/koben.mdb", "Unfug");
    refuses("no database", "keine Datenbank im alten Format");
    QFile::remove(hof.path("alt/koben.mdb"));
    OldFileWriter bare(3), wide(4), large(3);
    bare.table("Termine", "Terminart TEXT (20)");
    hof.put(bare);
    refuses("no animals", "fehlt die Tabelle Sauen");
    wide.table("Sauen", "Nummer TEXT (50), Infos MEMO, ID COUNTER");
    wide.row("Sauen", {{"Nummer", "1"}, {"Infos", QString("i").repeated(5000)}});
    hof.put(wide);
    refuses("a text too long", "ein Text von 5000 Zeichen");
    EXPECT_TRUE(hof.found.contains("Sauen|0|||1 Text ist zu lang")) << hof.found.join('\n').toStdString();
    large.program();
    for (int i = 0; i < 100; ++i) large.row("Sauen", {{"Nummer", "1"}});
    hof.put(large);
    hof.screens.onProgress = [](const QString& what, int) { return !what.startsWith("Die Daten werden"); };
    hof.takeOver();
    EXPECT_EQ(hof.everything(), before);
    EXPECT_EQ(hof.befund, "Die Übernahme wurde abgebrochen. Der Bestand in KOBEN 2.0 ist unverändert.");
    hof.screens.onProgress = [](const QString&, int) { return false; };
    hof.write("leser", "#!/bin/sh\nexec sleep 60\n");
    QFile::setPermissions(hof.path("leser"), QFile::ReadOwner | QFile::ExeOwner);
    OldFile::setHelper(hof.path("leser"));
    hof.befund.clear();
    hof.takeOver();  // a reader that hangs: given up while nothing comes
    OldFile::setHelper({});
    EXPECT_EQ(hof.everything(), before);
    EXPECT_EQ(hof.befund, "Die Übernahme wurde abgebrochen. Der Bestand in KOBEN 2.0 ist unverändert.");
    hof.screens.onProgress = nullptr;
    hof.takeOver(false);
    EXPECT_EQ(hof.everything(), before);
}

TEST(PO_Update, ordnerUndEinEchterBestandDieserVersion) {
    Updatehof hof;
    hof.tier("weg");
    OldFileWriter old(3);
    old.program();
    old.row("Sauen", {{"Nummer", "17"}, {"Art", "Sau"}, {"ID", 17}});
    old.row("Sauen", {{"Nummer", "18"}, {"ID", 30}}, OldFileWriter::Fate::Deleted);
    old.row("Verluste", {{"Kennung", 0}, {"Muttersau", "x"}, {"ID", 4}});
    hof.put(old, "alt/leer/koben2.mdb");
    hof.in<PO_Update>("PO_Update", [&](PO_Update& form) {
        EXPECT_FALSE(form.start.enabled() || form.koben2.visible());
        EXPECT_EQ(form.Label1.text(), "Auswahl (In welchem Ordner ist KOBEN 1.0 installiert?)");
        typeInto(form.pfad, "nirgends");
        EXPECT_EQ(form.befund.text(), "Den Ordner nirgends gibt es nicht.");
        typeInto(form.pfad, "alt");
        EXPECT_EQ(form.Label1.text(), "Im aktuellen Ordner ist KOBEN 1.0 nicht installiert!");
        const int last = static_cast<int>(form.verzeichnis.items().size()) - 1;
        EXPECT_EQ(form.verzeichnis.items()[last].trimmed(), "leer");
        EXPECT_EQ(form.verzeichnis.current(), last - 1);
        form.verzeichnis.choose(last);
        form.verzeichnis.doubleClick();
        EXPECT_TRUE(form.pfad.text().endsWith("/alt/leer") && form.koben2.visible() && !form.start.enabled());
        EXPECT_EQ(form.lifund.cell(1, u"anzahl"), "1");
        hof.screens.answers = {true};
        form.koben2.click();
    });
    EXPECT_EQ(hof.texts().last(), "! Der Bestand wurde übernommen: 1 Tier, 1 Buchung.");
    hof.tier("neu");
    EXPECT_EQ(hof.show("select ID, Nummer from Sauen"), "17 17 | 31 neu");
    EXPECT_EQ(hof.show("select ID, Kennung, Muttersau from Verluste"), "4 0 x");
}

}  // namespace
}  // namespace koben

#include "exchange/S_Importtabelle.h"

#include "tests/exchange/Importlauf.h"

namespace koben {
namespace {

const QString alleFelder = QStringLiteral(
    "select Art, Nummer, Gruppe, Stallnr, Ohrmarke, Tätowierung, Geburtsdatum, Rasse, Zugangsdatum, Lieferant, "
    "Abgangsdatum, Abgangsgrund, Abnehmer from Sauen order by ID");

const QString zusatzfrage = QStringLiteral(
    "? ACHTUNG!!!\r\nEs sind bereits Sauen eingetragen. Beachten Sie bitte deshalb folgendes:\r\n"
    "Wählen Sie 'Nein' wenn der Import nicht ausgefürht werden soll.\r\n"
    "Wählen Sie 'Ja' wenn der Import trotzdem ausgeführt werden soll.\r\n"
    "Wenn Sie Ja auswählen, dann wird der Import nur ausgeführt, wenn in den Daten die Ohrmarke vorhanden ist. "
    "Doppelte "
    "Ohrmarken werden dann aber ignoriert. => ");

QString schlussfrage(const QString& path) {
    return QStringLiteral("? Sollen die Daten auf der Import-Datei %1 wirklich eingelesen werden? => ja").arg(path);
}

QString schluss(int importiert, int ignoriert = 0, const QString& dazu = {}) {
    QString text = QStringLiteral(
                       "! Die Daten wurden in der Datenbasis gespeichert und werden beim nächsten "
                       "Programmstart eingelesen.\r\nInsgesmat wurden %1 Tiere importiert\r\n")
                       .arg(importiert);
    if (ignoriert > 0)
        text += QStringLiteral(
                    "Es konnten %1 Tiere nicht importiert werden, weil die Tiere zu einem bereits vorhandenen "
                    "Bestand dazu importiert wurden und von den Tieren keine Ohrmarke gefunden wurde oder "
                    "diese bereits im Bestand vorhanden war.\r\n")
                    .arg(ignoriert);
    return text + dazu + QStringLiteral("KOBEN 2.0 wird nun beendet. Bitte starten Sie KOBEN 2.0 danach wieder.");
}

TEST(Importtabelle, ganzerLauf) {
    Importlauf run;
    const QString path = run.datei(
        "Saunummer;Rasse;Art (Sau, Eber, Mast, "
        "Ferkel);Stallnummer;Geburtsdatum\r\n4711;DL;Eber;Stall23;18.04.2019\r\n");
    run.importieren(path, {true});
    EXPECT_EQ(
        run.screens.takeLog(),
        (QStringList{"+ S_Importtabelle", "?= CSV-Dateien|*.CSV|TXT-Dateien|*.TXT|Alle Dateien|*.* => " + path,
                     "! Es werden jetzt einige Zeilen (max 32 kB) aus der CSV eingelesen, damit Sie überprüfen können, "
                     "ob die CSV-Datei korrekt ist. In der ersten Zeile sollte die Überschrift stehen und ab der "
                     "zweiten Zeile die Daten. Falls in der Datei Steuerzeichen enthalten sind, könnte dies zu einem "
                     "Abbruch von KOBEN führen! Außerdem sollten Sie die folgenden Schritte nur dann ausführen, wenn "
                     "es sich um eine korrekte CSV-Datei handelt (Daten mit Semikolon ; getrennt, erste Zeile "
                     "Überschrift, Rest Daten)!",
                     schlussfrage(path), schluss(1), "- S_Importtabelle"}));
    EXPECT_TRUE(run.koben.ended);
    EXPECT_EQ(run.zeilen(alleFelder), "Eber|4711||Stall23|||18.04.2019|DL|-||-||");
    EXPECT_EQ(
        run.zeilen(
            "select Statusabfrage, Mechanische_Amme, Status, Belegungsart, Zugangsgrund, Selektiert, Infos, "
            "Aenderung, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, Zugangsgewicht_kg, "
            "Einkaufspreis, Abgangsgewicht_kg, Verkaufspreis, N_Belegung, N_Ferkelung, L_Belegung, L_Ferkelung, "
            "L_Trächtigkeit, L_Absetzung, BoxDatum, ID from Sauen"),
        "N|N|||||||0|0|0|0|0|0|0|0|-|-|-|-|-|-|-|1");
}

TEST(Importtabelle, dateienInJederForm) {
    const char* const kopf = "Art (Sau, Eber, Mast, Ferkel);Saunummer;Tätowierung;Zugangsdatum";
    const QByteArray utf8 = QByteArray(kopf) + "\nSau;1;Jürgen Groß;01.02.2020\n";
    const struct {
        const char* was;
        QByteArray bytes;
        const char* rows;
    } faelle[] = {
        {"UTF-8", utf8, "Sau|1|Jürgen Groß|01.02.2020"},
        {"UTF-8 with mark", "\xEF\xBB\xBF" + utf8, "Sau|1|Jürgen Groß|01.02.2020"},
        {"Windows-1252", nachWindows1252(QString::fromUtf8(utf8)), "Sau|1|Jürgen Groß|01.02.2020"},
        {"CR LF and no last break", QByteArray(utf8).replace("\n", "\r\n").chopped(2), "Sau|1|Jürgen Groß|01.02.2020"},
        {"CR", QByteArray(utf8).replace('\n', '\r'), "Sau|1|Jürgen Groß|01.02.2020"},
        {"end mark of DOS", utf8 + '\x1A', "Sau|1|Jürgen Groß|01.02.2020"},
        {"blank lines", utf8 + "\n  \nSau;2\n\n", "Sau|1|Jürgen Groß|01.02.2020; Sau|2||-"},
        {"short and long lines", QByteArray(kopf) + "\nMast;7\nSau;8;x;1.2.21;a;b;c;d;e;f;g;h;i;j;k;l;m;n\n",
         "Mast|7||-; Sau|8|x|01.02.2021"},
        {"quoted", QByteArray(kopf) + "\n\"Sau\";\"9;a\";\"die \"\"Gute\"\"\";\"03.04.2020\" \n",
         "Sau|9;a|die \"Gute\"|03.04.2020"},
        {"stray quotes", QByteArray(kopf) + "\n\"Sau;5\"3;\"a\"b;04.05.2020\nSau;6;\"offen;05.05.2020\n",
         "Sau|5\"3|\"a\"b|04.05.2020; Sau|6|\"offen|05.05.2020"},
        {"kinds", QByteArray(kopf) + "\nsau;1\nxyz;2\n;3\n Ferkel ;4\nMAST;5\n",
         "Sau|1||-; Sau|2||-; Sau|3||-; Ferkel|4||-; Sau|5||-"},
        {"dates", QByteArray(kopf) + "\nSau;1;;31.02.2020\nSau;2;;5.6.19\nSau;3;;gestern\nSau;4;; 07.08.2020 \n",
         "Sau|1||-; Sau|2||05.06.2019; Sau|3||-; Sau|4||07.08.2020"},
        {"trimmed, then cut", QByteArray(kopf) + "\nSau;   123456789012345678   ;  " + QByteArray(25, 'x') + "\n",
         "Sau|123456789012345|xxxxxxxxxxxxxxxxxxxx|-"},
        {"apostrophe", QByteArray(kopf) + "\nSau;O'Neill;\n", "Sau|O`Neill||-"},
    };
    for (const auto& fall : faelle) {
        SCOPED_TRACE(fall.was);
        Importlauf run;
        run.importieren(run.datei(fall.bytes), {true});
        EXPECT_EQ(run.zeilen("select Art, Nummer, Tätowierung, Zugangsdatum from Sauen order by ID"), fall.rows);
    }
}

TEST(Importtabelle, andereDateienWerdenAbgelehnt) {
    const struct {
        QByteArray bytes;
        const char* grund;
    } faelle[] = {
        {"", "...sie leer ist."},
        {QByteArray("PK\x03\x04\0\0;;", 8),
         "...sie keine Textdatei ist, zum Beispiel eine Arbeitsmappe oder eine Datenbank."},
        {QByteArray("\xFF\xFE"
                    "A\0;\0",
                    6),
         "...sie als \"Unicode-Text\" (UTF-16) gespeichert ist."},
        {"Saunummer,Rasse\n1,DL\n",
         "...die Spalten in der ersten Zeile mit Komma und nicht mit Semikolon getrennt sind."},
        {"Saunummer\tRasse\n1\tDL\n",
         "...die Spalten in der ersten Zeile mit Tabulator und nicht mit Semikolon getrennt sind."},
        {"\nSaunummer;Rasse\n", "...in der ersten Zeile kein Semikolon steht."},
    };
    for (const auto& fall : faelle) {
        Importlauf run;
        const QString path = QDir::toNativeSeparators(run.datei(fall.bytes));
        run.importieren(path, {});
        const QStringList gesagt = run.meldungen();
        ASSERT_EQ(gesagt.size(), 2);
        EXPECT_TRUE(gesagt[0].startsWith("! Die Datei " + path +
                                         " kann nicht als CSV-Datei eingelesen werden, weil...\r\n\r\n" +
                                         QString::fromUtf8(fall.grund) + "\r\n\r\n"))
            << gesagt[0].toStdString();
        EXPECT_EQ(gesagt[1], "! Bitte wählen Sie zuerst die Datei aus, aus der Sie die Daten importieren möchten.");
        EXPECT_EQ(run.anzahl(), 0);
    }
}

TEST(Importtabelle, vorschauUndZuordnung) {
    Importlauf run;
    QByteArray lang = "Nummer;Rasse;Saunummer;Rasse\n";
    for (int i = 0; i < 5000; ++i) lang += "1;DL;2;DE\n";
    const QString path = run.datei(lang);
    S_Importtabelle form(run.koben);
    run.screens.work([&](Form&) {
        EXPECT_TRUE(form.Label1[0].text().startsWith(
            "Folgende Vorbereitungen sind notwendig, um den Datemimport auszuführen:"));
        form.DateiZeigen(path);
        EXPECT_GE(form.Text1.text().size(), 32000);
        EXPECT_LT(form.Text1.text().size(), 32000 + 11);
        EXPECT_TRUE(form.Text1.text().startsWith("Nummer;Rasse;Saunummer;Rasse\r\n1;DL;2;DE\r\n"));
        EXPECT_EQ(form.kom[0].items(),
                  (QStringList{"", "Nummer", "Rasse", "Saunummer", "Rasse", "", "", "", "", "", "", "", "", ""}));
        EXPECT_EQ(form.kom[1].current(), 3);
        EXPECT_EQ(form.kom[7].current(), 4) << "of two equal heads the later wins";
        EXPECT_EQ(form.kom[4].current(), 0);
        // another file that is none leaves everything as it is
        form.DateiZeigen(run.datei("", "leer.csv"));
        EXPECT_EQ(form.kom[7].current(), 4);
        // the next file is assigned anew
        form.DateiZeigen(run.datei("Nummer;Gruppe\n5;G1\n", "zweite.csv"));
        EXPECT_EQ(form.kom[1].current(), 0);
        EXPECT_EQ(form.kom[7].current(), 0);
        EXPECT_EQ(form.kom[2].current(), 2);
    });
    run.koben.run(form);
}

TEST(Importtabelle, ohneSaunummerKeinImport) {
    Importlauf run;
    const QString path = run.datei("Nummer;Farbe\n12;rosa\n");
    run.importieren(path, {});
    EXPECT_EQ(run.meldungen(),
              QStringList("! Die Saunummer muss zugeordnet sein. Sonst ist ein Import nicht möglich."));
    run.importieren(path, {true}, [](S_Importtabelle& form) { form.kom[1].choose(1); });
    EXPECT_EQ(run.zeilen(alleFelder), "|12|||||-||-||-||") << "a field without a column stays empty, the kind too";
}

TEST(Importtabelle, einNeinLaesstAllesWieEsIst) {
    Importlauf run;
    const QString path = run.datei("Saunummer;Ohrmarke\n1;DE1\n2;DE1\n3;\n");
    run.importieren(path, {false});
    EXPECT_EQ(run.anzahl(), 0);
    EXPECT_FALSE(run.koben.ended);
    run.db.execute("insert into Sauen (Nummer) values ('alt')");
    run.importieren(path, {false});
    EXPECT_EQ(run.meldungen().last(), zusatzfrage + "nein");
    run.importieren(path, {true, false});
    EXPECT_EQ(run.nummern(), "alt");
    run.db.execute("delete from Sauen");
    run.importieren(path, {true});
    EXPECT_EQ(run.nummern(), "1; 2; 3") << "a first import compares no ear tags";
}

TEST(Importtabelle, zusatzNurMitNeuerOhrmarke) {
    Importlauf run;
    run.db.execute("insert into Sauen (Nummer, Ohrmarke) values ('alt', ' DE 1 ')");
    run.db.execute("insert into Sauen (Nummer) values ('ohne')");
    const QString path = run.datei("Saunummer;Ohrmarke\n1;DE 1\n2; de 1\n3;\n4;DE 4\n5;DE 4 \n6\n7;DE 7\n");
    run.importieren(path, {true, true});
    EXPECT_EQ(run.nummern(), "alt; ohne; 4; 7");
    EXPECT_EQ(run.meldungen(), (QStringList{zusatzfrage + "ja", schlussfrage(path), schluss(2, 5)}));
    run.importieren(run.datei("Saunummer;Rasse\n1;DL\n"), {true});
    EXPECT_EQ(run.meldungen(),
              (QStringList{zusatzfrage + "ja",
                           "! Die Ohrtmarke wurde nicht als einzulesendes Datenfeld ausgewählt. Dies ist bei einem "
                           "zusätzlichen Import zwingend vorgeschrieben. Der Import wird deshalb nicht ausgeführt."}));
    EXPECT_EQ(run.nummern(), "alt; ohne; 4; 7");
}

/// An animal without a number could never be found again; a tab would shift the columns of every list.
TEST(Importtabelle, namenloseTiereUndSteuerzeichen) {
    const QString ersetzt =
        "In der Datei standen Steuerzeichen, zum Beispiel Tabulatoren. Sie wurden durch Leerzeichen ersetzt.\r\n";
    const QString ohne = " der Datei %1 nicht importiert, weil die Saunummer fehlt.\r\n";
    const QString einzeln = ohne.arg("wurde"), mehrere = ohne.arg("wurden");
    QByteArray jedeZweite;
    for (int i = 0; i < 23; ++i) jedeZweite += "Sau;\nSau;n\n";
    const struct {
        QByteArray zeilen;
        bool zusatz;
        QString nummern, schluss;
    } faelle[] = {
        {"Sau;1\nSau\n\nSau;2\n", false, "1; 2", schluss(2, 0, "Zeile 3" + einzeln)},
        {"Sau;  \n;;;;;\n;;\t;\nSau;2\n\n\n;\n", false, "2", schluss(1, 0, "Zeilen 2 bis 4 und 8" + mehrere + ersetzt)},
        {jedeZweite, false, QString("n; ").repeated(23).chopped(2),
         schluss(23, 0,
                 "Zeilen 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30, 32, 34, 36, 38, 40 und 3 weitere" +
                     mehrere)},
        {"Sau;a\tb\x01\x02\x7f;\tDE 1\n", false, "a b", schluss(1, 0, ersetzt)},
        {"Sau;1\nSau;;DE 1\nSau;;DE 2\nSau;3;DE 2\n;;;\n", true, "alt; 3", schluss(1, 3, "Zeile 4" + einzeln)},
    };
    for (const auto& fall : faelle) {
        Importlauf run;
        QStringList actions;
        run.koben.workspace.onAction([&](const QString& name) { actions += name; });
        if (fall.zusatz) run.db.execute("insert into Sauen (Nummer, Ohrmarke) values ('alt', 'DE 1')");
        run.importieren(run.datei("Art (Sau, Eber, Mast, Ferkel);Saunummer;Ohrmarke\n" + fall.zeilen),
                        fall.zusatz ? std::deque{true, true} : std::deque{true});
        EXPECT_EQ(run.nummern(), fall.nummern) << fall.zeilen.toStdString();
        EXPECT_EQ(run.meldungen().last(), fall.schluss);
        EXPECT_TRUE(actions.value(0).endsWith(" aus herde.csv")) << actions.join("|").toStdString();
    }
}

TEST(Importtabelle, geaenderteDateiWirdNichtGelesen) {
    Importlauf run;
    const QString path = run.datei("Saunummer;Rasse\n1;DL\n");
    run.importieren(path, {true}, [&](S_Importtabelle&) { run.datei("Rasse;Saunummer\nDL;1\n"); });
    EXPECT_EQ(run.anzahl(), 0);
    run.importieren(path, {true}, [&](S_Importtabelle&) { QFile::remove(path); });
    EXPECT_EQ(run.anzahl(), 0);
    EXPECT_FALSE(run.koben.ended);
}

TEST(Importtabelle, abbruchLaesstNichtsZurueck) {
    Importlauf run;
    QString stand;
    QByteArray tiere = "Saunummer;Rasse\r\n";
    for (int i = 1; i <= 1000; ++i) tiere += QByteArray::number(i) + ";\r\n";
    run.importieren(run.datei(tiere), {true}, [&](S_Importtabelle& form) {
        run.screens.onBreathe = [&] {
            stand = form.bez.text();
            EXPECT_FALSE(form.ok.enabled());
            form.closeBox();
        };
    });
    EXPECT_EQ(stand, "200 Datensätze erledigt (200)");
    EXPECT_EQ(run.meldungen().last(),
              "! Der Import wurde abgebrochen. Es wurden keine Tiere in die Datenbasis übernommen.");
    EXPECT_EQ(run.anzahl(), 0);
    EXPECT_FALSE(run.koben.ended);
}

}  // namespace
}  // namespace koben

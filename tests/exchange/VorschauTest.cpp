// The preview of the device's import: what contradicts the herd, and that it books what the import books of a file
// without the lines that were left out.
#include <QRegularExpression>
#include <random>

#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "exchange/PO_Pocketimport.h"
#include "exchange/PO_Vorschau.h"
#include "tests/support/Fakes.h"
#include "tools/herdengenerator/Output.h"

namespace koben {
namespace {

/// The line, its section first ("0|117<tab>..."), as part of a file.
QString fileOf(const QStringList& lines) {
    QString text;
    for (int section = 0; section < 8; ++section) {
        QStringList own;
        for (const QString& line : lines)
            if (line.startsWith(QString::number(section) + '|')) own += line.mid(2);
        text += QString::number(own.size()) + "\r\n";
        for (const QString& line : own) text += line + "\tN\r\n";
    }
    return text;
}

const QDate Export(2026, 7, 10);

TEST(Widersprueche, sagenWasSeitDemExportDagegenSpricht) {
    // what was here at the export | what was written behind it | the line from the device | the reason
    const QString service = "insert into Belegung (Kennung, Datum) values (#, '%1')",
                  litter = "insert into Ferkelung (Kennung, Datum) values (#, '%1')",
                  weaning = "insert into Absetzung (Kennung, Datum) values (#, '%1')",
                  check = "insert into Trächtigkeit (Kennung, Datum, Trächtig) values (#, '%1', '%2')";
    const QString in = "0|#\t12.07.2026\tE\t1\tK\t\t\t\t", born = "1|#\t12.07.2026\t12\t11\t1\t\t\t\t",
                  weaned = "2|#\t12.07.2026\t10\t\t\t\t", found = "3|#\t12.07.2026\tJ\t\t\t",
                  lost = "4|#\t12.07.2026\t1\t\t\t\t", moved = "5|#\t12.07.2026\t2\t%1\t\t";
    const struct {
        QString before, after, line, reason;
    } cases[] = {
        {"", "", in, ""},
        {service.arg("11.07.2026"), "", in, ""},  // the device knew it
        {"", service.arg("11.07.2026"), in, "Belegung vom 11.07.2026. Das ist wohl dieselbe Rausche"},
        {"", service.arg("20.06.2026"), in, ""},
        {"", litter.arg("15.07.2026"), in, "Da war die Sau schon tragend"},
        {"", check.arg("01.07.2026", "J"), in, "Die Sau war da schon tragend"},
        {"", check.arg("01.07.2026", "N"), in, ""},
        {"", check.arg("01.07.2026", "N"), found, "Das Ergebnis ist ein anderes"},
        {"", check.arg("01.07.2026", "J"), found, ""},
        {"", litter.arg("01.07.2026"), born, "Das ist wohl derselbe Wurf"},
        {"", litter.arg("01.01.2026"), born, ""},
        {"", check.arg("01.04.2026", "N"), born, "Danach war die Sau nicht tragend"},
        {service.arg("02.04.2026"), check.arg("01.04.2026", "N"), born, ""},
        {"", service.arg("01.06.2026"), born, "Dafür ist es zu früh"},
        {"", weaning.arg("10.07.2026"), weaned, "Das ist wohl derselbe Wurf"},
        {litter.arg("11.07.2026"), weaning.arg("10.07.2026"), weaned, ""},
        {"", service.arg("10.07.2026"), weaned, "Da hatte die Sau schon keine Ferkel mehr"},
        {"", weaning.arg("10.07.2026"), lost, "Da hatte die Sau keine Ferkel mehr"},
        {service.arg("20.03.2026"), "delete from Belegung where Kennung = #", born,
         "gelöscht: Belegung vom 20.03.2026"},
        {litter.arg("15.06.2026"), "delete from Ferkelung where Kennung = #", weaned, "gelöscht: Ferkelung vom"},
        {"", service.arg("20.03.2026") + ";delete from Belegung where Kennung = #", born, ""},
        {"", "update Sauen set Abgangsdatum = '11.07.2026' where ID = #", in, "am 11.07.2026 abgegangen"},
        {"update Sauen set Abgangsdatum = '12.07.2026' where ID = #", "", in, ""},
        {"", "update Sauen set Abgangsdatum = '11.07.2026' where ID = 1000", moved.arg("1000"), "Die andere Sau ist"},
        {"", "delete from Sauen where ID = #", in, "Das Tier wurde nach dem Export gelöscht"},
    };
    TestRun run;
    Datenbank_anlegen(run.koben.workspace, run.koben.Datenbankpfad);
    Database db = run.koben.connect();
    db.execute("insert into Sauen (ID, Nummer) values (1000, '1000')");
    DateTime exported = DateTime::of(Export);
    exported.second = 43200;
    int animal = 0;
    for (const auto& c : cases) {
        const QString id = QString::number(++animal);
        db.execute("insert into Sauen (ID, Nummer) values (" + id + ", '" + id + "')");
        const auto write = [&](QDateTime when, const QString& statements) {
            run.platform.clock = when;
            for (const QString& sql : statements.split(';', Qt::SkipEmptyParts)) {
                Action action(db, "x");
                Database(action.database()).execute(QString(sql).replace('#', id));
                action.commit();
            }
        };
        write({Export, QTime(11, 59)}, c.before);
        write({Export.addDays(3), QTime(7, 0)}, c.after);
        const Geraetedatei file = Geraetedatei::read(nachWindows1252(fileOf({QString(c.line).replace('#', id)})));
        ASSERT_EQ(file.problem(), "");
        const Geraeteplan plan = planDeviceBookings(db, file, true, [](const QString&) { return true; });
        const QString reason = Widersprueche(db, run.koben, exported, file).reason(plan.entries[0]);
        EXPECT_TRUE(c.reason.isEmpty() ? reason.isEmpty() : reason.contains(c.reason))
            << animal << ' ' << c.after.toStdString() << ": " << reason.toStdString();
    }
}

/// All tables, and what the user read.
QString everything(TestRun& run) {
    const Database db = run.koben.connect();
    QString text =
        run.screens.takeLog().filter(QRegularExpression("^[!?~]")).join('\n') + run.lines("LISTE.TXT").join('\n');
    for (const QString& name : db.tables()) {
        const Table table = db.table("select * from " + name);
        for (int row = 0; row < table.rowCount(); ++row) {
            text += '\n' + name;
            for (int column = 0; column < table.columnCount(); ++column) text += '|' + table.text(row, column);
        }
    }
    return text;
}

QStringList randomLines(std::mt19937& random) {
    const char* const rests[] = {"E%1\t1\tK\t\t3,5\t\t",
                                 "12\t11\t1\t1,4\t\t\t",
                                 "1%1\t7\t\t\t%1",
                                 "N\t\t\t",
                                 "1\tErdrückt\t\t\t",
                                 "2\t%1\tk\t",
                                 "W\tJod%1\t1\tml\t\t3\t\t\t\t\t\t",
                                 "50\t0\t0\t10\t500\t0\t0\tHof\t"};
    QStringList lines;
    for (int i = 0; i < 60; ++i) {
        const auto any = [&](int most) { return QString::number(random() % static_cast<unsigned>(most)); };
        const int section = any(8).toInt();
        const QString number = any(9) == "0" ? QString() : any(6);
        lines += QString::number(section) + '|' + number + '\t' + (any(12) == "0" ? "?" : "0" + any(4) + ".07.2026") +
                 '\t' + QString::fromUtf8(rests[section]).replace("%1", any(7));
    }
    std::stable_sort(lines.begin(), lines.end(), [](const QString& a, const QString& b) { return a[0] < b[0]; });
    return lines;
}

TEST(PO_Vorschau, buchtWasDerImportOhneDasAusgelasseneBucht) {
    for (unsigned seed = 1; seed <= 6; ++seed) {
        TestRun whole, chosen;
        std::mt19937 random(seed);
        const QStringList lines = randomLines(random);
        QStringList kept;
        std::vector<size_t> left;
        for (int i = 0; i < lines.size(); ++i)
            if (seed > 1 && random() % 3 == 0)  // of the first nothing is left out
                left.push_back(static_cast<size_t>(i));
            else
                kept += lines[i];
        const bool once = seed % 3 != 0;
        for (TestRun* run : {&whole, &chosen}) {
            Datenbank_anlegen(run->koben.workspace, run->koben.Datenbankpfad);
            for (const char* number : {"1", "2", "3"})
                run->koben.connect().execute(QStringLiteral("insert into Sauen (Nummer) values ('%1')").arg(number));
            run->catalogue.add<PO_Vorschau>("PO_Vorschau");
            run->write(DateiVomGeraet, fileOf(run == &whole ? kept : lines));
            if (!once) run->screens.answers.push_back(true);
            for (int i = 0; i < 60; ++i) run->screens.answers.push_back((seed + static_cast<unsigned>(i)) % 3 != 0);
            PO_Pocketimport form(run->koben);
            run->screens.workIn<PO_Pocketimport>([&](PO_Pocketimport& import) {
                import.koneindatum.setChecked(once);
                if (run == &whole) return import.ok[1].click();
                run->screens.workIn<PO_Vorschau>([&](PO_Vorschau& preview) {
                    std::vector<int> rows;
                    for (int row = 1; row <= preview.li.rowCount(); ++row)
                        if (std::find(left.begin(), left.end(), preview.li.value(row, u"nr").toInt()) != left.end())
                            rows.push_back(row);
                    preview.li.mark(rows);
                    if (!rows.empty()) preview.auslassen.click();
                    for (const int row : rows) EXPECT_EQ(preview.li.cell(row, u"nehmen"), "nein");
                    preview.ok.click();
                    EXPECT_TRUE(preview.closed());
                });
                import.vorschau.click();
            });
            run->koben.run(form);
        }
        EXPECT_EQ(whole.screens.answers.size(), chosen.screens.answers.size());
        EXPECT_EQ(everything(chosen), everything(whole)) << seed;
    }
}

TEST(PO_Vorschau, nimmtDoppelteUndVertippteNachWunsch) {
    TestRun run;
    Datenbank_anlegen(run.koben.workspace, run.koben.Datenbankpfad);
    Database db = run.koben.connect();
    db.execute("insert into Sauen (Nummer, Art, Status) values ('103', 'Sau', 'B')");
    run.write(DateiVomGeraet,
              fileOf({"6|103\t01.07.2026\tW\tJod\t1\tml\t\t3\t\t\t\t\t\t", "0|1O3\t01.07.2026\tE\t\t\t\t\t\t",
                      "6|103\t01.07.2026\tW\tParvo\t1\tml\t\t3\t\t\t\t\t\t"}));
    PO_Vorschau form(run.koben);
    run.screens.workIn<PO_Vorschau>([&](PO_Vorschau& preview) {
        EXPECT_EQ(preview.summe.text(), "1 neu, 1 doppelt, 1 mit unbekannter Nummer. Eingelesen wird: 2 Buchungen.");
        EXPECT_EQ(preview.li.cell(3, u"urteil"), "doppelt");
        preview.li.choose(3);
        preview.li.doubleClick();
        preview.li.choose(1);
        run.screens.inputs = {"103"};
        preview.zuordnen.click();
        EXPECT_EQ(preview.summe.text(), "2 neu, 1 doppelt. Eingelesen wird: 3 Buchungen.");
        preview.ok.click();
    });
    run.koben.run(form);
    EXPECT_EQ(db.table("select Medikament from Behandlung where Kennung = 1").rowCount(), 2);
    EXPECT_EQ(db.table("select ID from Belegung where Kennung = 1").rowCount(), 1);
}

}  // namespace
}  // namespace koben

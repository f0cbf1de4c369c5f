// The page for the phone: the farm's data within the shipped page, and what is told where that cannot be done.
#include "exchange/Stallseite.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "tests/exchange/Importlauf.h"

namespace koben {
namespace {

const QString Template =
    "<script type=\"text/plain\" id=\"betrieb\"></script><script type=\"text/plain\" id=\"datei\"></script>";

QByteArray block(const QByteArray& page, const QByteArray& id) {
    const qsizetype from = page.indexOf("id=\"" + id + "\">") + id.size() + 6;
    return QByteArray::fromBase64(page.mid(from, page.indexOf('<', from) - from));
}

TEST(Stallseite, bringtDieDatenMitUndBehaeltIhrZeichen) {
    Importlauf run;
    run.koben.Heute = "15.07.2026";
    run.koben.Konfig_Text[25] = " Hof </script> 'B' ";
    run.db.execute(
        "insert into Sauen (Art, Nummer, Stallnr, L_Belegung) values ('Sau', '</script>''1', 'A', #06/25/2026#)");
    run.db.execute("insert into Sauen (Art, Nummer, L_Belegung) values ('Sau', '2', #06/01/2026#)");
    run.db.execute("insert into Sauen (Art, Nummer, L_Belegung) values ('Mast', '3', #06/25/2026#)");
    run.db.execute(
        "insert into Arbeitsplanoptionen (Arbeitsart, Tage_von, Tage_bis, Bezugstermin, Erledigt_gross, "
        "Erledigt_klein) values ('Schau', 20, 24, 'Letzte Belegung', 'Letzte Trächtigkeit', 'Letzte Belegung')");
    const auto write = [&] { return writeBarnPage(run.koben, run.db, {true, 0, {}}, "Datei\r\n</script>"); };

    EXPECT_TRUE(write().contains("die Vorlage")) << "no template";
    run.write("Stall.html", "<script></script>");
    EXPECT_TRUE(write().contains("beschädigt"));
    EXPECT_FALSE(run.exists("KOBEN-Stall.html"));
    run.write("Stall.html", Template);
    EXPECT_EQ(write(), "");
    const QByteArray first = run.bytes("KOBEN-Stall.html");
    EXPECT_EQ(first.count("</script>"), 2);
    EXPECT_EQ(block(first, "datei"), "Datei\r\n</script>");
    const QJsonObject farm = QJsonDocument::fromJson(block(first, "betrieb")).object();
    EXPECT_EQ(farm["name"].toString(), "Hof </script> 'B'");
    EXPECT_EQ(farm["planUntil"].toString(), "2026-07-28");
    QStringList plan;
    for (const QJsonValue& row : farm["plan"].toArray())
        if (farm["works"][row[0].toInt()][0].toString() == "Schau")
            plan += row[1].toString() + ' ' + row[2].toString() + ' ' + row[3].toString();
    EXPECT_EQ(plan.join('\n'), "2026-06-21 2026-06-25 2\n2026-07-15 2026-07-19 </script>`1");

    EXPECT_EQ(write(), "");
    const QJsonObject second = QJsonDocument::fromJson(block(run.bytes("KOBEN-Stall.html"), "betrieb")).object();
    EXPECT_EQ(second["id"], farm["id"]);
    QFile::remove(run.path("KOBEN-Stall.html"));
    QDir().mkdir(run.path("KOBEN-Stall.html"));
    EXPECT_TRUE(write().startsWith("Die Seite für das Telefon"));
}

}  // namespace
}  // namespace koben

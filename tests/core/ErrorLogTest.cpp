#include "core/ErrorLog.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace koben {
namespace {

TEST(ErrorLog, HoldsNothingOfTheAnimals) {
    const std::pair<const char*, const char*> table[] = {
        {"Kein Platz (SQLite 13: database or disk is full).\r\nAnweisung: update Sauen set Nummer = 'Berta 4711' where "
         "ID = 17",
         "Kein Platz (SQLite 13: database or disk is full). Anweisung: update Sauen set Nummer = '?' where ID = ?"},
        {"Der Name ist unbekannt (Zeichen 21).\r\nAnweisung: select [Anz_Ferkel2] from S where a = \"Berta\" and b > "
         "12,5 and d = #07/15/2026#",
         "Der Name ist unbekannt (Zeichen 21). Anweisung: select [Anz_Ferkel2] from S where a = \"?\" and b > ? and d "
         "= #?#"},
        {"Anweisung: where Nummer = 'O'Brien' and ID = 3", "Anweisung: where Nummer = ?"},
        {"Der Wert \"12x\" ist nicht als Zahl lesbar, 4711 auch nicht",
         "Der Wert \"?\" ist nicht als Zahl lesbar, ? auch nicht"}};
    for (const auto& [text, left] : table) EXPECT_EQ(withoutValues(QString::fromUtf8(text)).toStdString(), left);
}

TEST(ErrorLog, StaysShort) {
    const QTemporaryDir folder;
    const ErrorLog log(folder.path() + QStringLiteral("/neu/"));
    for (int i = 0; i < 230; ++i)
        log.write(QDateTime(QDate(2026, 7, 15), QTime(8, 0)), QStringLiteral("Fehler x%1\nzwei").arg(i));
    QFile file(log.path());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().trimmed().split('\n');
    EXPECT_EQ(lines.size(), 200);
    EXPECT_EQ(lines.first(), QByteArray("2026-07-15 08:00:00 Fehler x30 zwei"));
}

}  // namespace
}  // namespace koben

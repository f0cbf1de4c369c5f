#include "core/FreieNummer.h"

#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

TEST(FreieNummerTest, fülltLückenUndVergleichtWieDieDatenbank) {
    const struct {
        QStringList taken;
        const char* base;
        const char* free;  ///< the next four
    } cases[] = {
        {{"B1-2", "B1-3", "B1-5", "B1-10"}, "B1", "B1-1 B1-4 B1-6 B1-7"},
        {{"B1-1", "B1-1", "B1-2"}, "B1", "B1-3 B1-4 B1-5 B1-6"},
        {{"B10-1", "B-1", "B1", "B1-", "B1 -2"}, "B1", "B1-1 B1-2 B1-3 B1-4"},  // other boxes
        {{"b1-1", "B1-2 "}, "B1", "B1-3 B1-4 B1-5 B1-6"},
        {{"MASS-1", "Maß-2", "mass–3"}, "maß", "maß-4 maß-5 maß-6 maß-7"},
        {{"Lauf-1", "Läuf-2"}, "Läuf", "Läuf-1 Läuf-3 Läuf-4 Läuf-5"},
        {{"B1-07", "B1-1a", "B1-1-2", "B1-0", "B1-99999999999"}, "B1", "B1-1 B1-2 B1-3 B1-4"},
        {{"B1-¹", "B1-2³"}, "B1", "B1-2 B1-3 B1-4 B1-5"},
        {{"A-1-1", "A-2"}, "A-1", "A-1-2 A-1-3 A-1-4 A-1-5"},
        {{"B1-1"}, " B1 ", "B1-2 B1-3 B1-4 B1-5"},
    };
    Buchungshof farm;
    for (const auto& c : cases) {
        farm.sql("delete from Sauen");
        for (const QString& number : c.taken) farm.tier(number, "Ferkel");
        FreieNummern numbers(farm.db, c.base);
        QStringList given;
        for (int i = 0; i < 4; ++i) given += numbers.naechste();
        EXPECT_EQ(given.join(u' '), c.free);
        for (const QString& number : given)
            EXPECT_EQ(farm.show("select Nummer from Sauen where Nummer = '" + number + "'"), "") << c.free;
    }
}

}  // namespace
}  // namespace koben

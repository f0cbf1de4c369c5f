// The logic test at both ends of each interval, and the way from a finding to its booking and back.
#include "analytics/PB_Logiktest.h"
#include "core/PZ_Koben_Subs.h"
#include "tests/analytics/Auswertungshof.h"

namespace koben {
namespace {

const QDate farrowing(2026, 3, 1);

struct Logiktest : testing::Test, Auswertungshof {
    void SetUp() override { catalogue.add<PB_Logiktest>("PB_Logiktest"); }
    QString day(int fromFarrowing) { return Sql_Datum(Datum_als_Anzeige(farrowing.addDays(fromFarrowing))); }
    void book(const QString& table, int days, int sow = 1, const QString& more = "") {
        const QString field = table == "Ferkelung"      ? "Ferkel_Lebendig"
                              : table == "Trächtigkeit" ? "Trächtig"
                                                        : "Bemerkung";
        sql("insert into " + table + " (Kennung, Datum, " + field + ") values (%1, " + day(days) + ", %2)", sow,
            !more.isEmpty()       ? more
            : field == "Trächtig" ? "'J'"
                                  : "10");
    }
    QStringList run(const QString& steps = "optiwoche(0)") {
        QStringList found;
        in<PB_Logiktest>("PB_Logiktest", [&](PB_Logiktest& form) {
            play(form, steps + "; ok");
            found = gridText(form.gridli).mid(1);
        });
        return found;
    }
};

TEST_F(Logiktest, BeideEndenJedesBereichs) {
    tier("1", "Sau", "Anz_Ferkelungen = 1, Stallnr = 'A', Gruppe = 'G'");
    struct Fall {
        std::vector<int> services, checks, weanings;
        const char* cells;  ///< behind the farrowing; "" for no finding
    };
    const QString line = "1|A|G|1|01.03.2026|";
    const Fall cases[] = {
        {{-116}, {-94}, {30}, ""},
        {{-123}, {-94}, {30}, ""},
        {{-124}, {-94}, {30}, "28.10.2025|124||||"},
        {{-109}, {-94}, {30}, ""},
        {{-108}, {-94}, {30}, "13.11.2025|108||||"},
        {{-116}, {-101}, {37}, ""},
        {{-116}, {-102}, {38}, "||19.11.2025|102|08.04.2026|38"},
        {{-116}, {-87}, {23}, ""},
        {{-116}, {-86}, {22}, "||05.12.2025|86|23.03.2026|22"},
        {{-116}, {-116}, {30}, "||fehlt|?||"},           // a check on the day of the service is none
        {{-140, -116}, {-118}, {30}, "||fehlt|?||"},     // only behind the latest service
        {{-116, 0}, {-94, 0}, {0}, "||||01.03.2026|0"},  // up to the next service, that day included
        {{-116, 29}, {-94}, {30}, "||||fehlt|?"},
        {{-116}, {-94}, {200}, "||||fehlt|?"},  // not in the future
        {{}, {-94}, {}, "fehlt|?|||fehlt|?"},
    };
    for (const auto& [services, checks, weanings, cells] : cases) {
        for (const char* table : {"Belegung", "Trächtigkeit", "Ferkelung", "Absetzung"}) sql("delete from %1", table);
        book("Ferkelung", 0);
        for (const int days : services) book("Belegung", days);
        for (const int days : checks) book("Trächtigkeit", days);
        for (const int days : weanings) book("Absetzung", days);
        book("Trächtigkeit", -1, 1, "'N'");
        EXPECT_EQ(run(), *cells ? QStringList{line + cells} : QStringList()) << cells;
    }
    const QString widest = "optiwoche(3); kon(0); kon(1)";
    sql("delete from Absetzung");
    book("Absetzung", 58);
    EXPECT_EQ(run(widest), QStringList());
    EXPECT_EQ(run("kon(0); kon(1); kon(2)"), QStringList());
}

TEST_F(Logiktest, ZeilenDerSauenUndTrennzeilen) {
    for (const char* number : {"3", "1", "2", "4"}) tier(number, "Sau", "Anz_Ferkelungen = 2");
    for (const int sow : {1, 2, 4})
        for (const int days : {-300, -150, 0}) book("Ferkelung", days, sow, sow == 1 && days != -300 ? "0" : "null");
    const QString missing = "fehlt|?|fehlt|?|fehlt|?";
    EXPECT_EQ(run(),
              QStringList({"1|||1|05.05.2025|" + missing, "|||2|02.10.2025|" + missing, "|||3|01.03.2026|" + missing,
                           "||||||||||", "3|||1|05.05.2025|" + missing, "||||||||||", "4|||1|05.05.2025|" + missing,
                           "|||2|02.10.2025|" + missing, "|||3|01.03.2026|" + missing}));
    EXPECT_EQ(run("kon(3)"), QStringList({"1|||3|01.03.2026|" + missing, "4|||3|01.03.2026|" + missing}));
}

}  // namespace
}  // namespace koben

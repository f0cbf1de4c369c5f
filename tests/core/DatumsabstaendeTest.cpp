#include <gtest/gtest.h>

#include "core/Einstellungen.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "tests/core/Texte.h"

namespace koben {
namespace {

/// One call; `lines` are the lines of the hint, joined by "|".
struct Case {
    const char *mode, *belegung, *traechtigkeit, *ferkelung, *absetzung, *geburt, *lines;
};

Variablen settings(int zyklus, int geburt) {
    Variablen v;
    Einstellungen_vorgeben(v, 2026);
    v.Konfig_Zahl[Zahl::ZyklusPruefen] = static_cast<qint16>(zyklus);
    v.Konfig_Zahl[Zahl::GeburtPruefen] = static_cast<qint16>(geburt);
    return v;
}

QString check(const Variablen& v, const Case& c) {
    const auto text = [](const char* s) { return QString::fromUtf8(s); };
    return Datumsabstaende_pruefen(v, text(c.mode), QStringLiteral("17"), text(c.belegung), text(c.traechtigkeit),
                                   text(c.ferkelung), text(c.absetzung), text(c.geburt));
}

QString message(const char* lines) {
    if (*lines == 0) return {};
    return QStringLiteral(
               "HINWEIS: Folgende Datumangaben liegen gegenseitig außerhalb der Toleranzen\r\nSaunummer: 17\r\n\r\n") +
           QString::fromUtf8(lines).replace(u'|', Crlf) + Crlf + Crlf;
}

TEST(Datumsabstaende, EachModeTestsItsOwnDistances) {
    const Variablen v = settings(1, 0);
    const Case cases[] = {
        // service to farrowing: 116 +- 14
        {"Ferkelung", "01.01.2026", "", "11.05.2026", "", "", ""},  // 130
        {"Ferkelung", "01.01.2026", "", "12.05.2026", "", "", "...Differenz Belegung - Ferkelung 131 Tage?"},
        {"Ferkelung", "01.01.2026", "", "13.04.2026", "", "", ""},  // 102
        {"Ferkelung", "01.01.2026", "", "12.04.2026", "", "", "...Differenz Belegung - Ferkelung 101 Tage?"},
        {"Ferkelung", "12.05.2026", "", "01.01.2026", "", "", ""},  // farrowing before the service
        {"Ferkelung", "", "", "01.01.2026", "", "", "...Ferkelung ohne vorherige Belegung eingetragen."},
        {"Belegung", "01.01.2026", "", "12.05.2026", "", "", ""},
        // farrowing to service: 36 +- 14
        {"Belegung", "21.01.2026", "", "01.01.2026", "", "", "...Differenz Ferkelung - Belegung 20 Tage?"},
        {"Belegung", "23.01.2026", "", "01.01.2026", "", "", ""},  // 22
        {"Belegung", "01.01.2026", "", "01.01.2026", "", "", "...Differenz Ferkelung - Belegung 0 Tage?"},
        {"Belegung", "01.01.2026", "", "", "", "01.01.2020", ""},  // birth is not tested
        // farrowing to weaning: 30 +- 14
        {"Absetzung", "", "", "01.01.2026", "14.02.2026", "", ""},  // 44
        {"Absetzung", "", "", "01.01.2026", "15.02.2026", "", "...Differenz Ferkelung - Absetzung 45 Tage?"},
        {"Absetzung", "", "", "01.01.2026", "31.12.2025", "", ""},
        {"Absetzung", "", "", "", "01.01.2026", "", "...Absetzung ohne vorherige Ferkelung eingetragen."},
        // weaning to service, under the mode of the weaning: 6 +- 14
        {"Absetzung", "01.03.2026", "", "01.01.2026", "01.02.2026", "", "...Differenz Absetzung - Belegung 28 Tage?"},
        {"Absetzung", "21.02.2026", "", "01.01.2026", "01.02.2026", "", ""},  // 20
        {"Belegung", "01.05.2026", "", "", "01.02.2026", "", ""},
        {"Absetzung", "20.04.2026", "", "", "01.02.2026", "",
         "...Absetzung ohne vorherige Ferkelung eingetragen.|...Differenz Absetzung - Belegung 78 Tage?"},
        // service to check counts backwards: 22 +- 14, so that hardly any passes
        {"Trächtigkeit", "01.01.2026", "23.01.2026", "", "", "",
         "...Differenz Belegung - Trächtigkeitsfeststellung -22 Tage?"},
        {"Trächtigkeit", "01.01.2026", "01.01.2026", "", "", "",
         "...Differenz Belegung - Trächtigkeitsfeststellung 0 Tage?"},
        {"Trächtigkeit", "02.01.2026", "01.01.2026", "", "", "", ""},
        {"Trächtigkeit", "", "01.01.2026", "", "", "",
         "...Trächtigkeitsfeststellung ohne vorherige Belegung eingetragen."},
        {"Verluste", "", "01.01.2026", "01.01.2026", "01.01.2026", "", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(check(v, c), message(c.lines))
            << c.mode << ' ' << c.belegung << ' ' << c.ferkelung << ' ' << c.absetzung;
}

TEST(Datumsabstaende, ServiceAfterBirthAndSwitches) {
    const Case both{"Belegung",
                    "01.02.2026",
                    "",
                    "01.01.2026",
                    "",
                    "01.02.2020",
                    "...Differenz Ferkelung - Belegung 31 Tage?|...Differenz Geburtsdatum - ERST-Belegung 2192 Tage?"};
    Variablen v = settings(1, 1);
    v.Konfig_Zahl[Zahl::ToleranzTage] = 4;
    EXPECT_EQ(check(v, both), message(both.lines));
    v = settings(0, 1);
    EXPECT_EQ(check(v, both), message("...Differenz Geburtsdatum - ERST-Belegung 2192 Tage?"));
    EXPECT_EQ(check(v, {"Belegung", "15.01.2026", "", "", "", "01.01.2025", ""}), QString());  // 379 days
    EXPECT_EQ(check(v, {"Ferkelung", "15.01.2026", "", "", "", "01.01.2020", ""}), QString());
    EXPECT_EQ(check(settings(0, 0), both), QString());
    v = settings(1, 0);
    v.Konfig_Zahl[Zahl::TageBelegungKontrolle] = -20;
    EXPECT_EQ(check(v, {"Trächtigkeit", "01.01.2026", "23.01.2026", "", "", "", ""}), QString());
}

}  // namespace
}  // namespace koben

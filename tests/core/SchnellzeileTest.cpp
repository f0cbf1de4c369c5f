// The grammar of the quick entry: what a line means, and what it says where it means nothing.
#include <gtest/gtest.h>

#include "core/Schnellzeile.h"
#include "tests/core/Texte.h"

namespace koben {
namespace {

const std::vector<Schnelltier> Herd{{1, "40", "Sau"},
                                    {2, "41", "Sau", true},
                                    {3, "42", "Eber"},
                                    {4, "43", "Sau"},
                                    {5, "123", "Sau", false, true},
                                    {6, "123", "Mast"},
                                    {7, "007", "Sau", false, true},
                                    {8, "55", "Mast"},
                                    {9, "55", "Mast"},
                                    {10, "12-3", "Ferkel"},
                                    {11, "f", "Sau"}};

/// 16.07.2026 is a Thursday.
QString said(const QString& line) { return Schnellzeile_lesen(line, Herd, "16.07.2026").sentence(); }

/// LINE|what is booked, without the beginning and the full stop.
TEST(Schnellzeile, LinesSayWhatTheyBook) {
    const char* const rows[] = {
        "123 b Hektor|Belegung bei Sau 123 am Do 16.07.2026: Eber Hektor, Belegungsart K",
        "123 b 1203 2 n Nord|Belegung bei Sau 123 am Do 16.07.2026: Eber 1203, Deckanzahl 2, Belegungsart N, Station "
        "Nord",
        "123 f 14 1|Ferkelung bei Sau 123 am Do 16.07.2026: Ferkel gesamt 14, tot 1",
        "123 F 14/1 gestern|Ferkelung bei Sau 123 am Mi 15.07.2026: Ferkel gesamt 14, tot 1",
        "123 wurf 14 13 1|Ferkelung bei Sau 123 am Do 16.07.2026: Ferkel gesamt 14, tot 1",
        "123 f 14/13/1 3|Ferkelung bei Sau 123 am Fr 03.07.2026: Ferkel gesamt 14, tot 1",
        "123 f 14 1607|Ferkelung bei Sau 123 am Do 16.07.2026: Ferkel gesamt 14",
        "123 f am 3 14 2 1,45|Ferkelung bei Sau 123 am Fr 03.07.2026: Ferkel gesamt 14, tot 2, Gewicht je Stück 1,45",
        "40-43 a 12 16.7.|Absetzung bei 2 Sauen (40, 43) am Do 16.07.2026: Ferkel 12",
        "40,43,7 abs 12 7,5 3.2|Absetzung bei 3 Sauen (40, 43, 007) am Di 03.02.2026: Ferkel 12, Gewicht je Stück 7,50",
        "123 t j|Trächtigkeitsfeststellung bei Sau 123 am Do 16.07.2026: trächtig J",
        "123 t nein 3|Trächtigkeitsfeststellung bei Sau 123 am Fr 03.07.2026: trächtig N",
        "123 t kosten=3|Trächtigkeitsfeststellung bei Sau 123 am Do 16.07.2026: trächtig J, Kosten 3,00",
        "123 v 2 erdrückt|Verlust bei Sau 123 am Do 16.07.2026: Ferkel 2, Grund erdrückt",
        "123 v \"am Ende\" - vorgestern|Verlust bei Sau 123 am Di 14.07.2026: Ferkel 1, Grund am Ende",
        "123 s -3 40|Verschiebung bei Sau 123 am Do 16.07.2026: Ferkel -3, zu Sau 40",
        "markierte h Eisen Ferrum 2 ml|Behandlung bei 2 Sauen (123, 007) am Do 16.07.2026: Behandlungsart Eisen, "
        "Medikament Ferrum, Menge 2,00, Einheit ml",
        "12-3 h Eisen|Behandlung bei Ferkel 12-3 am Do 16.07.2026: Behandlungsart Eisen",
        "41 k 10 48,50|Ferkelverkauf bei Sau 41 am Do 16.07.2026: Ferkel 10, Preis je Stück 48,50",
        "f f 9|Ferkelung bei Sau f am Do 16.07.2026: Ferkel gesamt 9",
        // as they come from the barn
        "ferkelung 123 14/1|Ferkelung bei Sau 123 am Do 16.07.2026: Ferkel gesamt 14, tot 1",
        "123f14/1, 16. 7. 2026|Ferkelung bei Sau 123 am Do 16.07.2026: Ferkel gesamt 14, tot 1",
        "Sau 123 hat geferkelt 14 / 1 am letzten Montag|Ferkelung bei Sau 123 am Mo 13.07.2026: Ferkel gesamt 14, tot "
        "1",
        "123 geferkelt 14 davon 1 tot|Ferkelung bei Sau 123 am Do 16.07.2026: Ferkel gesamt 14, tot 1",
        "123 f 14 tot 1 gewicht 1,4|Ferkelung bei Sau 123 am Do 16.07.2026: Ferkel gesamt 14, tot 1, Gewicht je Stück "
        "1,40",
        "123 f 13 lebend 1 tot gestern|Ferkelung bei Sau 123 am Mi 15.07.2026: Ferkel gesamt 14, tot 1",
        "40 bis 43 a 12 7,5kg Box B7|Absetzung bei 2 Sauen (40, 43) am Do 16.07.2026: Ferkel 12, Gewicht je Stück "
        "7,50, "
        "Box B7",
        "40 - 43, und 7 a 12 2026-07-15|Absetzung bei 3 Sauen (40, 43, 007) am Mi 15.07.2026: Ferkel 12",
        "123 besamt mit Hektor 2x 12,50 €|Belegung bei Sau 123 am Do 16.07.2026: Eber Hektor, Deckanzahl 2, "
        "Belegungsart "
        "K, Kosten 12,50",
        "123 b Hektor kosten = 3|Belegung bei Sau 123 am Do 16.07.2026: Eber Hektor, Belegungsart K, Kosten 3,00",
        "123 nicht tragend|Trächtigkeitsfeststellung bei Sau 123 am Do 16.07.2026: trächtig N",
        "123 leer vom 3.7.|Trächtigkeitsfeststellung bei Sau 123 am Fr 03.07.2026: trächtig N",
        "123 s 3 zu 40|Verschiebung bei Sau 123 am Do 16.07.2026: Ferkel 3, zu Sau 40",
        "40 h Eisen Ferrum 2ml|Behandlung bei Sau 40 am Do 16.07.2026: Behandlungsart Eisen, Medikament Ferrum, "
        "Menge "
        "2,00, Einheit ml"};
    for (const char* row : rows) {
        const Row c(row);
        EXPECT_EQ(said(c[0]), "Gebucht wird: " + c[1] + '.');
    }
}

/// LINE|what is said to be wrong.
TEST(Schnellzeile, LinesSayWhatIsMissingOrWrong) {
    const char* const rows[] = {"999 f 14|Das Tier 999 steht nicht in der Liste.",
                                "4 f 14|So beginnen: 40, 41, 42.",
                                "55 h Eisen|Die Nummer 55 haben 2 Tiere",
                                "123|Es fehlt die Art der Buchung: b Belegung",
                                "14/1 f|Das Tier 14/1 steht nicht",
                                "123 f|Es fehlt: Ferkel gesamt.",
                                "123 ferkel 3|„ferkel“ kann Ferkelung oder Ferkelverkauf heißen.",
                                "123 f 14/12/1|lebend und tot ergeben nicht gesamt",
                                "123 f 14 gestern 3.2.|„3.2.“ wäre ein zweiter Tag: Nennen Sie nur einen.",
                                "123 f 14 am 40|„40“ ist kein Tag.",
                                "123 t j a b c|Für „c“ ist kein Feld mehr da.",
                                "123 f 14 tot=x|„x“ passt nicht in das Feld tot.",
                                "123 f 14 zitzen=14|Ein Feld „zitzen“ gibt es hier nicht.",
                                "43-40 f 3|Die kleinere steht vorn, 40-43.",
                                "alle f 3|Markieren Sie die Tiere",
                                "123 x 14|„x“ ist keine Art der Buchung",
                                "123 f 14/1 31.4.|„31.4.“ ist kein Tag.",
                                "123 b Hektor 12.50|Eine Kommazahl schreibt sich 12,50.",
                                "123 a 12 7.5|Schreiben Sie 7.5. oder 7,5.",
                                "123 v erdrückt 2|Schreiben Sie „am 2“ oder „Ferkel=2“.",
                                "123 t -|„-“ kann nein heißen",
                                "123 f 14 13 2|schreiben Sie „am 2“",
                                "123 f 14-1|Gesamt und tot schreiben sich 14/1.",
                                "123 f 14/15|Mehr tote Ferkel als gesamt.",
                                "123 f 40000|Für „40000“ ist kein Feld",
                                "123 f 14 tot=1 tot=2|„tot“ steht zweimal da.",
                                "123 f 14 kommentar=das ist gut|stehen in Anführungszeichen",
                                "200-210 f 3|kein Tier von 200-210",
                                "123 s 3|Es fehlt: zu Sau."};
    for (const char* row : rows) {
        const Row c(row);
        const QString text = said(c[0]);
        EXPECT_TRUE(text.startsWith("Noch nicht zu buchen: ") && text.contains(c[1])) << row << '\n'
                                                                                      << text.toStdString();
    }
    EXPECT_EQ(said("  "), "");
    EXPECT_EQ(said("123 f ?").count('\n'), 9);
    EXPECT_TRUE(said("123 f 14 16.7.2126").endsWith(". Der Tag kommt erst noch."));
}

}  // namespace
}  // namespace koben

// The quick entry books what the windows book: it works their forms.
#include "bookings/PE_Bewegungsdaten_Behandlung.h"
#include "bookings/PE_Bewegungsdaten_Ferkelverkauf.h"
#include "bookings/PE_Bewegungsdaten_Verluste.h"
#include "bookings/PE_Schnellliste.h"
#include "forms/Schnellbuchung.h"
#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

struct SchnellTest : testing::Test, Buchungshof {
    SchnellTest() {
        catalogue.add<PE_Schnellliste>("PE_Schnellliste");
        catalogue.add<PE_Bewegungsdaten_Verluste>("PE_Bewegungsdaten_Verluste");
        catalogue.add<PE_Bewegungsdaten_Ferkelverkauf>("PE_Bewegungsdaten_Ferkelverkauf");
        catalogue.add<PE_Bewegungsdaten_Behandlung>("PE_Bewegungsdaten_Behandlung");
        for (const char* number : {"40", "41", "123"}) tier(number);
        tier("42", "Eber");
        liste.datenschweinelesen();
    }
    Schnellergebnis book(const QString& line) {
        const Schnellzeile read = Schnellzeile_lesen(line, Schnelltiere(liste.datali), koben.Heute);
        EXPECT_TRUE(read.ready()) << read.sentence().toStdString();
        return Schnell_buchen(koben, read);
    }
};

TEST_F(SchnellTest, theFieldsOfTheGrammarStandInTheOrderOfTheScreens) {
    for (const Schnellart& art : Schnellarten()) {
        const auto form = catalogue.make(QString::fromUtf8(angaben(art.kind).screen), koben);
        const auto& lines = dynamic_cast<Eingabe&>(*form).zeilen();
        std::ptrdiff_t last = 0;
        for (const Schnellfeld& field : art.fields) {
            const auto at = std::find_if(lines.begin(), lines.end(), [&](const Eingabe::Zeile& line) {
                const QString wanted = QString::fromUtf8(field.control);
                return line.control->address() == wanted || line.control->name() == wanted;
            });
            EXPECT_GT(at - lines.begin(), last) << art.letter << ' ' << field.control;
            last = at - lines.begin();
        }
    }
}

TEST_F(SchnellTest, aLineBooksWhatTheWindowBooks) {
    neu<PE_Bewegungsdaten_Ferkelung>(Ferkelung, {2},  // 123 comes first
                                     [&](PE_Bewegungsdaten_Ferkelung& form) {
                                         play(form, "tdat=14.07.2026; tz(0)=14; tz(2)=1; kom(0)=gut; ok(0)");
                                     });
    const QStringList byHand = screens.takeLog().filter(QRegularExpression("^[!?~]"));
    EXPECT_TRUE(book("41 f 14/1 gestern gut").booked);
    EXPECT_EQ(screens.takeLog(), byHand);  // and no form was seen
    const QString fields = "select Datum, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot, Kommentar, LNr from Ferkelung";
    EXPECT_EQ(show(fields + " where Kennung = 2"), show(fields + " where Kennung = 1"));
    EXPECT_EQ(show(fields + " where Kennung = 2"), "14.07.2026 14 13 1 gut 1");
    EXPECT_EQ(actions.last(), "Ferkelung 41, 14.07.2026");
    screens.answers = {true};
    EXPECT_TRUE(book("40-42 b Hektor n").booked);
    EXPECT_EQ(show("select Kennung, Ebernr, Belegungart from Belegung order by ID"), "1 Hektor N | 2 Hektor N");
}

TEST_F(SchnellTest, whatItsFormRefusesLeavesNothing) {
    const struct {
        const char* line;
        const char* reason;
    } cases[] = {{"123 h Eisen Ferrum", "Menge"}, {"40,41 s 2 123", "nur ein Schwein"}, {"40 s 2 40", "anderen Sau"}};
    const auto booked = [&] {
        QString counts;
        for (const Artangaben& kind : Buchungsarten)
            counts += show("select count(*) as n from " + QString::fromUtf8(kind.table)) + ' ';
        return counts;
    };
    for (const auto& c : cases) {
        const QString before = booked();
        const Schnellergebnis result = book(QString::fromUtf8(c.line));
        EXPECT_FALSE(result.booked);
        EXPECT_TRUE(result.reason.contains(QString::fromUtf8(c.reason))) << result.reason.toStdString();
        EXPECT_EQ(booked(), before);
        EXPECT_TRUE(koben.stack().empty());
    }
}

TEST_F(SchnellTest, aListIsBookedWholeOrNotAtAll) {
    const QString before = everything();
    in<PE_Schnellliste>("PE_Schnellliste", [&](PE_Schnellliste& form) {
        form.t.edited("40 f 12/1\n\n99 f 3");
        EXPECT_EQ(gridText(form.li).last().section(u'|', 0, 2), "3|99 f 3|falsch");
        EXPECT_FALSE(form.ok[0].enabled());
        form.t.edited("40 f 12/1\n41 v 2 erdrückt\n123 h Eisen Ferrum");
        form.ok[0].click();
        EXPECT_EQ(everything(), before);
        EXPECT_TRUE(form.li.cell(3, 4).contains("Menge")) << form.li.cell(3, 4).toStdString();
        form.ok[1].click();
        EXPECT_EQ(form.t.text(), "123 h Eisen Ferrum");
        actions.clear();
        form.t.edited("40 v 1\n41 v 3");
        form.ok[0].click();
        EXPECT_TRUE(form.closed());
    });
    EXPECT_EQ(actions, QStringList("Liste von Buchungen, 2 Zeilen"));
    EXPECT_EQ(show("select Kennung, Anzahl_Ferkel from Verluste order by ID"), "2 2 | 1 1 | 2 3");
}

}  // namespace
}  // namespace koben

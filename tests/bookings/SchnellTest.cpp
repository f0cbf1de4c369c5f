// The quick entry books what the windows book: it works their forms.
#include <random>

#include "bookings/PE_Bewegungsdaten_Behandlung.h"
#include "bookings/PE_Bewegungsdaten_Ferkelverkauf.h"
#include "bookings/PE_Bewegungsdaten_Verluste.h"
#include "bookings/PE_Schnellliste.h"
#include "forms/Schnellbuchung.h"
#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

struct SchnellHof : Buchungshof {
    SchnellHof() {
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

struct SchnellTest : testing::Test, SchnellHof {};

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

/// A random booking: the line, and what is typed into which field of the window.
struct Zufall {
    Buchungsart kind;
    std::vector<std::pair<QString, QString>> typed;
    QString line;
};

Zufall random(std::mt19937& dice, const QString& animal) {
    const auto any = [&](unsigned most) { return dice() % most; };
    const Schnellart& art = Schnellarten()[any(8)];
    Zufall booking{art.kind, {}, animal + u' ' + QString::fromUtf8(art.letter)};
    const QString day = QStringLiteral("%1.07.2026").arg(1 + any(14));
    for (const Schnellfeld& field : art.fields) {
        const bool needed = field.flags & Schnellfeld::Needed;
        if (field.flags & Schnellfeld::Derived || (!needed && any(3) == 0)) continue;
        QString text = QString::number(1 + any(9));
        if (field.kind == Schnellfeld::Number) text += QStringLiteral(",%1").arg(10 + any(90));
        if (field.kind == Schnellfeld::Text) text = QStringLiteral("Wort %1").arg(any(9));
        if (field.kind == Schnellfeld::Day) text = QStringLiteral("2%1.07.2026").arg(any(9));
        if (field.kind == Schnellfeld::Choice)
            text = QString::fromUtf8(field.choices).split(u' ')[any(static_cast<unsigned>(2))];
        if (art.kind == Buchungsart::Ferkelung && needed) text = u'1' + text;  // more than are dead
        if (art.kind == Buchungsart::Verschiebung && field.flags & Schnellfeld::Digits) text = u'3';
        booking.typed.emplace_back(QString::fromUtf8(field.control), text);
        booking.line += QStringLiteral(" \"%1\"=\"%2\"").arg(QString::fromUtf8(field.name), text);
    }
    booking.typed.insert(booking.typed.begin(), {"tdat(0)", day});
    booking.line += u' ' + day;
    return booking;
}

/// Bookings of all kinds: typed into the windows of one farm, and as lines on another.
TEST(Schnellbuchung, randomLinesBookWhatTheWindowsBook) {
    constexpr int count = 80;
    std::mt19937 dice(20260716);
    SchnellHof windows, lines;
    for (SchnellHof* farm : {&windows, &lines}) {
        farm->tier("3");
        farm->screens.answers.assign(5 * count, true);
    }
    int refused = 0;
    for (int i = 0; i < count; ++i) {
        const auto row = static_cast<int>(dice() % 3) + 1;
        windows.liste.datenschweinelesen();
        lines.liste.datenschweinelesen();
        const Zufall booking = random(dice, lines.liste.datali.cell(row, u"Nummer"));
        bool booked = false;
        windows.rahmen(static_cast<Buchung>(booking.kind), {row}, [&](PE_Bewegungsdaten& frame) {
            windows.screens.work([&](Form& form) {
                for (const auto& [control, text] : booking.typed)
                    typeInto(fieldAt(form, control == "tdat(0)" && !form.find(u"tdat", 0) ? "tdat" : control), text);
                controlAt<Button>(form, "ok(0)")->click();
                booked = form.closed();
            });
            frame.neu.click();
            frame.closeBox();
        });
        EXPECT_EQ(lines.book(booking.line).booked, booked) << booking.line.toStdString();
        refused += booked ? 0 : 1;
        ASSERT_EQ(lines.everything(), windows.everything()) << booking.line.toStdString();
    }
    EXPECT_LT(refused, count / 2);
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
        form.t.edited("gestern\n40 v 1\n41 v 3 1.7.");
        form.ok[0].click();
        EXPECT_TRUE(form.closed());
    });
    EXPECT_EQ(actions, QStringList("Liste von Buchungen, 2 Zeilen"));
    EXPECT_EQ(show("select Kennung, Anzahl_Ferkel, Datum from Verluste order by ID"),
              "2 2 15.07.2026 | 1 1 14.07.2026 | 2 3 01.07.2026");
}

}  // namespace
}  // namespace koben

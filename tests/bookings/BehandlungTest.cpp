// Treatments: proposals from the medicines, dose and cost, days and date of the waiting time, and what a save writes.
#include "bookings/PE_Bewegungsdaten_Behandlung.h"

#include <random>

#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

using Treatment = PE_Bewegungsdaten_Behandlung;
enum Input { Menge, Tage, Kosten };
enum List { Medikament, Einheit, Weg, Tierarzt, Kommentar, Bemerkung, Art };

class BehandlungTest : public testing::Test, public Buchungshof {
protected:
    void SetUp() override {
        catalogue.add<Treatment>("PE_Bewegungsdaten_Behandlung");
        tier("12");
        tier("40");
    }
    void medikament(const QString& name, double dose, const QString& unit, int days, double cost,
                    const QString& kind = {}, const QString& way = {}) {
        sql(QStringLiteral("insert into Medikamente (Medikament, Menge, Einheit, Wartezeit_Tage, Kosten_je_Gabe, "
                           "Behandlungsart, Verabreichungsart) values ('%1', %2, '%3', %4, %5, '%6', '%7')")
                .arg(name)
                .arg(dose)
                .arg(unit)
                .arg(days)
                .arg(cost)
                .arg(kind, way));
    }
    void neu(const std::vector<int>& marks, std::function<void(Treatment&)> script) {
        Buchungshof::neu<Treatment>(Behandlung, marks, std::move(script));
    }
    QString behandlungen() { return zeige("select * from Behandlung order by ID"); }
    QString medikamente() { return zeige("select * from Medikamente order by ID"); }
};

QString inputs(const Treatment& form) {
    return QStringList{form.tz[Menge].text(),  form.kom[Einheit].text(), form.kom[Weg].text(),
                       form.tz[Kosten].text(), form.tz[Tage].text(),     form.tdat1.text()}
        .join(u'|');
}

TEST_F(BehandlungTest, medikamentFülltDieFelder) {
    medikament("Penicillin", 2, "ml", 7, 5, "Husten", "Spritze");
    medikament("Salbe", 0, "", 0, 9.5, "Wunde");
    medikament("Pulver", 0.125, "dl", 999, 1, "Husten", "Futter");
    const struct {
        int field;
        const char* text;
        const char* expected;
    } steps[] = {
        {Medikament, "Unbekannt", "0,00|||0,00|0|"},
        {Medikament, "penicillin", "2,00|ml|Spritze|5,00|7|08.03.2026"},
        {Medikament, "", "2,00|ml|Spritze|5,00|7|08.03.2026"},
        {Medikament, "Salbe", "0,00|||0,00|0|"},
        {Art, "Husten", "0,00|||0,00|0|"},                           // two remedies: no proposal
        {Medikament, "Pulver", "0,13||Futter|1,04|999|24.11.2028"},  // this screen knows no dl
        {Art, "Wunde", "0,00|||0,00|0|"},
    };
    neu({1}, [&](Treatment& form) {
        eingeben(form.tdat, "01.03.");
        for (const auto& step : steps) {
            eingeben(form.kom[step.field], step.text);
            EXPECT_EQ(inputs(form), step.expected) << step.text;
        }
        EXPECT_EQ(form.kom[Medikament].text(), "Salbe");
        form.tz[Kosten].setText("77,00");
        form.kom[Medikament].enter();
        form.kom[Medikament].leave();
        EXPECT_EQ(form.tz[Kosten].text(), "77,00") << "an unchanged text proposes nothing";
    });
}

TEST_F(BehandlungTest, dosisUndKostenWartetageUndDatumImGleichschritt) {
    medikament("Penicillin", 2, "ml", 7, 5);
    neu({1}, [](Treatment& form) {
        eingeben(form.tdat, "01.03.");
        eingeben(form.kom[Medikament], "Penicillin");
        eingeben(form.tz[Menge], "4");
        EXPECT_EQ(inputs(form), "4,00|ml||10,00|7|08.03.2026");
        eingeben(form.tdat, "05.03.");
        EXPECT_EQ(form.tdat1.text(), "12.03.2026");
        form.calend.pick(QDate(2026, 3, 25));
        EXPECT_EQ(form.tdat1.text(), "01.04.2026") << "over the end of a month";
        eingeben(form.tdat, "05.03.");
        eingeben(form.tdat1, "1003");
        EXPECT_EQ(form.tz[Tage].text(), "5");
        form.calender1.click();
        form.calend.pick(QDate(2026, 3, 11));
        EXPECT_EQ(form.tz[Tage].text() + ' ' + form.tdat.text(), "6 05.03.2026");
        form.UpDown.up();
        EXPECT_EQ(form.tdat1.text(), "12.03.2026");
        eingeben(form.tdat1, "05.03.2026");
        EXPECT_EQ(form.tz[Tage].text() + form.tdat1.text(), "0") << "the day of treatment itself";
        eingeben(form.tz[Menge], "0");
        eingeben(form.tz[Kosten], "3,01");
        eingeben(form.tz[Menge], "2");
        EXPECT_EQ(form.tz[Kosten].text(), "3,01") << "nothing to scale from";
        eingeben(form.tz[Menge], "1");
        EXPECT_EQ(form.tz[Kosten].text(), "1,51") << "half a cent upwards";
        eingeben(form.tdat, "31.2.2026");
        eingeben(form.tz[Tage], "1");
        EXPECT_EQ(form.tdat1.text(), "16.07.2026") << "without a date of treatment from today";
        eingeben(form.tdat1, "20.07.2026");
        EXPECT_EQ(form.tz[Tage].text(), "1") << "nothing to count from";
    });
}

/// The rules once more, in whole cents and days, against random work on the screen.
struct Modell {
    struct Mittel {
        const char* name;
        int dose, cost, days;
    };
    QDate date, until;
    int days = 0, dose = 0, cost = 0;
    static int scaled(int cost, int part, int whole) {
        return static_cast<int>((2LL * cost * part + whole) / (2LL * whole));
    }
    void setDays(int n) {
        days = n;
        until = n == 0 ? QDate() : (date.isValid() ? date : QDate(2026, 7, 15)).addDays(n);
    }
    void setDate(QDate d) {
        date = d;
        setDays(days);
    }
    void setUntil(QDate d) {
        until = d;
        if (!date.isValid() || !d.isValid()) return;
        days = static_cast<int>(std::max(date.daysTo(d), qint64(0)));
        if (days == 0) until = QDate();
    }
    void setDose(int cents) {
        if (dose != 0 && cents != dose) cost = scaled(cost, cents, dose);
        dose = cents;
    }
    void choose(const Mittel& m) {
        dose = m.dose;
        cost = m.dose == 0 ? 0 : m.cost;
        setDays(m.days);
    }
    static QString amount(int cents) {
        return QStringLiteral("%1,%2").arg(cents / 100).arg(cents % 100, 2, 10, QLatin1Char('0'));
    }
    QString text() const {
        return QStringList{Datum_als_Anzeige(date), QString::number(days), Datum_als_Anzeige(until), amount(dose),
                           amount(cost)}
            .join(u'|');
    }
};

TEST_F(BehandlungTest, zufälligeArbeitGegenDasModell) {
    const Modell::Mittel medicines[] = {{"A", 200, 500, 7}, {"B", 50, 1234, 0}, {"C", 0, 900, 28}, {"D", 1000, 1, 999}};
    for (const auto& m : medicines) medikament(m.name, m.dose / 100.0, "ml", m.days, m.cost / 100.0, m.name);
    std::mt19937 random(20260715);
    const auto pick = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    neu({1}, [&](Treatment& form) {
        Modell model;
        model.date = QDate(2026, 7, 15);
        QString last;
        for (int i = 0; i < 3000; ++i) {
            const QDate day = pick(6) == 0 ? QDate() : QDate(2026, 1, 20).addDays(pick(90));
            const QString typed = day.isValid() ? day.toString("dMMyy").rightJustified(6, u'0') : "99.99.";
            const int n = pick(4) == 0 ? 0 : pick(120), m = pick(4);
            switch (const int what = pick(6)) {
                case 0:
                    eingeben(form.tdat, typed), model.setDate(day), last = "tdat " + typed;
                    break;
                case 1:
                    eingeben(form.tdat1, typed), model.setUntil(day), last = "tdat1 " + typed;
                    break;
                case 2:
                    eingeben(form.tz[Tage], QString::number(n)), model.setDays(n), last = "Tage";
                    break;
                case 3:
                    eingeben(form.tz[Menge], Modell::amount(n)), model.setDose(n), last = "Menge";
                    break;
                default:
                    eingeben(form.kom[what == 4 ? Medikament : Art], ""), last = "Mittel";
                    eingeben(form.kom[what == 4 ? Medikament : Art], medicines[m].name), model.choose(medicines[m]);
            }
            if (model.cost > 100000) eingeben(form.tz[Kosten], "5"), model.cost = 500;
            const QString shown = QStringList{form.tdat.text(), form.tz[Tage].text(), form.tdat1.text(),
                                              form.tz[Menge].text(), form.tz[Kosten].text()}
                                      .join(u'|');
            ASSERT_EQ(shown, model.text()) << "step " << i << ": " << last.toStdString();
        }
    });
}

TEST_F(BehandlungTest, verletzteRegelnSchreibenNichts) {
    const QString date = "...das Datum muß eingegeben werden!";
    const QString kind = "...die Behandlungsart eingetragen werden muß!";
    const QString dose = "...wenn ein Medikament eingetragen ist, muß auch die Menge eingetragen werden.";
    const struct {
        const char *date, *kind, *medicine, *dose;
        QStringList lines;
    } cases[] = {{"", " ", "X", "0,00", {date, kind, dose}},
                 {"31.02.2026", "a", "", "0", {date}},
                 {"1.1.2026", "", "", "0", {kind}},
                 {"1.1.2026", "a", "X", "", {dose}}};
    neu({1}, [&](Treatment& form) {
        for (const auto& c : cases) {
            form.tdat.setText(c.date);
            form.kom[Art].setText(c.kind);
            form.kom[Medikament].setText(c.medicine);
            form.tz[Menge].setText(c.dose);
            texte();
            form.ok[0].click();
            EXPECT_EQ(texte(), QStringList("! Die Eingabe kann nicht übernommen werden, weil...\r\n\r\n" +
                                           c.lines.join("\r\n")));
            EXPECT_FALSE(form.closed());
        }
        form.kom[Medikament].setText({});
        form.ok[0].click();  // the same without the medicine passes
    });
    EXPECT_EQ(zeige("select Datum, Behandlungsart, Menge, Wartezeit_Datum from Behandlung"), "01.01.2026 a 0 -");
    sql("delete from Behandlung");
    rahmen(Behandlung, {1}, [&](PE_Bewegungsdaten&) {
        koben.Buchungsmodus = "Ändern";
        screens.workIn<Treatment>([&](Treatment& form) {
            EXPECT_FALSE(form.ok[0].enabled());
            texte();
            form.ok[0].click();
            EXPECT_EQ(texte(), QStringList("! Änderungen sind nur möglich, wenn ein Datensatz ausgewählt wurde!"));
        });
        koben.open("PE_Bewegungsdaten_Behandlung");
    });
}

void enterAll(Treatment& form) {
    eingeben(form.tdat, "10.07.2026");
    eingeben(form.kom[Art], "Husten");
    eingeben(form.kom[Medikament], "O'Mittel");
    eingeben(form.tz[Menge], "2,5");
    form.kom[Einheit].choose(2);
    eingeben(form.kom[Weg], "Spritze");
    eingeben(form.tz[Tage], "10");
    eingeben(form.kom[Tierarzt], "Dr. Ä");
    eingeben(form.t, "B-17");
    eingeben(form.tz[Kosten], "1234567,89");
    eingeben(form.kom[Kommentar], "k");
    eingeben(form.kom[Bemerkung], "neu");
}

const QString Medikamentfrage =
    "? Das Medikament O'Mittel ist noch nicht in der Medikamentenliste eingetragen. Soll dieses auch in die "
    "Medikamentenliste aufgenommen werden? => ";

TEST_F(BehandlungTest, zweihundertTiereMitNeuemMedikamentSindEineBuchung) {
    for (int i = 3; i <= 200; ++i) tier("T" + QString::number(1000 + i));
    std::vector<int> all(200);
    for (int i = 0; i < 200; ++i) all[static_cast<size_t>(i)] = i + 1;
    int writes = 0, failAt = 0;
    Workspace::setFaultHook([&](const QString&) {
        if (++writes == failAt) throw DatabaseError(DatabaseError::Kind::Io, "Platte voll");
    });
    neu(all, [&](Treatment& form) {
        enterAll(form);
        texte();
        for (failAt = 150; failAt <= 202; failAt += 52) {  // a treatment; the medicine's row behind all of them
            writes = 0;
            screens.answers = {true, true};
            EXPECT_THROW(form.ok[0].click(), DatabaseError);
            EXPECT_EQ(behandlungen() + medikamente() + zeige("select * from Stammdaten_Bemerkung"), "");
        }
        failAt = 0;
        texte();
        screens.answers = {true, true};
        form.ok[0].click();
        EXPECT_EQ(texte(),
                  QStringList({"? Es sind mehere Schweine ausgewählt. Soll die Buchung bei allen 200 Schweinen "
                               "vorgenommen werden? => ja",
                               Medikamentfrage + "ja"}));
    });
    EXPECT_EQ(zeige("select count(*), count(ID), min(Kennung), max(Kennung), max(Wartezeit_Datum) from Behandlung"),
              "200 200 1 200 20.07.2026");
    EXPECT_EQ(
        zeige("select top 1 Datum, Behandlungsart, Medikament, Menge, Einheit, Verabreichungsart, Wartezeit_Tage, "
              "Wartezeit_Datum, Tierarzt, Beleg_Nr, Kosten, Kommentar, Bemerkung from Behandlung"),
        "10.07.2026 Husten O`Mittel 2,5 ml Spritze 10 20.07.2026 Dr. Ä B-17 1234567,89 k neu");
    EXPECT_EQ(medikamente(), "O`Mittel 2,5 ml 10 1234567,89 Husten Spritze 1");
    EXPECT_EQ(zeige("select * from Stammdaten_Bemerkung"), "neu");
}

TEST_F(BehandlungTest, medikamentNurNachRückfrageUndNurWennEsFehlt) {
    neu({1}, [&](Treatment& form) {
        enterAll(form);
        screens.answers = {false};
        form.ok[2].click();
        EXPECT_FALSE(form.closed());
        EXPECT_EQ(inputs(form) + form.kom[Medikament].text() + form.t.text(), "0,00|||0,00|0|");
        EXPECT_EQ(form.tdat.text(), "10.07.2026") << "kept for the next one";
        EXPECT_EQ(form.kom[Medikament].items() + form.kom[Tierarzt].items() + form.kom[Art].items() +
                      form.kom[Bemerkung].items() + form.kom[Weg].items(),
                  QStringList({"O'Mittel", "Dr. Ä", "Husten", "neu"}));
        EXPECT_EQ(medikamente(), "");
        medikament("o`mittel", 1, "", 3, 1);
        enterAll(form);
        form.ok[0].click();
    });
    EXPECT_EQ(texte(), QStringList(Medikamentfrage + "nein"));
    EXPECT_EQ(zeige("select count(*) from Medikamente"), "1");
    EXPECT_EQ(zeige("select Wartezeit_Tage, Wartezeit_Datum from Behandlung"), "10 20.07.2026 | 10 20.07.2026")
        << "typed again after the proposal";
}

TEST_F(BehandlungTest, ändernLässtDieSperreStehen) {
    medikament("Husten", 1, "", 1, 1, "Nur im Bestand");
    // of elsewhere: the date alone, other days than the date says, a unit that is none of the entries
    sql("insert into Behandlung (Kennung, Datum, Behandlungsart, Einheit, Wartezeit_Datum) values (1, #07/01/2026#, "
        "'a', 'ml', #08/01/2026#)");
    sql("insert into Behandlung (Kennung, Datum, Behandlungsart, Einheit, Wartezeit_Datum, Wartezeit_Tage) values (1, "
        "#07/02/2026#, 'b', 'dl', #08/01/2026#, 3)");
    sql("insert into Behandlung (Kennung, Datum, Behandlungsart, Wartezeit_Tage) values (1, #07/03/2026#, 'a', 0)");
    ändern<Treatment>(Behandlung, 1, 1, [&](Treatment& form) {
        EXPECT_EQ(form.kom[Art].items(), QStringList({"a", "b", "Nur im Bestand"}));
        for (const char* expected : {"0,00|ml||0,00|31|01.08.2026", "0,00|||0,00|30|01.08.2026", "0,00|||0,00|0|"}) {
            form.tdat.enter();
            form.tdat.leave();
            EXPECT_EQ(inputs(form), expected);
            form.ok[2].click();
        }
        EXPECT_EQ(form.tdat.text(), "01.07.2026") << "around to the first";
    });
    EXPECT_EQ(zeige("select Wartezeit_Tage, Wartezeit_Datum from Behandlung order by ID"),
              "31 01.08.2026 | 30 01.08.2026 | 0 -");
}

}  // namespace
}  // namespace koben

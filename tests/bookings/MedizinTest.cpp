// The pair over the medicines: rules, storing, the next one.
#include "bookings/PV_Medizin.h"
#include "bookings/PV_Medizin_Eingabe.h"
#include "tests/bookings/Buchungshof.h"

namespace koben {
namespace {

using Liste = PV_Medizin;
using Eingabe = PV_Medizin_Eingabe;

struct MedizinTest : testing::Test, Buchungshof {
    MedizinTest() {
        catalogue.add<Liste>("PV_Medizin");
        catalogue.add<Eingabe>("PV_Medizin_Eingabe");
        for (const char* row : {"'Salbe', 1, 'g', 0, 2.5, 'Wunde', 'außen'",
                                "'Penicillin', 2, 'ml', 7, 5, 'Husten', ''", "'Zink', 0.5, 'dl', 1, 0, '', ''"})
            sql("insert into Medikamente (Medikament, Menge, Einheit, Wartezeit_Tage, Kosten_je_Gabe, Behandlungsart, "
                "Verabreichungsart) values (%1)",
                row);
    }
    void list(std::function<void(Liste&)> script) { in<Liste>("PV_Medizin", std::move(script)); }
    void entry(Button& button, std::function<void(Eingabe&)> script) {
        screens.workIn<Eingabe>(std::move(script));
        button.click();
    }
    QString rows() {
        return show(
            "select Medikament, Menge, Einheit, Wartezeit_Tage, Kosten_je_Gabe, Behandlungsart, Verabreichungsart from "
            "Medikamente order by ID");
    }
};

const QString Salbe = "Salbe 1 g 0 2,5 Wunde außen", Penicillin = " | Penicillin 2 ml 7 5 Husten ",
              Zink = " | Zink 0,5 dl 1 0  ";

TEST_F(MedizinTest, regeln) {
    const QString twice = "...das Medikament bereits existiert.", name = "...das Medikament eingegeben werden muß.";
    const QString dose = "...die Menge je Verabreichung eingegen werden muß.";
    const std::pair<const char*, QStringList> cases[] = {{"t= ; tz(0)=", {name, dose}},
                                                         {"t= SALBE ; tz(0)=1", {twice}},
                                                         {"t=Salbe; tz(0)=x", {twice, dose}},
                                                         {"t=Neu; tz(0)=0,004", {dose}}};  // shown as 0,00
    list([&](Liste& form) {
        entry(form.neu, [&](Eingabe& input) {
            for (const auto& [steps, lines] : cases) {
                play(input, "%1; ok(0)", steps);
                EXPECT_TRUE(says({refusal(lines)}));
                EXPECT_FALSE(input.closed());
            }
        });
        form.li.choose(2);
        entry(form.ändern, [&](Eingabe& input) {
            EXPECT_EQ(textsOf(input, "t tz(0) kom(0) tz(1) tz(2) kom(1) kom(2)"), "Salbe|1,00|g|0|2,50|Wunde|außen");
            play(input, "t=zink; tz(0)=1; ok(0)");
            EXPECT_TRUE(says({refusal({twice})}));
            play(input, "t=SALBE; tz(0)=2; ok(0)");  // its own name
            EXPECT_TRUE(input.closed());
        });
    });
    EXPECT_EQ(rows(), "SALBE 2 g 0 2,5 Wunde außen" + Penicillin + Zink);
}

}  // namespace
}  // namespace koben

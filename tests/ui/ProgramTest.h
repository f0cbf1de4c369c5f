#pragma once
// The whole program on a small herd, for walks over its windows.
#include <QTemporaryDir>

#include "app/Katalog.h"
#include "bookings/PE_Bewegungsdaten.h"
#include "herd/PA_Koben.h"
#include "order/PO_Bestellschein.h"
#include "plans/PB_Arbeitsplan.h"
#include "tests/ui/Support.h"
#include "tools/herdengenerator/Output.h"
#include "ui/Layout.h"

namespace koben::ui {

struct ProgramTest : testing::Test {
    QTemporaryDir data;
    TestScreens screens;
    TestPlatform platform;
    Koben koben{screens, platform, katalog()};
    ProgramTest() {
        platform.folder = data.path() + u'/';
        Vorgaben herd;
        herd.sauen = 12;
        herd.ende = QDate(2026, 7, 15);
        writeDatabase(makeHerde(herd), data.filePath("koben2.mdb"));
    }
    /// Opens from each form what it opens, from the main form all that stand for themselves.
    void goOn(Form& form) {
        if (auto* herd = dynamic_cast<PA_Koben*>(&form)) {
            herd->comdrucken.click();
            koben.Buchungsmodus = "Neu";
            const QStringList handedOn{"PA_Koben", "PA_Zwischenliste", "PA_Textausgabe", "PA_Erklärung"};
            for (QString name : laidOutForms())  // an entry screen opens from its list
                if (!handedOn.contains(name) && !name.startsWith(u"PE_Bewegungsdaten_"))
                    koben.open(name.remove("_Eingabe"));
        } else if (dynamic_cast<PE_Bewegungsdaten*>(&form)) {
            for (const auto& kind : Buchungsarten) {
                koben.Buchungsmodus = "Neu";
                koben.open(QString::fromUtf8(kind.screen));
            }
        } else if (auto* entry = dynamic_cast<Button*>(form.find(u"neu"))) {
            entry->click();
        } else if (auto* order = dynamic_cast<PO_Bestellschein*>(&form)) {
            for (const int field : {Kunde::Betrieb, Kunde::Strasse, Kunde::Plz, Kunde::Ort})
                order->t[field].type(QStringLiteral("12345"));
            order->UpDown.up();
            order->ok.click();
        } else if (auto* plan = dynamic_cast<PB_Arbeitsplan*>(&form)) {
            plan->woche[3].click();
            plan->ok[0].click();
        }
    }
    void runProgram(const std::function<void(Form&)>& hand) {
        screens.hand = hand;
        const auto main = katalog().make(QStringLiteral("PA_Koben"), koben);
        koben.run(*main);
    }
};

}  // namespace koben::ui

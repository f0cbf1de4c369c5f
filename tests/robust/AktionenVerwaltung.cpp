// The farm's losses and trade, the herd, master data, settings, and the files that the work plan writes.
#include "bookings/PB_Verkauf_Ferkel.h"
#include "bookings/PB_Verkauf_Ferkel_Eingabe.h"
#include "bookings/PB_Verkauf_Schweine.h"
#include "bookings/PB_Verluste_Ferkel.h"
#include "bookings/PB_Verluste_Ferkel_Eingabe.h"
#include "bookings/PV_Medizin.h"
#include "bookings/PV_Medizin_Eingabe.h"
#include "cycle/PO_Einstellungen.h"
#include "cycle/PV_Stichworte.h"
#include "herd/PB_Neues_Schwein.h"
#include "herd/PB_Selektieren.h"
#include "output/PA_Zwischenliste.h"
#include "plans/PB_Arbeitsplan.h"
#include "plans/PV_Arbeitsplandaten.h"
#include "plans/PV_Arbeitsplandaten_Eingabe.h"
#include "plans/PV_Termine.h"
#include "plans/PV_Termine_Eingabe.h"
#include "tests/robust/Aktionen.h"

namespace koben::robust {

namespace {

using Lauf = std::function<void(Sitzung&)>;

/// Works a form of the menu.
template <class F>
Lauf in(const char* entry, const std::function<void(F&)>& vorbereiten, const std::function<void(F&)>& tat,
        const std::deque<bool>& answers = {}, const std::deque<QString>& inputs = {}) {
    return [=](Sitzung& s) {
        s.formular<F>(entry, [&](F& form) {
            if (vorbereiten) vorbereiten(form);
            s.screens.answers = answers;
            s.screens.inputs = inputs;
            s.aktion([&] { tat(form); });
        });
    };
}

/// A list and its entry screen: opens that by `button` and saves what is filled in.
template <class L, class F>
Lauf mitEingabe(const char* entry, Button L::*button, const std::function<void(F&)>& fill) {
    return [=](Sitzung& s) {
        s.formular<L>(entry, [&](L& list) {
            s.screens.workIn<F>([&](F& form) {
                fill(form);
                s.aktion([&] { form.ok[0].click(); });
            });
            list.li.choose(1);
            (list.*button).click();
        });
    };
}

void verlieren(PB_Verluste_Ferkel_Eingabe& form) {
    form.gridli.mark({1, 3});
    form.gridli.click();
    form.optiverkauf[Abgang].click();
    eingeben(form.tz[1], QStringLiteral("20"));
    eingeben(form.kom[1], QStringLiteral("1"));
}

void einkaufen(PB_Verkauf_Ferkel_Eingabe& form) {
    eingeben(form.tz[0], QStringLiteral("20"));
    eingeben(form.kom[0], Neues);
    eingeben(form.kom[3], QStringLiteral("FB"));
}

std::function<void(PB_Verkauf_Ferkel_Eingabe&)> verkaufen(int what) {
    return [what](PB_Verkauf_Ferkel_Eingabe& form) {
        eingeben(form.tz[1], QStringLiteral("3"));
        form.optiverkauf[what].click();
        eingeben(form.kom[0], Neues);
    };
}

void abgeben(PB_Verkauf_Schweine& form) {
    for (int row : {0, 1, 2, 10, 20}) form.li.setMarked(row, true);
    eingeben(form.tdat, QStringLiteral("14.07.2026"));
    eingeben(form.kom[0], Neues);
    eingeben(form.kom[1], QStringLiteral("neuer Abnehmer"));
}

/// The first animal of the list becomes another number, or a new one comes.
Lauf tier(const char* entry) {
    return in<PB_Neues_Schwein>(
        entry,
        [](PB_Neues_Schwein& form) {
            eingeben(form.t[0], QStringLiteral("777"));
            eingeben(form.kom[1], Neues);
            eingeben(form.kom[2], QStringLiteral("Z1"));
            eingeben(form.kom[3], Neues);
        },
        [](PB_Neues_Schwein& form) { form.ok.click(); });
}

/// The list of the work plan, and what is made of it there.
Lauf plan(const std::function<void(PA_Zwischenliste&)>& tat) {
    return [tat](Sitzung& s) {
        s.formular<PB_Arbeitsplan>("A_awarbeitspläne", [&](PB_Arbeitsplan& form) {
            form.woche[3].click();
            if (!tat) return s.aktion([&] { form.ok[0].click(); });
            s.screens.workIn<PA_Zwischenliste>([&](PA_Zwischenliste& list) { s.aktion([&] { tat(list); }); });
            form.ok[0].click();
        });
    };
}

std::vector<Aktion> handel() {
    using Verluste = PB_Verluste_Ferkel;
    using Handel = PB_Verkauf_Ferkel;
    using Handelseingabe = PB_Verkauf_Ferkel_Eingabe;
    const char* const verluste = "XB_VerlusteFerkel";
    const char* const trade = "XB_ferkeleinverkauf";
    const char* const einVerlust = "insert into Verluste (Datum, Anzahl_Ferkel, Kennung) values (#06/20/2026#, 2, 1)";
    const char* const einVerkauf =
        "insert into Ferkelverkauf (Datum, Anzahl_Verkauf, Kennung) values (#06/20/2026#, 2, 1)";
    const auto loeschen = in<Verluste>(verluste, {}, [](Verluste& list) { list.löschen.click(); });
    const auto kopieren =
        in<Handel>(trade, {}, [](Handel& list) { list.kopieren.click(); }, {}, {QStringLiteral("01.07.2026")});
    return {{"betriebsverlust", vorlage,
             mitEingabe<Verluste, PB_Verluste_Ferkel_Eingabe>(verluste, &Verluste::neu, verlieren), Ton},
            {"betriebsverlustLoeschen", vorlage, loeschen, "", einVerlust},
            {"ferkeleinkauf", vorlage, mitEingabe<Handel, Handelseingabe>(trade, &Handel::neu, einkaufen), Ton},
            {"betriebsverkaufMitAbgang", vorlage,
             mitEingabe<Handel, Handelseingabe>(trade, &Handel::neu, verkaufen(Abgang)), Ton},
            {"betriebsverkaufAendern", vorlage,
             mitEingabe<Handel, Handelseingabe>(trade, &Handel::ändern, verkaufen(Loeschen)), Ton, einVerkauf},
            {"betriebsverkaufKopieren", vorlage, kopieren, "", einVerkauf},
            {"schweineVerkaufen", vorlage,
             in<PB_Verkauf_Schweine>("XB_verkaufschweine", abgeben, [](auto& form) { form.neu.click(); }, {true}),
             "! ACHTUNG!!!",
             "insert into Behandlung (Datum, Wartezeit_Datum, Kennung) values (#07/10/2026#, #07/30/2026#, 2)"}};
}

std::vector<Aktion> herde() {
    using Selektieren = PB_Selektieren;
    const auto alle = in<Selektieren>(
        "XB_schweineselektieren", [](Selektieren& form) { form.kon.setChecked(true); },
        [](Selektieren& form) { form.entselekt[1].click(); });
    const auto standard = in<PB_Neues_Schwein>("XB_neueschweine", {}, [](auto& form) { form.standard.click(); });
    return {{"tierNeu", vorlage, tier("XB_neueschweine"), Ton},
            {"tierAendern", vorlage, tier("XB_schweinändern"), Ton,
             "insert into Verluste (Datum, Muttersau) values (#06/20/2026#, '1');"
             "insert into Ferkelverkauf (Datum, Muttersau) values (#06/20/2026#, '1')"},
            {"selektierenNachRegel", vorlage, alle, "", "update Sauen set Selektiert = 'X' where Art = 'Eber'", true},
            {"standardwerte", vorlage, standard, "! Die Standardwerte wurden gesichert", "", true, false}};
}

std::vector<Aktion> stammdaten() {
    using Medizin = PV_Medizin;
    using Plan = PV_Arbeitsplandaten;
    using Termine = PV_Termine;
    using Stichworte = PV_Stichworte;
    const char* const plaene = "V_Arbeitspläne";
    const auto medizin =
        mitEingabe<Medizin, PV_Medizin_Eingabe>("V_Medizinundwartezeiten", &Medizin::neu, [](PV_Medizin_Eingabe& form) {
            eingeben(form.t, QStringLiteral("Neumittel"));
            eingeben(form.tz[0], QStringLiteral("2"));
        });
    const auto arbeit = mitEingabe<Plan, PV_Arbeitsplandaten_Eingabe>(
        plaene, &Plan::ändern, [](PV_Arbeitsplandaten_Eingabe& form) { eingeben(form.t, Neues); });
    const auto termin =
        mitEingabe<Termine, PV_Termine_Eingabe>("V_Terminverwaltung", &Termine::neu, [](PV_Termine_Eingabe& form) {
            eingeben(form.t, QStringLiteral("Stallputz"));
            eingeben(form.tdat, QStringLiteral("01.08.2026"));
        });
    const auto loeschen = in<Plan>(
        plaene, [](Plan& list) { list.li.choose(1); }, [](Plan& list) { list.löschen.click(); });
    const auto stichwort =
        in<Stichworte>("V_Stichwortverwaltung", {}, [](Stichworte& form) { form.li.editByUser(1, 1, Neues); });
    const auto einstellungen = in<PO_Einstellungen>(
        "O_Einstellungen", [](PO_Einstellungen& form) { eingeben(form.tzahl[2], QStringLiteral("115")); },
        [](PO_Einstellungen& form) { form.ok.click(); });
    return {{"medizin", vorlage, medizin, Ton},
            {"arbeitsplandatenAendern", vorlage, arbeit, Ton},
            {"arbeitsplandatenLoeschen", vorlage, loeschen},
            {"termin", vorlage, termin, Ton},
            {"stichwortAendern", vorlage, stichwort},
            {"einstellungen", vorlage, einstellungen, "", "", true, false}};
}

std::vector<Aktion> ausgaben() {
    const auto text = plan([](PA_Zwischenliste& list) { list.comtext.click(); });
    const auto tabelle = plan([](PA_Zwischenliste& list) { list.comexcel.click(); });
    const auto bericht = plan([](PA_Zwischenliste& list) { list.roexplorer[0].click(); });
    const char* const faellig =
        "insert into Sauen (Art, Nummer) select 'Sau', a.Nummer & '/' & b.ID from Sauen a, Sauen b where b.ID < 4;"
        "update Sauen set L_Ferkelung = #06/20/2026#";
    return {{"arbeitsplan", vorlage, plan({}), Liste, faellig, true, false},
            {"arbeitsplanAlsText", vorlage, text, "+ PA_Textausgabe", faellig, true, false},
            {"arbeitsplanAlsTabelle", vorlage, tabelle, "", faellig, true, false},
            {"arbeitsplanAlsBericht", vorlage, bericht, "", faellig, true, false}};
}

}  // namespace

std::vector<Aktion> verwaltung() {
    std::vector<Aktion> table;
    for (const auto& part : {handel(), herde(), stammdaten(), ausgaben()})
        table.insert(table.end(), part.begin(), part.end());
    return table;
}

}  // namespace koben::robust

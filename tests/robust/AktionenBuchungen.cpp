// Bookings of animals: each kind new, and a booking changed, deleted and copied in the frame.
#include "bookings/PE_Bewegungsdaten_Absetzung.h"
#include "bookings/PE_Bewegungsdaten_Behandlung.h"
#include "bookings/PE_Bewegungsdaten_Belegung.h"
#include "bookings/PE_Bewegungsdaten_Ferkelung.h"
#include "bookings/PE_Bewegungsdaten_Ferkelverkauf.h"
#include "bookings/PE_Bewegungsdaten_Traechtigkeit.h"
#include "bookings/PE_Bewegungsdaten_Verluste.h"
#include "bookings/PE_Bewegungsdaten_Verschiebung.h"
#include "tests/robust/Aktionen.h"

namespace koben::robust {

namespace {

/// A new booking for the marked rows: fills the entry screen in and saves.
template <class F>
std::function<void(Sitzung&)> neu(const char* entry, int animals, const std::function<void(F&)>& fill,
                                  const std::deque<bool>& answers = {}) {
    return [=](Sitzung& s) {
        s.neu<F>(entry, rows(animals), [&](F& form) {
            fill(form);
            s.screens.answers = answers;
            s.aktion([&] { form.ok[0].click(); });
        });
    };
}

/// Works the frame of farrowings for the first sow.
std::function<void(Sitzung&)> imRahmen(const std::function<void(Sitzung&, PE_Bewegungsdaten&)>& tat) {
    return [tat](Sitzung& s) {
        s.rahmen("XE_ferkelung", {1}, [&](PE_Bewegungsdaten& frame) { s.aktion([&] { tat(s, frame); }); });
    };
}

void aendern(Sitzung& s) {
    s.rahmen("XE_ferkelung", {1}, [&](PE_Bewegungsdaten& frame) {
        s.screens.workIn<PE_Bewegungsdaten_Ferkelung>([&](PE_Bewegungsdaten_Ferkelung& form) {
            eingeben(form.tdat, QStringLiteral("01.12.2025"));
            s.aktion([&] { form.ok[0].click(); });
        });
        frame.ändern.click();
    });
}

void belegen(PE_Bewegungsdaten_Belegung& form) {
    eingeben(form.kom[0], QStringLiteral("E7"));
    eingeben(form.kom[4], Neues);
}

void abferkeln(PE_Bewegungsdaten_Ferkelung& form) {
    eingeben(form.tdat, QStringLiteral("01.03.2026"));
    eingeben(form.tz[0], QStringLiteral("12"));
    eingeben(form.kom[1], Neues);
}

void absetzen(PE_Bewegungsdaten_Absetzung& form) {
    eingeben(form.tz[0], QStringLiteral("8"));
    eingeben(form.kom[1], Neues);
    eingeben(form.kom[2], QStringLiteral("B1"));
}

void kontrollieren(PE_Bewegungsdaten_Trächtigkeit& form) {
    form.kom[0].choose(0);
    eingeben(form.kom[2], Neues);
}

void verschieben(PE_Bewegungsdaten_Verschiebung& form) {
    eingeben(form.tz, QStringLiteral("3"));
    eingeben(form.kom[0], QStringLiteral("2"));
    eingeben(form.kom[2], Neues);
}

std::function<void(PE_Bewegungsdaten_Verluste&)> verlieren(int what) {
    return [what](PE_Bewegungsdaten_Verluste& form) {
        form.gridli.mark({1, 3});
        form.gridli.click();
        form.optiverkauf[what].click();
        eingeben(form.kom[2], Neues);
    };
}

std::function<void(PE_Bewegungsdaten_Ferkelverkauf&)> verkaufen(int what) {
    return [what](PE_Bewegungsdaten_Ferkelverkauf& form) {
        eingeben(form.tz[0], QStringLiteral("3"));
        eingeben(form.tz[1], QStringLiteral("12,50"));
        form.optiverkauf[what].click();
        eingeben(form.kom[0], Neues);
    };
}

void behandeln(PE_Bewegungsdaten_Behandlung& form) {
    eingeben(form.kom[6], QStringLiteral("Impfung"));
    eingeben(form.kom[0], QStringLiteral("Neumittel"));
    eingeben(form.tz[0], QStringLiteral("2"));
    eingeben(form.tz[1], QStringLiteral("10"));
    eingeben(form.kom[5], Neues);
}

}  // namespace

std::vector<Aktion> buchungen() {
    using Belegung = PE_Bewegungsdaten_Belegung;
    using Ferkelung = PE_Bewegungsdaten_Ferkelung;
    using Absetzung = PE_Bewegungsdaten_Absetzung;
    using Kontrolle = PE_Bewegungsdaten_Trächtigkeit;
    using Verschiebung = PE_Bewegungsdaten_Verschiebung;
    using Verluste = PE_Bewegungsdaten_Verluste;
    using Verkauf = PE_Bewegungsdaten_Ferkelverkauf;
    using Behandlung = PE_Bewegungsdaten_Behandlung;
    const auto schliessen = imRahmen([](Sitzung&, PE_Bewegungsdaten& frame) { frame.cmdschließen.click(); });
    const auto loeschen = imRahmen([](Sitzung&, PE_Bewegungsdaten& frame) {
        frame.li.choose(1);
        frame.löschen.click();
    });
    const auto kopieren = imRahmen([](Sitzung& s, PE_Bewegungsdaten& frame) {
        s.screens.inputs = {QStringLiteral("01.03.2026")};
        frame.kopieren.click();
    });
    std::vector<Aktion> table = {
        {"belegung", vorlage, neu<Belegung>("XE_belegung", 1, belegen), Ton},
        {"belegungVonVierzig", vorlage, neu<Belegung>("XE_belegung", 40, belegen, {true}), Ton},
        {"traechtigkeit", vorlage, neu<Kontrolle>("XE_trächtigkeit", 1, kontrollieren), Ton},
        {"ferkelung", vorlage, neu<Ferkelung>("XE_ferkelung", 1, abferkeln), Ton},
        {"absetzungMitEinbuchen", vorlage, neu<Absetzung>("XE_absetzung", 2, absetzen, {true, true, true}), Ton},
        {"buchungAendern", vorlage, aendern, Ton},
        {"buchungLoeschen", vorlage, loeschen},
        {"buchungKopieren", vorlage, kopieren, "! Die markierte Buchung wurde auf das Datum"}};
    for (Aktion& cycle : table) cycle.leitetAb = true;
    table.insert(
        table.end(),
        {{"rahmenSchliessen", vorlage, schliessen, "", "update Belegung set Datum = #07/01/2026#"},
         {"verschiebung", vorlage, neu<Verschiebung>("XE_Verschiebung", 1, verschieben), Ton},
         {"verlustMitLoeschen", vorlage, neu<Verluste>("XE_verluste", 1, verlieren(Loeschen)), Ton},
         {"verlustVonDreienMitAbgang", vorlage, neu<Verluste>("XE_verluste", 3, verlieren(Abgang), {true}), Ton},
         {"ferkelverkaufMitLoeschen", vorlage, neu<Verkauf>("XE_Ferkelverkauf", 1, verkaufen(Loeschen)), Ton},
         {"ferkelverkaufMitAbgang", vorlage, neu<Verkauf>("XE_Ferkelverkauf", 1, verkaufen(Abgang)), Ton},
         {"behandlung", vorlage, neu<Behandlung>("XE_behandlung", 1, behandeln, {true}), Ton},
         {"behandlungVonVierzig", vorlage, neu<Behandlung>("XE_behandlung", 40, behandeln, {true, true}), Ton}});
    return table;
}

}  // namespace koben::robust

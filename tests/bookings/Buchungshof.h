#pragma once
// A farm with a herd list to book from, and the booking frame with its entry screens.
#include "bookings/PE_Bewegungsdaten_Absetzung.h"
#include "bookings/PE_Bewegungsdaten_Belegung.h"
#include "bookings/PE_Bewegungsdaten_Ferkelung.h"
#include "bookings/PE_Bewegungsdaten_Traechtigkeit.h"
#include "bookings/PE_Bewegungsdaten_Verschiebung.h"
#include "tests/support/Hof.h"

namespace koben {

enum Buchung { Belegung, Trächtigkeit, Ferkelung, Absetzung, Verschiebung, Verluste, Ferkelverkauf, Behandlung };

/// Stands where the main form stands: the animals in stock, by number.
class Herdenliste final : public Form, public HerdList {
public:
    explicit Herdenliste(Koben& koben_) : Form(koben_, "PA_Koben", "KOBEN") { koben.herdList = this; }
    Grid datali{*this, "datali", true};
    Grid& herd() override { return datali; }
    void datenschweinelesen() override {
        datali.clear();
        datali.bind(koben.connect().table("select * from Sauen where Abgangsdatum IS NULL order by Nummer"));
    }
};

class Buchungshof : public Hof {
public:
    Buchungshof() {
        catalogue.add<PE_Bewegungsdaten>("PE_Bewegungsdaten");
        catalogue.add<PE_Bewegungsdaten_Belegung>("PE_Bewegungsdaten_Belegung");
        catalogue.add<PE_Bewegungsdaten_Trächtigkeit>("PE_Bewegungsdaten_Trächtigkeit");
        catalogue.add<PE_Bewegungsdaten_Ferkelung>("PE_Bewegungsdaten_Ferkelung");
        catalogue.add<PE_Bewegungsdaten_Absetzung>("PE_Bewegungsdaten_Absetzung");
        catalogue.add<PE_Bewegungsdaten_Verschiebung>("PE_Bewegungsdaten_Verschiebung");
        koben.Hauptdatenbank = db;
        koben.Konfig_Zahl[Zahl::TonAus] = 1;
    }

    void ferkelung(int animal, const char* day, int alive) {
        sql("insert into Ferkelung (Kennung, Datum, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot) values (%1, #%2#, %3, "
            "%3, 0)",
            animal, day, alive);
    }
    /// Adds a row with a count of piglets; day as mm/dd/yyyy.
    void ferkel(const char* table, int animal, const char* day, int count) {
        sql("insert into %1 (Kennung, Datum, Anzahl_Ferkel) values (%2, #%3#, %4)", table, animal, day, count);
    }

    /// Opens the frame on a kind with these rows of the herd list marked, the first of them current.
    void rahmen(Buchung kind, const std::vector<int>& marks, std::function<void(PE_Bewegungsdaten&)> script) {
        koben.Buchungsart_Nr = kind;
        liste.datenschweinelesen();
        if (!marks.empty()) liste.datali.setRow(marks.front());
        liste.datali.mark(marks);
        in<PE_Bewegungsdaten>("PE_Bewegungsdaten", std::move(script));
    }
    /// The frame and in it the entry screen for a new booking.
    template <class F>
    void neu(Buchung kind, const std::vector<int>& marks, std::function<void(F&)> script) {
        rahmen(kind, marks, [&](PE_Bewegungsdaten& frame) {
            screens.workIn<F>(script);
            frame.neu.click();
        });
    }
    template <class F>
    void ändern(Buchung kind, int animal, int row, std::function<void(F&)> script) {
        rahmen(kind, {animal}, [&](PE_Bewegungsdaten& frame) {
            frame.li.choose(row);
            screens.workIn<F>(script);
            frame.ändern.click();
        });
    }

    Herdenliste liste{koben};
};

}  // namespace koben

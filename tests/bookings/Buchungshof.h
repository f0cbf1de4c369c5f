#pragma once
// A farm with its database, a herd list to book from, and the booking frame with its entry screens.
#include "bookings/PE_Bewegungsdaten_Absetzung.h"
#include "bookings/PE_Bewegungsdaten_Belegung.h"
#include "bookings/PE_Bewegungsdaten_Ferkelung.h"
#include "bookings/PE_Bewegungsdaten_Traechtigkeit.h"
#include "bookings/PE_Bewegungsdaten_Verschiebung.h"
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "tests/support/Fakes.h"

namespace koben {

enum Buchung { Belegung, Trächtigkeit, Ferkelung, Absetzung, Verschiebung, Verluste, Ferkelverkauf, Behandlung };

/// Stands where the main form stands: the animals in stock, by number.
class Herdenliste final : public Form, public HerdList {
public:
    explicit Herdenliste(Koben& koben_) : Form(koben_, "PA_Koben", "KOBEN") { koben.herdList = this; }
    Grid datali{*this, "datali", true};
    QString filter = "Abgangsdatum IS NULL";
    Grid& herd() override { return datali; }
    void datenschweinelesen() override {
        datali.clear();
        datali.bind(koben.connect().table("select * from Sauen where " + filter + " order by Nummer"));
    }
};

class Buchungshof : public TestRun {
public:
    /// A new database, or the one that another run made.
    explicit Buchungshof(const QString& existing = {}) {
        catalogue.add<PE_Bewegungsdaten>("PE_Bewegungsdaten");
        catalogue.add<PE_Bewegungsdaten_Belegung>("PE_Bewegungsdaten_Belegung");
        catalogue.add<PE_Bewegungsdaten_Trächtigkeit>("PE_Bewegungsdaten_Trächtigkeit");
        catalogue.add<PE_Bewegungsdaten_Ferkelung>("PE_Bewegungsdaten_Ferkelung");
        catalogue.add<PE_Bewegungsdaten_Absetzung>("PE_Bewegungsdaten_Absetzung");
        catalogue.add<PE_Bewegungsdaten_Verschiebung>("PE_Bewegungsdaten_Verschiebung");
        if (existing.isEmpty())
            Datenbank_anlegen(koben.workspace, koben.Datenbankpfad);
        else
            koben.Datenbankpfad = existing;
        db = koben.Hauptdatenbank = koben.connect();
        koben.Konfig_Zahl[Zahl::TonAus] = 1;
    }
    ~Buchungshof() { Workspace::setFaultHook({}); }

    void sql(const QString& text) { db.execute(text); }
    /// Adds an animal; its ID counts from 1 in the order of adding.
    void tier(const QString& number, const QString& sort = "Sau", const QString& stall = {}) {
        sql(QStringLiteral("insert into Sauen (Art, Nummer, Stallnr) values ('%1', '%2', '%3')")
                .arg(sort, number, stall));
    }
    void ferkelung(int animal, const char* day, int alive) {
        sql(QStringLiteral("insert into Ferkelung (Kennung, Datum, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot) "
                           "values (%1, #%2#, %3, %3, 0)")
                .arg(animal)
                .arg(QString::fromUtf8(day))
                .arg(alive));
    }
    /// Adds a row with a count of piglets; day as mm/dd/yyyy.
    void ferkel(const char* table, int animal, const char* day, int count) {
        sql(QStringLiteral("insert into %1 (Kennung, Datum, Anzahl_Ferkel) values (%2, #%3#, %4)")
                .arg(QString::fromUtf8(table))
                .arg(animal)
                .arg(QString::fromUtf8(day))
                .arg(count));
    }

    /// Rows of a select: cells joined by blanks, rows by " | ", Null as "-".
    QString zeige(const QString& select) const {
        const Table table = db.table(select);
        QStringList rows;
        for (int row = 0; row < table.rowCount(); ++row) {
            QStringList cells;
            for (int c = 0; c < table.columnCount(); ++c) cells += table.isNull(row, c) ? "-" : table.text(row, c);
            rows += cells.join(u' ');
        }
        return rows.join(" | ");
    }
    /// Everything that a save of these screens may touch.
    QString stand() const {
        QStringList tables;
        for (const char* table : {"Belegung", "Trächtigkeit", "Ferkelung", "Absetzung", "Verschiebung", "Verluste",
                                  "Stammdaten_Bemerkung", "Stammdaten_Stallnummer", "Sauen"})
            tables += zeige("select * from " + QString::fromUtf8(table));
        return tables.join(u'\n');
    }

    /// Opens the frame on a kind with these rows of the herd list marked, the first of them current.
    void rahmen(Buchung kind, const std::vector<int>& marks, std::function<void(PE_Bewegungsdaten&)> script) {
        koben.Buchungsart_Nr = kind;
        liste.datenschweinelesen();
        if (!marks.empty()) liste.datali.setRow(marks.front());
        liste.datali.mark(marks);
        screens.workIn<PE_Bewegungsdaten>(std::move(script));
        koben.open("PE_Bewegungsdaten");
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
            if (row > 0) frame.li.choose(row);
            screens.workIn<F>(script);
            frame.ändern.click();
        });
    }
    /// Messages and questions of the log, without the forms that opened and closed.
    QStringList texte() {
        QStringList texts;
        for (const QString& line : screens.takeLog())
            if (!line.startsWith("+ ") && !line.startsWith("- ")) texts += line;
        return texts;
    }

    Database db;
    Herdenliste liste{koben};
};

/// The user goes into a field, types and leaves it.
inline void eingeben(TextBox& field, const QString& text) {
    field.enter();
    field.type(text);
    field.leave();
}

}  // namespace koben

#pragma once
// An order: who orders what of whom, its sums, and how it stands on paper.
#include <array>

#include "forms/Zeichnung.h"
#include "order/Preisliste.h"

namespace koben {

/// What an order says of the customer. Kept in the data folder, so that it goes with backups.
struct Kunde {
    enum Angabe { Nummer, Betrieb, Name, Strasse, Plz, Ort, Telefon, Email, Angaben };
    std::array<QString, Angaben> angaben;

    QString& operator[](int angabe) { return angaben.at(static_cast<size_t>(angabe)); }
    const QString& operator[](int angabe) const { return angaben.at(static_cast<size_t>(angabe)); }

    /// What was kept; what a missing or short file does not say is empty.
    static Kunde read(const QString& folder);
    /// False where it could not be written; what was kept before stays.
    bool write(const QString& folder) const;
    /// Farm, name, street, place: the lines of the address that are not empty.
    QStringList anschrift() const;
};

struct Position {
    Artikel artikel;
    int menge = 0;
    Money summe() const { return {artikel.preis.tenThousandths * menge}; }
};

struct Bestellung {
    QStringList empfaenger;
    Kunde kunde;
    QString datum, bemerkung;
    std::vector<Position> positionen;
    std::optional<int> steuersatz;  ///< hundredths of a percent

    Money netto() const;
    Money steuer() const;  ///< of the sum, to the nearest cent, half up; 0 without a rate
    Money brutto() const { return {netto().tenThousandths + steuer().tenThousandths}; }
    /// Caption and amount of each line below the positions: the sum alone, or with tax and total.
    std::vector<std::pair<QString, Money>> summen() const;
};

/// "1234,50"
QString Betragstext(Money amount);

/// The order on sheets of A4, ready to be signed; ends nothing.
void Bestellung_drucken(const Bestellung& order, PrintJob& job);

}  // namespace koben

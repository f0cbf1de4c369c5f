#pragma once
// A believable herd: sows that come, are served, farrow, wean and go, over years, with the faults that real books have.
// The same figures give the same herd on every machine.
#include <QDate>
#include <QString>
#include <vector>

namespace koben {

struct Vorgaben {
    int sauen = 100;         ///< places, each always with a sow
    int jahre = 3;           ///< of bookings up to `ende`
    quint64 seed = 1;        ///< another seed is another herd
    int ferkelAnteil = 100;  ///< percent of the weaned litters whose piglets become animals of their own
    QDate ende{2026, 7, 15};
};

/// Days are Julian days; 0 is none. Amounts are cents, weights are tenths of a kilogram.
struct Tier {
    const char* art = "Sau";
    QString nummer, gruppe, stallnr, ohrmarke, taetowierung, rasse, zugangsgrund, lieferant, abgangsgrund, abnehmer,
        statusabfrage, infos;
    int geburt = 0, zugang = 0, abgang = 0, boxdatum = 0;
    int zugangsgewicht = 0, einkauf = 0, abgangsgewicht = 0, verkauf = 0;
};

/// A weaned piglet, which may have become a fattening pig.
struct Ferkel {
    int wurf = 0;  ///< position in Herde::wuerfe
    int abgang = 0;
    int boxnummer = 0;
    quint8 box = 0, imWurf = 0, grund = 0, kunde = 0;
    bool mast = false;
    quint16 abgangsgewicht = 0;
    int erloes = 0;
};

/// What every booking has: its day and the sow's position in Herde::tiere.
struct Buchung {
    int tag = 0, sau = 0;
};
struct Belegung : Buchung {
    int eber = 0;  ///< position in Herde::tiere; below 0 a boar of a station
    quint8 anzahl = 2, station = 0, kommentar = 0, bemerkung = 0;
};
struct Kontrolle : Buchung {
    bool traechtig = true;
    quint8 kommentar = 0;
};
struct Wurfbuchung : Buchung {
    qint16 nummer = 0, imJahr = 0, lebend = 0, tot = 0, verluste = 0, abgegeben = 0;  // abgegeben below 0: taken in
    int absetzung = 0;                                                                // 0: not weaned
    qint16 gewicht = 0, abgesetzt = 0, absetzgewicht = 0;
    bool absetzungFehlt = false;  ///< weaned, but nobody wrote it down
    quint8 bemerkung = 0;
};
struct Verlust : Buchung {
    quint8 anzahl = 1, grund = 0;
};
struct Verschiebung : Buchung {
    qint8 anzahl = 0;
    int zu = 0;
};
struct Behandlung : Buchung {
    quint8 mittel = 0, tierarzt = 0;
    int beleg = 0;
};
struct Verkauf : Buchung {
    quint8 anzahl = 0, kunde = 0;
    int preis = 0, gewicht = 0;  ///< of one piglet
};

struct Herde {
    Vorgaben vorgaben;
    std::vector<Tier> tiere;  ///< sows and boars, in order of arrival
    std::vector<Ferkel> ferkel;
    std::vector<Belegung> belegungen;
    std::vector<Kontrolle> kontrollen;
    std::vector<Wurfbuchung> wuerfe;
    std::vector<Verlust> verluste;
    std::vector<Verschiebung> verschiebungen;
    std::vector<Behandlung> behandlungen;
    std::vector<Verkauf> verkaeufe;

    /// A piglet as the row that it is in the herd.
    Tier alsTier(const Ferkel& ferkel) const;
};

Herde makeHerde(const Vorgaben& vorgaben);

}  // namespace koben

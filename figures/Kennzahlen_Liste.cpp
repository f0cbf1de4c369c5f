// The figures as data, in the order of every list.
#include "figures/Kennzahlen.h"

namespace koben {
namespace {

constexpr auto ByDays = "nach Produktionstagen", ByLitter = "je Wurf", ByWeek = "nach Belegdatum",
               OnDay = "am letzten Tag des Zeitraums", Weaned = "nach Absetzdatum";
constexpr auto Young = "Belegungen der letzten 46 Tage, deren Umrauschen noch aussteht";
constexpr auto Returns =
    "Anzahl der Belegungen im Zeitraum, auf die ohne Wurf dazwischen im genannten Abstand in Tagen die nächste folgt. "
    "Belegungen einer Rausche, die höchstens 3 Tage nach der ersten liegen, gelten als eine.";
constexpr auto Idle =
    "Produktionstage, an denen die Sau weder trug noch säugte, nach dem, was bis zum Ende des Zeitraums als Nächstes "
    "kam.";
constexpr auto Stock =
    "Sauen im Bestand am letzten Tag des Zeitraums nach der Zahl ihrer Würfe bis dahin. Gezählt werden alle Sauen im "
    "Bestand.";
constexpr Richtung More = Richtung::Mehr, Less = Richtung::Weniger, Neither = Richtung::Keine;

constexpr Kennzahl idle(Kz nr, const char* id, const char* name) {
    return {nr, id, name, "Tage", 0, Less, ByDays, Idle, "Summe der Tage", 1, false, nullptr};
}
constexpr Kennzahl returns(Kz nr, const char* id, const char* name) {
    return {nr, id, name, "Belegungen", 0, Less, ByWeek, Returns, "Anzahl der Belegungen", 1, false, Young};
}
constexpr Kennzahl stock(int litters, const char* id, const char* name) {
    return {static_cast<Kz>(static_cast<int>(Kz::Wuerfe0) + litters),
            id,
            name,
            "Sauen",
            0,
            Neither,
            OnDay,
            Stock,
            "Anzahl der Sauen",
            1,
            false,
            nullptr};
}

constexpr Kennzahl List[] = {
    {Kz::WuerfeSauJahr, "wuerfe_sau_jahr", "Würfe je Sau und Jahr", "Würfe", 2, More, ByDays,
     "Würfe des Zeitraums, auf eine Sau und 365 Produktionstage umgerechnet. Produktionstage zählen für jede Sau vom "
     "Tag nach ihrer ersten Belegung bis zu ihrem Abgang.",
     "Würfe x 365 / Produktionstage", 365, true, nullptr},
    {Kz::AbgesetztSauJahr, "abgesetzt_sau_jahr", "Abgesetzte Ferkel je Sau und Jahr", "Ferkel", 1, More, ByDays,
     "Ferkel aller Absetzungen des Zeitraums, auf eine Sau und 365 Produktionstage umgerechnet. Produktionstage zählen "
     "für jede Sau vom Tag nach ihrer ersten Belegung bis zu ihrem Abgang.",
     "abgesetzte Ferkel x 365 / Produktionstage", 365, true, nullptr},
    {Kz::LebendWurf, "lebend_wurf", "Lebend geborene Ferkel je Wurf", "Ferkel", 1, More, ByLitter,
     "Lebend geborene Ferkel der Würfe des Zeitraums, geteilt durch die Zahl der Würfe.",
     "lebend geborene Ferkel / Würfe", 1, true, nullptr},
    {Kz::TotProzent, "tot_prozent", "Tot geborene Ferkel", "%", 1, Less, ByLitter,
     "Anteil der tot geborenen an allen geborenen Ferkeln der Würfe des Zeitraums.",
     "100 x tot geborene / gesamt geborene Ferkel", 100, true, nullptr},
    {Kz::AbgesetztWurf, "abgesetzt_wurf", "Abgesetzte Ferkel je Wurf", "Ferkel", 1, More, Weaned,
     "Abgesetzte Ferkel der Würfe, deren letzte Absetzung im Zeitraum liegt, geteilt durch die Zahl dieser Würfe.",
     "abgesetzte Ferkel / abgesetzte Würfe", 1, true, nullptr},
    {Kz::VerlusteProzent, "verluste_prozent", "Verluste bis zum Absetzen", "%", 1, Less, Weaned,
     "Anteil der lebend geborenen Ferkel, die nicht abgesetzt wurden, über die Würfe, deren letzte Absetzung im "
     "Zeitraum liegt. Versetzte Ferkel gleichen sich über die Herde aus; ein Zugewinn ist negativ.",
     "100 x (lebend geborene - abgesetzte) / lebend geborene Ferkel", 100, true, nullptr},
    {Kz::Abferkelrate, "abferkelrate", "Abferkelrate (Belegwoche)", "%", 1, More, ByWeek,
     "Anteil der Belegungen des Zeitraums, die zu einem Wurf nach 105 bis 125 Tagen geführt haben. Eine Belegung der "
     "letzten 125 Tage ist offen und bleibt außen vor, was auch seither geschehen ist.",
     "100 x abgeferkelt / (abgeferkelt + nicht abgeferkelt)", 100, true, "offene Belegungen der letzten 125 Tage"},
    {Kz::Umrauscher, "umrauscher", "Umrauscherquote", "%", 1, Less, ByWeek,
     "Anteil der Belegungen des Zeitraums, auf die ohne Wurf dazwischen nach 4 bis 46 Tagen eine weitere der Sau "
     "folgt. "
     "Belegungen einer Rausche, die höchstens 3 Tage nach der ersten liegen, gelten als eine.",
     "100 x Belegungen mit Umrauschen / Belegungen", 100, true, Young},
    returns(Kz::Umrauscher_4_17, "umrauscher.4-17", "Umrauscherquote: 4-17"),
    returns(Kz::Umrauscher_18_24, "umrauscher.18-24", "Umrauscherquote: 18-24"),
    returns(Kz::Umrauscher_25_37, "umrauscher.25-37", "Umrauscherquote: 25-37"),
    returns(Kz::Umrauscher_38_46, "umrauscher.38-46", "Umrauscherquote: 38-46"),
    {Kz::AbsetzBelegTage, "absetz_beleg_tage", "Absetzen bis Belegung", "Tage", 1, Less, ByWeek,
     "Tage vom Absetzen eines Wurfes bis zur ersten Belegung danach, im Mittel der Belegungen des Zeitraums. Abstände "
     "über 65 Tage bleiben außen vor.",
     "Summe der Tage / Belegungen", 1, true, "Belegungen mehr als 65 Tage nach dem Absetzen"},
    {Kz::Zwischenwurfzeit, "zwischenwurfzeit", "Zwischenwurfzeit", "Tage", 1, Less, ByLitter,
     "Tage vom vorigen Wurf der Sau, im Mittel der Würfe des Zeitraums. Erste Würfe haben keinen vorigen.",
     "Summe der Tage / Würfe mit einem vorigen", 1, true, nullptr},
    {Kz::NptSauJahr, "npt_sau_jahr", "Nichtproduktive Tage je Sau und Jahr", "Tage", 1, Less, ByDays,
     "Produktionstage, an denen die Sau weder trug noch säugte, auf eine Sau und 365 Produktionstage umgerechnet, nach "
     "dem Stand am letzten Tag des Zeitraums. Ein nicht abgesetzter Wurf gilt höchstens 60 Tage als gesäugt, eine "
     "Belegung ohne Wurf und ohne Befund \"nicht tragend\" höchstens 125 Tage als tragend.",
     "nichtproduktive Tage x 365 / Produktionstage", 365, true, nullptr},
    idle(Kz::NptBisUmrauschen, "npt_arten.Belegung bis Umrauschen",
         "Nichtproduktive Tage nach Art: Belegung bis Umrauschen"),
    idle(Kz::NptBisBelegung, "npt_arten.Absetzen bis Belegung", "Nichtproduktive Tage nach Art: Absetzen bis Belegung"),
    idle(Kz::NptBisAbgang, "npt_arten.bis Abgang", "Nichtproduktive Tage nach Art: bis Abgang"),
    idle(Kz::NptOffen, "npt_arten.offen", "Nichtproduktive Tage nach Art: offen"),
    {Kz::Remontierung, "remontierung", "Remontierung", "%", 1, Neither, ByDays,
     "Sauen, deren erste Belegung im Zeitraum liegt, auf 100 Sauen und 365 Produktionstage umgerechnet.",
     "100 x Sauen mit erster Belegung x 365 / Produktionstage", 36500, true, nullptr},
    stock(0, "wuerfe_verteilung.0", "Sauen nach Wurfzahl: 0"),
    stock(1, "wuerfe_verteilung.1", "Sauen nach Wurfzahl: 1"),
    stock(2, "wuerfe_verteilung.2", "Sauen nach Wurfzahl: 2"),
    stock(3, "wuerfe_verteilung.3", "Sauen nach Wurfzahl: 3"),
    stock(4, "wuerfe_verteilung.4", "Sauen nach Wurfzahl: 4"),
    stock(5, "wuerfe_verteilung.5", "Sauen nach Wurfzahl: 5"),
    stock(6, "wuerfe_verteilung.6", "Sauen nach Wurfzahl: 6"),
    stock(7, "wuerfe_verteilung.7", "Sauen nach Wurfzahl: 7"),
    stock(8, "wuerfe_verteilung.8", "Sauen nach Wurfzahl: 8"),
    stock(9, "wuerfe_verteilung.9", "Sauen nach Wurfzahl: 9"),
    stock(10, "wuerfe_verteilung.10+", "Sauen nach Wurfzahl: 10+"),
};
static_assert(std::size(List) == KennzahlAnzahl);

}  // namespace

std::span<const Kennzahl> Kennzahlen() { return List; }

const Kennzahl& kennzahl(Kz figure) { return List[static_cast<size_t>(figure)]; }

const Kennzahl* kennzahl(QStringView id) {
    for (const Kennzahl& figure : List)
        if (id == QLatin1String(figure.id)) return &figure;
    return nullptr;
}

}  // namespace koben

// The measures of boars, in the order of their list. A boar's services are those that name his number.
#include "analytics/Kennwert.h"

namespace koben {

std::span<const Kennwert> Kennwerte_Eber() {
    using G = Groesse;
    using F = Formel;
    const auto same = [](const char* caption, const char* column, const char* unit, const char* sentence,
                         const Formel& formel) { return Kennwert{caption, column, unit, sentence, formel, formel}; };
    const auto day = [](const char* caption, const char* column, const char* sentence, F::Art kind) {
        return Kennwert{caption, column, "", sentence, {.kind = kind, .of = {G::Deckungen}}, {}, true};
    };
    static const std::vector<Kennwert> measures{
        same("Anzahl Belegungen", "Belegungen", "", "Zahl der Belegungen, die die Nummer eines Ebers nennen.",
             {.kind = F::Summe, .of = {G::Deckungen}}),
        {"Anzahl Belegungen je Monat",
         "Beleg/Monat",
         "Belegungen je Monat",
         "Zahl der Belegungen des Ebers geteilt durch die Kalendermonate von der ersten bis zur letzten.",
         {.kind = F::JeMonat, .of = {G::Deckungen}},
         {.kind = F::JeZwoelftel,
          .of = {G::Deckungen},
          .sentence = "Zahl der Belegungen des Jahres geteilt durch 12."}},
        day("Erste Belegung", "Erste_Bel", "Tag der ersten Belegung des Ebers.", F::Erste),
        day("Letzte Belegung", "Letzte_Bel", "Tag der letzten Belegung des Ebers.", F::Letzte),
        same("Erfolgreiche Belegung", "Erf_Beleg", "",
             "Zahl der Belegungen, deren Sau am selben Tag oder später eine Trächtigkeitsfeststellung hat (die zuerst "
             "erfasste zählt), die „J“ lautet.",
             {.kind = F::Summe, .of = {G::Erfolge}}),
        same("Nicht erfolgr. Belegung", "N_Erf_Beleg", "",
             "Zahl der Belegungen, deren Sau am selben Tag oder später eine Trächtigkeitsfeststellung hat (die zuerst "
             "erfasste zählt), die nicht „J“ lautet.",
             {.kind = F::Summe, .of = {G::Misserfolge}}),
        same("Nicht erfolgr. Belegung %", "N_Erf_Beleg%", "%",
             "Nicht erfolgreiche Belegungen mal 100, geteilt durch alle, deren Erfolg feststeht.",
             {.kind = F::Anteil, .of = {G::Misserfolge, G::Misserfolge, G::Erfolge}, .factor = 100}),
    };
    return measures;
}

}  // namespace koben

// The measures of sows, in the order of their list.
#include "analytics/Kennwert.h"

namespace koben {

namespace {

using G = Groesse;
using F = Formel;

/// The same in both runs.
Kennwert both(const char* caption, const char* column, const char* unit, const char* sentence, const Formel& formel) {
    return {caption, column, unit, sentence, formel, formel};
}
/// A sum of bookings, shown as its sum on the page of the farm.
Kennwert total(const char* caption, const char* column, const char* unit, const char* sentence, G of) {
    Kennwert measure = both(caption, column, unit, sentence, {.kind = F::Summe, .of = {of}});
    measure.summed = true;
    return measure;
}
Kennwert ruled(Kennwert measure) {
    measure.ruled = true;
    return measure;
}
/// Counted bookings: an animal without any has an empty cell, a year has 0.
Kennwert counted(const char* caption, const char* column, const char* sentence, G of) {
    Kennwert measure = total(caption, column, "", sentence, of);
    measure.jeTier.kind = F::Anzahl;
    return measure;
}
Formel mean(G days) { return {.kind = F::Abstand, .of = {days}}; }
Formel share(std::vector<G> of) { return {.kind = F::Anteil, .of = std::move(of)}; }
Formel percent(std::vector<G> of) { return {.kind = F::Anteil, .of = std::move(of), .factor = 100}; }

std::vector<Kennwert> make() {
    Kennwert latest{
        "Letzte Belegungen",
        "L_Beleg",
        "Belegungen",
        "Belegungen seit der letzten Ferkelung, wie sie beim Tier gespeichert sind; ein Zeitraum gilt hier nicht.",
        {.kind = F::Bestand},
        {.kind = F::Strich}};
    latest.summed = true;
    Kennwert weaned =
        both("Durchschn. Absetzanzahl", "D_Absetz", "Ferkel",
             "Abgesetzte Ferkel geteilt durch die Zahl der Absetzungen.", share({G::Abgesetzt, G::Absetzungen}));
    weaned.jeJahr = share({G::Abgesetzt, G::Ferkelungen});
    weaned.jeJahr.sentence = "Abgesetzte Ferkel geteilt durch die Zahl der Ferkelungen des Jahres.";
    return {
        both("Durchschn. Tragedauer", "Tragedauer", "Tage",
             "Mittel der Tage von der letzten Belegung vor einer Ferkelung bis zu dieser; Ferkelungen ohne frühere "
             "Belegung zählen nicht mit.",
             mean(G::Tragezeit)),
        both("Durchschn. Säugedauer", "Säugedauer", "Tage",
             "Mittel der Tage von der letzten Ferkelung vor einer Absetzung bis zu dieser; Absetzungen ohne frühere "
             "Ferkelung zählen nicht mit.",
             mean(G::Saeugezeit)),
        both("Durchschn. Güstdauer", "Güstdauer", "Tage",
             "Mittel der Tage von der letzten Absetzung vor einer Belegung bis zu dieser; Belegungen ohne frühere "
             "Absetzung zählen nicht mit.",
             mean(G::Guestzeit)),
        ruled(
            both("Durchschn. Produktionstage", "ProdTage", "Tage",
                 "Mittel der Tage von der letzten Belegung vor einer Absetzung bis zu dieser; Absetzungen ohne frühere "
                 "Belegung zählen nicht mit.",
                 mean(G::Produktionszeit))),
        counted("Anzahl Belegungen", "Belegungen", "Zahl der Belegungen.", G::Belegungen),
        ruled(latest),
        counted("Anzahl Ferkelungen", "Würfe", "Zahl der Ferkelungen.", G::Ferkelungen),
        {"Anzahl Ferkelungen je Jahr",
         "Würfe/J",
         "Würfe je Jahr",
         "Beim Tier gespeicherte Zahl der Ferkelungen mal 365, geteilt durch die Tage von der ersten Belegung bis zur "
         "letzten "
         "Ferkelung zuzüglich der Tage von der Ferkelung bis zur nächsten Belegung lt. Einstellungen.",
         {.kind = F::JeJahr, .of = {G::Ferkelungen}},
         {.kind = F::Strich}},
        {"Anzahl Ferkel je Jahr",
         "Ferkel/J",
         "Ferkel je Jahr",
         "Beim Tier gespeicherte Zahl der geborenen Ferkel mal 365, geteilt durch die Tage von der ersten Belegung bis "
         "zur "
         "letzten Ferkelung zuzüglich der Tage von der Ferkelung bis zur nächsten Belegung lt. Einstellungen.",
         {.kind = F::JeJahr, .of = {G::Ferkel}},
         {.kind = F::Fehlt}},
        total("Gesamt Ferkelzahl", "G_Ferkel", "Ferkel", "Summe aller geborenen Ferkel.", G::Ferkel),
        both("Durchschn. Ferkelzahl", "D_Ferkel", "Ferkel je Wurf",
             "Alle geborenen Ferkel geteilt durch die Zahl der Ferkelungen.", share({G::Ferkel, G::Ferkelungen})),
        total("Gesamt Ferkel lebend", "Ferkel_Leb", "Ferkel", "Summe der lebend geborenen Ferkel.", G::Lebend),
        both("Durchschn. Ferkel lebend", "D_Ferkel_Leb", "Ferkel je Wurf",
             "Lebend geborene Ferkel geteilt durch die Zahl der Ferkelungen.", share({G::Lebend, G::Ferkelungen})),
        both("Ferkel lebend %", "Ferkel_Leb%", "%",
             "Lebend geborene Ferkel mal 100, geteilt durch alle geborenen Ferkel.", percent({G::Lebend, G::Ferkel})),
        total("Gesamt Ferkel tot", "Ferkel_Tot", "Ferkel", "Summe der tot geborenen Ferkel.", G::Tot),
        both("Durchschn. Ferkel tot", "D_Ferkel_Tot", "Ferkel je Wurf",
             "Tot geborene Ferkel geteilt durch die Zahl der Ferkelungen.", share({G::Tot, G::Ferkelungen})),
        ruled(both("Ferkel tot %", "Ferkel_Tot%", "%",
                   "Tot geborene Ferkel mal 100, geteilt durch alle geborenen Ferkel.", percent({G::Tot, G::Ferkel}))),
        total("Gesamt Säugeverluste", "Säugeverl", "Ferkel", "Summe der als Verlust gebuchten Ferkel.", G::Verluste),
        both("Durchschn. Säugeverluste", "D_Säugeverl", "Ferkel je Wurf",
             "Als Verlust gebuchte Ferkel geteilt durch die Zahl der Ferkelungen.",
             share({G::Verluste, G::Ferkelungen})),
        ruled(both("Säugeverluste %", "Säugeverl%", "%",
                   "Als Verlust gebuchte Ferkel mal 100, geteilt durch die lebend geborenen Ferkel.",
                   percent({G::Verluste, G::Lebend}))),
        total("Gesamt Absetzanzahl", "Absetz", "Ferkel", "Summe der abgesetzten Ferkel.", G::Abgesetzt),
        weaned,
        both("Durchschn. Absetzgewicht", "D_Absetzgew", "kg je Ferkel",
             "Gewicht aller abgesetzten Ferkel (Stückgewicht mal Anzahl) geteilt durch ihre Zahl.",
             share({G::Gewicht, G::Abgesetzt})),
        ruled({"Tägliche Gewichtszunahme in Gramm",
               "Gewichtzu/T_g",
               "g je Tag",
               "Gewicht aller abgesetzten Ferkel in Gramm, vermindert um das Geburtsgewicht lt. Einstellungen, geteilt "
               "durch "
               "ihre Zahl und durch die Säugetage aller Absetzungen zusammen.",
               {.kind = F::Zunahme},
               {.kind = F::Strich}}),
        total("Erfolgreiche Trächtigkeit", "Trächtig_J", "", "Zahl der Trächtigkeitsfeststellungen mit „J“.",
              G::Tragend),
        total("Nicht erfolgr. Trächtigkeit", "Trächtig_N", "", "Zahl der Trächtigkeitsfeststellungen mit „N“.",
              G::Leer),
        ruled(both(
            "Nicht erfolgr. Trächtigkeit %", "Trächtig_J%", "%",
            "Trächtigkeitsfeststellungen mit „J“ mal 100, geteilt durch alle mit „J“ oder „N“: trotz der Überschrift "
            "der Anteil der erfolgreichen.",
            percent({G::Tragend, G::Tragend, G::Leer}))),
        total("Verschiebung zu einer anderen Sau", "Versch_zu", "Ferkel",
              "Summe der zu anderen Sauen versetzten Ferkel.", G::Versetzt),
        total("Verschiebung von einer anderen Sau", "Versch_von", "Ferkel",
              "Summe der von anderen Sauen zugesetzten Ferkel.", G::Zugesetzt),
    };
}

}  // namespace

std::span<const Kennwert> Kennwerte_Sau() {
    static const std::vector<Kennwert> measures = make();
    return measures;
}

}  // namespace koben

#include "exchange/Geraeteabschnitte.h"

namespace koben {

const QString DateiZumGeraet = QStringLiteral("KOBEN2_DATEN_ZU_POCKET.KO2");
const QString DateiVomGeraet = QStringLiteral("KOBEN2_DATEN_VON_POCKET.KO2");

const std::vector<Geraeteabschnitt>& Geraeteabschnitte() {
    using W = Geraetewert;
    static const Geraetefeld comment{"Kommentar", W::Text, 20}, remark{"Bemerkung", W::Text, 20};
    static const Geraetefeld costs{"Kosten", W::Amount}, piglets{"Anzahl_Ferkel", W::Count};
    static const std::vector<Geraeteabschnitt> sections = {
        {.art = Buchungsart::Belegung,
         .word = "Belegung   ",
         .fields = {{"Ebernr", W::Text, 15},
                    {"Deckanzahl", W::LongCount},
                    {"Belegungart", W::Service},
                    {"Belegungsstation", W::Text, 20},
                    costs,
                    comment,
                    remark},
         .listed = 8},
        {.art = Buchungsart::Ferkelung,
         .word = "Ferkelung  ",
         .fields = {{"Ferkel_Gesamt", W::Count},
                    {"Ferkel_Lebendig", W::Count},
                    {"Ferkel_Tot", W::Count},
                    {"Stück_Gewicht_kg", W::Weight},
                    costs,
                    comment,
                    remark},
         .listed = 8},
        {.art = Buchungsart::Absetzung,
         .word = "Absetzung  ",
         .fields = {piglets, {"Stück_Gewicht_kg", W::WholeWeight}, comment, remark},
         .listed = 6,
         .pen = true},
        {.art = Buchungsart::Trächtigkeit,
         .word = "Trächtigk. ",
         .fields = {{"Trächtig", W::Check}, costs, comment, remark},
         .listed = 5},
        {.art = Buchungsart::Verluste,
         .word = "Verluste   ",
         .fields = {piglets, {"Grund", W::Text, 20}, costs, comment, remark},
         .listed = 6,
         .mother = true},
        {.art = Buchungsart::Verschiebung,
         .word = "Verschieb. ",
         .fields = {piglets, {"Zu_Saunr", W::Text, 15}, comment, remark},
         .listed = 5},
        {.art = Buchungsart::Behandlung,
         .word = "Behandlung ",
         .fields = {{"Behandlungsart", W::Text, 20},
                    {"Medikament", W::Text, 20},
                    {"Menge", W::Weight},
                    {"Einheit", W::Text, 2},
                    {"Verabreichungsart", W::Text, 20},
                    {"Wartezeit_Tage", W::LongCount},
                    {"Wartezeit_Datum", W::Day},
                    {"Tierarzt", W::Text, 20},
                    {"Beleg_Nr", W::Text, 20},
                    costs,
                    comment,
                    remark},
         .listed = 13},
        {.art = Buchungsart::Ferkelverkauf,
         .word = "Ferkelverk ",
         .fields = {{"Preis_je_Stück", W::Amount},
                    {"Anzahl_Einkauf", W::Count},
                    {"Ausgaben", W::Amount},
                    {"Anzahl_Verkauf", W::Count},
                    {"Einnahmen", W::Amount},
                    {"Stück_Gewicht_kg", W::Weight},
                    {"Gesamtgewicht_kg", W::Weight},
                    {"Kunde", W::Text, 20},
                    comment},
         .listed = 6,
         .mother = true}};
    return sections;
}

}  // namespace koben

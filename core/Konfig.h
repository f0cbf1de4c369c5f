#pragma once
// The register of the settings' slots: what each number of the settings file means, in one place.

namespace koben {

/// Slots of Variablen::Konfig_Zahl.
namespace Zahl {
enum Slot : int {
    TageBelegungFerkelung = 0,
    TageFerkelungBelegung = 1,
    TierberichtTiere = 2,
    TierberichtBetrieb = 3,  ///< 0 in the herd on the day, 1 not
    TierberichtSortierung = 4,
    BuchungsberichtTiere = 5,
    BuchungsberichtAuswahl = 6,
    BuchungsberichtTierfelder = 7,  ///< a bit each: Art, Nummer, Gruppe, Stallnr
    BuchungsberichtForm = 8,        ///< a bit each: empty rows, events, events by animal
    DeckungsbeitragFelder = 9,      ///< 9 to 12: the columns Art, Nummer, Gruppe, Stallnr of the contribution margin
    PlanFeldNummer = 14,            ///< 14 to 17: the columns Nummer, Art, Stallnr, Gruppe of the work plan
    PlanFeldGruppe = 17,
    Druckformat = 18,  ///< 0 portrait, 1 landscape
    DruckFett = 19,
    DruckKursiv = 20,
    PlanSortierung = 21,
    Schriftgroesse = 22,
    LinkerRand = 23,
    TonAus = 24,
    ListeSortSpalte = 25,
    ListeSortRichtung = 26,  ///< 1 ascending, 2 descending, else none
    PlanTage = 27,
    BestandNurBezugsdatum = 28,
    BestandAlter = 29,
    BestandBericht = 30,      ///< the special report chosen last
    DeckungsbeitragVon = 31,  ///< year
    DeckungsbeitragBis = 32,
    DeckungsbeitragZeilen = 33,  ///< 0 a row per year, 1 per animal
    TageFerkelungAbsetzung = 34,
    StatistikJahrVon = 35,
    StatistikJahrBis = 36,
    StatistikWurfVon = 37,
    StatistikWurfBis = 38,
    TageBelegungKontrolle = 39,
    TageAbsetzungBelegung = 40,
    TageGeburtBelegung = 41,
    ToleranzTage = 42,
    ZyklusPruefen = 43,
    GeburtPruefen = 44,
    ListenDarstellung = 45,  ///< 0 list screen, 1 browser at once, 2 text at once
    BerichtDatum = 46,
    BerichtSeiten = 47,
    BerichtAnzahl = 48,
    BerichtZeilen = 49,
    SicherungTage = 50,
    LaufendeNummer = 51,
    Geburtsgewicht = 52,
    SelektionLoeschen = 53,
    OptimaleSpaltenbreite = 54,
    LoeschenBestaetigen = 55,
    PlanWartezeit = 56,
    NummerErhoehen = 57,
    ListeBreit = 58,  ///< 1: the panel takes two thirds
    BestandSortierung = 59,
    PlanNurSauen = 60,
    RegisterFerkel = 61,
    FilterAnzeige = 62,
    FilterVerkauft = 63,
    FilterSauen = 64,
    PocketSortierung = 65,
    PocketNurSauen = 66,
    TaetowierungDoppelt = 67,
    Starts = 68,
    RegisterAddieren = 70,
};
}

/// Slots of Variablen::Konfig_Text.
namespace Text {
enum Slot : int {
    TierberichtFelder = 3,
    Listentrenner = 4,
    Trenner = 10,
    PlanZeichenTermin = 15,
    PlanZeichenFrei = 16,
    PlanArten = 17,
    DeckungsbeitragPosten = 18,  ///< ten digits, 1 for each kind that takes part
    BestandFelder = 19,
    DeckungsbeitragFutter = 20,  ///< 20 to 22: lump sums of a sow, a boar, a fattening pig
    StatistikSauen = 23,
    StatistikEber = 24,
    Berichtskopf = 25,
    LetzteSicherung = 26,
    RegisterVon = 27,
    RegisterBetrieb = 28,  ///< 28 to 32: the farm's lines in the head of the register
    Sortierung1 = 33,
    Sortierung2 = 34,
    WarnAbzug = 40,  ///< 40 to 43: slack, threshold, weeks and least weeks of the early warning; "" for the default
    WarnMindestwochen = 43,
};
}

}  // namespace koben

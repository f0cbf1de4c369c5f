#pragma once
// Which control of the animal's screen edits which field of Sauen.

namespace koben::animal {

/// A text field by its control's index, with its width; keywords where the text also feeds a keyword table.
struct TextField {
    int index;
    const char* name;
    int width;
    const char* keywords = "";
};
inline constexpr TextField Texts[] = {
    {0, "Nummer", 15}, {1, "Ohrmarke", 20}, {2, "Tätowierung", 20}, {3, "Infos", 100}};  // t
inline constexpr TextField Keywords[] = {{1, "Gruppe", 20, "Stammdaten_Gruppe"},         // kom
                                         {2, "Stallnr", 10, "Stammdaten_Stallnummer"},
                                         {3, "Rasse", 20, "Stammdaten_Rasse"},
                                         {5, "Zugangsgrund", 20, "Stammdaten_Zugangsgrund"},
                                         {6, "Lieferant", 20, "Stammdaten_Kunde"},
                                         {7, "Abgangsgrund", 20, "Stammdaten_Abgangsgrund"},
                                         {8, "Abnehmer", 20, "Stammdaten_Kunde"}};

struct PlainField {
    int index;
    const char* name;
    const char* wrong = "";  ///< the line for a date that is none
    bool amount = false;
};
inline constexpr PlainField Dates[] = {{0, "Geburtsdatum", "...das Geburtsdatum nicht korrekt ist."},  // tdat
                                       {1, "Zugangsdatum", "...das Zugangsdatum nicht korrekt ist."},
                                       {2, "Abgangsdatum", "...das Abgangsdatum nicht korrekt ist."},
                                       {3, "BoxDatum", "...das Box-Datum nicht korrekt ist."}};
inline constexpr PlainField Numbers[] = {{0, "Zugangsgewicht_kg"},  // tz
                                         {1, "Einkaufspreis", "", true},
                                         {2, "Abgangsgewicht_kg"},
                                         {3, "Verkaufspreis", "", true}};

}  // namespace koben::animal

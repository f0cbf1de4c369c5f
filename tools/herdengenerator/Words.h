#pragma once
// The words that a German farm has in its books.

namespace koben {

constexpr const char* rassen[] = {"DL", "DE", "F1 (DE x DL)", "Sattelschwein", "F1 (DL x DE)", "Dänische Landrasse"};
constexpr const char* eberrassen[] = {"Pietrain", "Duroc", "Hampshire"};
constexpr const char* lieferanten[] = {"Zuchthof Müller", "Jens` Zuchtsauen",    "Zuchtring Dahlburg",
                                       "Hof Südermann",   "Schulze-Althoff GbR", "Agrar Großwülknitz"};
constexpr const char* kennzeichen[] = {"VEC", "CLP", "BOR", "COE", "NOH", "SHA"};  ///< districts of the suppliers
constexpr const char* abgangsgruende[] = {"Alter",        "Umrauschen",      "Fundamentschaden",
                                          "Kleine Würfe", "Gesäugeprobleme", "Verendet",
                                          "Güst",         "Ferkelverkauf",   "Mastverkauf"};
enum Grund { Alter, Umrauschen, Fundament, KleineWuerfe, Gesaeuge, Verendet, Guest, Ferkelverkaeufe, Mastverkauf };
constexpr const char* abnehmer[] = {"Viehhandel Höfer",   "Fleischhof Nord eG", "Ferkelring Süd",
                                    "Mastbetrieb Büßing", "Schlachthof Jäger",  "Hof O`Neill"};
constexpr const char* verlustgruende[] = {"Totgelegen", "Verhungert", "Grätscher",
                                          "Sonstiges",  "Durchfall",  "Untergewicht"};
constexpr const char* stationen[] = {"Besamung Ascheloh", "Besamung Neustadt", "Eigener Eber", "Besamung Süd"};
constexpr const char* stationseber[] = {"Pi 4711", "Pi 5203", "Du 118", "Pi 6644", "Ha 92", "Pi 7001"};
constexpr const char* bemerkungen[] = {"",        "",    "", "", "", "", "", "unruhig", "lahmt", "schwer gedeckt",
                                       "Ausfluß", "müde"};
constexpr const char* kommentare[] = {"", "", "", "", "", "Azubi Jürgen", "Urlaubsvertretung", "nachgetragen"};
constexpr const char* tieraerzte[] = {"Dr. Schäfer", "Dr. Voß", "TÄ Grünwald"};
constexpr const char* namen[] = {"Berta", "Jule", "Dörte", "Resi`s Beste", "Käthe", "Liese"};

struct Mittel {
    const char* name;
    const char* behandlung;
    const char* weg;
    const char* einheit;
    double menge;
    int wartezeit;  // days
    int cent;       // costs of a dose
};
constexpr Mittel mittel[] = {{"Eisendextran", "Eisengabe", "Injektion", "ml", 2, 0, 18},
                             {"Parvo-Rotlauf", "Impfung", "Injektion", "ml", 2, 0, 165},
                             {"Meloxicam", "MMA", "Injektion", "ml", 6, 5, 240},
                             {"Ivermectin", "Entwurmung", "Injektion", "ml", 7.5, 28, 310},
                             {"Amoxicillin LA", "Fieber", "Injektion", "ml", 15, 14, 480},
                             {"Oxytocin", "Geburtshilfe", "Injektion", "ml", 1.5, 0, 95}};
enum MittelNr { Eisen, Parvo, Meloxicam, Ivermectin, Amoxicillin, Oxytocin };

}  // namespace koben

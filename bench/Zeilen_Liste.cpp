// The herd list: filters, sorting, counters, the animal's panel, the search.
#include "bench/Boden.h"
#include "bench/Programm.h"

namespace koben {
namespace {

/// A choice of the main form's three groups, and the same as a condition.
struct Filter {
    const char* name;
    double grenze;
    int verkauft, anzeige, sauen;
    const char* where;
};
const Filter filter[] = {
    {"list: stock", taeglich, 0, 0, 0, "Abgangsdatum IS NULL"},
    {"list: stock, sows", taeglich, 0, 1, 0, "Abgangsdatum IS NULL AND Art = 'Sau'"},
    {"list: stock, sows served", taeglich, 0, 1, 1, "Abgangsdatum IS NULL AND Art = 'Sau' AND Status GLOB 'B*'"},
    {"list: stock, sows pregnant", taeglich, 0, 1, 2, "Abgangsdatum IS NULL AND Art = 'Sau' AND Status = 'B_T'"},
    {"list: stock, sows suckling", taeglich, 0, 1, 3, "Abgangsdatum IS NULL AND Art = 'Sau' AND Status = 'S'"},
    {"list: stock, sows barren", taeglich, 0, 1, 4, "Abgangsdatum IS NULL AND Art = 'Sau' AND Status GLOB '*G'"},
    {"list: stock, sows not pregnant", taeglich, 0, 1, 5,
     "Abgangsdatum IS NULL AND Art = 'Sau' AND Status GLOB 'B_NT*'"},
    {"list: stock, boars", taeglich, 0, 2, 0, "Abgangsdatum IS NULL AND Art = 'Eber'"},
    {"list: stock, fattening pigs", taeglich, 0, 3, 0, "Abgangsdatum IS NULL AND Art = 'Mast'"},
    {"list: stock, piglets", taeglich, 0, 4, 0, "Abgangsdatum IS NULL AND Art = 'Ferkel'"},
    {"list: gone", selten, 1, 0, 0, "Abgangsdatum IS NOT NULL"},
    {"list: gone, sows", selten, 1, 1, 0, "Abgangsdatum IS NOT NULL AND Art = 'Sau'"},
    {"list: everything, sows", selten, 2, 1, 0, "Art = 'Sau'"},
    {"list: everything", selten, 2, 0, 0, ""}};

Option& wahl(Programm& p, const char* group, int index) { return steuer<Option>(p.haupt(), group, index); }

/// From another kind of animals on to those of the filter, so that the list is read whole.
Zeile Liste_laden(const Filter& f) {
    return {QString::fromUtf8(f.name), f.grenze,
            [f](Programm& p, Uhr& uhr) {
                constexpr int sauen = 1, eber = 2;
                wahl(p, "optianzeige", f.anzeige == eber ? sauen : eber).click();
                wahl(p, "optiverkauft", f.verkauft).click();
                wahl(p, "optisauen", f.sauen).click();
                uhr.messen([&] {
                    wahl(p, "optianzeige", f.anzeige).click();
                    anschauen(p.liste());
                });
                return p.liste().rowCount();
            },
            [f](Datei& datei, Uhr& uhr) {
                const std::string where = f.where;
                qint64 rows = 0;
                uhr.messen([&] {
                    rows = datei.lesen(where == boden::bestand ? boden::Bestandsliste() : boden::liste(where));
                });
                return rows;
            }};
}

/// A click on a head of the list, which stood in no order. The floor reads the order alone, without an index for it.
Zeile sortieren(const char* what, const char* field, bool alles) {
    return {
        QStringLiteral("sort %1: %2").arg(QString::fromUtf8(alles ? "everything" : "stock"), QString::fromUtf8(what)),
        alles ? selten : taeglich,
        [=](Programm& p, Uhr& uhr) {
            p.zeigen(alles ? 2 : 0);
            p.Liste_zeigen();
            Grid& list = p.liste();
            const int column = list.columnOf(QString::fromUtf8(field));
            uhr.messen([&] {
                list.sortByUser(column, 1);
                anschauen(list);
            });
            return list.rowCount();
        },
        [=](Datei& datei, Uhr& uhr) {
            const std::string source = alles ? "Sauen" : "Sauen INDEXED BY boden_bestand WHERE " + boden::bestand;
            qint64 rows = 0;
            uhr.messen([&] {
                rows = static_cast<qint64>(datei.zahlen("SELECT ID FROM " + source + " ORDER BY " + field).size());
            });
            return rows;
        }};
}

/// Times the counters within a reload: from the last event of the list to the new text of the line.
qint64 Zaehlung_messen(Programm& p, Uhr& uhr) {
    struct ListeFolgen : Control::View {
        ListeFolgen(Control& list, Uhr& u) : View(list), clock(u) {}
        void changed(Aspect) override { clock.los(); }
        Uhr& clock;
    };
    struct ZeileFolgen : Control::View {
        ZeileFolgen(Label& label, Uhr& u) : View(label), clock(u), line(label) {}
        void changed(Aspect) override {
            if (!line.text().isEmpty()) clock.halt();
        }
        Uhr& clock;
        Label& line;
    };
    Label& line = steuer<Label>(p.haupt(), "bezstati");
    line.setText({});
    const ListeFolgen begin(p.liste(), uhr);
    const ZeileFolgen end(line, uhr);
    p.Liste_zeigen();
    return p.liste().rowCount();
}

qint64 Zaehlung_Boden(Datei& datei, Uhr& uhr) {
    std::vector<qint64> rows;
    uhr.messen([&] {
        rows = datei.zahlen(
            "SELECT count(*), sum(Art = 'Sau'), sum(Art = 'Eber'), sum(Art = 'Mast'), sum(Anz_Belegungen), "
            "sum(Anz_Ferkelungen), sum(Anz_Ferkel_Gesamt), sum(Anz_Ferkel_Lebend), sum(Selektiert = 'X') FROM Sauen "
            "INDEXED BY boden_zaehlung WHERE Abgangsdatum IS NULL");
    });
    return rows.front();
}

/// One animal on to the trial sow, whose bookings of ten years are shown as text.
Zeile Tierdaten(qint64 sow) {
    return {QStringLiteral("animal panel, next animal"), taeglich,
            [sow](Programm& p, Uhr& uhr) {
                p.waehlen(sow);
                p.liste().choose(p.liste().row() - 1);
                uhr.messen([&] { steuer<Button>(p.haupt(), "abwaerts", 0).click(); });
                return qint64{p.liste().value(p.liste().row(), u"ID").toInt() == sow};
            },
            [sow](Datei& datei, Uhr& uhr) {
                uhr.messen([&] {
                    for (const char* table : {"Belegung", "Trächtigkeit", "Ferkelung", "Verluste", "Verschiebung",
                                              "Absetzung", "Behandlung"})
                        datei.lesen(std::string("SELECT * FROM ") + table + " WHERE Kennung = " + std::to_string(sow) +
                                    " ORDER BY Datum DESC");
                });
                return 1;
            }};
}

/// The last character of a number far down the list.
Zeile suchen(const QString& nummer) {
    return {
        QStringLiteral("search keystroke"), taeglich,
        [nummer](Programm& p, Uhr& uhr) {
            TextBox& field = steuer<TextBox>(p.haupt(), "t");
            field.edited(nummer.chopped(1));
            uhr.messen([&] { field.edited(nummer); });
            return qint64{p.liste().row() > 0};
        },
        [nummer](Datei& datei, Uhr& uhr) {
            qint64 rows = 0;
            uhr.messen([&] {
                rows = datei.lesen(
                    "SELECT min(ID) FROM Sauen INDEXED BY boden_nummer WHERE Abgangsdatum IS NULL AND Nummer GLOB '" +
                    nummer.toStdString() + "*'");
            });
            return rows;
        }};
}

}  // namespace

std::vector<Zeile> Zeilen_Liste(const Probe& probe) {
    std::vector<Zeile> rows;
    for (const Filter& f : filter) rows.push_back(Liste_laden(f));
    for (const bool alles : {false, true})
        for (const auto& [what, field] : {std::pair{"text", "Tätowierung"}, std::pair{"number", "Zugangsgewicht_kg"},
                                          std::pair{"date", "Geburtsdatum"}})
            rows.push_back(sortieren(what, field, alles));
    rows.push_back({QStringLiteral("counters line"), taeglich, Zaehlung_messen, Zaehlung_Boden});
    rows.push_back(Tierdaten(probe.sau));
    rows.push_back(suchen(probe.nummer));
    return rows;
}

}  // namespace koben

// Start, status, and what the booking frame leaves to do when it closes.
#include "bench/Boden.h"
#include "bench/Programm.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs_Datenbank.h"

namespace koben {
namespace {

Zeile starten() {
    return {QStringLiteral("start to shown list"), selten,
            [](Programm& p, Uhr& uhr) {
                anschauen(p.liste());
                uhr.dazu(p.seitStart());
                return p.liste().rowCount();
            },
            [](Datei& datei, Uhr& uhr) {  // its opening costs the floor nothing to speak of
                qint64 rows = 0;
                uhr.messen([&] { rows = datei.lesen(boden::Bestandsliste()); });
                return rows;
            },
            Anlauf::JedesMal};
}

/// The status of as many animals as `where` names is wiped out and set again.
Zeile Status_setzen(const char* name, double grenze, const QString& where) {
    const QString wipe = QStringLiteral("update Sauen set Status = '' where ") + where;
    return {QString::fromUtf8(name), grenze,
            [wipe](Programm& p, Uhr& uhr) {
                Database(p.koben().Hauptdatenbank).execute(wipe);
                uhr.messen([&] { statussetzen(p.koben().Hauptdatenbank); });
                return 1;
            },
            [wipe, where](Datei& datei, Uhr& uhr) {
                datei.ausfuehren(wipe.toStdString());
                uhr.messen([&] { datei.ausfuehren(boden::status(where.toStdString())); });
                return 1;
            }};
}

/// Shuts the frame that was opened for the sow, after so many services, until the main list stands anew.
Zeile schliessen(const char* name, const Probe& probe, int services) {
    return {QString::fromUtf8(name), taeglich,
            [sow = probe.sau, services](Programm& p, Uhr& uhr) {
                p.waehlen(sow);
                p.koben().Buchungsart_Nr = 0;
                p.wenn("PE_Bewegungsdaten_Belegung", [&](Form& entry) { steuer<Button>(entry, "ok", 0).click(); });
                p.oeffnen("PE_Bewegungsdaten", [&](Form& frame) {
                    for (int i = 0; i < services; ++i) steuer<Button>(frame, "neu").click();
                    uhr.los();
                    steuer<Button>(frame, "cmdschließen").click();
                });
                anschauen(p.liste());
                uhr.halt();
                return p.liste().rowCount();
            },
            [probe, services](Datei& datei, Uhr& uhr) {
                const std::string sow = std::to_string(probe.sau);
                for (int i = 0; i < services; ++i)
                    datei.ausfuehren("INSERT INTO Belegung (Datum, Ebernr, Deckanzahl, Kennung) VALUES (" +
                                     boden::iso(probe.heute) + ", '', 1, " + sow + ")");
                qint64 rows = 0;
                uhr.messen([&] {
                    if (services > 0) datei.buchen({boden::ableiten(probe.sau), boden::status("ID = " + sow)});
                    rows = datei.lesen(boden::Bestandsliste());
                });
                return rows;
            }};
}

/// Shuts the frame after the days of the cycle were set anew, so that every sow gets other next days.
Zeile Neu_ableiten(const Probe& probe) {
    return {QStringLiteral("closing the frame, new settings"), selten,
            [sow = probe.sau](Programm& p, Uhr& uhr) {
                p.waehlen(sow);
                p.koben().Buchungsart_Nr = 0;
                qint16& days = p.koben().Konfig_Zahl[Zahl::TageFerkelungBelegung];
                days = days == 36 ? 37 : 36;
                p.oeffnen("PE_Bewegungsdaten", [&](Form& frame) {
                    uhr.los();
                    steuer<Button>(frame, "cmdschließen").click();
                });
                anschauen(p.liste());
                uhr.halt();
                return p.liste().rowCount();
            },
            [days = 36](Datei& datei, Uhr& uhr) mutable {
                days = days == 36 ? 37 : 36;
                qint64 rows = 0;
                uhr.messen([&] {
                    datei.buchen({boden::alle_ableiten(days)});
                    rows = datei.lesen(boden::Bestandsliste());
                });
                return rows;
            }};
}

}  // namespace

std::vector<Zeile> Zeilen_Zyklus(const Probe& probe) {
    return {starten(),
            Status_setzen("status pass, nothing to do", taeglich, QStringLiteral("ID = 0")),
            Status_setzen("status pass, one sow", taeglich, QStringLiteral("ID = %1").arg(probe.sau)),
            Status_setzen("status pass, all sows", selten, QStringLiteral("Art = 'Sau' and Abgangsdatum IS NULL")),
            schliessen("closing the frame, nothing booked", probe, 0),
            schliessen("closing the frame, one service", probe, 1),
            Neu_ableiten(probe)};
}

}  // namespace koben

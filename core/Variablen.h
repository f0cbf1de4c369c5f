#pragma once
// The shared variables of a run: settings, folders, today's date, and the flags by which screens tell each other
// what became stale.
#include <QString>
#include <QStringList>
#include <array>
#include <optional>

#include "store/Database.h"

namespace koben {

inline const QString Crlf = QStringLiteral("\r\n");

struct Variablen {
    std::array<qint16, 101> Konfig_Zahl{};
    std::array<Money, 11> Konfig_Betrag{};
    std::array<QString, 61> Konfig_Text{};

    QString Datenordner;     ///< with a separator at the end
    QString Programmordner;  ///< with a separator at the end
    QString Datenbankpfad;
    QString Heute;  ///< dd.mm.yyyy, set at start and not refreshed during a run
    Database Hauptdatenbank;

    int Status_neu_berechnen = 0;
    int Liste_neu_laden = 0;
    int Start_erledigt = 0;
    int Buchungsart_Nr = 0;  ///< 0 to 7: kind of booking and page of the booking frame
    QString Buchungsmodus;   ///< "Neu" or "Ändern"
    QString Uebergabe_Marke;
    QString Uebergabe_Anzahl;
    QString Ausgabedatei;

    /// A variable by its name, array members as Konfig_Zahl(62); nothing where there is no such variable.
    std::optional<QString> read(const QString& name) const;
    /// Sets one by name; false where there is none or the value does not fit.
    bool set(const QString& name, const QString& value);
};

}  // namespace koben

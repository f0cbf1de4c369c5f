#pragma once
#include "exchange/Importdatei.h"
#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

class NeueTiere;

/// "Datenimport aus Datenbanken und Tabellenkalkulationen": brings a herd from a semicolon-separated text file into
/// `Sauen`, for a new start or as an addition. The import is there whole or not at all; after it the program ends, so
/// that the new rows are read at the next start.
class S_Importtabelle final : public Form {
public:
    explicit S_Importtabelle(Koben& koben);
    bool onlyToday() const override { return true; }

    Tabs SSTab1;
    ControlArray<Label> Label1{*this, "Label1", {"", "", "", ""}};  ///< what to do on each of the pages
    Button comöffnen{*this, "comöffnen", "CSV-Datei &öffnen..."};
    TextBox Text1{*this, "Text1"};  ///< the first lines of the file
    ControlArray<Label> Text2;      ///< the target fields
    ControlArray<ComboBox> kom{*this, "kom", Importdatei::spalten};
    Label bez{*this, "bez"};  ///< progress
    Button comvorheriger2{*this, "comvorheriger2", "< &Zurück"};
    Button comnächster2{*this, "comnächster2", "&Weiter >"};
    Button ok{*this, "ok", "Daten jetzt &importieren"};
    Button abbv{*this, "abbv", "Abbrechen"};

    /// Shows a file: its first lines, and its heads to choose from. Writes nothing.
    void DateiZeigen(const QString& path);
    /// Set by a window that lets the user choose the separator of a file's columns; otherwise it is the semicolon.
    std::function<QChar(const QString& path)> trennerWaehlen;

private:
    class Ohrmarken;
    class Sperre;
    enum class Lauf { Ruht, Aktiv, Abbruch };
    enum class Zeile { Importiert, Doppelt, Namenlos };
    struct Ergebnis {
        int importiert = 0, ignoriert = 0;
        std::vector<int> namenlos;  ///< lines of the file without a number
        bool controls = false;      ///< control characters were replaced
        bool abgebrochen = false;
    };

    void Load() override;
    void comöffnen_Click();
    void ok_Click();
    void abbv_Click();
    void blaettern(int richtung);

    void Spalten_zuordnen(const QStringList& kopf);
    QString Feldwert(const QStringList& felder, int ziel) const;
    Value Zielwert(const QStringList& felder, int ziel) const;
    bool Zusatzimport_klaeren(bool& zusatz);
    bool Datei_unveraendert(Importdatei& datei);
    Zeile Tier_eintragen(const QStringList& felder, NeueTiere& tiere, Ohrmarken* marken,
                         std::vector<Value>& werte) const;
    Ergebnis Zeilen_einlesen(Importdatei& datei, bool zusatz);
    void Bedienung_sperren(bool gesperrt);
    void Abschluss(const Ergebnis& ergebnis);

    Database m_db;
    QString m_datei;  // "" until a file was opened
    QChar m_trenner = u';';
    QStringList m_kopf;  // heads of that file
    Lauf m_lauf = Lauf::Ruht;
};

}  // namespace koben

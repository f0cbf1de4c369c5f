#pragma once
#include "core/Altbestand.h"
#include "exchange/Ordnerliste.h"
#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

/// "Datenübernahme von KOBEN 1.0 nach KOBEN 2.0": replaces the whole database with the predecessor's, whole or not at
/// all. What a folder holds shows before anything is touched. A folder with a genuine `koben2.mdb` of the old engine is
/// taken over by a button of its own.
class PO_Update final : public Form {
public:
    explicit PO_Update(Koben& koben);
    bool onlyToday() const override { return true; }

    Label Label1{*this, "Label1", "Auswahl (In welchem Ordner ist KOBEN 1.0 installiert?)"};
    ComboBox lw{*this, "lw"};
    TextBox pfad{*this, "pfad"};  ///< the chosen folder, which can be typed too
    ListBox verzeichnis{*this, "verzeichnis"};
    Label befund{*this, "befund"};  ///< what came of looking into the folder
    Grid lifund{*this, "lifund"};   ///< what its database holds, table by table
    Label Label2{*this, "Label2", "Info über den Verlauf der Datenübernahme aus KOBEN 1.0"};
    TextBox t{*this, "t"};
    Button start{*this, "start", "&Start"};
    Button koben2{*this, "koben2", "Bestand von &KOBEN 2.0 übernehmen"};
    Button beenden{*this, "beenden", "Beenden"};

private:
    void Load() override;
    void lw_Click();
    void pfad_LostFocus();
    void verzeichnis_DblClick();
    void verzeichnis_Change();
    void start_Click();
    void koben2_Click();
    void beenden_Click();

    void Ordner_zeigen(const QString& folder);
    void Vorgaenger_suchen();
    void Inhalt_zeigen();
    void Einstellungen_kopieren();
    void log(const QStringList& lines);
    std::optional<Altuebernahme> take(Altversion version, const QString& name);

    Database m_db;
    Ordnerliste m_ordner;
    QString m_folder;
    QString m_mdb;  ///< the database to take over, "" for none
    Altversion m_version = Altversion::Koben1;
};

}  // namespace koben

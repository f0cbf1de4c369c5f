#pragma once
#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

/// The text viewer: shows the file that `Ausgabedatei` names, lets the user edit what is on the screen, and prints
/// either that text or the untouched file.
class PA_Textausgabe final : public Form {
public:
    explicit PA_Textausgabe(Koben& koben);

    TextBox t{*this, "t"};
    Label Seitenumbruch{*this, "Seitenumbruch", "# = Seitenumbruch"};
    Label Schriftart{*this, "Schriftart", "Schriftart:"};
    ComboBox kom{*this, "kom"};
    ControlArray<CheckBox> kon{*this, "kon", {"Fett", "Kursiv"}};
    Label Schriftgröße{*this, "Schriftgröße", "Schriftgröße"};
    TextBox gr_e{*this, "gr_e"};
    ControlArray<Button> plus1{*this, "plus1", {"Schriftgröße -1", "Schriftgröße +1"}};
    ControlArray<Button> plus5{*this, "plus5", {"Schriftgröße -5", "Schriftgröße +5"}};
    Label Drucker{*this, "Drucker", "Drucker:"};
    ComboBox komdrucker{*this, "komdrucker"};
    OptionGroup druckformat{*this, "druckformat", {"Hochformat", "Querformat"}};
    Label LinkerRand{*this, "LinkerRand", "Linker Rand ="};
    TextBox tz{*this, "tz"};
    Label Zeichen{*this, "Zeichen", "Zeichen"};
    Button drucken{*this, "drucken", "&Text drucken"};
    Button dateidrucken{*this, "dateidrucken", "&Datei drucken"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button abbv{*this, "abbv", "&Schließen"};

    /// The font of `t`. The window follows it.
    struct Schrift {
        QString name;
        int punkt = 10;
        bool fett = false;
        bool kursiv = false;
    };
    const Schrift& schrift() const { return m_schrift; }
    std::function<void()> schriftChanged;

    /// What would be printed now: the whole file, or the text where it has been edited.
    Drawing druckbild() const;

private:
    void Load() override;
    void drucken_Click();
    void dateidrucken_Click();
    void abbv_Click();
    void kom_Click();
    void kon_Click();
    void gr_e_LostFocus();
    void tz_LostFocus();

    void connectHandlers();
    void ladeEinstellungen();
    void waehleSchriftart();
    void ladeDatei();
    void setzeGroesse(int points);
    void zeigeSchrift();
    QString randtext() const;
    std::unique_ptr<PrintJob> beginneDruck();
    void richteEin(PrintJob& job) const;
    void drucke(PrintJob& job, const QString& line) const;
    void druckeText(PrintJob& job) const;

    Schrift m_schrift;
    QString m_geladen;  ///< the text as it came from the file
    QString m_drucker;  ///< the printer chosen last; "" the standard one
};

}  // namespace koben

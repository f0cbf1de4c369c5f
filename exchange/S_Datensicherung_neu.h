#pragma once
#include <array>

#include "exchange/Sicherung.h"
#include "exchange/Sicherungsstand.h"
#include "forms/Form.h"

namespace koben {

/// "Datensicherung": a wizard that packs the data folder into the ZIP of the day, copies it to a stick and into a cloud
/// folder, and brings an earlier one back, after which the program ends.
class S_Datensicherung_neu final : public Form {
public:
    explicit S_Datensicherung_neu(Koben& koben);
    bool onlyToday() const override { return true; }

    enum Seite { Anfang, Laufwerk, Sichern, Cloud, Ende, Rettung };
    Tabs tabsicherung;
    ControlArray<Label> Label1{*this, "Label1", {"", "", "", "", "", ""}};  ///< what to do on each of the pages

    // the beginning
    CheckBox kon_backupkonzept{*this, "kon_backupkonzept", "Mit dem &Backup-Konzept (drei USB-Sticks) sichern"};
    Button cominfo{*this, "cominfo", "Das Backup-&Konzept"};
    Label letztwochenbackup{*this, "letztwochenbackup"};
    Label letztmonatsbackup{*this, "letztmonatsbackup"};
    Label letztjahresbackup{*this, "letztjahresbackup"};
    Label letztcloudbackup{*this, "letztcloudbackup"};
    Button start_sicherung{*this, "start_sicherung", "&Datensicherung starten"};
    Button start_rettung{*this, "start_rettung", "Datensicherung &zurückholen"};

    // the drive
    Label bild{*this, "bild"};  ///< the stick to plug in; the window paints it
    ComboBox drive1{*this, "drive1"};
    Button comlaufwerke{*this, "comlaufwerke", "Laufwerke &neu einlesen"};
    Label platz{*this, "platz"};  ///< free room of the chosen drive
    Button zurueck_laufwerkwahl{*this, "zurueck_laufwerkwahl", "< &Zurück"};
    Button weiter_laufwerkwahl{*this, "weiter_laufwerkwahl", "&Weiter >"};

    // the backup
    ListBox datei1{*this, "datei1"};  ///< the files of the data folder
    ListBox datei2{*this, "datei2"};  ///< the backups there
    ProgressBar meter{*this, "meter"};
    Button zurueck_backuperstellen{*this, "zurueck_backuperstellen", "< &Zurück"};
    Button weiter_backuperstellen{*this, "weiter_backuperstellen", "&Weiter >"};

    // the cloud
    TextBox sev_cloud{*this, "sev_cloud"};
    Button comcloud{*this, "comcloud", "&Hinweis zur Cloud"};
    Button zurueck_cloud{*this, "zurueck_cloud", "< &Zurück"};
    Button weiter_cloud{*this, "weiter_cloud", "&Weiter >"};

    // the end
    TextBox binfos{*this, "binfos"};  ///< what was done, line by line
    Button weiter_endebackup{*this, "weiter_endebackup", "&Weiter >"};

    // the way back
    ComboBox drive2{*this, "drive2"};
    Button comordner{*this, "comordner", "Anderer &Ordner..."};
    Button comtage{*this, "comtage", "&Tagesstände"};
    Label ordner{*this, "ordner"};  ///< whose backups are listed
    ListBox backups{*this, "backups"};
    Label vergleich{*this, "vergleich"};  ///< what would change if the marked one were read back
    Button zurueck_backuprettung{*this, "zurueck_backuprettung", "< &Zurück"};
    Button weiter_backuprettung{*this, "weiter_backuprettung", "&Weiter >"};

    Button abbv{*this, "abbv", "&Schließen"};

    /// The stick whose turn it is.
    const Stick& stick() const { return *m_stick; }

private:
    /// Parts of the protocol, in their order; what is done again is told once.
    enum Abschnitt { Begonnen, Ziel, Erstellt, Uebertragen, InCloud, Abschnitte };

    void Load() override;
    void start_sicherung_Click();
    void weiter_laufwerkwahl_Click();
    void weiter_backuperstellen_Click();
    void weiter_cloud_Click();
    void weiter_endebackup_Click();
    void cominfo_Click();
    void comcloud_Click();
    void abbv_Click();

    // the way back (S_Datensicherung_neu_Rettung.cpp)
    void start_rettung_Click();
    void drive2_Click();
    void comordner_Click();
    void comtage_Click();
    void backups_Click();
    void weiter_backuprettung_Click();
    void Backups_zeigen();
    QString Vergleich_text(const QString& path);

    void Seite_zeigen(int page);
    QString Einsteckaufforderung() const;
    bool Sicherung_schreiben(const QString& target);
    bool Auf_Laufwerk_kopieren();
    bool In_Cloud_kopieren(QString folder);
    std::optional<QString> uebertragen(const QString& to);
    void Laufwerke_lesen(ComboBox& list, QList<Drive> before, const QString& wanted);
    bool Datenlaufwerk(const ComboBox& list) const;
    void Dateien_zeigen();
    void Stand_zeigen();
    void Platz_zeigen();
    void protokoll(Abschnitt part, const QStringList& lines);
    QString heutige() const { return Sicherungsname(m_heute); }

    Sicherungsstand m_stand;
    QDate m_heute;
    const Stick* m_stick = &Gruen;
    QList<Drive> m_drives;  // those of the lists
    std::array<QStringList, Abschnitte> m_protokoll;
    QString m_ordner;  // of the listed backups, with a separator at the end
};

}  // namespace koben

#pragma once
// The main form: the herd list with its filters, search, counters and animal panel, and the doors to all other forms.
#include <array>
#include <map>

#include "core/Schnellzeile.h"
#include "forms/Form.h"
#include "forms/Koben.h"
#include "store/Watch.h"

namespace koben {

struct MenuRow;
class PrivateFolder;

/// A field whose Enter does what it says, and does not move on.
class EnterBox final : public TextBox {
public:
    using TextBox::TextBox;
    bool key(Key key) override {
        if (key != Key::Enter) return TextBox::key(key);
        act(onEnter);
        return true;
    }
    std::function<void()> onEnter;
};

class PA_Koben final : public Form, public HerdList {
public:
    explicit PA_Koben(Koben& koben);
    ~PA_Koben() override;

    OptionGroup optianzeige{*this, "optianzeige", {"Alle Tiere", "Sauen", "Eber", "Masttiere", "Absetzferkel"}};
    OptionGroup optiverkauft{*this, "optiverkauft", {"Bestand", "Abgang", "Alles"}};
    Label Label2{*this, "Label2", "Anzeige Sauen---"};
    OptionGroup optisauen{*this, "optisauen", {"Alle", "Belegt", "Tragend", "Säugend", "Güst", "Nicht tragend"}};
    Label Label1{*this, "Label1", "Suche Saunr---"};
    TextBox t{*this, "t"};
    Grid datali{*this, "datali", true};
    Button cmdok{*this, "cmdok", "Tierdaten &anzeigen"};
    ControlArray<Button> abwaerts{*this, "abwaerts", {"Nächstes Tier", "Vorheriges Tier"}};
    Button comdrucken{*this, "comdrucken", "Tierdaten drucken"};
    Button comlebenslauf{*this, "comlebenslauf", "Lebenslauf"};
    Button linksrechts{*this, "linksrechts", "Textfeldbreite ändern"};
    TextBox Text1{*this, "Text1"};
    Label bezstati{*this, "bezstati"};
    /// The herd as of another day: asks for it, says which one is shown, and leads back.
    Button comstand{*this, "comstand", "Stand vom ..."};
    Label standhinweis{*this, "standhinweis"};
    Button comheute{*this, "comheute", "Zurück zu heute"};
    /// What the start has found beside its questions and messages: damage, strange settings, a strange day.
    Label hinweis{*this, "hinweis"};
    /// Beside the question whether to delete: which animal, and how many bookings go with it.
    Label loeschhinweis{*this, "loeschhinweis"};
    /// The quick entry: a booking in one line, and the sentence that says what it would book.
    EnterBox schnell{*this, "schnell"};
    Label schnellsatz{*this, "schnellsatz"};

    /// The menu bar's menus and entries, the toolbar's buttons by key, and the context menu.
    const std::vector<MenuEntry*>& menuBar() const { return m_menuBar; }
    const std::vector<Button*>& toolBar() const { return m_toolBar; }
    MenuEntry popupliste{*this, "popupliste", "Tier"};
    ControlArray<MenuEntry> popzeile{
        *this,
        "popzeile",
        {"&Neu", "&Ändern", "&Löschen", "-", "Belegung", "Trächtigkeitsfeststellung", "Ferkelung", "Absetzung",
         "Verschiebung", "Verluste", "Ferkelverkauf", "Behandlung"}};

    /// Set by the window: lays list and panel out anew by Konfig_Zahl(58).
    std::function<void()> layoutChanged;
    /// Set by the window: it shows today's page beside the list, which then does not open by itself.
    bool showsTagesblick = false;

    Grid& herd() override { return datali; }
    void datenschweinelesen() override;
    void Stand_zeigen(const QString& entered) override;
    void closeBox() override;

    /// Whether there is no animal at all, in stock or gone; false as long as the list has not been read.
    bool Bestand_leer() const;
    /// What a scanner has read: finds the animal and opens its bookings of the kind in hand, with one tone for found
    /// and another for unknown. False where no animal of the list is called so.
    bool Scan(const QString& scanned);
    /// Hands the file with the technical side of errors to the system.
    void Fehlerprotokoll_zeigen();

private:
    struct Action {
        QString form;                   // form to open, "" for a handler
        std::function<void()> handler;  // instead of a form
        QString mode;                   // Buchungsmodus to set before
        int kind = -1;                  // Buchungsart_Nr to set before
        bool cycleAfter = false;        // the form may have changed the cycle
        bool available = true;          // its screen exists
        bool allowed = true;            // by the state of the list
    };

    void Load() override;
    void Activate() override;

    // start and end
    bool Landeseinstellungen_pruefen();
    void Drucker_pruefen();
    void Datenordner_suchen();
    void Datenbank_oeffnen();
    void Datenbank_neu();
    void Altbestand_umstellen();
    void Einstellungen_lesen();
    bool Abgebrochen(bool logLeft) const;
    void Seiten_pruefen_nach_Abbruch();
    void Daten_pruefen_nach_Abbruch();
    void Uhr_pruefen();
    void Hinweise_zeigen();
    void Sortierung_pruefen();
    void Erststart_hinweisen();
    void beenden();
    void Datensicherung_erinnern();

    // list
    void verbinden();
    QString listQuery(const std::vector<qint64>& only = {}) const;
    std::vector<Grid::Order> Listenordnung() const;
    bool Liste_auffrischen(const std::vector<qint64>& ids);
    std::optional<Table> Liste_lesen(const QString& sql);
    void Liste_zeigen(const Table& table);
    void Filter_zuruecknehmen();
    void zaehlen();
    void Filter_korrigieren();
    void Menue_Zustand_setzen();
    void Menues_sperren(bool on);
    void Tierdaten_ausgeben();
    QString Tierdaten_text();
    QString Buchungen_text(qint64 id);
    void t_Change();
    void comdrucken_Click();
    void abwaerts_Click(int index);
    void linksrechts_Click();

    // quick entry and scanner
    Schnellzeile Schnellzeile_deuten() const;
    void schnell_Enter();
    int Kennzeichen_suchen(const QString& scanned) const;

    // menu
    void buildMenu();
    void buildToolBar();
    void buildContextMenu();
    void run(const QString& entry);
    void popzeile_Click(int index);
    void allow(std::initializer_list<const char*> entries, bool on);
    void showStates();
    void Tier_loeschen();
    QString Loeschhinweis_text(qint64 id) const;
    QString Komprimierte_Datei() const;
    void Datenbank_komprimieren();

    // the herd as of another day
    /// What stands aside meanwhile.
    struct Heutiges;
    void Stand_erfragen();
    std::optional<Database> Stand_bilden(QDate day, const PrivateFolder& folder);
    void Zu_heute();
    void Stand_verlassen();
    void Stand_kennzeichnen();
    /// Makes an animal current and marks these, as far as the list has them.
    void Tiere_zeigen(const std::vector<qint64>& marked, qint64 current);
    bool Liste_neu_lesen(const std::vector<qint64>& marked, qint64 current);

    // selection and mass actions
    void Schweine_selektieren();
    void Selektierte_markieren();
    void Markierte_selektieren();
    void Stallnr_neu_zuordnen();
    void Ferkel_in_Mast();
    void Saunummern_verlaengern();
    std::optional<qint64> Nummern_verlaengern(int length);
    std::vector<qint64> markedAnimals(QStringView art = {}) const;
    QString countedMarks() const;
    bool setForAll(const std::vector<qint64>& animals, const QString& field, const QString& value);

    Database m_db;
    Watch m_watch;                         ///< of the animals, since the list was read
    QString m_gelesen;                     ///< the query that the list shows
    std::array<int, 3> m_filter = {};      ///< and the choices in which it was read
    std::shared_ptr<Heutiges> m_heutiges;  ///< while another day is shown
    std::vector<std::unique_ptr<MenuEntry>> m_menus;
    std::vector<std::unique_ptr<Button>> m_buttons;
    std::vector<MenuEntry*> m_menuBar;
    std::vector<Button*> m_toolBar;
    std::map<QString, Action> m_actions;      // by entry
    std::map<QString, QString> m_toolAction;  // toolbar key -> entry
    QStringList m_hinweise;                   ///< of this start
    QStringList m_einstellungshinweise;       ///< until the settings are agreed to or taken back
    bool m_neu = false;                       ///< the database was made by this start
    bool m_locked = false;
    bool m_started = false;
    bool m_closing = false;
};

}  // namespace koben

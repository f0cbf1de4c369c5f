#pragma once
// The shape of all entry screens of bookings: facts of the animal, the date, the fields of the kind, several animals at
// once, keywords, previous and next. A screen that follows it says only which fields it has and what is its own.
#include "bookings/PE_Bewegungsdaten.h"

namespace koben {

class Buchungseingabe : public Form {
public:
    ControlArray<Label> bezschwein{*this, "bezschwein", {"", "", "", "", "", "", "", "", "", "", "", ""}};
    TextBox tdat{*this, "tdat", 0};
    Button calender{*this, "calender", "Kalender", 0};
    Calendar calend{*this, "calend"};
    ControlArray<Button> ok{*this, "ok", {"&OK", "OK + &Vorheriger", "OK + &Nächster"}};
    Button abbrechen{*this, "abbrechen", "&Abbrechen"};
    ControlArray<Button> nextschwein{*this, "nextschwein", {"Voriges Tier", "Nächstes Tier"}};

    /// An input as the window shows it: its label, its control and what stands beside it, in the order of entry.
    struct Zeile {
        QString label;
        Control* control;
        SpinButton* spin = nullptr;
        Button* calender = nullptr;  ///< of a date; all dates of a screen share one calendar
    };
    const std::vector<Zeile>& zeilen() const { return m_zeilen; }
    const QString& rahmen() const { return m_rahmen; }

    ~Buchungseingabe() override;

protected:
    /// kind: 0 to 7; frame: title around the inputs.
    Buchungseingabe(Koben& koben, const QString& name, const QString& caption, int kind, const QString& frame);

    // The inputs, in the order of entry and of writing. One without a field is no part of the booking's row.

    /// Where the list of a text comes from, and what becomes of the text after a save.
    struct Quelle {
        QString sql;
        QString keywords = {};    ///< the keyword table that the text feeds
        bool grows = false;       ///< the text joins the list
        QStringList before = {};  ///< entries that stand before those of the query
    };
    Quelle Werte(const char* field) const;  ///< the values that the field holds already
    static Quelle Stichworte(const char* table, const char* sql);
    static Quelle Bemerkungen();     ///< the remarks of the master data
    static Quelle Verlustgruende();  ///< the four fixed reasons of a loss, then the others in use
    void text(const char* label, ComboBox& control, const char* field, int width, const Quelle& source);
    void freitext(const char* label, TextBox& control, const char* field, int width);
    void anzahl(const char* label, TextBox& control, const char* field, const QString& preset, SpinButton& spin,
                int least = 1, int most = 99);
    /// A date beside the booking's own; no date is no value.
    void datum(const char* label, TextBox& control, Button& button, const char* field);
    void betrag(const char* label, TextBox& control, const char* field);
    void gewicht(const char* label, TextBox& control, const char* field);
    void auswahl(const char* label, ComboBox& control, const char* field, const QStringList& items);
    void zeile(const char* label, Control& control, SpinButton* spin = nullptr);

    // What a screen may say itself.

    virtual QStringList pruefen() const;  ///< lines of failed rules
    virtual QString kopf() const;         ///< the heading above those lines, "" for none
    /// The rows of the animal list that the booking is for; nothing where the user called it off.
    virtual std::optional<std::vector<int>> tiere();
    virtual QString Sammelhinweis() const;  ///< what the question about several animals says further
    /// Messages and questions about each animal that come before anything is written.
    virtual void vorbereiten(const std::vector<int>& rows);
    /// Fields of an animal's row beside those of the inputs, before it is written.
    virtual void ergaenzen(Recordset& booking, int row) const;
    /// After each animal's row, within the same transaction; `bookings` stands on no record of use.
    virtual void gespeichert(Recordset& bookings, int row);
    /// Once a save, behind the last animal and within the same transaction.
    virtual void abschließen();
    virtual QStringList hinweise(const std::vector<int>& rows) const;  ///< what is said after the commit
    virtual void vorgeben();  ///< "Neu": the defaults of all inputs but the date
    virtual void fuellen();   ///< "Ändern": all inputs from the current booking
    void Load() override;
    void Activate() override;

    bool adding() const;         ///< "Neu"; otherwise "Ändern"
    bool dateEntered() const;    ///< the date field holds a date
    bool askWhetherAll() const;  ///< the question about several animals
    /// Sets the fields of a row that is being added or edited.
    void eintragen(Recordset& bookings, const Value& animal) const;
    /// Shows the count that the farrowing screen handed over, if it did.
    void Anzahl_uebernehmen(TextBox& count) const;
    /// Steps a count within `least` and `most`, then runs its leave rule.
    static void step(TextBox& field, int by, int least, int most = 99);

    PE_Bewegungsdaten& frame() const { return PE_Bewegungsdaten::behind(koben); }
    const int kind;
    Database m_db;

private:
    enum class Art { Text, Anzahl, Betrag, Gewicht, Datum };
    /// An input bound to a field of the kind's table.
    struct Feld {
        Art art;
        TextBox* control;
        QString field;
        QString preset;
    };
    struct Liste {
        ComboBox* control;
        Quelle source;
    };
    void bind(Art art, TextBox& control, const char* field, const QString& preset);
    void connectDate(TextBox& field, Button& button);
    void ok_Click(int index);
    bool speichern(const std::vector<int>& rows);
    void schreiben(Recordset& bookings, int row);
    void Stichworte_eintragen();
    void abbrechen_Click();
    void nextschwein_Click(int direction);
    void blaettern(int index);

    QString m_rahmen;
    TextBox* m_calendarFor = &tdat;
    std::vector<Feld> m_felder;
    std::vector<Liste> m_listen;
    std::vector<Zeile> m_zeilen;
};

}  // namespace koben

#pragma once
// Losses and trade of piglets of the whole farm: a list of all rows of a table with new, change, delete and copy to a
// date, and its entry screen. The piglets in stock and the arithmetic stand in units of their own.
#include "core/Buchungen.h"
#include "forms/Form.h"
#include "forms/Koben.h"
#include "store/Watch.h"

namespace koben {

/// The list: the newest row is current whenever it is shown.
class Ferkelliste : public Form {
public:
    Grid li{*this, "li"};
    Button neu{*this, "neu", "&Neu"};
    Button ändern{*this, "ändern", "&Ändern"};
    Button löschen{*this, "löschen", "&Löschen"};
    Button kopieren{*this, "kopieren", "&Kopieren"};
    Button cmdschließen{*this, "cmdschließen", "&Schließen"};

    const Buchungsart art;
    const QString table;
    qint64 currentRow() const { return li.value(li.row(), u"ID").toInt(); }
    /// Reads the current row again, in its place.
    void Zeile_auffrischen();
    /// Moves to the next (2) or previous (1) row, wrapping at the ends.
    void blaettern(int index);

protected:
    Ferkelliste(Koben& koben, const QString& name, const QString& caption, Buchungsart kind, const QString& entry);
    void Load() override;
    void Activate() override;

private:
    void neu_Click();
    void ändern_Click();
    void löschen_Click();
    void kopieren_Click();
    void li_Resized(int column);
    QString bookingName(const QString& done) const;
    void lesen();
    bool auffrischen(const std::vector<qint64>& ids);

    const QString m_entry;
    Database m_db;
    Watch m_watch;  // of the table, since the list was read
};

/// The entry screen. In "Neu" it adds rows, in "Ändern" it walks those of the list.
class Ferkeleingabe : public Form {
public:
    TextBox tdat{*this, "tdat"};
    Button calender{*this, "calender", "Kalender"};
    Calendar calend{*this, "calend"};
    ControlArray<Button> ok{*this, "ok", {"&OK", "OK + &Vorheriger", "OK + &Nächster"}};
    Button abbrechen{*this, "abbrechen", "&Abbrechen"};

    /// An input as the window shows it: its label, its control and its spin arrows, in the order of entry.
    struct Zeile {
        QString label;
        Control* control;
        SpinButton* spin = nullptr;
    };
    const std::vector<Zeile>& zeilen() const { return m_zeilen; }

protected:
    Ferkeleingabe(Koben& koben, const QString& name, const QString& caption);

    // The inputs, in the order of entry and of writing. One without a field is no part of the row and keeps its text.

    void anzahl(const char* label, TextBox& control, const char* field, SpinButton& spin);
    void betrag(const char* label, TextBox& control, const char* field);
    void gewicht(const char* label, TextBox& control, const char* field);
    /// `list` gives the entries; `keywords` is the keyword table that the text feeds, without one it joins the list.
    void text(const char* label, ComboBox& control, const char* field, int width, const char* list,
              const char* keywords = nullptr);

    /// The rules that an entry breaks: one line each, with the field to go back to.
    struct Maengel {
        QStringList lines;
        Control* first = nullptr;
        void add(Control& field, const QString& line);
    };

    // What a screen says itself.

    virtual void pruefen(Maengel& found) = 0;
    /// The questions before a save, and the sow that it belongs to, 0 for none; nothing where the user calls it off.
    virtual std::optional<qint64> einverstanden() = 0;
    /// After the row was written, within the same transaction.
    virtual void gespeichert() = 0;
    void Load() override;
    void Activate() override;

    bool adding() const { return koben.Buchungsmodus != u"Ändern"; }
    /// A count of the list's current row: what a changed booking had taken before; 0 in "Neu".
    double bisher(QStringView field) const;
    Database m_db;

private:
    enum class Art { Text, Anzahl, Betrag, Gewicht };
    struct Feld {
        Art art;
        TextBox* control;
        QString field;  // "" for none
    };
    struct Auswahl {
        ComboBox* control;
        QString list, keywords;
    };
    void add(Art art, const char* label, TextBox& control, const char* field, SpinButton* spin = nullptr);
    void vorgeben();
    void fuellen();
    void ok_Click(int index);
    bool speichern(qint64 sow);
    void schreiben(qint64 sow);
    void abbrechen_Click();

    Ferkelliste* m_liste = nullptr;  // the form behind; without one the screen closes at once
    std::vector<Feld> m_felder;
    std::vector<Auswahl> m_auswahlen;
    std::vector<Zeile> m_zeilen;
};

}  // namespace koben

#pragma once
// The master-data pair: a list with new, change, delete and list-out, and its entry screen with gathered rules and the
// way to the previous and next row. A form made of it says only what differs: table, columns, fields, rules.
#include <initializer_list>

#include "forms/Form.h"
#include "forms/Koben.h"
#include "forms/Liste.h"

namespace koben {

/// What a pair says about its table.
struct Stammdatenart {
    QString table;
    QString order;       ///< field that the list is sorted by
    QString entry;       ///< name of the entry form
    QStringList fields;  ///< shown columns, in order
    QString frame = {};  ///< caption of the frame around the check boxes of list-out; without one there is no list-out
    QString nothingToDelete = QStringLiteral(
        "Bitte wählen Sie erst den zu löschenden Datensatz aus. Mit der ENTF-Taste kann der ausgewählte Datensatz "
        "ebenfalls gelöscht werden!");
    bool lastRowCurrent = false;  ///< the last row becomes current whenever the list is shown; otherwise it stays
};

/// The list of the pair: all rows of the table, one line each.
class Stammdatenliste : public Form {
    const Stammdatenart m_kind;

public:
    /// `titles` name the shown columns; they are also the captions of the check boxes.
    Stammdatenliste(Koben& koben, const QString& name, const QString& caption, const Stammdatenart& kind,
                    std::initializer_list<const char*> titles);

    Grid li{*this, "li"};
    Button neu{*this, "neu", "&Neu"};
    Button ändern{*this, "ändern", "&Ändern"};
    Button löschen{*this, "löschen", "&Löschen"};
    Frame rahmenlist{*this, "rahmenlist", m_kind.frame};
    ControlArray<CheckBox> konlist;
    Button listen{*this, "listen", "L&isten"};
    Button cmdschließen{*this, "cmdschließen", "&Schließen"};
    Grid gridli{*this, "gridli"};
    MenuEntry popupliste{*this, "popupliste", "Liste"};
    ControlArray<MenuEntry> popzeile{*this, "popzeile", {"&Neu", "&Ändern", "-", "&Löschen", "-", "L&isten"}};

    const Stammdatenart& kind() const { return m_kind; }
    /// Reads the list anew; the current row stays current, found by its id.
    void refresh();
    /// Makes the next (+1) or previous (-1) row current, with wrap at the ends.
    void step(int direction);

protected:
    void Load() override;
    void Activate() override;

private:
    void connectHandlers();
    void neu_Click();
    void ändern_Click();
    void löschen_Click();
    void listen_Click();
    void li_Resized(int column);

    Database m_db;
};

/// The entry screen of the pair. In the mode "Neu" it adds a row and closes; in "Ändern" it edits the list's current
/// row and can go on to the previous or next one.
class Stammdateneingabe : public Form {
public:
    Stammdateneingabe(Koben& koben, const QString& name, const QString& caption, const char* nameLabel);

    Label beschriftung;
    TextBox t{*this, "t"};  ///< the name of the row
    ControlArray<Button> ok{*this, "ok", {"&OK", "OK + &Vorheriger", "OK + &Nächster"}};
    Button abbrechen{*this, "abbrechen", "&Abbrechen"};

protected:
    /// The rules that an entry breaks: one line each, with the field to go back to.
    class Findings {
    public:
        void add(Control& field, const QString& line);
        bool empty() const { return m_lines.isEmpty(); }

    private:
        friend class Stammdateneingabe;
        QStringList m_lines;
        Control* m_first = nullptr;
    };

    // what a pair says itself
    virtual void prepare() {}         ///< once after the connection is open: the entries of selection boxes
    virtual void showDefaults() = 0;  ///< the inputs of a new row
    virtual void showRow() = 0;       ///< the inputs from row(field)
    virtual void check(Findings& findings) = 0;
    virtual void write(Recordset& row) = 0;
    virtual void stored() {}  ///< after a row was stored, before the screen goes on

    bool adding() const;
    const Database& database() const { return m_db; }
    Value row(QStringView field) const;  ///< a value of the list's current row
    QString rowText(QStringView field) const;
    /// " and ID <> n" in the mode "Ändern", "" in "Neu": what a test for a second row of the same name leaves out.
    QString exceptThisRow() const;
    bool exists(const QString& select) const;
    /// The step of an up-down: the field's number plus `by`, held within least to most.
    static void stepField(TextBox& field, int by, int least, int most);

private:
    void Load() override;
    void Activate() override;
    void ok_Click(int index);
    void abbrechen_Click();
    void store();
    qint64 rowId() const { return row(u"ID").toInt(); }

    Stammdatenliste* m_list = nullptr;  // the form behind; without one the screen closes at once
    Database m_db;
};

}  // namespace koben

#pragma once
// The master-data pair: a list with new, change, delete and list-out, and its entry screen with gathered rules and the
// way to the previous and next row. A form made of it says only what differs: table, columns, fields, rules.
#include <initializer_list>

#include "forms/Eingabe.h"
#include "forms/Liste.h"

namespace koben {

/// What a pair says about its table.
struct Stammdatenart {
    QString noun;  ///< one row of it, in names of actions
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
class Stammdateneingabe : public Eingabe {
public:
    Stammdateneingabe(Koben& koben, const QString& name, const QString& caption, const char* nameLabel,
                      const char* nameColumn);

    Label beschriftung;
    TextBox t{*this, "t"};  ///< the name of the row
    ControlArray<Button> ok{*this, "ok", {"&OK", "OK + &Vorheriger", "OK + &Nächster"}};
    Button abbrechen{*this, "abbrechen", "&Abbrechen"};

protected:
    void Load() override;
    QString table() const override { return m_list->kind().table; }
    QString stored(const QString& column) const override;
    /// Whether another row meets this condition; in "Ändern" the row itself does not count.
    bool exists(const QString& condition) const;

private:
    void Activate() override;
    QString actionName() const override;
    void write(const Action& action) override;
    void refresh() override { m_list->refresh(); }
    void move(int index) override;
    qint64 rowId() const { return m_list->li.value(m_list->li.row(), u"ID").toInt(); }

    Stammdatenliste* m_list = nullptr;  // the form behind; without one the screen closes at once
};

}  // namespace koben

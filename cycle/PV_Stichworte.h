#pragma once
// The keywords that feed the selection boxes: seven tables of one text field, maintained in place in the list.
#include <optional>

#include "forms/Form.h"
#include "forms/Koben.h"
#include "forms/Zurueck.h"

namespace koben {

class PV_Stichworte final : public Form, public ReadsAnew {
public:
    explicit PV_Stichworte(Koben& koben);

    OptionGroup opti{*this,
                     "opti",
                     {"Gruppen", "Rassen", "Stallnummern", "Zugangsgründe", "Abgangsgründe", "Kunden", "Bemerkungen"}};
    Grid li{*this, "li"};
    Label hinweis{*this, "hinweis",
                  "Bitte schließen Sie jede Neueingabe und Änderung mit der Eingabetaste oder TAB-Taste ab."};
    Button neu{*this, "neu", "&Neu"};
    Button ändern{*this, "ändern", "&Ändern"};
    Button löschen{*this, "löschen", "&Löschen"};
    Button comlisten{*this, "comlisten", "L&isten"};
    Button comhilfe{*this, "comhilfe", "&Hilfe"};
    Button cmdschließen{*this, "cmdschließen", "&Schließen"};
    Grid gridli{*this, "gridli"};
    ControlArray<MenuEntry> popzeile{*this, "popzeile", {"Neu", "Ändern", "-", "Löschen"}};

private:
    /// The one row whose cell is not what the table holds: a new row before its first entry is accepted, or a text
    /// that was refused and waits to be corrected.
    struct Draft {
        QString shown;
        std::optional<QString> stored;  ///< what the table holds for it; nothing for a new row
    };

    void Load() override;
    void readAnew() override;
    void connectHandlers();
    void read();
    void neu_Click();
    void ändern_Click();
    void löschen_Click();
    void comlisten_Click();
    void li_Edited(int row, const QString& typed);

    QString table() const;
    int width() const;
    void openEditor(int row);
    bool isDraft(const QString& shown) const { return m_draft && m_draft->shown == shown; }
    /// What the table holds for a row that shows this text; nothing for a new one.
    std::optional<QString> storedFor(const QString& shown) const;
    QString shownBefore(int row) const;
    void remember();
    void refuseEmpty(int row, const QString& before);
    void refuseLong(int row, const QString& before, const QString& typed);
    int keepAsDraft(int row, const QString& before, const QString& typed);
    void dropDraft();
    void store(const std::optional<QString>& before, const QString& text);

    Database m_db;
    std::optional<Draft> m_draft;
    QStringList m_shown;  // the texts of all rows, sorted, as they stood before the next edit
};

}  // namespace koben

#pragma once
// Losses and trade of piglets of the whole farm: a list of all rows of a table with new, change, delete and copy to a
// date. Its entry screen, the piglets in stock and the arithmetic stand in units of their own.
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

}  // namespace koben

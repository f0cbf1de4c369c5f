#include "forms/Stammdaten.h"

#include <algorithm>

#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

constexpr int LeastWidth = 25;  // pixels; a narrower column would be lost to the mouse

}  // namespace

// ---------------------------------------------------------------------------------------------------- the list

Stammdatenliste::Stammdatenliste(Koben& koben_, const QString& name, const QString& caption, const Stammdatenart& kind,
                                 std::initializer_list<const char*> titles)
    : Form(koben_, name, caption), m_kind(kind), konlist(*this, QStringLiteral("konlist"), titles) {
    int field = 0;
    for (const char* title : titles)
        li.addColumn({.key = m_kind.fields.at(field++), .title = QString::fromUtf8(title)});
    li.addColumn({.key = QStringLiteral("ID"), .title = QString(), .technical = true});
    gridli.setVisible(false);
    if (m_kind.frame.isEmpty()) {
        for (auto& box : konlist) box->setVisible(false);
        for (int entry : {4, 5}) popzeile[entry].setVisible(false);
        rahmenlist.setVisible(false);
        listen.setVisible(false);
    }
    helpTopic = this->name();
    cancelButton = &cmdschließen;
    connectHandlers();
}

void Stammdatenliste::connectHandlers() {
    neu.onClick = popzeile[0].onClick = [this] { neu_Click(); };
    ändern.onClick = popzeile[1].onClick = li.onDoubleClick = [this] { ändern_Click(); };
    löschen.onClick = popzeile[3].onClick = li.onDelete = [this] { löschen_Click(); };
    listen.onClick = popzeile[5].onClick = [this] { listen_Click(); };
    li.onResized = [this](int column) { li_Resized(column); };
    cmdschließen.onClick = [this] {
        m_db.close();
        close();
    };
}

void Stammdatenliste::Load() {
    m_db = koben.connect();
    koben.restoreWidths(li, name().toLower());
}

void Stammdatenliste::Activate() {
    refresh();
    if (m_kind.lastRowCurrent) li.setRow(li.rowCount());
}

void Stammdatenliste::refresh() {
    const qint64 current = li.value(li.row(), u"ID").toInt();
    li.bind(m_db.table(QStringLiteral("select * from %1 order by %2").arg(m_kind.table, m_kind.order)));
    if (li.sortColumn() > 0) li.sort(li.sortColumn(), li.sortDirection());
    for (int row = 1; current != 0 && row <= li.rowCount(); ++row)
        if (li.value(row, u"ID").toInt() == current) return li.setRow(row);
}

void Stammdatenliste::step(int direction) {
    if (li.rowCount() == 0) return;
    const int row = li.row() + direction;
    li.setRow(row < 1 ? li.rowCount() : row > li.rowCount() ? 1 : row);
}

void Stammdatenliste::neu_Click() {
    koben.Buchungsmodus = QStringLiteral("Neu");
    koben.open(m_kind.entry);
}

void Stammdatenliste::ändern_Click() {
    if (li.row() == 0)
        return koben.message(QStringLiteral("Bitte markieren Sie zuerst den Datensatz, den Sie ändern möchten."));
    koben.Buchungsmodus = QStringLiteral("Ändern");
    koben.open(m_kind.entry);
}

void Stammdatenliste::löschen_Click() {
    if (li.row() == 0) return koben.message(m_kind.nothingToDelete);
    if (!koben.Loeschen_bestaetigen()) return;
    const qint64 id = li.value(li.row(), u"ID").toInt();
    Action action(m_db, QStringLiteral("%1 %2 gelöscht").arg(m_kind.noun, li.cell(li.row(), 1)));
    m_db.execute(QStringLiteral("delete from %1 where ID = %2").arg(m_kind.table).arg(id));
    action.commit();
    li.removeRow(li.row());
}

void Stammdatenliste::listen_Click() {
    tickAllIfNone(konlist);
    takeTicked(gridli, li, konlist);
    Liste_ausgeben(koben, gridli);
}

void Stammdatenliste::li_Resized(int column) {
    li.column(column).width = std::max(li.column(column).width, LeastWidth);
    li.columnsChanged();
    koben.saveWidths(li, name().toLower());
}

// --------------------------------------------------------------------------------------------- the entry screen

Stammdateneingabe::Stammdateneingabe(Koben& koben_, const QString& name, const QString& caption, const char* nameLabel,
                                     const char* nameColumn)
    : Eingabe(koben_, name, caption),
      beschriftung(*this, QStringLiteral("beschriftung"), QString::fromUtf8(nameLabel)) {
    constexpr int NameWidth = 20;  // in all tables of this shape
    freeText(beschriftung.text(), t, QString::fromUtf8(nameColumn), NameWidth);
    t.onLostFocus = [this] { t.setText(t.text().trimmed()); };
    connectButtons(ok, abbrechen);
    helpTopic = this->name();
}

void Stammdateneingabe::Load() {
    const auto& open = koben.stack();
    if (open.size() > 1) m_list = dynamic_cast<Stammdatenliste*>(open[open.size() - 2]);
    if (!m_list) return close();
    Eingabe::Load();
    ok[1].setVisible(!adding());
    ok[2].setVisible(!adding());
}

void Stammdateneingabe::Activate() {
    if (adding())
        showPresets();
    else
        showStored();
    t.setFocus();
}

QString Stammdateneingabe::stored(const QString& column) const {
    return Hochkomma_ersetzen(m_list->li.value(m_list->li.row(), column));
}

bool Stammdateneingabe::exists(const QString& condition) const {
    const QString others = adding() ? QString() : QStringLiteral(" and ID <> %1").arg(rowId());
    return m_db.open(QStringLiteral("select * from %1 where %2%3").arg(table(), condition, others)).recordCount() != 0;
}

QString Stammdateneingabe::actionName() const {
    return QStringLiteral("%1 %2 %3")
        .arg(m_list->kind().noun, Hochkomma_ersetzen(t.text()),
             adding() ? QStringLiteral("neu") : QStringLiteral("geändert"));
}

void Stammdateneingabe::write(const Action& action) {
    Recordset row = action.database().open(
        QStringLiteral("select * from %1 where ID = %2").arg(table()).arg(adding() ? 0 : rowId()));
    if (adding())
        row.addNew();
    else
        row.edit();
    writeFields(row);
    row.update();
}

void Stammdateneingabe::move(int index) {
    if (index > 0) m_list->step(index == 1 ? -1 : 1);
}

}  // namespace koben

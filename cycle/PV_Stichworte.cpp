#include "cycle/PV_Stichworte.h"

#include <algorithm>
#include <array>

#include "core/PZ_Koben_Subs.h"
#include "forms/Stammdaten.h"
#include "store/Action.h"

namespace koben {

namespace {

// by option
constexpr std::array Tables{u"Gruppe",       u"Rasse", u"Stallnummer", u"Zugangsgrund",
                            u"Abgangsgrund", u"Kunde", u"Bemerkung"};

/// Stands `rows` on the record that holds exactly this text; false where there is none. Records of equal text need not
/// be told apart, since the text is all they have.
bool moveTo(Recordset& rows, const QString& text) {
    if (rows.recordCount() == 0) return false;
    for (rows.moveFirst(); !rows.eof(); rows.moveNext())
        if (rows.value(0).toText() == text) return true;
    return false;
}

}  // namespace

PV_Stichworte::PV_Stichworte(Koben& koben_) : Form(koben_, "PV_Stichworte", "Stichwörter") {
    li.addColumn({.key = "Inhalt", .title = "Inhalt"});
    gridli.setVisible(false);
    helpTopic = name();
    cancelButton = &cmdschließen;
    connectHandlers();
}

void PV_Stichworte::connectHandlers() {
    opti.onClick = [this](int) { read(); };
    neu.onClick = popzeile[0].onClick = [this] { neu_Click(); };
    ändern.onClick = popzeile[1].onClick = li.onDoubleClick = [this] { ändern_Click(); };
    löschen.onClick = popzeile[3].onClick = li.onDelete = [this] { löschen_Click(); };
    comlisten.onClick = [this] { comlisten_Click(); };
    comhilfe.onClick = [this] { koben.open("PH_Hilfe"); };
    cmdschließen.onClick = [this] {
        m_db.close();
        close();
    };
    li.canEdit = [](int, int) { return true; };
    li.onEdited = [this](int row, int, const QString& text) { li_Edited(row, text); };
    li.onResized = [this](int) { koben.saveWidths(li, name().toLower()); };
}

void PV_Stichworte::Load() {
    m_db = koben.connect();
    koben.restoreWidths(li, name().toLower());
    opti.select(0);
    read();
}

QString PV_Stichworte::table() const {
    return "Stammdaten_" + QString::fromUtf16(Tables[static_cast<size_t>(opti.selected())]);
}

/// Characters that the table holds for one keyword.
int PV_Stichworte::width() const { return m_db.fields(table()).front().size; }

void PV_Stichworte::read() {
    m_draft.reset();
    li.clearRows();
    const Table rows = m_db.table(QStringLiteral("select * from %1 order by Inhalt").arg(table()));
    for (int row = 0; row < rows.rowCount(); ++row) {
        li.addRow({rows.text(row, 0)});
    }
    remember();
}

/// Stays on its word, or on its row.
void PV_Stichworte::readAnew() {
    const int before = li.row();
    const QString word = li.cell(before, 1);
    read();
    const int row = li.findText(u"Inhalt", word);
    li.setRow(row > 0 ? row : std::min(before, li.rowCount()));
}

// ------------------------------------------------------------------------------------------------------------ buttons

void PV_Stichworte::openEditor(int row) {
    li.setRow(row);
    if (li.startEdit) li.startEdit(row, 1);
}

void PV_Stichworte::neu_Click() {
    dropDraft();
    li.addRow({QString()});
    m_draft = Draft{};
    remember();
    openEditor(li.rowCount());
}

void PV_Stichworte::ändern_Click() {
    if (li.row() == 0) return koben.message("Bitte markieren Sie zuerst den zu ändernden Datensatz!");
    openEditor(li.row());
}

void PV_Stichworte::löschen_Click() {
    const int row = li.row();
    if (row == 0)
        return koben.message(
            "Bitte wählen Sie erst den zu löschenden Datensatz aus. Mit der ENTF-Taste kann der ausgewählte Datensatz "
            "ebenfalls gelöscht werden!");
    const auto stored = storedFor(li.cell(row, 1));
    if (stored) {
        if (!koben.Loeschen_bestaetigen()) return;
        Action action(m_db, QStringLiteral("Stichwort %1 gelöscht").arg(*stored));
        Recordset rows = m_db.open("select * from " + table());
        if (moveTo(rows, *stored)) rows.remove();
        action.commit();
    }
    if (isDraft(li.cell(row, 1))) m_draft.reset();
    li.removeRow(row);
    remember();
}

void PV_Stichworte::comlisten_Click() {
    gridli.clear();
    gridli.addColumn(li.column(1));
    for (int row = 1; row <= li.rowCount(); ++row)
        if (const auto text = storedFor(li.cell(row, 1))) gridli.addRow({*text});
    Liste_ausgeben(koben, gridli);
}

// --------------------------------------------------------------------------------------------------- typing in place

std::optional<QString> PV_Stichworte::storedFor(const QString& shown) const {
    return isDraft(shown) ? m_draft->stored : shown;
}

void PV_Stichworte::remember() {
    m_shown.clear();
    for (int row = 1; row <= li.rowCount(); ++row) m_shown.append(li.cell(row, 1));
    m_shown.sort();
}

/// The text that a row showed before it was edited: the one that no other row shows.
QString PV_Stichworte::shownBefore(int row) const {
    QStringList others;
    for (int other = 1; other <= li.rowCount(); ++other)
        if (other != row) others.append(li.cell(other, 1));
    others.sort();
    return *std::mismatch(others.begin(), others.end(), m_shown.begin()).second;
}

void PV_Stichworte::li_Edited(int row, const QString& typed) {
    const QString before = shownBefore(row);
    const QString text = Hochkomma_ersetzen(withoutControls(typed));
    if (text.isEmpty()) return refuseEmpty(row, before);
    if (text.size() > width()) return refuseLong(row, before, typed);
    try {
        store(storedFor(before), text);
    } catch (...) {  // told by whoever runs the form; what was typed stays in the list
        keepAsDraft(row, before, typed);
        throw;
    }
    if (isDraft(before)) m_draft.reset();
    li.setCell(row, 1, text);
    remember();
}

/// The row shows what was typed, beside what the table holds for it. An unfinished row that is another one is given up;
/// the number of this one afterwards.
int PV_Stichworte::keepAsDraft(int row, const QString& before, const QString& typed) {
    const auto stored = storedFor(before);
    if (m_draft && !isDraft(before)) {
        dropDraft();
        row = li.findText(u"Inhalt", typed);
    }
    m_draft = Draft{typed, stored};
    remember();
    return row;
}

/// A new row that stays empty goes again; a keyword keeps its text.
void PV_Stichworte::refuseEmpty(int row, const QString& before) {
    const auto stored = storedFor(before);
    if (isDraft(before)) m_draft.reset();
    if (stored)
        li.setCell(row, 1, *stored);
    else
        li.removeRow(row);
    remember();
    if (stored)
        koben.message(
            "Ein Stichwort kann nicht leer sein. Das bisherige Stichwort bleibt deshalb erhalten. Zum Entfernen "
            "benutzen Sie bitte \"Löschen\".");
}

/// The typed text stays in the list, to be shortened; the table keeps what it holds.
void PV_Stichworte::refuseLong(int row, const QString& before, const QString& typed) {
    row = keepAsDraft(row, before, typed);
    koben.message(QStringLiteral("Das Stichwort \"%1\" ist mit %2 Zeichen zu lang und wurde noch nicht gespeichert. Es "
                                 "sind höchstens %3 Zeichen möglich. Bitte kürzen Sie die Eingabe.")
                      .arg(typed)
                      .arg(Hochkomma_ersetzen(typed).size())
                      .arg(width()));
    openEditor(row);
}

/// Gives an unfinished row up: a new one goes, a changed one shows again what the table holds.
void PV_Stichworte::dropDraft() {
    for (int row = 1; m_draft && row <= li.rowCount(); ++row) {
        if (!isDraft(li.cell(row, 1))) continue;
        const auto stored = m_draft->stored;
        m_draft.reset();
        if (stored)
            li.setCell(row, 1, *stored);
        else
            li.removeRow(row);
    }
}

/// Writes an edited cell: a new record, or the one that held the text before.
void PV_Stichworte::store(const std::optional<QString>& before, const QString& text) {
    if (before == text) return;
    Action action(m_db, QStringLiteral("Stichwort %1 %2").arg(text, before ? "geändert" : "neu"));
    Recordset rows = m_db.open("select * from " + table());
    if (before && moveTo(rows, *before))
        rows.edit();
    else
        rows.addNew();
    rows.set(0, text);
    rows.update();
    action.commit();
}

}  // namespace koben

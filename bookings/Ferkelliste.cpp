#include "bookings/Ferkelliste.h"

#include "core/Aktionsnamen.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

constexpr int LeastWidth = 25;      // pixels; a narrower column would be lost to the mouse
constexpr size_t MostSingly = 500;  // changed rows that are not worth reading the whole list anew

/// "Stück_Gewicht_kg" as a reader has it.
QString captionOf(QString field) {
    field.replace(QStringLiteral("_kg"), QStringLiteral(" (kg)"));
    return field.replace(u'_', u' ');
}

}  // namespace

Ferkelliste::Ferkelliste(Koben& context, const QString& name, const QString& caption, Buchungsart kind,
                         const QString& entry)
    : Form(context, name, caption), art(kind), table(QString::fromUtf8(angaben(kind).table)), m_entry(entry) {
    neu.onClick = [this] { neu_Click(); };
    ändern.onClick = li.onDoubleClick = [this] { ändern_Click(); };
    löschen.onClick = li.onDelete = [this] { löschen_Click(); };
    kopieren.onClick = [this] { kopieren_Click(); };
    li.onResized = [this](int column) { li_Resized(column); };
    cmdschließen.onClick = [this] {
        m_db.close();
        close();
    };
    acceptButton = &neu;
    cancelButton = &cmdschließen;
}

void Ferkelliste::Load() {
    m_db = koben.connect();
    m_watch = Watch(m_db, table);
}

void Ferkelliste::Activate() {
    const auto changed = m_watch.take(MostSingly);
    if (!changed || !auffrischen(*changed)) lesen();
    if (li.rowCount() > 0) li.setRow(li.rowCount());
}

void Ferkelliste::lesen() {
    li.clear();
    li.bind(m_db.table(QStringLiteral("select * from %1 order by Datum").arg(table)));
    for (int c = 1; c <= li.columnCount(); ++c) {
        Column& column = li.column(c);
        column.caption = captionOf(column.key);
        column.technical = column.key == u"ID" || column.key == u"Kennung";
    }
    koben.restoreWidths(li, name().toLower());
}

/// Brings these rows of the list up to date; false where it must be read whole.
bool Ferkelliste::auffrischen(const std::vector<qint64>& ids) {
    if (li.sortColumn() != 0) return false;
    QStringList wanted(QStringLiteral("0"));
    for (const qint64 id : ids) wanted += QString::number(id);
    const Table rows = m_db.table(QStringLiteral("select * from %1 where ID in (%2)").arg(table, wanted.join(u',')));
    return li.refresh(rows, ids, u"ID", {{li.columnOf(u"Datum")}});
}

void Ferkelliste::Zeile_auffrischen() {
    const Table row = m_db.table(QStringLiteral("select * from %1 where ID = %2").arg(table).arg(currentRow()));
    if (row.rowCount() == 0) return;
    for (int c = 1; c <= li.columnCount(); ++c) li.setCell(li.row(), c, row.text(0, row.columnOf(li.column(c).key)));
}

void Ferkelliste::neu_Click() {
    koben.Buchungsmodus = QStringLiteral("Neu");
    koben.open(m_entry);
}

void Ferkelliste::ändern_Click() {
    if (li.row() == 0)
        return koben.message(QStringLiteral("Bitte markieren Sie zuerst den Datensatz, den Sie ändern möchten."));
    koben.Buchungsmodus = QStringLiteral("Ändern");
    koben.open(m_entry);
}

void Ferkelliste::löschen_Click() {
    if (li.row() == 0)
        return koben.message(QStringLiteral("Bitte markieren Sie zuerst den Datensatz, den Sie löschen möchten."));
    if (!koben.Loeschen_bestaetigen()) return;
    Action action(m_db, bookingName(QStringLiteral("gelöscht")));
    Buchung_loeschen(action, art, currentRow(), 0);
    action.commit();
    li.removeRow(li.row());
}

void Ferkelliste::kopieren_Click() {
    if (li.row() == 0)
        return koben.message(
            QStringLiteral("Bitte markieren Sie zuerst einen Datensatz, der kopiert werden "
                           "soll!"));
    const QString answer =
        koben.screens
            .input(QStringLiteral("Bitte geben Sie das Datum ein, unter dem die Kopie angelegt werden soll!"), {},
                   QStringLiteral("Datum-Eingabe"))
            .trimmed();
    if (answer.isEmpty()) return;
    const QString date = Datum_ergaenzen(answer, koben.Heute);
    if (!Ist_Datum(date))
        return koben.message(
            QStringLiteral("Es wird keine Kopie erstellt, weil das Datum nicht korrekt "
                           "ist!"));
    const qint64 id = currentRow();
    Action action(m_db, bookingName(QStringLiteral("auf %1 kopiert").arg(date)));
    Buchung_kopieren(action, art, id, Datum_aus_Text(date), 0);
    action.commit();
    Activate();
    const int column = li.columnOf(u"ID");
    for (int row = 1; row <= li.rowCount(); ++row)
        if (li.integer(row, column) == id) return li.setRow(row);
}

/// The booking by its sow's number, where it has one.
QString Ferkelliste::bookingName(const QString& done) const {
    const auto any = [this](QStringView field) { return li.value(li.row(), field).toInt() != 0; };
    return Handelsname(Buchungsname(art, li.cell(li.row(), u"Muttersau"), li.cell(li.row(), u"Datum"), done),
                       any(u"Anzahl_Einkauf"), any(u"Anzahl_Verkauf"));
}

void Ferkelliste::li_Resized(int column) {
    li.column(column).width = std::max(li.column(column).width, LeastWidth);
    li.columnsChanged();
    koben.saveWidths(li, name().toLower());
}

}  // namespace koben

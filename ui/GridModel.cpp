#include "ui/GridModel.h"

#include <QHash>

namespace koben::ui {

void GridModel::refresh(bool columnsToo) {
    if (!columnsToo && m_rows == m_grid.rowCount() && m_columns == m_grid.columnCount()) return;
    beginResetModel();
    m_rows = m_grid.rowCount();
    m_columns = m_grid.columnCount();
    endResetModel();
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    // Between a change of the grid and the refresh the view may still ask for what has gone.
    if (index.row() >= m_grid.rowCount() || index.column() >= m_grid.columnCount()) return {};
    const int row = index.row() + 1, column = index.column() + 1;
    switch (role) {
        case Qt::DisplayRole:
            return m_grid.isSeparator(row) ? QString() : shown(m_grid, row, column);
        case Qt::EditRole:
            return m_grid.cell(row, column);
        case Qt::TextAlignmentRole:
            return QVariant(alignment(m_grid.column(column)));
        case Qt::AccessibleDescriptionRole:
            return m_grid.marked(row)          ? QStringLiteral("markiert")
                   : urgent && urgent(row - 1) ? QVariant(urgentWord)
                                               : QVariant();
        default:
            return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        if (role != Qt::DisplayRole || section >= m_grid.rowCount()) return {};
        const QString title = m_grid.rowTitle ? m_grid.rowTitle(section + 1) : QString();
        return title.isEmpty() ? QString::number(section + 1) : title;
    }
    if (section >= m_grid.columnCount()) return {};
    const Column& column = m_grid.column(section + 1);
    switch (role) {
        case Qt::DisplayRole:
            return caption(column);
        case Qt::ToolTipRole:
            return column.title == caption(column) ? QVariant() : QVariant(column.title);
        case Qt::TextAlignmentRole:
            return QVariant(alignment(column));
        default:
            return {};
    }
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (m_grid.canEdit && index.row() < m_grid.rowCount() && m_grid.canEdit(index.row() + 1, index.column() + 1))
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || index.row() >= m_grid.rowCount()) return false;
    return m_grid.editByUser(index.row() + 1, index.column() + 1, value.toString());
}

QString GridModel::caption(const Column& column) {
    if (!column.caption.isEmpty()) return column.caption;
    static const QHash<QString, QString> words{
        {QStringLiteral("Beleg_Nr"), QStringLiteral("Beleg")},
        {QStringLiteral("Belegungart"), QStringLiteral("Belegungsart")},
        {QStringLiteral("Belegungsstation"), QStringLiteral("Besamungsstation")},
        {QStringLiteral("Ebernr"), QStringLiteral("Eber")},
        {QStringLiteral("Ferkel_Gesamt"), QStringLiteral("Ferkel gesamt")},
        {QStringLiteral("Ferkel_Lebendig"), QStringLiteral("davon lebend")},
        {QStringLiteral("Ferkel_Tot"), QStringLiteral("davon tot")},
        {QStringLiteral("LNr"), QStringLiteral("Wurf")},
        {QStringLiteral("LNrJahr"), QStringLiteral("Wurf im Jahr")},
        {QStringLiteral("Stück_Gewicht_kg"), QStringLiteral("Stückgewicht (kg)")},
        {QStringLiteral("Wartezeit_Datum"), QStringLiteral("Wartezeit bis")},
        {QStringLiteral("Wartezeit_Tage"), QStringLiteral("Wartezeit (Tage)")},
        {QStringLiteral("Zu_Saunr"), QStringLiteral("zu Sau")}};
    if (const auto word = words.constFind(column.title); word != words.constEnd()) return *word;
    QString title = column.title;
    title.replace(QStringLiteral("_kg"), QStringLiteral(" (kg)"))
        .replace(QStringLiteral("Anz_"), QStringLiteral("Anzahl "));
    return title.replace(u'_', u' ');
}

QString GridModel::shown(const Grid& grid, int row, int column) {
    QString text = grid.cell(row, column);
    if (text.isEmpty() || !std::holds_alternative<Money>(grid.value(row, column).variant())) return text;
    const auto comma = text.indexOf(u',');
    if (comma < 0) return text + QStringLiteral(",00");
    return comma == text.size() - 2 ? text + u'0' : text;
}

Qt::Alignment GridModel::alignment(const Column& column) {
    switch (column.align) {
        case Align::Right:
            return Qt::AlignRight | Qt::AlignVCenter;
        case Align::Centre:
            return Qt::AlignHCenter | Qt::AlignVCenter;
        case Align::Left:
            break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

}  // namespace koben::ui

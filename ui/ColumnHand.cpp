#include "ui/ColumnHand.h"

#include <QMenu>
#include <algorithm>
#include <numeric>

#include "forms/Form.h"
#include "forms/Koben.h"
#include "ui/GridModel.h"

namespace koben::ui {

const QString listSection = QStringLiteral("Listen");

namespace {

/// The run of digits or of other characters that begins at `from`.
QStringView run(QStringView text, qsizetype from) {
    qsizetype to = from;
    while (to < text.size() && text[to].isDigit() == text[from].isDigit()) ++to;
    return text.mid(from, to - from);
}

int compareDigits(QStringView a, QStringView b) {
    const auto plain = [](QStringView digits) {
        while (digits.size() > 1 && digits.front() == u'0') digits = digits.mid(1);
        return digits;
    };
    const QStringView x = plain(a), y = plain(b);
    if (x.size() != y.size()) return x.size() < y.size() ? -1 : 1;
    const int order = x.compare(y);
    return order != 0 ? order : static_cast<int>(a.size() - b.size());
}

}  // namespace

int compareNaturally(const QString& a, const QString& b) {
    qsizetype i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        const QStringView x = run(a, i), y = run(b, j);
        const bool digits = x.front().isDigit() && y.front().isDigit();
        const int order = digits ? compareDigits(x, y) : x.compare(y, Qt::CaseInsensitive);
        if (order != 0) return order;
        i += x.size();
        j += y.size();
    }
    return static_cast<int>((a.size() - i) - (b.size() - j));
}

ColumnHand::ColumnHand(QHeaderView& header, Grid& grid) : QObject(&header), m_header(header), m_grid(grid) {
    Platform& platform = grid.form().koben.platform;
    m_kept = platform.userSetting(listSection, key("Spalten")).split(u';', Qt::SkipEmptyParts);
    m_natural = platform.userSetting(listSection, key("Ordnung")) == u"Zahlen";
    header.setSectionsMovable(true);
    header.setFirstSectionMovable(true);
    connect(&header, &QHeaderView::sectionMoved, this, [this] {
        if (!m_applying) keep();
    });
}

QString ColumnHand::key(const char* what) const {
    return QStringLiteral("%1.%2.%3").arg(m_grid.form().name(), m_grid.address(), QString::fromUtf8(what));
}

/// The columns (from 0) in the user's order; one that he has never seen stands behind its neighbour.
std::vector<int> ColumnHand::wanted() const {
    std::vector<int> order;
    for (const QString& entry : m_kept)
        if (const int c = m_grid.columnOf(entry.startsWith(u'-') ? QStringView(entry).mid(1) : QStringView(entry)))
            if (std::find(order.begin(), order.end(), c - 1) == order.end()) order.push_back(c - 1);
    for (int c = 0; c < m_grid.columnCount(); ++c) {
        if (std::find(order.begin(), order.end(), c) != order.end()) continue;
        const auto before = std::find(order.begin(), order.end(), c - 1);
        order.insert(before == order.end() ? order.begin() : before + 1, c);
    }
    return order;
}

void ColumnHand::apply() {
    if (m_header.count() != m_grid.columnCount()) return;
    m_applying = true;
    int place = 0;
    for (const int column : wanted()) {
        m_header.moveSection(m_header.visualIndex(column), place++);
        const Column& c = m_grid.column(column + 1);
        const bool hide = c.technical || m_kept.contains(u'-' + c.key);
        if (m_header.isSectionHidden(column) != hide) m_header.setSectionHidden(column, hide);
    }
    m_applying = false;
}

/// Keys of columns that the list does not have now (another kind of booking, an older version) stay where they are.
void ColumnHand::keep() {
    QStringList now;
    for (int place = 0; place < m_header.count(); ++place) {
        const int column = m_header.logicalIndex(place);
        const Column& c = m_grid.column(column + 1);
        now.append(!c.technical && m_header.isSectionHidden(column) ? u'-' + c.key : c.key);
    }
    QStringList kept;
    for (const QString& entry : m_kept) {
        const bool present = m_grid.columnOf(entry.startsWith(u'-') ? QStringView(entry).mid(1) : entry) > 0;
        if (!present)
            kept.append(entry);
        else if (!now.isEmpty())
            kept.append(now.takeFirst());
    }
    m_kept = kept + now;
    m_grid.form().koben.platform.setUserSetting(listSection, key("Spalten"), m_kept.join(u';'));
}

void ColumnHand::setShown(int column, bool on) {
    m_header.setSectionHidden(column, !on);
    keep();
}

void ColumnHand::shift(int column, int by) {
    int place = m_header.visualIndex(column) + by;
    while (place >= 0 && place < m_header.count() && !shown(m_header.logicalIndex(place))) place += by;
    if (place >= 0 && place < m_header.count()) m_header.moveSection(m_header.visualIndex(column), place);
}

void ColumnHand::restore() {
    m_kept.clear();
    apply();
    m_grid.form().koben.platform.setUserSetting(listSection, key("Spalten"), QString());
}

void ColumnHand::orderNaturally() {
    const int column = m_grid.sortColumn();
    if (!m_natural || column == 0 || m_grid.column(column).sort != Sort::Text) return;
    std::vector<QString> cells;
    cells.reserve(static_cast<size_t>(m_grid.rowCount()));
    for (int row = 1; row <= m_grid.rowCount(); ++row) cells.push_back(m_grid.cell(row, column).trimmed());
    const bool down = m_grid.sortDirection() == 2;
    const auto before = [&](int a, int b) {
        const int order = compareNaturally(cells[static_cast<size_t>(a - 1)], cells[static_cast<size_t>(b - 1)]);
        return down ? order > 0 : order < 0;
    };
    std::vector<int> rows(cells.size());
    std::iota(rows.begin(), rows.end(), 1);
    if (std::is_sorted(rows.begin(), rows.end(), before)) return;
    std::stable_sort(rows.begin(), rows.end(), before);
    m_grid.reorder(rows, column, down ? 2 : 1);
}

void ColumnHand::addColumns(QMenu& menu) {
    int count = 0;
    for (int c = 0; c < m_grid.columnCount(); ++c) count += shown(c);
    for (int place = 0; place < m_header.count(); ++place) {
        const int column = m_header.logicalIndex(place);
        const Column& c = m_grid.column(column + 1);
        if (c.technical) continue;
        QAction* action = menu.addAction(GridModel::caption(c).replace(u'&', QStringLiteral("&&")));
        action->setCheckable(true);
        action->setChecked(shown(column));
        action->setEnabled(!shown(column) || count > 1);
        connect(action, &QAction::triggered, this, [this, column](bool on) { setShown(column, on); });
    }
}

void ColumnHand::addOrder(QMenu& menu, int column) {
    if (column >= 0 && column < m_grid.columnCount()) {
        const QString title = GridModel::caption(m_grid.column(column + 1)).replace(u'&', QStringLiteral("&&"));
        connect(menu.addAction(QStringLiteral("„%1“ aufwärts ordnen").arg(title)), &QAction::triggered, this,
                [this, column] { sort(column + 1, 1); });
        connect(menu.addAction(QStringLiteral("„%1“ abwärts ordnen").arg(title)), &QAction::triggered, this,
                [this, column] { sort(column + 1, 2); });
        connect(menu.addAction(QStringLiteral("„%1“ nach links").arg(title)), &QAction::triggered, this,
                [this, column] { shift(column, -1); });
        connect(menu.addAction(QStringLiteral("„%1“ nach rechts").arg(title)), &QAction::triggered, this,
                [this, column] { shift(column, 1); });
    }
    QAction* natural = menu.addAction(QStringLiteral("Nummern der Größe nach ordnen (9, 10, 100)"));
    natural->setCheckable(true);
    natural->setChecked(m_natural);
    connect(natural, &QAction::triggered, this, [this, column](bool on) {
        m_natural = on;
        m_grid.form().koben.platform.setUserSetting(listSection, key("Ordnung"),
                                                    on ? QStringLiteral("Zahlen") : QString());
        if (const int by = m_grid.sortColumn() > 0 ? m_grid.sortColumn() : column + 1)
            sort(by, std::max(m_grid.sortDirection(), 1));
    });
}

void ColumnHand::popUp(const QPoint& at, int column) {
    auto* menu = new QMenu(&m_header);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addOrder(*menu, column);
    menu->addSeparator();
    QMenu* columns = menu->addMenu(QStringLiteral("Spalten zeigen"));
    addColumns(*columns);
    connect(menu->addAction(QStringLiteral("Breiten anpassen")), &QAction::triggered, this, [this] { fitWidths(); });
    connect(menu->addAction(QStringLiteral("Alle Spalten wie am Anfang")), &QAction::triggered, this,
            [this] { restore(); });
    menu->popup(at);
}

}  // namespace koben::ui

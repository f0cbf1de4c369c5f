#include "ui/KeptWidths.h"

#include "forms/Form.h"
#include "forms/Koben.h"
#include "ui/ColumnHand.h"

namespace koben::ui {

namespace {

QString keyOf(const Control& list) { return QStringLiteral("%1.%2.Breiten").arg(list.form().name(), list.address()); }

}  // namespace

KeptWidths::KeptWidths(const Control& list) : m_list(list) {
    const QString kept = list.form().koben.platform.userSetting(listSection, keyOf(list));
    for (const QString& entry : kept.split(u';', Qt::SkipEmptyParts))
        if (const int width = entry.section(u'=', -1).toInt(); width > 0)
            m_widths.insert(entry.section(u'=', 0, -2), width);
}

void KeptWidths::keep(const QString& title, int width) {
    if (title.contains(u';') || m_widths.value(title) == width) return;
    m_widths.insert(title, width);
    QStringList entries;
    for (auto at = m_widths.cbegin(); at != m_widths.cend(); ++at)
        entries.append(at.key() + u'=' + QString::number(at.value()));
    entries.sort();
    m_list.form().koben.platform.setUserSetting(listSection, keyOf(m_list), entries.join(u';'));
}

}  // namespace koben::ui

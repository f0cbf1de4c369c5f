#include "ui/LastBookings.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>

#include "bookings/Buchungseingabe.h"
#include "core/PZ_Koben_Subs.h"
#include "ui/GridDelegate.h"
#include "ui/GridModel.h"

namespace koben::ui {

namespace {

PE_Bewegungsdaten* frameBehind(const Form& form) {
    for (auto at = form.koben.stack().rbegin(); at != form.koben.stack().rend(); ++at)
        if (auto* frame = dynamic_cast<PE_Bewegungsdaten*>(*at)) return frame;
    return nullptr;
}

class PastBookings final : public QWidget {
public:
    PastBookings(Buchungseingabe& form, PE_Bewegungsdaten& frame)
        : m_form(form),
          m_frame(frame),
          m_cells(frame.li),
          m_rows(frame.li, *this),
          m_marks(frame.schweinli, *this),
          m_date(form.tdat, *this),
          m_facts(form.bezschwein[NumberAt], *this) {
        auto* box = new QVBoxLayout(this);
        box->setContentsMargins(0, 0, 0, 0);
        QFont bold = font();
        bold.setBold(true);
        m_heading.setFont(bold);
        m_notice.setFont(bold);
        m_notice.setWordWrap(true);
        m_notice.setAccessibleName(QStringLiteral("Hinweis zur Buchung"));
        m_table.setModel(&m_cells);
        m_table.setItemDelegate(
            rowDelegate({.current = [this](int row) { return changing() && row + 1 == m_frame.li.row(); },
                         .marked = [](int) { return false; },
                         .separator = [](int) { return false; }},
                        m_table));
        m_table.setAccessibleName(QStringLiteral("Bisherige Buchungen"));
        m_table.setFocusPolicy(Qt::NoFocus);
        m_table.setSelectionMode(QAbstractItemView::NoSelection);
        m_table.setEditTriggers(QAbstractItemView::NoEditTriggers);
        m_table.setAlternatingRowColors(true);
        m_table.setShowGrid(false);
        m_table.setWordWrap(false);
        m_table.setCornerButtonEnabled(false);
        m_table.verticalHeader()->hide();
        m_table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        m_table.verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 5 / 4);
        m_table.horizontalHeader()->setHighlightSections(false);
        m_table.horizontalHeader()->setStretchLastSection(true);
        m_table.setMinimumWidth(fontMetrics().averageCharWidth() * 40);
        for (QWidget* part :
             {static_cast<QWidget*>(&m_heading), static_cast<QWidget*>(&m_table), static_cast<QWidget*>(&m_notice)})
            box->addWidget(part, part == &m_table ? 1 : 0);
        show();
    }
    QSize sizeHint() const override { return {fontMetrics().averageCharWidth() * 64, fontMetrics().height() * 14}; }

private:
    static constexpr int NumberAt = 1;  // of the facts of the animal
    struct Follow final : Control::View {
        Follow(Control& control, PastBookings& panel) : View(control), m_panel(panel) {}
        void changed(Aspect) override { m_panel.schedule(); }
        PastBookings& m_panel;
    };
    bool changing() const { return m_form.koben.Buchungsmodus == u"Ändern"; }

    /// Forms set a control many times within one action.
    void schedule() {
        if (m_scheduled) return;
        m_scheduled = true;
        QMetaObject::invokeMethod(
            this, [this] { show(); }, Qt::QueuedConnection);
    }

    void show() {
        m_scheduled = false;
        m_cells.refresh(true);
        for (int c = 1; c <= m_frame.li.columnCount(); ++c)
            m_table.setColumnHidden(c - 1, m_frame.li.column(c).technical);
        m_table.resizeColumnsToContents();
        m_table.scrollToBottom();
        const QString kind = QString::fromUtf8(Buchungsarten[m_form.koben.Buchungsart_Nr].caption);
        const QString number = m_form.bezschwein[NumberAt].text();
        m_heading.setText(m_frame.li.rowCount() > 0
                              ? QStringLiteral("Bisherige Buchungen von %1: %2").arg(number, kind)
                              : QStringLiteral("Noch keine Buchung von %1: %2").arg(number, kind));
        m_notice.setText(notice(kind));
        m_notice.setVisible(!m_notice.text().isEmpty());
    }

    QString notice(const QString& kind) const {
        if (m_frame.schweinli.markedCount() == 0)
            return QStringLiteral(
                "⚠ Kein Tier ist markiert: „OK“ würde nichts buchen. Bitte mit „Abbrechen“ zurück "
                "zur Liste gehen und dort die Tiere markieren.");
        if (changing()) return {};
        const QString day = Datum_ergaenzen(m_form.tdat.text().trimmed(), m_form.koben.Heute);
        const int date = m_frame.li.columnOf(u"Datum");
        for (int row = 1; date > 0 && row <= m_frame.li.rowCount(); ++row)
            if (m_frame.li.cell(row, date) == day)
                return QStringLiteral("⚠ Am %1 ist für dieses Tier schon gebucht: %2").arg(day, kind);
        return {};
    }

    Buchungseingabe& m_form;
    PE_Bewegungsdaten& m_frame;
    GridModel m_cells;
    QLabel& m_heading = *new QLabel;
    QTableView& m_table = *new QTableView;
    QLabel& m_notice = *new QLabel;
    bool m_scheduled = false;
    Follow m_rows, m_marks, m_date, m_facts;
};

}  // namespace

Piece lastBookings(Buchungseingabe& form) {
    PE_Bewegungsdaten* frame = frameBehind(form);
    if (!frame) return spring();
    return {.widget = new PastBookings(form, *frame), .stretch = 1};
}

}  // namespace koben::ui

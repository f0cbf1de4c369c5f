#include "ui/LastBookings.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <memory>
#include <vector>

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

/// A widget that follows several controls of a booking and shows them once, after the form has set them all.
class Follower : public QWidget {
public:
    explicit Follower(std::initializer_list<Control*> controls) {
        for (Control* control : controls) m_follows.push_back(std::make_unique<Follow>(*control, *this));
    }

protected:
    virtual void refresh() = 0;

private:
    struct Follow final : Control::View {
        Follow(Control& control, Follower& widget) : View(control), m_widget(widget) {}
        void changed(Aspect) override { m_widget.schedule(); }
        Follower& m_widget;
    };
    void schedule() {
        if (m_scheduled) return;
        m_scheduled = true;
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_scheduled = false;
                refresh();
            },
            Qt::QueuedConnection);
    }
    std::vector<std::unique_ptr<Follow>> m_follows;
    bool m_scheduled = false;
};

constexpr int NumberAt = 1;  // of the facts of the animal

bool changing(const Form& form) { return form.koben.Buchungsmodus == u"Ändern"; }
QString kindOf(const Form& form) { return QString::fromUtf8(Buchungsarten[form.koben.Buchungsart_Nr].caption); }

QLabel& boldLabel() {
    auto* label = new QLabel;
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    label->setTextFormat(Qt::PlainText);
    return *label;
}

class PastBookings final : public Follower {
public:
    PastBookings(Buchungseingabe& form, PE_Bewegungsdaten& frame)
        : Follower({&frame.li, &form.bezschwein[NumberAt]}), m_form(form), m_frame(frame), m_cells(frame.li) {
        auto* box = new QVBoxLayout(this);
        box->setContentsMargins(0, 0, 0, 0);
        box->addWidget(&m_heading);
        box->addWidget(&m_table, 1);
        m_table.setModel(&m_cells);
        m_table.setItemDelegate(
            rowDelegate({.current = [this](int row) { return changing(m_form) && row + 1 == m_frame.li.row(); },
                         .marked = [](int) { return false; },
                         .separator = [](int) { return false; }},
                        m_table));
        m_table.setAccessibleName(QStringLiteral("Bisherige Buchungen"));
        m_table.setFocusPolicy(Qt::TabFocus);
        m_table.setTabKeyNavigation(false);
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
        PastBookings::refresh();
    }
    QSize sizeHint() const override { return {fontMetrics().averageCharWidth() * 64, fontMetrics().height() * 14}; }

private:
    void refresh() override {
        m_cells.refresh(true);
        for (int c = 1; c <= m_frame.li.columnCount(); ++c)
            m_table.setColumnHidden(c - 1, m_frame.li.column(c).technical);
        m_table.resizeColumnsToContents();
        m_table.scrollToBottom();
        const QString text = m_frame.li.rowCount() > 0 ? QStringLiteral("Bisherige Buchungen von %1: %2")
                                                       : QStringLiteral("Noch keine Buchung von %1: %2");
        m_heading.setText(text.arg(m_form.bezschwein[NumberAt].text(), kindOf(m_form)));
    }
    Buchungseingabe& m_form;
    PE_Bewegungsdaten& m_frame;
    GridModel m_cells;
    QLabel& m_heading = boldLabel();
    QTableView& m_table = *new QTableView;
};

class Notice final : public Follower {
public:
    Notice(Buchungseingabe& form, PE_Bewegungsdaten& frame)
        : Follower({&frame.li, &frame.schweinli, &form.tdat}), m_form(form), m_frame(frame) {
        auto* box = new QVBoxLayout(this);
        box->setContentsMargins(0, 0, 0, 0);
        box->addWidget(&m_text);
        m_text.setWordWrap(true);
        m_text.setAccessibleName(QStringLiteral("Hinweis zur Buchung"));
        Notice::refresh();
    }

private:
    void refresh() override {
        m_text.setText(text());
        setVisible(!m_text.text().isEmpty());
    }
    QString text() const {
        if (m_frame.schweinli.markedCount() == 0)
            return QStringLiteral(
                "⚠ Kein Tier ist markiert: „OK“ würde nichts buchen. Bitte mit „Abbrechen“ zurück zur Liste gehen und "
                "dort die Tiere markieren.");
        if (changing(m_form)) return {};
        const QString day = Datum_ergaenzen(m_form.tdat.text().trimmed(), m_form.koben.Heute);
        const int date = m_frame.li.columnOf(u"Datum");
        for (int row = 1; date > 0 && row <= m_frame.li.rowCount(); ++row)
            if (m_frame.li.cell(row, date) == day)
                return QStringLiteral("⚠ Am %1 ist für dieses Tier schon gebucht: %2").arg(day, kindOf(m_form));
        return {};
    }
    Buchungseingabe& m_form;
    PE_Bewegungsdaten& m_frame;
    QLabel& m_text = boldLabel();
};

}  // namespace

Piece lastBookings(Buchungseingabe& form) {
    PE_Bewegungsdaten* frame = frameBehind(form);
    if (!frame) return spring();
    return {.widget = new PastBookings(form, *frame), .stretch = 1};
}

Piece bookingNotice(Buchungseingabe& form) {
    PE_Bewegungsdaten* frame = frameBehind(form);
    return {.widget = frame ? new Notice(form, *frame) : nullptr};
}

}  // namespace koben::ui

#include "ui/AnimalPanel.h"

#include <QBoxLayout>
#include <QLabel>
#include <QStackedWidget>
#include <QTimer>

#include "herd/PA_Koben.h"
#include "ui/Application.h"

namespace koben::ui {

namespace {

constexpr int Rest = 250;  // milliseconds on a row before its data are read

/// Follows the list: the head at once, the data as soon as the current row rests. Data of another animal are covered.
class Panel final : public QWidget, private Control::View {
public:
    explicit Panel(PA_Koben& form) : View(form.datali), m_form(form), m_text(form.Text1, *this) {
        auto* box = new QVBoxLayout(this);
        box->setContentsMargins(0, 0, 0, 0);
        QFont bold = m_head->font();
        bold.setBold(true);
        m_head->setFont(bold);
        m_head->setTextFormat(Qt::PlainText);
        m_pages->addWidget(text(form.Text1).widget);
        m_pages->addWidget(new QWidget);
        box->addWidget(m_head);
        box->addWidget(m_pages, 1);
        m_timer->setSingleShot(true);
        m_timer->setInterval(Rest);
        connect(m_timer, &QTimer::timeout, this, [this] { fetch(); });
    }

private:
    /// Tells when the text was written: it is then that of the current animal.
    class TextWatch final : private Control::View {
    public:
        TextWatch(Control& text, Panel& panel) : View(text), m_panel(panel) {}

    private:
        void changed(Aspect aspect) override {
            if (aspect == Aspect::Text) m_panel.written();
        }
        Panel& m_panel;
    };

    void changed(Aspect aspect) override {
        if (aspect != Aspect::Row && aspect != Aspect::Rows) return;
        cover();
        m_timer->start();
    }
    QString current() const { return m_form.datali.cell(m_form.datali.row(), u"ID"); }
    void cover() {
        const Grid& list = m_form.datali;
        m_head->setText(list.row() == 0 ? QString()
                                        : list.cell(list.row(), u"Art") + u' ' + list.cell(list.row(), u"Nummer"));
        m_pages->setCurrentIndex(list.row() > 0 && current() == m_shown ? 0 : 1);
    }
    void written() {
        m_shown = current();
        cover();
    }
    void fetch() {
        if (m_form.datali.row() == 0 || m_form.koben.front() != &m_form || !m_form.cmdok.enabled()) return;
        guarded([this] { m_form.cmdok.click(); });
        written();
    }

    PA_Koben& m_form;
    QLabel* m_head = new QLabel(this);
    QStackedWidget* m_pages = new QStackedWidget(this);
    QTimer* m_timer = new QTimer(this);
    QString m_shown;  ///< ID of the animal whose data stand in the text
    TextWatch m_text;
};

}  // namespace

Piece animalPanel(PA_Koben& form) { return {.widget = new Panel(form), .stretch = 1}; }

}  // namespace koben::ui

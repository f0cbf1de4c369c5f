#include "bookings/PB_Verkauf_Schweine.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "core/PZ_Koben_Subs.h"
#include "ui/Layout.h"
#include "ui/ListTable.h"

namespace koben::ui {

namespace {

/// A number typed here goes to its row; Enter marks that row and waits for the next number. An empty field leaves Enter
/// to the window.
class NumberField final : public QLineEdit {
public:
    explicit NumberField(ListTable& animals) : m_animals(animals) {
        setPlaceholderText(QStringLiteral("Nummer, Eingabetaste markiert"));
        setAccessibleName(QStringLiteral("Tier nach Nummer suchen und markieren"));
        setClearButtonEnabled(true);
        setMinimumWidth(fontMetrics().averageCharWidth() * 34);
        makeSearchField(*this);
        m_miss.setAccessibleName(QStringLiteral("Ergebnis der Suche"));
        connect(this, &QLineEdit::textChanged, this, [this] { look(); });
    }
    QLabel& miss() { return m_miss; }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if ((!enter && event->key() != Qt::Key_Escape) || text().isEmpty()) return QLineEdit::keyPressEvent(event);
        if (enter && m_row < 0) return selectAll();
        if (enter) m_animals.add(m_row);
        clear();
    }

private:
    void look() {
        const QString number = text().trimmed();
        m_row = number.isEmpty() ? -1 : m_animals.find(number);
        if (m_row >= 0) m_animals.look(m_row);
        const bool missed = m_row < 0 && !number.isEmpty();
        m_miss.setText(missed ? QStringLiteral("„%1“ steht nicht in dieser Liste").arg(number) : QString());
    }
    ListTable& m_animals;
    QLabel& m_miss = *new QLabel;
    int m_row = -1;
};

/// How many are marked, and what they weigh and bring together.
class Sum final : public QLabel {
public:
    explicit Sum(PB_Verkauf_Schweine& form)
        : m_form(form), m_marks(form.li, *this), m_kg(form.tz[0], *this), m_price(form.tz[1], *this) {
        QFont bold = font();
        bold.setBold(true);
        setFont(bold);
        setWordWrap(true);
        show();
    }

private:
    struct Follow final : Control::View {
        Follow(Control& control, Sum& sum) : View(control), m_sum(sum) {}
        void changed(Aspect) override { m_sum.show(); }
        Sum& m_sum;
    };
    void show() {
        const int count = m_form.li.markedCount();
        const auto amount = [](double value) { return QLocale(QLocale::German).toString(value, 'f', 2); };
        const double kg = static_cast<double>(Zahl_aus_Text(QString(m_form.tz[0].text()))) * count;
        const double price =
            static_cast<double>(Betrag_aus_Text(QString(m_form.tz[1].text())).tenThousandths) / 1e4 * count;
        setText(QStringLiteral("%1 von %2 Tieren markiert, zusammen %3 kg und %4 Verkaufspreis")
                    .arg(count)
                    .arg(m_form.li.items().size())
                    .arg(amount(kg), amount(price)));
    }
    PB_Verkauf_Schweine& m_form;
    Follow m_marks, m_kg, m_price;
};

}  // namespace

}  // namespace koben::ui

LAYOUT(PB_Verkauf_Schweine) {
    auto& bez = form.bez;
    auto* animals = new ListTable(form.li, form.Label2, QStringLiteral("Nummer"));
    // the sale is mostly of the animal that the herd list stands on
    animals->filled = [animals, &form] {
        if (form.li.current() >= 0 || !form.koben.herdList) return;
        const Grid& herd = form.koben.herdList->herd();
        animals->show(QStringLiteral("ID"), herd.cell(herd.row(), u"ID"));
    };
    auto* number = new NumberField(*animals);
    const Piece sale =
        group(form.rahmen, fields({field(bez[0], date(form.tdat, form.calender, form.calend)),
                                   field(bez[1], text(form.tz[0], 12)), field(bez[2], text(form.tz[1], 12)),
                                   field(bez[3], combo(form.kom[0], 24)), field(bez[4], combo(form.kom[1], 24))}));
    const Piece stock = column({heading(form.Label1), row({own(number), own(&number->miss()), spring()}),
                                own(animals) * 1, own(new Sum(form))});
    return column({row({stock * 1, column({label(form.Label3), sale, spring()})}) * 1,
                   buttons({button(form.neu), button(form.cmdschließen)})});
}

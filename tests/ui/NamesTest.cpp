// What stands beside the inputs of a booking, the table of the sale, and that a screen reader has a word of the user's
// for every control of every window.
#include <QAccessible>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSet>
#include <QTableView>

#include "bookings/Buchungseingabe.h"
#include "bookings/PB_Verkauf_Schweine.h"
#include "tests/ui/Fensterpruefung.h"
#include "tests/ui/ProgramTest.h"
#include "ui/ListTable.h"

namespace koben::ui {
namespace {

using NamesTest = ProgramTest;

/// Roles that a user works with.
bool isControl(QAccessible::Role role) {
    static const QSet<int> roles{
        QAccessible::Button,   QAccessible::CheckBox,    QAccessible::RadioButton, QAccessible::EditableText,
        QAccessible::ComboBox, QAccessible::List,        QAccessible::Table,       QAccessible::Tree,
        QAccessible::SpinBox,  QAccessible::ButtonMenu,  QAccessible::MenuItem,    QAccessible::MenuBar,
        QAccessible::PageTab,  QAccessible::PageTabList, QAccessible::ToolBar,     QAccessible::ProgressBar};
    return roles.contains(role);
}

/// Where two of them bear one name, nobody who hears it knows which it is.
bool isInput(QAccessible::Role role) {
    return role == QAccessible::EditableText || role == QAccessible::ComboBox || role == QAccessible::List ||
           role == QAccessible::Table;
}

void expectNames(QAccessibleInterface* node, const QSet<QString>& own, const QString& form, QSet<QString>& heard) {
    if (!node || !node->isValid()) return;
    static const QRegularExpression words(QStringLiteral("\\pL{2}"));
    const auto* list =
        qobject_cast<const QComboBox*>(node->object());  // its name is told by its label, its text is its value
    const QString name = list ? list->accessibleName() : node->text(QAccessible::Name);
    if (isControl(node->role()) && !node->state().invisible) {
        const QString object = node->object() ? node->object()->objectName() : QString();
        EXPECT_FALSE(name.trimmed().isEmpty())
            << qPrintable(form) << ' ' << qPrintable(object) << " role " << node->role() << ' '
            << (node->object() ? node->object()->metaObject()->className() : "");
        EXPECT_FALSE(own.contains(name)) << qPrintable(form) << ": " << qPrintable(name);
        EXPECT_TRUE(name.contains(words)) << qPrintable(form) << ": " << qPrintable(name);
        if (isInput(node->role())) {
            EXPECT_FALSE(heard.contains(name)) << qPrintable(form) << " twice: " << qPrintable(name);
            heard << name;
            if (node->role() == QAccessible::ComboBox) return;  // its field bears the same name
        }
    }
    if (node->role() == QAccessible::Table || node->role() == QAccessible::List) return;  // cells speak for themselves
    for (int i = 0; i < node->childCount(); ++i) expectNames(node->child(i), own, form, heard);
}

TEST_F(NamesTest, EveryControlHasAWordOfTheUsers) {
    QSet<QString> seen;
    runProgram([&](Form& form) {
        if (seen.contains(form.name())) return;
        seen.insert(form.name());
        QSet<QString> own;
        for (const Control* control : form.controls())
            if (!dynamic_cast<const Label*>(control)) own << control->name() << control->address();
        turnPages(*screens.windowOf(form), [&] {
            QSet<QString> heard;
            expectNames(QAccessible::queryAccessibleInterface(screens.windowOf(form)), own, form.name(), heard);
        });
        goOn(form);
    });
    for (const QString& name : laidOutForms()) EXPECT_TRUE(seen.contains(name)) << qPrintable(name);
}

/// The same day again is said before it is booked, and so is a booking for nobody.
TEST_F(NamesTest, EntryShowsWhatIsBookedAlready) {
    QString twice, free, nobody;
    int rows = 0;
    runProgram([&](Form& form) {
        FormWindow& window = *screens.windowOf(form);
        if (dynamic_cast<PA_Koben*>(&form)) {
            koben.Buchungsart_Nr = 0;
            koben.open("PE_Bewegungsdaten");
        } else if (auto* frame = dynamic_cast<PE_Bewegungsdaten*>(&form)) {
            int sow = 1;
            while (sow < frame->schweinli.rowCount() && frame->schweinli.cell(sow, u"L_Belegung").isEmpty()) ++sow;
            frame->schweinli.choose(sow);
            koben.Buchungsmodus = QStringLiteral("Neu");
            koben.open(QString::fromUtf8(Buchungsarten[0].screen));
        } else if (auto* entry = dynamic_cast<Buchungseingabe*>(&form)) {
            PE_Bewegungsdaten& behind = PE_Bewegungsdaten::behind(koben);
            for (const QTableView* table : window.findChildren<QTableView*>())
                if (table->accessibleName() == u"Bisherige Buchungen") rows = table->model()->rowCount();
            EXPECT_EQ(rows, behind.li.rowCount());
            const auto notice = [&] {
                QApplication::processEvents();
                for (const QLabel* label : window.findChildren<QLabel*>())
                    if (label->accessibleName() == u"Hinweis zur Buchung") return label->text();
                return QString();
            };
            entry->tdat.edited(behind.li.cell(behind.li.rowCount(), u"Datum"));
            twice = notice();
            entry->tdat.edited("01.01.1999");
            free = notice();
            behind.schweinli.clearMarks();
            nobody = notice();
        }
    });
    EXPECT_TRUE(twice.contains("schon gebucht")) << qPrintable(twice);
    EXPECT_EQ(free, QString());
    EXPECT_TRUE(nobody.contains("Kein Tier ist markiert")) << qPrintable(nobody);
}

TEST_F(NamesTest, SaleMarksByNumberAndCounts) {
    platform.settings[QStringLiteral("Listen/PB_Verkauf_Schweine.li.Breiten")] = QStringLiteral("Art=77");
    runProgram([&](Form& form) {
        FormWindow& window = *screens.windowOf(form);
        if (auto* herd = dynamic_cast<PA_Koben*>(&form)) {
            herd->datali.choose(4);
            koben.open("PB_Verkauf_Schweine");
        } else if (auto* sale = dynamic_cast<PB_Verkauf_Schweine*>(&form)) {
            const Grid& stock = koben.herdList->herd();
            QApplication::processEvents();
            EXPECT_TRUE(sale->li.items().at(sale->li.current()).endsWith(u' ' + stock.cell(4, u"ID")));
            EXPECT_EQ(sale->li.markedCount(), 0) << "in view is not yet sold";
            QLineEdit* number = nullptr;
            for (QLineEdit* field : window.findChildren<QLineEdit*>())
                if (field->accessibleName().startsWith(u"Tier nach Nummer")) number = field;
            ASSERT_NE(number, nullptr);
            number->setFocus();
            for (const int row : {2, 5}) {
                type(window, stock.cell(row, u"Nummer"));
                press(number, Qt::Key_Return);
            }
            EXPECT_EQ(sale->li.markedCount(), 2);
            EXPECT_EQ(number->text(), QString());
            sale->tz[1].edited("120,50");
            QStringList texts;
            for (const QLabel* label : window.findChildren<QLabel*>()) texts.append(label->text());
            EXPECT_TRUE(texts.join(u'|').contains("2 von")) << qPrintable(texts.join(u'|'));
            EXPECT_TRUE(texts.join(u'|').contains("241,00")) << qPrintable(texts.join(u'|'));
            auto* animals = static_cast<ListTable*>(window.widgetOf(sale->li));
            EXPECT_EQ(animals->columnWidth(0), 77) << "as the user has left it";
            QWidget* header = animals->horizontalHeader()->viewport();
            for (const auto& [type, x] : {std::pair(QEvent::MouseButtonPress, 76), std::pair(QEvent::MouseMove, 86),
                                          std::pair(QEvent::MouseButtonRelease, 86)}) {
                const bool up = type == QEvent::MouseButtonRelease;
                QMouseEvent event(type, QPointF(x, 5), header->mapToGlobal(QPointF(x, 5)), Qt::LeftButton,
                                  up ? Qt::NoButton : Qt::LeftButton, {});
                QApplication::sendEvent(header, &event);
            }
            animals->setFocus();
            type(window, stock.cell(7, u"Nummer"));
            press(animals, Qt::Key_Return);
            EXPECT_EQ(sale->li.markedCount(), 3) << "the same in the list itself";
            EXPECT_EQ(animals->QTableView::model()->index(0, 1).data().toString(),
                      sale->li.items().at(0).mid(5, 16).trimmed());
            animals->sortByColumn(1, Qt::DescendingOrder);
            EXPECT_EQ(sale->li.markedCount(), 3) << "marks go with their rows";
        }
    });
    EXPECT_EQ(platform.settings[QStringLiteral("Listen/PB_Verkauf_Schweine.li.Breiten")], QStringLiteral("Art=87"));
}

}  // namespace
}  // namespace koben::ui

// Every window of the program, on a made herd, and one booking typed from end to end.
#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QMenuBar>
#include <QSet>
#include <QTemporaryDir>

#include "app/Katalog.h"
#include "bookings/PE_Bewegungsdaten.h"
#include "bookings/PE_Bewegungsdaten_Belegung.h"
#include "herd/PA_Koben.h"
#include "plans/PB_Arbeitsplan.h"
#include "tests/ui/Support.h"
#include "tools/herdengenerator/Ausgabe.h"
#include "ui/Bound.h"
#include "ui/Layout.h"

namespace koben::ui {
namespace {

struct FormsTest : testing::Test {
    QTemporaryDir data;
    TestScreens screens;
    TestPlatform platform;
    Koben koben{screens, platform, katalog()};
    FormsTest() {
        platform.folder = data.path() + u'/';
        Vorgaben herd;
        herd.sauen = 12;
        herd.ende = QDate(2026, 7, 15);
        Herde_in_Datenbank(Herde_erzeugen(herd), data.filePath(QStringLiteral("koben2.mdb")));
    }
    void runProgram(const std::function<void(Form&)>& hand) {
        screens.hand = hand;
        const auto main = katalog().make(QStringLiteral("PA_Koben"), koben);
        koben.run(*main);
    }
};

/// The letter behind a single "&".
QChar mnemonic(const QString& text) {
    for (qsizetype i = 0; i + 1 < text.size(); ++i)
        if (text[i] == u'&') return text[i + 1] == u'&' ? QChar() : text[i + 1].toLower();
    return {};
}

std::string said(const QString& form, const QString& what) {
    return (form + QStringLiteral(": ") + what).toStdString();
}

void expectWhole(const FormWindow& window) {
    const QString form = window.form().name();
    for (const Control* control : window.leftOver()) ADD_FAILURE() << said(form, control->address());
    QSet<QChar> letters;
    const auto once = [&](const QString& text) {
        const QChar letter = mnemonic(text);
        if (letter.isNull()) return;
        EXPECT_FALSE(letters.contains(letter)) << said(form, text);
        letters.insert(letter);
    };
    for (const QMenuBar* bar : window.findChildren<QMenuBar*>())
        for (const QAction* action : bar->actions()) once(action->text());
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        once(button->text());
        if (!button->isVisible() || button->text().isEmpty() || button->parentWidget()->inherits("QToolBar")) continue;
        EXPECT_GE(button->width(), button->minimumSizeHint().width()) << said(form, button->text());
    }
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        if (!label->isVisible() || label->wordWrap()) continue;
        EXPECT_GE(label->width(), label->sizeHint().width()) << said(form, label->text());
    }
    for (QWidget* widget : window.tabOrder()) {
        const Control* control = controlOf(widget);
        EXPECT_TRUE(!control || !widget->accessibleName().isEmpty()) << said(form, control ? control->address() : form);
    }
    EXPECT_FALSE(window.tabOrder().empty()) << qPrintable(form);
}

/// The Tab key comes around to every enabled widget of the window.
void expectTabRound(FormWindow& window) {
    std::vector<QWidget*> stops;
    for (QWidget* widget : window.tabOrder())
        if (widget->isVisible() && widget->isEnabled()) stops.push_back(widget);
    if (stops.size() < 2) return;
    for (size_t i = 1; i < stops.size(); ++i) {
        const QWidget* next = stops[i - 1];
        do next = next->nextInFocusChain();
        while (
            next != stops[i] &&
            (next->focusProxy() || !next->isVisible() || !next->isEnabled() || !(next->focusPolicy() & Qt::TabFocus)) &&
            next != stops[i - 1]);
        EXPECT_EQ(next->objectName(), stops[i]->objectName()) << qPrintable(window.form().name());
    }
}

struct FormsAtSize : FormsTest, testing::WithParamInterface<int> {};

/// At the usual size of letters and at a large one.
TEST_P(FormsAtSize, EveryWindowStandsWhole) {
    QFont font = QApplication::font();
    const QFont usual = font;
    font.setPointSize(GetParam());
    QApplication::setFont(font);
    QSet<QString> seen;
    runProgram([&](Form& form) {
        seen.insert(form.name());
        FormWindow& window = *screens.windowOf(form);
        expectWhole(window);
        expectTabRound(window);
        if (auto* herd = dynamic_cast<PA_Koben*>(&form)) {
            herd->comdrucken.click();
            koben.Buchungsmodus = QStringLiteral("Neu");
            for (QString name : laidOutForms())  // an entry screen opens from its list
                if (!name.startsWith(u"PA_") && !name.startsWith(u"PE_Bewegungsdaten_"))
                    koben.open(name.remove(QStringLiteral("_Eingabe")));
        } else if (dynamic_cast<PE_Bewegungsdaten*>(&form)) {
            for (int kind = 0; kind < 8; ++kind) {
                koben.Buchungsmodus = QStringLiteral("Neu");
                koben.open(QString::fromUtf8(Buchungsarten[kind].screen));
            }
        } else if (auto* neu = dynamic_cast<Button*>(form.find(u"neu"))) {
            neu->click();
        } else if (auto* plan = dynamic_cast<PB_Arbeitsplan*>(&form)) {
            plan->woche[3].click();
            plan->ok[0].click();
        }
    });
    for (const QString& name : laidOutForms()) EXPECT_TRUE(seen.contains(name)) << qPrintable(name);
    QApplication::setFont(usual);
}
INSTANTIATE_TEST_SUITE_P(Points, FormsAtSize, testing::Values(10, 14));

TEST_F(FormsTest, ServiceBookingTypedFromEndToEnd) {
    const auto count = [&] {
        return koben.Hauptdatenbank.table(QStringLiteral("select count(*) as n from Belegung where Ebernr = 'TIPP 7'"))
            .integer(0, 0);
    };
    qint64 before = -1, after = -1;
    runProgram([&](Form& form) {
        FormWindow& window = *screens.windowOf(form);
        if (auto* herd = dynamic_cast<PA_Koben*>(&form)) {
            herd->optianzeige[1].click();  // sows only
            QApplication::processEvents();
            before = count();
            window.widgetOf(herd->t)->setFocus();
            type(window, herd->datali.cell(3, u"Nummer"));
            EXPECT_GT(herd->datali.row(), 0);
            window.findChild<QAction*>(QStringLiteral("XE_belegung"))->trigger();
            after = count();
        } else if (auto* frame = dynamic_cast<PE_Bewegungsdaten*>(&form)) {
            auto* neu = static_cast<QAbstractButton*>(window.widgetOf(frame->neu));
            neu->setFocus();
            press(neu, Qt::Key_Return);
        } else if (auto* entry = dynamic_cast<PE_Bewegungsdaten_Belegung*>(&form)) {
            EXPECT_EQ(controlOf(window.focusWidget()), &entry->tdat) << "the date comes first";
            type(window, QStringLiteral("1406"));
            press(window.focusWidget(), Qt::Key_Return);
            EXPECT_EQ(entry->tdat.text(), QStringLiteral("14.06.2026")) << "completed on leaving";
            while (controlOf(window.focusWidget()) != &entry->kom[0]) press(window.focusWidget(), Qt::Key_Tab);
            type(window, QStringLiteral("TIPP 7"));
            press(window.focusWidget(), Qt::Key_Return);
            EXPECT_EQ(controlOf(window.focusWidget()), &entry->tz[0]) << "fields in the order of the clipboard";
            press(window.focusWidget(), Qt::Key_Up);
            EXPECT_EQ(entry->tz[0].text(), QStringLiteral("2")) << "the arrow keys count";
            auto* ok = static_cast<QAbstractButton*>(window.widgetOf(entry->ok[0]));
            ok->setFocus();
            press(ok, Qt::Key_Return);
            EXPECT_TRUE(form.closed());
        }
    });
    EXPECT_EQ(after, before + 1);
}

}  // namespace
}  // namespace koben::ui

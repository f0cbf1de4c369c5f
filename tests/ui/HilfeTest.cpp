// The help of every window: its chapter opens by key and button and names what the window has. F1 within an entry: the
// help stands above it and leaves it as it was.
#include <QAbstractButton>
#include <QGroupBox>
#include <QTabBar>
#include <algorithm>

#include "help/PH_Hilfe.h"
#include "tests/ui/ProgramTest.h"
#include "ui/Bound.h"

namespace koben::ui {
namespace {

/// An entry that presets its field whenever it comes to the front.
struct Eintrag final : Form {
    explicit Eintrag(Koben& koben) : Form(koben, QStringLiteral("PE_Probe"), QStringLiteral("Probe")) {
        hilfe.onClick = [this] { this->koben.open(QStringLiteral("PH_Hilfe")); };
        liste.onClick = [this] { this->koben.open(QStringLiteral("PB_Probe")); };
    }
    void Activate() override {
        ++activations;
        tz.setText(QStringLiteral("1"));
    }
    TextBox tz{*this, "tz"};
    Button hilfe{*this, "hilfe", "Hilfe"}, liste{*this, "liste", "Liste"};
    int activations = 0;
};

template <char Kind>
struct Blatt final : Form {
    explicit Blatt(Koben& koben) : Form(koben, QStringLiteral("P%1_Blatt").arg(QLatin1Char(Kind)), QString()) {}
    Label text{*this, "text", "Ein Kapitel"};
};

TEST(Hilfe, LeavesWhatIsTyped) {
    Bench bench;
    bench.catalogue.add<Blatt<'H'>>(QStringLiteral("PH_Hilfe"));
    bench.catalogue.add<Blatt<'B'>>(QStringLiteral("PB_Probe"));
    Eintrag entry(bench.koben);
    int opened = 0;
    bench.screens.hand = [&](Form& form) {
        if (&form != &entry) return void(++opened);
        FormWindow& window = *bench.screens.windowOf(entry);
        QWidget* field = window.widgetOf(entry.tz);
        field->setFocus();
        type(window, QStringLiteral("4"));
        const QString typed = entry.tz.text();
        ASSERT_NE(typed, QStringLiteral("1"));
        press(field, Qt::Key_F1);
        EXPECT_EQ(opened, 1);
        EXPECT_EQ(entry.tz.text(), typed);
        entry.hilfe.click();
        EXPECT_EQ(opened, 2) << "by its button too";
        EXPECT_EQ(entry.tz.text(), typed);
        entry.liste.click();
        EXPECT_EQ(entry.activations, 2) << "another form may have changed what the entry shows";
    };
    bench.koben.run(entry);
}

QString asRead(const QString& text) {
    QString plain = plainCaption(text).simplified();
    return plain.endsWith(u':') ? plain.chopped(1).trimmed() : plain;
}

/// Whatever a user could read as the name of something in the window.
QSet<QString> readable(const FormWindow& window) {
    QSet<QString> all;
    for (const QWidget* widget : window.findChildren<QWidget*>()) all.insert(asRead(widget->accessibleName()));
    for (const QLabel* label : window.findChildren<QLabel*>()) all.insert(asRead(label->text()));
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) all.insert(asRead(button->text()));
    for (const QGroupBox* frame : window.findChildren<QGroupBox*>()) all.insert(asRead(frame->title()));
    for (const QTabBar* bar : window.findChildren<QTabBar*>())
        for (int i = 0; i < bar->count(); ++i) all.insert(asRead(bar->tabText(i)));
    return all;
}

/// The names of an input: its own, its label's, and of a choice also that of the frame around it.
QSet<QString> namesOf(const FormWindow& window, const Control& input) {
    QWidget* widget = window.widgetOf(input);
    QSet<QString> names{asRead(widget->accessibleName()), asRead(input.hint())};
    for (const QLabel* label : window.findChildren<QLabel*>())
        if (label->buddy() && (label->buddy() == widget || label->buddy()->isAncestorOf(widget)))
            names.insert(asRead(label->text()));
    for (const QWidget* around = widget; dynamic_cast<const Option*>(&input) && around; around = around->parentWidget())
        if (const auto* frame = qobject_cast<const QGroupBox*>(around)) names.insert(asRead(frame->title()));
    return names;
}

/// What a screen reader says may be longer or shorter than what stands beside the field.
bool sameField(QString a, QString b) {
    const auto holds = [](const QString& whole, const QString& part) {
        return part.size() > 7 && whole.contains(part);
    };
    a = a.remove(u'=').trimmed(), b = b.remove(u'=').trimmed();
    return a == b || holds(a, b) || holds(b, a);
}

bool isInput(const Control& control) {
    const auto* box = dynamic_cast<const TextBox*>(&control);
    return (box && !box->readOnly && !box->multiLine) || dynamic_cast<const CheckBox*>(&control) ||
           dynamic_cast<const Option*>(&control);
}

void expectFields(const FormWindow& window, const Kapitel& chapter) {
    QSet<QString> told;
    for (const QString& field : chapter.fields()) told.insert(asRead(field));
    for (const QString& field : told - readable(window))
        ADD_FAILURE() << qPrintable(chapter.name) << " hat kein Feld: " << qPrintable(field);
    for (const Control* control : window.form().controls())
        if (isInput(*control) && control->visible() && window.widgetOf(*control)) {
            const QSet<QString> names = namesOf(window, *control);
            const bool explained = std::any_of(names.begin(), names.end(), [&](const QString& name) {
                return std::any_of(told.begin(), told.end(),
                                   [&](const QString& field) { return sameField(name, field); });
            });
            EXPECT_TRUE(explained) << qPrintable(chapter.name)
                                   << " erklärt nicht: " << qPrintable(names.values().join(u'|'));
        }
}

using HelpOfForms = ProgramTest;

TEST_F(HelpOfForms, EveryWindowHasItsChapter) {
    QSet<QString> seen;
    QString opened;
    runProgram([&](Form& form) {
        FormWindow& window = *screens.windowOf(form);
        if (auto* help = dynamic_cast<PH_Hilfe*>(&form)) {
            opened = help->chapter()->name;
            const FormWindow& behind = *screens.windowOf(*koben.stack().end()[-2]);
            if (!seen.contains(opened)) expectFields(behind, *help->chapter());
            seen.insert(opened);
            if (seen.contains(help->name())) return;
            seen.insert(help->name());
            help->open(help->name());
            return expectFields(window, *help->chapter());
        }
        const auto expectOpened = [&](const QString& how) {
            EXPECT_EQ(std::exchange(opened, {}), form.name()) << qPrintable(how);
        };
        press(window.focusWidget() ? window.focusWidget() : &window, Qt::Key_F1);
        expectOpened("F1");
        for (const QString name : {"hilfe", "comhilfe"})
            if (auto* button = dynamic_cast<Button*>(form.find(name))) button->click(), expectOpened(name);
        goOn(form);
    });
    for (const QString& name : laidOutForms()) EXPECT_TRUE(seen.contains(name)) << qPrintable(name);
}

}  // namespace
}  // namespace koben::ui

// Numbers and texts out of every range, typed into every field of every form that saves: refused before anything is
// written, with the field marked, or taken as they stand. Nothing is cut to the end of its type, and no character that
// a list would take for structure gets into the database.
#include "tests/robust/Aktionen.h"

namespace koben::robust {
namespace {

class MaskenTest : public testing::TestWithParam<Task> {};

const QString Hostile[] = {"9999999999",      "99999999999999999", "-99999999999999999",
                           QString(60, u'9'), "1.234,56",          "1.234.567",
                           "32768",           "a\tb\r\nc\x01\x7f", ".",
                           "'\";--",          QString(300, u'x')};

bool structural(QChar c) { return (c < u' ' && c != u'\n') || c == QChar(0x7f); }

TEST_P(MaskenTest, nichtsUnpassendesWirdGeschrieben) {
    const Task& task = GetParam();
    if (!task.farm) return;
    static int turn = 0;  // in a short run each action meets two of the texts, and each text some actions
    const int every = longRun() ? 1 : 5;
    int number = turn++;
    for (const QString& text : Hostile) {
        if (number++ % every != 0) continue;
        SCOPED_TRACE(text.left(40).toStdString());
        const auto folder = prepared(task);
        Session run(*folder);
        QString before, after;
        bool marked = false;
        run.begins = [&] {
            if (!run.koben.front()) throw StopHere{};  // a start has no fields
            before = contentOf(run.koben.connect());
            run.screens.takeLog();
            run.screens.answers.assign(50, true);
            run.screens.inputs.assign(5, withoutControls(text));  // as input boxes give it
            Form* const form = run.koben.front();
            for (Control* control : form->controls()) {
                auto* box = dynamic_cast<TextBox*>(control);
                const auto* list = dynamic_cast<ComboBox*>(box);
                if (!box || box->readOnly || !box->visible() || !box->enabled() || (list && list->fixed)) continue;
                if (box->name() == u"tdat") continue;  // what is no date is refused for itself
                typeInto(*box, text);
                EXPECT_TRUE(box->multiLine || std::none_of(box->text().begin(), box->text().end(), structural))
                    << box->address().toStdString();
            }
        };
        run.repeat = [&] {
            after = contentOf(run.koben.connect());
            for (Control* control : run.koben.front()->controls()) marked = marked || control->wrong();
            return false;
        };
        EXPECT_NO_THROW(perform(task, run));
        const QString log = run.screens.log.join(u'\n');
        EXPECT_FALSE(log.contains(u"konnte nicht zu Ende")) << log.toStdString();
        EXPECT_FALSE(after.contains(u"922337203685477") || after.contains(u"3,402823E+38")) << after.toStdString();
        EXPECT_TRUE(std::none_of(after.begin(), after.end(), structural));
        EXPECT_TRUE(!marked || (after == before && log.contains(u"! "))) << log.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Aktionen, MaskenTest, testing::ValuesIn(tasks()), nameOf);

/// The known ones, one by one: what is said, and that nothing was written.
TEST(Masken, zahlenAusserhalbIhresFeldes) {
    const struct {
        const char* action;
        const char* field;
        int index;
        const char* typed;
        const char* said;
    } cases[] = {{"medizin", "tz", 1, "9999999999", "\"Wartezeit (Tage ab Verabreichung)\" zu groß"},
                 {"medizin", "tz", 2, "99999999999999999", "\"Kosten je Einheit\" zu groß"},
                 {"medizin", "tz", 2, "1.234,56", "\"Kosten je Einheit\" nicht gelesen"},
                 {"belegung", "tz", 0, "2147483648", "\"Deckanzahl\" zu groß"},
                 {"ferkelung", "tz", 0, "32768", "\"Anzahl Ferkel (Gesamt)\" zu groß"},
                 {"behandlung", "tz", 0, "1.234,56", "\"Menge und Einheit\" nicht gelesen"}};
    for (const auto& c : cases) {
        const Task& task = taskNamed(c.action);
        const auto folder = prepared(task);
        Session run(*folder);
        QString before;
        run.begins = [&] {
            before = contentOf(run.koben.connect());
            typeInto(dynamic_cast<TextBox&>(*run.koben.front()->find(QString::fromUtf8(c.field), c.index)),
                     QString::fromUtf8(c.typed));
        };
        run.repeat = [&] {
            const Control& field = *run.koben.front()->find(QString::fromUtf8(c.field), c.index);
            EXPECT_TRUE(field.wrong()) << c.action;
            EXPECT_EQ(dynamic_cast<const TextBox&>(field).text().toStdString().substr(0, 6),
                      std::string(c.typed).substr(0, 6));
            EXPECT_EQ(contentOf(run.koben.connect()), before) << c.action;
            return false;
        };
        EXPECT_TRUE(complaints(task, run).contains(QString::fromUtf8(c.said))) << c.action << c.typed;
    }
}

}  // namespace
}  // namespace koben::robust

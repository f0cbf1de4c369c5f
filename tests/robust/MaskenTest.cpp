// Numbers and texts out of every range, typed into every field of every form that saves: refused before anything is
// written, with the field marked, or taken as they stand. Nothing is cut to the end of its type, and no character that
// a list would take for structure gets into the database.
#include "tests/robust/Aktionen.h"

namespace koben::robust {
namespace {

class MaskenTest : public testing::TestWithParam<Aktion> {};

const QString Hostile[] = {"9999999999",      "99999999999999999", "-99999999999999999",
                           QString(60, u'9'), "1.234,56",          "1.234.567",
                           "32768",           "a\tb\r\nc\x01\x7f", ".",
                           "'\";--",          QString(300, u'x')};

bool structural(QChar c) { return (c < u' ' && c != u'\n') || c == QChar(0x7f); }

TEST_P(MaskenTest, nichtsUnpassendesWirdGeschrieben) {
    const Aktion& aktion = GetParam();
    if (!aktion.hof) return;
    static int turn = 0;  // in a short run each action meets two of the texts, and each text some actions
    const int every = longRun() ? 1 : 5;
    int number = turn++;
    for (const QString& text : Hostile) {
        if (number++ % every != 0) continue;
        SCOPED_TRACE(text.left(40).toStdString());
        const auto folder = angerichtet(aktion);
        Sitzung run(*folder);
        QString before, after;
        bool marked = false;
        run.beginnt = [&] {
            if (!run.koben.front()) throw HierHalt{};  // a start has no fields
            before = inhalt(run.koben.connect());
            run.screens.takeLog();
            run.screens.answers.assign(50, true);
            run.screens.inputs.assign(5, withoutControls(text));  // as input boxes give it
            Form* const form = run.koben.front();
            for (Control* control : form->controls()) {
                auto* box = dynamic_cast<TextBox*>(control);
                const auto* list = dynamic_cast<ComboBox*>(box);
                if (!box || box->readOnly || !box->visible() || !box->enabled() || (list && list->fixed)) continue;
                if (box->name() == u"tdat") continue;  // what is no date is refused for itself
                eingeben(*box, text);
                EXPECT_TRUE(box->multiLine || std::none_of(box->text().begin(), box->text().end(), structural))
                    << box->address().toStdString();
            }
        };
        run.nochmal = [&] {
            after = inhalt(run.koben.connect());
            for (Control* control : run.koben.front()->controls()) marked = marked || control->wrong();
            return false;
        };
        EXPECT_NO_THROW(spielen(aktion, run));
        const QString log = run.screens.log.join(u'\n');
        EXPECT_FALSE(log.contains(u"konnte nicht zu Ende")) << log.toStdString();
        EXPECT_FALSE(after.contains(u"922337203685477") || after.contains(u"3,402823E+38")) << after.toStdString();
        EXPECT_TRUE(std::none_of(after.begin(), after.end(), structural));
        EXPECT_TRUE(!marked || (after == before && log.contains(u"! "))) << log.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Aktionen, MaskenTest, testing::ValuesIn(aktionen()), nameOf);

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
        const Aktion& aktion = finde(c.action);
        const auto folder = angerichtet(aktion);
        Sitzung run(*folder);
        QString before;
        run.beginnt = [&] {
            before = inhalt(run.koben.connect());
            eingeben(dynamic_cast<TextBox&>(*run.koben.front()->find(QString::fromUtf8(c.field), c.index)),
                     QString::fromUtf8(c.typed));
        };
        run.nochmal = [&] {
            const Control& field = *run.koben.front()->find(QString::fromUtf8(c.field), c.index);
            EXPECT_TRUE(field.wrong()) << c.action;
            EXPECT_EQ(dynamic_cast<const TextBox&>(field).text().toStdString().substr(0, 6),
                      std::string(c.typed).substr(0, 6));
            EXPECT_EQ(inhalt(run.koben.connect()), before) << c.action;
            return false;
        };
        EXPECT_TRUE(klagen(aktion, run).contains(QString::fromUtf8(c.said))) << c.action << c.typed;
    }
}

}  // namespace
}  // namespace koben::robust

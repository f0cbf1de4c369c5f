// Settings that show: each is seen in the running program as soon as its screen has closed with OK.
#include <QTableView>

#include "cycle/PO_Einstellungen.h"
#include "cycle/PV_Stichworte.h"
#include "herd/PA_Koben.h"
#include "output/PA_Textausgabe.h"
#include "output/PA_Zwischenliste.h"
#include "plans/PB_Statusplan.h"
#include "tests/ui/ProgramTest.h"

namespace koben::ui {
namespace {

struct Wirkung;

struct Setting {
    const char* name;
    std::function<void(PO_Einstellungen&)> change;
    std::function<QString(Wirkung&)> seen;  ///< what the user sees of it, before and afterwards
    const char* before;
    const char* after;
};

struct Wirkung : ProgramTest, testing::WithParamInterface<Setting> {
    PA_Koben* herd = nullptr;
    std::function<void(Form&)> inside;  ///< plays in the forms that stand above the herd list

    void within(const char* form, std::function<void(Form&)> play) {
        inside = std::move(play);
        koben.Buchungsmodus = QStringLiteral("Neu");
        koben.open(QString::fromUtf8(form));
        inside = nullptr;
        herd->settle();
        QApplication::processEvents();
    }
    QString rowHead() {
        const auto* view = qobject_cast<QTableView*>(screens.windowOf(*herd)->widgetOf(herd->datali));
        const QString head = view->model()->headerData(0, Qt::Vertical).toString();
        return head == herd->datali.cell(1, u"Nummer") ? QStringLiteral("Nummer") : head;
    }
    /// The field by which the herd list stands.
    QString order() {
        const auto stands = [this](const QString& field) {
            for (int row = 2; row <= herd->datali.rowCount(); ++row)
                if (herd->datali.cell(row - 1, field) > herd->datali.cell(row, field)) return false;
            return true;
        };
        return stands(QStringLiteral("Ohrmarke")) ? QStringLiteral("Ohrmarke") : QStringLiteral("anders");
    }
    /// The forms that a list goes through.
    QString way() {
        QStringList forms;
        within("PB_Statusplan", [&](Form& form) {
            if (auto* plan = dynamic_cast<PB_Statusplan*>(&form)) return plan->ok.click();
            forms.append(form.name());
        });
        return forms.join(u'>');
    }
    /// Whether the text of a list holds this.
    QString textWith(const QString& part) {
        QString text;
        within("PB_Statusplan", [&](Form& form) {
            if (auto* plan = dynamic_cast<PB_Statusplan*>(&form)) plan->ok.click();
            if (auto* list = dynamic_cast<PA_Zwischenliste*>(&form)) list->comtext.click();
            if (auto* sheet = dynamic_cast<PA_Textausgabe*>(&form)) text = sheet->t.text();
        });
        return text.contains(part) ? QStringLiteral("mit") : QStringLiteral("ohne");
    }
    QString listWidth() {
        int width = 0;
        within("PB_Statusplan", [&](Form& form) {
            if (auto* plan = dynamic_cast<PB_Statusplan*>(&form)) plan->ok.click();
            if (auto* list = dynamic_cast<PA_Zwischenliste*>(&form)) width = list->gridli.column(1).width;
        });
        return width > 0 ? QStringLiteral("fest") : QStringLiteral("frei");
    }
    /// Days from the service of the first served sow to the farrowing that the plan expects.
    QString due() {
        QString days;
        within("PB_Statusplan", [&](Form& form) {
            const Grid& list = static_cast<PB_Statusplan&>(form).libelegt;
            const QDate from = list.value(1, u"lbelegung").toDate(), to = list.value(1, u"ferkel_termin").toDate();
            days = QString::number(from.daysTo(to));
        });
        return days;
    }
    QString questions() {
        screens.yes = false;
        screens.told.clear();
        within("PV_Stichworte", [&](Form& form) {
            auto& words = static_cast<PV_Stichworte&>(form);
            words.opti[1].click();
            words.neu.click();
            words.li.editByUser(words.li.rowCount(), 1, QStringLiteral("Probe"));
            words.li.setRow(words.li.findText(u"Inhalt", QStringLiteral("Probe")));
            words.löschen.click();
        });
        return screens.told.join(u'|').contains(u"unwiederbringlich") ? QStringLiteral("gefragt")
                                                                      : QStringLiteral("still");
    }
    QString sound() {
        const int before = screens.tones;
        koben.Quittungston();
        return screens.tones > before ? QStringLiteral("Ton") : QStringLiteral("still");
    }
};

TEST_P(Wirkung, GiltSofort) {
    const Setting& setting = GetParam();
    QString before, after;
    runProgram([&](Form& form) {
        if (auto* main = dynamic_cast<PA_Koben*>(&form)) {
            herd = main;
            QApplication::processEvents();
            before = setting.seen(*this);
            within("PO_Einstellungen", [&](Form& settings) {
                auto& screen = static_cast<PO_Einstellungen&>(settings);
                setting.change(screen);
                screen.ok.click();
            });
            after = setting.seen(*this);
        } else if (inside) {
            inside(form);
        }
    });
    EXPECT_EQ(before, QString::fromUtf8(setting.before));
    EXPECT_EQ(after, QString::fromUtf8(setting.after));
}

const Setting Settings[] = {
    {"laufendeNummer", [](PO_Einstellungen& s) { s.kon[5].click(); }, [](Wirkung& w) { return w.rowHead(); }, "Nummer",
     "1"},
    {"sortierung",
     [](PO_Einstellungen& s) {
         s.kom[0].choose(static_cast<int>(s.kom[0].items().indexOf(QStringLiteral("Ohrmarke"))));
     },
     [](Wirkung& w) { return w.order(); }, "anders", "Ohrmarke"},
    {"darstellung", [](PO_Einstellungen& s) { s.opti[2].click(); }, [](Wirkung& w) { return w.way(); },
     "PA_Zwischenliste", "PA_Textausgabe>PA_Zwischenliste"},
    {"kopf", [](PO_Einstellungen& s) { s.tsonst[0].edited(QStringLiteral("Hof Lindemann")); },
     [](Wirkung& w) { return w.textWith(QStringLiteral("Hof Lindemann")); }, "ohne", "mit"},
    {"datum", [](PO_Einstellungen& s) { s.kon[2].click(); },
     [](Wirkung& w) { return w.textWith(QStringLiteral("Datum: 15.07.2026")); }, "mit", "ohne"},
    {"breiten", [](PO_Einstellungen& s) { s.kon[6].click(); }, [](Wirkung& w) { return w.listWidth(); }, "frei",
     "fest"},
    {"tage", [](PO_Einstellungen& s) { s.tzahl[2].edited(QStringLiteral("118")); }, [](Wirkung& w) { return w.due(); },
     "116", "118"},
    {"fragen", [](PO_Einstellungen& s) { s.kon[7].click(); }, [](Wirkung& w) { return w.questions(); }, "still",
     "gefragt"},
    {"ton", [](PO_Einstellungen& s) { s.kon[10].click(); }, [](Wirkung& w) { return w.sound(); }, "Ton", "still"}};

INSTANTIATE_TEST_SUITE_P(Einstellungen, Wirkung, testing::ValuesIn(Settings),
                         [](const auto& setting) { return std::string(setting.param.name); });

}  // namespace
}  // namespace koben::ui

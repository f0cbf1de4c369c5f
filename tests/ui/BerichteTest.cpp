// Every report on the example herd: the same cells in the list, the text, the HTML pages, the spreadsheet, the PDF and
// the clipboard. A further report is one line of the table.
#include <QClipboard>
#include <QPrinter>
#include <QProcess>
#include <QStandardPaths>
#include <QTableView>
#include <QXmlStreamReader>

#include "core/Einstellungen.h"
#include "core/Konfig.h"
#include "output/Listenzeilen.h"
#include "output/PA_Textausgabe.h"
#include "output/PA_Zwischenliste.h"
#include "output/Tabelle_xlsx.h"
#include "plans/PB_Sauenkarte.h"
#include "stock/PB_Bestandsregister.h"
#include "tests/ui/ProgramTest.h"
#include "ui/ListCopy.h"
#include "ui/Preview.h"
#include "ui/Printing.h"

namespace koben::ui {
namespace {

struct Report {
    const char* form;
    const char* clicks;  ///< what the user clicks there, "ok(1)" for one of several, or types, "t(0)=2026"; the last
                         ///< one hands the list over
};
const Report Reports[] = {{"PB_Statusplan", "ok"},
                          {"PB_Statusplan", "sstab(3) ok"},
                          {"PB_Wartezeiten", "ok"},
                          {"PB_Arbeitsplan", "allearplan(0) woche(3) ok(0)"},
                          {"PB_Arbeitsplan", "allearplan(0) woche(1) ok(1)"},
                          {"PB_Tierinformation_Schweine", "optitieraus(0) alletier(0) ok"},
                          {"PB_Tierinformation_Buchungen", "optitieraus(3) alletier(0) ok"},
                          {"PB_Tierinformation_Buchungen", "optitieraus(3) konereignis ok"},
                          {"PB_Bestand", "libestand(1) alletiere(0) ok(0)"},
                          {"PB_Bestand", "alletiere(0) ok(1)"},
                          {"PB_Bestand", "libestand(1) ok(2)"},
                          {"PB_Bestand", "ok(3)"},
                          {"PB_Statistiken", "alletier(0) ok(0)"},
                          {"PB_Deckungsbeitrag", "t(0)=2025 t(1)=2026 alletier(0) ok"},
                          {"PB_Gruppierungen", "gruppeok(2) ok"},
                          {"PB_Gruppierungen", "auswertungok(0) ok"},
                          {"PB_Logiktest", "optiwoche(0) ok"}};

using Cells = std::vector<QStringList>;

void clickOn(Form& form, const QString& target) {
    const QString name = target.section(u'(', 0, 0);
    const int index = target.contains(u'(') ? target.section(u'(', 1).section(u')', 0, 0).toInt() : -1;
    Control* control = form.find(name, index);
    if (auto* box = dynamic_cast<TextBox*>(control)) return box->type(target.section(u'=', 1));
    if (auto* pages = dynamic_cast<Tabs*>(form.find(name))) return pages->choose(index);
    if (auto* button = dynamic_cast<Button*>(control)) return button->click();
    if (auto* option = dynamic_cast<Option*>(control)) return option->click();
    if (auto* box = dynamic_cast<CheckBox*>(control)) return box->click();
    if (auto* list = dynamic_cast<ListBox*>(form.find(name))) return list->mark({index});
    ADD_FAILURE() << target.toStdString();
}

QString cellText(const QString& cell) { return einzeilig(cell).simplified(); }

Cells cellsOf(const Grid& grid) {
    Cells rows;
    for (const Listenzeile& line : Listenzeilen(grid)) {
        if (line.art != Zeilenart::Daten) continue;
        rows.emplace_back();
        for (int c = 1; c <= grid.columnCount(); ++c) rows.back().append(cellText(grid.cell(line.row, c)));
    }
    return rows;
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString output(const char* program, const QStringList& arguments) {
    QProcess reader;
    reader.start(QString::fromLatin1(program), arguments);
    reader.waitForFinished();
    return QString::fromUtf8(reader.readAllStandardOutput());
}

/// The rows of the HTML pages, lines and blocks left out.
Cells htmlCells(const QString& folder) {
    Cells rows;
    for (int page = 1;; ++page) {
        const QString name = page == 1 ? QStringLiteral("report.htm") : QStringLiteral("report-%1.htm").arg(page);
        if (!QFile::exists(folder + name)) return rows;
        QXmlStreamReader xml(contentOf(folder + name));
        while (!xml.atEnd()) {
            xml.readNext();
            if (!xml.isStartElement()) continue;
            if (xml.name() == u"tr" && xml.attributes().isEmpty()) rows.emplace_back();
            if (xml.name() == u"th") rows.back().clear();
            if (xml.name() == u"td" && !rows.empty() && !xml.attributes().hasAttribute(QStringLiteral("colspan")))
                rows.back().append(cellText(xml.readElementText()));
        }
        EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
        std::erase_if(rows, [](const QStringList& row) { return row.isEmpty(); });
    }
}

/// The cells of the spreadsheet: a number as the list would show it where it is stored as one.
struct SheetCell {
    QString text;
    std::optional<double> number;
};
std::map<int, std::map<int, SheetCell>> sheetRows(const QString& path) {
    std::map<int, std::map<int, SheetCell>> rows;  // as they count there, from 1
    QXmlStreamReader xml(
        output("unzip", {QStringLiteral("-p"), path, QStringLiteral("xl/worksheets/sheet1.xml")}).toUtf8());
    int row = 0, column = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement()) continue;
        if (xml.name() == u"row") row = xml.attributes().value(QStringLiteral("r")).toInt();
        if (xml.name() == u"c") {
            column = 0;
            for (const QChar c : xml.attributes().value(QStringLiteral("r")))
                if (c.isLetter()) column = column * 26 + (c.unicode() - u'A' + 1);
        }
        if (xml.name() == u"v") rows[row][column].number = xml.readElementText().toDouble();
        if (xml.name() == u"t") rows[row][column].text = cellText(xml.readElementText());
    }
    return rows;
}

struct Berichte : ProgramTest, testing::WithParamInterface<Report> {
    void compare(PA_Zwischenliste& list) {
        ++lists;
        const Cells cells = cellsOf(list.gridli);
        ASSERT_FALSE(cells.empty());
        compareAnimals(list.gridli);
        compareView(list);
        compareClipboard(list);
        list.roexplorer[0].click();
        const Cells html = htmlCells(koben.Datenordner);
        ASSERT_EQ(html.size(), cells.size());
        for (size_t row = 0; row < cells.size(); ++row) EXPECT_EQ(html[row], cells[row]) << "HTML, row " << row;
        list.comexcel.click();
        compareSheet(list.gridli);
        comparePdf(list.gridli, cells);
        list.comtext.click();
    }
    /// A row that names an animal leads to it.
    void compareAnimals(const Grid& grid) {
        const Table herd = koben.Hauptdatenbank.table(QStringLiteral("select ID, Nummer from Sauen"));
        QMultiHash<QString, qint64> animals;
        for (int row = 0; row < herd.rowCount(); ++row) animals.insert(herd.text(row, 1), herd.integer(row, 0));
        for (int c = 1; c <= grid.columnCount(); ++c)
            for (int row = 1; row <= grid.rowCount(); ++row) {
                const bool named = QStringList{"Nummer", "Saunr"}.contains(grid.column(c).title);
                if (!named || grid.isSeparator(row) || !animals.contains(grid.cell(row, c))) continue;
                const bool leads = grid.lead || grid.columnOf(u"Nummer") == c || grid.animal(row) != 0;
                EXPECT_TRUE(leads) << "row " << row;
                EXPECT_TRUE(grid.animal(row) == 0 || animals.contains(grid.cell(row, c), grid.animal(row)));
            }
    }
    /// The list on the screen.
    void compareView(PA_Zwischenliste& list) {
        const auto* view = qobject_cast<QTableView*>(screens.windowOf(list)->widgetOf(list.gridli));
        for (int row = 1; row <= list.gridli.rowCount(); ++row)
            for (int c = 1; c <= list.gridli.columnCount() && !list.gridli.isSeparator(row); ++c)
                EXPECT_EQ(view->model()->index(row - 1, c - 1).data().toString(), list.gridli.cell(row, c))
                    << row << ' ' << list.gridli.column(c).title.toStdString();
    }
    void compareClipboard(PA_Zwischenliste& list) {
        QWidget* view = screens.windowOf(list)->widgetOf(list.gridli);
        for (int row = 1; row <= std::min(list.gridli.rowCount(), 20); ++row) {
            if (list.gridli.isSeparator(row)) continue;
            list.gridli.choose(row);
            press(view, Qt::Key_C, Qt::ControlModifier);
            QStringList expected;
            for (int c = 1; c <= list.gridli.columnCount(); ++c) expected.append(harmless(list.gridli.cell(row, c)));
            const QString copied = QApplication::clipboard()->text().section(u'\n', 1, 1);
            EXPECT_EQ(copied, expected.join(u'\t')) << "clipboard, row " << row;
        }
    }
    /// Row for row; numbers are numbers there, and dates texts that read as they stand.
    void compareSheet(const Grid& grid) {
        auto rows = sheetRows(koben.Datenordner + QStringLiteral("liste.xlsx"));
        const int titles = koben.Konfig_Zahl[Zahl::BerichtDatum] == 1 ? 3 : 1;  // below the day and an empty line
        for (int row = 1; row <= grid.rowCount(); ++row)
            for (int c = 1; c <= grid.columnCount(); ++c) {
                auto& cells = rows[titles + row];
                const QString cell = grid.cell(row, c);
                static const QRegularExpression figure(QStringLiteral("^-?[0-9.]+(,[0-9]+)?$"));
                const bool isNumber = grid.column(c).sort == Sort::Number && figure.match(cell).hasMatch();
                EXPECT_TRUE(!isNumber || cells[c].number) << cell.toStdString() << " is no number";
                if (cells[c].number)
                    EXPECT_EQ(cells[c].number, Tabellenzahl(cell)) << cell.toStdString();
                else
                    EXPECT_EQ(cells[c].text, cellText(cell)) << "spreadsheet, row " << row;
            }
    }
    /// Row for row in the order of the pages; where the columns go on on further pages, cell by cell.
    void comparePdf(const Grid& grid, const Cells& cells) {
        const QString path = data.filePath(QStringLiteral("bericht.pdf"));
        QPrinter printer(QPrinter::HighResolution);
        setPage(printer, true);
        ASSERT_TRUE(writePdf(path, printer.pageLayout(), [&](QPrinter& target) {
            return drawTable(target, koben, grid, QStringLiteral("Bericht"));
        }));
        QString text = output("pdftotext", {QStringLiteral("-raw"), path, QStringLiteral("-")});
        text.remove(QRegularExpression(QStringLiteral("\\s")));
        const auto lastFilled = [](const QStringList& row) {
            return std::find_if(row.rbegin(), row.rend(), [](const QString& cell) { return !cell.isEmpty(); }).base() -
                   row.begin();
        };
        const QStringList& widest = *std::max_element(
            cells.begin(), cells.end(), [&](const auto& a, const auto& b) { return lastFilled(a) < lastFilled(b); });
        const bool split = !text.contains(widest.join(QString()).remove(u' '));
        qsizetype from = 0;
        for (const QStringList& row : cells) {
            if (split) {
                for (const QString& cell : row) EXPECT_TRUE(text.contains(QString(cell).remove(u' ')));
                continue;
            }
            const QString whole = row.join(QString()).remove(u' ');
            const qsizetype at = text.indexOf(whole, from);
            EXPECT_GE(at, 0) << "PDF: " << row.join(u'|').toStdString();
            if (at >= 0) from = at + whole.size();
        }
    }
    /// The lines of the text file that hold cells, against those of the list; the box shows the first 32 kB of it.
    void compareText(const Cells& cells, int columns) {
        ++texts;
        const QString text = ausWindows1252(contentOf(koben.Ausgabedatei)).remove(u' ');
        qsizetype from = 0;
        for (const QStringList& row : cells) {
            const QString whole = QString(row.mid(0, columns).join(u'|')).remove(u' ');
            const qsizetype at = text.indexOf(whole, from);
            EXPECT_GE(at, 0) << "text: " << whole.toStdString();
            if (at >= 0) from = at + whole.size();
        }
    }
    int lists = 0, texts = 0;
};

TEST_P(Berichte, DieselbenZellenInJederForm) {
    for (const char* program : {"pdftotext", "unzip"})
        if (QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty()) GTEST_SKIP() << "no " << program;
    const Report& report = GetParam();
    const PA_Zwischenliste* list = nullptr;
    runProgram([&](Form& form) {
        if (form.name() == u"PA_Koben") {
            koben.Buchungsmodus = QStringLiteral("Neu");
            koben.open(QString::fromUtf8(report.form));
        } else if (form.name() == QString::fromUtf8(report.form)) {
            for (const QString& target : QString::fromUtf8(report.clicks).split(u' ')) clickOn(form, target);
        } else if (auto* shown = dynamic_cast<PA_Zwischenliste*>(&form)) {
            list = shown;
            QApplication::processEvents();
            compare(*shown);
        } else if (form.name() == u"PA_Textausgabe") {
            compareText(cellsOf(list->gridli), 52);
        }
    });
    EXPECT_EQ(lists, 1) << screens.told.join(u'|').toStdString();
    EXPECT_EQ(texts, 1);
    for (const QString& text : screens.told) EXPECT_TRUE(text.contains(u"32 kB")) << text.toStdString();
}
INSTANTIATE_TEST_SUITE_P(Formen, Berichte, testing::ValuesIn(Reports));

/// What goes to paper as lines: the register out of its viewer, the sow cards straight to the printer.
struct Papier : ProgramTest {
    /// Every line of the drawings stands in the PDF file, in order.
    void expectLines(const std::vector<Drawing>& drawings) {
        QString text = output("pdftotext", {QStringLiteral("-raw"), platform.pdf, QStringLiteral("-")});
        text.remove(QRegularExpression(QStringLiteral("\\s")));
        qsizetype from = 0;
        for (const Drawing& drawing : drawings)
            for (const DrawPage& page : drawing.pages)
                for (const DrawItem& item : page.items) {
                    const auto* line = std::get_if<TextLine>(&item);
                    QString whole;
                    for (size_t i = 0; line && i < line->pieces.size(); ++i) whole += line->pieces[i].text;
                    whole.remove(u' ').remove(u'\t');
                    const qsizetype at = text.indexOf(whole, from);
                    EXPECT_GE(at, 0) << "PDF: " << whole.toStdString();
                    if (at >= 0) from = at + whole.size();
                    lines += !whole.isEmpty();
                }
    }
    int lines = 0;
};

TEST_F(Papier, RegisterInJederForm) {
    platform.pdf = data.filePath(QStringLiteral("register.pdf"));
    runProgram([&](Form& form) {
        if (form.name() == u"PA_Koben") {
            koben.open("PB_Bestandsregister");
        } else if (auto* book = dynamic_cast<PB_Bestandsregister*>(&form)) {
            book->tdat[0].edited(QStringLiteral("01.01.2026"));
            book->kon.click();
            book->ok.click();
        } else if (auto* shown = dynamic_cast<PA_Textausgabe*>(&form)) {
            const QString file = ausWindows1252(contentOf(koben.Ausgabedatei));
            EXPECT_TRUE(shown->t.text().startsWith(file.left(30000))) << "the viewer shows the file";
            shown->druckformat[1].click();
            shown->dateidrucken.click();
            expectLines({shown->druckbild()});
        }
    });
    EXPECT_GT(lines, 20) << screens.told.join(u'|').toStdString();
}

TEST_F(Papier, SauenkartenAufDemPapier) {
    platform.pdf = data.filePath(QStringLiteral("karten.pdf"));
    runProgram([&](Form& form) {
        if (form.name() == u"PA_Koben") return void(koben.open("PB_Sauenkarte"));
        auto* cards = dynamic_cast<PB_Sauenkarte*>(&form);
        if (!cards) return;
        std::vector<Drawing> drawings;
        for (int row = 1; row <= cards->datali.rowCount(); ++row) {
            DrawingRecorder card(false);
            cards->look(card, {row});
            drawings.push_back(card.drawing);
        }
        cards->alletier[0].click();
        cards->komdrucker.setItems({QString(), QStringLiteral("verschwunden")});
        cards->komdrucker.choose(1);
        cards->ok.click();
        EXPECT_TRUE(screens.told.last().contains(u"nicht gedruckt werden")) << screens.told.last().toStdString();
        EXPECT_FALSE(QFile::exists(platform.pdf));
        cards->komdrucker.choose(0);
        cards->ok.click();
        expectLines(drawings);
    });
    EXPECT_GT(lines, 100) << screens.told.join(u'|').toStdString();
}

}  // namespace
}  // namespace koben::ui

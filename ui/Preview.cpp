#include "ui/Preview.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QPageLayout>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QToolBar>

#include "core/Konfig.h"
#include "forms/Koben.h"
#include "output/Tabellendruck.h"
#include "store/Files.h"
#include "ui/Look.h"
#include "ui/Printing.h"

namespace koben::ui {

namespace {

/// False where the painting was given up or failed.
bool paint(QPrinter& printer, const Draw& draw, const PrintJob::Go& go) {
    const Drawing drawing = draw(printer);
    if (drawing.pages.empty()) return false;
    const auto part = [&go](int from) { return [&go, from](int percent) { return !go || go(from + percent / 2); }; };
    Sheets sheets(drawing, printer, part(0));
    QPainter painter;
    if (!sheets.isWhole() || !painter.begin(&printer)) return false;
    const bool whole = sheets.paint(painter, part(50));
    return painter.end() && whole;
}

/// The same with a bar, where it takes long.
bool paintWithBar(QPrinter& printer, Koben& koben, const Draw& draw) {
    Progress progress(koben, QStringLiteral("Die Seiten werden gezeichnet ..."), 100);
    return paint(printer, draw, [&progress](int percent) { return progress.step(percent); });
}

/// Qt's own drawings in the preview's bar give way to the program's. They are known by their words alone.
void drawIcons(const QWidget& dialog) {
    static const std::pair<const char*, const char*> drawings[] = {{"Fit width", "breite"},
                                                                   {"Fit page", "ganzeseite"},
                                                                   {"Zoom in", "groesser"},
                                                                   {"Zoom out", "kleiner"},
                                                                   {"Portrait", "hochformat"},
                                                                   {"Landscape", "querformat"},
                                                                   {"First page", "anfang"},
                                                                   {"Previous page", "links"},
                                                                   {"Next page", "rechts"},
                                                                   {"Last page", "ende"},
                                                                   {"Show single page", "einzeln"},
                                                                   {"Show facing pages", "doppelseite"},
                                                                   {"Show overview of all pages", "uebersicht"},
                                                                   {"Print", "drucken"},
                                                                   {"Page setup", "seiteneinrichtung"}};
    for (const auto& [words, drawing] : drawings) {
        const QString text = QCoreApplication::translate("QPrintPreviewDialog", words);
        for (QAction* action : dialog.findChildren<QAction*>())
            if (action->text() == text) action->setIcon(iconOf(QString::fromLatin1(drawing), dialog.palette()));
    }
}

/// Asks for a file and writes the pages there, on the paper that the preview has.
void keepAsPdf(QWidget& window, Koben& koben, const QString& name, const QPageLayout& paper, const Draw& draw) {
    QString path = QFileDialog::getSaveFileName(&window, QStringLiteral("Als PDF speichern"),
                                                koben.Datenordner + name + QStringLiteral(".pdf"),
                                                QStringLiteral("PDF-Dateien (*.pdf)"));
    if (path.isEmpty()) return;
    if (!path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive)) path += QStringLiteral(".pdf");
    bool cancelled = false, written = false;
    {
        Progress progress(koben, QStringLiteral("Die PDF-Datei wird geschrieben ..."), 100);
        written = writePdf(path, paper, draw, [&progress](int percent) { return progress.step(percent); });
        cancelled = progress.cancelled();
    }
    if (cancelled) return;
    if (!written)
        koben.message(QStringLiteral("Die Datei %1 konnte nicht geschrieben werden. Bitte prüfen Sie, ob im Ordner "
                                     "genügend Platz und das Schreiben erlaubt ist.")
                          .arg(QDir::toNativeSeparators(path)));
    else if (!koben.platform.open(path))
        koben.message(QStringLiteral("Die PDF-Datei konnte nicht angezeigt werden. Sie liegt unter %1.")
                          .arg(QDir::toNativeSeparators(path)));
}

}  // namespace

bool writePdf(const QString& path, const QPageLayout& paper, const Draw& draw, const PrintJob::Go& go) {
    const QString draft = path + QStringLiteral(".teil");
    bool whole = false;
    {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(draft);
        printer.setCreator(QStringLiteral("KOBEN"));
        printer.setPageLayout(paper);
        whole = paint(printer, draw, go);
    }
    if (whole && replaceFile(draft, path).isEmpty()) return true;
    QFile::remove(draft);
    return false;
}

void preview(QWidget& parent, Koben& koben, const QString& name, bool landscape, const Draw& draw) {
    QPrinter printer(QPrinter::HighResolution);
    setPage(printer, landscape);
    QPrintPreviewDialog dialog(&printer, &parent);
    dialog.setWindowTitle(QStringLiteral("Vorschau"));
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog, [&](QPrinter* target) {
        if (!paintWithBar(*target, koben, draw))
            QMetaObject::invokeMethod(&dialog, &QDialog::reject, Qt::QueuedConnection);
    });
    drawIcons(dialog);
    if (auto* bar = dialog.findChild<QToolBar*>()) {
        bar->addSeparator();
        QAction* pdf = bar->addAction(QStringLiteral("Als &PDF..."));
        QObject::connect(pdf, &QAction::triggered, &dialog,
                         [&] { keepAsPdf(dialog, koben, name, printer.pageLayout(), draw); });
    }
    dialog.resize(parent.size().expandedTo({700, 600}));
    dialog.exec();
}

namespace {

Tabellenblatt sheetOf(QPrinter& printer, Faces& faces) {
    const QSizeF paper = printer.pageRect(QPrinter::Millimeter).size();
    return {paper.width(), paper.height(), [&faces](const QString& text, const Typeface& face) {
                return faces.of(face).metrics.horizontalAdvance(text) * millimetresPerInch / layoutDots;
            }};
}

}  // namespace

Drawing drawTable(QPrinter& printer, Koben& koben, const Grid& grid, const QString& title) {
    Faces faces;
    Progress progress(koben, QStringLiteral("Die Seiten werden aufgebaut ..."),
                      2 * static_cast<qint64>(grid.rowCount()));
    Drawing drawing = Tabellendruck(grid, sheetOf(printer, faces), {.title = title, .date = koben.Heute},
                                    koben.Konfig_Text[Text::Berichtskopf], &progress);
    if (progress.cancelled()) drawing.pages.clear();
    return drawing;
}

void previewTable(QWidget& parent, Koben& koben, const Grid& grid, const QString& title) {
    QPrinter upright(QPrinter::HighResolution);
    setPage(upright, false);
    Faces faces;
    const bool wide = braucht_Querformat(grid, sheetOf(upright, faces));
    preview(parent, koben, title, wide, [&](QPrinter& printer) { return drawTable(printer, koben, grid, title); });
}

}  // namespace koben::ui

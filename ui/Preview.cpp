#include "ui/Preview.h"

#include <QAction>
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
#include "ui/Printing.h"

namespace koben::ui {

namespace {

constexpr double millimetresPerInch = 25.4;

bool paint(QPrinter& printer, const Draw& draw) {
    QPainter painter;
    if (!painter.begin(&printer)) return false;
    const Drawing drawing = draw(printer);
    Sheets(drawing, printer).paint(painter);
    return painter.end();
}

/// Asks for a file and writes the pages there, on the paper that the preview has.
void keepAsPdf(QWidget& window, Koben& koben, const QString& name, const QPageLayout& paper, const Draw& draw) {
    QString path = QFileDialog::getSaveFileName(&window, QStringLiteral("Als PDF speichern"),
                                                koben.Datenordner + name + QStringLiteral(".pdf"),
                                                QStringLiteral("PDF-Dateien (*.pdf)"));
    if (path.isEmpty()) return;
    if (!path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive)) path += QStringLiteral(".pdf");
    if (!writePdf(path, paper, draw))
        koben.message(QStringLiteral("Die Datei %1 konnte nicht geschrieben werden. Bitte prüfen Sie, ob im Ordner "
                                     "genügend Platz und das Schreiben erlaubt ist.")
                          .arg(path));
    else if (!koben.platform.open(path))
        koben.message(QStringLiteral("Die PDF-Datei konnte nicht angezeigt werden. Sie liegt unter %1.").arg(path));
}

}  // namespace

bool writePdf(const QString& path, const QPageLayout& paper, const Draw& draw) {
    const QString draft = path + QStringLiteral(".teil");
    bool whole = false;
    {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(draft);
        printer.setCreator(QStringLiteral("KOBEN"));
        printer.setPageLayout(paper);
        whole = paint(printer, draw);
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
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&](QPrinter* target) { paint(*target, draw); });
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
    const double dots = printer.resolution() / millimetresPerInch;
    const QSizeF paper = printer.pageRect(QPrinter::Millimeter).size();
    return {paper.width(), paper.height(), [&faces, dots](const QString& text, const Typeface& face) {
                return faces.of(face).metrics.horizontalAdvance(text) / dots;
            }};
}

}  // namespace

Drawing drawTable(QPrinter& printer, Koben& koben, const Grid& grid, const QString& title) {
    Faces faces(printer);
    Progress progress(koben, QStringLiteral("Die Seiten werden aufgebaut ..."),
                      2 * static_cast<qint64>(grid.rowCount()));
    return Tabellendruck(grid, sheetOf(printer, faces), {.title = title, .date = koben.Heute},
                         koben.Konfig_Text[Text::Berichtskopf], &progress);
}

void previewTable(QWidget& parent, Koben& koben, const Grid& grid, const QString& title) {
    QPrinter upright(QPrinter::HighResolution);
    setPage(upright, false);
    Faces faces(upright);
    const bool wide = braucht_Querformat(grid, sheetOf(upright, faces));
    preview(parent, koben, title, wide, [&](QPrinter& printer) { return drawTable(printer, koben, grid, title); });
}

}  // namespace koben::ui

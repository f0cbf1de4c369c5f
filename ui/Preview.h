#pragma once
// A look at a document as it will stand on paper.
#include <QPrinter>
#include <functional>

#include "forms/Ports.h"

class QPrintPreviewDialog;
class QWidget;

namespace koben {
class Grid;
struct Koben;
}  // namespace koben

namespace koben::ui {

/// Makes the document for the paper of what it goes to: preview, printer or PDF. Without pages it was given up.
using Draw = std::function<Drawing(QPrinter&)>;

/// Shows the pages with their number, zoom and direction; from there they can also be printed or kept as PDF. What is
/// printed from there is what is shown. A bar shows while the pages are painted; cancelled, the preview closes. `name`
/// is offered for the PDF.
void preview(QWidget& parent, Koben& koben, const QString& name, bool landscape, const Draw& draw);

/// Writes the document as PDF; false, with what stood at `path` before, where it was given up or cannot be written.
bool writePdf(const QString& path, const QPageLayout& paper, const Draw& draw, const PrintJob::Go& go = {});

/// A list as a printed table, see Tabellendruck.
void previewTable(QWidget& parent, Koben& koben, const Grid& grid, const QString& title);
/// The same for one printer.
Drawing drawTable(QPrinter& printer, Koben& koben, const Grid& grid, const QString& title);

}  // namespace koben::ui

#include "ui/Preview.h"

#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QStringList>

#include "ui/Printing.h"

namespace koben::ui {

void previewText(QWidget& parent, const QString& text, const QString& font, int points, bool bold, bool italic,
                 bool landscape, int margin) {
    QPrinter printer(QPrinter::HighResolution);
    setPage(printer, landscape);
    QPrintPreviewDialog dialog(&printer, &parent);
    dialog.setWindowTitle(QStringLiteral("Vorschau"));
    QFont face(font, points);
    face.setBold(bold);
    face.setItalic(italic);
    const QString indent(margin, u' ');
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog, [&](QPrinter* target) {
        PagePainter page(*target);
        page.font = face;
        if (!page.begin()) return;
        page.line({});  // as the printout begins
        for (QString line : text.split(u'\n')) {
            if (line.endsWith(u'\r')) line.chop(1);
            if (line.trimmed() == u"#")
                page.newPage();
            else
                page.line(indent + line);
        }
        page.end();
    });
    dialog.resize(parent.size().expandedTo({700, 600}));
    dialog.exec();
}

}  // namespace koben::ui

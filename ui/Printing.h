#pragma once
// Paper and PDF: lines of text, page by page.
#include <QFont>
#include <QPainter>
#include <QPrinter>
#include <functional>
#include <memory>

#include "forms/Ports.h"

namespace koben::ui {

/// Paints lines below each other on a printer; a full page gives way to the next. All measures are the printer's.
class PagePainter {
public:
    explicit PagePainter(QPrinter& printer) : m_printer(printer) {}
    bool begin();
    void line(const QString& text);
    /// The next line begins a page.
    void newPage();
    bool end() { return m_painter.end(); }
    QFont font = QFont(QStringLiteral("Courier New"), 10);

private:
    QPrinter& m_printer;
    QPainter m_painter;
    qreal m_y = 0;
};

/// A job on a printer of the system; nothing where it cannot begin.
std::unique_ptr<PrintJob> beginPrint(const QString& printer, bool landscape);
/// A job into a PDF file, which is there whole or, without end(), not at all. `opened` gets the finished file.
std::unique_ptr<PrintJob> beginPdf(const QString& path, bool landscape, std::function<void(const QString&)> finished);

/// Page and margins of all documents.
void setPage(QPrinter& printer, bool landscape);

}  // namespace koben::ui

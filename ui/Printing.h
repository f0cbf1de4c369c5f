#pragma once
// Paper, PDF and preview: a drawing laid out once by measures of its own and enlarged to what it goes to, so that all
// of them have the same lines on the same pages.
#include <QPainter>
#include <QPrinter>
#include <functional>
#include <memory>

#include "forms/Ports.h"
#include "ui/DrawItems.h"

namespace koben::ui {

/// A drawing on the sheets of a printer, of which only the paper counts for the breaks.
class Sheets {
public:
    /// Keeps a reference to both. Where `go` gives up, the layout stops short and paint() must not follow.
    Sheets(const Drawing& drawing, QPrinter& printer, const PrintJob::Go& go = {});
    bool isWhole() const { return m_whole; }
    int count() const { return static_cast<int>(m_sheets.size()); }
    /// Paints all sheets; the painter has begun on the printer. False where `go` gave up.
    bool paint(QPainter& painter, const PrintJob::Go& go = {});

private:
    struct Run {
        QPointF at;  ///< left end of the base line
        const Faces::Face* face;
        QString text;
    };
    struct OneSheet {
        std::vector<Run> runs;
        const DrawPage* placed = nullptr;  ///< what has places of its own
        double height = 0;
    };
    /// A line that is being set.
    struct Line {
        std::vector<Run> runs;
        double x = 0, ascent = 0, below = 0;
        void makeRoom(const Faces::Face& face) {
            ascent = std::max(ascent, face.metrics.ascent());
            below = std::max(below, face.metrics.lineSpacing() - face.metrics.ascent());
        }
    };
    void widenForCards();
    void layOut(const DrawPage& page, const std::function<bool()>& itemDone);
    void add(const TextLine& line, bool repeatHead);
    void add(Line& line, const Faces::Face& face, QString rest, bool repeatHead);
    void flush(Line& line, bool repeatHead);
    void paintSheet(QPainter& painter, int sheet);
    void paintLines(QPainter& painter, const OneSheet& sheet);
    void paintMargins(QPainter& painter, int number);

    const Drawing& m_drawing;
    QPrinter& m_printer;
    Faces m_faces;
    std::vector<OneSheet> m_sheets;
    double m_width, m_height;  ///< layout dots
    double m_left = 0;         ///< of the lines, from the left margin
    double m_y = 0;
    bool m_whole = true;
};

/// A job on a printer of the system; nothing where it cannot begin. Given up while its sheets are painted, it may print
/// those that are.
std::unique_ptr<PrintJob> beginPrint(const QString& printer, bool landscape);
/// A job into a PDF file, which is there whole or, without end(), not at all. `finished` gets the finished file, ""
/// where it could not be written.
std::unique_ptr<PrintJob> beginPdf(const QString& path, bool landscape, std::function<void(const QString&)> finished);

/// Page and margins of all documents.
void setPage(QPrinter& printer, bool landscape);

}  // namespace koben::ui

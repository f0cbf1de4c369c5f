#pragma once
// A document as the list of what stands on its pages: lines of text in pieces of changing fonts, straight lines,
// rectangles, pictures. Printer, PDF, preview and script all show this one list.
#include <QByteArray>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <functional>
#include <variant>
#include <vector>

namespace koben {

struct Typeface {
    QString name = {};  ///< "" for the printer's own, one of fixed pitch
    double points = 0;  ///< 0 for the printer's own, 10
    bool bold = false, italic = false;
    bool operator==(const Typeface&) const = default;
};

struct TextPiece {
    QString text;
    Typeface font;
};

/// Stands below the line before it. What does not fit the paper's width goes on below, what does not fit its height on
/// the next sheet. A tab leads to the next eighth character.
struct TextLine {
    std::vector<TextPiece> pieces;
};

// What follows stands at its place on the page: millimetres from the upper left corner within the margins.

struct PlacedText {
    QRectF box;         ///< the text stands in the middle of its height and is not cut at its edges
    double anchor = 0;  ///< 0 at the left, 0.5 in the middle, 1 at the right of the box
    TextPiece piece;
};
struct StraightLine {
    QPointF from, to;
    double width = 0.2;
};
struct Rectangle {
    QRectF box;
    double width = 0.2;  ///< of its edge; 0 for none
    int shade = -1;      ///< grey inside, 0 black to 255 white; -1 for none
};
struct Picture {
    QRectF box;
    QByteArray file;  ///< PNG, JPEG or SVG
};

using DrawItem = std::variant<TextLine, PlacedText, StraightLine, Rectangle, Picture>;

struct DrawPage {
    std::vector<DrawItem> items;
};

/// What stands on every sheet besides the job's own lines.
struct Sheet {
    QString title = {}, date = {};    ///< in the upper margin; with a title, "Seite x von y" in the lower one
    std::vector<TextLine> head = {};  ///< stands again above lines that a full sheet has pushed to the next
    /// Of cards: so many characters of the printer's own font stand on a line, for which the side margins give way, and
    /// a page that is too high becomes smaller as a whole instead of going on on the next sheet. 0 for other documents.
    int cardColumns = 0;
};

struct Drawing {
    bool landscape = false;
    Sheet sheet = {};
    std::vector<DrawPage> pages = {{}};
};

/// A document on its way to a printer.
class PrintJob {
public:
    virtual ~PrintJob() = default;
    virtual void setFont(const QString& name) = 0;
    virtual void setSize(double points) = 0;
    virtual void setBold(bool on) = 0;
    virtual void setItalic(bool on) = 0;
    /// A piece of a line, which the next line() ends; the font may change from piece to piece.
    virtual void text(const QString& piece) = 0;
    virtual void line(const QString& text) = 0;
    /// Something at its place on the current page, apart from the lines.
    virtual void place(const DrawItem& item) { Q_UNUSED(item) }
    /// Title, date and repeated head; they are no lines of the job.
    virtual void setSheet(const Sheet& sheet) { Q_UNUSED(sheet) }
    virtual void newPage() = 0;
    /// Called now and then with how far the output is; false gives it up.
    using Go = std::function<bool(int percent)>;
    /// Prints; without it nothing is printed. False where it was given up or could not be printed: a file is not there
    /// then, and of a printer's sheets none is known to be.
    virtual bool end(const Go& go = {}) = 0;
};

/// A job that gathers its drawing and shows it at the end.
class DrawnJob : public PrintJob {
public:
    explicit DrawnJob(bool landscape) { m_drawing.landscape = landscape; }
    void setFont(const QString& name) override { m_font.name = name; }
    void setSize(double points) override { m_font.points = points; }
    void setBold(bool on) override { m_font.bold = on; }
    void setItalic(bool on) override { m_font.italic = on; }
    void text(const QString& piece) override { m_line.pieces.push_back({piece, m_font}); }
    void line(const QString& text) override;
    void place(const DrawItem& item) override { m_drawing.pages.back().items.push_back(item); }
    void setSheet(const Sheet& sheet) override { m_drawing.sheet = sheet; }
    void newPage() override;
    bool end(const Go& go = {}) override;

protected:
    virtual bool finish(const Drawing& drawing, const Go& go) = 0;

private:
    void endLine();
    Drawing m_drawing;
    TextLine m_line;
    Typeface m_font;
};

/// A job that is only looked at.
class DrawingRecorder final : public DrawnJob {
public:
    using DrawnJob::DrawnJob;
    Drawing drawing;  ///< whole after end()

private:
    bool finish(const Drawing& whole, const Go&) override {
        drawing = whole;
        return true;
    }
};

/// Sends a drawing through any job.
void play(const Drawing& drawing, PrintJob& job);

}  // namespace koben

#pragma once
// A document as the list of what stands on its pages: lines of text in pieces of changing fonts, straight and bent
// lines, rectangles, filled areas, marks, pictures. Printer, PDF, SVG, preview, window and script all show this one
// list.
#include <QByteArray>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <array>
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

/// What something is drawn in: a role. Its colour is the window's in either shade, or the paper's.
enum class Tone : quint8 { Text, Quiet, Grid, Accent, Second, Third, Warning, Ground };
inline constexpr int ToneCount = 8;

/// The colour of each tone, 0xRRGGBB.
using Tints = std::array<quint32, ToneCount>;
const Tints& paperTints();  ///< told apart in grey too: each is of another lightness
/// The colour of a tone; at less than full strength it is mixed with the ground.
quint32 tint(const Tints& tints, Tone tone, double strength = 1);

// What tells lines and areas apart without colour.
enum class Dash : quint8 { Solid, Dashed, Dotted, DashDot };
enum class Hatch : quint8 { None, Rising, Falling, Crossed, Level };
enum class Shape : quint8 { Circle, Square, Triangle, Cross };

// What follows stands at its place on the page: millimetres from the upper left corner within the margins.

struct PlacedText {
    QRectF box;         ///< the text stands in the middle of its height and is not cut at its edges
    double anchor = 0;  ///< 0 at the left, 0.5 in the middle, 1 at the right of the box
    TextPiece piece;
    Tone tone = Tone::Text;
};
struct StraightLine {
    QPointF from, to;
    double width = 0.2;
    Tone tone = Tone::Text;
    Dash dash = Dash::Solid;
};
struct Rectangle {
    QRectF box;
    double width = 0.2;  ///< of its edge; 0 for none
    int shade = -1;      ///< inside, 0 the text's black to 255 the paper's white; -1 for none
};
struct Polyline {
    std::vector<QPointF> points;
    double width = 0.4;
    Tone tone = Tone::Accent;
    Dash dash = Dash::Solid;
};
/// A polygon, or a rectangle as its four corners.
struct FilledArea {
    std::vector<QPointF> points;
    Tone tone = Tone::Accent;  ///< of ground, hatch and edge
    double strength = 1;       ///< of the ground inside: 0 none, 1 the full tone
    Hatch hatch = Hatch::None;
    double width = 0.2;  ///< of the edge; 0 for none
};
struct Mark {
    QPointF at;
    Shape shape = Shape::Circle;
    double size = 2;  ///< across
    Tone tone = Tone::Accent;
    bool filled = true;  ///< else the ground shows inside its edge
};
struct Picture {
    QRectF box;
    QByteArray file;  ///< PNG, JPEG or SVG
};

using DrawItem = std::variant<TextLine, PlacedText, StraightLine, Rectangle, Picture, Polyline, FilledArea, Mark>;

/// Lengths of stroke and gap by turns, in millimetres; empty for a solid line.
std::vector<double> dashLengths(Dash dash, double width);
/// The lines of an area's hatch, cut at its edge; every medium draws these.
std::vector<std::pair<QPointF, QPointF>> hatchLines(const FilledArea& area);
inline constexpr double hatchWidth = 0.15;
/// The corners of a mark; empty for a circle. A cross has four, of which the first two and the last two are a stroke.
std::vector<QPointF> markPoints(const Mark& mark);
std::vector<QPointF> corners(const QRectF& box);
/// The item somewhere else; a line of text stays where it is.
DrawItem moved(DrawItem item, QPointF by);

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

/// Where a drawing can be pointed at: a bar, a point of a line, a field of a card.
struct DrawnArea {
    QString id;
    QRectF box;     ///< millimetres, as the drawing's
    QString text;   ///< what stands there, for a tooltip and a screen reader: "KW 12/2026: 34 Belegungen"
    int group = 0;  ///< areas of one series follow each other; another series is reached up and down
};

/// One drawing of a given size, all of it at its place, to be looked at in a window or put on a page.
struct Sketch {
    QSizeF size = {180, 110};  ///< millimetres
    std::vector<DrawItem> items = {};
    std::vector<DrawnArea> areas = {};
    /// The area at a point, the last where several lie there; nothing where there is none.
    const DrawnArea* areaAt(QPointF point) const;
    const DrawnArea* area(const QString& id) const;
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
/// Puts a sketch onto the job's page, its upper left corner at `at`.
void place(const Sketch& sketch, QPointF at, PrintJob& job);

}  // namespace koben

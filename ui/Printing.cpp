#include "ui/Printing.h"

#include <QFile>
#include <QPageLayout>
#include <QPrinterInfo>
#include <algorithm>
#include <cmath>

#include "store/Files.h"

namespace koben::ui {

namespace {

constexpr double dots = layoutDots / millimetresPerInch;
constexpr int tabStop = 8;          // characters
constexpr double marginText = 4.5;  // millimetres between the margins' texts and what they stand beside
const Typeface marginFace{.name = QStringLiteral("Liberation Sans"), .points = 8};

/// How many characters of a text fit; where it must be parted, behind a blank not too far back.
qsizetype fitting(const QFontMetricsF& metrics, const QString& text, double room) {
    qsizetype fits = 0, over = text.size() + 1;
    while (over - fits > 1) {
        const qsizetype middle = (fits + over) / 2;
        (metrics.horizontalAdvance(text.left(middle)) <= room ? fits : over) = middle;
    }
    if (fits == text.size()) return fits;
    const qsizetype blank = text.lastIndexOf(u' ', fits);
    return blank > fits / 2 ? blank + 1 : fits;
}

}  // namespace

// ------------------------------------------------------------------------------------------------------------- layout

Sheets::Sheets(const Drawing& drawing, QPrinter& printer, const PrintJob::Go& go)
    : m_drawing(drawing), m_printer(printer) {
    const QSizeF paper = printer.pageRect(QPrinter::Millimeter).size() * dots;
    m_width = paper.width();
    m_height = paper.height();
    widenForCards();
    size_t items = 0, done = 0;
    for (const DrawPage& page : drawing.pages) items += page.items.size();
    const auto itemDone = [&] { return m_whole = !go || go(static_cast<int>(++done * 100 / items)); };
    for (const DrawPage& page : drawing.pages)
        if (m_whole) layOut(page, itemDone);
}

void Sheets::widenForCards() {
    const double wanted = m_drawing.sheet.cardColumns * m_faces.of({}).metrics.horizontalAdvance(u'0');
    if (wanted <= m_width) return;
    const QRectF sheet = m_printer.paperRect(QPrinter::Millimeter), within = m_printer.pageRect(QPrinter::Millimeter);
    m_left = (sheet.width() * dots - wanted) / 2 + (sheet.left() - within.left()) * dots;
    m_width = wanted;
}

void Sheets::layOut(const DrawPage& page, const std::function<bool()>& itemDone) {
    m_sheets.push_back({{}, &page});
    m_y = 0;
    for (const DrawItem& item : page.items) {
        if (const auto* line = std::get_if<TextLine>(&item)) add(*line, true);
        if (!itemDone()) return;
    }
}

void Sheets::add(const TextLine& line, bool repeatHead) {
    Line setting;
    for (const TextPiece& piece : line.pieces) {
        const Faces::Face& face = m_faces.of(piece.font);
        const double stop = tabStop * face.metrics.horizontalAdvance(u'0');
        const QStringList words = piece.text.split(u'\t');
        for (qsizetype word = 0; word < words.size(); ++word) {
            if (word > 0) setting.x = (std::floor(setting.x / stop + 1e-6) + 1) * stop;
            add(setting, face, words[word], repeatHead);
        }
    }
    flush(setting, repeatHead);
}

/// What does not fit goes on below.
void Sheets::add(Line& line, const Faces::Face& face, QString rest, bool repeatHead) {
    line.makeRoom(face);
    while (!rest.isEmpty()) {
        qsizetype fits = fitting(face.metrics, rest, m_width - line.x + 1);
        if (line.x == 0) fits = std::max<qsizetype>(fits, 1);
        if (fits > 0) line.runs.push_back({QPointF(line.x, 0), &face, rest.left(fits)});
        line.x += face.metrics.horizontalAdvance(rest.left(fits));
        rest = rest.mid(fits);
        if (rest.isEmpty()) return;
        flush(line, repeatHead);
        line.makeRoom(face);
    }
}

/// Puts what stands on one line onto the sheet, or onto the next where it is full.
void Sheets::flush(Line& line, bool repeatHead) {
    const double height = line.ascent + line.below;
    if (m_y > 0 && m_y + height > m_height && m_drawing.sheet.cardColumns == 0) {
        m_sheets.emplace_back();
        m_y = 0;
        if (repeatHead)
            for (const TextLine& head : m_drawing.sheet.head) add(head, false);
    }
    for (Run& run : line.runs) {
        run.at.setY(m_y + line.ascent);
        m_sheets.back().runs.push_back(std::move(run));
    }
    m_y += height;
    m_sheets.back().height = m_y;
    line = {};
}

// ----------------------------------------------------------------------------------------------------------- painting

bool Sheets::paint(QPainter& painter, const PrintJob::Go& go) {
    for (int sheet = 0; sheet < count(); ++sheet) {
        if (go && !go(sheet * 100 / count())) return false;
        if (sheet > 0) m_printer.newPage();
        paintSheet(painter, sheet);
    }
    return true;
}

void Sheets::paintSheet(QPainter& painter, int sheet) {
    const double enlarged = m_printer.resolution() / layoutDots;
    painter.save();
    painter.scale(enlarged, enlarged);
    paintMargins(painter, sheet + 1);
    const OneSheet& one = m_sheets[static_cast<size_t>(sheet)];
    if (one.placed)
        for (const DrawItem& item : one.placed->items) paintItem(painter, item, m_faces, paperTints());
    paintLines(painter, one);
    painter.restore();
}

void Sheets::paintLines(QPainter& painter, const OneSheet& sheet) {
    painter.save();
    painter.translate(m_left, 0);
    if (sheet.height > m_height) painter.scale(m_height / sheet.height, m_height / sheet.height);
    for (const Run& run : sheet.runs) {
        painter.setFont(run.face->font);
        painter.drawText(run.at, run.text);
    }
    painter.restore();
}

/// The title and the day above what the job prints, the number of the sheet below it.
void Sheets::paintMargins(QPainter& painter, int number) {
    const QString &title = m_drawing.sheet.title, &date = m_drawing.sheet.date;
    if (title.isEmpty()) return;
    const Faces::Face& face = m_faces.of(marginFace);
    painter.setFont(face.font);
    const double above = -marginText * dots + face.metrics.ascent() / 2;
    const double day = face.metrics.horizontalAdvance(date);
    painter.drawText(QPointF(0, above), face.metrics.elidedText(title, Qt::ElideRight, m_width - day - 5 * dots));
    painter.drawText(QPointF(m_width - day, above), date);
    const QString page = QStringLiteral("Seite %1 von %2").arg(number).arg(count());
    painter.drawText(QPointF((m_width - face.metrics.horizontalAdvance(page)) / 2,
                             m_height + marginText * dots + face.metrics.ascent() / 2),
                     page);
}

void setPage(QPrinter& printer, bool landscape) {
    printer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4),
                                      landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
                                      QMarginsF(15, 12, 12, 12), QPageLayout::Millimeter));
}

// --------------------------------------------------------------------------------------------------------------- jobs

namespace {

class Job final : public DrawnJob {
public:
    Job(std::unique_ptr<QPrinter> printer, bool landscape) : DrawnJob(landscape), m_printer(std::move(printer)) {}
    ~Job() override {
        if (m_ended || !m_painter.isActive()) return;
        m_printer->abort();
        m_painter.end();
        if (!m_path.isEmpty()) QFile::remove(m_printer->outputFileName());
    }
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    bool begin() { return m_painter.isActive() || m_painter.begin(m_printer.get()); }
    /// The document is written beside its file and takes its place at the end.
    void setTarget(const QString& path, std::function<void(const QString&)> finished) {
        m_path = path;
        m_finished = std::move(finished);
    }

private:
    /// A printer is begun once its sheets are laid out: a job that has begun cannot leave without a sheet.
    bool finish(const Drawing& drawing, const Go& go) override {
        const auto part = [&go](int from) {
            return [&go, from](int percent) { return !go || go(from + percent / 2); };
        };
        Sheets sheets(drawing, *m_printer, part(0));
        if (!sheets.isWhole() || !begin() || !sheets.paint(m_painter, part(50))) return false;
        m_ended = true;
        const bool whole = m_painter.end();
        if (m_path.isEmpty()) return whole;
        const QString written = m_printer->outputFileName();
        m_printer.reset();
        if (whole && replaceFile(written, m_path).isEmpty()) {
            if (m_finished) m_finished(m_path);
            return true;
        }
        QFile::remove(written);
        if (m_finished) m_finished({});
        return false;
    }

    std::unique_ptr<QPrinter> m_printer;
    QPainter m_painter;
    QString m_path;
    std::function<void(const QString&)> m_finished;
    bool m_ended = false;
};

}  // namespace

std::unique_ptr<PrintJob> beginPrint(const QString& name, bool landscape) {
    const QPrinterInfo info = QPrinterInfo::printerInfo(name);
    if (info.isNull()) return nullptr;
    auto printer = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
    printer->setDocName(QStringLiteral("KOBEN"));
    setPage(*printer, landscape);
    if (!printer->isValid() || info.state() == QPrinter::Error) return nullptr;
    return std::make_unique<Job>(std::move(printer), landscape);
}

std::unique_ptr<PrintJob> beginPdf(const QString& path, bool landscape, std::function<void(const QString&)> finished) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(path + QStringLiteral(".teil"));
    printer->setCreator(QStringLiteral("KOBEN"));
    setPage(*printer, landscape);
    auto job = std::make_unique<Job>(std::move(printer), landscape);
    job->setTarget(path, std::move(finished));
    return job->begin() ? std::move(job) : nullptr;
}

}  // namespace koben::ui

#include "ui/Printing.h"

#include <QFile>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPrinterInfo>
#include <algorithm>
#include <filesystem>

namespace koben::ui {

bool PagePainter::begin() { return m_painter.begin(&m_printer); }

void PagePainter::line(const QString& text) {
    const QFontMetricsF metrics(font, &m_printer);
    const qreal bottom = m_printer.pageRect(QPrinter::DevicePixel).height();
    if (m_y > 0 && m_y + metrics.lineSpacing() > bottom) newPage();
    m_painter.setFont(font);
    m_painter.drawText(QPointF(0, m_y + metrics.ascent()), QString(text).replace(u'\t', QStringLiteral("    ")));
    m_y += metrics.lineSpacing();
}

void PagePainter::newPage() {
    m_printer.newPage();
    m_y = 0;
}

void setPage(QPrinter& printer, bool landscape) {
    printer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4),
                                      landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
                                      QMarginsF(15, 12, 12, 12), QPageLayout::Millimeter));
}

namespace {

class Job final : public PrintJob {
public:
    explicit Job(std::unique_ptr<QPrinter> printer) : m_printer(std::move(printer)), m_page(*m_printer) {}
    ~Job() override {
        if (m_ended) return;
        m_printer->abort();
        m_page.end();
        if (!m_path.isEmpty()) QFile::remove(m_printer->outputFileName());
    }
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    bool begin() { return m_page.begin(); }
    /// The document is written beside its file and takes its place at the end.
    void setTarget(const QString& path, std::function<void(const QString&)> finished) {
        m_path = path;
        m_finished = std::move(finished);
    }

    void setFont(const QString& name) override {
        QFont font(name, 10);
        font.setPointSizeF(m_page.font.pointSizeF());
        font.setBold(m_page.font.bold());
        font.setItalic(m_page.font.italic());
        m_page.font = font;
    }
    void setSize(double points) override { m_page.font.setPointSizeF(std::clamp(points, 1.0, 200.0)); }
    void setBold(bool on) override { m_page.font.setBold(on); }
    void setItalic(bool on) override { m_page.font.setItalic(on); }
    void line(const QString& text) override { m_page.line(text); }
    void newPage() override { m_page.newPage(); }
    void end() override {
        m_ended = true;
        const bool whole = m_page.end();
        if (m_path.isEmpty()) return;
        const QString written = m_printer->outputFileName();
        m_printer.reset();
        if (!whole) return void(QFile::remove(written));
        std::error_code failed;
        std::filesystem::rename(written.toStdString(), m_path.toStdString(), failed);
        if (!failed && m_finished) m_finished(m_path);
    }

private:
    std::unique_ptr<QPrinter> m_printer;
    PagePainter m_page;
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
    auto job = std::make_unique<Job>(std::move(printer));
    return job->begin() ? std::move(job) : nullptr;
}

std::unique_ptr<PrintJob> beginPdf(const QString& path, bool landscape, std::function<void(const QString&)> finished) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(path + QStringLiteral(".teil"));
    printer->setCreator(QStringLiteral("KOBEN"));
    setPage(*printer, landscape);
    auto job = std::make_unique<Job>(std::move(printer));
    job->setTarget(path, std::move(finished));
    return job->begin() ? std::move(job) : nullptr;
}

}  // namespace koben::ui

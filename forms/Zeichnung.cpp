#include "forms/Zeichnung.h"

namespace koben {

void DrawnJob::line(const QString& last) {
    text(last);
    endLine();
}

void DrawnJob::endLine() {
    if (m_line.pieces.empty()) return;
    m_drawing.pages.back().items.push_back(std::exchange(m_line, {}));
}

void DrawnJob::newPage() {
    endLine();
    m_drawing.pages.emplace_back();
}

bool DrawnJob::end(const Go& go) {
    endLine();
    return finish(m_drawing, go);
}

namespace {

void play(const TextLine& line, PrintJob& job) {
    for (size_t i = 0; i < line.pieces.size(); ++i) {
        const auto& [text, font] = line.pieces[i];
        job.setFont(font.name);
        job.setSize(font.points);
        job.setBold(font.bold);
        job.setItalic(font.italic);
        if (i + 1 < line.pieces.size())
            job.text(text);
        else
            job.line(text);
    }
}

}  // namespace

void play(const Drawing& drawing, PrintJob& job) {
    job.setSheet(drawing.sheet);
    for (size_t page = 0; page < drawing.pages.size(); ++page) {
        if (page > 0) job.newPage();
        for (const DrawItem& item : drawing.pages[page].items)
            if (const auto* line = std::get_if<TextLine>(&item))
                play(*line, job);
            else
                job.place(item);
    }
    job.end();
}

}  // namespace koben

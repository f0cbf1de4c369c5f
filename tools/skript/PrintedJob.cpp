#include "tools/skript/PrintedJob.h"

namespace koben::skript {

namespace {

QString number(double value) { return QString::number(value).replace(u'.', u','); }

QString placed(const char* what, std::initializer_list<double> measures) {
    QString text = u'{' + QString::fromUtf8(what);
    for (const double measure : measures) text += u' ' + number(measure);
    return text + u'}';
}

/// Writes a drawing as lines of text.
class Writer {
public:
    explicit Writer(const Drawing& drawing) : m_begun(drawing.landscape) {
        if (drawing.landscape) m_line = QStringLiteral("{quer}");
        for (size_t page = 0; page < drawing.pages.size(); ++page) {
            if (page > 0) newPage();
            for (const DrawItem& item : drawing.pages[page].items)
                std::visit([this](const auto& drawn) { add(drawn); }, item);
        }
        endLine();
    }
    PrintedJob job;

private:
    void add(const TextLine& line) {
        for (const TextPiece& piece : line.pieces) {
            showFont(piece.font);
            m_line += piece.text;
            m_begun = true;
        }
        endLine();
    }
    void add(const PlacedText& text) {
        job.lines += placed("Text", {text.box.x(), text.box.y()}) + u' ' + text.piece.text;
    }
    void add(const StraightLine& line) {
        job.lines += placed("Linie", {line.from.x(), line.from.y(), line.to.x(), line.to.y()});
    }
    void add(const Rectangle& drawn) { add("Rechteck", drawn.box); }
    void add(const Picture& picture) { add("Bild", picture.box); }
    void add(const char* what, const QRectF& box) {
        job.lines += placed(what, {box.x(), box.y(), box.width(), box.height()});
    }

    void showFont(const Typeface& font) {
        if (font == m_shown) return;
        QStringList words;
        if (font.name != m_shown.name) words += font.name;
        if (font.points > 0) words += number(font.points);
        if (font.bold) words += QStringLiteral("fett");
        if (font.italic) words += QStringLiteral("kursiv");
        m_line += u'{' + words.join(u' ') + u'}';
        m_shown = font;
    }

    void endLine() {
        if (!m_begun) return;
        job.lines += m_line;
        m_line.clear();
        m_begun = false;
    }

    void newPage() {
        endLine();
        job.lines += QStringLiteral("{Seite}");
        ++job.pages;
    }

    QString m_line;  ///< what stands on the line so far
    bool m_begun;
    Typeface m_shown;
};

}  // namespace

bool ScriptPrintJob::finish(const Drawing& drawing, const Go&) {
    m_onEnd(Writer(drawing).job);
    return true;
}

}  // namespace koben::skript

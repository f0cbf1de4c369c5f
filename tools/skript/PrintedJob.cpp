#include "tools/skript/PrintedJob.h"

namespace koben::skript {

namespace {

QString number(double value) { return QString::number(value).replace(u'.', u','); }

QString placed(const QString& what, const std::vector<QPointF>& points) {
    QString text = u'{' + what;
    for (const QPointF& point : points) text += u' ' + number(point.x()) + u' ' + number(point.y());
    return text + u'}';
}
QString placed(const char* what, const QRectF& box) {
    return placed(QString::fromUtf8(what), {box.topLeft(), {box.width(), box.height()}});
}
QString with(const char* what, std::initializer_list<const char*> words, int word) {
    const QString more = QString::fromUtf8(words.begin()[word]);
    return QString::fromUtf8(what) + (more.isEmpty() ? more : u' ' + more);
}

struct Placing {
    QString operator()(const TextLine&) const { return {}; }
    QString operator()(const PlacedText& text) const {
        return placed(QStringLiteral("Text"), {text.box.topLeft()}) + u' ' + text.piece.text;
    }
    QString operator()(const StraightLine& line) const {
        return placed(with("Linie", dashes, static_cast<int>(line.dash)), {line.from, line.to});
    }
    QString operator()(const Rectangle& drawn) const { return placed("Rechteck", drawn.box); }
    QString operator()(const Picture& picture) const { return placed("Bild", picture.box); }
    QString operator()(const Polyline& line) const {
        return placed(with("Linienzug", dashes, static_cast<int>(line.dash)), line.points);
    }
    QString operator()(const FilledArea& area) const {
        return placed(
            with("Fläche", {"", "steigend", "fallend", "gekreuzt", "waagrecht"}, static_cast<int>(area.hatch)),
            area.points);
    }
    QString operator()(const Mark& mark) const {
        return placed(with("Marke", {"Kreis", "Quadrat", "Dreieck", "Kreuz"}, static_cast<int>(mark.shape)), {mark.at});
    }
    static constexpr std::initializer_list<const char*> dashes{"", "gestrichelt", "gepunktet", "strichpunktiert"};
};

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
    template <class Placed>
    void add(const Placed& item) {
        job.lines += Placing()(item);
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

QString placedText(const DrawItem& item) { return std::visit(Placing(), item); }

bool ScriptPrintJob::finish(const Drawing& drawing, const Go&) {
    m_onEnd(Writer(drawing).job);
    return true;
}

}  // namespace koben::skript

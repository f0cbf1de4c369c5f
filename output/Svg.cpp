#include "output/Svg.h"

namespace koben {

namespace {

constexpr double millimetresPerPoint = 25.4 / 72;
constexpr double baseline = 0.35;  // of a text's size, below the middle of its height

QString number(double value) {
    QString text = QString::number(value, 'f', 2);
    while (text.endsWith(u'0')) text.chop(1);
    if (text.endsWith(u'.')) text.chop(1);
    return text == u"-0" ? QStringLiteral("0") : text;
}

QString escaped(const QString& text) {
    QString plain;
    for (const QChar c : text)
        if (c.unicode() >= 0x20 && c.unicode() != 0xfffe && c.unicode() != 0xffff) plain += c;
    return plain.toHtmlEscaped();
}

QString colour(Tone tone, double strength = 1) {
    return u'#' + QStringLiteral("%1").arg(tint(paperTints(), tone, strength), 6, 16, QLatin1Char('0'));
}

/// What a painter has, as attributes.
QString stroke(double width, Tone tone, Dash dash = Dash::Solid) {
    if (width <= 0) return QStringLiteral(" stroke=\"none\"");
    QString text = QStringLiteral(" stroke=\"%1\" stroke-width=\"%2\"").arg(colour(tone), number(width));
    QStringList lengths;
    for (const double length : dashLengths(dash, width)) lengths += number(length);
    if (!lengths.isEmpty()) text += QStringLiteral(" stroke-dasharray=\"%1\"").arg(lengths.join(u' '));
    return text;
}

QString fill(const QString& what) { return QStringLiteral(" fill=\"%1\"").arg(what); }

QString pointsOf(const std::vector<QPointF>& points) {
    QStringList pairs;
    for (const QPointF& point : points) pairs += number(point.x()) + u',' + number(point.y());
    return QStringLiteral(" points=\"%1\"").arg(pairs.join(u' '));
}

QString lineTag(QPointF from, QPointF to, const QString& attributes) {
    return QStringLiteral("<line x1=\"%1\" y1=\"%2\" x2=\"%3\" y2=\"%4\"%5/>\n")
        .arg(number(from.x()), number(from.y()), number(to.x()), number(to.y()), attributes);
}

QString polygonTag(const std::vector<QPointF>& points, const QString& attributes) {
    return QStringLiteral("<polygon") + pointsOf(points) + attributes + QStringLiteral("/>\n");
}

QString boxOf(const QRectF& box) {
    return QStringLiteral(" x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\"")
        .arg(number(box.x()), number(box.y()), number(box.width()), number(box.height()));
}

struct Tag {
    QString operator()(const TextLine&) const { return {}; }
    QString operator()(const PlacedText& text) const {
        const Typeface& face = text.piece.font;
        const double size = (face.points > 0 ? face.points : 10) * millimetresPerPoint;
        const char* anchor = text.anchor <= 0 ? "start" : text.anchor < 1 ? "middle" : "end";
        QString tag =
            QStringLiteral("<text x=\"%1\" y=\"%2\" font-size=\"%3\" text-anchor=\"%4\"")
                .arg(number(text.box.left() + text.box.width() * text.anchor),
                     number(text.box.center().y() + size * baseline), number(size), QString::fromLatin1(anchor));
        tag += QStringLiteral(" font-family=\"%1\"")
                   .arg(face.name.isEmpty() ? QStringLiteral("Courier New, monospace")
                                            : escaped(face.name) + QStringLiteral(", Arial, sans-serif"));
        if (face.bold) tag += QStringLiteral(" font-weight=\"bold\"");
        if (face.italic) tag += QStringLiteral(" font-style=\"italic\"");
        return tag + fill(colour(text.tone)) + u'>' + escaped(text.piece.text) + QStringLiteral("</text>\n");
    }
    QString operator()(const StraightLine& line) const {
        return lineTag(line.from, line.to, stroke(line.width, line.tone, line.dash));
    }
    QString operator()(const Rectangle& drawn) const {
        const QString inside = drawn.shade < 0 ? QStringLiteral("none") : colour(Tone::Text, 1 - drawn.shade / 255.0);
        return QStringLiteral("<rect") + boxOf(drawn.box) + fill(inside) + stroke(drawn.width, Tone::Text) +
               QStringLiteral("/>\n");
    }
    QString operator()(const Picture& picture) const {
        const char* kind = picture.file.startsWith("\x89PNG")    ? "png"
                           : picture.file.startsWith("\xff\xd8") ? "jpeg"
                                                                 : "svg+xml";
        return QStringLiteral("<image") + boxOf(picture.box) +
               QStringLiteral(" preserveAspectRatio=\"none\" href=\"data:image/%1;base64,%2\"/>\n")
                   .arg(QLatin1String(kind), QString::fromLatin1(picture.file.toBase64()));
    }
    QString operator()(const Polyline& line) const {
        return QStringLiteral("<polyline") + pointsOf(line.points) + fill(QStringLiteral("none")) +
               stroke(line.width, line.tone, line.dash) + QStringLiteral("/>\n");
    }
    QString operator()(const FilledArea& area) const {
        const QString inside = area.strength > 0 ? colour(area.tone, area.strength) : QStringLiteral("none");
        QString tags = polygonTag(area.points, fill(inside) + stroke(area.width, area.tone));
        for (const auto& [from, to] : hatchLines(area)) tags += lineTag(from, to, stroke(hatchWidth, area.tone));
        return tags;
    }
    QString operator()(const Mark& mark) const {
        const std::vector<QPointF> points = markPoints(mark);
        const QString look = fill(colour(mark.filled ? mark.tone : Tone::Ground)) + stroke(0.35, mark.tone);
        if (points.empty())
            return QStringLiteral("<circle cx=\"%1\" cy=\"%2\" r=\"%3\"%4/>\n")
                .arg(number(mark.at.x()), number(mark.at.y()), number(mark.size / 2), look);
        if (mark.shape != Shape::Cross) return polygonTag(points, look);
        return lineTag(points[0], points[1], stroke(0.35, mark.tone)) +
               lineTag(points[2], points[3], stroke(0.35, mark.tone));
    }
};

}  // namespace

QByteArray Svg(const Sketch& sketch, const QString& title) {
    const QString width = number(sketch.size.width()), height = number(sketch.size.height());
    QString text = QStringLiteral(
                       "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1mm\" height=\"%2mm\" "
                       "viewBox=\"0 0 %1 %2\">\n")
                       .arg(width, height);
    text += QStringLiteral("<title>") + escaped(title) + QStringLiteral("</title>\n<rect width=\"") + width +
            QStringLiteral("\" height=\"") + height + u'"' + fill(colour(Tone::Ground)) + QStringLiteral("/>\n");
    for (const DrawItem& item : sketch.items) text += std::visit(Tag(), item);
    return (text + QStringLiteral("</svg>\n")).toUtf8();
}

}  // namespace koben

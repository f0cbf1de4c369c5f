#include "ui/IconDrawing.h"

#include <QPainter>
#include <QPainterPath>
#include <QXmlStreamReader>
#include <QtMath>
#include <cmath>

namespace koben::ui {

namespace {

/// Reads the text of a path: commands, and numbers that need nothing between them where they can be told apart.
class PathReader {
public:
    explicit PathReader(QStringView text) : m_text(text) {}

    QPainterPath read() {
        for (skip(); m_at < m_text.size(); skip()) {
            const QChar c = m_text[m_at];
            if (c.isLetter()) {
                m_command = c.toUpper();
                m_relative = c.isLower();
                ++m_at;
                if (m_command == u'Z') {
                    m_path.closeSubpath();
                    m_here = m_begin;
                    continue;
                }
            } else if (m_command.isNull() || m_command == u'Z') {
                return {};
            }
            if (!step()) return {};
        }
        return m_path;
    }

private:
    /// One command with its numbers; further numbers repeat it. False for one that the icons have no use of.
    bool step() {
        const QPointF from = m_here;
        QPointF bend = from;
        switch (m_command.unicode()) {
            case u'M':
                m_here = m_begin = point(from);
                m_path.moveTo(m_here);
                m_command = u'L';
                break;
            case u'L':
                m_path.lineTo(m_here = point(from));
                break;
            case u'H':
                m_here.setX(number() + (m_relative ? from.x() : 0));
                m_path.lineTo(m_here);
                break;
            case u'V':
                m_here.setY(number() + (m_relative ? from.y() : 0));
                m_path.lineTo(m_here);
                break;
            case u'C':
            case u'S': {
                const QPointF first = m_command == u'C' ? point(from) : 2 * from - m_bend;
                bend = point(from);
                m_here = point(from);
                m_path.cubicTo(first, bend, m_here);
                m_bend = bend;
                return true;
            }
            case u'Q':
                bend = point(from);
                m_path.quadTo(bend, m_here = point(from));
                break;
            case u'A':
                arc(from);
                break;
            default:
                return false;
        }
        m_bend = m_here;
        return true;
    }

    /// A part of an upright ellipse, told by its ends.
    void arc(QPointF from) {
        double rx = std::abs(number()), ry = std::abs(number());
        number();  // the ellipse's turn
        const bool large = flag(), clockwise = flag();
        m_here = point(from);
        if (rx == 0 || ry == 0 || from == m_here) return m_path.lineTo(m_here);
        // as on a circle of radius 1 around the middle between both ends
        const QPointF half((from.x() - m_here.x()) / 2 / rx, (from.y() - m_here.y()) / 2 / ry);
        const double square = QPointF::dotProduct(half, half);
        if (square > 1) rx *= std::sqrt(square), ry *= std::sqrt(square);
        const double away = square > 1 ? 0 : std::sqrt((1 - square) / square) * (large == clockwise ? -1 : 1);
        const QPointF start = square > 1 ? half / std::sqrt(square) : half;
        const QPointF middle(start.y() * away, -start.x() * away);
        const double begin = qRadiansToDegrees(std::atan2(start.y() - middle.y(), start.x() - middle.x()));
        const double end = qRadiansToDegrees(std::atan2(-start.y() - middle.y(), -start.x() - middle.x()));
        double sweep = end - begin;
        if (clockwise && sweep < 0) sweep += 360;
        if (!clockwise && sweep > 0) sweep -= 360;
        const QPointF centre = (from + m_here) / 2 + QPointF(middle.x() * rx, middle.y() * ry);
        m_path.arcTo(QRectF(centre.x() - rx, centre.y() - ry, 2 * rx, 2 * ry), -begin, -sweep);
    }

    void skip() {
        while (m_at < m_text.size() && (m_text[m_at].isSpace() || m_text[m_at] == u',')) ++m_at;
    }
    double number() {
        skip();
        const qsizetype begin = m_at;
        bool point = false;
        for (; m_at < m_text.size(); ++m_at) {
            const QChar c = m_text[m_at];
            if (c == u'.' && !point)
                point = true;
            else if (!c.isDigit() && !(m_at == begin && (c == u'-' || c == u'+')))
                break;
        }
        if (m_at == begin) m_at = m_text.size();  // no number: the rest is not understood
        return m_text.mid(begin, m_at - begin).toDouble();
    }
    bool flag() {
        skip();
        return m_at < m_text.size() && m_text[m_at++] == u'1';
    }
    QPointF point(QPointF from) {
        const double x = number(), y = number();
        return m_relative ? QPointF(from.x() + x, from.y() + y) : QPointF(x, y);
    }

    QStringView m_text;
    qsizetype m_at = 0;
    QChar m_command;
    bool m_relative = false;
    QPainterPath m_path;
    QPointF m_here, m_begin, m_bend;
};

QPainterPath shapeOf(QStringView name, const QXmlStreamAttributes& told) {
    const auto length = [&](const char* key) { return told.value(QLatin1String(key)).toDouble(); };
    QPainterPath path;
    if (name == u"path") {
        path = PathReader(told.value(QLatin1String("d"))).read();
    } else if (name == u"circle") {
        path.addEllipse(QPointF(length("cx"), length("cy")), length("r"), length("r"));
    } else if (name == u"ellipse") {
        path.addEllipse(QPointF(length("cx"), length("cy")), length("rx"), length("ry"));
    } else if (name == u"rect") {
        path.addRoundedRect(QRectF(length("x"), length("y"), length("width"), length("height")), length("rx"),
                            length("rx"));
    }
    path.setFillRule(told.value(QLatin1String("fill-rule")) == u"evenodd" ? Qt::OddEvenFill : Qt::WindingFill);
    return path;
}

/// What a shape says of its look, or else the whole drawing.
class Look {
public:
    Look(const QXmlStreamAttributes& whole, const QXmlStreamAttributes& own, const QColor& current)
        : m_whole(whole), m_own(own), m_current(current) {}

    QBrush brush() const {
        const QString fill = value("fill");
        return fill == u"none" ? QBrush(Qt::NoBrush) : QBrush(colour(fill));
    }
    QPen pen() const {
        const QString stroke = value("stroke");
        if (stroke.isEmpty() || stroke == u"none") return QPen(Qt::NoPen);
        const QString width = value("stroke-width");
        QPen pen(colour(stroke), width.isEmpty() ? 1 : width.toDouble());
        pen.setCapStyle(value("stroke-linecap") == u"round" ? Qt::RoundCap : Qt::FlatCap);
        pen.setJoinStyle(value("stroke-linejoin") == u"round" ? Qt::RoundJoin : Qt::SvgMiterJoin);
        QList<qreal> dashes;
        for (const QString& dash : value("stroke-dasharray").split(u' ', Qt::SkipEmptyParts))
            dashes += dash.toDouble() / pen.widthF();
        if (!dashes.isEmpty()) pen.setDashPattern(dashes);
        return pen;
    }

private:
    QString value(const char* key) const {
        const QLatin1String name(key);
        return (m_own.hasAttribute(name) ? m_own : m_whole).value(name).toString();
    }
    QColor colour(const QString& name) const {
        if (name.isEmpty()) return Qt::black;
        return name == u"currentColor" ? m_current : QColor(name);
    }

    const QXmlStreamAttributes &m_whole, &m_own;
    const QColor& m_current;
};

}  // namespace

QImage drawnIcon(const QByteArray& svg, const QColor& colour, int pixels) {
    QXmlStreamReader reader(svg);
    if (!reader.readNextStartElement() || reader.name() != u"svg") return {};
    const QXmlStreamAttributes whole = reader.attributes();
    const double side = whole.value(QLatin1String("viewBox")).toString().section(u' ', 2, 2).toDouble();
    if (side <= 0) return {};
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixels / side, pixels / side);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) continue;
        const QXmlStreamAttributes own = reader.attributes();
        const Look look(whole, own, colour);
        painter.setBrush(look.brush());
        painter.setPen(look.pen());
        painter.drawPath(shapeOf(reader.name(), own));
    }
    painter.end();
    return reader.hasError() ? QImage() : image;
}

}  // namespace koben::ui

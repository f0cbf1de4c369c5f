#include "figures/Kacheln.h"

#include <algorithm>
#include <cmath>

#include "core/PZ_Koben_Subs.h"
#include "output/TextWidth.h"

namespace koben {

namespace {

constexpr Kz Zahlen[] = {Kz::AbgesetztSauJahr, Kz::WuerfeSauJahr, Kz::LebendWurf,
                         Kz::VerlusteProzent,  Kz::Abferkelrate,  Kz::NptSauJahr};
constexpr int Jahre = 13;  // a year from the year before to the latest

/// In units of the last decimal shown, so that what reads alike is alike.
qint64 steps(const Kennzahl& figure, double value) { return std::llround(value * std::pow(10, figure.decimals)); }

QString shown(const Kennzahl& figure, qint64 steps) {
    return Zahl_formatieren(
        QString::number(static_cast<double>(steps) / std::pow(10, figure.decimals), 'f', figure.decimals),
        figure.decimals);
}

/// "+0,4", "−0,4"
QString signedText(const Kennzahl& figure, qint64 steps) {
    return (steps < 0 ? QStringLiteral("−") : QStringLiteral("+")) + shown(figure, std::abs(steps));
}

Urteil urteilOf(const Kennzahl& figure, qint64 difference) {
    if (figure.better == Richtung::Keine) return Urteil::Offen;
    if (difference == 0) return Urteil::Gleich;
    return (difference > 0) == (figure.better == Richtung::Mehr) ? Urteil::Besser : Urteil::Schlechter;
}

qint64 steps(const Kennzahlwert& value) { return steps(kennzahl(value.nr), value.rounded().toDouble()); }

}  // namespace

Urteil Kachel::urteil() const {
    if (jetzt().empty() || vorher().empty()) return Urteil::Offen;
    return urteilOf(kennzahl(figure), steps(jetzt()) - steps(vorher()));
}

QString Kachel::vorjahrtext() const {
    const Kennzahl& of = kennzahl(figure);
    if (vorher().empty()) return QStringLiteral("ohne Vorjahr");
    if (jetzt().empty()) return QStringLiteral("Vorjahr %1").arg(vorher().text());
    const qint64 difference = steps(jetzt()) - steps(vorher());
    if (difference == 0) return QStringLiteral("= wie im Vorjahr");
    const QString arrow = difference > 0 ? QStringLiteral("▲") : QStringLiteral("▼");
    return QStringLiteral("%1 %2: %3 zum Vorjahr %4")
        .arg(arrow, urteil() == Urteil::Besser ? QStringLiteral("besser") : QStringLiteral("schlechter"),
             signedText(of, difference), vorher().text());
}

QString Kachel::zieltext() const {
    if (ziel.isEmpty()) return QStringLiteral("kein Ziel");
    const QString text = QStringLiteral("Ziel ") + ziel;
    const auto wanted = Zielwerte::read(ziel);
    if (jetzt().empty() || !wanted) return text;
    const Kennzahl& of = kennzahl(figure);
    const bool reached = urteilOf(of, steps(jetzt()) - steps(of, *wanted)) != Urteil::Schlechter;
    return text + (reached ? QStringLiteral(": erreicht") : QStringLiteral(": nicht erreicht"));
}

QString Kachel::gesprochen() const {
    const Kennzahl& of = kennzahl(figure);
    return QStringLiteral("%1: %2; %3; %4")
        .arg(QString::fromUtf8(of.name),
             jetzt().empty() ? QStringLiteral("noch keine Zahl")
                             : jetzt().text() + (qstrcmp(of.einheit, "%") == 0 ? QStringLiteral(" %") : QString()),
             vorjahrtext(), zieltext());
}

std::span<const Kz> Kachelzahlen() { return Zahlen; }

std::vector<Zeitraum> Kacheljahre(qint32 heute) { return rollende_Jahre(heute, Jahre); }

std::vector<Kachel> computeKacheln(const Sauenbuch& book, const Zielwerte& targets) {
    const auto stands = Kennzahlen_berechnen(book, Kacheljahre(book.heute()));
    std::vector<Kachel> tiles;
    for (const Kz figure : Zahlen) {
        Kachel tile{.figure = figure, .jahre = {}, .ziel = targets.text(kennzahl(figure))};
        for (const Kennzahlenstand& stand : stands) tile.jahre.push_back(stand[figure]);
        tiles.push_back(std::move(tile));
    }
    return tiles;
}

// ----------------------------------------------------------------------------------------------------------- drawing

namespace {

// of a tile as it is meant, in millimetres; all of it grows and shrinks with the room
constexpr QSizeF Tile{60, 31};
constexpr double Gap = 3, Edge = 2.5, Line = 4.2, Small = 8.5, Large = 20;
constexpr double Bold = 1.08;  // how much wider bold letters are

class Zeichner {
public:
    Zeichner(Sketch& sketch, const Kachel& tile, const QRectF& box, double scale, int group)
        : m_sketch(sketch), m_tile(tile), m_figure(kennzahl(tile.figure)), m_box(box), m_scale(scale) {
        m_sketch.areas.push_back(
            {.id = QString::fromUtf8(m_figure.id), .box = box, .text = tile.gesprochen(), .group = group});
    }

    void draw() {
        add(FilledArea{.points = corners(m_box), .tone = Tone::Grid, .strength = 0, .width = 0.2});
        drawName();
        drawValue();
        drawSpark({m_box.left() + m_box.width() * 0.52, m_box.top() + at(11), m_box.width() * 0.48 - at(Edge), at(9)});
        text(21.5, m_tile.vorjahrtext(), Small, m_tile.urteil() == Urteil::Schlechter ? Tone::Warning : Tone::Text);
        text(25.7, m_tile.zieltext(), Small, Tone::Quiet);
    }

private:
    double at(double millimetres) const { return millimetres * m_scale; }
    void add(DrawItem item) { m_sketch.items.push_back(std::move(item)); }
    void text(double top, const QString& words, double points, Tone tone, bool bold = false, double left = 0) {
        add(PlacedText{.box = {m_box.left() + at(Edge) + left, m_box.top() + at(top), m_box.width() - at(2 * Edge),
                               at(points == Large ? 9 : Line)},
                       .piece = {words, {.name = chartFace, .points = points * m_scale, .bold = bold}},
                       .tone = tone});
    }
    /// In two lines where one does not do.
    void drawName() {
        const QStringList lines =
            wrapText(QString::fromUtf8(m_figure.name), Small * m_scale, (m_box.width() - at(2 * Edge)) / Bold);
        for (qsizetype i = 0; i < lines.size() && i < 2; ++i)
            text(1.5 + Line * static_cast<double>(i), lines[i], Small, Tone::Text, true);
    }

    void drawValue() {
        const QString value = m_tile.jetzt().empty() ? QStringLiteral("–") : m_tile.jetzt().text();
        text(11, value, Large, Tone::Text, true);
        const QString unit = QString::fromUtf8(m_figure.einheit);
        if (unit == u"%")
            text(13.5, unit, Small, Tone::Quiet, false, textWidth(value, Large * m_scale) * Bold + at(1.5));
    }

    /// From the year before to the latest, with the target as a dashed line where it lies near.
    void drawSpark(const QRectF& box) {
        std::vector<std::pair<size_t, double>> values;
        for (size_t i = 0; i < m_tile.jahre.size(); ++i)
            if (const auto value = m_tile.jahre[i].value()) values.push_back({i, *value});
        if (values.empty()) return;
        const auto by = [](const auto& a, const auto& b) { return a.second < b.second; };
        double least = std::min_element(values.begin(), values.end(), by)->second;
        double most = std::max_element(values.begin(), values.end(), by)->second;
        const auto target = Zielwerte::read(m_tile.ziel);
        const double span = std::max(most - least, std::pow(10, -m_figure.decimals) * 4);
        const bool targetNear = target && *target > least - span && *target < most + span;
        if (targetNear) least = std::min(least, *target), most = std::max(most, *target);
        const double middle = (least + most) / 2, range = std::max(most - least, span);
        const auto y = [&](double value) { return box.center().y() - box.height() * (value - middle) / range; };
        const auto point = [&](const std::pair<size_t, double>& value) {
            return QPointF(box.left() + box.width() * static_cast<double>(value.first) /
                                            static_cast<double>(m_tile.jahre.size() - 1),
                           y(value.second));
        };
        if (targetNear)
            add(StraightLine{.from = {box.left(), y(*target)},
                             .to = {box.right(), y(*target)},
                             .width = 0.25,
                             .tone = Tone::Quiet,
                             .dash = Dash::Dashed});
        std::vector<QPointF> points;
        for (const auto& value : values) points.push_back(point(value));
        if (points.size() > 1) add(Polyline{.points = points, .width = 0.45});
        add(Mark{.at = points.back(), .size = at(1.8)});
    }

    Sketch& m_sketch;
    const Kachel& m_tile;
    const Kennzahl& m_figure;
    const QRectF m_box;
    const double m_scale;
};

/// A tile's room in so many columns.
QSizeF tileSize(QSizeF room, size_t tiles, size_t columns) {
    const auto across = static_cast<double>(columns), down = static_cast<double>((tiles + columns - 1) / columns);
    return {(room.width() - Gap * (across - 1)) / across, (room.height() - Gap * (down - 1)) / down};
}

double scaleOf(QSizeF tile) { return std::min(tile.width() / Tile.width(), tile.height() / Tile.height()); }

}  // namespace

Sketch drawKacheln(const std::vector<Kachel>& tiles, QSizeF room) {
    Sketch sketch{.size = room};
    if (tiles.empty()) return sketch;
    size_t columns = 1;
    for (const size_t others : {2, 3, 6})
        if (scaleOf(tileSize(room, tiles.size(), others)) > scaleOf(tileSize(room, tiles.size(), columns)))
            columns = others;
    const QSizeF size = tileSize(room, tiles.size(), columns);
    const double scale = std::clamp(scaleOf(size), 0.3, 1.4);
    for (size_t i = 0; i < tiles.size(); ++i) {
        const auto line = i / columns;
        const QPointF corner(static_cast<double>(i % columns) * (size.width() + Gap),
                             static_cast<double>(line) * (size.height() + Gap));
        Zeichner(sketch, tiles[i], {corner, size}, scale, static_cast<int>(line)).draw();
    }
    return sketch;
}

}  // namespace koben

// The designed card as a drawing.
#include <algorithm>
#include <cmath>

#include "core/PZ_Koben_Subs.h"
#include "output/QrCode.h"
#include "output/TextWidth.h"
#include "plans/Kartenblatt.h"

namespace koben {

namespace {

constexpr double Bold = 1.08;  // how much wider bold letters are

/// The measures of a size, in millimetres and points.
struct Masse {
    double code, number;           ///< the QR code's edge; the number's greatest points
    double points, line, gap;      ///< of text and its lines, between blocks
    double chartLeast, chartMost;  ///< height of the curve
    int columns, fullColumn;       ///< of facts; from so many lines on a column more
    int remarks;                   ///< lines
};
constexpr Masse A4{46, 110, 12, 7, 5, 50, 95, 2, 12, 12}, A5{30, 64, 9, 4.8, 2.5, 24, 46, 2, 5, 4};

class Blatt {
public:
    Blatt(const Kartenblatt& card, const Herdenkurve& herd, const Masse& m, const QRectF& box)
        : m_card(card), m_herd(herd), m(m), m_box(box), m_y(box.top()) {}

    std::vector<DrawItem> draw(const QStringList& fields) {
        drawHead();
        drawFacts(fields);
        const std::vector<QString> remarks = remarkLines();
        const double below = remarks.empty() ? 0 : m.gap + static_cast<double>(remarks.size() + 1) * m.line;
        drawLitters(std::clamp(m_box.bottom() - m_y - below - m.line, m.chartLeast, m.chartMost));
        drawRemarks(remarks);
        drawNotes();
        return std::move(m_items);
    }

private:
    void add(DrawItem item) { m_items.push_back(std::move(item)); }
    void text(const QRectF& box, const QString& words, double points, Tone tone = Tone::Text, double anchor = 0,
              bool bold = false) {
        add(PlacedText{.box = box,
                       .anchor = anchor,
                       .piece = {words, {.name = chartFace, .points = points, .bold = bold}},
                       .tone = tone});
    }
    /// Cut where it would not fit.
    void fitted(const QRectF& box, const QString& words, Tone tone, bool bold = false) {
        text(box, cutText(words, m.points, box.width() / (bold ? Bold : 1)), m.points, tone, 0, bold);
    }
    void rule() {
        add(StraightLine{.from = {m_box.left(), m_y}, .to = {m_box.right(), m_y}, .width = 0.2, .tone = Tone::Grid});
    }
    void heading(const QString& words, Tone tone = Tone::Text) {
        fitted({m_box.left(), m_y, m_box.width(), m.line}, words, tone, true);
        m_y += m.line;
    }

    void drawHead() {
        const QRectF code(m_box.right() - m.code, m_y, m.code, m.code);
        for (DrawItem& item : drawQrCode(qrCode(m_card.nummer), code)) add(std::move(item));
        const QRectF room(m_box.left(), m_y, m_box.width() - m.code - m.gap, m.code);
        const double wanted = textWidth(m_card.nummer, m.number) * Bold;
        text(room, m_card.nummer, m.number * std::min(1.0, room.width() / std::max(wanted, 1.0)), Tone::Text, 0, true);
        m_y += m.code + m.gap / 2;
        rule();
        m_y += m.gap / 2;
    }

    /// Down the columns, as one reads a list.
    void drawFacts(const QStringList& fields) {
        const auto count = static_cast<int>(fields.size());
        const int columns = (count + m.columns - 1) / m.columns > m.fullColumn ? m.columns + 1 : m.columns;
        const int lines = (count + columns - 1) / columns;
        const double width = m_box.width() / columns;
        double caption = 0;
        for (const QString& id : fields) caption = std::max(caption, textWidth(Kartenfeldname(id), m.points));
        caption = std::min(caption + 3, width * 0.6);
        for (int i = 0; i < count; ++i) {
            const double x = m_box.left() + i / lines * width, y = m_y + i % lines * m.line;
            fitted({x, y, caption, m.line}, Kartenfeldname(fields[i]), Tone::Quiet);
            fitted({x + caption, y, width - caption - 2, m.line}, m_card.fakten.value(fields[i]), Tone::Text, true);
        }
        m_y += lines * m.line + m.gap / 2;
        rule();
        m_y += m.gap / 2;
    }

    // ------------------------------------------------------------------------------------------------------- litters

    void drawLitters(double height) {
        const double left = m_box.width() * 0.58;
        const double top = m_y;
        heading(QStringLiteral("Lebend geborene Ferkel je Wurf"));
        drawCurve({m_box.left(), m_y, left - 4, height - m.line});
        drawTable({m_box.left() + left, top, m_box.width() - left, height});
        m_y = top + height + m.gap;
    }

    /// Her own line solid with circles, the herd's dashed.
    void drawCurve(const QRectF& box) {
        int lastLitter = 5;
        double most = 15;
        for (const auto& litter : m_card.wuerfe) {
            lastLitter = std::max(lastLitter, litter.nummer);
            most = std::max<double>(most, litter.lebend);
        }
        most = std::ceil(most / 5) * 5;
        const double axis = m.line * 1.2;
        const QRectF plot(box.left() + axis, box.top() + m.line, box.width() - axis, box.height() - 2 * m.line);
        const auto at = [&](int litter, double live) {
            return QPointF(plot.left() + plot.width() * (litter - 0.5) / lastLitter,
                           plot.bottom() - plot.height() * live / most);
        };
        for (int live = 0; live <= most; live += 5) {
            const double y = at(1, live).y();
            add(StraightLine{.from = {plot.left(), y}, .to = {plot.right(), y}, .width = 0.15, .tone = Tone::Grid});
            text({box.left(), y - m.line / 2, axis - 1, m.line}, QString::number(live), m.points * 0.85, Tone::Quiet,
                 1);
        }
        for (int litter = 1; litter <= lastLitter; ++litter)
            text({at(litter, 0).x() - 5, plot.bottom(), 10, m.line}, QString::number(litter), m.points * 0.85,
                 Tone::Quiet, 0.5);
        std::vector<QPointF> herd, own;
        for (const auto& [litter, live] : m_herd)
            if (litter <= lastLitter) herd.push_back(at(litter, live));
        for (const auto& litter : m_card.wuerfe) own.push_back(at(litter.nummer, litter.lebend));
        if (herd.size() > 1) add(Polyline{.points = herd, .width = 0.4, .tone = Tone::Quiet, .dash = Dash::Dashed});
        if (own.size() > 1) add(Polyline{.points = own, .width = 0.6, .tone = Tone::Accent});
        for (const QPointF& point : own) add(Mark{.at = point, .size = m.line * 0.4, .tone = Tone::Accent});
        drawLegend({plot.left(), box.top(), plot.width(), m.line});
    }

    void drawLegend(const QRectF& box) {
        const double y = box.center().y(), half = box.left() + box.width() * 0.4, stroke = 8;
        add(StraightLine{.from = {box.left(), y}, .to = {box.left() + stroke, y}, .width = 0.6, .tone = Tone::Accent});
        add(Mark{.at = {box.left() + stroke / 2, y}, .size = m.line * 0.4, .tone = Tone::Accent});
        text({box.left() + stroke + 1.5, box.top(), 30, box.height()}, QStringLiteral("diese Sau"), m.points * 0.85);
        add(StraightLine{
            .from = {half, y}, .to = {half + stroke, y}, .width = 0.4, .tone = Tone::Quiet, .dash = Dash::Dashed});
        text({half + stroke + 1.5, box.top(), 40, box.height()}, QStringLiteral("Schnitt der Herde"), m.points * 0.85);
    }

    /// The latest litters that have room.
    void drawTable(const QRectF& box) {
        struct Spalte {
            const char* caption;
            double right;  ///< of the box
        };
        constexpr Spalte columns[] = {{"Wurf", 0.16}, {"Datum", 0.5}, {"lebend", 0.69}, {"tot", 0.82}, {"abg.", 1}};
        const auto line = [&](double y, const QStringList& cells, Tone tone) {
            for (qsizetype i = 0; i < cells.size(); ++i)
                text({box.left(), y, box.width() * columns[i].right, m.line}, cells[i], m.points * 0.9, tone, 1);
        };
        QStringList captions;
        for (const Spalte& column : columns) captions += QString::fromUtf8(column.caption);
        line(box.top(), captions, Tone::Quiet);
        const auto room = static_cast<size_t>(std::max(box.height() / m.line - 1, 1.0));
        const auto& litters = m_card.wuerfe;
        double y = box.top();
        for (size_t i = litters.size() > room ? litters.size() - room : 0; i < litters.size(); ++i)
            line(y += m.line,
                 {QString::number(litters[i].nummer), Datum_kurz(Datum_als_Anzeige(litters[i].tag)),
                  QString::number(litters[i].lebend), QString::number(litters[i].tot),
                  litters[i].abgesetzt < 0 ? QString() : QString::number(litters[i].abgesetzt)},
                 Tone::Text);
        if (litters.empty())
            text({box.left(), box.top() + m.line, box.width(), m.line}, QStringLiteral("noch kein Wurf"), m.points,
                 Tone::Quiet, 0.5);
    }

    // ------------------------------------------------------------------------------------------------------- remarks

    /// In lines that fit the width; the last one says what found no room.
    std::vector<QString> remarkLines() const {
        std::vector<QString> lines;
        size_t told = 0;
        for (const auto& remark : m_card.bemerkungen) {
            QString words = remark.text;
            if (!remark.was.isEmpty()) words.prepend(remark.was + QStringLiteral(": "));
            if (remark.tag.isValid()) words.prepend(Datum_als_Anzeige(remark.tag) + u' ');
            const QStringList own = wrapText(words, m.points, m_box.width());
            const bool last = told + 1 == m_card.bemerkungen.size();
            if (lines.size() + static_cast<size_t>(own.size()) + (last ? 0 : 1) > static_cast<size_t>(m.remarks)) break;
            lines.insert(lines.end(), own.begin(), own.end());
            ++told;
        }
        if (const size_t more = m_card.bemerkungen.size() - told; more > 0)
            lines.push_back(QStringLiteral("und %1 weitere").arg(more));
        return lines;
    }

    void drawRemarks(const std::vector<QString>& lines) {
        if (lines.empty()) return;
        heading(QStringLiteral("Bemerkungen"), Tone::Warning);
        for (const QString& line : lines) {
            fitted({m_box.left(), m_y, m_box.width(), m.line}, line, Tone::Warning);
            m_y += m.line;
        }
        m_y += m.gap;
    }

    /// What is left becomes lines to write on.
    void drawNotes() {
        const double step = 9;
        if (m_box.bottom() - m_y < 2 * step + m.line) return;
        heading(QStringLiteral("Notizen"));
        for (double y = m_y + step; y <= m_box.bottom(); y += step)
            add(StraightLine{.from = {m_box.left(), y}, .to = {m_box.right(), y}, .width = 0.15, .tone = Tone::Grid});
    }

    const Kartenblatt& m_card;
    const Herdenkurve& m_herd;
    const Masse& m;
    const QRectF m_box;
    double m_y;
    std::vector<DrawItem> m_items;
};

}  // namespace

std::vector<DrawItem> drawKartenblatt(const Kartenblatt& card, const Herdenkurve& herd, const QStringList& fields,
                                      Kartengroesse size, const QRectF& box) {
    return Blatt(card, herd, size == Kartengroesse::A4 ? A4 : A5, box).draw(fields);
}

}  // namespace koben

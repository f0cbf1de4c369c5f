#include "ui/Look.h"

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QFontDatabase>
#include <QImageReader>
#include <QPainter>
#include <QPixmap>
#include <QProxyStyle>
#include <QStyleOption>

/// The icons lie in a static library; without this the linker drops them. (Qt wants it outside of any namespace.)
static void loadIcons() { Q_INIT_RESOURCE(koben); }

namespace koben::ui {

namespace {

struct Colours {
    const char *window, *base, *alternate, *text, *quiet, *button, *mid, *dark, *highlight, *onHighlight, *link, *faint;
};

// Every text stands on its ground with a contrast of at least 4.5 to 1 (the greyed ones excepted).
const Colours light{"#f5f6f7", "#ffffff", "#f3f7fb", "#202428", "#5a6470", "#fbfcfd",
                    "#c3cad1", "#9aa4ae", "#2f6f9f", "#ffffff", "#1f5f8f", "#8d969f"};
const Colours dark{"#30353a", "#191c1f", "#20252a", "#e6e9ec", "#aab4be", "#3c434a",
                   "#5a636c", "#121517", "#2f6f9f", "#ffffff", "#7fbdea", "#848e98"};

/// Draws an icon's text at one size in one colour.
QPixmap drawn(QByteArray svg, const QColor& colour, int size) {
    svg.replace("currentColor", colour.name().toLatin1());
    QBuffer buffer(&svg);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "svg");
    reader.setScaledSize(QSize(size, size));
    return QPixmap::fromImage(reader.read());
}

/// Fusion with more air between the columns of lists, and frames of check boxes that are seen on a dark ground too.
class Style final : public QProxyStyle {
public:
    Style() : QProxyStyle(QStringLiteral("Fusion")) {}
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        const int size = QProxyStyle::pixelMetric(metric, option, widget);
        return metric == PM_FocusFrameHMargin ? size + Air : size;
    }
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const auto* head = qstyleoption_cast<const QStyleOptionHeader*>(option);
        if (element != CE_HeaderLabel || !head) return QProxyStyle::drawControl(element, option, painter, widget);
        QStyleOptionHeader airy(*head);
        airy.rect.adjust(Air, 0, -Air, 0);
        QProxyStyle::drawControl(element, &airy, painter, widget);
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool round = element == PE_IndicatorRadioButton;
        if ((!round && element != PE_IndicatorCheckBox) || option->palette.window().color().lightness() >= 128) return;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setBrush(Qt::NoBrush);
        painter->setPen(option->palette.color(QPalette::Disabled, QPalette::Text));
        const QRectF frame = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
        if (round)
            painter->drawEllipse(frame);
        else
            painter->drawRoundedRect(frame, 2, 2);
        painter->restore();
    }

private:
    static constexpr int Air = 3;  // pixels at each side of a cell, beside Fusion's own
};

}  // namespace

Shade desktopShade() {
    return QApplication::palette().color(QPalette::Window).lightness() < 128 ? Shade::Dark : Shade::Light;
}

QPalette palette(Shade shade) {
    const Colours& c = shade == Shade::Dark ? dark : light;
    QPalette p;
    const auto set = [&p](QPalette::ColorRole role, const char* colour) {
        p.setColor(role, QColor(QLatin1String(colour)));
    };
    set(QPalette::Window, c.window);
    set(QPalette::WindowText, c.text);
    set(QPalette::Base, c.base);
    set(QPalette::AlternateBase, c.alternate);
    set(QPalette::Text, c.text);
    set(QPalette::PlaceholderText, c.quiet);
    set(QPalette::Button, c.button);
    set(QPalette::ButtonText, c.text);
    set(QPalette::BrightText, c.text);
    set(QPalette::Mid, c.mid);
    set(QPalette::Dark, c.dark);
    set(QPalette::Light, c.base);
    set(QPalette::Midlight, c.alternate);
    set(QPalette::Shadow, c.dark);
    set(QPalette::Highlight, c.highlight);
    set(QPalette::HighlightedText, c.onHighlight);
    set(QPalette::Link, c.link);
    set(QPalette::ToolTipBase, c.base);
    set(QPalette::ToolTipText, c.text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, QColor(QLatin1String(c.faint)));
    p.setColor(QPalette::Disabled, QPalette::Highlight, QColor(QLatin1String(c.mid)));
    p.setColor(QPalette::Disabled, QPalette::HighlightedText, QColor(QLatin1String(c.text)));
    return p;
}

void applyLook(QApplication& application, Shade shade) {
    application.setStyle(new Style);
    QFont font = application.font();
    if (!QFontDatabase::hasFamily(font.family()) || font.family() == u"Sans Serif" || font.family() == u"DejaVu Sans")
        for (const char* family : {"Noto Sans", "Open Sans", "Liberation Sans"})
            if (QFontDatabase::hasFamily(QLatin1String(family))) {
                font.setFamily(QLatin1String(family));
                break;
            }
    if (font.pointSizeF() < 10) font.setPointSizeF(10);
    application.setFont(font);
    application.setPalette(palette(shade));
}

QIcon iconOf(const QString& name, const QPalette& palette) {
    loadIcons();
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray svg = file.readAll();
    QIcon icon;
    for (const int size : {16, 24, 32, 48}) {
        icon.addPixmap(drawn(svg, palette.color(QPalette::Active, QPalette::ButtonText), size), QIcon::Normal);
        icon.addPixmap(drawn(svg, palette.color(QPalette::Disabled, QPalette::ButtonText), size), QIcon::Disabled);
    }
    return icon;
}

QIcon programIcon() {
    loadIcons();
    static const QIcon sign(QStringLiteral(":/icons/koben.svg"));
    return sign;
}

}  // namespace koben::ui

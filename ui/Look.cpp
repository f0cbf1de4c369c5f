#include "ui/Look.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QFile>
#include <QFontDatabase>
#include <QPainter>
#include <QPixmap>
#include <QProxyStyle>
#include <QStyleOption>
#include <QTextCharFormat>

#include "ui/Desktop.h"
#include "ui/IconDrawing.h"

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
const Colours dark{"#1f2327", "#17191c", "#1d2125", "#e6e9ec", "#aab4be", "#2a2f35",
                   "#69737d", "#0f1113", "#2f6f9f", "#ffffff", "#7fbdea", "#848e98"};

constexpr int sizes[] = {16, 20, 24, 32, 40, 48, 64};

QByteArray drawingText(const QString& name) {
    loadIcons();
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Names of the drawings that stand for the desktop's own.
QString drawingOf(QStyle::StandardPixmap sign) {
    switch (sign) {
        case QStyle::SP_MessageBoxInformation:
            return QStringLiteral("hinweis");
        case QStyle::SP_MessageBoxQuestion:
            return QStringLiteral("frage");
        case QStyle::SP_MessageBoxWarning:
            return QStringLiteral("warnung");
        case QStyle::SP_MessageBoxCritical:
            return QStringLiteral("fehler");
        case QStyle::SP_ArrowLeft:
            return QStringLiteral("links");
        case QStyle::SP_ArrowRight:
            return QStringLiteral("rechts");
        default:
            return {};
    }
}

bool isPrimary(const QStyleOption* option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    return button && button->features & QStyleOptionButton::DefaultButton && button->state & QStyle::State_Enabled;
}

/// Fusion in the program's own language of forms: headings with a hairline instead of frames, one filled button, a list
/// whose frame tells the focus, more air between the columns of lists, and drawings of one hand.
class Style final : public QProxyStyle {
public:
    Style() : QProxyStyle(QStringLiteral("Fusion")) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        const int size = QProxyStyle::pixelMetric(metric, option, widget);
        return metric == PM_FocusFrameHMargin ? size + Air : size;
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override {
        const QSize whole = QProxyStyle::sizeFromContents(type, option, size, widget);
        return type == CT_HeaderSection ? whole + QSize(4 * Air, 0) : whole;
    }

    QIcon standardIcon(StandardPixmap sign, const QStyleOption* option, const QWidget* widget) const override {
        const QString drawing = drawingOf(sign);
        if (drawing.isEmpty()) return QProxyStyle::standardIcon(sign, option, widget);
        QPalette colours = QApplication::palette();
        const bool onAccent = qobject_cast<const QCalendarWidget*>(widget);
        colours.setColor(QPalette::ButtonText, colours.color(onAccent ? QPalette::HighlightedText : QPalette::Link));
        return iconOf(drawing, colours);
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        if (element == CE_PushButtonLabel && isPrimary(option)) {
            QStyleOptionButton filled(*qstyleoption_cast<const QStyleOptionButton*>(option));
            filled.palette.setColor(QPalette::ButtonText, filled.palette.color(QPalette::HighlightedText));
            return QProxyStyle::drawControl(element, &filled, painter, widget);
        }
        if (element == CE_TabBarTabShape) return drawTab(*option, *painter);
        const auto* head = qstyleoption_cast<const QStyleOptionHeader*>(option);
        if (element != CE_HeaderLabel || !head) return QProxyStyle::drawControl(element, option, painter, widget);
        QStyleOptionHeader airy(*head);
        airy.rect.adjust(Air, 0, -Air, 0);
        QProxyStyle::drawControl(element, &airy, painter, widget);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override {
        if (control == CC_ComboBox) {
            QProxyStyle::drawComplexControl(control, option, painter, widget);
            return drawOutline(*option, *painter);
        }
        const auto* box = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
        if (control != CC_GroupBox || !box || box->subControls & SC_GroupBoxCheckBox)
            return QProxyStyle::drawComplexControl(control, option, painter, widget);
        const QRect title = subControlRect(CC_GroupBox, box, SC_GroupBoxLabel, widget);
        const QRect line(box->rect.left(), title.top(), box->rect.width(), title.height());
        painter->save();
        QFont bold = widget ? widget->font() : painter->font();
        bold.setBold(true);
        painter->setFont(bold);
        painter->setPen(box->palette.color(QPalette::WindowText));
        if (!box->text.isEmpty())
            painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, box->text);
        painter->setPen(box->palette.color(QPalette::Mid));
        if (!box->text.isEmpty()) painter->drawLine(line.left(), line.bottom() + 2, line.right(), line.bottom() + 2);
        painter->restore();
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element == PE_PanelButtonCommand && isPrimary(option)) return drawPrimary(*option, *painter);
        if (element == PE_FrameTabWidget) return;  // pages lie on the window's own ground
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool embedded = widget && qobject_cast<const QComboBox*>(widget->parentWidget());
        if ((element == PE_FrameLineEdit && !embedded) || element == PE_PanelButtonCommand)
            drawOutline(*option, *painter);
        if (element == PE_Frame && qobject_cast<const QAbstractItemView*>(widget) && widget->hasFocus())
            return drawFocus(*option, *painter);
        const bool round = element == PE_IndicatorRadioButton;
        if ((round || element == PE_IndicatorCheckBox) && option->palette.window().color().lightness() < 128)
            drawIndicator(*option, *painter, round);
    }

private:
    static constexpr int Air = 3;  // pixels at each side of a cell, beside Fusion's own

    static void drawPrimary(const QStyleOption& option, QPainter& painter) {
        const QColor accent = option.palette.color(QPalette::Highlight);
        const bool down = option.state & (State_Sunken | State_On);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(accent.darker(120));
        painter.setBrush(down ? accent.darker(125) : option.state & State_MouseOver ? accent.darker(110) : accent);
        const QRectF frame = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
        painter.drawRoundedRect(frame, 2, 2);
        if (option.state & State_HasFocus) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(option.palette.color(QPalette::HighlightedText));
            painter.drawRoundedRect(frame.adjusted(2, 2, -2, -2), 1, 1);
        }
        painter.restore();
    }

    /// A tab in front bears the accent below, all stand on a hairline.
    static void drawTab(const QStyleOption& option, QPainter& painter) {
        const QRect& tab = option.rect;
        painter.fillRect(tab.left(), tab.bottom(), tab.width(), 1, option.palette.color(QPalette::Mid));
        if (option.state & State_Selected)
            painter.fillRect(tab.left(), tab.bottom() - 2, tab.width(), 3, option.palette.color(QPalette::Highlight));
        else if (option.state & State_MouseOver)
            painter.fillRect(tab.adjusted(0, 0, 0, -1), option.palette.color(QPalette::AlternateBase));
    }

    /// Edges of fields and buttons, which Fusion draws too dark for a dark ground.
    static void drawOutline(const QStyleOption& option, QPainter& painter) {
        if (option.palette.window().color().lightness() >= 128 || option.state & State_HasFocus) return;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(option.palette.color(QPalette::Mid));
        painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
        painter.restore();
    }

    static void drawFocus(const QStyleOption& option, QPainter& painter) {
        painter.save();
        painter.setBrush(Qt::NoBrush);
        painter.setPen(option.palette.color(QPalette::Link));
        painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
        painter.restore();
    }

    /// Frames of check boxes that are seen on a dark ground too.
    static void drawIndicator(const QStyleOption& option, QPainter& painter, bool round) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(option.palette.color(QPalette::Disabled, QPalette::Text));
        const QRectF frame = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
        if (round)
            painter.drawEllipse(frame);
        else
            painter.drawRoundedRect(frame, 2, 2);
        painter.restore();
    }
};

}  // namespace

Shade desktopShade() { return isDesktopDark() ? Shade::Dark : Shade::Light; }

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
    const QByteArray svg = drawingText(name);
    QIcon icon;
    if (svg.isEmpty()) return icon;
    for (const int size : sizes) {
        const auto add = [&](QPalette::ColorGroup group, QIcon::Mode mode) {
            icon.addPixmap(QPixmap::fromImage(drawnIcon(svg, palette.color(group, QPalette::ButtonText), size)), mode);
        };
        add(QPalette::Active, QIcon::Normal);
        add(QPalette::Disabled, QIcon::Disabled);
    }
    return icon;
}

QColor alertColour(const QPalette& palette) {
    return palette.color(QPalette::Base).lightness() < 128 ? QColor(0xff, 0x8a, 0x80) : QColor(0xb3, 0x26, 0x1e);
}

Tints drawingTints(const QPalette& palette) {
    const bool onDark = palette.color(QPalette::Base).lightness() < 128;
    const auto rgb = [](const QColor& colour) { return static_cast<quint32>(colour.rgb() & 0xffffff); };
    return {rgb(palette.color(QPalette::Text)), rgb(palette.color(QPalette::PlaceholderText)),
            rgb(palette.color(QPalette::Mid)),  rgb(palette.color(QPalette::Link)),
            onDark ? 0xf0b060u : 0xb5650fu,     onDark ? 0x8fd08fu : 0x4d8a2bu,
            rgb(alertColour(palette)),          rgb(palette.color(QPalette::Base))};
}

void showDaysOff(QCalendarWidget& calendar) {
    QTextCharFormat format;
    format.setForeground(alertColour(calendar.palette()));
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) calendar.setWeekdayTextFormat(day, format);
}

QIcon programIcon() {
    static const QIcon sign = [] {
        const QByteArray svg = drawingText(QStringLiteral("koben"));
        QIcon drawn;
        for (const int size : {16, 24, 32, 48, 64, 128, 256})
            drawn.addPixmap(QPixmap::fromImage(drawnIcon(svg, Qt::black, size)));
        return drawn;
    }();
    return sign;
}

}  // namespace koben::ui

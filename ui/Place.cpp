#include "ui/Place.h"

#include <QApplication>
#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <QWindow>
#include <algorithm>

namespace koben::ui {

namespace {

/// What the desktop draws around the window; a guess until that is known.
QMargins frameOf(const QWidget& window) {
    const QWindow* handle = window.windowHandle();
    const QMargins told = handle ? handle->frameMargins() : QMargins();
    if (!told.isNull()) return told;
    const int bar = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    return {4, bar + 4, 4, 4};
}

int letterHeight(const QWidget& window) { return window.fontMetrics().height(); }

}  // namespace

QRect placeOnScreen(const QRect& wanted, const QList<QRect>& screens) {
    QRect best;
    for (const QRect& screen : screens) {
        const QRect seen = screen & wanted;
        if (seen.width() * seen.height() > (best & wanted).width() * (best & wanted).height() || best.isNull())
            best = screen;
    }
    if (best.isNull()) return wanted;
    QRect place(wanted.topLeft(), wanted.size().boundedTo(best.size()));
    place.moveLeft(std::clamp(place.left(), best.left(), best.right() - place.width() + 1));
    place.moveTop(std::clamp(place.top(), best.top(), best.bottom() - place.height() + 1));
    return place;
}

QList<QRect> roomOnScreens(const QWidget& window) {
    QList<QRect> rooms;
    for (const QScreen* screen : QApplication::screens()) rooms.append(screen->availableGeometry() - frameOf(window));
    return rooms;
}

QRect roomOf(const QWidget& window) {
    const QScreen* screen =
        window.isVisible() || !window.parentWidget() ? window.screen() : window.parentWidget()->screen();
    return (screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768)) - frameOf(window);
}

KeptPlace KeptPlace::from(const QString& text, const QWidget& window) {
    const QStringList parts = text.split(u',');
    KeptPlace kept;
    if (parts.size() < 4) return kept;
    kept.rect = QRect(parts[0].toInt(), parts[1].toInt(), parts[2].toInt(), parts[3].toInt());
    if (kept.rect.width() <= 50 || kept.rect.height() <= 50) kept.rect = QRect();
    kept.maximized = parts.contains(QStringLiteral("max"));
    kept.sizeHolds = parts.contains(QStringLiteral("h%1").arg(letterHeight(window)));
    return kept;
}

QString KeptPlace::text(const QWidget& window) {
    const QRect place = window.isMaximized() ? window.normalGeometry() : window.geometry();
    QString text = QStringLiteral("%1,%2,%3,%4").arg(place.x()).arg(place.y()).arg(place.width()).arg(place.height());
    if (window.isMaximized()) text += QStringLiteral(",max");
    return text + QStringLiteral(",h%1").arg(letterHeight(window));
}

}  // namespace koben::ui

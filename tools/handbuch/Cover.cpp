#include "tools/handbuch/Cover.h"

#include <QPainter>

#include "tools/handbuch/Typesetter.h"

namespace koben::handbuch {

void paintCover(QPainter& painter, const QImage& sign, const QImage& window, const QString& version) {
    const QColor blue(0x23, 0x55, 0x7a);
    const double left = mm(25), width = mm(162);
    painter.fillRect(QRectF(0, 0, mm(210), mm(96)), blue);
    painter.drawImage(QRectF(left, mm(24), mm(34), mm(34)), sign);
    const auto write = [&](double x, double base, const QString& text, double size, bool bold, const QColor& colour) {
        painter.setPen(colour);
        painter.setFont(face(size, bold));
        painter.drawText(QPointF(x, base), text);
    };
    write(left + mm(42), mm(42), QStringLiteral("KOBEN 2.0"), 40, true, Qt::white);
    write(left + mm(42), mm(55), QStringLiteral("Der Sauenplaner"), 20, false, Qt::white);
    write(left, mm(84), QStringLiteral("Handbuch"), 24, false, Qt::white);
    if (!window.isNull()) {
        const QRectF frame(left, mm(116), width, width * window.height() / window.width());
        painter.drawImage(frame, window);
        painter.setPen(QPen(QColor(0x9a, 0xa2, 0xaa), pt(0.5)));
        painter.drawRect(frame);
    }
    const QColor grey(0x50, 0x56, 0x5c);
    write(left, mm(262), QStringLiteral("Fassung ") + version, 11, true, grey);
    write(left, mm(269),
          QStringLiteral("Alle Kapitel stehen auch im Programm: F1 zeigt das zum Fenster, in dem Sie gerade arbeiten."),
          9.5, false, grey);
}

}  // namespace koben::handbuch

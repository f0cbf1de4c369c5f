#pragma once
// The first page of the manual.
#include <QImage>
#include <QString>

class QPainter;

namespace koben::handbuch {

/// On the whole page; pictures that are null are left out.
void paintCover(QPainter& painter, const QImage& sign, const QImage& window, const QString& version);

}  // namespace koben::handbuch

#pragma once
// The one door to libqrencode: a text as a QR code, for cards that a telephone or a reader in the barn is held to.
#include <QRectF>
#include <QString>
#include <vector>

#include "forms/Zeichnung.h"

namespace koben {

/// The modules of a code, dark or light, without the light border that it needs around it.
struct QrCode {
    int size = 0;  ///< modules in a row and in a column; 0 for a text that does not fit a code, or is empty
    std::vector<bool> modules;
    bool dark(int row, int column) const { return modules[static_cast<size_t>(row * size + column)]; }
};

/// The text in UTF-8, of the smallest size that still reads with 15 % of it soiled.
QrCode qrCode(const QString& text);

/// The code as black rectangles that fill the box, its light border of four modules within it. A row's dark
/// neighbours are one rectangle.
std::vector<DrawItem> drawQrCode(const QrCode& code, const QRectF& box);

}  // namespace koben

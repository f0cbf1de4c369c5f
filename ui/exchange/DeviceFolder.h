#pragma once
// The folder of the barn device, as the windows of its export and import show it, and what the steps do with it.
#include "exchange/Geraeteordner.h"
#include "ui/Layout.h"

namespace koben::ui {

inline Piece deviceFolder(Geraeteordner& device, const QString& steps) {
    return group(QStringLiteral("Ordner des Geräts auf diesem Rechner"),
                 column({row({label(device.wo) * 1, button(device.ordner), button(device.ohne)}), caption(steps),
                         label(device.ergebnis)}));
}

}  // namespace koben::ui

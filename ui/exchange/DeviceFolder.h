#pragma once
// The folder of the barn device, as the windows of its export and import show it.
#include "exchange/Geraeteordner.h"
#include "ui/Layout.h"

namespace koben::ui {

inline Piece deviceFolder(Geraeteordner& device) {
    return group(
        QStringLiteral("Ordner des Geräts auf diesem Rechner"),
        column({row({label(device.wo) * 1, button(device.ordner), button(device.ohne)}), label(device.ergebnis)}));
}

}  // namespace koben::ui

#pragma once
// Asking a server over HTTP: bounded in time and size, and led astray by no redirect. The caller's loop of events runs
// meanwhile, without the user's input.
#include <QUrl>

#include "forms/Ports.h"

namespace koben::ui {

/// What a request may take.
struct WebLimits {
    qint64 bytes = 0;
    int silence = 10'000;  ///< milliseconds without a byte
    int whole = 0;         ///< milliseconds for all of it, 0 without limit
};

/// Reads an address of http or https into memory. A redirect is followed to https only, and within this machine.
WebAnswer fetchText(const QUrl& address, const WebLimits& limits, const WebProgress& go);
/// The same into a file, which takes its place once it is whole and on the disk; otherwise it is as before.
WebAnswer fetchFile(const QUrl& address, const QString& file, const WebLimits& limits, const WebProgress& go);

}  // namespace koben::ui

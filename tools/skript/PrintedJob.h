#pragma once
// A print job as lines of text.
#include <QStringList>
#include <functional>

#include "forms/Ports.h"

namespace koben::skript {

/// What stands at its place in a drawing, as a line of text.
QString placedText(const DrawItem& item);

/// A job that ended. `{Seite}` alone is a new page; `{quer}` at the head is landscape; a change of font stands where
/// it happens, as `{Courier New 10}`, `{50 fett}`: the name where it changed, the size, then what is on. What stands
/// at a place of its own is a line of its own, in millimetres: `{Linie 10 20 60 20}`, `{Rechteck 10 20 30 15}`,
/// `{Bild 10 20 30 15}`, `{Text 10 20} worte`, `{Linienzug 10 20 15 25 20 22}`, `{Fläche 10 20 20 20 20 30 10 30}`,
/// `{Marke 10 20}`; of these three what tells them apart in grey stands behind the word: `{Linienzug gestrichelt ...`.
struct PrintedJob {
    QStringList lines;
    int pages = 1;
};

class ScriptPrintJob final : public DrawnJob {
public:
    ScriptPrintJob(bool landscape, std::function<void(const PrintedJob&)> onEnd)
        : DrawnJob(landscape), m_onEnd(std::move(onEnd)) {}

private:
    bool finish(const Drawing& drawing, const Go& go) override;
    std::function<void(const PrintedJob&)> m_onEnd;
};

}  // namespace koben::skript

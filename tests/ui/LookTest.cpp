// Both shades are legible: every text on each ground that it is written on.
#include <gtest/gtest.h>

#include <cmath>

#include "ui/Look.h"

namespace koben::ui {
namespace {

double luminance(const QColor& colour) {
    const auto part = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double x = luminance(a) + 0.05, y = luminance(b) + 0.05;
    return x > y ? x / y : y / x;
}

TEST(LookTest, TextsStandOutFromTheirGround) {
    using P = QPalette;
    const std::pair<P::ColorRole, std::vector<P::ColorRole>> grounds[] = {
        {P::Window, {P::WindowText, P::PlaceholderText, P::Link}},
        {P::Base, {P::Text, P::PlaceholderText, P::Link}},
        {P::AlternateBase, {P::Text, P::PlaceholderText, P::Link}},
        {P::Button, {P::ButtonText}},
        {P::Highlight, {P::HighlightedText}},
        {P::ToolTipBase, {P::ToolTipText}}};
    for (const Shade shade : {Shade::Light, Shade::Dark}) {
        const P colours = palette(shade);
        for (const auto& [ground, texts] : grounds)
            for (const auto text : texts)
                EXPECT_GE(contrast(colours.color(ground), colours.color(text)), 4.5) << ground << ' ' << text;
        EXPECT_GE(contrast(alertColour(colours), colours.color(P::Base)), 4.5);
        const Tints tints = drawingTints(colours);
        for (const Tone tone : {Tone::Text, Tone::Quiet, Tone::Accent, Tone::Second, Tone::Third, Tone::Warning}) {
            const double least = tone <= Tone::Quiet ? 4.5 : 3;  // of texts, of marks
            EXPECT_GE(contrast(QColor::fromRgb(tint(tints, tone)), colours.color(P::Base)), least) << int(tone);
            EXPECT_GE(contrast(QColor::fromRgb(tint(paperTints(), tone)), Qt::white), least) << int(tone);
        }
        EXPECT_GE(contrast(alertColour(colours), colours.color(P::Window)), 4.5);
    }
}

}  // namespace
}  // namespace koben::ui

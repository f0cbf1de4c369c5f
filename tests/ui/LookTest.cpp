// Both shades are legible: every text on each ground that it is written on.
#include <gtest/gtest.h>

#include "tests/ui/Fensterpruefung.h"
#include "ui/Look.h"

namespace koben::ui {
namespace {

TEST(LookTest, TextsStandOutFromTheirGround) {
    using P = QPalette;
    const std::pair<P::ColorRole, std::vector<P::ColorRole>> grounds[] = {
        {P::Window, {P::WindowText, P::PlaceholderText, P::Link}},
        {P::Base, {P::Text, P::PlaceholderText, P::Link}},
        {P::AlternateBase, {P::Text, P::PlaceholderText, P::Link}},
        {P::Button, {P::ButtonText, P::Text}},
        {P::Highlight, {P::HighlightedText}},
        {P::ToolTipBase, {P::ToolTipText}}};
    for (const Shade shade : {Shade::Light, Shade::Dark}) {
        const P colours = palette(shade);
        for (const auto& [ground, texts] : grounds)
            for (const auto text : texts)
                EXPECT_GE(contrast(colours.color(ground), colours.color(text)), 4.5) << ground << ' ' << text;
        const Tints tints = drawingTints(colours);
        for (const Tone tone : {Tone::Text, Tone::Quiet, Tone::Accent, Tone::Second, Tone::Third, Tone::Warning}) {
            const double least = tone <= Tone::Quiet ? 4.5 : 3;  // of texts, of marks
            EXPECT_GE(contrast(QColor::fromRgb(tint(tints, tone)), colours.color(P::Base)), least) << int(tone);
            EXPECT_GE(contrast(QColor::fromRgb(tint(paperTints(), tone)), Qt::white), least) << int(tone);
        }
        for (const auto ground : {P::Base, P::AlternateBase, P::Window})
            EXPECT_GE(contrast(alertColour(colours), colours.color(ground)), 4.5) << ground;
    }
}

}  // namespace
}  // namespace koben::ui

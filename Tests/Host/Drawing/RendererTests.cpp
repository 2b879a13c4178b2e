#include "Host/Drawing/RenderedTile.h"
#include "Host/Layout/Measures.h"
#include "Platform/Views/Divider.h"
#include "Platform/Views/Shape.h"
#include "Platform/Views/Spacer.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Symbol.h"
#include "Platform/Views/Text.h"
#include "Tests/Host/Drawing/Pictures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <regex>

namespace host {
namespace {

using namespace platform; // NOLINT(google-build-using-namespace): views read like the pictures they draw

class RendererTest : public testing::Test {
  protected:
    Picture picture(const WidgetLayout& layout, double scale = 2, const Appearance& appearance = {}) {
        return decoded(renderer.pixels(layout, appearance, scale));
    }
    Picture picture(LayoutItem item, double scale = 2, const Appearance& appearance = {}) {
        return picture(WidgetLayout{{170, 170}, {std::move(item)}, {}}, scale, appearance);
    }
    LayoutItem textAt(Point origin, std::string_view words, Font font = callout) {
        MeasuredText measured = renderer.texts().measure({.text = words, .font = font});
        const double height = textMeasures(font).lineHeight;
        const Rect frame{origin.x, origin.y, measured.lines.front().width, height};
        return {.content = TextItem{std::move(measured), height}, .frame = frame, .font = font};
    }
    Renderer renderer;
};

struct Box {
    int left = 1'000'000;
    int top = 1'000'000;
    int right = 0;
    int bottom = 0;
};

/// Around what differs from the empty tile, in pixels; `right` and `bottom` lie outside.
Box changed(const Picture& picture, const Picture& empty) {
    Box box;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (difference(picture.at(x, y), empty.at(x, y)) > 3) {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       std::max(box.bottom, y + 1)};
            }
        }
    }
    return box;
}

TEST_F(RendererTest, WhatSticksOutIsClippedAtTheRoundEdge) {
    const Picture plain = picture(WidgetLayout{{170, 170}, {}, {}});
    const Picture covered = picture({.content = CapsuleItem{Color::red}, .frame = {-500, -500, 1200, 1200}});
    for (int y = 0; y < plain.height; ++y) {
        for (int x = 0; x < plain.width; ++x) {
            ASSERT_EQ(covered.at(x, y)[3] == 0, plain.at(x, y)[3] == 0) << x << ' ' << y;
        }
    }
    // What is drawn after it is not clipped with it.
    const Picture two = picture(WidgetLayout{{170, 170},
                                             {{.content = CircleItem{Color::red}, .frame = {-5, -5, 10, 10}},
                                              {.content = CircleItem{Color::blue}, .frame = {80, 80, 10, 10}}},
                                             {}});
    EXPECT_EQ(two.at(170, 170), (Pixel{0, 0x7A, 0xFF, 255}));
    EXPECT_EQ(two.at(1, 1)[3], 0);
}

TEST_F(RendererTest, LinesAreWholePixelsWhereverTheyStand) {
    for (const auto& [scale, thickness] : {std::pair{1.0, 1}, {1.25, 1}, {1.5, 1}, {2.0, 2}, {3.0, 3}}) {
        const Picture empty = picture(WidgetLayout{{170, 170}, {}, {}}, scale);
        for (const double y : {50.0, 50.3, 50.5, 50.9}) {
            const Box line = changed(picture({.content = DividerItem{}, .frame = {30, y, 100, 1}}, scale), empty);
            EXPECT_EQ(line.bottom - line.top, thickness) << scale << " at " << y;
            EXPECT_EQ(line.top, std::floor(y * scale + 0.5));
            const Box dot =
                changed(picture({.content = CircleItem{Color::red}, .frame = {y, 60.4, 6, 6}}, scale), empty);
            EXPECT_EQ(dot.right - dot.left, dot.bottom - dot.top) << scale << " at " << y;
        }
    }
}

TEST_F(RendererTest, TextsAreAsWideAsMeasuredAndStandOnWholePixelsAtEveryScale) {
    for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
        const Picture empty = picture(WidgetLayout{{170, 170}, {}, {}}, scale);
        for (const char* words : {"Hamburgefonstiv", "HHHHHHHHHHHHH", "illiillii"}) {
            const LayoutItem item = textAt({20, 40}, words);
            const Box ink = changed(picture(item, scale), empty);
            // A letter's own margins are no ink.
            EXPECT_NEAR((ink.right - ink.left) / scale, item.frame.width, 2.4) << words << " at " << scale;
            EXPECT_NEAR(ink.left / scale, 20.6, 1.3) << words;
            for (const double y : {40.2, 40.5, 40.8}) {
                const Box moved = changed(picture(textAt({20, y}, words), scale), empty);
                EXPECT_EQ(moved.bottom - moved.top, ink.bottom - ink.top) << words << " at " << y;
            }
        }
    }
}

TEST_F(RendererTest, ColoredGlyphsKeepTheirColorsAtEveryScale) {
    for (const double scale : {1.0, 2.0}) {
        for (const bool isTinted : {false, true}) {
            const Picture drawn = picture(textAt({40, 40}, "🍎🍏", largeTitle), scale,
                                          {.mode = isTinted ? DrawingMode::tinted : DrawingMode::fullColor});
            int colored = 0;
            for (const Pixel& pixel : drawn.pixels) {
                colored += pixel[3] > 200 && std::abs(pixel[0] - pixel[2]) > 60 ? 1 : 0;
            }
            if (colored == 0 && !isTinted) {
                GTEST_SKIP() << "this machine has no font with coloured glyphs";
            }
            EXPECT_EQ(colored > 50, !isTinted) << colored << " at " << scale;
        }
    }
}

TEST_F(RendererTest, PlaceholdersTellNothing) {
    const auto redacted = [&](LayoutItem item) {
        return picture(std::move(item), 2, {.redaction = Redaction::placeholder});
    };
    LayoutItem one = textAt({30, 40}, "one");
    LayoutItem two = textAt({30, 40}, "two");
    std::get<TextItem>(two.content).text.lines.front().width = one.frame.width;
    two.frame = one.frame;
    EXPECT_NE(picture(one), picture(two));
    EXPECT_EQ(redacted(one), redacted(two));
    const auto symbolNamed = [](const char* name) {
        return LayoutItem{.content = SymbolItem{name}, .frame = {30, 40, 20, 20}};
    };
    EXPECT_EQ(redacted(symbolNamed("globe")), redacted(symbolNamed("folder")));
    EXPECT_NE(picture(symbolNamed("globe")), picture(symbolNamed("folder")));
    const View row = text("Inbox").link("x:inbox");
    EXPECT_TRUE(
        renderTile(row, {170, 50}, {.appearance = {.redaction = Redaction::placeholder}}, renderer).items.empty());
    EXPECT_EQ(renderTile(row, {170, 50}, {}, renderer).items.size(), 1U);
}

TEST_F(RendererTest, RefusesPicturesOfNoOrAbsurdSize) {
    for (const double scale : {0.0, -1.0, std::nan(""), 1e9}) {
        EXPECT_FALSE(renderer.pixels({{170, 170}, {}, {}}, {}, scale).surface);
        EXPECT_EQ(renderTile(text("Inbox"), {170, 50}, {.scale = scale}, renderer).picture.width, 0);
    }
    EXPECT_FALSE(renderer.pixels({{0, 10}, {}, {}}, {}, 1).surface);
    EXPECT_EQ(renderer.pixels({{9, 7}, {}, {}}, {}, 1).width, 9);
}

/// Without the numbers that cairo gives to images, which count those of the process.
std::string unnumbered(const std::string& svg) {
    return std::regex_replace(svg, std::regex("source-[0-9]+"), "source");
}

TEST_F(RendererTest, VectorFilesAreStableAndShowWhatThePixelsShow) {
    const View view = vStack({}, {text("Pending Review").font(headline), symbol("globe").font(largeTitle), divider(),
                                  circle(Color::red).frame({.width = 24, .height = 24})});
    const WidgetLayout layout = layOut(view, {170, 170}, renderer.texts(), renderer.images());
    Renderer other;
    const std::string svg = renderer.svg(layout, {});
    const std::string pdf = renderer.pdf(layout, {});
    EXPECT_EQ(renderer.svg(layout, {}), svg);
    EXPECT_EQ(unnumbered(other.svg(layout, {})), unnumbered(svg));
    EXPECT_EQ(other.pdf(layout, {}), pdf);
    EXPECT_NE(renderer.svg(layout, {.scheme = ColorScheme::dark}), svg);
    EXPECT_NE(svg.find(R"(viewBox="0 0 170 170")"), std::string::npos);
    EXPECT_TRUE(pdf.starts_with("%PDF-"));

    const Picture vector = decoded(svg);
    if (vector.pixels.empty()) {
        GTEST_SKIP() << "this machine has no loader for SVG";
    }
    const Picture pixels = picture(layout, 1);
    ASSERT_EQ(std::pair(vector.width, vector.height), std::pair(pixels.width, pixels.height));
    double sum = 0;
    for (std::size_t i = 0; i < pixels.pixels.size(); ++i) {
        sum += difference(vector.pixels[i], pixels.pixels[i]);
    }
    // Letters and symbols are fitted to pixels only in one of them.
    EXPECT_LT(sum / static_cast<double>(pixels.pixels.size()), 3.5);
    const Rect& dot = layout.items.back().frame;
    EXPECT_LE(
        difference(vector.at(static_cast<int>(dot.x + 12), static_cast<int>(dot.y + 12)), {0xFF, 0x3B, 0x30, 255}), 2);
    EXPECT_EQ(vector.at(1, 1)[3], 0);
}

} // namespace
} // namespace host

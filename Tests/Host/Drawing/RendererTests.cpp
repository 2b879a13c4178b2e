// What the reference pictures do not show: single pixels, clipping, badges, vector files.
#include "Host/Drawing/Badges.h"
#include "Host/Drawing/UserDirection.h"
#include "Host/Layout/Measures.h"
#include "Platform/Views/Divider.h"
#include "Platform/Views/Shape.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Symbol.h"
#include "Platform/Views/Text.h"
#include "Tests/Host/Drawing/Pictures.h"
#include "Tests/Support/Repeated.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <tuple>

namespace host {
namespace {

using namespace platform; // NOLINT(google-build-using-namespace): views read like the pictures they draw

class RendererTest : public testing::Test {
  protected:
    Picture picture(std::vector<LayoutItem> items, double scale = 2, const Appearance& appearance = {}) {
        return decoded(renderer.pixels({{170, 170}, std::move(items), {}}, appearance, scale));
    }
    LayoutItem textAt(Point origin, std::string_view words, Font font = callout) {
        MeasuredText measured = renderer.texts().measure({.text = words, .font = font});
        const double height = textMeasures(font).lineHeight;
        const Rect frame{origin.x, origin.y, measured.lines.front().width, height};
        return {.content = TextItem{std::move(measured), height}, .frame = frame, .font = font};
    }

    struct Box {
        int left = 1'000'000;
        int top = 1'000'000;
        int right = 0;
        int bottom = 0;
    };
    /// Returns what surrounds the item's ink, in pixels; `right` and `bottom` lie outside.
    Box inkOf(const LayoutItem& item, double scale) {
        const Picture empty = picture({}, scale);
        const Picture drawn = picture({item}, scale);
        Box box;
        for (int y = 0; y < drawn.height; ++y) {
            for (int x = 0; x < drawn.width; ++x) {
                if (difference(drawn.at(x, y), empty.at(x, y)) > 3) {
                    box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                           std::max(box.bottom, y + 1)};
                }
            }
        }
        return box;
    }

    Renderer renderer;
};

TEST_F(RendererTest, WhatSticksOutIsClippedAtTheRoundEdge) {
    const Picture plain = picture({});
    // What is drawn afterwards is not clipped.
    const Picture covered = picture({{.content = CapsuleItem{Color::red}, .frame = {-500, -500, 1200, 1200}},
                                     {.content = CircleItem{Color::blue}, .frame = {80, 80, 10, 10}}});
    for (int y = 0; y < plain.height; ++y) {
        for (int x = 0; x < plain.width; ++x) {
            ASSERT_EQ(covered.at(x, y)[3] == 0, plain.at(x, y)[3] == 0) << x << ' ' << y;
        }
    }
    EXPECT_EQ(covered.at(170, 170), (Pixel{0, 0x7A, 0xFF, 255}));
}

TEST_F(RendererTest, EverythingStandsOnWholePixels) {
    for (const auto& [scale, thickness] : {std::pair{1.0, 1}, {1.25, 1}, {1.5, 1}, {2.0, 2}, {3.0, 3}}) {
        const Box letters = inkOf(textAt({20, 50}, "Hamburgefonstiv"), scale);
        // The margins of letters are no ink.
        EXPECT_NEAR((letters.right - letters.left) / scale, textAt({}, "Hamburgefonstiv").frame.width, 2.4) << scale;
        for (const double y : {50.0, 50.3, 50.5, 50.9}) {
            const Box line = inkOf({.content = DividerItem{}, .frame = {30, y, 100, 1}}, scale);
            EXPECT_EQ(line.bottom - line.top, thickness) << scale << " at " << y;
            EXPECT_EQ(line.top, std::floor(y * scale + 0.5));
            const Box dot = inkOf({.content = CircleItem{Color::red}, .frame = {y, 60.4, 6, 6}}, scale);
            EXPECT_EQ(dot.right - dot.left, dot.bottom - dot.top) << scale << " at " << y;
            const Box moved = inkOf(textAt({20, y}, "Hamburgefonstiv"), scale);
            EXPECT_EQ(moved.bottom - moved.top, letters.bottom - letters.top) << scale << " at " << y;
        }
    }
}

TEST_F(RendererTest, ColoredGlyphsKeepTheirColorsUnlessTinted) {
    const auto colored = [&](double scale, DrawingMode mode) {
        const Picture drawn = picture({textAt({40, 40}, "🍎🍏", largeTitle)}, scale, {.mode = mode});
        return std::count_if(drawn.pixels.begin(), drawn.pixels.end(),
                             [](const Pixel& pixel) { return pixel[3] > 200 && std::abs(pixel[0] - pixel[2]) > 60; });
    };
    if (colored(1, DrawingMode::fullColor) == 0) {
        GTEST_SKIP() << "this machine has no font with coloured glyphs";
    }
    for (const double scale : {1.0, 2.0}) {
        EXPECT_GT(colored(scale, DrawingMode::fullColor), 50);
        EXPECT_LE(colored(scale, DrawingMode::tinted), 50);
    }
}

TEST_F(RendererTest, PlaceholdersTellNothing) {
    LayoutItem one = textAt({30, 40}, "one");
    LayoutItem two = textAt({30, 40}, "two");
    std::get<TextItem>(two.content).text.lines.front().width = one.frame.width;
    two.frame = one.frame;
    const auto symbolNamed = [](const char* name) {
        return LayoutItem{.content = SymbolItem{name}, .frame = {30, 40, 20, 20}};
    };
    const Appearance placeholder{.redaction = Redaction::placeholder};
    for (const auto& [a, b] : {std::pair{one, two}, std::pair{symbolNamed("globe"), symbolNamed("folder")}}) {
        EXPECT_NE(picture({a}), picture({b}));
        EXPECT_EQ(picture({a}, 2, placeholder), picture({b}, 2, placeholder));
    }
    const View row = text("Inbox").link("x:inbox");
    EXPECT_TRUE(renderTile(row, {170, 50}, {.appearance = placeholder}, renderer).items.empty());
    EXPECT_EQ(renderTile(row, {170, 50}, {}, renderer).items.size(), 1U);
    RenderedTile plain = renderTile(clear(), {170, 50}, {}, renderer);
    RenderedTile hidden = renderTile(clear(), {170, 50}, {.appearance = placeholder}, renderer);
    drawBadge(plain, asOfBadge("as of 10:42"), {}, renderer);
    drawBadge(hidden, asOfBadge("as of 10:42"), {.appearance = placeholder}, renderer);
    EXPECT_EQ(decoded(plain.picture), decoded(hidden.picture)) << "badges stay readable";
}

TEST_F(RendererTest, RefusesPicturesOfNoOrAbsurdSize) {
    for (const double scale : {0.0, -1.0, std::nan(""), 1e9}) {
        EXPECT_EQ(renderTile(text("Inbox"), {170, 50}, {.scale = scale}, renderer).picture.width, 0);
    }
    EXPECT_FALSE(renderer.pixels({{0, 10}, {}, {}}, {}, 1).surface);
    EXPECT_EQ(renderer.pixels({{9, 7}, {}, {}}, {}, 1).width, 9);
}

TEST_F(RendererTest, VectorFilesAreStableAndShowWhatThePixelsShow) {
    const View view = vStack({}, {text("Pending Review").font(headline), symbol("globe").font(largeTitle), divider(),
                                  circle(Color::red).frame({.width = 24, .height = 24})});
    const WidgetLayout layout = layOut(view, {170, 170}, renderer.texts(), renderer.images());
    EXPECT_EQ(Renderer().vectorFile(VectorFormat::pdf, layout, {}), renderer.vectorFile(VectorFormat::pdf, layout, {}));
    EXPECT_TRUE(renderer.vectorFile(VectorFormat::pdf, layout, {}).starts_with("%PDF-"));

    const Picture vector = decoded(renderer.vectorFile(VectorFormat::svg, layout, {}));
    if (vector.pixels.empty()) {
        GTEST_SKIP() << "this machine has no loader for SVG";
    }
    const Picture pixels = picture(layout.items, 1);
    ASSERT_EQ(std::pair(vector.width, vector.height), std::pair(pixels.width, pixels.height));
    double sum = 0;
    for (std::size_t i = 0; i < pixels.pixels.size(); ++i) {
        sum += difference(vector.pixels[i], pixels.pixels[i]);
    }
    // Letters and symbols are fitted to pixels only in one of them.
    EXPECT_LT(sum / static_cast<double>(pixels.pixels.size()), 3.5);
    EXPECT_EQ(vector.at(1, 1)[3], 0);
}

TEST_F(RendererTest, BadgesLetNothingShineThrough) {
    for (const TileStyle& style : std::vector<TileStyle>{{.scale = 1},
                                                         {.appearance = {.scheme = ColorScheme::dark}, .scale = 1.25},
                                                         {.appearance = {.contrast = Contrast::high}, .scale = 2},
                                                         {.appearance = {.redaction = Redaction::placeholder}}}) {
        RenderedTile plain = renderTile(text(""), familySize("medium"), style, renderer);
        RenderedTile busy = renderTile(circle(Color::red).frame({.width = 2000, .height = 2000}), familySize("medium"),
                                       style, renderer);
        const Rect frame = drawBadge(plain, asOfBadge("as of 10:42"), style, renderer);
        EXPECT_EQ(drawBadge(busy, asOfBadge("as of 10:42"), style, renderer), frame);
        const Picture overPlain = decoded(plain.picture);
        const Picture overBusy = decoded(busy.picture);
        ASSERT_NE(overPlain, overBusy);
        // The middle of the capsule, without its round ends.
        const auto pixel = [&](double points) { return static_cast<int>(points * style.scale); };
        for (int x = pixel(frame.x + 3); x < pixel(frame.right() - 3); ++x) {
            ASSERT_EQ(overPlain.at(x, pixel(frame.y + frame.height / 2)),
                      overBusy.at(x, pixel(frame.y + frame.height / 2)));
        }
    }
}

TEST_F(RendererTest, BadgesAndMessagesStayOnTheTile) {
    for (const Direction direction : {Direction::leftToRight, Direction::rightToLeft}) {
        const TileStyle style{.scale = 2, .direction = direction};
        RenderedTile tile = renderTile(text(""), familySize("medium"), style, renderer);
        const Rect frame = drawBadge(tile, asOfBadge(repeated("נכון לשעה ", 100)), style, renderer);
        EXPECT_GE(frame.x, badgeInset);
        EXPECT_LE(frame.right(), familySize("medium").width - badgeInset);
        EXPECT_GT(frame.width, 300);
    }
    RenderedTile tiny = renderTile(text(""), {12, 12}, {}, renderer);
    for (RenderedTile none; RenderedTile * tile : {&none, &tiny}) {
        EXPECT_EQ(drawBadge(*tile, failureMark(), {}, renderer), Rect());
    }
    const Size small = familySize("small");
    const View message = messageView("Nothing opens this link",
                                     {"Install the application that it belongs to.", "The next attempt is at 10:42."},
                                     MessageButton{"Undo", "x:undo"});
    const auto items = renderTile(message, small, {}, renderer).items;
    ASSERT_EQ(items.size(), 4U);
    EXPECT_GE(items[0].frame.y, contentMargin - 1e-6);
    EXPECT_LE(items[3].frame.bottom(), small.height - contentMargin + 1e-6);
}

TEST(UserDirection, IsThatOfTheFirstLanguage) {
    const std::tuple<const char*, const char*, bool> rows[]{
        {"ar_EG.UTF-8", "", true}, {"de_DE.UTF-8", "fa", true}, {"he_IL", "de", false}, {"", "", false}};
    for (const auto& [lang, language, isRightToLeft] : rows) {
        setenv("LC_ALL", lang, 1);
        setenv("LANGUAGE", language, 1);
        EXPECT_EQ(userDirection() == Direction::rightToLeft, isRightToLeft) << lang << ' ' << language;
    }
    unsetenv("LC_ALL");
    unsetenv("LANGUAGE");
}

} // namespace
} // namespace host

#include "Pictures.h"

#include "Host/Drawing/Handles.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace host {
namespace {

using platform::Color;

using RendererTest = PictureTest;

TEST_F(RendererTest, TilesAreAsLargeAsTheirWidgetWithRoundCorners) {
    for (const char* family : {"small", "medium", "large", "extraLarge"}) {
        for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
            for (const Appearance& appearance : {light, dark}) {
                const Size size = familySize(family);
                const Picture tile = picture(widget({}, size), scale, appearance);
                ASSERT_EQ(tile.width, std::floor(size.width * scale + 0.5));
                ASSERT_EQ(tile.height, std::floor(size.height * scale + 0.5));
                const int right = tile.width - 1;
                const int bottom = tile.height - 1;
                const int middle = tile.width / 2;
                // Where the arc of 20 points crosses the diagonal: 5.86 points in. A pixel and a half to either side.
                const int clear = static_cast<int>(5.86 * scale - 1.5);
                const int filled = static_cast<int>(std::ceil(5.86 * scale + 1.5));
                for (const bool isRight : {false, true}) {
                    for (const bool isBottom : {false, true}) {
                        const auto at = [&](int inset) {
                            return tile.at(isRight ? right - inset : inset, isBottom ? bottom - inset : inset);
                        };
                        EXPECT_EQ(at(0), (Pixel{0, 0, 0, 0}));
                        EXPECT_EQ(at(clear)[3], 0) << family << scale;
                        EXPECT_LE(difference(at(filled), tileOf(appearance)), 2) << family << scale;
                    }
                }
                EXPECT_LE(difference(tile.at(middle, tile.height / 2), tileOf(appearance)), 1);
                // Nothing shows where the pieces of the background meet.
                const int corner = static_cast<int>(std::ceil(20 * scale));
                for (int x = 0; x <= right; ++x) {
                    ASSERT_EQ(tile.at(x, corner + 1), tile.at(x, corner)) << x;
                    ASSERT_NEAR(tile.at(x, corner - 1)[3], tile.at(x, corner)[3], 8) << x;
                }
                // The edge: light 8 % black, dark 12 % white, half a point of it.
                const Pixel ink =
                    appearance.scheme == ColorScheme::light ? Pixel{0, 0, 0, 255} : Pixel{255, 255, 255, 255};
                const double strength =
                    (appearance.scheme == ColorScheme::light ? 0.08 : 0.12) * std::min(1.0, scale / 2);
                const Pixel edge = over(ink, strength, tileOf(appearance));
                for (const Pixel& p : {tile.at(middle, 0), tile.at(middle, bottom), tile.at(0, tile.height / 2),
                                       tile.at(right, tile.height / 2)}) {
                    EXPECT_LE(difference(p, edge), 2) << family << scale;
                }
                EXPECT_LE(difference(tile.at(middle, static_cast<int>(std::ceil(scale / 2))), tileOf(appearance)), 1);
            }
        }
    }
}

TEST_F(RendererTest, WhatSticksOutIsClippedAtTheRoundEdge) {
    const Picture plain = picture(widget({}), 2);
    const Picture covered = picture({.content = CapsuleItem{Color::red}, .frame = {-500, -500, 1200, 1200}}, 2);
    for (int y = 0; y < plain.height; ++y) {
        for (int x = 0; x < plain.width; ++x) {
            const int alpha = plain.at(x, y)[3];
            // Clear stays clear, the tile's inside is covered, its edge keeps its shape.
            ASSERT_EQ(covered.at(x, y)[3] == 0, alpha == 0) << x << ' ' << y;
            if (alpha >= 221) {
                ASSERT_GE(covered.at(x, y)[3], 250) << x << ' ' << y;
            }
        }
    }
    // Just past the round corner though inside the rectangle, and half out at a side.
    for (const Rect& frame : {Rect{1, 1, 6, 6}, {165, 80, 10, 10}, {-5, -5, 20, 20}, {160, 160, 30, 30}}) {
        const Picture dotted = picture(circleAt(frame, Color::red), 2);
        for (const auto& [x, y] : {std::pair{0, 0}, {3, 3}, {339, 339}, {336, 336}}) {
            EXPECT_EQ(dotted.at(x, y)[3], 0);
        }
    }
    // What is drawn after it is not clipped with it.
    const Picture two =
        picture(widget({circleAt({-5, -5, 10, 10}, Color::red), circleAt({80, 80, 10, 10}, Color::blue)}), 2);
    EXPECT_EQ(two.at(170, 170), (Pixel{0, 0x7A, 0xFF, 255}));
}

TEST_F(RendererTest, WhatIsKeptDoesNotChangeWhatIsDrawn) {
    const auto full = [](Renderer& r) {
        return widget({textAt(r, {20, 30}, "Pending Review", platform::callout),
                       textAt(r, {20, 50}, "مرحبا 日本 é", platform::caption2, platform::secondary),
                       symbolAt({20, 80, 12, 12}), circleAt({40, 80, 6, 6}, Color::red),
                       imageAt({60, 80, 18, 18}, plainPicture(30, 30, {9, 99, 200, 255}))});
    };
    std::vector<std::pair<Appearance, double>> ways;
    for (const double scale : {1.0, 2.0}) {
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            for (const DrawingMode mode : {DrawingMode::fullColor, DrawingMode::tinted, DrawingMode::vibrant}) {
                for (const Contrast contrast : {Contrast::normal, Contrast::high}) {
                    ways.emplace_back(Appearance{.scheme = scheme, .mode = mode, .contrast = contrast}, scale);
                }
            }
        }
    }
    for (int round = 0; round < 2; ++round) {
        for (const auto& [appearance, scale] : ways) {
            Renderer fresh;
            EXPECT_EQ(renderer.png(full(renderer), appearance, scale), fresh.png(full(fresh), appearance, scale));
        }
    }
}

TEST_F(RendererTest, DrawsOnAnyCairoAsIntoAFile) {
    const WidgetLayout layout = widget({textAt(renderer, {20, 30}, "Inbox", platform::headline),
                                        symbolAt({20, 80, 12, 12}),
                                        circleAt({40, 80, 6, 6}, Color::red),
                                        {.content = DividerItem{}, .frame = {20, 100, 100, 1}}});
    const Picture file = picture(layout, 2);
    // A window of two pixels a point, the widget 10 points from its corner.
    const SurfaceHandle window(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 400, 400));
    cairo_surface_set_device_scale(window.get(), 2, 2);
    const CairoHandle cairo(cairo_create(window.get()));
    cairo_translate(cairo.get(), 10, 10);
    renderer.draw(cairo.get(), layout, light, 2);
    cairo_surface_flush(window.get());
    const auto* pixels = reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(window.get()));
    for (int y = 0; y < file.height; ++y) {
        for (int x = 0; x < file.width; ++x) {
            const std::uint32_t drawn = pixels[(y + 20) * 400 + x + 20];
            const Pixel& expected = file.at(x, y);
            ASSERT_NEAR(static_cast<int>(drawn >> 24), expected[3], 1) << x << ' ' << y;
            ASSERT_NEAR(static_cast<int>(drawn >> 16 & 0xFF), expected[0] * expected[3] / 255.0, 2) << x << ' ' << y;
        }
    }
    EXPECT_EQ(pixels[0], 0U);
}

TEST_F(RendererTest, RefusesPicturesOfNoOrAbsurdSize) {
    EXPECT_EQ(renderer.png(widget({}), light, 0), "");
    EXPECT_EQ(renderer.png(widget({}), light, -1), "");
    EXPECT_EQ(renderer.png(widget({}), light, std::nan("")), "");
    EXPECT_EQ(renderer.png(widget({}), light, 1e9), "");
    EXPECT_EQ(renderer.png(widget({}, {0, 10}), light, 1), "");
    EXPECT_EQ(picture(widget({circleAt({0, 0, 9, 9}, Color::red)}, {9, 7})).width, 9);
}

} // namespace
} // namespace host

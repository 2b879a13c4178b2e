#include "Host/Drawing/Badges.h"

#include "Host/Layout/Measures.h"
#include "Platform/Views/Shape.h"
#include "Platform/Views/Text.h"

#include <algorithm>
#include <gtest/gtest.h>

#include <vector>

namespace host {
namespace {

constexpr Size medium{364, 170};

class BadgeTest : public testing::Test {
  protected:
    Renderer renderer;

    RenderedTile rendered(const TileStyle& style, const platform::View& view = platform::text("")) {
        return renderTile(view, medium, style, renderer);
    }
};

/// The styles that badges are drawn in.
std::vector<TileStyle> styles() {
    return {{.scale = 1},
            {.appearance = {.scheme = ColorScheme::dark}, .scale = 1.25},
            {.appearance = {.contrast = Contrast::high}, .scale = 2},
            {.appearance = {.redaction = Redaction::placeholder}, .scale = 2}};
}

TEST_F(BadgeTest, LetsNothingShineThrough) {
    for (const TileStyle& style : styles()) {
        for (const platform::View& badge : {asOfBadge("as of 10:42"), failedAsOfBadge("as of 10:42"), failureMark()}) {
            RenderedTile plain = rendered(style);
            RenderedTile busy =
                rendered(style, platform::circle(platform::Color::red).frame({.width = 2000, .height = 2000}));
            const Rect frame = drawBadge(plain, badge, Corner::bottomTrailing, style, renderer);
            EXPECT_EQ(drawBadge(busy, badge, Corner::bottomTrailing, style, renderer), frame);
            const std::span plainPixels = plain.picture.pixels();
            const std::span busyPixels = busy.picture.pixels();
            ASSERT_FALSE(std::equal(plainPixels.begin(), plainPixels.end(), busyPixels.begin(), busyPixels.end()));
            // A capsule's middle, its round ends left aside.
            const auto pixel = [&](double points) { return static_cast<std::size_t>(points * style.scale); };
            const double end = frame.height * 0.3;
            for (std::size_t y = pixel(frame.y + end); y < pixel(frame.bottom() - end); ++y) {
                for (std::size_t x = pixel(frame.x + end); x < pixel(frame.right() - end); ++x) {
                    const std::size_t at = y * static_cast<std::size_t>(plain.picture.width) + x;
                    ASSERT_EQ(plainPixels[at], busyPixels[at]);
                    ASSERT_EQ(plainPixels[at] >> 24, 0xFFU);
                }
            }
        }
    }
}

TEST_F(BadgeTest, StaysOnTheTileHoweverLongItIs) {
    for (const char* script : {"as of ", "נכון לשעה "}) {
        std::string words;
        for (int i = 0; i < 100; ++i) {
            words += script;
        }
        for (const Direction direction : {Direction::leftToRight, Direction::rightToLeft}) {
            const TileStyle style{.scale = 2, .direction = direction};
            RenderedTile one = rendered(style);
            const Rect frame = drawBadge(one, asOfBadge(words), Corner::bottomTrailing, style, renderer);
            EXPECT_GE(frame.x, badgeInset);
            EXPECT_LE(frame.right(), medium.width - badgeInset);
            EXPECT_GT(frame.width, 300);
        }
    }
    RenderedTile none;
    EXPECT_EQ(drawBadge(none, failureMark(), Corner::topTrailing, {}, renderer), Rect());
    RenderedTile tiny = renderTile(platform::text(""), {12, 12}, {}, renderer);
    EXPECT_EQ(drawBadge(tiny, failureMark(), Corner::topTrailing, {}, renderer), Rect());
}

TEST_F(BadgeTest, MessagesFitTheSmallestTile) {
    const platform::View message = messageView(
        "Nothing opens this link", {"Install the application that it belongs to.", "The next attempt is at 10:42."},
        MessageButton{"Undo", "x:undo"});
    const Size small = familySize("small");
    const RenderedTile tile = renderTile(message, small, {}, renderer);
    ASSERT_EQ(tile.items.size(), 4U);
    EXPECT_EQ(tile.items[3].url, "x:undo");
    EXPECT_GE(tile.items[0].frame.y, contentMargin - 1e-6);
    EXPECT_LE(tile.items[3].frame.bottom(), small.height - contentMargin + 1e-6);
}

} // namespace
} // namespace host

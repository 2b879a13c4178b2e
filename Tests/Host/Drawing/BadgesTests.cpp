#include "Host/Drawing/Badges.h"

#include "Host/Layout/Measures.h"
#include "Platform/Views/Shape.h"
#include "Platform/Views/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

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
    std::vector<TileStyle> all;
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        for (const Contrast contrast : {Contrast::normal, Contrast::high}) {
            for (const Redaction redaction : {Redaction::none, Redaction::placeholder}) {
                for (const double scale : {1.0, 1.25, 2.0}) {
                    all.push_back({.appearance = {.scheme = scheme, .redaction = redaction, .contrast = contrast},
                                   .scale = scale});
                }
            }
        }
    }
    return all;
}

TEST_F(BadgeTest, ChangesItsOwnPixelsAndNoOthers) {
    for (TileStyle style : styles()) {
        for (const Direction direction : {Direction::leftToRight, Direction::rightToLeft}) {
            for (const Corner corner : {Corner::bottomTrailing, Corner::topTrailing}) {
                style.direction = direction;
                const RenderedTile before = rendered(style);
                RenderedTile after = before;
                const Rect frame = drawBadge(after, asOfBadge("as of 10:42"), corner, style, renderer);
                // From the edge on the trailing side, and from the upper or the lower one.
                const double fromSide = direction == Direction::leftToRight ? medium.width - frame.right() : frame.x;
                const double fromEdge = corner == Corner::topTrailing ? frame.y : medium.height - frame.bottom();
                EXPECT_NEAR(fromSide, badgeInset, 1 / style.scale);
                EXPECT_NEAR(fromEdge, badgeInset, 1 / style.scale);
                EXPECT_GT(frame.width, 50);
                EXPECT_NEAR(frame.height, 17, 0.5);

                int changed = 0;
                for (int y = 0; y < after.height; ++y) {
                    for (int x = 0; x < after.width; ++x) {
                        const auto at = static_cast<std::size_t>(y) * static_cast<std::size_t>(after.width) +
                                        static_cast<std::size_t>(x);
                        const Point middle{(x + 0.5) / style.scale, (y + 0.5) / style.scale};
                        const bool isInside = middle.x > frame.x && middle.x < frame.right() && middle.y > frame.y &&
                                              middle.y < frame.bottom();
                        if (after.pixels[at] != before.pixels[at]) {
                            ASSERT_TRUE(isInside) << x << ' ' << y;
                            ++changed;
                        }
                    }
                }
                // In high contrast the ground is like the tile.
                EXPECT_GT(changed, 0.2 * frame.width * frame.height * style.scale * style.scale);
            }
        }
    }
}

TEST_F(BadgeTest, LetsNothingShineThrough) {
    for (const TileStyle& style : styles()) {
        for (const platform::View& badge : {asOfBadge("as of 10:42"), failedAsOfBadge("as of 10:42"), failureMark()}) {
            RenderedTile plain = rendered(style);
            RenderedTile busy =
                rendered(style, platform::circle(platform::Color::red).frame({.width = 2000, .height = 2000}));
            const Rect frame = drawBadge(plain, badge, Corner::bottomTrailing, style, renderer);
            EXPECT_EQ(drawBadge(busy, badge, Corner::bottomTrailing, style, renderer), frame);
            ASSERT_NE(plain.pixels, busy.pixels);
            // A capsule's middle, its round ends left aside.
            const auto pixel = [&](double points) { return static_cast<std::size_t>(points * style.scale); };
            const double end = frame.height * 0.3;
            for (std::size_t y = pixel(frame.y + end); y < pixel(frame.bottom() - end); ++y) {
                for (std::size_t x = pixel(frame.x + end); x < pixel(frame.right() - end); ++x) {
                    const std::size_t at = y * static_cast<std::size_t>(plain.width) + x;
                    ASSERT_EQ(plain.pixels[at], busy.pixels[at]);
                    ASSERT_EQ(plain.pixels[at] >> 24, 0xFFU);
                }
            }
        }
    }
}

TEST_F(BadgeTest, SaysWhatItSaysOnPlaceholdersToo) {
    const TileStyle redacted{.appearance = {.redaction = Redaction::placeholder}, .scale = 2};
    std::set<std::vector<std::uint32_t>> pictures;
    for (const char* text : {"as of 10:00", "as of 00:10"}) {
        RenderedTile one = rendered(redacted);
        drawBadge(one, asOfBadge(text), Corner::bottomTrailing, redacted, renderer);
        pictures.insert(one.pixels);
    }
    EXPECT_EQ(pictures.size(), 2U);
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
    for (const char* family : {"small", "medium", "large"}) {
        const Size size = familySize(family);
        const RenderedTile made = renderTile(message, size, {}, renderer);
        ASSERT_EQ(made.items.size(), 4U);
        EXPECT_EQ(made.items[0].role, AccessibleItem::Role::heading);
        EXPECT_EQ(made.items[1].name, "Install the application that it belongs to.");
        EXPECT_EQ(made.items[2].name, "The next attempt is at 10:42.");
        EXPECT_GE(made.items[2].frame.y, made.items[1].frame.bottom());
        EXPECT_EQ(made.items[3].url, "x:undo");
        EXPECT_EQ(made.items[3].name, "Undo");
        for (const AccessibleItem& part : made.items) {
            EXPECT_GE(part.frame.x, contentMargin - 1e-6);
            EXPECT_GE(part.frame.y, contentMargin - 1e-6);
            EXPECT_LE(part.frame.bottom(), size.height - contentMargin + 1e-6);
        }
    }
    EXPECT_EQ(renderTile(messageView("Removed", {}), medium, {}, renderer).items.size(), 1U);
}

} // namespace
} // namespace host

#include "Host/Drawing/RenderedTile.h"

#include "Host/Drawing/PngEncoder.h"
#include "Host/Layout/Measures.h"
#include "Platform/Views/Shape.h"
#include "Platform/Views/Spacer.h"
#include "Platform/Views/Stack.h"
#include "Platform/Views/Symbol.h"
#include "Platform/Views/Text.h"

#include <gtest/gtest.h>

namespace host {
namespace {

using namespace platform; // NOLINT(google-build-using-namespace): views read like the pictures they draw

/// A red dot before, and a text after.
View row() {
    return hStack({}, {circle(Color::red).frame({.width = 20, .height = 20}), spacer(), text("Inbox")}).link("x:inbox");
}

constexpr std::uint32_t red = 0xFFFF3B30;

TEST(RenderedTile, MakesThePictureThatTheRendererEncodes) {
    Renderer renderer;
    const TileStyle style{.appearance = {.scheme = ColorScheme::dark}, .scale = 1.5};
    const RenderedTile rendered = renderTile(row(), familySize("medium"), style, renderer);
    const auto layout = layOut(row(), familySize("medium"), renderer.texts(), renderer.images());
    EXPECT_EQ(PngEncoder().encode({rendered.pixels.data(), static_cast<std::uint32_t>(rendered.width),
                                   static_cast<std::uint32_t>(rendered.height)}),
              renderer.png(layout, style.appearance, style.scale));
    EXPECT_EQ(rendered.width, 546);
    EXPECT_EQ(rendered.items, accessibleItems(layout));
    EXPECT_EQ(rendered.appearance, style.appearance);
    EXPECT_EQ(rendered.scale, 1.5);
}

TEST(RenderedTile, TurnsPictureAndPartsAbout) {
    Renderer renderer;
    const auto made = [&](Direction direction) {
        return renderTile(row(), {170, 50}, {.direction = direction}, renderer);
    };
    const RenderedTile left = made(Direction::leftToRight);
    const RenderedTile right = made(Direction::rightToLeft);
    const auto at = [](const RenderedTile& rendered, int x) {
        return rendered.pixels[static_cast<std::size_t>(25 * 170 + x)];
    };
    EXPECT_EQ(at(left, 22), red);
    EXPECT_NE(at(left, 148), red);
    EXPECT_EQ(at(right, 147), red);
    EXPECT_NE(at(right, 22), red);
    ASSERT_EQ(right.items.size(), 1U);
    EXPECT_EQ(right.items[0].name, "Inbox");
    EXPECT_EQ(right.items[0].frame, left.items[0].frame);
}

TEST(RenderedTile, SaysNothingOfPlaceholders) {
    Renderer renderer;
    const RenderedTile rendered =
        renderTile(row(), {170, 50}, {.appearance = {.redaction = Redaction::placeholder}}, renderer);
    EXPECT_EQ(rendered.width, 170);
    EXPECT_TRUE(rendered.items.empty());
}

TEST(RenderedTile, HasNoPixelsWhereThereCanBeNone) {
    Renderer renderer;
    for (const double scale : {0.0, -1.0, 1e9}) {
        const RenderedTile rendered = renderTile(row(), {170, 50}, {.scale = scale}, renderer);
        EXPECT_TRUE(rendered.pixels.empty());
        EXPECT_EQ(rendered.width, 0);
        EXPECT_EQ(rendered.height, 0);
    }
}

} // namespace
} // namespace host

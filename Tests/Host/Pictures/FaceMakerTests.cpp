#include "Host/Pictures/FaceMaker.h"

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

TEST(FaceMaker, MakesThePictureThatTheRendererEncodes) {
    Renderer renderer;
    const FaceStyle style{.appearance = {.scheme = ColorScheme::dark}, .scale = 1.5};
    const Face face = makeFace(row(), familySize("medium"), style, renderer);
    const auto layout = layOut(row(), familySize("medium"), renderer.texts(), renderer.images());
    EXPECT_EQ(PngEncoder().encode({face.pixels.data(), static_cast<std::uint32_t>(face.width),
                                   static_cast<std::uint32_t>(face.height)}),
              renderer.png(layout, style.appearance, style.scale));
    EXPECT_EQ(face.width, 546);
    EXPECT_EQ(face.parts, partsOf(layout));
    EXPECT_EQ(face.appearance, style.appearance);
    EXPECT_EQ(face.scale, 1.5);
}

TEST(FaceMaker, TurnsPictureAndPartsAbout) {
    Renderer renderer;
    const auto made = [&](Direction direction) {
        return makeFace(row(), {170, 50}, {.direction = direction}, renderer);
    };
    const Face left = made(Direction::leftToRight);
    const Face right = made(Direction::rightToLeft);
    const auto at = [](const Face& face, int x) { return face.pixels[static_cast<std::size_t>(25 * 170 + x)]; };
    EXPECT_EQ(at(left, 22), red);
    EXPECT_NE(at(left, 148), red);
    EXPECT_EQ(at(right, 147), red);
    EXPECT_NE(at(right, 22), red);
    ASSERT_EQ(right.parts.size(), 1U);
    EXPECT_EQ(right.parts[0].name, "Inbox");
    EXPECT_EQ(right.parts[0].frame, left.parts[0].frame);
}

TEST(FaceMaker, SaysNothingOfPlaceholders) {
    Renderer renderer;
    const Face face = makeFace(row(), {170, 50}, {.appearance = {.redaction = Redaction::placeholder}}, renderer);
    EXPECT_EQ(face.width, 170);
    EXPECT_TRUE(face.parts.empty());
}

TEST(FaceMaker, HasNoPixelsWhereThereCanBeNone) {
    Renderer renderer;
    for (const double scale : {0.0, -1.0, 1e9}) {
        const Face face = makeFace(row(), {170, 50}, {.scale = scale}, renderer);
        EXPECT_TRUE(face.pixels.empty());
        EXPECT_EQ(face.width, 0);
        EXPECT_EQ(face.height, 0);
    }
}

} // namespace
} // namespace host

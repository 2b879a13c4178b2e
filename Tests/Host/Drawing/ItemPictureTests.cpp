#include "Pictures.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace host {
namespace {

using platform::Color;

using ItemPictureTest = PictureTest;

TEST_F(ItemPictureTest, DividersAreWholePixelsWhereverTheyStand) {
    struct Case {
        double scale;
        int thickness;
    };
    for (const Case& c : {Case{1, 1}, {1.25, 1}, {1.5, 1}, {2, 2}, {3, 3}}) {
        for (const double y : {50.0, 50.3, 50.5, 50.9}) {
            for (const Appearance& appearance : {light, dark}) {
                const Picture across =
                    picture({.content = DividerItem{}, .frame = {30, y, 100, 1}}, c.scale, appearance);
                const Picture down = picture({.content = DividerItem{}, .frame = {y, 30, 1, 100}}, c.scale, appearance);
                const Box box = inkOf(across, appearance);
                EXPECT_EQ(box.height(), c.thickness) << c.scale << " at " << y;
                EXPECT_EQ(box.left, std::floor(30 * c.scale + 0.5));
                EXPECT_EQ(box.right, std::floor(130 * c.scale + 0.5));
                EXPECT_EQ(box.top, std::floor(y * c.scale + 0.5));
                const Box standing = inkOf(down, appearance);
                EXPECT_EQ(standing.width(), c.thickness);
                EXPECT_EQ(standing.height(), box.width());

                const Pixel ink =
                    appearance.scheme == ColorScheme::light ? Pixel{0, 0, 0, 255} : Pixel{255, 255, 255, 255};
                for (int i = box.top; i < box.bottom; ++i) {
                    EXPECT_LE(difference(across.at((box.left + box.right) / 2, i), over(ink, 0.1, tileOf(appearance))),
                              1);
                }
            }
        }
    }
}

TEST_F(ItemPictureTest, CirclesAndCapsulesHaveTheirColourAndSize) {
    struct Case {
        Color color;
        Pixel light;
        Pixel dark;
    };
    const std::vector<Case> cases{
        {Color::red, {0xFF, 0x3B, 0x30, 255}, {0xFF, 0x45, 0x3A, 255}},
        {Color::orange, {0xFF, 0x95, 0x00, 255}, {0xFF, 0x9F, 0x0A, 255}},
        {Color::yellow, {0xFF, 0xCC, 0x00, 255}, {0xFF, 0xD6, 0x0A, 255}},
        {Color::green, {0x28, 0xCD, 0x41, 255}, {0x32, 0xD7, 0x4B, 255}},
        {Color::blue, {0x00, 0x7A, 0xFF, 255}, {0x0A, 0x84, 0xFF, 255}},
        {Color::purple, {0xAF, 0x52, 0xDE, 255}, {0xBF, 0x5A, 0xF2, 255}},
        {Color::gray, {0x8E, 0x8E, 0x93, 255}, {0x98, 0x98, 0x9D, 255}},
        {Color::white, {255, 255, 255, 255}, {255, 255, 255, 255}},
    };
    for (const Case& c : cases) {
        for (const Appearance& appearance : {light, dark}) {
            const Pixel expected = appearance.scheme == ColorScheme::light ? c.light : c.dark;
            for (const double x : {40.0, 40.2, 40.7}) {
                const Picture circle = picture(circleAt({x, 60.4, 6, 6}, c.color), 2, appearance);
                EXPECT_EQ(circle.at(static_cast<int>(std::lround(x * 2)) + 6, 127), expected);
                // As wide as high wherever it stands.
                const Box box = inkOf(circle, appearance);
                EXPECT_EQ(box.width(), 12) << static_cast<int>(c.color) << " at " << x;
                EXPECT_EQ(box.height(), 12);
            }
            const Picture capsule =
                picture({.content = CapsuleItem{c.color}, .frame = {40, 60, 24, 16}}, 2, appearance);
            EXPECT_EQ(inkOf(capsule, appearance), (Box{80, 120, 128, 152}));
            // Straight above and below, round at the ends.
            EXPECT_EQ(capsule.at(104, 120), expected);
            EXPECT_EQ(capsule.at(104, 151), expected);
            EXPECT_LE(difference(capsule.at(82, 122), tileOf(appearance)), 3);
        }
    }
    EXPECT_EQ(picture(circleAt({40, 60, 6, 6}, Color::clear)), picture(widget({})));
}

TEST_F(ItemPictureTest, TextsAreAsWideAsMeasuredAtEveryScale) {
    for (const char* text : {"Hamburgefonstiv", "HHHHHHHHHHHHH", "illiillii"}) {
        const LayoutItem item = textAt(renderer, {20, 40}, text, platform::callout);
        for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
            const Box ink = inkOf(picture(item, scale));
            // A letter's own margins are no ink.
            EXPECT_NEAR(ink.width() / scale, item.frame.width, 2.2) << text << " at " << scale;
            EXPECT_NEAR(ink.left / scale, 20.6, 1.2) << text;
        }
    }
}

TEST_F(ItemPictureTest, BaselinesStandOnWholePixels) {
    const auto at = [&](double y, double scale) {
        return picture(textAt(renderer, {20, y}, "Baseline", platform::callout), scale);
    };
    for (const double scale : {1.0, 1.5, 2.0}) {
        const LayoutItem item = textAt(renderer, {20, 40}, "Baseline", platform::callout);
        const double baseline = std::get<TextItem>(item.content).text.baseline;
        const Box last = inkOf(at(40, scale));
        for (int tenths = 401; tenths < 420; ++tenths) {
            const double y = tenths / 10.0;
            // The picture is the same one or a pixel further down, never a blur between the two.
            const Picture moved = at(y, scale);
            const Box ink = inkOf(moved);
            EXPECT_EQ(ink.height(), last.height());
            EXPECT_EQ(ink.bottom - std::floor((y + baseline) * scale + 0.5),
                      last.bottom - std::floor((40 + baseline) * scale + 0.5));
        }
    }
}

TEST_F(ItemPictureTest, LinesStandBelowEachOtherAndAligned) {
    for (const auto alignment : {platform::HorizontalAlignment::leading, platform::HorizontalAlignment::center,
                                 platform::HorizontalAlignment::trailing}) {
        MeasuredText text = renderer.texts().measure({"HHHHHHHHHH HHH", platform::callout, 110, {}});
        ASSERT_EQ(text.lines.size(), 2U);
        const double width = text.lines[0].width;
        const double spare = width - text.lines[1].width;
        LayoutItem item{
            .content = TextItem{text, 15, alignment}, .frame = {20, 40, width, 30}, .font = platform::callout};
        const Picture both = picture(item, 2);
        std::get<TextItem>(item.content).text.lines[0] = {"", 0};
        const Picture second = picture(item, 2);
        const double expected = alignment == platform::HorizontalAlignment::leading  ? 0
                                : alignment == platform::HorizontalAlignment::center ? spare / 2
                                                                                     : spare;
        EXPECT_NEAR(inkOf(second).left - inkOf(both).left, expected * 2, 1);
        EXPECT_EQ(inkOf(second).top - inkOf(both).top, 30);
        EXPECT_EQ(inkOf(second).bottom, inkOf(both).bottom);
    }
}

TEST_F(ItemPictureTest, ImagesKeepTheirRatioInTheMiddleOfTheirFrame) {
    const Pixel green{0, 200, 0, 255};
    for (const double scale : {1.0, 2.0}) {
        const auto isGreen = [&](const Pixel& p) { return p == green; };
        const Box wide = boxOf(picture(imageAt({40, 40, 40, 40}, plainPicture(64, 32, green)), scale), isGreen);
        EXPECT_EQ(wide, (Box{static_cast<int>(40 * scale), static_cast<int>(50 * scale), static_cast<int>(80 * scale),
                             static_cast<int>(70 * scale)}));
        const Box high = boxOf(picture(imageAt({40, 40, 40, 40}, plainPicture(5, 10, green)), scale), isGreen);
        EXPECT_EQ(high, (Box{static_cast<int>(50 * scale), static_cast<int>(40 * scale), static_cast<int>(70 * scale),
                             static_cast<int>(80 * scale)}));
    }
    LayoutItem broken = imageAt({40, 40, 40, 40}, plainPicture(1, 1, green));
    std::get<ImageItem>(broken.content).data = {platform::Data::owning("no image"),
                                                platform::EncodedData::Encoding::raw};
    EXPECT_EQ(picture(broken), picture(widget({})));
}

} // namespace
} // namespace host

#include "Host/Drawing/Renderer.h"

#include "Pictures.h"

#include <gtest/gtest.h>
#include <regex>
#include <string>

namespace host {
namespace {

using platform::Color;

WidgetLayout sample(Renderer& renderer) {
    LayoutItem image{.content =
                         ImageItem{{platform::Data::owning(imageFile(plainPicture(8, 8, {1, 99, 2, 255}), "png")),
                                    platform::EncodedData::Encoding::raw}},
                     .frame = {100, 60, 24, 24}};
    return widget({textAt(renderer, {20, 30}, "Pending Review", platform::headline),
                   {.content = SymbolItem{"globe"}, .frame = {20, 60, 24, 24}, .foreground = platform::secondary},
                   {.content = CircleItem{Color::red}, .frame = {60, 60, 24, 24}},
                   {.content = DividerItem{}, .frame = {20, 100, 130, 1}},
                   {.content = CircleItem{Color::blue}, .frame = {-10, -10, 40, 40}},
                   std::move(image)});
}

/// Without the numbers that cairo gives to images, which count those of the process.
std::string unnumbered(const std::string& svg) {
    return std::regex_replace(svg, std::regex("source-[0-9]+"), "source");
}

TEST(VectorFiles, EqualPicturesAreEqualFiles) {
    Renderer renderer;
    Renderer other;
    const WidgetLayout layout = sample(renderer);
    const std::string svg = renderer.svg(layout, {});
    const std::string pdf = renderer.pdf(layout, {});
    EXPECT_EQ(renderer.svg(layout, {}), svg);
    EXPECT_EQ(unnumbered(other.svg(layout, {})), unnumbered(svg));
    EXPECT_EQ(renderer.pdf(layout, {}), pdf);
    EXPECT_EQ(other.pdf(layout, {}), pdf);
    EXPECT_NE(renderer.svg(layout, {.scheme = ColorScheme::dark}), svg);

    EXPECT_NE(svg.find(R"(viewBox="0 0 170 170")"), std::string::npos);
    EXPECT_TRUE(pdf.starts_with("%PDF-"));
}

TEST(VectorFiles, ShowWhatThePixelsShow) {
    Renderer renderer;
    const WidgetLayout layout = sample(renderer);
    const Picture vector = decoded(renderer.svg(layout, {}));
    if (vector.pixels.empty()) {
        GTEST_SKIP() << "this machine has no loader for SVG";
    }
    const Picture pixels = decoded(renderer.png(layout, {}, 1));
    ASSERT_EQ(vector.width, pixels.width);
    ASSERT_EQ(vector.height, pixels.height);
    double sum = 0;
    for (std::size_t i = 0; i < pixels.pixels.size(); ++i) {
        sum += difference(vector.pixels[i], pixels.pixels[i]);
    }
    EXPECT_LT(sum / static_cast<double>(pixels.pixels.size()), 2.0);
    EXPECT_LE(difference(vector.at(72, 72), {0xFF, 0x3B, 0x30, 255}), 2);
    EXPECT_LE(difference(vector.at(112, 72), {1, 99, 2, 255}), 2);
    EXPECT_EQ(vector.at(1, 1)[3], 0);
}

} // namespace
} // namespace host

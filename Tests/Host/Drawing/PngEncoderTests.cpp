#include "Host/Drawing/PngEncoder.h"

#include "Pictures.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace host {
namespace {

std::uint32_t premultiplied(std::uint32_t alpha, std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    return alpha << 24 | red << 16 | green << 8 | blue;
}

/// What a pixel must read as: every component divided by its alpha, rounded to the nearest.
Pixel expected(std::uint32_t pixel) {
    const int alpha = static_cast<int>(pixel >> 24);
    if (alpha == 0) {
        return {0, 0, 0, 0};
    }
    const auto component = [&](int shift) {
        return (static_cast<int>(pixel >> shift & 0xFF) * 255 + alpha / 2) / alpha;
    };
    return {component(16), component(8), component(0), alpha};
}

void expectRoundTrip(PngEncoder& encoder, const std::vector<std::uint32_t>& pixels, std::uint32_t width,
                     std::uint32_t height) {
    const Picture picture = decoded(encoder.encode({pixels.data(), width, height}));
    ASSERT_EQ(picture.width, static_cast<int>(width));
    ASSERT_EQ(picture.height, static_cast<int>(height));
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        ASSERT_EQ(picture.pixels[i], expected(pixels[i])) << "pixel " << i << " of " << width << " by " << height;
    }
}

TEST(PngEncoder, KeepsEveryComponentOfEveryAlpha) {
    std::vector<std::uint32_t> pixels;
    for (std::uint32_t alpha = 0; alpha < 256; ++alpha) {
        for (std::uint32_t component = 0; component < 256; ++component) {
            const std::uint32_t c = std::min(component, alpha);
            pixels.push_back(premultiplied(alpha, c, alpha - c, c / 2));
        }
    }
    PngEncoder encoder;
    expectRoundTrip(encoder, pixels, 256, 256);
}

TEST(PngEncoder, TakesAnySizeAndAnyContent) {
    struct Size {
        std::uint32_t width;
        std::uint32_t height;
    };
    std::mt19937 random(7);
    PngEncoder encoder;
    // Noise does not compress; the great one fills many blocks. Smaller ones after it must not see its leftovers.
    for (const Size size : {Size{1, 1}, {1, 7}, {3, 1}, {900, 700}, {255, 3}, {257, 129}, {20'000, 3}}) {
        for (const bool isNoise : {true, false}) {
            std::vector<std::uint32_t> pixels(std::size_t{size.width} * size.height);
            for (auto& pixel : pixels) {
                const std::uint32_t alpha = isNoise ? random() & 0xFF : random() % 50 == 0 ? 255 : 221;
                const std::uint32_t level = isNoise ? static_cast<std::uint32_t>(random()) : 0x30303030;
                pixel = premultiplied(alpha, (level & 0xFF) * alpha / 255, (level >> 8 & 0xFF) * alpha / 255,
                                      (level >> 16 & 0xFF) * alpha / 255);
            }
            expectRoundTrip(encoder, pixels, size.width, size.height);
        }
    }
}

TEST(PngEncoder, HasNothingToSayOfNothing) {
    EXPECT_EQ(PngEncoder().encode({nullptr, 0, 5}), "");
    EXPECT_EQ(PngEncoder().encode({nullptr, 5, 0}), "");
}

} // namespace
} // namespace host

#include "Host/Drawing/IconCache.h"
#include "Host/Drawing/ImageDecoder.h"

#include "Pictures.h"

#include <gtest/gtest.h>
#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <string>
#include <vector>

namespace host {
namespace {

using platform::Data;
using platform::EncodedData;

EncodedData raw(std::string bytes) {
    return {Data::owning(std::move(bytes)), EncodedData::Encoding::raw};
}

void appendChunk(std::string& file, const std::string& content) {
    const auto number = [&](std::size_t value) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            file += static_cast<char>(value >> shift & 0xFF);
        }
    };
    number(content.size() - 4);
    file += content;
    number(crc32_gzip_refl(0, reinterpret_cast<const unsigned char*>(content.data()), content.size()));
}

/// A whole PNG of one bit a pixel, all black: tiny, however large the picture is.
std::string blackPng(std::uint32_t width, std::uint32_t height) {
    std::string rows((std::size_t{width} + 7) / 8 * height + height, '\0');
    std::string compressed(rows.size() / 64 + 4096, '\0');
    isal_zstream stream;
    isal_deflate_stateless_init(&stream);
    stream.gzip_flag = IGZIP_ZLIB;
    stream.end_of_stream = 1;
    stream.next_in = reinterpret_cast<std::uint8_t*>(rows.data());
    stream.avail_in = static_cast<std::uint32_t>(rows.size());
    stream.next_out = reinterpret_cast<std::uint8_t*>(compressed.data());
    stream.avail_out = static_cast<std::uint32_t>(compressed.size());
    EXPECT_EQ(isal_deflate_stateless(&stream), COMP_OK);
    compressed.resize(stream.total_out);

    std::string header = "IHDR";
    for (const std::uint32_t side : {width, height}) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            header += static_cast<char>(side >> shift & 0xFF);
        }
    }
    std::string file = "\x89PNG\r\n\x1A\n";
    appendChunk(file, header + std::string("\1\0\0\0\0", 5));
    appendChunk(file, "IDAT" + compressed);
    appendChunk(file, "IEND");
    return file;
}

/// Four colours, one in each quarter.
Picture quarters(int width, int height) {
    Picture picture = plainPicture(width, height, {});
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            picture
                .pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)] =
                y < height / 2 ? (x < width / 2 ? Pixel{255, 0, 0, 255} : Pixel{0, 255, 0, 255})
                               : (x < width / 2 ? Pixel{0, 0, 255, 255} : Pixel{255, 255, 255, 128});
        }
    }
    return picture;
}

/// Premultiplied, as cairo has it.
std::uint32_t pixelAt(cairo_surface_t* surface, int x, int y) {
    cairo_surface_flush(surface);
    const unsigned char* row =
        cairo_image_surface_get_data(surface) + std::ptrdiff_t{y} * cairo_image_surface_get_stride(surface);
    return reinterpret_cast<const std::uint32_t*>(row)[x];
}

TEST(ImageDecoder, ReadsTheUsualFormats) {
    for (const char* type : {"png", "jpeg", "bmp", "tiff", "ico"}) {
        const std::string file = imageFile(quarters(48, 32), type);
        ASSERT_FALSE(file.empty()) << type;
        const auto image = decodeImage(file, 256);
        ASSERT_TRUE(image) << type;
        EXPECT_EQ(image->size, (Size{48, 32})) << type;
    }
}

TEST(ImageDecoder, IsNotTakenInByWhatIsNoImage) {
    const std::string png = imageFile(quarters(64, 64), "png");
    const std::string jpeg = imageFile(quarters(64, 64), "jpeg");
    std::string damaged = png;
    damaged[png.size() / 2] = static_cast<char>(damaged[png.size() / 2] ^ 0x55);
    const std::vector<std::string> files{
        "",
        "no image",
        "\x89PNG\r\n\x1A\n",
        png.substr(0, 30),
        png.substr(0, png.size() / 2),
        damaged,
        jpeg.substr(0, 20),
        "GIF89a",
        std::string("GIF89a\xFF\xFF\xFF\xFF\0\0\0", 13),
        "BM",
        std::string("II*\0\xFF\xFF\xFF\xFF", 8),
        R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"><rect width="9" height="9"/></svg>)",
        "/* XPM */\nstatic char* x[] = {\"1 1 1 1\", \"a c #fff\", \"a\"};\n",
        png + std::string(greatestImageBytes, '\0'),
    };
    for (const std::string& file : files) {
        EXPECT_FALSE(decodeImage(file, 256)) << testing::PrintToString(file.substr(0, 40));
    }
}

TEST(ImageDecoder, RefusesMorePixelsThanAnIconCanNeed) {
    EXPECT_TRUE(decodeImage(blackPng(4096, 4096), 64));
    EXPECT_FALSE(decodeImage(blackPng(4096, 4097), 64));
    EXPECT_FALSE(decodeImage(blackPng(65'535, 4096), 64));
    EXPECT_TRUE(decodeImage(blackPng(65'535, 2), 64));
}

TEST(ImageDecoder, KeepsNoMoreThanIsAskedFor) {
    struct Case {
        int width;
        int height;
        int longestSide;
        int keptWidth;
        int keptHeight;
    };
    for (const Case& c :
         {Case{400, 200, 100, 100, 50}, {200, 400, 100, 50, 100}, {60, 40, 100, 60, 40}, {1000, 1, 100, 100, 1}}) {
        const auto image = decodeImage(imageFile(quarters(c.width, c.height), "png"), c.longestSide);
        ASSERT_TRUE(image);
        EXPECT_EQ(image->size, (Size{static_cast<double>(c.width), static_cast<double>(c.height)}));
        EXPECT_EQ(gdk_pixbuf_get_width(image->pixels.get()), c.keptWidth);
        EXPECT_EQ(gdk_pixbuf_get_height(image->pixels.get()), c.keptHeight);
    }
}

TEST(ImageDecoder, TurnsPicturesUpright) {
    // An orientation of 6 in the smallest Exif block: the camera was held upright, the first row is the right side.
    std::string jpeg = imageFile(quarters(48, 32), "jpeg");
    const std::string exif("\xFF\xE1\x00\x22"
                           "Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0\x06\0\0\0\0\0\0\0",
                           36);
    jpeg.insert(2, exif);
    for (const int longestSide : {256, 16}) {
        const auto image = decodeImage(jpeg, longestSide);
        ASSERT_TRUE(image);
        EXPECT_EQ(image->size, (Size{32, 48}));
        EXPECT_LT(gdk_pixbuf_get_width(image->pixels.get()), gdk_pixbuf_get_height(image->pixels.get()));
    }
}

TEST(IconCache, ScalesToWhatIsAskedForAndKeepsIt) {
    IconCache icons;
    const EncodedData data = raw(imageFile(quarters(400, 400), "png"));
    EXPECT_EQ(icons.imageSize(data), (Size{400, 400}));
    for (const int side : {36, 18, 301}) {
        const IconRequest request{.width = side, .height = side};
        cairo_surface_t* picture = icons.picture(data, request);
        ASSERT_NE(picture, nullptr);
        EXPECT_EQ(cairo_image_surface_get_width(picture), side);
        EXPECT_EQ(cairo_image_surface_get_height(picture), side);
        EXPECT_EQ(pixelAt(picture, 3, 3), 0xFFFF0000U);
        EXPECT_EQ(pixelAt(picture, side - 4, 3), 0xFF00FF00U);
        EXPECT_EQ(pixelAt(picture, 3, side - 4), 0xFF0000FFU);
        EXPECT_EQ(pixelAt(picture, side - 4, side - 4), 0x80808080U);
        EXPECT_EQ(icons.picture(raw(imageFile(quarters(400, 400), "png")), request), picture);
    }
}

TEST(IconCache, RoundsCornersAndTakesColoursAway) {
    IconCache icons;
    const EncodedData data = raw(imageFile(plainPicture(20, 20, {255, 0, 0, 255}), "png"));
    cairo_surface_t* rounded = icons.picture(data, {.width = 20, .height = 20, .cornerRadius = 5});
    EXPECT_EQ(pixelAt(rounded, 0, 0) >> 24, 0U);
    EXPECT_EQ(pixelAt(rounded, 10, 0), 0xFFFF0000U);
    // Pure red has 21.26 % of white's luminance: 127 of 255 in sRGB.
    cairo_surface_t* gray = icons.picture(data, {.width = 20, .height = 20, .tone = Tone::gray});
    EXPECT_EQ(pixelAt(gray, 10, 10), 0xFF7F7F7FU);
    EXPECT_EQ(pixelAt(icons.picture(data, {.width = 20, .height = 20}), 10, 10), 0xFFFF0000U);
}

TEST(IconCache, NothingComesOfNoImage) {
    IconCache icons;
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(icons.imageSize(raw("no image")));
        EXPECT_EQ(icons.picture(raw("no image"), {.width = 10, .height = 10}), nullptr);
    }
}

TEST(IconCache, GoesOnWhenMoreComesThanItKeeps) {
    IconCache icons;
    const auto icon = [](int i) { return raw(imageFile(plainPicture(3, 3, {i % 256, i / 256, 77, 255}), "png")); };
    const std::string padding(std::size_t{7} << 20, '\0');
    for (int i = 0; i < 300; ++i) {
        ASSERT_EQ(icons.imageSize(icon(i)), (Size{3, 3}));
        if (i % 30 == 0) {
            // Heavy, and no image: pushes the others out.
            ASSERT_FALSE(icons.imageSize(raw("BM" + std::to_string(i) + padding)));
        }
        cairo_surface_t* first = icons.picture(icon(0), {.width = 3, .height = 3});
        ASSERT_EQ(pixelAt(first, 1, 1), 0xFF00004DU);
    }
}

} // namespace
} // namespace host

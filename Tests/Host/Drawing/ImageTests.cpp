#include "Host/Drawing/ImageDecoder.h"

#include "Tests/Host/Drawing/Pictures.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace host {
namespace {

/// The left half is red, the right one half transparent white.
Picture halves(int width, int height) {
    Picture picture = plainPicture(width, height, {255, 0, 0, 255});
    for (int y = 0; y < height; ++y) {
        for (int x = width / 2; x < width; ++x) {
            picture.at(x, y) = {255, 255, 255, 128};
        }
    }
    return picture;
}

TEST(ImageDecoder, ReadsTheUsualFormatsAndKeepsNoMoreThanIsAskedFor) {
    struct Row {
        const char* type;
        Size size;
        Size kept;
    };
    for (const Row& row :
         {Row{"png", {400, 200}, {100, 50}}, Row{"jpeg", {200, 400}, {50, 100}}, Row{"bmp", {60, 40}, {60, 40}},
          Row{"tiff", {1000, 1}, {100, 1}}, Row{"ico", {100, 100}, {100, 100}}}) {
        const Picture picture = halves(static_cast<int>(row.size.width), static_cast<int>(row.size.height));
        const auto image = decodeImage(imageFile(picture, row.type), 100);
        ASSERT_TRUE(image) << row.type;
        EXPECT_EQ(image->size, row.size) << row.type;
        EXPECT_EQ(gdk_pixbuf_get_width(image->pixels.get()), row.kept.width) << row.type;
        EXPECT_EQ(gdk_pixbuf_get_height(image->pixels.get()), row.kept.height) << row.type;
    }
}

TEST(ImageDecoder, IsNotTakenInByWhatIsNoImage) {
    const std::string png = imageFile(halves(64, 64), "png");
    std::string damaged = png;
    damaged[png.size() / 2] = static_cast<char>(damaged[png.size() / 2] ^ 0x55);
    const std::vector<std::string> files{
        "",
        "no image",
        "\x89PNG\r\n\x1A\n",
        png.substr(0, png.size() / 2),
        damaged,
        imageFile(halves(64, 64), "jpeg").substr(0, 20),
        std::string("GIF89a\xFF\xFF\xFF\xFF\0\0\0", 13),
        "BM",
        std::string("II*\0\xFF\xFF\xFF\xFF", 8),
        R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"><rect width="9" height="9"/></svg>)",
        "/* XPM */\nstatic char* x[] = {\"1 1 1 1\", \"a c #fff\", \"a\"};\n",
        png + std::string(maxImageBytes, '\0'),
    };
    for (const std::string& file : files) {
        EXPECT_FALSE(decodeImage(file, 256)) << testing::PrintToString(file.substr(0, 40));
    }
}

TEST(ImageDecoder, RefusesMorePixelsThanAnIconCanNeed) {
    const auto decodes = [](int width, int height) {
        const ObjectHandle<GdkPixbuf> pixels(gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, width, height));
        gdk_pixbuf_fill(pixels.get(), 0);
        gchar* bytes = nullptr;
        gsize size = 0;
        gdk_pixbuf_save_to_buffer(pixels.get(), &bytes, &size, "png", nullptr, "compression", "1", nullptr);
        const std::unique_ptr<gchar, Releaser<g_free>> file(bytes);
        return decodeImage({bytes, size}, 64).has_value();
    };
    EXPECT_TRUE(decodes(65'535, 256));
    EXPECT_FALSE(decodes(65'535, 257));
}

TEST(ImageDecoder, TurnsPicturesUpright) {
    // An orientation of 6 in the smallest Exif block: the camera was held upright, the first row is the right side.
    std::string jpeg = imageFile(halves(48, 32), "jpeg");
    const std::string exif("\xFF\xE1\x00\x22"
                           "Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0\x06\0\0\0\0\0\0\0",
                           36);
    jpeg.insert(2, exif);
    for (const int maxSide : {256, 16}) {
        const auto image = decodeImage(jpeg, maxSide);
        ASSERT_TRUE(image);
        EXPECT_EQ(image->size, (Size{32, 48}));
        EXPECT_LT(gdk_pixbuf_get_width(image->pixels.get()), gdk_pixbuf_get_height(image->pixels.get()));
    }
}

} // namespace
} // namespace host

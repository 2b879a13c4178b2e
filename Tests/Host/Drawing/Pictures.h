// Pictures for tests, read and written by gdk-pixbuf.
#pragma once

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/PngFile.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <gdk-pixbuf/gdk-pixbuf.h>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// Red, green, blue, alpha; not premultiplied.
using Pixel = std::array<int, 4>;

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<Pixel> pixels;

    Pixel& at(int x, int y) { return pixels.at(static_cast<std::size_t>(y * width + x)); }
    const Pixel& at(int x, int y) const { return pixels.at(static_cast<std::size_t>(y * width + x)); }
    friend bool operator==(const Picture&, const Picture&) = default;
};

inline Picture plainPicture(int width, int height, Pixel color) {
    return {width, height, std::vector<Pixel>(static_cast<std::size_t>(width * height), color)};
}

/// Returns an empty picture if `file` cannot be decoded.
inline Picture decoded(std::string_view file) {
    const ObjectHandle<GdkPixbufLoader> loader(gdk_pixbuf_loader_new());
    gdk_pixbuf_loader_write(loader.get(), reinterpret_cast<const guchar*>(file.data()), file.size(), nullptr);
    gdk_pixbuf_loader_close(loader.get(), nullptr);
    GdkPixbuf* loaded = gdk_pixbuf_loader_get_pixbuf(loader.get());
    if (loaded == nullptr) {
        return {};
    }
    const ObjectHandle<GdkPixbuf> pixbuf(gdk_pixbuf_add_alpha(loaded, FALSE, 0, 0, 0));
    Picture picture = plainPicture(gdk_pixbuf_get_width(pixbuf.get()), gdk_pixbuf_get_height(pixbuf.get()), {});
    for (int y = 0; y < picture.height; ++y) {
        const guchar* row = gdk_pixbuf_read_pixels(pixbuf.get()) + y * gdk_pixbuf_get_rowstride(pixbuf.get());
        for (int x = 0; x < picture.width; ++x) {
            std::copy_n(row + x * 4, 4, picture.at(x, y).begin());
        }
    }
    return picture;
}

/// By way of a PNG file.
inline Picture decoded(const PixelBuffer& buffer) {
    return decoded(pngFile(buffer));
}

/// Returns an image file; `type` is one of gdk-pixbuf's: "png", "jpeg", "bmp", "tiff", "ico".
inline std::string imageFile(const Picture& picture, const char* type) {
    const ObjectHandle<GdkPixbuf> pixbuf(gdk_pixbuf_new(GDK_COLORSPACE_RGB, TRUE, 8, picture.width, picture.height));
    for (int y = 0; y < picture.height; ++y) {
        guchar* row = gdk_pixbuf_get_pixels(pixbuf.get()) + y * gdk_pixbuf_get_rowstride(pixbuf.get());
        for (int x = 0; x < picture.width; ++x) {
            std::copy_n(picture.at(x, y).begin(), 4, row + x * 4);
        }
    }
    gchar* bytes = nullptr;
    gsize size = 0;
    gdk_pixbuf_save_to_buffer(pixbuf.get(), &bytes, &size, type, nullptr, nullptr);
    const std::unique_ptr<gchar, Releaser<g_free>> owned(bytes);
    return {bytes, size};
}

/// Returns the maximum difference of the channels.
inline int difference(const Pixel& a, const Pixel& b) {
    int max = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        max = std::max(max, std::abs(a[i] - b[i]));
    }
    return max;
}

} // namespace host

#include "Tests/Host/Drawing/Pictures.h"

#include "Host/Drawing/Handles.h"
#include "Host/Drawing/PngFile.h"

#include <algorithm>
#include <cstdlib>
#include <gdk-pixbuf/gdk-pixbuf.h>

namespace host {

Picture decoded(std::string_view file) {
    const ObjectHandle<GdkPixbufLoader> loader(gdk_pixbuf_loader_new());
    const bool isRead =
        gdk_pixbuf_loader_write(loader.get(), reinterpret_cast<const guchar*>(file.data()), file.size(), nullptr) != 0;
    const bool isWhole = gdk_pixbuf_loader_close(loader.get(), nullptr) != 0;
    GdkPixbuf* pixbuf = gdk_pixbuf_loader_get_pixbuf(loader.get());
    if (!isRead || !isWhole || pixbuf == nullptr) {
        return {};
    }
    Picture picture{gdk_pixbuf_get_width(pixbuf), gdk_pixbuf_get_height(pixbuf), {}};
    const int channels = gdk_pixbuf_get_n_channels(pixbuf);
    const guchar* row = gdk_pixbuf_read_pixels(pixbuf);
    for (int y = 0; y < picture.height; ++y, row += gdk_pixbuf_get_rowstride(pixbuf)) {
        for (int x = 0; x < picture.width; ++x) {
            const guchar* p = row + std::ptrdiff_t{x} * channels;
            picture.pixels.push_back({p[0], p[1], p[2], channels == 4 ? p[3] : 255});
        }
    }
    return picture;
}

Picture decoded(const PixelBuffer& buffer) {
    return decoded(pngFile(buffer));
}

std::string imageFile(const Picture& picture, const char* type) {
    const ObjectHandle<GdkPixbuf> pixbuf(gdk_pixbuf_new(GDK_COLORSPACE_RGB, TRUE, 8, picture.width, picture.height));
    guchar* row = gdk_pixbuf_get_pixels(pixbuf.get());
    for (int y = 0; y < picture.height; ++y, row += gdk_pixbuf_get_rowstride(pixbuf.get())) {
        for (int x = 0; x < picture.width; ++x) {
            std::copy_n(picture.at(x, y).begin(), 4, row + std::ptrdiff_t{x} * 4);
        }
    }
    gchar* bytes = nullptr;
    gsize size = 0;
    std::string file;
    if (gdk_pixbuf_save_to_buffer(pixbuf.get(), &bytes, &size, type, nullptr, nullptr) != 0) {
        file.assign(bytes, size);
        g_free(bytes);
    }
    return file;
}

Picture plainPicture(int width, int height, Pixel color) {
    return {width, height,
            std::vector<Pixel>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), color)};
}

int difference(const Pixel& a, const Pixel& b) {
    int max = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        max = std::max(max, std::abs(a[i] - b[i]));
    }
    return max;
}

} // namespace host

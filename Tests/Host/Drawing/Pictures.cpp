#include "Pictures.h"

#include "Host/Drawing/Handles.h"
#include "Host/Layout/Measures.h"

#include <algorithm>
#include <cmath>
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
    int greatest = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        greatest = std::max(greatest, std::abs(a[i] - b[i]));
    }
    return greatest;
}

Pixel over(const Pixel& top, double strength, const Pixel& below) {
    const double belowAlpha = below[3] / 255.0 * (1 - strength);
    const double alpha = strength + belowAlpha;
    Pixel result{};
    for (std::size_t i = 0; i < 3; ++i) {
        result[i] = static_cast<int>(std::lround((top[i] * strength + below[i] * belowAlpha) / alpha));
    }
    result[3] = static_cast<int>(std::lround(alpha * 255));
    return result;
}

Pixel tileOf(const Appearance& appearance) {
    return appearance.scheme == ColorScheme::light ? Pixel{235, 235, 237, 221} : Pixel{51, 51, 54, 221};
}

Box boxOf(const Picture& picture, const std::function<bool(const Pixel&)>& predicate) {
    Box box{picture.width, picture.height, 0, 0};
    const int margin = picture.width / 16;
    for (int y = margin; y < picture.height - margin; ++y) {
        for (int x = margin; x < picture.width - margin; ++x) {
            if (predicate(picture.at(x, y))) {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       std::max(box.bottom, y + 1)};
            }
        }
    }
    return box;
}

Box inkOf(const Picture& picture, const Appearance& appearance) {
    return boxOf(picture, [&](const Pixel& p) { return difference(p, tileOf(appearance)) > 3; });
}

WidgetLayout widget(std::vector<LayoutItem> items, Size size) {
    return {size, std::move(items), {}};
}

LayoutItem textAt(Renderer& renderer, Point origin, std::string_view text, platform::Font font,
                  platform::Foreground foreground) {
    MeasuredText measured = renderer.texts().measure({.text = text, .font = font});
    const double lineHeight = textMeasures(font).lineHeight;
    const Rect frame{origin.x, origin.y, measured.lines.front().width,
                     lineHeight * static_cast<double>(measured.lines.size())};
    return {
        .content = TextItem{std::move(measured), lineHeight}, .frame = frame, .font = font, .foreground = foreground};
}

LayoutItem circleAt(const Rect& frame, platform::Color fill, bool accented) {
    return {.content = CircleItem{fill}, .frame = frame, .accented = accented};
}

LayoutItem symbolAt(const Rect& frame, platform::Foreground foreground) {
    return {.content = SymbolItem{"folder"}, .frame = frame, .foreground = foreground};
}

LayoutItem imageAt(const Rect& frame, const Picture& picture) {
    return {.content =
                ImageItem{{platform::Data::owning(imageFile(picture, "png")), platform::EncodedData::Encoding::raw}},
            .frame = frame};
}

} // namespace host

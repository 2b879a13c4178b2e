#include "Host/Drawing/IconCache.h"

#include "Host/Drawing/Shapes.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace host {
namespace {

constexpr std::size_t maxBytes = std::size_t{32} << 20;
/// Enough for an icon on any screen. An image that is drawn larger is decoded again.
constexpr int defaultSide = 128;

std::uint32_t premultiplied(const guchar* pixel, int channels) {
    const std::uint32_t alpha = channels == 4 ? pixel[3] : 255;
    const auto times = [&](std::uint32_t component) {
        const std::uint32_t product = component * alpha + 128;
        return (product + (product >> 8)) >> 8;
    };
    return alpha << 24 | times(pixel[0]) << 16 | times(pixel[1]) << 8 | times(pixel[2]);
}

SurfaceHandle asSurface(GdkPixbuf* pixels) {
    const int width = gdk_pixbuf_get_width(pixels);
    const int height = gdk_pixbuf_get_height(pixels);
    const int channels = gdk_pixbuf_get_n_channels(pixels);
    SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
    unsigned char* to = cairo_image_surface_get_data(surface.get());
    const guchar* from = gdk_pixbuf_get_pixels(pixels);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const std::uint32_t value = premultiplied(from + static_cast<std::ptrdiff_t>(x) * channels, channels);
            std::memcpy(to + static_cast<std::ptrdiff_t>(x) * 4, &value, sizeof value);
        }
        from += gdk_pixbuf_get_rowstride(pixels);
        to += cairo_image_surface_get_stride(surface.get());
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

SurfaceHandle drawnPicture(GdkPixbuf* pixels, const IconRequest& request) {
    const ObjectHandle<GdkPixbuf> scaled(
        gdk_pixbuf_scale_simple(pixels, request.width, request.height, GDK_INTERP_BILINEAR));
    if (!scaled) {
        return nullptr;
    }
    const SurfaceHandle square = asSurface(scaled.get());
    if (request.tone == Tone::gray) {
        desaturate(square.get());
    }
    SurfaceHandle rounded(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, request.width, request.height));
    const CairoHandle cairo(cairo_create(rounded.get()));
    cairo_set_source_surface(cairo.get(), square.get(), 0, 0);
    addRoundedRect(cairo.get(), {0, 0, static_cast<double>(request.width), static_cast<double>(request.height)},
                   request.cornerRadius);
    cairo_fill(cairo.get());
    return rounded;
}

} // namespace

std::optional<Size> IconCache::imageSize(const platform::EncodedData& data) {
    const auto& image = entry(data, defaultSide).image;
    return image ? std::optional(image->size) : std::nullopt;
}

SurfaceHandle IconCache::picture(const platform::EncodedData& data, const IconRequest& request) {
    const auto& image = entry(data, std::max({request.width, request.height, defaultSide})).image;
    return image ? drawnPicture(image->pixels.get(), request) : nullptr;
}

const IconCache::Entry& IconCache::entry(const platform::EncodedData& data, int maxSide) {
    const auto known = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) {
        // Comparing forms of different lengths would decode both, which costs more than caching an image twice.
        return e.data.storedSize() == data.storedSize() && e.data == data && e.isEnoughFor(maxSide);
    });
    if (known != entries_.end()) {
        return *known;
    }
    if (bytes_ > maxBytes) {
        entries_.clear();
        bytes_ = 0;
    }
    const platform::Data bytes = data.decoded();
    const Entry& made =
        entries_.emplace_back(Entry{.data = data, .image = decodeImage(bytes.bytes(), maxSide), .maxSide = maxSide});
    bytes_ += bytes.size() + (made.image ? gdk_pixbuf_get_byte_length(made.image->pixels.get()) : 0);
    return made;
}

bool IconCache::Entry::isEnoughFor(int side) const {
    return !image || side <= maxSide || std::max(image->size.width, image->size.height) <= maxSide;
}

} // namespace host

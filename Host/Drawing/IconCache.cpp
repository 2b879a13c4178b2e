#include "Host/Drawing/IconCache.h"

#include "Host/Drawing/Shapes.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace host {
namespace {

constexpr std::size_t keptBytes = std::size_t{32} << 20;
constexpr std::size_t keptPicturesOfOne = 4;
/// Enough for an icon on any screen; what is drawn larger is decoded again.
constexpr int usualLongestSide = 128;

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
    const Entry& known = entry(data, usualLongestSide);
    return known.image ? std::optional(known.image->size) : std::nullopt;
}

cairo_surface_t* IconCache::picture(const platform::EncodedData& data, const IconRequest& request) {
    Entry& known = entry(data, std::max({request.width, request.height, usualLongestSide}));
    if (!known.image) {
        return nullptr;
    }
    auto& pictures = known.pictures;
    const auto found =
        std::find_if(pictures.begin(), pictures.end(), [&](const Picture& p) { return p.request == request; });
    if (found != pictures.end()) {
        pictures.splice(pictures.begin(), pictures, found);
    } else {
        pictures.push_front({request, drawnPicture(known.image->pixels.get(), request)});
        pictures.resize(std::min(pictures.size(), keptPicturesOfOne));
    }
    return pictures.front().surface.get();
}

IconCache::Entry& IconCache::entry(const platform::EncodedData& data, int longestSide) {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) {
        // Two forms that differ in length are compared by decoding both, which costs more than to keep an image twice.
        return e.data.storedSize() == data.storedSize() && e.data == data;
    });
    if (found != entries_.end()) {
        entries_.splice(entries_.begin(), entries_, found);
    } else {
        entries_.push_front({data, std::nullopt, 0, {}, 0});
    }
    Entry& entry = entries_.front();
    const bool isTooSmall = entry.image && longestSide > entry.longestSide &&
                            std::max(entry.image->size.width, entry.image->size.height) > entry.longestSide;
    if (found == entries_.end() || isTooSmall) {
        decode(entry, longestSide);
    }
    return entry;
}

void IconCache::decode(Entry& entry, int longestSide) {
    const platform::Data bytes = entry.data.decoded();
    entry.image = decodeImage(bytes.bytes(), longestSide);
    entry.longestSide = longestSide;
    entry.pictures.clear();

    weight_ -= entry.weight;
    entry.weight =
        sizeof(Entry) + bytes.size() + (entry.image ? gdk_pixbuf_get_byte_length(entry.image->pixels.get()) : 0);
    weight_ += entry.weight;
    while (weight_ > keptBytes && entries_.size() > 1) {
        weight_ -= entries_.back().weight;
        entries_.pop_back();
    }
}

} // namespace host

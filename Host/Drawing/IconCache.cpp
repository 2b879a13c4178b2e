#include "Host/Drawing/IconCache.h"

#include "Host/Drawing/Shapes.h"

#include <algorithm>
#include <gdk/gdk.h>

namespace host {
namespace {

constexpr std::size_t maxBytes = std::size_t{32} << 20;
/// Enough for an icon on any screen. An image that is drawn larger is decoded again.
constexpr int defaultSide = 128;

SurfaceHandle drawnPicture(GdkPixbuf* pixels, const IconRequest& request) {
    const ObjectHandle<GdkPixbuf> scaled(
        gdk_pixbuf_scale_simple(pixels, request.width, request.height, GDK_INTERP_BILINEAR));
    if (!scaled) {
        return nullptr;
    }
    SurfaceHandle rounded(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, request.width, request.height));
    const CairoHandle cairo(cairo_create(rounded.get()));
    gdk_cairo_set_source_pixbuf(cairo.get(), scaled.get(), 0, 0);
    addRoundedRect(cairo.get(), {0, 0, static_cast<double>(request.width), static_cast<double>(request.height)},
                   request.cornerRadius);
    cairo_fill(cairo.get());
    if (request.tone == Tone::gray) {
        desaturate(rounded.get());
    }
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

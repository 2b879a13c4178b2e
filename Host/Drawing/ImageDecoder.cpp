#include "Host/Drawing/ImageDecoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace host {
namespace {

struct Signature {
    std::string_view bytes;
    const char* loader;
};
using namespace std::string_view_literals;
constexpr std::array<Signature, 9> signatures{{
    {"\x89PNG\r\n\x1A\n"sv, "png"},
    {"\xFF\xD8\xFF"sv, "jpeg"},
    {"GIF8"sv, "gif"},
    {"II*\0"sv, "tiff"},
    {"MM\0*"sv, "tiff"},
    {"BM"sv, "bmp"},
    {"\0\0\1\0"sv, "ico"},
    {"icns"sv, "icns"},
    {"RIFF"sv, "webp"},
}};

const char* loaderFor(std::string_view bytes) {
    const auto* found = std::find_if(signatures.begin(), signatures.end(),
                                     [&](const Signature& s) { return bytes.starts_with(s.bytes); });
    return found == signatures.end() ? nullptr : found->loader;
}

/// The loader's reports while it loads.
struct Progress {
    int maxSide;
    bool scalesItself;
    Size size;
    bool isRefused = false;
    /// The rows that are loaded, from `top` to before `bottom`.
    int top = std::numeric_limits<int>::max();
    int bottom = 0;
};

void prepareSize(GdkPixbufLoader* loader, int width, int height, Progress* progress) {
    progress->size = {static_cast<double>(width), static_cast<double>(height)};
    if (width <= 0 || height <= 0 || progress->size.width * progress->size.height > maxImageArea) {
        progress->isRefused = true;
        // The loaders then skip the pixels.
        gdk_pixbuf_loader_set_size(loader, 0, 0);
        return;
    }
    if (progress->scalesItself) {
        // Only for these; other loaders then no longer report the rows.
        int divisor = 8;
        while (divisor > 1 && std::max(width, height) / divisor < progress->maxSide) {
            divisor /= 2;
        }
        gdk_pixbuf_loader_set_size(loader, (width + divisor - 1) / divisor, (height + divisor - 1) / divisor);
    }
}

void noteRows(GdkPixbufLoader* /*loader*/, int /*x*/, int y, int /*width*/, int height, Progress* progress) {
    progress->top = std::min(progress->top, y);
    progress->bottom = std::max(progress->bottom, y + height);
}

/// Feeds the loader piece by piece, and stops as soon as the image is refused or broken.
bool feed(GdkPixbufLoader* loader, std::string_view bytes, const Progress& progress) {
    // Most files have their size in the first piece.
    std::size_t piece = 1024;
    while (!bytes.empty()) {
        piece = std::min(piece, bytes.size());
        const auto* data = reinterpret_cast<const guchar*>(bytes.data());
        if (gdk_pixbuf_loader_write(loader, data, piece, nullptr) == FALSE || progress.isRefused) {
            return false;
        }
        bytes.remove_prefix(piece);
        piece = std::size_t{64} << 10;
    }
    return true;
}

/// Returns false for files that the loaders would accept: those without an end, whose missing rows are made up, and JPEGs
/// of very many passes, each of which may take as long as a whole picture.
bool isSound(std::string_view bytes, std::string_view type) {
    if (type == "png") {
        return bytes.rfind("IEND") != std::string_view::npos;
    }
    if (type != "jpeg") {
        return true;
    }
    constexpr std::string_view scan = "\xFF\xDA";
    constexpr std::string_view end = "\xFF\xD9";
    constexpr int maxScanCount = 32;
    int count = 0;
    std::size_t last = 0;
    for (std::size_t at = bytes.find(scan); at != std::string_view::npos; at = bytes.find(scan, at + 1)) {
        ++count;
        last = at;
    }
    return count <= maxScanCount && bytes.find(end, last) != std::string_view::npos;
}

bool isWide(GdkPixbuf* pixels) {
    return gdk_pixbuf_get_width(pixels) > gdk_pixbuf_get_height(pixels);
}

ObjectHandle<GdkPixbuf> fitted(GdkPixbuf* pixels, int maxSide) {
    const int width = gdk_pixbuf_get_width(pixels);
    const int height = gdk_pixbuf_get_height(pixels);
    const double factor = maxSide / static_cast<double>(std::max(width, height));
    if (factor >= 1) {
        g_object_ref(pixels);
        return ObjectHandle<GdkPixbuf>(pixels);
    }
    const auto scaled = [&](int length) { return std::max(1, static_cast<int>(std::lround(length * factor))); };
    return ObjectHandle<GdkPixbuf>(gdk_pixbuf_scale_simple(pixels, scaled(width), scaled(height), GDK_INTERP_BILINEAR));
}

} // namespace

std::optional<DecodedImage> decodeImage(std::string_view bytes, int maxSide) {
    const char* type = loaderFor(bytes);
    if (type == nullptr || bytes.size() > maxImageBytes || !isSound(bytes, type)) {
        return std::nullopt;
    }
    const ObjectHandle<GdkPixbufLoader> loader(gdk_pixbuf_loader_new_with_type(type, nullptr));
    if (!loader) {
        return std::nullopt;
    }
    Progress progress{.maxSide = maxSide, .scalesItself = type == std::string_view("jpeg")};
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(prepareSize), &progress);
    g_signal_connect(loader.get(), "area-updated", G_CALLBACK(noteRows), &progress);
    const bool isFed = feed(loader.get(), bytes, progress);
    const bool isClosed = gdk_pixbuf_loader_close(loader.get(), nullptr) != FALSE;
    GdkPixbuf* pixels = gdk_pixbuf_loader_get_pixbuf(loader.get());
    // The loaders report no error for a truncated file, but lack its last rows.
    if (!isFed || !isClosed || progress.isRefused || pixels == nullptr || progress.top > 0 ||
        progress.bottom < gdk_pixbuf_get_height(pixels)) {
        return std::nullopt;
    }
    const ObjectHandle<GdkPixbuf> upright(gdk_pixbuf_apply_embedded_orientation(pixels));
    ObjectHandle<GdkPixbuf> kept = upright ? fitted(upright.get(), maxSide) : nullptr;
    if (!kept) {
        return std::nullopt;
    }
    Size size = progress.size;
    if (isWide(pixels) != isWide(upright.get())) {
        std::swap(size.width, size.height);
    }
    return DecodedImage{size, std::move(kept)};
}

} // namespace host

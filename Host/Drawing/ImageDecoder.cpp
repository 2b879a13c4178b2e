#include "Host/Drawing/ImageDecoder.h"

#include <algorithm>
#include <array>
#include <cmath>

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

/// What the loader's callback learns and decides, before pixels are made room for.
struct Preparation {
    int longestSide;
    Size size;
    bool isRefused = false;
};

void prepareSize(GdkPixbufLoader* loader, int width, int height, Preparation* preparation) {
    preparation->size = {static_cast<double>(width), static_cast<double>(height)};
    const double area = preparation->size.width * preparation->size.height;
    if (width <= 0 || height <= 0 || area > greatestImageArea) {
        preparation->isRefused = true;
        // For the loaders this means that nobody wants the pixels.
        gdk_pixbuf_loader_set_size(loader, 0, 0);
        return;
    }
    const double factor = preparation->longestSide / static_cast<double>(std::max(width, height));
    if (factor < 1) {
        gdk_pixbuf_loader_set_size(loader, std::max(1, static_cast<int>(std::lround(width * factor))),
                                   std::max(1, static_cast<int>(std::lround(height * factor))));
    }
}

/// Feeds the loader piece by piece, so that it can be left as soon as the image is refused or broken.
bool feed(GdkPixbufLoader* loader, std::string_view bytes, const Preparation& preparation) {
    // Long enough for most files to tell their size.
    std::size_t piece = 1024;
    while (!bytes.empty()) {
        piece = std::min(piece, bytes.size());
        const auto* data = reinterpret_cast<const guchar*>(bytes.data());
        if (gdk_pixbuf_loader_write(loader, data, piece, nullptr) == FALSE || preparation.isRefused) {
            return false;
        }
        bytes.remove_prefix(piece);
        piece = std::size_t{64} << 10;
    }
    return true;
}

} // namespace

std::optional<DecodedImage> decodeImage(std::string_view bytes, int longestSide) {
    const char* type = loaderFor(bytes);
    if (type == nullptr || bytes.size() > greatestImageBytes) {
        return std::nullopt;
    }
    const ObjectHandle<GdkPixbufLoader> loader(gdk_pixbuf_loader_new_with_type(type, nullptr));
    if (!loader) {
        return std::nullopt;
    }
    Preparation preparation{longestSide, {}};
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(prepareSize), &preparation);
    const bool isFed = feed(loader.get(), bytes, preparation);
    const bool isWhole = gdk_pixbuf_loader_close(loader.get(), nullptr) != FALSE;
    GdkPixbuf* pixels = gdk_pixbuf_loader_get_pixbuf(loader.get());
    if (!isFed || !isWhole || preparation.isRefused || pixels == nullptr) {
        return std::nullopt;
    }
    ObjectHandle<GdkPixbuf> upright(gdk_pixbuf_apply_embedded_orientation(pixels));
    if (!upright) {
        return std::nullopt;
    }
    Size size = preparation.size;
    const bool wasWide = gdk_pixbuf_get_width(pixels) > gdk_pixbuf_get_height(pixels);
    const bool isWide = gdk_pixbuf_get_width(upright.get()) > gdk_pixbuf_get_height(upright.get());
    if (wasWide != isWide) {
        std::swap(size.width, size.height);
    }
    return DecodedImage{size, std::move(upright)};
}

} // namespace host

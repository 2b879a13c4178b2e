#include "Host/Drawing/PngFile.h"

#include <algorithm>
#include <cstddef>
#include <png.h>
#include <vector>

namespace host {
namespace {

/// With red in the lowest byte, not premultiplied.
std::uint32_t straight(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24;
    if (alpha == 0) {
        return 0;
    }
    const auto component = [&](int shift) {
        return std::min(255U, ((pixel >> shift & 0xFFU) * 255 + alpha / 2) / alpha);
    };
    return component(16) | component(8) << 8 | component(0) << 16 | alpha << 24;
}

} // namespace

std::string pngFile(const PixelBuffer& picture) {
    if (!picture.surface) {
        return {};
    }
    // Most pixels of a widget equal their neighbour.
    std::uint32_t last = 0;
    std::uint32_t lastStraight = 0;
    std::vector<std::uint32_t> pixels(picture.pixels().begin(), picture.pixels().end());
    for (std::uint32_t& pixel : pixels) {
        if (pixel != last) {
            last = pixel;
            lastStraight = straight(pixel);
        }
        pixel = lastStraight;
    }

    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGBA;
    image.flags = PNG_IMAGE_FLAG_FAST;
    std::string file(PNG_IMAGE_PNG_SIZE_MAX(image), '\0');
    png_alloc_size_t size = file.size();
    const int isWritten = png_image_write_to_memory(&image, file.data(), &size, 0, pixels.data(), 0, nullptr);
    file.resize(isWritten != 0 ? size : 0);
    return file;
}

} // namespace host

// Pictures for tests, decoded by gdk-pixbuf.
#pragma once

#include "Host/Drawing/PixelBuffer.h"

#include <array>
#include <cstddef>
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

    const Pixel& at(int x, int y) const {
        return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
    }
    Pixel& at(int x, int y) {
        return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
    }
    friend bool operator==(const Picture&, const Picture&) = default;
};

/// Returns an empty picture if `file` cannot be decoded.
Picture decoded(std::string_view file);

/// By way of a PNG file.
Picture decoded(const PixelBuffer& buffer);

/// An image file made by gdk-pixbuf; `type` is one of its own: "png", "jpeg", "bmp", "tiff", "ico".
std::string imageFile(const Picture& picture, const char* type);

Picture plainPicture(int width, int height, Pixel color);

/// Returns the maximum difference of the channels.
int difference(const Pixel& a, const Pixel& b);

} // namespace host

// Image files as pixels, decoded with distrust: what is no image, is cut short or asks for too much is nothing.
//
// PNG, JPEG, GIF (its first picture), TIFF, BMP, ICO, ICNS and WebP, as far as gdk-pixbuf has the loaders. Vector
// images are left out: how long they take cannot be told from their size.
#pragma once

#include "Host/Drawing/Handles.h"
#include "Host/Layout/Geometry.h"

#include <cstddef>
#include <gdk-pixbuf/gdk-pixbuf.h>
#include <optional>
#include <string_view>

namespace host {

struct DecodedImage {
    /// In the image's own pixels, turned upright where the file says how.
    Size size;
    /// Eight bits a channel, not premultiplied; smaller than `size` where that is larger than was asked for.
    ObjectHandle<GdkPixbuf> pixels;
};

inline constexpr std::size_t maxImageBytes = std::size_t{8} << 20;
/// Pixels that a file may declare, width times height.
inline constexpr double maxImageArea = 4096.0 * 4096.0;

/// `longestSide`: what of the image is worth keeping, in pixels.
std::optional<DecodedImage> decodeImage(std::string_view bytes, int longestSide);

} // namespace host

// Decodes image files that are not trusted. A file that is invalid, truncated or too large gives nothing.
//
// Formats: PNG, JPEG, GIF (its first picture), TIFF, BMP, ICO, ICNS and WebP, if gdk-pixbuf has the loader. No vector
// images, whose size does not limit the time that they take.
#pragma once

#include "Host/Drawing/Handles.h"
#include "Host/Layout/Geometry.h"

#include <cstddef>
#include <gdk-pixbuf/gdk-pixbuf.h>
#include <optional>
#include <string_view>

namespace host {

struct DecodedImage {
    /// In the image's own pixels, after the rotation that the file requires.
    Size size;
    /// Eight bits per channel, not premultiplied; scaled down if the image is larger than requested.
    ObjectHandle<GdkPixbuf> pixels;
};

inline constexpr std::size_t maxImageBytes = std::size_t{8} << 20;
/// The maximum of pixels of a file, width times height.
inline constexpr double maxImageArea = 4096.0 * 4096.0;

/// Scales the image down if its longer side exceeds `maxSide` pixels.
std::optional<DecodedImage> decodeImage(std::string_view bytes, int maxSide);

} // namespace host

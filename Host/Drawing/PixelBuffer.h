// A picture in memory, in a cairo surface.
#pragma once

#include "Host/Drawing/Handles.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace host {

struct PixelBuffer {
    /// In cairo's format ARGB32; null if there is no picture.
    SurfaceHandle surface;
    /// In pixels; 0 if there is no picture.
    int width = 0;
    int height = 0;

    /// 0xAARRGGBB, premultiplied with alpha, row by row without gaps: width × height.
    std::span<std::uint32_t> pixels() const {
        return {reinterpret_cast<std::uint32_t*>(surface ? cairo_image_surface_get_data(surface.get()) : nullptr),
                static_cast<std::size_t>(width) * static_cast<std::size_t>(height)};
    }
};

} // namespace host

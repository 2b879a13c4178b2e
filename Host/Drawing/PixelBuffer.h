// Pixels as cairo has them: 0xAARRGGBB, premultiplied with alpha, row after row without gaps.
#pragma once

#include <cstdint>
#include <vector>

namespace host {

struct PixelBuffer {
    /// width × height of them.
    std::vector<std::uint32_t> pixels;
    int width = 0;
    int height = 0;
};

} // namespace host

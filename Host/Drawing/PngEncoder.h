// Pictures as PNG files (ISO/IEC 15948), made for speed: eight bits a channel with alpha, sRGB, no row filters, and a
// single pass of the fastest compression. One thread at a time; buffers are kept for the next picture.
#pragma once

#include "Host/Drawing/Room.h"

#include <cstdint>
#include <string>

namespace host {

/// Pixels as cairo has them: 0xAARRGGBB, premultiplied with alpha, row after row without gaps.
struct PixelView {
    const std::uint32_t* pixels = nullptr;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

class PngEncoder {
  public:
    /// The file's bytes. Empty if there are no pixels.
    std::string encode(const PixelView& picture);

  private:
    Room<std::uint8_t> rows_;
    Room<std::uint8_t> compressed_;
    Room<std::uint8_t> work_;
};

} // namespace host

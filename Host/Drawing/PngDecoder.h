// The way back from `PngEncoder`: the pixels of a PNG file whose size is known beforehand.
//
// Files may come from anywhere. Nothing is decoded, nor any memory taken, unless the file is of just that size and, as
// the encoder's are, of eight bits a channel with alpha. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace host {

/// Just the pixels that were encoded, premultiplied; nothing if the file is broken or of another kind.
std::optional<std::vector<std::uint32_t>> decodePng(std::string_view bytes, int width, int height);

} // namespace host

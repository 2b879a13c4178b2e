#include "Host/Drawing/PngEncoder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <string_view>

namespace host {
namespace {

static_assert(std::endian::native == std::endian::little, "pixels are stored as bytes R, G, B, A");

constexpr int reciprocalBits = 24;
/// Bytes.
constexpr std::size_t rowsAtOnce = std::size_t{64} << 10;

/// 2^24 / alpha, rounded up: a division by alpha that is exact for everything up to 255 × 255 + 127.
constexpr std::array<std::uint32_t, 256> reciprocals = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t alpha = 1; alpha < 256; ++alpha) {
        table[alpha] = ((1U << reciprocalBits) + alpha - 1) / alpha;
    }
    return table;
}();

/// The bytes R, G, B, A of a pixel, as a number with R lowest.
std::uint32_t straight(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24;
    if (alpha == 0) {
        return 0;
    }
    if (alpha == 255) {
        return (pixel & 0xFF00FF00U) | (pixel >> 16 & 0xFFU) | (pixel & 0xFFU) << 16;
    }
    const std::uint64_t reciprocal = reciprocals[alpha];
    const auto component = [&](int shift) {
        const std::uint64_t dividend = (pixel >> shift & 0xFFU) * 255U + alpha / 2;
        return static_cast<std::uint32_t>(dividend * reciprocal >> reciprocalBits);
    };
    return component(16) | component(8) << 8 | component(0) << 16 | alpha << 24;
}

/// A row as PNG has it: a byte that names the filter, none, then the pixels.
void writeRow(const std::uint32_t* from, std::uint32_t width, std::uint8_t* out) {
    *out++ = 0;
    // Most pixels of a widget are like their neighbour, and so are the next ones.
    std::uint64_t pair = 0;
    std::uint64_t straightPair = 0;
    for (const std::uint32_t* const end = from + width; from != end;) {
        if (end - from >= 4) {
            std::array<std::uint64_t, 2> next{};
            std::memcpy(next.data(), from, sizeof next);
            if (next[0] == pair && next[1] == pair) {
                std::memcpy(out, &straightPair, 8);
                std::memcpy(out + 8, &straightPair, 8);
                from += 4;
                out += 16;
                continue;
            }
        }
        if (const std::uint64_t pixel = *from; pixel != (pair & 0xFFFFFFFFU)) {
            pair = pixel << 32 | pixel;
            straightPair = std::uint64_t{straight(*from)} * 0x1'0000'0001U;
        }
        std::memcpy(out, &straightPair, 4);
        ++from;
        out += 4;
    }
}

/// Rows from `first` on and before `end`.
void writeRows(const PixelView& picture, std::uint32_t first, std::uint32_t end, std::uint8_t* out) {
    const std::size_t size = 1 + std::size_t{picture.width} * 4;
    for (std::uint32_t y = first; y < end; ++y, out += size) {
        const std::uint32_t* const row = picture.pixels + std::size_t{y} * picture.width;
        if (y > first && std::equal(row, row + picture.width, row - picture.width)) {
            std::memcpy(out, out - size, size);
        } else {
            writeRow(row, picture.width, out);
        }
    }
}

void appendNumber(std::string& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        out += static_cast<char>(value >> shift & 0xFF);
    }
}

void appendChunk(std::string& out, std::string_view type, std::string_view content) {
    appendNumber(out, static_cast<std::uint32_t>(content.size()));
    const std::size_t start = out.size();
    out.append(type).append(content);
    const auto* bytes = reinterpret_cast<const unsigned char*>(out.data()) + start;
    appendNumber(out, crc32_gzip_refl(0, bytes, out.size() - start));
}

std::string header(const PixelView& picture) {
    constexpr std::string_view eightBitsWithAlpha("\x08\x06\0\0\0", 5);
    std::string content;
    appendNumber(content, picture.width);
    appendNumber(content, picture.height);
    return content.append(eightBitsWithAlpha);
}

} // namespace

std::string PngEncoder::encode(const PixelView& picture) {
    if (picture.width == 0 || picture.height == 0) {
        return {};
    }
    const std::size_t rowSize = std::size_t{picture.width} * 4 + 1;
    const std::size_t size = rowSize * picture.height;
    // What does not compress is stored in blocks of less than 64 KiB with five bytes each, after the header.
    const std::size_t greatestSize = size + size / 8192 + 1024;
    std::uint8_t* const compressed = compressed_.take(greatestSize);
    isal_zstream stream;
    isal_deflate_init(&stream);
    stream.level = 1;
    stream.level_buf = work_.take(ISAL_DEF_LVL1_DEFAULT);
    stream.level_buf_size = ISAL_DEF_LVL1_DEFAULT;
    stream.gzip_flag = IGZIP_ZLIB;
    stream.next_out = compressed;
    stream.avail_out = static_cast<std::uint32_t>(greatestSize);
    // A few rows at a time, so that they are still near when they are compressed.
    const auto step = static_cast<std::uint32_t>(std::max(std::size_t{1}, rowsAtOnce / rowSize));
    for (std::uint32_t y = 0; y < picture.height; y += step) {
        const std::uint32_t end = std::min(y + step, picture.height);
        stream.next_in = rows_.take(rowSize * step);
        stream.avail_in = static_cast<std::uint32_t>(rowSize * (end - y));
        stream.end_of_stream = end == picture.height ? 1 : 0;
        writeRows(picture, y, end, stream.next_in);
        if (isal_deflate(&stream) != COMP_OK) {
            return {};
        }
    }

    constexpr std::string_view perceptual("\0", 1);
    std::string file("\x89PNG\r\n\x1A\n");
    file.reserve(stream.total_out + 128);
    appendChunk(file, "IHDR", header(picture));
    appendChunk(file, "sRGB", perceptual);
    appendChunk(file, "IDAT", {reinterpret_cast<const char*>(compressed), stream.total_out});
    appendChunk(file, "IEND", {});
    return file;
}

} // namespace host

#include "Host/Drawing/PngEncoder.h"

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

using Four = std::array<std::uint32_t, 4>;

/// Rows as PNG has them: a byte that names the filter, none, then the pixels.
void writeRows(const PixelView& picture, std::uint8_t* out) {
    const std::uint32_t* from = picture.pixels;
    // Most pixels of a widget are like their neighbour, and so are the next ones.
    Four last{};
    Four lastStraight{};
    for (std::uint32_t y = 0; y < picture.height; ++y) {
        *out++ = 0;
        for (const std::uint32_t* const end = from + picture.width; from != end;) {
            if (end - from >= 4 && std::memcmp(from, last.data(), sizeof last) == 0) {
                std::memcpy(out, lastStraight.data(), sizeof last);
                from += 4;
                out += sizeof last;
                continue;
            }
            if (*from != last[0]) {
                last.fill(*from);
                lastStraight.fill(straight(*from));
            }
            std::memcpy(out, lastStraight.data(), 4);
            ++from;
            out += 4;
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
    const std::size_t size = (std::size_t{picture.width} * 4 + 1) * picture.height;
    std::uint8_t* const rows = rows_.take(size);
    writeRows(picture, rows);

    // What does not compress is stored in blocks of less than 64 KiB with five bytes each, after the header.
    const std::size_t greatestSize = size + size / 8192 + 1024;
    std::uint8_t* const compressed = compressed_.take(greatestSize);
    isal_zstream stream;
    isal_deflate_stateless_init(&stream);
    stream.level = 1;
    stream.level_buf = work_.take(ISAL_DEF_LVL1_DEFAULT);
    stream.level_buf_size = ISAL_DEF_LVL1_DEFAULT;
    stream.gzip_flag = IGZIP_ZLIB;
    stream.end_of_stream = 1;
    stream.next_in = rows;
    stream.avail_in = static_cast<std::uint32_t>(size);
    stream.next_out = compressed;
    stream.avail_out = static_cast<std::uint32_t>(greatestSize);
    if (isal_deflate_stateless(&stream) != COMP_OK) {
        return {};
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

// Measurers without fonts: every character is half as wide as its font is high, and an image has its size as text.
#pragma once

#include "Host/Layout/Measures.h"
#include "Host/Layout/TextMeasurer.h"

#include <algorithm>
#include <cstdio>
#include <limits>

namespace host {

using Characters = std::vector<std::string>;

inline Characters charactersOf(std::string_view text) {
    Characters characters;
    for (const char byte : text) {
        const bool continues = (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
        if (!continues) {
            characters.emplace_back();
        }
        characters.back() += byte;
    }
    return characters;
}

/// Returns the end of the line that starts at `start` and holds `room` characters.
inline Characters::const_iterator lineEnd(Characters::const_iterator start, Characters::const_iterator end,
                                          std::ptrdiff_t room) {
    const auto newline = std::find(start, end, "\n");
    if (newline - start <= room) {
        return newline;
    }
    auto blank = start + room;
    while (blank != start && *blank != " ") {
        --blank;
    }
    return blank == start ? start + room : blank;
}

/// Breaks at blanks, and within words that are too long. A baseline lies 3 points above the lower edge of its line.
class FakeTexts final : public TextMeasurer {
  public:
    MeasuredText measure(const TextRequest& request) override {
        calls += 1;
        const TextMeasures measures = textMeasures(request.font);
        const double advance = measures.size / 2;
        const auto room =
            std::max<std::ptrdiff_t>(1, static_cast<std::ptrdiff_t>(request.width.value_or(1e9) / advance + 1e-9));
        const auto limit = static_cast<std::size_t>(request.lineLimit.value_or(std::numeric_limits<int>::max()));
        const Characters characters = charactersOf(request.text);

        MeasuredText measured{.baseline = measures.lineHeight - 3};
        auto start = characters.begin();
        for (bool more = true; more;) {
            auto end = lineEnd(start, characters.end(), room);
            more = end != characters.end();
            const auto next = more && (*end == " " || *end == "\n") ? end + 1 : end;
            std::string ending;
            if (more && measured.lines.size() + 1 == limit) {
                const auto newline = std::find(start, characters.end(), "\n");
                end = start + std::min(room - 1, newline - start);
                ending = "…";
                more = false;
            }
            TextLine line{.width = (static_cast<double>(end - start) + (ending.empty() ? 0 : 1)) * advance};
            std::for_each(start, end, [&](const std::string& character) { line.text += character; });
            line.text += ending;
            measured.lines.push_back(line);
            start = next;
        }
        return measured;
    }
    double ellipsisWidth(platform::Font font) override { return textMeasures(font).size / 2; }

    int calls = 0;
};

/// Reads the size of an image from bytes like "40x20".
class FakeImages final : public ImageMeasurer {
  public:
    std::optional<Size> imageSize(const platform::EncodedData& data) override {
        Size size;
        const std::string text(data.decoded().bytes());
        return std::sscanf(text.c_str(), "%lfx%lf", &size.width, &size.height) == 2 ? std::optional(size)
                                                                                    : std::nullopt;
    }
};

inline platform::EncodedData imageData(const char* text) {
    return {platform::Data::owning(text), platform::EncodedData::Encoding::raw};
}

} // namespace host

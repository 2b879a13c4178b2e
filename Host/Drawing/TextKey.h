// What texts are remembered by: the text, its font, and whatever else the answer depends on.
#pragma once

#include "Platform/Views/Style.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace host {

template <class Text>
struct BasicTextKey {
    Text text;
    platform::Font font;
    /// The width that is offered, or the scale that is drawn at.
    double extent = 0;
    /// The limit of lines, or the tone that is drawn in.
    int variant = 0;

    template <class Other>
    constexpr explicit BasicTextKey(const BasicTextKey<Other>& other)
        : text(other.text), font(other.font), extent(other.extent), variant(other.variant) {}
    BasicTextKey(Text text, platform::Font font, double extent = 0, int variant = 0)
        : text(std::move(text)), font(font), extent(extent), variant(variant) {}
    friend bool operator==(const BasicTextKey&, const BasicTextKey&) = default;
};

using TextKey = BasicTextKey<std::string>;
using TextSeek = BasicTextKey<std::string_view>;

struct TextHash {
    std::size_t operator()(const TextSeek& key) const {
        std::size_t hash = std::hash<std::string_view>()(key.text);
        const auto mix = [&](std::size_t value) { hash = (hash ^ value) * 0x9E3779B97F4A7C15U; };
        mix(static_cast<std::size_t>(key.font.style) * 2 + (key.font.weight ? 1 : 0));
        mix(std::hash<double>()(key.extent));
        mix(static_cast<std::size_t>(key.variant));
        return hash;
    }
};

} // namespace host

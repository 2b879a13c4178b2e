// The symbols' artwork: a table that the build makes from Resources/Symbols.
#pragma once

#include <span>
#include <string_view>

namespace host {

/// Strokes as path data, in a square of `symbolGrid` units, y downwards. All have the same width, with round caps and
/// joins; nothing is filled.
struct SymbolArtwork {
    std::string_view name;
    std::string_view pathData;
};

inline constexpr double symbolGrid = 24;
inline constexpr double symbolStroke = 1.75;

/// Returns all symbols, sorted by name.
std::span<const SymbolArtwork> symbolArtwork();

} // namespace host

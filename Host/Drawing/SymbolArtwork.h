// The symbols' artwork as it was drawn: Resources/Symbols, turned into a table when the program is built.
#pragma once

#include <span>
#include <string_view>

namespace host {

/// Strokes on a grid of `symbolGrid` units square, y downwards, as path data; all of one width, with round caps and
/// joins, nothing filled.
struct SymbolArtwork {
    std::string_view name;
    std::string_view pathData;
};

inline constexpr double symbolGrid = 24;
inline constexpr double symbolStroke = 1.75;

/// All symbols, in the order of their names' bytes.
std::span<const SymbolArtwork> symbolArtwork();

} // namespace host

// What the host itself says on a tile, drawn as widgets are: that its content is old, that it cannot be had, or, in the
// tile's place, a short message. Texts come from the caller, in the user's language.
#pragma once

#include "Host/Drawing/RenderedTile.h"

#include <optional>
#include <string>
#include <vector>

namespace host {

/// One line in small print, such as "as of 10:42".
platform::View asOfBadge(std::string text);

/// An exclamation mark in a circle.
platform::View failureMark();

/// Both in one, where the tile's top has something to say of its own.
platform::View failedAsOfBadge(std::string text);

struct MessageButton {
    std::string title;
    /// What a click on it is recognised by, as with any link.
    std::string url;
};

/// For the place of a whole tile: a title, what there is to say more, each on lines of its own, and what can be done
/// about it.
platform::View messageView(std::string title, std::vector<std::string> texts,
                           std::optional<MessageButton> button = std::nullopt);

enum class Corner { bottomTrailing, topTrailing };

/// How far a badge stands from the tile's edges, in points.
inline constexpr double badgeInset = 8;

/// Draws `badge` into a corner of the picture, at its own size, on an opaque capsule; one that is too large for the
/// tile is cut as texts are. `style` is the one that the tile was rendered in. Its items stay unchanged. Returns where
/// the badge is, in points; an empty rectangle if the tile has no picture.
Rect drawBadge(RenderedTile& rendered, const platform::View& badge, Corner corner, const TileStyle& style,
               Renderer& renderer);

} // namespace host

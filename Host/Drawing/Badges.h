// The host's own badges on a tile, which say that its content is old or missing, and messages in place of a tile. They
// are drawn as views. The caller passes the texts, in the user's language.
#pragma once

#include "Host/Drawing/RenderedTile.h"

#include <optional>
#include <string>
#include <vector>

namespace host {

/// A line of small text, such as "as of 10:42".
platform::View asOfBadge(std::string text);

/// An exclamation mark in a circle.
platform::View failureMark();

/// Both in one, if the tile's top has no room.
platform::View failedAsOfBadge(std::string text);

struct MessageButton {
    std::string title;
    /// Its link, which a click opens.
    std::string url;
};

/// Fills a whole tile: a title, further texts below each other, and a button.
platform::View messageView(std::string title, std::vector<std::string> texts,
                           std::optional<MessageButton> button = std::nullopt);

/// The distance of a badge from the tile's edges, in points.
inline constexpr double badgeInset = 8;

/// Draws `badge` into the picture's lower trailing corner, on an opaque capsule. Cuts its text if it is too long for the
/// tile. Requires the style that the tile was rendered in. Does not change the tile's items. Returns the badge's frame,
/// in points; an empty one if the tile has no picture.
Rect drawBadge(RenderedTile& rendered, const platform::View& badge, const TileStyle& style, Renderer& renderer);

} // namespace host

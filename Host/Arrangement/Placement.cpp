#include "Host/Arrangement/Placement.h"

#include "Host/Arrangement/FreePlace.h"
#include "Host/Arrangement/Snapping.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace host {
namespace {

std::optional<std::size_t> screenNamed(const std::string& name, const std::vector<Screen>& screens) {
    const auto found =
        std::find_if(screens.begin(), screens.end(), [&](const Screen& each) { return each.name == name; });
    return found == screens.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - screens.begin()));
}

double distance(Point point, const Rect& area) {
    const double dx = std::max({area.x - point.x, 0.0, point.x - area.right()});
    const double dy = std::max({area.y - point.y, 0.0, point.y - area.bottom()});
    return std::hypot(dx, dy);
}

/// Returns the arranged place, on its screen or off it; nothing without a position or without its screen.
std::optional<PlacedTile> arranged(const TileToPlace& tile, const std::vector<Screen>& screens) {
    const Instance& instance = *tile.instance;
    if (!instance.position) {
        return std::nullopt;
    }
    Point corner{instance.position->x, instance.position->y};
    std::size_t screen = 0;
    if (instance.output) {
        const auto named = screenNamed(*instance.output, screens);
        if (!named) {
            return std::nullopt;
        }
        screen = *named;
        corner = {corner.x + screens[screen].bounds.x, corner.y + screens[screen].bounds.y};
    } else {
        screen = screenAt(corner, screens);
    }
    const Rect frame{corner.x, corner.y, tile.size.width, tile.size.height};
    return PlacedTile{.id = instance.id, .screen = screen, .frame = frame};
}

bool overlap(const Rect& a, const Rect& b) {
    return a.x < b.right() && b.x < a.right() && a.y < b.bottom() && b.y < a.bottom();
}

} // namespace

std::size_t screenAt(Point point, const std::vector<Screen>& screens) {
    const auto nearest = std::min_element(screens.begin(), screens.end(), [&](const Screen& a, const Screen& b) {
        return distance(point, a.bounds) < distance(point, b.bounds);
    });
    return static_cast<std::size_t>(nearest - screens.begin());
}

std::vector<PlacedTile> placeTiles(const std::vector<TileToPlace>& tiles, const std::vector<Screen>& screens) {
    if (screens.empty()) {
        return {};
    }
    // Tiles on their screen come first, so that no other takes their places; then those off their screen.
    std::vector<std::optional<PlacedTile>> places;
    std::vector<std::vector<Rect>> taken(screens.size());
    std::vector<PlacedTile*> offScreen;
    places.reserve(tiles.size());
    for (const TileToPlace& tile : tiles) {
        auto& place = places.emplace_back(arranged(tile, screens));
        if (place && clampedTo(place->frame, screens[place->screen].area) != place->frame) {
            offScreen.push_back(&*place);
        } else if (place) {
            taken[place->screen].push_back(place->frame);
        }
    }
    for (PlacedTile* place : offScreen) {
        const Rect& area = screens[place->screen].area;
        auto& others = taken[place->screen];
        place->frame = clampedTo(place->frame, area);
        if (std::any_of(others.begin(), others.end(), [&](const Rect& each) { return overlap(each, place->frame); })) {
            const Point corner = freePlace({place->frame.width, place->frame.height}, others, area);
            place->frame = clampedTo({corner.x, corner.y, place->frame.width, place->frame.height}, area);
        }
        others.push_back(place->frame);
    }
    std::vector<PlacedTile> all;
    for (std::size_t index = 0; index < tiles.size(); ++index) {
        if (!places[index]) {
            const Instance& instance = *tiles[index].instance;
            const auto named = instance.output ? screenNamed(*instance.output, screens) : std::nullopt;
            const std::size_t screen = named.value_or(0);
            const Size size = tiles[index].size;
            const Point corner = freePlace(size, taken[screen], screens[screen].area);
            const Rect frame = clampedTo({corner.x, corner.y, size.width, size.height}, screens[screen].area);
            const bool isFallback = instance.output && !named;
            places[index] =
                PlacedTile{.id = instance.id,
                           .screen = screen,
                           .frame = frame,
                           .source = isFallback ? PlacedTile::Source::fallback : PlacedTile::Source::chosen};
            taken[screen].push_back(frame);
        }
        all.push_back(*places[index]);
    }
    return all;
}

} // namespace host

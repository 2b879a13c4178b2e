#include "Host/Arrangement/Snapping.h"

#include "Host/Arrangement/FreePlace.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

constexpr double gridStep = 8;
constexpr double snapDistance = 12;

/// One dimension of a rectangle.
struct Span {
    double start;
    double length;
    double end() const { return start + length; }
};

Span horizontal(const Rect& rect) {
    return {rect.x, rect.width};
}
Span vertical(const Rect& rect) {
    return {rect.y, rect.height};
}

double clampedTo(const Span& tile, const Span& screen) {
    return std::max(screen.start, std::min(tile.start, screen.end() - tile.length));
}

/// Returns whether tiles with these spans are in one row or column.
bool areNear(const Span& one, const Span& other) {
    return one.start <= other.end() + tileGap + snapDistance && other.start <= one.end() + tileGap + snapDistance;
}

double snapped(const Span& wanted, const std::vector<Span>& neighbours, const Span& screen) {
    const Span tile{clampedTo(wanted, screen), wanted.length};
    std::vector<double> starts{screen.start + tileGap, screen.end() - tileGap - tile.length};
    for (const Span& each : neighbours) {
        starts.insert(starts.end(),
                      {each.start, each.end() - tile.length, each.end() + tileGap, each.start - tileGap - tile.length});
    }
    const auto nearest = std::min_element(starts.begin(), starts.end(), [&](double a, double b) {
        return std::fabs(a - tile.start) < std::fabs(b - tile.start);
    });
    const double onGrid = screen.start + std::round((tile.start - screen.start) / gridStep) * gridStep;
    const double distance = std::min(std::fabs(*nearest - tile.start), std::fabs(*nearest - onGrid));
    const double start = distance <= snapDistance ? *nearest : onGrid;
    return clampedTo(Span{start, tile.length}, screen);
}

} // namespace

Rect clampedTo(const Rect& tile, const Rect& screen) {
    return {clampedTo(horizontal(tile), horizontal(screen)), clampedTo(vertical(tile), vertical(screen)), tile.width,
            tile.height};
}

Rect snapped(const Rect& tile, const std::vector<Rect>& neighbours, const Rect& screen) {
    std::vector<Span> rows;
    std::vector<Span> columns;
    for (const Rect& each : neighbours) {
        if (areNear(vertical(each), vertical(tile))) {
            rows.push_back(horizontal(each));
        }
        if (areNear(horizontal(each), horizontal(tile))) {
            columns.push_back(vertical(each));
        }
    }
    return {snapped(horizontal(tile), rows, horizontal(screen)), snapped(vertical(tile), columns, vertical(screen)),
            tile.width, tile.height};
}

} // namespace host

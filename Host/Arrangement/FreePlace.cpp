#include "Host/Arrangement/FreePlace.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace host {
namespace {

/// With more tiles, no gap is searched for: the search takes cubic time.
constexpr std::size_t maxSearched = 64;
constexpr std::size_t asideCount = 8;

bool isClear(const Rect& place, const std::vector<Rect>& taken) {
    return std::none_of(taken.begin(), taken.end(), [&](const Rect& each) {
        return place.x < each.right() + tileGap && each.x < place.right() + tileGap &&
               place.y < each.bottom() + tileGap && each.y < place.bottom() + tileGap;
    });
}

} // namespace

Point freePlace(Size size, const std::vector<Rect>& taken, const Rect& screen) {
    const Point corner{std::max(screen.x + tileGap, screen.right() - tileGap - size.width), screen.y + tileGap};
    if (taken.size() <= maxSearched) {
        std::vector<double> lefts{corner.x};
        std::vector<double> tops{corner.y};
        for (const Rect& each : taken) {
            lefts.push_back(each.x - tileGap - size.width);
            tops.push_back(each.bottom() + tileGap);
        }
        std::sort(lefts.begin(), lefts.end(), std::greater());
        std::sort(tops.begin(), tops.end());
        for (const double top : tops) {
            for (const double left : lefts) {
                const Rect place{left, top, size.width, size.height};
                const bool isOnScreen = left <= corner.x && top >= corner.y && left >= screen.x + tileGap &&
                                        place.bottom() + tileGap <= screen.bottom();
                if (isOnScreen && isClear(place, taken)) {
                    return {left, top};
                }
            }
        }
    }
    const double aside = tileGap * static_cast<double>(taken.size() % asideCount);
    return {std::max(screen.x, corner.x - aside), corner.y + aside};
}

std::vector<Rect> packTiles(const std::vector<Size>& sizes, double width) {
    constexpr double anyHeight = 1e6;
    std::vector<std::size_t> order(sizes.size());
    std::iota(order.begin(), order.end(), 0);
    std::vector<Rect> best;
    double minHeight = anyHeight;
    do {
        std::vector<Rect> frames(sizes.size());
        std::vector<Rect> taken;
        double height = 0;
        for (const std::size_t index : order) {
            const Size& size = sizes[index];
            const bool fits = size.width + 2 * tileGap <= width;
            const Point place =
                fits ? freePlace(size, taken, {0, 0, width, anyHeight}) : Point{tileGap, height + tileGap};
            taken.push_back({place.x, place.y, size.width, size.height});
            frames[index] = {fits ? width - taken.back().right() : place.x, place.y, size.width, size.height};
            height = std::max(height, frames[index].bottom());
        }
        if (height < minHeight) {
            minHeight = height;
            best = frames;
        }
    } while (std::next_permutation(order.begin(), order.end()));
    return best;
}

} // namespace host

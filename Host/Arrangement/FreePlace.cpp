#include "Host/Arrangement/FreePlace.h"

#include "Host/Arrangement/Spacing.h"

#include <algorithm>

namespace host {
namespace {

/// With more tiles than this no gap is searched for.
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
    const Point corner{screen.x + tileGap, screen.y + tileGap};
    if (taken.size() <= maxSearched) {
        std::vector<double> lefts{corner.x};
        std::vector<double> tops{corner.y};
        for (const Rect& each : taken) {
            lefts.push_back(each.right() + tileGap);
            tops.push_back(each.bottom() + tileGap);
        }
        std::sort(lefts.begin(), lefts.end());
        std::sort(tops.begin(), tops.end());
        for (const double top : tops) {
            for (const double left : lefts) {
                const Rect place{left, top, size.width, size.height};
                const bool isOnScreen = left >= corner.x && top >= corner.y &&
                                        place.right() + tileGap <= screen.right() &&
                                        place.bottom() + tileGap <= screen.bottom();
                if (isOnScreen && isClear(place, taken)) {
                    return {left, top};
                }
            }
        }
    }
    const double aside = tileGap * static_cast<double>(taken.size() % asideCount);
    return {corner.x + aside, corner.y + aside};
}

} // namespace host

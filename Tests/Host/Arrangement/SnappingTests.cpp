#include "Host/Arrangement/FreePlace.h"
#include "Host/Arrangement/Snapping.h"
#include "Host/Arrangement/Spacing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <vector>

namespace host {

void PrintTo(const Rect& rect, std::ostream* out) {
    *out << rect.x << "," << rect.y << " " << rect.width << "×" << rect.height;
}

namespace {

constexpr Rect screen{100, 50, 1200, 800};
constexpr Rect neighbour{500, 300, 364, 170};

struct SnappingCase {
    const char* what;
    Rect tile;
    Point expected;
};

TEST(Snapping, DrawsATileToWhatIsNear) {
    const std::vector<SnappingCase> cases{
        {"nothing near: the grid, which starts at the screen's corner", {203, 155, 170, 170}, {204, 154}},
        {"beside the neighbour, with the gap, its upper edge level", {883, 306, 170, 170}, {888, 300}},
        {"on the other side", {312, 306, 170, 170}, {306, 300}},
        {"below it, its left edge level", {507, 489, 170, 170}, {500, 494}},
        {"right edges level", {701, 485, 170, 170}, {694, 494}},
        {"too far for its gap", {902, 600, 170, 170}, {900, 602}},
        {"the screen's margin", {115, 80, 170, 170}, {124, 74}},
        {"the lower right margin", {1110, 650, 170, 170}, {1106, 656}},
        {"off the screen: back to its edge", {5000, -5000, 170, 170}, {1130, 50}},
        {"larger than the screen: its corner", {300, 300, 2000, 900}, {100, 50}},
    };
    for (const SnappingCase& each : cases) {
        const Rect expected{each.expected.x, each.expected.y, each.tile.width, each.tile.height};
        EXPECT_EQ(snapped(each.tile, {neighbour}, screen), expected) << each.what;
    }
}

TEST(Snapping, StaysOnTheScreenAndSoonComesToRest) {
    std::mt19937 random(7); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same places each time
    std::uniform_real_distribution<double> place(-200, 1600);
    for (int round = 0; round < 2000; ++round) {
        const Rect once = snapped({place(random), place(random), 364, 170}, {neighbour}, screen);
        ASSERT_GE(once.x, screen.x);
        ASSERT_LE(once.bottom(), screen.bottom());
        // A move along one axis may bring another neighbour near on the other.
        const Rect twice = snapped(once, {neighbour}, screen);
        ASSERT_EQ(snapped(twice, {neighbour}, screen), twice);
    }
}

bool keepsItsDistance(const Rect& a, const Rect& b) {
    return a.right() + tileGap <= b.x || b.right() + tileGap <= a.x || a.bottom() + tileGap <= b.y ||
           b.bottom() + tileGap <= a.y;
}

TEST(FreePlace, FillsTheScreenWithoutOverlapAndThenGoesOnAside) {
    const std::vector<Size> sizes{{364, 170}, {170, 170}, {364, 364}, {170, 170}};
    std::vector<Rect> taken;
    std::size_t freeCount = 0;
    for (std::size_t count = 0; count < 100; ++count) {
        const Size size = sizes[count % sizes.size()];
        const Point corner = freePlace(size, taken, screen);
        const Rect place{corner.x, corner.y, size.width, size.height};
        ASSERT_GE(place.x, screen.x);
        ASSERT_GE(place.y, screen.y + tileGap);
        ASSERT_LE(place.right(), screen.right());
        const bool isFree =
            std::all_of(taken.begin(), taken.end(), [&](const Rect& each) { return keepsItsDistance(place, each); });
        EXPECT_TRUE(isFree || count >= 7) << "tile " << count << " has room";
        freeCount += isFree ? 1 : 0;
        taken.push_back(place);
    }
    EXPECT_EQ(taken.front(), (Rect{912, 74, 364, 170}));
    EXPECT_LT(freeCount, taken.size());
}

constexpr Size small{170, 170};
constexpr Size medium{364, 170};
constexpr Size large{364, 364};
constexpr Size extraLarge{752, 364};

struct PackingCase {
    double width;
    std::vector<Size> sizes;
    /// The upper left corners.
    std::vector<Point> expected;
};

TEST(PackTiles, TakesTheLeastHeight) {
    const std::vector<PackingCase> cases{
        {800, {small, medium, large, extraLarge}, {{24, 218}, {24, 24}, {412, 24}, {24, 412}}},
        {1600, {small, medium, large, extraLarge}, {{24, 218}, {24, 24}, {412, 24}, {800, 24}}},
        {799, {small, medium, large, extraLarge}, {{24, 24}, {218, 24}, {24, 218}, {24, 606}}},
        {300, {small, medium, small}, {{24, 24}, {24, 218}, {24, 412}}},
        {1000, {small, small}, {{24, 24}, {218, 24}}},
        {0, {small}, {{24, 24}}},
        {800, {}, {}},
    };
    for (const PackingCase& each : cases) {
        std::vector<Point> corners;
        for (const Rect& frame : packTiles(each.sizes, each.width)) {
            corners.push_back({frame.x, frame.y});
        }
        EXPECT_EQ(corners, each.expected) << each.width;
    }
}

} // namespace
} // namespace host

#include "Host/Arrangement/FreePlace.h"
#include "Host/Arrangement/Placement.h"
#include "Host/Arrangement/Snapping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace host {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Screen left{.name = "DP-1", .bounds = {0, 0, 1280, 800}, .area = {0, 30, 1280, 770}};
const Screen right{.name = "HDMI-1", .bounds = {1280, 0, 1920, 1080}, .area = {1280, 0, 1920, 1080}};

struct Wish {
    std::optional<std::string> output;
    std::optional<Position> position;
};

/// Returns the screen of each tile, its place there, and the place's source.
std::vector<std::string> placed(const std::vector<Wish>& wishes, const std::vector<Screen>& screens = {left, right}) {
    std::vector<Instance> instances;
    for (const Wish& wish : wishes) {
        instances.push_back({.output = wish.output, .position = wish.position, .unknown = {}});
    }
    std::vector<TileToPlace> tiles;
    for (const Instance& instance : instances) {
        tiles.push_back({&instance, {170, 170}});
    }
    std::vector<std::string> all;
    for (const PlacedTile& place : placeTiles(tiles, screens)) {
        const Screen& screen = screens[place.screen];
        const char* const sources[] = {"arranged", "chosen", "fallback"};
        all.push_back(screen.name + " " + std::to_string(static_cast<int>(place.frame.x - screen.bounds.x)) + "," +
                      std::to_string(static_cast<int>(place.frame.y - screen.bounds.y)) + " " +
                      sources[static_cast<int>(place.source)]);
    }
    return all;
}

TEST(Placement, KeepsToTheArrangementAndElseFindsFreePlaces) {
    EXPECT_THAT(placed({{"HDMI-1", Position{100, 200}}, {"DP-1", Position{10, 40}}, {{}, Position{1400, 50}}}),
                ElementsAre("HDMI-1 100,200 arranged", "DP-1 10,40 arranged", "HDMI-1 120,50 arranged"));
    EXPECT_THAT(placed({{}, {"DP-1", Position{1086, 54}}, {"HDMI-1", {}}}),
                ElementsAre("DP-1 892,54 chosen", "DP-1 1086,54 arranged", "HDMI-1 1726,24 chosen"));
}

TEST(Placement, PullsBackWhatNoScreenHas) {
    EXPECT_THAT(placed({{"DP-1", Position{5000, 5000}},
                        {"DP-1", Position{-300, 0}},
                        {{}, Position{-99'999, 99'999}},
                        {{}, Position{99'999, 0}},
                        // Not over each other, nor over one that lies where it was put, in any order.
                        {"DP-1", Position{5000, 5000}},
                        {"HDMI-1", Position{99'999, 99'999}},
                        {"HDMI-1", Position{1700, 900}}}),
                ElementsAre("DP-1 1110,630 arranged", "DP-1 0,30 arranged", "DP-1 0,630 arranged",
                            "HDMI-1 1750,0 arranged", "DP-1 1086,54 arranged", "HDMI-1 1556,24 arranged",
                            "HDMI-1 1700,900 arranged"));
}

TEST(Placement, MovesTilesWhileTheirScreenIsAway) {
    const std::vector<Wish> both{{"DP-1", Position{24, 54}}, {"HDMI-1", Position{24, 54}}};
    EXPECT_THAT(placed(both, {left}), ElementsAre("DP-1 24,54 arranged", "DP-1 1086,54 fallback"));
    EXPECT_THAT(placed(both, {right}), ElementsAre("HDMI-1 1726,24 fallback", "HDMI-1 24,54 arranged"));
    EXPECT_THAT(placed(both, {}), IsEmpty());
}

constexpr Rect screen{100, 50, 1200, 800};
constexpr Rect neighbour{500, 300, 364, 170};
constexpr Size small{170, 170};
constexpr Size medium{364, 170};
constexpr Size large{364, 364};
constexpr Size extraLarge{752, 364};

TEST(Snapping, DrawsATileToWhatIsNear) {
    struct Row {
        const char* what;
        Rect tile;
        Point expected;
    };
    for (const Row& each : std::vector<Row>{
             {"nothing near: the grid, which starts at the screen's corner", {203, 155, 170, 170}, {204, 154}},
             {"beside the neighbour, with the gap, its upper edge level", {883, 306, 170, 170}, {888, 300}},
             {"on the other side", {312, 306, 170, 170}, {306, 300}},
             {"below it, its left edge level, just near enough", {512, 489, 170, 170}, {500, 494}},
             {"right edges level", {701, 485, 170, 170}, {694, 494}},
             {"too far for its gap", {902, 600, 170, 170}, {900, 602}},
             {"the screen's margin", {115, 80, 170, 170}, {124, 74}},
             {"the lower right margin", {1110, 650, 170, 170}, {1106, 656}},
             {"off the screen: back to its edge", {5000, -5000, 170, 170}, {1130, 50}},
             {"off the screen at the other corner", {-900, 5000, 170, 170}, {100, 680}},
             {"larger than the screen: its corner", {300, 300, 2000, 900}, {100, 50}},
         }) {
        const Rect expected{each.expected.x, each.expected.y, each.tile.width, each.tile.height};
        EXPECT_EQ(snapped(each.tile, {neighbour}, screen), expected) << each.what;
    }
}

bool keepsItsDistance(const Rect& a, const Rect& b) {
    return a.right() + tileGap <= b.x || b.right() + tileGap <= a.x || a.bottom() + tileGap <= b.y ||
           b.bottom() + tileGap <= a.y;
}

TEST(FreePlace, FillsTheScreenWithoutOverlapAndThenGoesOnAside) {
    const std::vector<Size> sizes{medium, small, large, small};
    std::vector<Rect> taken;
    for (std::size_t count = 0; count < 100; ++count) {
        const Size size = sizes[count % sizes.size()];
        const Point corner = freePlace(size, taken, screen);
        const Rect place{corner.x, corner.y, size.width, size.height};
        ASSERT_GE(place.x, screen.x);
        ASSERT_GE(place.y, screen.y + tileGap);
        ASSERT_LE(place.right(), screen.right());
        const bool isFree =
            std::all_of(taken.begin(), taken.end(), [&](const Rect& each) { return keepsItsDistance(place, each); });
        EXPECT_TRUE(isFree ? place.bottom() + tileGap <= screen.bottom() : count >= 7) << "tile " << count;
        taken.push_back(place);
    }
    EXPECT_EQ(taken.front(), (Rect{912, 74, 364, 170}));
}

TEST(PackTiles, NeedsTheSmallestHeight) {
    struct Row {
        double width;
        std::vector<Size> sizes;
        /// The upper left corners.
        std::vector<Point> expected;
    };
    for (const Row& each : std::vector<Row>{
             {800, {small, medium, large, extraLarge}, {{24, 218}, {24, 24}, {412, 24}, {24, 412}}},
             {1600, {small, medium, large, extraLarge}, {{24, 218}, {24, 24}, {412, 24}, {800, 24}}},
             {799, {small, medium, large, extraLarge}, {{24, 24}, {218, 24}, {24, 218}, {24, 606}}},
             {300, {small, medium, small}, {{24, 24}, {24, 218}, {24, 412}}},
             {1000, {small, small}, {{24, 24}, {218, 24}}},
             {0, {small}, {{24, 24}}},
             {800, {}, {}},
         }) {
        std::vector<Point> corners;
        for (const Rect& frame : packTiles(each.sizes, each.width)) {
            corners.push_back({frame.x, frame.y});
        }
        EXPECT_EQ(corners, each.expected) << each.width;
    }
}

} // namespace
} // namespace host

#include "Host/Arrangement/Placement.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

TEST(Placement, KeepsToTheArrangement) {
    EXPECT_THAT(placed({{"HDMI-1", Position{100, 200}}, {"DP-1", Position{10, 40}}, {{}, Position{1400, 50}}}),
                ElementsAre("HDMI-1 100,200 arranged", "DP-1 10,40 arranged", "HDMI-1 120,50 arranged"));
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

TEST(Placement, FindsFreePlaces) {
    EXPECT_THAT(placed({{}, {"DP-1", Position{1086, 54}}, {"HDMI-1", {}}}),
                ElementsAre("DP-1 892,54 chosen", "DP-1 1086,54 arranged", "HDMI-1 1726,24 chosen"));
}

TEST(Placement, MovesTilesWhileTheirScreenIsAway) {
    const std::vector<Wish> both{{"DP-1", Position{24, 54}}, {"HDMI-1", Position{24, 54}}};
    EXPECT_THAT(placed(both, {left}), ElementsAre("DP-1 24,54 arranged", "DP-1 1086,54 fallback"));
    EXPECT_THAT(placed(both, {right}), ElementsAre("HDMI-1 1726,24 fallback", "HDMI-1 24,54 arranged"));
    EXPECT_THAT(placed(both, {}), IsEmpty());
}

} // namespace
} // namespace host

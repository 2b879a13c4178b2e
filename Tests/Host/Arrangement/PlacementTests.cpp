#include "Host/Arrangement/Placement.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace host {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Screen left{.name = "DP-1", .bounds = {0, 0, 1280, 800}, .area = {0, 30, 1280, 770}};
const Screen right{.name = "HDMI-1", .bounds = {1280, 0, 1920, 1080}, .area = {1280, 0, 1920, 1080}};

/// Places tiles of one size, and says where: the screen's name, the place on it, and whose choice that was.
class PlacementTest : public ::testing::Test {
  public:
    void add(std::optional<std::string> output, std::optional<Position> position) {
        instances.push_back({.id = static_cast<InstanceId>(instances.size() + 1),
                             .extension = "x",
                             .kind = "K",
                             .family = "small",
                             .configuration = {},
                             .output = std::move(output),
                             .position = position});
    }
    std::vector<std::string> placed(const std::vector<Screen>& screens) const {
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
    std::vector<Instance> instances;
};

TEST_F(PlacementTest, KeepsToTheArrangement) {
    add("HDMI-1", Position{100, 200});
    add("DP-1", Position{10, 40});
    add(std::nullopt, Position{1400, 50});
    EXPECT_THAT(placed({left, right}),
                ElementsAre("HDMI-1 100,200 arranged", "DP-1 10,40 arranged", "HDMI-1 120,50 arranged"));
}

TEST_F(PlacementTest, PullsBackWhatNoScreenHas) {
    add("DP-1", Position{5000, 5000});
    add("DP-1", Position{-300, 0});
    add(std::nullopt, Position{-99'999, 99'999});
    add(std::nullopt, Position{99'999, 0});
    // Not over each other, nor over one that is where it was put, whichever of them comes first.
    add("DP-1", Position{5000, 5000});
    add("HDMI-1", Position{99'999, 99'999});
    add("HDMI-1", Position{1700, 900});
    EXPECT_THAT(placed({left, right}),
                ElementsAre("DP-1 1110,630 arranged", "DP-1 0,30 arranged", "DP-1 0,630 arranged",
                            "HDMI-1 1750,0 arranged", "DP-1 1086,54 arranged", "HDMI-1 1556,24 arranged",
                            "HDMI-1 1700,900 arranged"));
}

TEST_F(PlacementTest, FindsPlacesThatNobodyHas) {
    add(std::nullopt, std::nullopt);
    add("DP-1", Position{1086, 54});
    add("HDMI-1", std::nullopt);
    EXPECT_THAT(placed({left, right}),
                ElementsAre("DP-1 892,54 chosen", "DP-1 1086,54 arranged", "HDMI-1 1726,24 chosen"));
}

TEST_F(PlacementTest, MovesTilesAsLongAsTheirScreenIsAway) {
    add("DP-1", Position{24, 54});
    add("HDMI-1", Position{24, 54});
    EXPECT_THAT(placed({left, right}), ElementsAre("DP-1 24,54 arranged", "HDMI-1 24,54 arranged"));
    EXPECT_THAT(placed({left}), ElementsAre("DP-1 24,54 arranged", "DP-1 1086,54 fallback"));
    EXPECT_THAT(placed({right}), ElementsAre("HDMI-1 1726,24 fallback", "HDMI-1 24,54 arranged"));
    EXPECT_THAT(placed({}), IsEmpty());
}

} // namespace
} // namespace host

#include "Host/Arrangement/Arrangement.h"

#include <gtest/gtest.h>

#include <limits>

namespace host {
namespace {

Instance favorites(InstanceId id = 0) {
    return {.id = id,
            .extension = "net.foliovault.widgets",
            .kind = "FavoritesWidget",
            .family = "medium",
            .configuration = {{"group", "Work"}},
            .output = "DP-1",
            .position = Position{40, 60},
            .unknown = {{"opacity", "0.5"}}};
}

Arrangement three() {
    return {.instances = {favorites(1), favorites(2), favorites(5)}, .nextId = 7, .unknown = {{"theme", "\"dark\""}}};
}

TEST(Arrangement, ChangesWhatIsNamedAndNothingElse) {
    struct Row {
        ArrangementChange change;
        void (*alter)(Arrangement& expected, Instance& second);
    };
    using A = Arrangement;
    using I = Instance;
    for (const auto& [change, alter] : std::initializer_list<Row>{
             {Edit{2, {{"group", "Home"}}},
              [](A&, I&it) {
                  it.configuration = {{"group", "Home"}};
              }},
             {Edit{2, {{"sort", "name"}}}, [](A&, I&it) { it.configuration.emplace("sort", "name"); }},
             {Move{2, {-0.5, 100'000}, {}},
              [](A&, I&it) {
                  it.position = {-0.5, 100'000};
              }},
             {Move{2, {40, 60}, "HDMI-A-1"}, [](A&, I&it) { it.output = "HDMI-A-1"; }},
             {Resizing{2, "small"}, [](A&, I&it) { it.family = "small"; }},
             {Locking{true}, [](A&all, I&) { all.locked = true; }},
             {SetRenderingMode{"tinted"}, [](A&all, I&) { all.renderingMode = "tinted"; }}}) {
        Arrangement expected = three();
        alter(expected, expected.instances[1]);
        const auto found = applied(three(), change);
        ASSERT_TRUE(found) << found.error().message;
        EXPECT_TRUE(*found == expected) << change.index();
    }
}

TEST(Arrangement, GivesNoIdTwiceButTakesARemovalBack) {
    Arrangement arrangement;
    const auto apply = [&](const ArrangementChange& change) { arrangement = *applied(arrangement, change); };
    apply(Addition{favorites(77)});
    apply(Addition{favorites(77)});
    apply(Removal{2});
    apply(Addition{favorites()});
    apply(Removal{1});
    EXPECT_TRUE((arrangement == Arrangement{.instances = {favorites(3)}, .nextId = 4}));
    apply(Removal{3});
    apply(Addition{favorites()});
    apply(Restoration{favorites(3)});
    EXPECT_TRUE((arrangement == Arrangement{.instances = {favorites(4), favorites(3)}, .nextId = 5}));
}

TEST(Arrangement, RefusesInWords) {
    Arrangement full = three();
    full.instances.resize(Arrangement::maxCount, favorites(6));
    Arrangement exhausted = three();
    exhausted.nextId = std::numeric_limits<InstanceId>::max();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    struct Row {
        Arrangement arrangement;
        ArrangementChange change;
        const char* says;
    };
    for (const auto& [arrangement, change, says] : std::initializer_list<Row>{
             {three(), Removal{3}, "there is no widget 3; there are 1, 2, 5"},
             {three(), Restoration{favorites(2)}, "there is no removed widget 2"},
             {three(), Restoration{favorites(7)}, "there is no removed widget 7"},
             {three(), SetRenderingMode{"sepia"}, "there is no mode \"sepia\"; there are fullColor, tinted, vibrant"},
             {three(), Move{7, {1, 2}, {}}, "there is no widget 7; there are 1, 2, 5"},
             {{}, Removal{1}, "there is no widget 1; no widget is placed"},
             {full, Addition{favorites()}, "there are 1000 widgets already, which is the maximum"},
             {exhausted, Addition{favorites()}, "all ids are used up; only a new arrangement starts at 1 again"},
             {three(), Resizing{1, ""}, "extension, kind or family is missing"},
             {three(), Resizing{1, "\xC0"}, "the name of the extension, the kind or the family is not UTF-8"},
             {three(), Edit{1, {{"gr\xED\xA0\x80", "x"}}}, "a setting is not UTF-8"},
             {three(), Move{1, {1, 2}, ""}, "the name of the output is empty or not UTF-8"},
             {three(), Move{1, {100'000.5, 2}, {}}, "the position is not within ±100000"},
             {three(), Move{1, {0, nan}, {}}, "the position is not within ±100000"}}) {
        const auto found = applied(arrangement, change);
        ASSERT_FALSE(found) << says;
        EXPECT_EQ(found.error().message, says);
    }
}

} // namespace
} // namespace host

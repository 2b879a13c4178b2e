#include "Host/Arrangement/ArrangementJson.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace host {
namespace {

using ::testing::ElementsAre;

const Arrangement example{
    .instances = {{.id = 1,
                   .extension = "net.foliovault.widgets",
                   .kind = "FavoritesWidget",
                   .family = "medium",
                   .configuration = {{"group", "Ünï \"x\"\n"}, {"sort", ""}},
                   .output = "DP-1",
                   .position = Position{-4.5, 60},
                   .unknown = {{"opacity", "0.5"}, {"\"", "[1,{\"a\":null}]"}}},
                  {.id = 8, .extension = "net.foliovault.widgets", .kind = "TipsWidget", .family = "small"}},
    .nextId = 12,
    .locked = true,
    .renderingMode = "tinted",
    .unknown = {{"theme", "{\"dark\":true}"}}};

const std::string exampleJson =
    R"({"version":1,"nextId":12,"locked":true,"renderingMode":"tinted","theme":{"dark":true},"instances":[
{"id":1,"extension":"net.foliovault.widgets","kind":"FavoritesWidget","family":"medium",)"
    R"("configuration":{"group":"Ünï \"x\"\n","sort":""},"output":"DP-1","position":[-4.5,60],)"
    R"("\"":[1,{"a":null}],"opacity":0.5},
{"id":8,"extension":"net.foliovault.widgets","kind":"TipsWidget","family":"small"}
]}
)";

std::string listing(const std::string& instances) {
    return R"({"version":1,"instances":[)" + instances + "]}";
}

std::string plain(const std::string& id, const std::string& more = "") {
    return R"({"id":)" + id + R"(,"extension":"e","kind":"k","family":"f")" + more + "}";
}

TEST(ArrangementJson, IsWrittenOneInstanceALineAndReadAgain) {
    EXPECT_EQ(arrangementJson(example), exampleJson);
    const auto read = arrangementFromJson(exampleJson);
    ASSERT_TRUE(read) << read.error().message;
    EXPECT_TRUE(*read == example);
    EXPECT_EQ(arrangementJson({}), "{\"version\":1,\"nextId\":1,\"instances\":[\n]}\n");
    EXPECT_TRUE(*arrangementFromJson(arrangementJson({})) == Arrangement{});
    EXPECT_EQ(instancesJson({}), "[]");
}

TEST(ArrangementJson, TellsWhatIsWrong) {
    using Row = std::pair<std::string, const char*>;
    for (const auto& [json, reason] : std::initializer_list<Row>{
             {R"({"version":1,"instances":["\xFF"]})", "not a JSON object"},
             {R"({"version":1,"instances":[],"locked":1})", "\"locked\": not a boolean"},
             {R"({"version":"2","instances":[]})", "\"version\": missing or not a version"},
             {R"({"version":1})", "\"instances\": missing"},
             {R"({"version":1,"instances":[],"a\nb":1,"a\nb":1})", "\"a\\nb\" is there twice"},
             {R"({"version":1,"nextId":4294967296,"instances":[]})", "\"nextId\": not an id"},
             {listing("7"), "\"instances\": no. 1: not an object"},
             {listing(plain("1") + ",{}"), "\"instances\": no. 2: without an id"},
             {listing(plain("1") + "," + plain("2") + "," + plain("1")), "\"instances\": two have the id 1"},
             {listing(plain("4294967295")), "\"instances\": no. 1: \"id\": not an id"},
             {listing(R"({"id":1,"kind":"k","family":"f"})"),
              "\"instances\": no. 1: extension, kind or family is missing"},
             {listing(plain("1", R"(,"configuration":{"a":"","a":""})")),
              "\"instances\": no. 1: \"configuration\": \"a\" is there twice"},
             {listing(plain("1", R"(,"output":null)")), "\"instances\": no. 1: \"output\": not a text"},
             {listing(plain("1", R"(,"position":[1,2,3])")), "\"instances\": no. 1: \"position\": not two numbers"},
         }) {
        const auto read = arrangementFromJson(json);
        ASSERT_FALSE(read) << json;
        EXPECT_EQ(read.error().kind, platform::Failure::Kind::malformed) << json;
        EXPECT_EQ(read.error().message, reason) << json;
    }
    const auto newer = arrangementFromJson(R"({"x":1,"x":2,"version":2})");
    EXPECT_EQ(newer.error().kind, platform::Failure::Kind::unreadable);
}

TEST(ArrangementJson, HasBounds) {
    for (const std::size_t count : {Arrangement::maxCount, Arrangement::maxCount + 1}) {
        std::string instances;
        for (std::size_t id = 1; id <= count; ++id) {
            instances += (id > 1 ? "," : "") + plain(std::to_string(id));
        }
        EXPECT_EQ(static_cast<bool>(arrangementFromJson(listing(instances))), count <= Arrangement::maxCount);
    }
    std::string large = exampleJson;
    large.resize(maxArrangementFileSize, ' ');
    EXPECT_TRUE(arrangementFromJson(large));
    EXPECT_FALSE(arrangementFromJson(large + ' '));
}

TEST(ArrangementJson, HasWhatALaterProgramWrote) {
    const auto nextId = [](const std::string& json) { return arrangementFromJson(json)->nextId; };
    EXPECT_EQ(nextId(R"({"nextId":2,"version":1,"instances":[)" + plain("7") + "," + plain("3") + "]}"), 8U);
    EXPECT_EQ(nextId(R"({"version":1,"instances":[)" + plain("7") + R"(],"nextId":20})"), 20U);
    EXPECT_EQ(nextId(listing(plain("4294967294"))), 4'294'967'295U);
    const auto mode = arrangementFromJson(R"({"version":1,"instances":[],"renderingMode":"sepia"})");
    EXPECT_EQ(mode->renderingMode, "fullColor") << "instead of an unknown one";
}

TEST(Arrangement, ChangesWhatIsNamedAndNothingElse) {
    using Row = std::tuple<ArrangementChange, std::string_view, const char*>;
    for (const auto& [change, from, to] :
         std::initializer_list<Row>{{Edit{1, {{"group", "Home"}}}, R"("Ünï \"x\"\n")", R"("Home")"},
                                    {Edit{8, {{"a", "b"}}}, R"("small")", R"("small","configuration":{"a":"b"})"},
                                    {Move{1, {-0.5, 100'000}, {}}, "[-4.5,60]", "[-0.5,100000]"},
                                    {Move{1, {-4.5, 60}, "HDMI-A-1"}, "DP-1", "HDMI-A-1"},
                                    {Resizing{8, "large"}, "small", "large"},
                                    {Locking{false}, R"("locked":true,)", ""},
                                    {SetRenderingMode{"vibrant"}, "tinted", "vibrant"}}) {
        std::string expected = exampleJson;
        expected.replace(expected.find(from), from.size(), to);
        const auto found = applied(example, change);
        ASSERT_TRUE(found) << found.error().message;
        EXPECT_EQ(arrangementJson(*found), expected);
    }
}

TEST(Arrangement, GivesNoIdTwiceButTakesARemovalBack) {
    Arrangement arrangement = example;
    const auto apply = [&](const ArrangementChange& change) {
        arrangement = *applied(arrangement, change);
        std::vector<InstanceId> ids;
        for (const Instance& instance : arrangement.instances) {
            ids.push_back(instance.id);
        }
        return ids;
    };
    const Instance first = example.instances[0];
    EXPECT_THAT(apply(Addition{first}), ElementsAre(1, 8, 12));
    EXPECT_THAT(apply(Removal{12}), ElementsAre(1, 8));
    EXPECT_THAT(apply(Addition{first}), ElementsAre(1, 8, 13));
    EXPECT_THAT(apply(Removal{1}), ElementsAre(8, 13));
    EXPECT_THAT(apply(Restoration{first}), ElementsAre(8, 13, 1));
    EXPECT_TRUE(arrangement.instances[2] == first);
    EXPECT_EQ(arrangement.nextId, 14U);
}

TEST(Arrangement, RefusesInWords) {
    Arrangement full = example;
    full.instances.resize(Arrangement::maxCount, full.instances[0]);
    Arrangement exhausted = example;
    exhausted.nextId = std::numeric_limits<InstanceId>::max();
    const auto withId = [](InstanceId id) {
        Instance instance = example.instances[0];
        instance.id = id;
        return instance;
    };
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    using Row = std::tuple<Arrangement, ArrangementChange, const char*>;
    for (const auto& [arrangement, change, says] : std::initializer_list<Row>{
             {example, Removal{3}, "there is no widget 3; there are 1, 8"},
             {example, Restoration{withId(1)}, "there is no removed widget 1"},
             {example, Restoration{withId(12)}, "there is no removed widget 12"},
             {example, SetRenderingMode{"sepia"}, "there is no mode \"sepia\"; there are fullColor, tinted, vibrant"},
             {example, Move{7, {1, 2}, {}}, "there is no widget 7; there are 1, 8"},
             {{}, Removal{1}, "there is no widget 1; no widget is placed"},
             {full, Addition{withId(0)}, "there are 1000 widgets already, which is the maximum"},
             {exhausted, Addition{withId(0)}, "all ids are used up; only a new arrangement starts at 1 again"},
             {example, Resizing{1, ""}, "extension, kind or family is missing"},
             {example, Resizing{1, "\xC0"}, "the name of the extension, the kind or the family is not UTF-8"},
             {example, Edit{1, {{"gr\xED\xA0\x80", "x"}}}, "a setting is not UTF-8"},
             {example, Move{1, {1, 2}, ""}, "the name of the output is empty or not UTF-8"},
             {example, Move{1, {100'000.5, 2}, {}}, "the position is not within ±100000"},
             {example, Move{1, {0, nan}, {}}, "the position is not within ±100000"}}) {
        const auto found = applied(arrangement, change);
        ASSERT_FALSE(found) << says;
        EXPECT_EQ(found.error().message, says);
    }
}

} // namespace
} // namespace host

#include "Host/Arrangement/ArrangementJson.h"

#include <gtest/gtest.h>

namespace host {
namespace {

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
    struct Row {
        std::string json;
        const char* reason;
    };
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

TEST(ArrangementJson, IsBrokenWhereverItIsCut) {
    for (std::size_t size = 0; size + 1 < exampleJson.size(); ++size) {
        EXPECT_FALSE(arrangementFromJson(exampleJson.substr(0, size))) << size;
    }
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

} // namespace
} // namespace host

#include "Extension/Tips/TipsCache.h"

#include <gtest/gtest.h>

namespace foliovault {
namespace {

const TipItem tip{.title = "T \"1\"", .description = "d\u00E9\n", .link = "l", .pubDate = {0}, .guid = "g"};

TEST(TipsCache, IsWrittenAsOneObjectWithDatesOfTheReferenceEpoch) {
    EXPECT_EQ(encoded({.timestamp = {794823030.25}, .tips = {}}), R"({"timestamp":794823030.25,"tips":[]})");
    EXPECT_EQ(encoded({.timestamp = {1}, .tips = {tip}}),
              R"({"timestamp":1,"tips":[{"title":"T \"1\"","description":"dé\n","link":"l","pubDate":0,"guid":"g"}]})");
}

TEST(TipsCache, ComesBackAsItWas) {
    const CachedTips cache{.timestamp = {0.1 + 0.2}, .tips = {tip, {.title = "2", .pubDate = {-1e9 / 3}}, tip}};
    const auto back = decodedCache(encoded(cache));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->timestamp, cache.timestamp);
    EXPECT_EQ(back->tips, cache.tips);
}

TEST(TipsCache, IsReadStrictly) {
    const std::string good = R"({"title":"t","description":"","link":"l","pubDate":5,"guid":"g"})";
    const auto with = [](const std::string& tips) { return R"({"timestamp":1,"tips":)" + tips + "}"; };
    const std::string readable[]{
        with("[]"),
        with("[" + good + "]"),
        "\n {\"tips\" : [ " + good + " ], \"timestamp\" : 1.5e8 }\n",
        R"({"more":{"deep":[null]},"timestamp":0,"tips":[{"x":1,"title":"","description":"","link":"","pubDate":-1,"guid":""}]})",
    };
    for (const std::string& json : readable) {
        EXPECT_TRUE(decodedCache(json)) << json;
    }
    const auto expectRefused = [](const auto&... files) {
        for (const std::string& json : {std::string(files)...}) {
            EXPECT_FALSE(decodedCache(json)) << json.substr(0, 120);
        }
    };
    expectRefused("", R"({"tips":[]})", R"({"timestamp":1})", R"({"timestamp":true,"tips":[]})",
                  R"({"timestamp":1e999,"tips":[]})", R"({"timestamp":1,"tips":{}})", R"({"timestamp":1,"tips":[]} x)",
                  with("[]") + '\0', R"({"timestamp":1,"tips":[],})", with("[null]"),
                  with("[" + good + R"(,{"title":"t","description":"","link":"l","pubDate":5}])"),
                  with(R"([{"title":null,"description":"","link":"l","pubDate":5,"guid":"g"}])"),
                  with(R"([{"title":1,"description":"","link":"l","pubDate":5,"guid":"g"}])"),
                  with(R"([{"title":"t","description":"","link":"l","pubDate":"5","guid":"g"}])"),
                  with(R"([{"title":"t","description":"","link":"l","pubDate":true,"guid":"g"}])"),
                  with("[{\"title\":\"\xff\",\"description\":\"\",\"link\":\"l\",\"pubDate\":5,\"guid\":\"g\"}]"),
                  with(R"([{"title":"\ud800","description":"","link":"l","pubDate":5,"guid":"g"}])"),
                  std::string(1'000'000, '['));
    const std::string whole = with("[" + good + "]");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(decodedCache(whole.substr(0, length))) << length;
    }
}

} // namespace
} // namespace foliovault

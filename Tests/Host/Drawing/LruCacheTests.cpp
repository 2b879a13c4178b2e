#include "Host/Drawing/LruCache.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace host {
namespace {

TEST(LruCache, ForgetsWhatWasLongestNotAskedFor) {
    LruCache<std::string, int, std::string_view> cache(3);
    cache.insert("one", 1);
    cache.insert("two", 2);
    cache.insert("three", 3);
    ASSERT_NE(cache.find("one"), nullptr);
    cache.insert("four", 4);

    EXPECT_EQ(cache.find("two"), nullptr);
    for (const auto& [key, value] : {std::pair{"one", 1}, {"three", 3}, {"four", 4}}) {
        ASSERT_NE(cache.find(key), nullptr) << key;
        EXPECT_EQ(*cache.find(key), value);
    }
}

TEST(LruCache, WeighsEntriesAndKeepsTheLastHoweverHeavy) {
    LruCache<std::string, int, std::string_view> cache(10);
    cache.insert("a", 1, 4);
    cache.insert("b", 2, 4);
    cache.insert("c", 3, 4);
    EXPECT_EQ(cache.size(), 2U);
    cache.insert("heavy", 4, 100);
    EXPECT_EQ(cache.size(), 1U);
    EXPECT_NE(cache.find("heavy"), nullptr);
    cache.insert("light", 5, 1);
    EXPECT_EQ(cache.find("heavy"), nullptr);
    EXPECT_NE(cache.find("light"), nullptr);
}

} // namespace
} // namespace host
